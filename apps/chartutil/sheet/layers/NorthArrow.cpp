// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/PanelContent.h"
#include "apps/chartutil/sheet/scene/Degrees.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kDegree = M_PI / 180;

Surface::Point Along(const Surface::Point& from, double degrees, double length) {
    return {from.x + std::sin(degrees * kDegree) * length, from.y - std::cos(degrees * kDegree) * length};
}

void DrawLetter(const TextInfo& given, const std::wstring& text, const Surface::Point& at, Surface& surface) {
    TextInfo style = given;
    style.SetJustification(TextInfo::MIDDLE_CENTER);
    style.SetRotation(Angle(0.0));
    PlaceText(style, text, at).Draw(surface);
}

class Drawing {
public:
    Drawing(const Sheet& sheet, const WorldPoint& place, double width) : m_panel(sheet.project.northArrow) {
        const double north = sheet.scene.system
                                 ? TrueNorth(*sheet.scene.system, place, sheet.frame.UnitsPerMm())
                                 : std::numeric_limits<double>::quiet_NaN();
        m_isTrue = std::isfinite(north);
        if (!m_isTrue) return;
        m_degrees = north;
        constexpr double kHalfMinute = 0.5 / 60;
        if (std::fabs(north) >= kHalfMinute)
            m_note = PlaceCentred(m_panel.text, L"grid north\n" + DegreeText(-north, false, {}), width, 0, 0);
    }

    bool IsTrue() const { return m_isTrue; }
    double Width() const { return std::max(WidthOf(m_note), LetterSize() * 2); }
    double Height() const { return HeightOf(m_note) + LetterSize() * 5; }

    void Draw(const Occupied::Box& box, Surface& surface) const {
        const double noteHeight = HeightOf(m_note);
        const double width = box.right - box.left, height = box.bottom - box.top - noteHeight;
        const Surface::Point middle = {(box.left + box.right) / 2, box.top + height / 2};
        // The arrow is a fifth as wide as it is long, and its letter stands before it.
        const double across = std::fabs(std::sin(m_degrees * kDegree)),
                     up = std::fabs(std::cos(m_degrees * kDegree));
        const double length = std::min(width / (across + 0.2 * up), height / (up + 0.2 * across));
        const double letter = std::min(LetterSize() * 1.4, length * 0.4);
        const Surface::Point tip = Along(middle, m_degrees, length / 2 - letter);
        const Surface::Point tail = Along(middle, m_degrees, -length / 2);
        const Surface::Point waist = Along(tail, m_degrees, length * 0.12);
        const double half = length * 0.09;
        const Surface::Point right = Along(tail, m_degrees + 90, half),
                             left = Along(tail, m_degrees - 90, half);
        const RGBColor ink(m_panel.text.Color());
        surface.Polygon({{tip, right, waist}}, ink);
        surface.Polyline({tip, left, waist, tip}, {ink, 0.2});
        DrawLetter(m_panel.heading, L"N", Along(middle, m_degrees, length / 2 - letter / 2), surface);
        constexpr double kApart = 2; // degrees, from which on two arrows can be told
        if (std::fabs(m_degrees) >= kApart && m_isTrue) {
            const Surface::Point end = {tail.x, tail.y - std::min(tail.y - box.top, length) * 0.6};
            surface.Polyline({tail, end}, {ink, 0.15});
            DrawLetter(m_panel.text, L"GN", {end.x, end.y - static_cast<double>(m_panel.text.Size()) * 0.8},
                       surface);
        }
        PlacedText note = m_note;
        note.place = {middle.x, box.bottom - noteHeight};
        note.Draw(surface);
    }

private:
    double LetterSize() const { return static_cast<double>(m_panel.heading.Size()); }

    const Panel& m_panel;
    double m_degrees = 0;
    bool m_isTrue = false;
    PlacedText m_note;
};

} // namespace

double TrueNorth(const CoordinateSystem& system, const WorldPoint& place, double unitsPerMm) {
    // Two places some millimetres apart on a meridian, southward where there is nothing further north.
    std::vector<WorldPoint> points = {place, {place.X(), place.Y() + 5 * unitsPerMm}};
    system.ToGeographic(points);
    const double step = std::min(std::fabs(points[1].Y() - points[0].Y()) +
                                     std::fabs(std::remainder(points[1].X() - points[0].X(), 360.0)) *
                                         std::cos(points[0].Y() * kDegree),
                                 1.0);
    const bool isSouthward = points[0].Y() + step > 90;
    std::vector<WorldPoint> meridian = {points[0],
                                        {points[0].X(), points[0].Y() + (isSouthward ? -step : step)}};
    system.FromGeographic(meridian);
    const double sign = isSouthward ? -1 : 1;
    const double x = sign * (meridian[1].X() - meridian[0].X()),
                 y = sign * (meridian[1].Y() - meridian[0].Y());
    return std::hypot(x, y) > 0 ? std::atan2(x, y) / kDegree : std::numeric_limits<double>::quiet_NaN();
}

PanelContent NorthArrow(const Sheet& sheet, const WorldPoint& place, double width) {
    const Drawing drawing(sheet, place, width);
    if (!drawing.IsTrue())
        ReportKey(sheet.project, L"North Arrow", L"PosX",
                  "true north is not known at this place, so the arrow points to grid north; write the "
                  "CoordinateSystem of [Soundings]");
    return {drawing.Width(), drawing.Height(),
            [drawing](const Occupied::Box& box, Surface& surface) { drawing.Draw(box, surface); }};
}
