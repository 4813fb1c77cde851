// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/sheet/layers/Layers.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

// The level as it is written on its line: two decimals, without zeros at their end.
std::wstring LevelText(double level) {
    std::wstring text = std::to_wstring(static_cast<double>(std::llround(level * 100)) / 100);
    while (text.back() == L'0') text.pop_back();
    if (text.back() == L'.') text.pop_back();
    return text;
}

class Labeller {
public:
    Labeller(const Sheet& sheet, const DrawnContours& contours, Occupied& occupied)
        : m_sheet(sheet), m_contours(contours), m_occupied(occupied), m_style(sheet.project.contourLabels) {
        m_style.SetJustification(TextInfo::MIDDLE_CENTER);
        m_style.SetRotation(Angle(0.0));
    }

    // Labels along a contour, and where it is interrupted for them.
    void Label(std::size_t number, std::vector<PlacedText>& labels, std::vector<Gap>& gaps) {
        const auto& [line, look] = m_contours.Contours()[number];
        m_text = LevelText(look.level);
        const PlacedText measured = PlaceText(m_style, m_text, {});
        if (measured.parts.empty()) return;
        m_width = measured.parts.front().box.Width() + 2 * m_sheet.project.contourLabelGap;
        m_height = measured.parts.front().box.Height();
        const double spacing = std::max(static_cast<double>(m_sheet.project.contours.GetLabelSpacing()) /
                                            m_sheet.frame.UnitsPerMm(),
                                        2 * m_width);
        // Each stretch of the line has its label, as near to its middle as there is a place.
        const double stretches = std::max(1.0, std::floor(line.Length() / spacing));
        const double stretch = line.Length() / stretches;
        for (double i = 0; i < stretches; ++i) {
            const std::optional<Place> place = FindPlace(number, i * stretch, (i + 1) * stretch);
            if (!place) continue;
            labels.push_back(PlaceText(m_style, m_text, place->centre, place->degrees));
            m_occupied.Take(labels.back().Box(0.3));
            gaps.push_back({place->way - m_width / 2, place->way + m_width / 2});
        }
    }

private:
    struct Place {
        double way;
        Surface::Point centre;
        double degrees; // clockwise from where a text runs to the right
    };

    // Preferred are places where the label neither stands on its head nor against the record's orientation;
    // where there is none, it does not stand on its head.
    std::optional<Place> FindPlace(std::size_t number, double from, double to) const {
        constexpr double kStep = 1.0;
        std::optional<Place> second;
        const double middle = (from + to) / 2;
        for (double away = 0; away < (to - from) / 2; away += kStep) {
            for (const double way : {middle - away, middle + away}) {
                const std::optional<Place> place = PlaceAt(number, way);
                if (place && IsOriented(*place, m_contours.Contours()[number].look.level)) return place;
                if (!second) second = place;
            }
        }
        return second;
    }

    std::optional<Place> PlaceAt(std::size_t number, double way) const {
        const LineOnPaper& line = m_contours.Contours()[number].line;
        const double begin = way - m_width / 2, end = way + m_width / 2;
        if (begin < 0 || end > line.Length()) return std::nullopt;
        const Surface::Point a = line.At(begin), b = line.At(end);
        const double chord = std::hypot(b.x - a.x, b.y - a.y);
        const Surface::Point centre = {(a.x + b.x) / 2, (a.y + b.y) / 2};
        constexpr int kSamples = 8;
        for (int i = 1; i < kSamples; ++i) {
            const Surface::Point at = line.At(begin + m_width * i / kSamples);
            const double off = std::fabs((b.x - a.x) * (at.y - a.y) - (b.y - a.y) * (at.x - a.x)) / chord;
            if (!(off < 0.2 * m_height)) return std::nullopt; // bent
        }
        TextInfo upright;
        upright.SetRotation(Angle(std::atan2(b.y - a.y, b.x - a.x) * 180 / M_PI));
        upright.OptTextAngle(Angle(0.0));
        const double degrees = upright.Rotation().Get();
        const double slope = degrees * M_PI / 180;
        const double halfWidth =
            (m_width * std::fabs(std::cos(slope)) + m_height * std::fabs(std::sin(slope))) / 2;
        const double halfHeight =
            (m_width * std::fabs(std::sin(slope)) + m_height * std::fabs(std::cos(slope))) / 2;
        const Occupied::Box box = {centre.x - halfWidth, centre.y - halfHeight, centre.x + halfWidth,
                                   centre.y + halfHeight};
        if (!m_sheet.frame.IsWithin(box) || !m_occupied.IsFree(box) ||
            m_contours.OthersCross(number, centre, m_width, m_height, degrees))
            return std::nullopt;
        return Place{way, centre, degrees};
    }

    // Whether the text's head is on the side that the record wants.
    bool IsOriented(const Place& place, double level) const {
        const auto& [project, frame, scene] = m_sheet;
        const ContourInfo::label_orientation orientation = project.contours.GetLabelOrientation();
        if (orientation == ContourInfo::OPTIMUM_TEXT_ANGLE) return true;
        const double up = (place.degrees - 90) * M_PI / 180;
        const bool isDeeperAbove =
            scene.depths.ValueAt(frame.WorldAt({place.centre.x + m_height * std::cos(up),
                                                place.centre.y + m_height * std::sin(up)})) > level;
        return isDeeperAbove == (orientation == ContourInfo::LOW_TO_HIGH);
    }

    const Sheet& m_sheet;
    const DrawnContours& m_contours;
    Occupied& m_occupied;
    TextInfo m_style;
    std::wstring m_text;
    double m_width = 0, m_height = 0; // of what a label takes
};

} // namespace

std::vector<PlacedText> DrawContours(const Sheet& sheet, const DrawnContours& contours, Occupied& occupied,
                                     Surface& surface) {
    const Occupied texts = occupied; // without the labels of contours
    Labeller labeller(sheet, contours, occupied);
    std::vector<PlacedText> labels;
    const Progress progress("the contours", contours.Contours().size());
    for (std::size_t i = 0; i < contours.Contours().size(); ++i) {
        progress.Show(i + 1);
        const auto& [path, look] = contours.Contours()[i];
        std::vector<Gap> gaps = GapsFor(path, texts);
        if (look.annotate) labeller.Label(i, labels, gaps);
        LineInfo line;
        line.SetWidth(look.lineWidth);
        line.SetColor(look.trueColor);
        line.SetStyle(static_cast<LineInfo::LINESTYLE>(look.lineType));
        DrawBroken(path, std::move(gaps), PenOf(line), surface);
    }
    return labels;
}
