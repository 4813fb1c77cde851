// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/sheet/layers/Layers.h"

namespace {

void Fill(const Sheet& sheet, const std::vector<Area>& areas, const RGBColor& color, Surface& surface) {
    for (const Area& area : areas) {
        std::vector<std::vector<Surface::Point>> rings;
        for (const std::vector<WorldPoint>& outline : area) {
            std::vector<Surface::Point>& ring = rings.emplace_back();
            for (const WorldPoint& point : outline) ring.push_back(sheet.frame(point));
        }
        surface.Polygon(std::move(rings), color);
    }
}

} // namespace

// From shallow to deep, each over what is shallower: there is no seam between two colours.
void DrawAreas(const Sheet& sheet, Surface& surface) {
    const auto& [project, frame, scene] = sheet;
    surface.Rectangle(frame.Left(), frame.Top(), frame.Width(), frame.Height(),
                      RGBColor(project.colors.DefaultColor()));
    for (int i = 0; i < project.colors.NumEntries(); ++i)
        Fill(sheet, scene.areas[static_cast<std::size_t>(i)], RGBColor(project.colors.EntryColor(i)),
             surface);
    Fill(sheet, scene.unknown, RGBColor(255, 255, 255), surface);
}

void DrawLimit(const Sheet& sheet, const Occupied& occupied, Surface& surface) {
    if (!sheet.project.limit.Enable()) return;
    for (const std::vector<WorldPoint>& line : sheet.scene.limit) {
        if (line.size() < 2) continue;
        std::vector<Surface::Point> points;
        points.reserve(line.size());
        for (const WorldPoint& point : line) points.push_back(sheet.frame(point));
        const LineOnPaper path(std::move(points));
        DrawBroken(path, GapsFor(path, occupied), PenOf(sheet.project.limit), surface);
    }
}
