// SPDX-License-Identifier: MIT
// The commands' pictures hold their texts: none is cut off by the page, none lies on another.

#include "apps/chartutil/commands/colors/ColorTablePicture.h"
#include "apps/chartutil/commands/colors/PalettePicture.h"
#include "apps/chartutil/commands/contours/ContourLegend.h"
#include "apps/chartutil/commands/style/LineSample.h"
#include "apps/chartutil/drawing/Layout.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

struct Box {
    double left, top, right, bottom;
    std::string text;
};

std::vector<Box> TextBoxes(const Surface& surface) {
    std::vector<Box> boxes;
    for (const Surface::Shape& shape : surface.Shapes())
        if (const auto* label = std::get_if<Surface::Label>(&shape)) {
            const double left = label->x - label->width * static_cast<int>(label->anchor) / 2;
            boxes.push_back({left, label->y - label->font.CapHeight(), left + label->width,
                             label->y + label->font.size * 0.2, label->text});
        }
    return boxes;
}

void ExpectTextsHaveRoom(const Surface& surface) {
    constexpr double kMargin = 3.5; // below the last line of a legend
    const std::vector<Box> boxes = TextBoxes(surface);
    EXPECT_FALSE(boxes.empty());
    for (const Box& box : boxes) {
        EXPECT_GE(box.left, kMargin) << box.text;
        EXPECT_GE(box.top, kMargin) << box.text;
        EXPECT_LE(box.right, surface.Width() - kMargin) << box.text;
        EXPECT_LE(box.bottom, surface.Height() - kMargin) << box.text;
    }
    for (std::size_t i = 0; i < boxes.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) {
            const Box &a = boxes[i], &b = boxes[j];
            EXPECT_FALSE(a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom)
                << a.text << " lies on " << b.text;
        }
}

const std::string kTitles[] = {
    "t.col", std::string(60, 'W') + ".col", std::string(60, 'i') + ".col",
    "\xE6\xB5\xB7\xE5\x9B\xBE\xE6\xB0\xB4\xE6\xB7\xB1\xE9\xA2\x9C\xE8\x89\xB2.col"};

} // namespace

TEST(PictureLayout, Palette) { ExpectTextsHaveRoom(PalettePicture()); }

TEST(PictureLayout, ColorTableWithTextsOfAnyLength) {
    for (const std::string& title : kTitles)
        for (const int count : {0, 1, 7, 300, 12'000})
            for (const double step : {1.0, 1.0 / 3, 1e300}) {
                SCOPED_TRACE(title + ", " + std::to_string(count) + " of " + std::to_string(step));
                DXFColorTable table;
                for (unsigned i = 0; i < unsigned(count); ++i)
                    table.AddEntry((double(i) - count) * step, 5000UL * i);
                table.Unique();
                for (const bool dxf : {false, true})
                    ExpectTextsHaveRoom(ColorTablePicture(table, title, dxf));
                if (count == 12'000) break; // many texts to compare
            }
}

TEST(PictureLayout, ContourLegendWithTextsOfAnyLength) {
    for (const std::string& title : kTitles)
        for (const double step : {1.0, -0.000012345, 1.23456e300}) {
            SCOPED_TRACE(title + " " + std::to_string(step));
            ContourDefinitionList list;
            for (int i = 0; i < 12; ++i) {
                ContourDefinitionList::ContourDefInfo info;
                info.level = step * (i + 1);
                info.lineType = i % 4;
                info.lineWidth = i % 2 ? 1.23456e-30f : std::numeric_limits<float>::infinity();
                info.annotate = i % 3 == 0;
                list.Add(info);
            }
            ASSERT_EQ(12, list.NumContours());
            ExpectTextsHaveRoom(ContourLegend(list, title));
        }
}

TEST(PictureLayout, ContourLegendSaysHowManyAreLeftOut) {
    ContourDefinitionList list;
    ASSERT_TRUE(list.Generate(0, 700, 1));
    const Surface legend = ContourLegend(list, "many.cdf");
    EXPECT_EQ("and 101 more", TextBoxes(legend).back().text);
    ExpectTextsHaveRoom(legend);
}

TEST(PictureLayout, APaleContourIsSeenInTheLegend) {
    ContourDefinitionList list;
    ContourDefinitionList::ContourDefInfo info;
    info.level = 5;
    info.trueColor = 0xFDFDFE;
    info.annotate = true;
    list.Add(info);
    const Surface legend = ContourLegend(list, "pale.cdf");
    int outlines = 0;
    for (const Surface::Shape& shape : legend.Shapes()) {
        const auto* stroke = std::get_if<Surface::Stroke>(&shape);
        if (stroke && stroke->pen.color == RGBColor(150, 150, 150)) ++outlines;
        const auto* label = std::get_if<Surface::Label>(&shape);
        EXPECT_FALSE(label && IsPale(label->color));
    }
    EXPECT_EQ(2, outlines); // on both sides of its number
}

TEST(PictureLayout, LineSampleOfAnyStyle) {
    for (const float width : {0.0f, 0.35f, 5.0f, 1e30f, std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::quiet_NaN()})
        for (const unsigned long color : {0x000000UL, 0x00FFFFUL, 0xFFFFFFUL})
            for (const int style : {0, 1, 2, 3}) {
                SCOPED_TRACE(std::to_string(width) + ", " + std::to_string(color));
                LineInfo line;
                line.SetWidth(width);
                line.SetColor(color);
                line.SetStyle(static_cast<LineInfo::LINESTYLE>(style));
                line.SetEnable(style != 0);
                ExpectTextsHaveRoom(LineSample(line));
                DXFInfo dxf;
                dxf.SetWidth(width);
                dxf.SetColor(color);
                dxf.SetColorMode(style == 3 ? -2147483647 : style);
                ExpectTextsHaveRoom(LineSample(dxf));
            }
}
