// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextRectComp.h"

#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/private/MeasuringFont.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using TextRectangle = TextRectComp::Rectangle;

// Fonts of the platform's own choice where they are missing, which measure alike.
const std::vector<std::wstring> kFaces = {L"Arial", L"Times New Roman", L"Courier New", L"DejaVu Sans"};

TextInfo Style(float size, TextInfo::JUSTIFICATION justification = TextInfo::BOTTOM_LEFT) {
    TextInfo style;
    style.SetSize(size);
    style.SetJustification(justification);
    return style;
}

// What the device says of a text, and the parts of its font's cell, by their own arithmetic.
struct Measured {
    Measured(const TextInfo& style, const std::wstring& text) {
        const double factor = TextHeightFactComp::Get()(style);
        height = static_cast<int>(std::ceil(double{style.Size()} * factor * 1000.0));
        const MeasuringFont font(height, (style.Style() & 1) != 0, (style.Style() & 2) != 0,
                                 (style.Style() & 4) != 0, style.Font());
        const CSize extent = font.GetTextExtent(text);
        width = extent.cx;
        cell = extent.cy;
        const OUTLINETEXTMETRICW& metrics = TextHeightFactComp::Get().GetMetrics(style);
        const auto part = [&](long long length) {
            return static_cast<int>(std::llabs(length) * height / metrics.otmTextMetrics.tmHeight);
        };
        hidden = static_cast<int>(
            (std::llabs(metrics.otmDescent) + std::llabs(metrics.otmTextMetrics.tmInternalLeading)) * height /
            metrics.otmTextMetrics.tmHeight);
        leading = part(metrics.otmTextMetrics.tmExternalLeading);
    }
    double Adjusted(int length) const { return length / 1000.0 * height / cell; }

    int height = 0, width = 0, cell = 0, hidden = 0, leading = 0;
};

void ExpectSize(double width, double height, const TextRectangle& rectangle) {
    EXPECT_NEAR(width, rectangle.Width(), 1e-9);
    EXPECT_NEAR(height, rectangle.Height(), 1e-9);
}

void ExpectNothing(const TextRectangle& rectangle) {
    EXPECT_EQ(0.0, rectangle.Width());
    EXPECT_EQ(0.0, rectangle.Height());
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(0.0, rectangle.Corner(i).X());
        EXPECT_EQ(0.0, rectangle.Corner(i).Y());
    }
}

std::vector<std::wstring> Lines(const TextRectComp& measure) {
    std::vector<std::wstring> lines(static_cast<std::size_t>(measure.GetNumberOfSubStrings()));
    for (std::size_t i = 0; i < lines.size(); ++i) lines[i] = measure.GetSubString(static_cast<int>(i));
    return lines;
}

} // namespace

TEST(TextRectComp, HasMeasuredNothingAtFirst) {
    const TextRectComp measure;
    EXPECT_EQ(0, measure.GetNumberOfSubStrings());
    EXPECT_EQ(0.0, measure.GetTextHeight());
}

TEST(TextRectComp, KeepsTheTextThatItMeasured) {
    TextRectComp measure;
    measure(TextInfo(), L"abc");
    EXPECT_EQ(1, measure.GetNumberOfSubStrings());
    EXPECT_EQ(L"abc", measure.GetSubString(0));
    EXPECT_EQ(L"", measure.GetSubString(1));
    EXPECT_EQ(L"", measure.GetSubString(-1));
    std::wstring out = L"untouched";
    EXPECT_FALSE(measure.GetSubString(1, out));
    EXPECT_FALSE(measure.GetSubString(-1, out));
    EXPECT_EQ(L"untouched", out);
    EXPECT_FALSE(measure.GetSubString(0, out)); // although it is there
    EXPECT_EQ(L"abc", out);

    const TextRectComp copy = measure;
    measure(TextInfo(), L"another");
    EXPECT_EQ(L"abc", copy.GetSubString(0));
    const double height = measure.GetTextHeight();
    const TextRectComp moved = std::move(measure);
    EXPECT_EQ(L"another", moved.GetSubString(0));
    EXPECT_EQ(height, moved.GetTextHeight());
}

TEST(TextRectComp, CoversWhatTheDeviceMeasures) {
    TextRectComp measure;
    for (const std::wstring& face : kFaces) {
        for (const float size : {0.5f, 2.5f, 7.0f, 30.0f}) {
            for (int flags = 0; flags < 8; ++flags) {
                TextInfo style = Style(size);
                style.SetFont(face);
                style.SetStyle(static_cast<TextInfo::STYLE>(flags));
                SCOPED_TRACE(::testing::PrintToString(style.ToString()));
                const Measured expected(style, L"Sounding 123.4");
                ASSERT_GT(expected.cell, 0);

                ExpectSize(expected.Adjusted(expected.width), expected.height / 1000.0,
                           measure(style, L"Sounding 123.4"));
                EXPECT_NEAR(expected.cell / 1000.0, measure.GetTextHeight(), 1e-12);

                style.SetJustification(TextInfo::BASELINE_CENTER);
                ExpectSize(expected.Adjusted(expected.width),
                           expected.Adjusted(expected.cell - expected.hidden),
                           measure(style, L"Sounding 123.4"));
                EXPECT_NEAR((expected.cell - expected.hidden) / 1000.0, measure.GetTextHeight(), 1e-12);
            }
        }
    }
}

TEST(TextRectComp, OnTheBaseLineIsLowerByDescentAndInternalLeading) {
    TextRectComp measure;
    const TextRectangle onBaseline = measure(Style(2.5f, TextInfo::BASELINE_LEFT), L"Sounding");
    const TextRectangle whole = measure(Style(2.5f), L"Sounding");
    EXPECT_EQ(whole.Width(), onBaseline.Width());
    EXPECT_LT(onBaseline.Height(), 0.85 * whole.Height());
    EXPECT_GT(onBaseline.Height(), 0.5 * whole.Height());
    EXPECT_NEAR(2.5, onBaseline.Height(), 0.3); // about the visible height that the style states
}

TEST(TextRectComp, ForgetsNothingForAnEmptyText) {
    TextRectComp measure;
    measure(TextInfo(), L"abc");
    const double height = measure.GetTextHeight();
    TextInfo style = Style(20, TextInfo::TOP_RIGHT);
    style.SetRotation(30);
    for (const bool isMultiLine : {false, true}) {
        style.SetMultiLine(isMultiLine);
        ExpectNothing(measure(style, L""));
        ExpectNothing(measure(style, std::wstring()));
        ExpectNothing(measure(style, static_cast<const wchar_t*>(nullptr)));
        ExpectNothing(measure(style, std::wstring(1, L'\0') + L"behind the end"));
        EXPECT_EQ(30.0, measure(style, L"").Rotation().Get());
    }
    EXPECT_EQ(L"abc", measure.GetSubString(0));
    EXPECT_EQ(height, measure.GetTextHeight());
}

TEST(TextRectComp, TakesARotationThatIsNoNumberForNone) {
    TextRectComp measure;
    for (const double rotation :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        TextInfo style = Style(20, TextInfo::TOP_RIGHT);
        const TextRectComp::Rectangle upright = measure(style, L"abc");
        style.SetRotation(rotation);
        const TextRectComp::Rectangle rectangle = measure(style, L"abc");
        DepthLabelInfo label(style);
        label.SetPresentation(DepthLabelInfo::LOWERED_DECIMALS);
        const auto [whole, decimals] = measure(label, 12.34);
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(upright.Corner(i), rectangle.Corner(i));
            EXPECT_TRUE(std::isfinite(whole.first.Corner(i).X()) &&
                        std::isfinite(decimals.first.Corner(i).Y()));
        }
    }
}

TEST(TextRectComp, HasNoSizeForAStyleThatCannotBeMeasured) {
    for (const float size :
         {0.0f, -0.0f, std::nanf(""), std::numeric_limits<float>::infinity(), 1e10f, 3e38f}) {
        for (const bool isMultiLine : {false, true}) {
            SCOPED_TRACE(size);
            TextRectComp measure;
            measure(TextInfo(), L"abc");
            const double height = measure.GetTextHeight();
            TextInfo style = Style(size, TextInfo::MIDDLE_CENTER);
            style.SetMultiLine(isMultiLine);
            ExpectNothing(measure(style, L"Sounding"));
            EXPECT_EQ(0, measure.GetNumberOfSubStrings());
            EXPECT_EQ(height, measure.GetTextHeight());

            DepthLabelInfo label(style);
            label.SetPresentation(DepthLabelInfo::LOWERED_DECIMALS);
            const auto [whole, decimals] = measure(label, 12.34);
            ExpectNothing(whole.first);
            ExpectNothing(decimals.first);
            EXPECT_EQ(L"12", whole.second);
            EXPECT_EQ(L"34", decimals.second);
        }
    }
}

TEST(TextRectComp, IsDefinedForEverySize) {
    TextRectComp measure;
    Random random(61);
    for (int run = 0; run < 300; ++run) {
        TextInfo style = Style(static_cast<float>(std::pow(10.0, random.Real(-8, 8))),
                               static_cast<TextInfo::JUSTIFICATION>(random.Below(12)));
        style.SetMultiLine(random.OnceIn(2));
        style.SetRectWidth(random.OnceIn(2) ? style.Size() : 0.0f);
        const TextRectangle rectangle = measure(style, L"Sounding 123.4");
        EXPECT_TRUE(std::isfinite(rectangle.Width()) && std::isfinite(rectangle.Height())) << style.Size();
        EXPECT_GE(rectangle.Width(), 0.0);
        DepthLabelInfo label(style);
        label.SetPresentation(DepthLabelInfo::LOWERED_DECIMALS);
        EXPECT_TRUE(std::isfinite(measure(label, -1.5).second.first.Corner(2).X()));
    }
}

TEST(TextRectComp, TakesANegativeSizeAsAPositiveOne) {
    TextInfo negative;
    negative.FromString(L"Arial,-2.5");
    ASSERT_EQ(-2.5f, negative.Size());
    TextRectComp measure;
    for (const bool isMultiLine : {false, true}) {
        negative.SetMultiLine(isMultiLine);
        TextInfo positive = negative;
        positive.SetSize(2.5f);
        const TextRectangle expected = measure(positive, L"Sounding");
        ExpectSize(expected.Width(), expected.Height(), measure(negative, L"Sounding"));
        EXPECT_LT(2.5, expected.Height());
    }
}

TEST(TextRectComp, TheNumberDoesNotCount) {
    TextRectComp measure;
    const TextRectangle expected = measure(Style(3), L"abc");
    for (const double number : {0.0, 7.0, kNaN}) {
        ExpectSize(expected.Width(), expected.Height(), measure(Style(3), L"abc", number));
        ExpectSize(expected.Width(), expected.Height(), measure(Style(3), std::wstring(L"abc"), number));
    }
}

TEST(TextRectComp, TurnsClockwiseAboutThePointOfTheJustification) {
    struct Row {
        int justification;
        double along, up; // shares of the sides
    };
    TextRectComp measure;
    for (const Row& row : {
             Row{0, 0, 0}, Row{1, 0.5, 0}, Row{2, 1, 0}, Row{3, 1, 0.5}, Row{4, 1, 1}, Row{5, 0.5, 1},
             Row{6, 0, 1}, Row{7, 0, 0.5}, Row{8, 0.5, 0.5}, Row{9, 0, 0}, Row{10, 0.5, 0}, Row{11, 1, 0},
             Row{12, 0, 0}, Row{-1, 0, 0}, Row{2147483647, 0, 0}, // no justification
         }) {
        for (const double rotation : {0.0, 30.0, 90.0, 135.5, 180.0, 270.0, 359.0}) {
            SCOPED_TRACE(::testing::Message() << row.justification << " at " << rotation);
            TextInfo style = Style(2.5f, static_cast<TextInfo::JUSTIFICATION>(row.justification));
            style.SetRotation(rotation);
            const TextRectangle rectangle = measure(style, L"Sounding");
            const double width = rectangle.Width(), height = rectangle.Height();
            EXPECT_EQ(rotation, rectangle.Rotation().Get());

            const double turn = rotation * std::acos(-1.0) / 180;
            const double along[] = {0, width, width, 0}, up[] = {0, 0, height, height};
            for (int i = 0; i < 4; ++i) {
                const double x = along[i] - row.along * width, y = up[i] - row.up * height;
                EXPECT_NEAR(std::hypot(x, y) * std::cos(std::atan2(y, x) - turn), rectangle.Corner(i).X(),
                            1e-12);
                EXPECT_NEAR(std::hypot(x, y) * std::sin(std::atan2(y, x) - turn), rectangle.Corner(i).Y(),
                            1e-12);
            }
            EXPECT_EQ(GTL::CLS::INSIDE, rectangle.Classify({0, 0}));
        }
    }
}

TEST(TextRectComp, WrapsMultiLineTextIntoTheWidth) {
    TextRectComp measure;
    TextInfo style = Style(2.5f);
    const double width = measure(style, L"a line of text").Width();
    style.SetMultiLine(true);
    style.SetRectWidth(static_cast<float>(width + 0.01));
    const TextRectangle rectangle = measure(style, L"a line of text  and another\r\n\r\nlast");
    EXPECT_EQ((std::vector<std::wstring>{L"a line of text", L"and another", L"", L"last"}), Lines(measure));
    EXPECT_EQ(width, rectangle.Width());

    const Measured expected(Style(2.5f), L"x");
    EXPECT_NEAR(expected.Adjusted(expected.cell + expected.leading), measure.GetTextHeight(), 1e-9);
    EXPECT_NEAR(expected.Adjusted(4 * expected.cell + 3 * expected.leading), rectangle.Height(), 1e-9);

    style.SetJustification(TextInfo::BASELINE_RIGHT); // that of the last line
    EXPECT_NEAR(rectangle.Height() - expected.Adjusted(expected.hidden),
                measure(style, L"a line of text  and another\r\n\r\nlast").Height(), 1e-9);

    style.SetRectWidth(0);
    measure(style, L"a line of text  and another\r\n\r\nlast");
    EXPECT_EQ(3, measure.GetNumberOfSubStrings());
}

TEST(TextRectComp, MeasuresMultiLineTextOfOneLineAsASingleOne) {
    TextRectComp measure;
    for (const auto justification : {TextInfo::TOP_RIGHT, TextInfo::BASELINE_LEFT}) {
        TextInfo style = Style(4, justification);
        const TextRectangle expected = measure(style, L"Sounding 123.4 ");
        style.SetMultiLine(true);
        for (const float width : {0.0f, 1000.0f}) {
            style.SetRectWidth(width);
            ExpectSize(expected.Width(), expected.Height(), measure(style, L"Sounding 123.4 "));
        }
    }
}

TEST(TextRectComp, MeasuresBreaksAloneAsEmptyLines) {
    TextRectComp measure;
    TextInfo style = Style(4);
    style.SetMultiLine(true);
    const double one = measure(style, L"x").Height();
    const TextRectangle rectangle = measure(style, L"\n\n");
    EXPECT_EQ(0.0, rectangle.Width());
    EXPECT_NEAR(one + 2 * measure.GetTextHeight(), rectangle.Height(), 1e-9);
    EXPECT_EQ(std::vector<std::wstring>(3), Lines(measure));
}

TEST(TextRectComp, MakesNoLineWiderThanTheWidthButSingleCharacters) {
    TextRectComp measure, one;
    Random random(62);
    for (int run = 0; run < 500; ++run) {
        TextInfo style = Style(2.5f);
        style.SetFont(random.OneOf(kFaces));
        style.SetStyle(static_cast<TextInfo::STYLE>(random.Below(8)));
        style.SetMultiLine(true);
        style.SetRectWidth(static_cast<float>(random.Real(0.1, 30)));
        const std::wstring text = L"S" + random.Text(L"Sounding 123.4 \n\x0301\x6D4B\xD83D\xDE00", 100);
        const double widest = measure(style, text).Width();
        TextInfo single = style;
        single.SetMultiLine(false);
        double expected = 0;
        for (const std::wstring& line : Lines(measure)) {
            const double width = one(single, line).Width();
            expected = std::max(expected, width);
            if (line.find_first_of(L"\x0301\xD83D") == std::wstring::npos && line.size() > 1) {
                EXPECT_LE(width, style.RectWidth()) << ::testing::PrintToString(line);
            }
        }
        EXPECT_NEAR(expected, widest, 1e-9);
    }
}

TEST(TextRectComp, MeasuresLongTexts) {
    TextRectComp measure;
    TextInfo style = Style(2.5f);
    const double one = measure(style, L"x").Height();
    style.SetMultiLine(true);
    style.SetRectWidth(50);
    std::wstring words;
    for (int i = 0; i < 100'000; ++i) words += L"sounding ";
    for (const std::wstring& text : {words, std::wstring(1'000'000, L'a'), std::wstring(1'000'000, L' '),
                                     std::wstring(100'000, L'\n')}) {
        const TextRectangle rectangle = measure(style, text);
        EXPECT_LE(rectangle.Width(), 50.0);
        EXPECT_NEAR(one + (measure.GetNumberOfSubStrings() - 1) * measure.GetTextHeight(), rectangle.Height(),
                    1e-9 * rectangle.Height());
    }
    style.SetMultiLine(false);
    EXPECT_GT(measure(style, words).Width(), 50.0 * 10'000);
}

TEST(TextRectComp, MeasuresATextThatIsOneOfItsLines) {
    TextRectComp measure;
    TextInfo style = Style(2.5f);
    style.SetMultiLine(true);
    measure(style, L"first\nsecond");
    const std::wstring line = measure.GetSubString(1);
    measure(style, measure.GetSubString(1));
    EXPECT_EQ(std::vector<std::wstring>{line}, Lines(measure));
}

// The height of a line in parts of its size is the same at all sizes, until a product wraps.
TEST(TextRectComp, TellsFromWhichSizeOnHeightsDoNotFit) {
    TextRectComp measure;
    for (const std::wstring& face : kFaces) {
        for (const auto justification : {TextInfo::BOTTOM_LEFT, TextInfo::BASELINE_LEFT}) {
            const auto styleOf = [&](float size) {
                TextInfo style = Style(size, justification);
                style.SetFont(face);
                return style;
            };
            const double known = measure(styleOf(10), L"x").Height() / 10;
            for (const float size : {0.1f, 50.0f, 60.0f, 66.0f, 72.0f, 77.0f, 80.0f, 90.0f, 95.0f}) {
                const double share = measure(styleOf(size), L"x").Height() / double{size};
                const bool isWrapped = size > 1 && std::abs(share / known - 1) > 0.01;
                EXPECT_EQ(!isWrapped, TextRectComp::HeightsFit(styleOf(size)))
                    << face << size << justification;
            }
            TextInfo negative;
            negative.FromString(face + L",-95");
            EXPECT_FALSE(TextRectComp::HeightsFit(negative));
            EXPECT_TRUE(TextRectComp::HeightsFit(styleOf(std::nanf(""))));
        }
    }
}
