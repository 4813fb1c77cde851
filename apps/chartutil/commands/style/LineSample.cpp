// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/style/LineSample.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/LabColor.h"
#include "apps/chartutil/drawing/Layout.h"
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/terminal/HexText.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>

namespace {

constexpr double kMargin = 6;
constexpr double kWidest = 5; // of a line on the sheet
constexpr double kSampleWidth = 90;
constexpr double kRow = 6.5;
constexpr double kSwatchWidth = 9;
constexpr double kSwatchHeight = 4;
constexpr double kGap = 4;
const Font kTitle{3.75, true};
const Font kName{2.75};
const Font kValue{3};

struct Property {
    std::string name, value;
    std::optional<RGBColor> color = {};
};

using Points = std::vector<Surface::Point>;

Points Straight(double x, double y) { return {{x, y}, {x + kSampleWidth, y}}; }

// Corners, and a curve of one and a half waves.
Points Bent(double x, double y, double width, double height) {
    constexpr double kCorner = 12, kSteps = 60;
    Points points = {{x, y + height}, {x + kCorner, y}, {x + 2 * kCorner, y + height}, {x + 3 * kCorner, y}};
    for (double share = 1 / kSteps; share < 1 + 0.5 / kSteps; share += 1 / kSteps)
        points.push_back({x + 3 * kCorner + share * (width - 3 * kCorner),
                          y + height / 2 * (1 - std::cos(share * 3 * std::numbers::pi))});
    return points;
}

std::string WidthText(double width) {
    const std::string text = GeneralText(width, 6) + " mm";
    return width > kWidest ? text + ", drawn " + GeneralText(kWidest) + " mm" : text;
}

std::string DxfText(const RGBColor& color, const DXFColor& index) {
    return std::to_string(index.Index()) + ", " + HexText(RGBColor(index)) + ", differs by " +
           DecimalText(ColorDifference(color, index), 1);
}

std::vector<Property> ColorProperties(const RGBColor& color) {
    const DXFColor index(color);
    return {{"colour", HexText(color), color}, {"DXF index", DxfText(color, index), RGBColor(index)}};
}

double WidthOf(const std::vector<Property>& properties, double nameWidth) {
    double width = 0;
    for (const Property& property : properties)
        width = std::max(width, nameWidth + kSwatchWidth + kGap + kValue.Width(property.value));
    return width;
}

Surface SampleSheet(const std::string& title, std::vector<Property> properties, Surface::Pen pen) {
    pen.width = std::min(std::isfinite(pen.width) ? pen.width : 0, kWidest);
    double nameWidth = 0;
    for (const Property& property : properties)
        nameWidth = std::max(nameWidth, kName.Width(property.name) + kGap);

    const double bentHeight = 10;
    const double straightY = kMargin + kTitle.CapHeight() + kGap + pen.width / 2 + 1;
    const double bentY = straightY + kGap + 1.5 * pen.width;
    const double rowsY = bentY + bentHeight + pen.width + kGap;
    const double width =
        std::max({kSampleWidth, kTitle.Width(title), WidthOf(properties, nameWidth)}) + 2 * kMargin;
    Surface surface(width, rowsY + kRow * static_cast<double>(properties.size()) + kMargin - 2);

    surface.Text(kMargin, kMargin + kTitle.CapHeight(), title, kTitle, kBlack);
    DrawSample(surface, Straight(kMargin, straightY), pen);
    const double corner = pen.width / 3; // of the slanting end
    DrawSample(surface, Bent(kMargin + corner, bentY, kSampleWidth - corner, bentHeight), pen);
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const Property& property = properties[i];
        const double middle = rowsY + kRow * (static_cast<double>(i) + 0.5);
        double x = kMargin + nameWidth;
        surface.Text(kMargin, BaselineAround(middle, kName), property.name, kName, kGrey);
        if (property.color) {
            DrawSwatch(surface, x, middle - kSwatchHeight / 2, kSwatchWidth, kSwatchHeight, *property.color);
            x += kSwatchWidth + kGap / 2;
        }
        surface.Text(x, BaselineAround(middle, kValue), property.value, kValue, kBlack);
    }
    return surface;
}

} // namespace

Surface LineSample(const LineInfo& line) {
    const RGBColor color(line.Color());
    std::vector<Property> properties = {{"type", ToUtf8(line.StyleStr())},
                                        {"weight", WidthText(static_cast<double>(line.Width()))}};
    for (Property& property : ColorProperties(color)) properties.push_back(std::move(property));
    if (!line.Enable()) properties.push_back({"enable", "0: on a chart it is not drawn"});
    return SampleSheet(ToUtf8(line.ToString()), std::move(properties), PenOf(line));
}

Surface LineSample(const DXFInfo& line) {
    LineInfo drawn;
    drawn.SetWidth(line.Width());
    drawn.SetColor(line.Color());
    const bool hasColor = line.ColorMode() == 1;
    std::vector<Property> properties = {{"weight", line.Width() > 0
                                                       ? WidthText(static_cast<double>(line.Width()))
                                                       : "0: each line of a drawing keeps its own"}};
    for (Property& property : ColorProperties(RGBColor(line.Color())))
        properties.push_back(std::move(property));
    properties.push_back({"colour mode", std::to_string(line.ColorMode()) +
                                             (hasColor ? ": all lines of a drawing have the colour"
                                                       : ": each line of a drawing keeps its own colour")});
    return SampleSheet(ToUtf8(line.ToString()), std::move(properties), PenOf(drawn));
}
