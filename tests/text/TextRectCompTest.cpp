#include "UtilityDLL/text/TextRectComp.h"

#include <gtest/gtest.h>

namespace {

TEST(TextRectComp, KeepsTheTextThatItMeasured) {
    TextRectComp measure;
    measure(TextInfo(), L"abc");
    EXPECT_EQ(measure.GetNumberOfSubStrings(), 1);
    EXPECT_EQ(measure.GetSubString(0), L"abc");
    EXPECT_EQ(measure.GetSubString(1), L"");
    std::wstring out;
    EXPECT_FALSE(measure.GetSubString(0, out));
    EXPECT_EQ(out, L"abc");
}

} // namespace
