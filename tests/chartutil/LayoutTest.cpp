// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/Layout.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr RGBColor kYellow(255, 255, 0);
constexpr RGBColor kBlue(0, 0, 255);

std::vector<Surface::Stroke> Strokes(const Surface& surface) {
    std::vector<Surface::Stroke> strokes;
    for (const Surface::Shape& shape : surface.Shapes())
        if (const auto* stroke = std::get_if<Surface::Stroke>(&shape)) strokes.push_back(*stroke);
    return strokes;
}

std::vector<Surface::Stroke> Sample(const Surface::Pen& pen) {
    Surface surface(50, 50);
    DrawSample(surface, {{10, 10}, {40, 10}}, pen);
    return Strokes(surface);
}

} // namespace

TEST(Layout, PaleColoursAreThoseThatAreHardToSeeOnWhite) {
    for (const RGBColor& color : {RGBColor(255, 255, 255), kYellow, RGBColor(0, 255, 255),
                                  RGBColor(0, 255, 0), RGBColor(219, 237, 246), RGBColor(220, 220, 220)})
        EXPECT_TRUE(IsPale(color)) << static_cast<unsigned long>(color);
    for (const RGBColor& color : {RGBColor(0, 0, 0), kBlue, RGBColor(255, 0, 0), RGBColor(192, 192, 192),
                                  RGBColor(255, 127, 0), RGBColor(152, 179, 226)})
        EXPECT_FALSE(IsPale(color)) << static_cast<unsigned long>(color);
}

TEST(Layout, OnlyAPaleSwatchHasAnOutlineAndThatWithinIt) {
    Surface surface(50, 50);
    DrawSwatch(surface, 10, 20, 8, 4, kBlue);
    EXPECT_THAT(Strokes(surface), IsEmpty());
    DrawSwatch(surface, 10, 20, 8, 4, kYellow);
    const std::vector<Surface::Stroke> strokes = Strokes(surface);
    ASSERT_THAT(strokes, SizeIs(1));
    const double half = strokes[0].pen.width / 2;
    EXPECT_NEAR(10, strokes[0].points[0].x - half, 1e-9);
    EXPECT_NEAR(20, strokes[0].points[0].y - half, 1e-9);
    EXPECT_NEAR(18, strokes[0].points[2].x + half, 1e-9);
    EXPECT_NEAR(24, strokes[0].points[2].y + half, 1e-9);
}

TEST(Layout, ADarkSampleIsTheLineAlone) {
    const std::vector<Surface::Stroke> strokes = Sample({kBlue, 0.5, {3, 1}});
    ASSERT_THAT(strokes, SizeIs(1));
    EXPECT_EQ(kBlue, strokes[0].pen.color);
    EXPECT_THAT(strokes[0].pen.dashes, ElementsAre(3, 1));
}

// The outline begins as far before the line as its dashes grow, so that each lies round one of the line's.
TEST(Layout, APaleSampleHasAnOutlineRoundEachDash) {
    const std::vector<Surface::Stroke> strokes = Sample({kYellow, 0.5, {3, 1, 0.3, 1}});
    ASSERT_THAT(strokes, SizeIs(2));
    const Surface::Stroke& outline = strokes[0];
    EXPECT_FALSE(IsPale(outline.pen.color));
    const double around = (outline.pen.width - 0.5) / 2;
    EXPECT_GT(around, 0);
    EXPECT_NEAR(10 - around, outline.points[0].x, 1e-9);
    EXPECT_NEAR(40 + around, outline.points[1].x, 1e-9);
    ASSERT_THAT(outline.pen.dashes, SizeIs(4));
    const double expected[] = {3 + 2 * around, 1 - 2 * around, 0.3 + 2 * around, 1 - 2 * around};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(expected[i], outline.pen.dashes[i], 1e-9);
    EXPECT_EQ(kYellow, strokes[1].pen.color);
}

TEST(Layout, AnOutlineWithoutRoomBetweenTheDashesIsOneLine) {
    EXPECT_THAT(Sample({kYellow, 0.5, {3, 0.1}})[0].pen.dashes, IsEmpty());
}
