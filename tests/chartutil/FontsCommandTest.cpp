// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

json Fonts(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "fonts");
    arguments.push_back("--json");
    const ProgramResult result = RunChartutil(arguments);
    EXPECT_EQ(0, result.exitCode) << result.error;
    return json::parse(result.output, nullptr, false);
}

} // namespace

TEST(Fonts, ListsEachFamilyOnceAndInOrder) {
    const json fonts = Fonts({})["fonts"];
    ASSERT_FALSE(fonts.empty());
    bool hasOutlines = false;
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        const std::string family = fonts[i]["family"];
        EXPECT_FALSE(family.empty() || family.starts_with('@')) << family;
        EXPECT_TRUE(i == 0 ||
                    SmallerW(FromUtf8(fonts[i - 1]["family"].get<std::string>()), FromUtf8(family)));
        hasOutlines = hasOutlines || fonts[i]["hasOutlines"].get<bool>();
    }
    EXPECT_TRUE(hasOutlines);
    const ProgramResult table = RunChartutil({"fonts"});
    EXPECT_EQ(0, table.exitCode);
    EXPECT_THAT(table.output, StartsWith("family"));
    EXPECT_EQ(std::ptrdiff_t(fonts.size()) + 1, std::count(table.output.begin(), table.output.end(), '\n'));
}

TEST(Fonts, PatternIsAPartOfTheNameInAnyLetterCase) {
    const json fonts = Fonts({})["fonts"];
    ASSERT_FALSE(fonts.empty());
    const std::string family = fonts.back()["family"];
    std::string part = family.substr(0, family.size() - 1);
    std::transform(part.begin(), part.end(), part.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
    const json found = Fonts({part})["fonts"];
    EXPECT_TRUE(
        std::any_of(found.begin(), found.end(), [&](const json& f) { return f["family"] == family; }));
    EXPECT_LE(found.size(), fonts.size());
    const ProgramResult none = RunChartutil({"fonts", "No Such Face 4711"});
    EXPECT_EQ(1, none.exitCode);
    EXPECT_EQ("", none.output);
    EXPECT_EQ("chartutil: no installed font has 'No Such Face 4711' in its name; 'chartutil fonts' lists all "
              "of them\n",
              none.error);
}

TEST(Fonts, EveryFamilyStandsForItself) {
    const json fonts = Fonts({})["fonts"];
    ASSERT_FALSE(fonts.empty());
    for (const json& font : fonts) {
        const std::string family = font["family"];
        if (!font["hasOutlines"] || FromUtf8(family).size() >= 32) continue;
        const json match = Fonts({"--match", family});
        EXPECT_EQ(family, match["family"]);
        EXPECT_EQ(true, match["isInstalled"]);
    }
}

TEST(Fonts, LineBreaksOfAnArgumentMakeNoLinesOfTheOutput) {
    const ProgramResult match = RunChartutil({"fonts", "--match", "No\nSuch\rFace\x1b"});
    EXPECT_THAT(match.output, testing::EndsWith(", since No\\x0ASuch\\x0DFace\\x1B is not installed\n"));
    EXPECT_EQ("chartutil: no installed font has 'No\\x0ASuch' in its name; 'chartutil fonts' lists all of "
              "them\n",
              RunChartutil({"fonts", "No\nSuch"}).error);
}

// Some systems find a family by it all the same.
TEST(Fonts, NameWithOtherBlanksIsNoneOfTheInstalledFamily) {
    const json fonts = Fonts({})["fonts"];
    ASSERT_FALSE(fonts.empty());
    for (const json& font : fonts) {
        const std::string family = font["family"];
        const std::size_t blank = family.find(' ');
        if (!font["hasOutlines"] || blank == std::string::npos || FromUtf8(family).size() >= 31) continue;
        std::string without = family, with = family;
        without.erase(blank, 1);
        with.insert(blank, 1, ' ');
        for (const std::string& asked : {without, with}) {
            const json match = Fonts({"--match", asked});
            EXPECT_EQ(asked, match["asked"]);
            EXPECT_NE(asked, match["family"]);
            EXPECT_EQ(false, match["isInstalled"]) << asked;
        }
    }
}

TEST(Fonts, TellsWhatStandsInForAMissingFace) {
    for (const std::string& asked : {std::string("No Such Face 4711"), std::string(10'000, 'f')}) {
        const json match = Fonts({"--match", asked});
        EXPECT_EQ(asked, match["asked"]);
        EXPECT_EQ(false, match["isInstalled"]);
        const ProgramResult text = RunChartutil({"fonts", "--match", asked});
        EXPECT_EQ(0, text.exitCode);
        EXPECT_EQ(match["family"].get<std::string>() + ", since " + asked + " is not installed\n",
                  text.output);
    }
    EXPECT_EQ(2, RunChartutil({"fonts", "a", "--match", "b"}).exitCode);
}
