// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/UnifiedDiff.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr char kTwelve[] = "1\n2\n3\r\n4\n5\n6\n7\n8\n9\n10\n11\n12";

} // namespace

TEST(UnifiedDiff, ShowsThreeLinesAroundAChange) {
    EXPECT_THAT(
        UnifiedDiff(kTwelve, {{6, {"6"}, {"six", "and more"}}}),
        ElementsAre("@@ -3,7 +3,8 @@", " 3", " 4", " 5", "-6", "+six", "+and more", " 7", " 8", " 9"));
}

TEST(UnifiedDiff, StopsAtTheEndsOfTheFile) {
    EXPECT_THAT(UnifiedDiff(kTwelve, {{1, {"1"}, {}}}),
                ElementsAre("@@ -1,4 +1,3 @@", "-1", " 2", " 3", " 4"));
    EXPECT_THAT(UnifiedDiff(kTwelve, {{13, {}, {"13"}}}),
                ElementsAre("@@ -10,3 +10,4 @@", " 10", " 11", " 12", "+13"));
    EXPECT_THAT(UnifiedDiff("", {{1, {}, {"[A]", "k = v"}}}),
                ElementsAre("@@ -0,0 +1,2 @@", "+[A]", "+k = v"));
    EXPECT_THAT(UnifiedDiff("[A]\n", {{1, {"[A]"}, {}}}), ElementsAre("@@ -1,1 +0,0 @@", "-[A]"));
}

TEST(UnifiedDiff, JoinsChangesWhoseLinesMeet) {
    // Six lines between them are three of each.
    EXPECT_THAT(UnifiedDiff(kTwelve, {{2, {"2"}, {}}, {9, {"9"}, {"nine"}}}),
                ElementsAre("@@ -1,12 +1,11 @@", " 1", "-2", " 3", " 4", " 5", " 6", " 7", " 8", "-9",
                            "+nine", " 10", " 11", " 12"));
    EXPECT_THAT(UnifiedDiff(kTwelve, {{2, {}, {"new"}}, {9, {"9"}, {}}}),
                ElementsAre("@@ -1,4 +1,5 @@", " 1", "+new", " 2", " 3", " 4", "@@ -6,7 +7,6 @@", " 6", " 7",
                            " 8", "-9", " 10", " 11", " 12"));
}

TEST(UnifiedDiff, SaysNothingOfNoChange) { EXPECT_THAT(UnifiedDiff(kTwelve, {}), IsEmpty()); }
