// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/sheet/layers/Layers.h"
#include "apps/chartutil/sheet/layers/Lines.h"
#include "apps/chartutil/sheet/scene/Degrees.h"
#include "apps/chartutil/sheet/scene/Graticule.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace {

using Side = Graticule::Side;

bool IsMultiple(double degrees, double of) {
    const double ratio = degrees / of;
    return std::round(ratio) >= 1 && std::fabs(ratio - std::round(ratio)) < 1e-6 * ratio;
}

// The intervals that divide a degree as its notation does.
std::vector<double> RoundIntervals(DegreeFormat::Parts parts) {
    std::vector<double> intervals;
    if (parts == DegreeFormat::SECONDS)
        for (const double seconds : {0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 30.0})
            intervals.push_back(seconds / 3600);
    if (parts == DegreeFormat::MINUTES)
        for (const double minutes : {0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5})
            intervals.push_back(minutes / 60);
    if (parts == DegreeFormat::DEGREES)
        for (const double degrees :
             {1e-5, 2e-5, 5e-5, 1e-4, 2e-4, 5e-4, 0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5})
            intervals.push_back(degrees);
    else
        for (const double minutes : {1.0, 2.0, 5.0, 10.0, 30.0}) intervals.push_back(minutes / 60);
    for (const double degrees : {1.0, 2.0, 5.0, 10.0, 30.0, 90.0}) intervals.push_back(degrees);
    return intervals;
}

// The shortest round interval of at least `degrees` that suits.
template <typename Suits>
std::optional<double> RoundInterval(DegreeFormat::Parts parts, double degrees, const Suits& suits) {
    for (const double interval : RoundIntervals(parts))
        if (interval >= degrees * (1 - 1e-9) && suits(interval)) return interval;
    return std::nullopt;
}

// Bars, ticks and labels along the sides of the map.
class Scales {
public:
    Scales(const Sheet& sheet, Surface& surface)
        : m_sheet(sheet), m_project(sheet.project), m_style(sheet.project.borderStyle), m_surface(surface),
          m_graticule(sheet.frame, *sheet.scene.system), m_pen(PenOf(sheet.project.border)),
          m_format(DegreeFormat::Of(sheet.project.graticule)) {}

    void Draw() {
        for (const Side side : Graticule::kSides) {
            const double perMm = m_graticule.DegreesPerMm(side);
            if (!(perMm > 0)) continue;
            const double line = Graticule::ReadsLongitudes(side) ? m_project.graticule.LonInterval()
                                                                 : m_project.graticule.LatInterval();
            const double labels = LabelInterval(perMm * m_style.labelSpacing, line);
            const std::optional<double> bars =
                RoundInterval(m_format.parts, perMm * m_style.barLength, [&](double interval) {
                    return !(labels > 0) || IsMultiple(labels, interval) || interval > labels;
                });
            if (bars) DrawBars(side, *bars);
            const std::optional<double> ticks =
                RoundInterval(m_format.parts, perMm * m_style.tickSpacing,
                              [&](double interval) { return !bars || IsMultiple(*bars, interval); });
            if (ticks) DrawTicks(side, *ticks, 0, m_style.tickWidth);
            DrawTicks(side, labels, 0, OuterLine());
            DrawLabels(side, labels, line);
        }
        if (!m_lost.empty())
            ReportKey(m_project, L"Border", L"Room",
                      "the label " + m_lost +
                          " has no room on the paper; enlarge Room or the Margin of [Sheet]");
        if (!m_rounded.empty())
            ReportKey(m_project, L"Graticule", L"LatLonDecimals",
                      "lines are not labelled where these decimals would round, as at " + m_rounded +
                          "; write more decimals or another interval");
    }

private:
    // A round one that agrees with the interval of the lines, or some of their intervals where that is
    // shorter; 0 for no labels.
    double LabelInterval(double shortest, double line) const {
        constexpr double kNone = std::numeric_limits<double>::infinity();
        double interval = RoundInterval(m_format.parts, shortest, [&](double round) {
                              return !(line > 0) || IsMultiple(line, round) || IsMultiple(round, line);
                          }).value_or(kNone);
        for (const double lines : {1.0, 2.0, 5.0, 10.0})
            if (line > 0 && lines * line >= shortest) interval = std::min(interval, lines * line);
        return interval < kNone ? interval : 0;
    }

    double Bars() const { return m_style.tickWidth + m_style.barWidth; }
    double OuterLine() const { return Bars() + m_style.outerLineGap; }

    // A place along a side, so far outside of the map.
    Surface::Point On(Side side, double along, double outside) const {
        const MapFrame& frame = m_sheet.frame;
        switch (side) {
        case Graticule::BOTTOM:
            return {frame.Left() + along, frame.Bottom() + outside};
        case Graticule::TOP:
            return {frame.Left() + along, frame.Top() - outside};
        case Graticule::LEFT:
            return {frame.Left() - outside, frame.Bottom() - along};
        default:
            return {frame.Right() + outside, frame.Bottom() - along};
        }
    }

    void DrawAcross(Side side, double along, double from, double to) {
        const Surface::Point a = On(side, along, from), b = On(side, along, to);
        m_surface.Line(a.x, a.y, b.x, b.y, {m_pen.color, m_pen.width * 0.6});
    }

    void DrawTicks(Side side, double interval, double from, double to) {
        for (const auto& [multiple, place] : m_graticule.Crossings(side, interval))
            DrawAcross(side, place, from, to);
    }

    // Every second interval, counted from 0 degrees, has a bar.
    void DrawBars(Side side, double interval) {
        const double length = m_graticule.Length(side);
        double from = 0;
        long long current = m_graticule.FirstInterval(side, interval);
        const auto bar = [&](double to) {
            if (current % 2 != 0) DrawBar(side, from, to);
            from = to;
        };
        for (const auto& [multiple, place] : m_graticule.Crossings(side, interval)) {
            bar(place);
            // Beyond the line, whichever way the degrees run.
            current = multiple == current ? multiple - 1 : multiple;
        }
        bar(length);
        for (const double end : {0.0, length}) DrawAcross(side, end, 0, Bars());
    }

    void DrawBar(Side side, double from, double to) {
        const Surface::Point a = On(side, from, m_style.tickWidth), b = On(side, to, Bars());
        m_surface.Rectangle(std::min(a.x, b.x), std::min(a.y, b.y), std::fabs(b.x - a.x),
                            std::fabs(b.y - a.y), m_pen.color);
    }

    // Lines and whole degrees are labelled in full, what is between them by its minutes; where a side has no
    // full label its first one is.
    void DrawLabels(Side side, double interval, double line) {
        const std::vector<Graticule::Crossing> crossings = m_graticule.Crossings(side, interval);
        const double full = line > interval * (1 + 1e-6) ? line : 1.0;
        const auto isFull = [&](double degrees) {
            return degrees == 0 || IsMultiple(std::fabs(degrees), full) || IsWhole(degrees);
        };
        const bool hasFull = std::ranges::any_of(crossings, [&](const Graticule::Crossing& crossing) {
            return isFull(static_cast<double>(crossing.multiple) * interval);
        });
        for (const Graticule::Crossing& crossing : crossings) {
            const double degrees = static_cast<double>(crossing.multiple) * interval;
            if (!IsWrittenExactly(degrees, m_format)) {
                m_rounded = Text(side, degrees, true);
                continue;
            }
            DrawLabel(side, crossing.place, degrees,
                      isFull(degrees) || (!hasFull && &crossing == &crossings.front()));
        }
    }

    static bool IsWhole(double degrees) { return std::fabs(degrees - std::round(degrees)) < 1e-9; }

    std::string Text(Side side, double degrees, bool isFull) const {
        DegreeFormat format = Shortened(degrees, m_format);
        if (IsWhole(degrees)) format.parts = DegreeFormat::DEGREES;
        const bool isLatitude = !Graticule::ReadsLongitudes(side);
        return ToUtf8(isFull ? DegreeText(degrees, isLatitude, format)
                             : MinuteText(degrees, isLatitude, format));
    }

    void DrawLabel(Side side, double place, double degrees, bool isFull) {
        constexpr TextInfo::JUSTIFICATION kTowardsMap[] = {TextInfo::TOP_CENTER, TextInfo::BOTTOM_CENTER,
                                                           TextInfo::MIDDLE_RIGHT, TextInfo::MIDDLE_LEFT};
        TextInfo style = isFull && IsWhole(degrees) ? m_project.degreeText : m_project.graticuleText;
        style.SetJustification(kTowardsMap[side]);
        style.SetRotation(Angle(0.0));
        const double outside = OuterLine() + m_style.outerLineWidth / 2 + m_style.labelGap;
        const std::string text = Text(side, degrees, isFull);
        const PlacedText label = PlaceText(style, FromUtf8(text), On(side, place, outside));
        if (label.parts.empty()) return;
        constexpr double kGap = 0.5; // between two labels
        const Occupied::Box box = label.Box(kGap);
        if (!m_labels.IsFree(box)) return;
        if (!IsOn(m_surface, label.Box(0))) {
            m_lost = text;
            return;
        }
        m_labels.Take(box);
        label.Draw(m_surface);
    }

    const Sheet& m_sheet;
    const Project& m_project;
    const BorderStyle& m_style;
    Surface& m_surface;
    const Graticule m_graticule;
    const Surface::Pen m_pen;
    const DegreeFormat m_format;
    Occupied m_labels;
    std::string m_lost, m_rounded; // labels, for reports
};

} // namespace

void DrawBorder(const Sheet& sheet, Surface& surface) {
    const Project& project = sheet.project;
    const MapFrame& frame = sheet.frame;
    const Scene& scene = sheet.scene;
    if (!project.border.Enable()) return;
    const Surface::Pen pen = PenOf(project.border);
    const auto draw = [&](double outside, double width) {
        surface.Frame(frame.Left() - outside, frame.Top() - outside, frame.Width() + 2 * outside,
                      frame.Height() + 2 * outside, {pen.color, width});
    };
    draw(0, pen.width);
    if (!scene.system || !project.hasGraticule) return;
    const BorderStyle& style = project.borderStyle;
    const double bars = style.tickWidth + style.barWidth;
    draw(style.tickWidth, pen.width * 0.6);
    draw(bars, pen.width * 0.6);
    draw(bars + style.outerLineGap, style.outerLineWidth);
    Scales(sheet, surface).Draw();
}
