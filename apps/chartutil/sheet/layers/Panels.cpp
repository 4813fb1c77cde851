// SPDX-License-Identifier: MIT
#include "VelmBase/NumberText.h"
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/sheet/layers/PanelContent.h"

#include <algorithm>
#include <cmath>

namespace {

// Where the panel's place is within it, as shares of its width from the left and its height from below; by
// the numbers of TextInfo::JUSTIFICATION, with the lower left corner for all others.
struct Anchor {
    double x, y;
};
Anchor AnchorOf(const PanelInfo& place) {
    constexpr Anchor kAnchors[] = {{0, 0},   {0.5, 0}, {1, 0},   {1, 0.5},  {1, 1},
                                   {0.5, 1}, {0, 1},   {0, 0.5}, {0.5, 0.5}};
    return place.justification >= 0 && place.justification < 9 ? kAnchors[place.justification] : kAnchors[0];
}

Occupied::Box BoxOf(const Project& project, const PanelInfo& place, double width, double height) {
    GTL::Point2D<double> at(place.posX, place.posY);
    if (project.paperGrid.SnapOn()) {
        const GTL::Point2D<double> snapped = project.paperGrid.SnapToGrid(at);
        if (std::isfinite(snapped.X()) && std::isfinite(snapped.Y())) at = snapped;
    }
    const Anchor anchor = AnchorOf(place);
    const double left = at.X() - anchor.x * width, bottom = project.paperHeight - at.Y() + anchor.y * height;
    return {left, bottom - height, left + width, bottom};
}

bool IsWithin(const Occupied::Box& inner, const Occupied::Box& outer) {
    constexpr double kTolerance = 1e-6;
    return inner.left >= outer.left - kTolerance && inner.top >= outer.top - kTolerance &&
           inner.right <= outer.right + kTolerance && inner.bottom <= outer.bottom + kTolerance;
}

bool DoOverlap(const Occupied::Box& a, const Occupied::Box& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

std::string Millimetres(double length) {
    return ToUtf8(NumberText::FromGeneral(std::ceil(length * 10) / 10)) + " mm";
}

class Placer {
public:
    Placer(const Sheet& sheet, Occupied& occupied)
        : m_sheet(sheet), m_project(sheet.project), m_occupied(occupied) {}

    // `contentOf` makes what stands in a box of that size.
    template <typename ContentOf>
    void Place(const Panel& panel, const wchar_t* section, const ContentOf& contentOf) {
        if (!panel.isShown || !HasPlace(panel, section)) return;
        const double width = static_cast<double>(panel.place.width),
                     height = static_cast<double>(panel.place.height), inset = panel.inset;
        const Occupied::Box given = BoxOf(m_project, panel.place, width, height);
        const PanelContent content = contentOf(given, std::max(width - 2 * inset, 1.0), height - 2 * inset);
        if (!content.draw) return;
        const double needed[] = {content.width + 2 * inset, content.height + 2 * inset};
        constexpr double kTolerance = 0.05; // millimetres, which nobody sees
        const bool isTooNarrow = needed[0] > width + kTolerance, isTooLow = needed[1] > height + kTolerance;
        const Occupied::Box box =
            BoxOf(m_project, panel.place, isTooNarrow ? needed[0] : width, isTooLow ? needed[1] : height);
        if (isTooNarrow)
            ReportKey(m_project, section, L"Width", "what stands in it needs " + Millimetres(needed[0]));
        if (isTooLow)
            ReportKey(m_project, section, L"Height", "what stands in it needs " + Millimetres(needed[1]));
        if (!IsWithin(box, {0, 0, m_project.paperWidth, m_project.paperHeight})) {
            ReportKey(m_project, section, L"PosX",
                      "the panel does not fit on the paper and is left out; move it, or make it smaller");
            return;
        }
        const MapFrame& frame = m_sheet.frame;
        if (!IsWithin(box, {frame.Left(), frame.Top(), frame.Right(), frame.Bottom()}))
            ReportKey(m_project, section, L"PosX", "the panel lies over the border of the map; move it");
        for (const PlacedPanel& other : m_panels) {
            if (!DoOverlap(box, other.box)) continue;
            ReportKey(m_project, section, L"PosX", "the panel lies over another one; move it");
            break;
        }
        m_occupied.Take(box);
        m_panels.push_back(
            {&panel, box, [draw = content.draw, inset](const Occupied::Box& outer, Surface& surface) {
                 draw({outer.left + inset, outer.top + inset, outer.right - inset, outer.bottom - inset},
                      surface);
             }});
    }

    std::vector<PlacedPanel> Take() { return std::move(m_panels); }

private:
    bool HasPlace(const Panel& panel, const wchar_t* section) const {
        const auto isSize = [&](const wchar_t* key, float size) {
            if (size > 0 && std::isfinite(size)) return true;
            ReportKey(m_project, section, key, "a panel's size is above 0 mm; it is left out");
            return false;
        };
        const auto isPlace = [&](const wchar_t* key, double place) {
            if (std::isfinite(place)) return true;
            ReportKey(m_project, section, key, "this is no place on the paper; the panel is left out");
            return false;
        };
        return isSize(L"Width", panel.place.width) && isSize(L"Height", panel.place.height) &&
               isPlace(L"PosX", panel.place.posX) && isPlace(L"PosY", panel.place.posY);
    }

    const Sheet& m_sheet;
    const Project& m_project;
    Occupied& m_occupied;
    std::vector<PlacedPanel> m_panels;
};

} // namespace

std::vector<PlacedPanel> PlacePanels(const Sheet& sheet, Occupied& occupied) {
    const Project& project = sheet.project;
    const MapFrame& frame = sheet.frame;
    Placer placer(sheet, occupied);
    placer.Place(project.titleBlock, L"Title Block",
                 [&](const Occupied::Box&, double width, double) { return TitleBlock(sheet, width); });
    placer.Place(project.legend, L"Legend",
                 [&](const Occupied::Box&, double, double height) { return Legend(sheet, height); });
    placer.Place(project.scaleBar, L"Scale Bar", [&](const Occupied::Box&, double width, double) {
        PanelContent content = ScaleBar(sheet, width);
        if (!content.draw)
            ReportKey(project, L"Scale Bar", L"Width",
                      "coordinates in degrees have no scale in metres, so there is no bar; use projected "
                      "coordinates");
        return content;
    });
    placer.Place(project.northArrow, L"North Arrow", [&](const Occupied::Box& box, double width, double) {
        const Surface::Point middle = {(box.left + box.right) / 2, (box.top + box.bottom) / 2};
        const WorldPoint place(frame.World().MinX() + (middle.x - frame.Left()) * frame.UnitsPerMm(),
                               frame.World().MaxY() - (middle.y - frame.Top()) * frame.UnitsPerMm());
        return NorthArrow(sheet, place, width);
    });
    return placer.Take();
}

void DrawPanels(const std::vector<PlacedPanel>& panels, Surface& surface) {
    for (const auto& [panel, box, draw] : panels) {
        const double width = box.right - box.left, height = box.bottom - box.top;
        surface.Rectangle(box.left, box.top, width, height, RGBColor(255, 255, 255));
        if (panel->frame.Enable()) surface.Frame(box.left, box.top, width, height, PenOf(panel->frame));
        draw(box, surface);
    }
}
