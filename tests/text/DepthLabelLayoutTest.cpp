// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"
#include "UtilityDLL/text/private/MeasuringFont.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

using TextRectangle = TextRectComp::Rectangle;

DepthLabelInfo Label(int presentation, int placement, int justification = 0, double rotation = 0) {
    DepthLabelInfo label;
    label.SetSize(3);
    label.SetPresentation(static_cast<DepthLabelInfo::PRESENTATION>(presentation));
    label.SetPlacement(static_cast<DepthLabelInfo::PLACEMENT>(placement));
    label.SetJustification(static_cast<TextInfo::JUSTIFICATION>(justification));
    label.SetRotation(rotation);
    return label;
}

// A rectangle turned back: along the text, and up.
struct Box {
    explicit Box(const TextRectangle& rectangle) : width(rectangle.Width()), height(rectangle.Height()) {
        const double turn = rectangle.Rotation().Get() * std::acos(-1.0) / 180; // clockwise
        const double x = rectangle.Corner(0).X(), y = rectangle.Corner(0).Y();
        left = x * std::cos(turn) - y * std::sin(turn);
        bottom = x * std::sin(turn) + y * std::cos(turn);
    }
    double Right() const { return left + width; }
    double Top() const { return bottom + height; }

    double left, bottom, width, height;
};

struct Text {
    double width, height;
    double descent; // of the font's cell, below the base line
};

// What the text measures alone, and where its base line is: as the device says it of a font of that height.
Text Alone(TextInfo style, const std::wstring& text, bool isSmall) {
    if (isSmall) style.SetSize(static_cast<float>(style.Size() * (2.0 / 3.0)));
    style.SetRotation(0.0);
    TextRectComp measure;
    const TextRectangle rectangle = measure(style, text);
    const auto height = static_cast<int>(std::lround(style.Size() * TextHeightFactComp::Get()(style) * 1000));
    OUTLINETEXTMETRICW metrics = {};
    MeasuringFont(height, false, false, false, style.Font()).GetOutlineTextMetricsW(sizeof metrics, &metrics);
    const bool isOnBaseline = style.Justification() >= TextInfo::BASELINE_LEFT;
    return {rectangle.Width(), rectangle.Height(),
            isOnBaseline
                ? 0.0
                : height / 1000.0 * metrics.otmTextMetrics.tmDescent / metrics.otmTextMetrics.tmHeight};
}

double ShareAcross(int justification) {
    return std::vector<double>{
        0, 0.5, 1, 1, 1, 0.5, 0, 0, 0.5, 0, 0.5, 1}[static_cast<unsigned>(justification)];
}
double ShareUp(int justification) {
    return std::vector<double>{
        0, 0, 0, 0.5, 1, 1, 1, 0.5, 0.5, 0, 0, 0}[static_cast<unsigned>(justification)];
}

} // namespace

TEST(DepthLabelLayout, NineCombinationsInEveryJustificationAndDirection) {
    TextRectComp measure;
    for (int presentation = 0; presentation < 3; ++presentation) {
        for (int placement = 0; placement < 3; ++placement) {
            if (presentation == 0 && placement == 2) continue; // one text, below
            for (int justification = 0; justification < 12; ++justification) {
                for (const double rotation : {0.0, 40.0, 90.0, 300.0}) {
                    SCOPED_TRACE(::testing::Message() << presentation << placement << ", justification "
                                                      << justification << " at " << rotation);
                    const DepthLabelInfo label = Label(presentation, placement, justification, rotation);
                    const auto [first, second] = measure(label, -12.34);
                    EXPECT_EQ(L"-12", first.second);
                    EXPECT_EQ(presentation == 0 ? L".34" : L"34", second.second);
                    EXPECT_EQ(rotation, first.first.Rotation().Get());
                    EXPECT_EQ(rotation, second.first.Rotation().Get());

                    const Text whole = Alone(label, first.second, false);
                    const Text decimals = Alone(label, second.second, presentation != 0);
                    const Box left(first.first), right(second.first);
                    EXPECT_NEAR(whole.width, left.width, 1e-9);
                    EXPECT_NEAR(whole.height, left.height, 1e-9);
                    EXPECT_NEAR(decimals.width, right.width, 1e-9);
                    EXPECT_NEAR(decimals.height, right.height, 1e-9);

                    // Side by side, on one base line or the decimals lower. Windows' fonts have whole pixels.
                    EXPECT_NEAR(left.Right(), right.left, 1e-9);
                    EXPECT_NEAR(left.bottom + whole.descent - (presentation == 2 ? 1.0 : 0.0),
                                right.bottom + decimals.descent, 0.06);

                    const double across = ShareAcross(justification), up = ShareUp(justification);
                    if (placement == DepthLabelInfo::DECIMAL_POINT) {
                        EXPECT_NEAR(0.0, left.Right(), 1e-9);
                        EXPECT_NEAR(0.0, left.bottom + up * left.height, 1e-9);
                    } else if (placement == DepthLabelInfo::WHOLE_PART) {
                        EXPECT_NEAR(0.0, left.left + left.width / 2, 1e-9);
                        EXPECT_NEAR(0.0, left.bottom + left.height / 2, 1e-9);
                    } else {
                        EXPECT_NEAR(0.0, left.left + across * (right.Right() - left.left), 1e-9);
                        const double low =
                            justification >= 9 ? left.bottom : std::min(left.bottom, right.bottom);
                        const double high = std::max(left.Top(), right.Top());
                        EXPECT_NEAR(0.0, low + up * (high - low), 1e-9);
                    }
                }
            }
        }
    }
}

TEST(DepthLabelLayout, InLineWithTheWholeLabelPlacedIsOneText) {
    TextRectComp measure;
    for (int justification = 0; justification < 12; ++justification) {
        for (const double rotation : {0.0, 40.0}) {
            const DepthLabelInfo label = Label(0, 2, justification, rotation);
            const auto [first, second] = measure(label, -12.34);
            EXPECT_EQ(L"-12.34", first.second);
            EXPECT_EQ(L"", second.second);
            EXPECT_EQ(0.0, second.first.Width());
            EXPECT_EQ(0.0, second.first.Corner(2).X());
            const TextRectangle expected = measure(static_cast<const TextInfo&>(label), L"-12.34");
            EXPECT_EQ(expected.Width(), first.first.Width());
            for (int i = 0; i < 4; ++i) {
                EXPECT_NEAR(expected.Corner(i).X(), first.first.Corner(i).X(), 1e-12);
                EXPECT_NEAR(expected.Corner(i).Y(), first.first.Corner(i).Y(), 1e-12);
            }
        }
    }
}

TEST(DepthLabelLayout, WithoutDecimalsIsTheWholePartWhereItWouldBe) {
    TextRectComp measure;
    for (int presentation = 0; presentation < 3; ++presentation) {
        for (int placement = 0; placement < 3; ++placement) {
            SCOPED_TRACE(::testing::Message() << presentation << placement);
            DepthLabelInfo label = Label(presentation, placement, TextInfo::MIDDLE_RIGHT, 40);
            label.SetNoDecimalZeros(true);
            const auto [first, second] = measure(label, 12);
            EXPECT_EQ(L"12", first.second);
            EXPECT_EQ(L"", second.second);
            EXPECT_EQ(0.0, second.first.Width());
            EXPECT_EQ(0.0, second.first.Height());
            EXPECT_EQ(0.0, second.first.Corner(0).X());
            const Box box(first.first);
            EXPECT_NEAR(0.0, box.left + box.width * (placement == 1 ? 0.5 : 1.0), 1e-9);
            EXPECT_NEAR(0.0, box.bottom + box.height / 2, 1e-9);

            label.SetPrecision(0);
            EXPECT_EQ(L"12", measure(label, 12).first.second);
            EXPECT_EQ(L"nan", measure(label, kNaN).first.second);
            EXPECT_EQ(L"-inf", measure(label, -kInfinity).first.second);
            EXPECT_EQ(L"", measure(label, kInfinity).second.second);
            label.SetPrecision(2);
            EXPECT_EQ(301u, measure(label, 1e300).first.second.size());
        }
    }
}

TEST(DepthLabelLayout, NumbersThatNoNameStandsForCountAsZero) {
    TextRectComp measure;
    for (const int other : {3, -1, 2147483647}) {
        EXPECT_EQ(L".34", measure(Label(other, 0), 12.34).second.second);
        EXPECT_EQ(L"12.34", measure(Label(other, 2), 12.34).first.second);
        const TextRectangle expected = measure(Label(1, 0), 12.34).second.first;
        const TextRectangle rectangle = measure(Label(1, other), 12.34).second.first;
        EXPECT_EQ(expected.Corner(0).X(), rectangle.Corner(0).X());
        EXPECT_EQ(expected.Corner(0).Y(), rectangle.Corner(0).Y());
    }
}

TEST(DepthLabelLayout, IsOfOneLineWhateverTheStyleSays) {
    TextRectComp measure;
    DepthLabelInfo label = Label(1, 2);
    const TextRectangle expected = measure(label, 12345.67).first.first;
    label.SetMultiLine(true);
    label.SetRectWidth(0.5f);
    const TextRectangle rectangle = measure(label, 12345.67).first.first;
    EXPECT_EQ(expected.Width(), rectangle.Width());
    EXPECT_EQ(expected.Height(), rectangle.Height());
}

TEST(DepthLabelLayout, KeepsItsFirstText) {
    TextRectComp measure;
    for (const auto& [label, text] : {std::pair(Label(2, 0), L"-12"), std::pair(Label(0, 1), L"-12"),
                                      std::pair(Label(0, 2), L"-12.34")}) {
        const auto [first, second] = measure(label, -12.34);
        EXPECT_EQ(1, measure.GetNumberOfSubStrings());
        EXPECT_EQ(text, measure.GetSubString(0));
        EXPECT_NEAR(first.first.Height(), measure.GetTextHeight(), 0.03 * first.first.Height());
    }
}

TEST(DepthLabelLayout, DryingHeightsAreNegativeAsTheyAreShown) {
    struct Row {
        double value;
        bool isDrying, isInverted;
    };
    for (const Row& row :
         {Row{1.2, false, true}, Row{-1.2, true, false}, Row{0, false, false}, Row{-0.0, false, false},
          Row{-0.001, false, false}, // "0.00", and inverted "-0.01", which is a depth
          Row{0.001, false, false},  // the other way round
          Row{-0.01, true, false}, Row{0.01, false, true}, Row{kNaN, false, false},
          Row{-kInfinity, true, false}, Row{kInfinity, false, true}}) {
        SCOPED_TRACE(row.value);
        DepthLabelInfo label;
        EXPECT_EQ(row.isDrying, TextRectComp::IsDryingHeight(label, row.value));
        label.SetSignIsInverted(true);
        EXPECT_EQ(row.isInverted, TextRectComp::IsDryingHeight(label, row.value));
    }
}

TEST(DepthLabelLayout, UnderliningChangesNoRectangle) {
    TextRectComp measure;
    DepthLabelInfo label = Label(2, 0);
    const TextRectangle expected = measure(label, -1.5).first.first;
    label.SetUnderlineDryingHeights(true);
    EXPECT_EQ(expected.Width(), measure(label, -1.5).first.first.Width());
    label.SetStyle(TextInfo::UNDERLINE);
    EXPECT_EQ(expected.Width(), measure(label, -1.5).first.first.Width());
}

TEST(DepthLabelLayout, PartWhoseHeightCannotBeMeasuredHasNoSizeAndTheOtherOneStays) {
    struct Row {
        float size;
        bool isWholeMeasured, areDecimalsMeasured;
    };
    TextRectComp measure;
    for (const int placement : {0, 1, 2}) {
        for (const Row& row : {Row{0.001f, true, false}, Row{0.0015f, true, true}, Row{2.147e6f, true, true},
                               Row{2.2e6f, false, true}, Row{3.3e6f, false, false}}) {
            SCOPED_TRACE(::testing::Message() << placement << ", size " << row.size);
            DepthLabelInfo label = Label(1, placement, TextInfo::MIDDLE_CENTER);
            label.SetSize(row.size);
            const auto [whole, decimals] = measure(label, 12.34);
            EXPECT_EQ(L"12", whole.second);
            EXPECT_EQ(L"34", decimals.second);
            EXPECT_EQ(row.isWholeMeasured, whole.first.Height() > 0 && whole.first.Width() > 0);
            EXPECT_EQ(row.areDecimalsMeasured, decimals.first.Height() > 0 && decimals.first.Width() > 0);
            if (!row.areDecimalsMeasured) {
                label.SetNoDecimalZeros(true); // the whole part stands as it does alone
                const auto alone = measure(label, 12).first.first;
                EXPECT_EQ(alone.Width(), whole.first.Width());
                EXPECT_EQ(alone.Corner(0).X(), whole.first.Corner(0).X());
                EXPECT_EQ(alone.Corner(0).Y(), whole.first.Corner(0).Y());
                EXPECT_EQ(0.0, decimals.first.Corner(0).X());
                EXPECT_EQ(0.0, decimals.first.Corner(0).Y());
            }
        }
    }
}
