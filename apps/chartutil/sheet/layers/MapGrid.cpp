// SPDX-License-Identifier: MIT
#include "VelmBase/NumberText.h"
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/sheet/layers/Layers.h"
#include "apps/chartutil/sheet/layers/Lines.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMost = 2000;          // lines or ticks in one direction
constexpr double kMostPoints = 100'000; // where lines cross

// The multiples of an interval, each with its place in millimetres from the map's left or lower side.
struct Mark {
    double value, place;
    bool isMinor;
};

// `minor` marks fall on each interval, the multiple itself included.
std::vector<Mark> Marks(double interval, int minor, double low, double high, double unitsPerMm) {
    std::vector<Mark> marks;
    const double parts = minor > 0 && (high - low) / interval * minor < kMost ? minor : 1;
    const double step = interval / parts;
    const double first = std::ceil(low / step), count = std::floor((high - low) / step) + 1;
    for (double i = 0; i < count; ++i) {
        const double value = (first + i) * step;
        if (value > high) break;
        marks.push_back({value, (value - low) / unitsPerMm, std::fmod(first + i, parts) != 0});
    }
    return marks;
}

// "3 385 000": a blank between groups of three digits.
std::wstring Grouped(double value, int decimals) {
    std::wstring text = NumberText::FromFixed(value, decimals);
    const std::size_t point = std::min(text.find(L'.'), text.size());
    const std::size_t first = text.front() == L'-' ? 1 : 0;
    for (std::size_t at = point; at > first + 3;) text.insert(at -= 3, 1, L' ');
    return text;
}

// The smallest of 1, 2 and 5 times a power of ten that is not below it.
double RoundUp(double number) {
    const double power = std::pow(10, std::floor(std::log10(number)));
    for (const double round : {1.0, 2.0, 5.0})
        if (round * power >= number) return round * power;
    return 10 * power;
}

// Those that a multiple of the interval has.
int DecimalsOf(double interval) {
    int decimals = 0;
    double units = interval;
    while (decimals < 6 && std::fabs(units - std::round(units)) > 1e-6 * units) {
        units *= 10;
        ++decimals;
    }
    return decimals;
}

class Layout {
public:
    Layout(const Sheet& sheet, Occupied& occupied)
        : m_frame(sheet.frame), m_project(sheet.project), m_info(sheet.project.grid), m_occupied(occupied) {
        const WorldBox& box = m_frame.World();
        if (IsUsable(L"XInterval", m_info.XInterval(), box.MinX(), box.MaxX()))
            m_eastings =
                Marks(m_info.XInterval(), m_info.XMinorTicks(), box.MinX(), box.MaxX(), m_frame.UnitsPerMm());
        if (IsUsable(L"YInterval", m_info.YInterval(), box.MinY(), box.MaxY()))
            m_northings =
                Marks(m_info.YInterval(), m_info.YMinorTicks(), box.MinY(), box.MaxY(), m_frame.UnitsPerMm());
    }

    MapGrid Place() {
        PlaceEastings();
        PlaceNorthings();
        if (Has(GridInfo::POINTS)) PlacePoints();
        if (Has(GridInfo::X_LINES) || Has(GridInfo::X_TICKS) || Has(GridInfo::POINTS)) LabelEastings();
        if (Has(GridInfo::Y_LINES) || Has(GridInfo::Y_TICKS) || Has(GridInfo::POINTS)) LabelNorthings();
        return std::move(m_grid);
    }

private:
    bool Has(std::uint32_t flag) const { return (m_info.GridStyle() & flag) != 0; }

    bool IsUsable(const wchar_t* key, double interval, double low, double high) const {
        if (interval > 0 && (high - low) / interval <= kMost && std::fabs(high / interval) < 1e12)
            return true;
        ReportKey(m_project, L"Map Grid", key,
                  interval > 0 ? "there would be more than " + std::to_string(static_cast<int>(kMost)) +
                                     " lines; write a longer interval"
                               : std::string("an interval is above 0; there is no grid without one"));
        return false;
    }

    // So long, or 0 where the record has no number.
    static double Size(float size) { return std::isfinite(size) ? std::fabs(static_cast<double>(size)) : 0; }
    double TickOf(const Mark& mark) const {
        const double longest = std::min(m_frame.Width(), m_frame.Height()) / 2;
        return std::min(Size(mark.isMinor ? m_info.MinorTickSize() : m_info.TickSize()), longest);
    }

    // What is written keeps off it.
    void AddTick(Surface::Point a, Surface::Point b) {
        m_occupied.Take({std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)});
        m_grid.lines.push_back({a, b});
    }

    void PlaceEastings() {
        for (const Mark& mark : m_eastings) {
            const double x = m_frame.Left() + mark.place;
            if (!mark.isMinor && Has(GridInfo::X_LINES))
                m_grid.lines.push_back({{x, m_frame.Top()}, {x, m_frame.Bottom()}});
            if (!Has(mark.isMinor ? GridInfo::X_MINORTICKS : GridInfo::X_TICKS)) continue;
            const double length = TickOf(mark);
            AddTick({x, m_frame.Bottom()}, {x, m_frame.Bottom() - length});
            AddTick({x, m_frame.Top()}, {x, m_frame.Top() + (mark.isMinor ? length : ToNorth(length))});
        }
    }

    void PlaceNorthings() {
        for (const Mark& mark : m_northings) {
            const double y = m_frame.Bottom() - mark.place;
            if (!mark.isMinor && Has(GridInfo::Y_LINES))
                m_grid.lines.push_back({{m_frame.Left(), y}, {m_frame.Right(), y}});
            if (!Has(mark.isMinor ? GridInfo::Y_MINORTICKS : GridInfo::Y_TICKS)) continue;
            const double length = TickOf(mark);
            AddTick({m_frame.Left(), y}, {m_frame.Left() + length, y});
            AddTick({m_frame.Right(), y}, {m_frame.Right() - length, y});
        }
    }

    double ToNorth(double length) const { return Has(GridInfo::LONG_NORTHTICK) ? 2 * length : length; }

    // Crosses as large as a tick; the long one shows where north is. They give way to what is written: no
    // depth is left out for one.
    void PlacePoints() {
        if (static_cast<double>(m_eastings.size()) * static_cast<double>(m_northings.size()) > kMostPoints) {
            ReportKey(m_project, L"Map Grid", L"GridStyle",
                      "there would be more than " + std::to_string(static_cast<int>(kMostPoints)) +
                          " points; write longer intervals");
            return;
        }
        for (const Mark& easting : m_eastings) {
            for (const Mark& northing : m_northings) {
                if (easting.isMinor || northing.isMinor) continue;
                const double arm = TickOf(easting) / 2;
                const double x = m_frame.Left() + easting.place, y = m_frame.Bottom() - northing.place;
                const double left = std::max(x - arm, m_frame.Left()),
                             right = std::min(x + arm, m_frame.Right());
                const double top = std::max(y - ToNorth(arm), m_frame.Top()),
                             bottom = std::min(y + arm, m_frame.Bottom());
                m_grid.crosses.push_back({{x, y}, {left, top, right, bottom}});
            }
        }
    }

    // How far from the frame the labels are, beyond the ticks.
    double LabelAt(std::uint32_t ticks, std::uint32_t minorTicks) const {
        return m_project.gridLabelGap + (Has(ticks)        ? TickOf({0, 0, false})
                                         : Has(minorTicks) ? TickOf({0, 0, true})
                                                           : 0);
    }

    void LabelEastings() {
        const double at = LabelAt(GridInfo::X_TICKS, GridInfo::X_MINORTICKS);
        const double north =
            Has(GridInfo::X_TICKS) ? ToNorth(at - m_project.gridLabelGap) + m_project.gridLabelGap : at;
        Label(m_eastings, m_info.XInterval(), m_info.EastingMark(), true,
              [&](double place, bool isFirstSide) {
                  const double x = m_frame.Left() + place;
                  return isFirstSide ? Anchored{{x, m_frame.Bottom() - at}, TextInfo::BOTTOM_CENTER}
                                     : Anchored{{x, m_frame.Top() + north}, TextInfo::TOP_CENTER};
              });
    }

    void LabelNorthings() {
        const double at = LabelAt(GridInfo::Y_TICKS, GridInfo::Y_MINORTICKS);
        Label(m_northings, m_info.YInterval(), m_info.NorthingMark(), false,
              [&](double place, bool isFirstSide) {
                  const double y = m_frame.Bottom() - place;
                  return isFirstSide ? Anchored{{m_frame.Left() + at, y}, TextInfo::MIDDLE_LEFT}
                                     : Anchored{{m_frame.Right() - at, y}, TextInfo::MIDDLE_RIGHT};
              });
    }

    struct Anchored {
        Surface::Point place;
        TextInfo::JUSTIFICATION justification;
    };

    // Labels behind the ticks at both sides, within the map since the graticule's are outside; all, or every
    // second, fifth or tenth so that they have room.
    template <typename PlaceOf>
    void Label(const std::vector<Mark>& marks, double interval, const std::wstring& tag, bool isAlong,
               const PlaceOf& placeOf) {
        const int decimals = DecimalsOf(interval);
        const auto textOf = [&](const Mark& mark) { return Grouped(mark.value, decimals) + tag; };
        if (marks.empty()) return;
        TextInfo style = m_project.gridText;
        style.SetRotation(Angle(0.0));
        const Occupied::Box longest = PlaceText(style, textOf(marks.back()), {}).Box(m_project.gridLabelGap);
        const double room = isAlong ? longest.right - longest.left : longest.bottom - longest.top;
        if (!std::isfinite(room)) return; // it cannot be measured
        const double spacing = interval / m_frame.UnitsPerMm();
        const double every = std::max(RoundUp(room * 1.2 / spacing), 1.0);
        for (const Mark& mark : marks) {
            if (mark.isMinor || std::fmod(std::round(mark.value / interval), every) != 0) continue;
            for (const bool isFirstSide : {true, false}) {
                const auto [place, justification] = placeOf(mark.place, isFirstSide);
                style.SetJustification(justification);
                const PlacedText label = PlaceText(style, textOf(mark), place);
                const Occupied::Box box = label.Box(0.2);
                const bool isWithin = box.left > m_frame.Left() && box.right < m_frame.Right() &&
                                      box.top > m_frame.Top() && box.bottom < m_frame.Bottom();
                if (!isWithin || !m_occupied.IsFree(box)) continue;
                m_occupied.Take(box);
                m_grid.labels.push_back(label);
            }
        }
    }

    const MapFrame& m_frame;
    const Project& m_project;
    const GridInfo& m_info;
    Occupied& m_occupied;
    std::vector<Mark> m_eastings, m_northings;
    MapGrid m_grid;
};

} // namespace

MapGrid PlaceGrid(const Sheet& sheet, Occupied& occupied) {
    if (!sheet.project.hasGrid || !sheet.project.gridLine.Enable()) return {};
    return Layout(sheet, occupied).Place();
}

void DrawGrid(const Sheet& sheet, const MapGrid& grid, const Occupied& occupied, Surface& surface) {
    const Surface::Pen pen = PenOf(sheet.project.gridLine);
    for (const std::vector<Surface::Point>& line : grid.lines) DrawClear(line, pen, occupied, surface);
    for (const auto& [place, arms] : grid.crosses) {
        if (!occupied.IsFree(arms)) continue;
        surface.Line(arms.left, place.y, arms.right, place.y, pen);
        surface.Line(place.x, arms.top, place.x, arms.bottom, pen);
    }
    for (const PlacedText& label : grid.labels) label.Draw(surface);
}
