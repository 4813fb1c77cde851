// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/contours/ContourLegend.h"

#include "apps/chartutil/commands/contours/LineTypes.h"
#include "apps/chartutil/drawing/Layout.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

using Info = ContourDefinitionList::ContourDefInfo;

constexpr int kMostRows = 600;
constexpr double kMargin = 6;
constexpr double kTop = 18; // of the first row
constexpr double kRow = 6.5;
constexpr double kLineLength = 47.5;
constexpr double kColumnGap = 7;
const Font kTitle{3.75, true};
const Font kHeading{2.75};
const Font kLevel{3.25};
const Font kNote{2.75};

int KnownType(int type) { return type >= 0 && type < static_cast<int>(kLineTypes.size()) ? type : 0; }

std::string LevelText(const Info& info) { return GeneralText(info.level, 6); }
std::string NoteText(const Info& info) {
    return LineTypeName(info.lineType) + ", " + GeneralText(static_cast<double>(info.lineWidth), 3);
}

// Widths are drawn one and a half millimetres to a unit.
Surface::Pen PenOf(const Info& info) {
    const double width = std::isfinite(info.lineWidth)
                             ? std::clamp(static_cast<double>(info.lineWidth) * 1.5, 0.25, 3.5)
                             : 0.25;
    const std::vector<double> dashes[] = {
        {}, {1.5 + 2 * width, 0.75 + 1.5 * width}, {width, 0.5 + 1.5 * width}};
    return {RGBColor(info.trueColor), width, dashes[KnownType(info.lineType)]};
}

// An annotated line is broken for its number, as on the chart.
void DrawLine(Surface& surface, double y, const Info& info) {
    constexpr double kRight = kMargin + kLineLength;
    const Surface::Pen pen = PenOf(info);
    if (!info.annotate) {
        DrawSample(surface, {{kMargin, y}, {kRight, y}}, pen);
        return;
    }
    constexpr double kMiddle = kMargin + kLineLength / 2;
    const double toLine = kLevel.Width(LevelText(info)) / 2 + 1.25;
    DrawSample(surface, {{kMargin, y}, {kMiddle - toLine, y}}, pen);
    DrawSample(surface, {{kMiddle + toLine, y}, {kRight, y}}, pen);
    surface.Text(kMiddle, BaselineAround(y, kLevel), LevelText(info), kLevel,
                 IsPale(pen.color) ? kGrey : pen.color, Surface::Anchor::MIDDLE);
}

} // namespace

Surface ContourLegend(const ContourDefinitionList& list, const std::string& title) {
    const int rows = std::min(list.NumContours(), kMostRows);
    const bool isCut = rows < list.NumContours();
    double levelWidth = kHeading.Width("level");
    double noteWidth = kHeading.Width("style");
    for (int i = 0; i < rows; ++i) {
        levelWidth = std::max(levelWidth, kLevel.Width(LevelText(list[i])));
        noteWidth = std::max(noteWidth, kNote.Width(NoteText(list[i])));
    }
    const double levelRight = kMargin + kLineLength + kColumnGap + levelWidth;
    const double noteX = levelRight + kColumnGap;
    const double right = std::max(noteX + noteWidth, kMargin + kTitle.Width(title));
    Surface surface(right + kMargin, kTop + kRow * (rows + isCut) + kMargin - 2);

    surface.Text(kMargin, kMargin + kTitle.CapHeight(), title, kTitle, kBlack);
    constexpr double kHeadingY = kTop - 3.5;
    surface.Text(kMargin, kHeadingY, "line", kHeading, kGrey);
    surface.Text(levelRight, kHeadingY, "level", kHeading, kGrey, Surface::Anchor::END);
    surface.Text(noteX, kHeadingY, "style", kHeading, kGrey);
    surface.Line(kMargin, kTop - 1.5, right, kTop - 1.5, {RGBColor(200, 200, 200)});
    for (int i = 0; i < rows; ++i) {
        const double y = kTop + kRow * i + kRow / 2 + 0.125; // thin lines fill whole pixels of a PNG
        DrawLine(surface, y, list[i]);
        surface.Text(levelRight, BaselineAround(y, kLevel), LevelText(list[i]), kLevel, kBlack,
                     Surface::Anchor::END);
        surface.Text(noteX, BaselineAround(y, kNote), NoteText(list[i]), kNote, kGrey);
    }
    if (isCut)
        surface.Text(kMargin, BaselineAround(kTop + kRow * rows + kRow / 2, kNote),
                     "and " + std::to_string(list.NumContours() - rows) + " more", kNote, kGrey);
    return surface;
}
