// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Graticule.h"
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/sheet/layers/Layers.h"
#include "apps/chartutil/sheet/layers/Lines.h"

namespace {

// What the numbers of the record's GridStyle mean; lines for any other.
enum class Look { NONE = 0, LINES = 1, TICKS = 2, CROSSES = 3 };

constexpr double kMost = 1000; // lines of a kind

bool IsUsable(const Project& project, const wchar_t* key, double interval, double count) {
    if (count <= kMost) return true;
    ReportKey(project, L"Graticule", key,
              interval > 0 ? "there would be more than " + std::to_string(static_cast<int>(kMost)) +
                                 " lines; write a longer interval, in degrees"
                           : "an interval is above 0, in degrees; there are no lines without one");
    return false;
}

} // namespace

void DrawGraticule(const Sheet& sheet, const Occupied& occupied, Surface& surface) {
    const auto& [project, frame, scene] = sheet;
    if (!scene.system || !project.hasGraticule || !project.graticuleLine.Enable()) return;
    const GeoGridInfo& info = project.graticule;
    const int number = info.GridStyle();
    const Look look = number == 0 || number == 2 || number == 3 ? static_cast<Look>(number) : Look::LINES;
    if (look == Look::NONE) return;
    Surface::Pen pen = PenOf(project.graticuleLine);
    pen.color = RGBColor(info.GridColor());
    const Graticule graticule(frame, *scene.system);
    const bool hasMeridians =
        IsUsable(project, L"LonInterval", info.LonInterval(), graticule.NumMeridians(info.LonInterval()));
    const bool hasParallels =
        IsUsable(project, L"LatInterval", info.LatInterval(), graticule.NumParallels(info.LatInterval()));

    const double length = project.graticuleMark;
    if (look == Look::LINES) {
        if (hasMeridians)
            for (const Graticule::Line& line : graticule.Meridians(info.LonInterval()))
                DrawClear(line, pen, occupied, surface);
        if (hasParallels)
            for (const Graticule::Line& line : graticule.Parallels(info.LatInterval()))
                DrawClear(line, pen, occupied, surface);
    } else if (look == Look::TICKS) {
        for (const Graticule::Side side : Graticule::kSides) {
            const bool isAcross = Graticule::ReadsLongitudes(side);
            if (!(isAcross ? hasMeridians : hasParallels)) continue;
            for (const auto& [multiple, place] :
                 graticule.Crossings(side, isAcross ? info.LonInterval() : info.LatInterval())) {
                const double x = frame.Left() + place, y = frame.Bottom() - place;
                if (side == Graticule::BOTTOM)
                    DrawClear({{x, frame.Bottom()}, {x, frame.Bottom() - length}}, pen, occupied, surface);
                else if (side == Graticule::TOP)
                    DrawClear({{x, frame.Top()}, {x, frame.Top() + length}}, pen, occupied, surface);
                else if (side == Graticule::LEFT)
                    DrawClear({{frame.Left(), y}, {frame.Left() + length, y}}, pen, occupied, surface);
                else
                    DrawClear({{frame.Right(), y}, {frame.Right() - length, y}}, pen, occupied, surface);
            }
        }
    } else if (hasMeridians && hasParallels) {
        const double arm = length / 2;
        for (const Surface::Point& at : graticule.Intersections(info.LonInterval(), info.LatInterval())) {
            DrawClear({{at.x - arm, at.y}, {at.x + arm, at.y}}, pen, occupied, surface);
            DrawClear({{at.x, at.y - arm}, {at.x, at.y + arm}}, pen, occupied, surface);
        }
    }
}
