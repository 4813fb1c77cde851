// SPDX-License-Identifier: MIT
#include "VelmBase/NumberText.h"
#include "apps/chartutil/drawing/LinePen.h"
#include "apps/chartutil/sheet/layers/PanelContent.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace {

struct Row {
    enum Kind { TITLE, COLOR, LINE, DEPTH };
    Kind kind;
    std::wstring caption;
    RGBColor color = {};
    Surface::Pen pen = {};
    double depth = 0;
};

std::wstring NumberOf(double value) { return NumberText::FromGeneral(value); }

// Of the surface, where it is known.
struct Depths {
    double shoalest = std::numeric_limits<double>::infinity(), deepest = -shoalest;
    bool Reaches(double from, double to) const { return shoalest < to && deepest >= from; }
};

Depths DepthsOf(const Scene& scene) {
    Depths depths;
    const std::size_t count = std::min(scene.depths.values.size(), scene.coverage.values.size());
    for (std::size_t i = 0; i < count; ++i) {
        const double depth = static_cast<double>(scene.depths.values[i]);
        if (!(scene.coverage.values[i] > 0) || !std::isfinite(depth)) continue;
        depths.shoalest = std::min(depths.shoalest, depth);
        depths.deepest = std::max(depths.deepest, depth);
    }
    return depths;
}

std::vector<Row> RowsOf(const Sheet& sheet) {
    const auto& [project, frame, scene] = sheet;
    std::vector<Row> rows;
    const Depths depths = DepthsOf(scene);
    const ColorTable& colors = project.colors;
    const int count = colors.NumEntries();
    if (count > 0) rows.push_back({Row::TITLE, L"Depth areas"});
    if (count > 0 && depths.Reaches(-std::numeric_limits<double>::infinity(), colors.EntryValue(0)))
        rows.push_back({Row::COLOR,
                        colors.EntryValue(0) == 0 ? L"dries" : L"less than " + NumberOf(colors.EntryValue(0)),
                        RGBColor(colors.DefaultColor())});
    for (int i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        const double from = colors.EntryValue(i);
        const double to = isLast ? std::numeric_limits<double>::infinity() : colors.EntryValue(i + 1);
        if (!depths.Reaches(from, to)) continue;
        rows.push_back({Row::COLOR, NumberOf(from) + (isLast ? L" and deeper" : L" \u2013 " + NumberOf(to)),
                        RGBColor(colors.EntryColor(i))});
    }
    rows.push_back({Row::TITLE, L"Soundings"});
    constexpr double kDepth = 12.4, kDrying = -1.2;
    rows.push_back({Row::DEPTH, L"depth of 12.4", {}, {}, kDepth});
    if (depths.shoalest < 0) rows.push_back({Row::DEPTH, L"dries 1.2", {}, {}, kDrying});
    if (project.limit.Enable() && !scene.limit.empty())
        rows.push_back({Row::LINE, L"limit of survey", {}, PenOf(project.limit)});
    std::set<double> levels;
    for (const ContourLine& contour : scene.contours) levels.insert(contour.level);
    if (!levels.empty()) rows.push_back({Row::TITLE, L"Contours"});
    for (int i = 0; i < project.levels.NumContours(); ++i) {
        const ContourDefinitionList::ContourDefInfo& look = project.levels[i];
        if (!levels.contains(look.level)) continue;
        LineInfo line;
        line.SetWidth(look.lineWidth);
        line.SetColor(look.trueColor);
        line.SetStyle(static_cast<LineInfo::LINESTYLE>(look.lineType));
        rows.push_back({Row::LINE, NumberOf(look.level), {}, PenOf(line)});
    }
    return rows;
}

// The rows in columns below a heading; lengths follow from the text's size.
class Drawing {
public:
    Drawing(const Sheet& sheet, double height)
        : m_panel(sheet.project.legend), m_depths(sheet.project.depthLabels), m_rows(RowsOf(sheet)),
          m_size(static_cast<double>(m_panel.text.Size())) {
        const CKeyword* const unit = sheet.project.keywords.GetKeywordConst(L"depth unit");
        m_heading = PlaceCentred(m_panel.heading, L"Depths in " + (unit ? unit->value : L"metres"), 0, 0, 0);
        m_top = HeightOf(m_heading) + m_size * 0.6;
        m_split = m_rows.size();
        if (m_top + RowsHeight(0, m_rows.size()) > height && m_rows.size() > 1) m_split = BestSplit();
    }

    double Width() const { return std::max(ColumnsWidth(), WidthOf(m_heading)); }
    double Height() const {
        return m_top + std::max(RowsHeight(0, m_split), RowsHeight(m_split, m_rows.size()));
    }

    void Draw(const Occupied::Box& box, Surface& surface) const {
        PlacedText heading = m_heading;
        heading.place = {(box.left + box.right) / 2, box.top};
        heading.Draw(surface);
        double x = (box.left + box.right - ColumnsWidth()) / 2;
        double y = box.top + m_top;
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            if (i == m_split) {
                x += ColumnWidth(0, m_split) + Gap();
                y = box.top + m_top;
            }
            const bool isFirst = i == 0 || i == m_split;
            y += RowsHeight(m_rows[i], isFirst);
            DrawRow(m_rows[i], x, y - RowHeight(), surface);
        }
    }

private:
    double RowHeight() const { return m_size * 1.75; }
    double SwatchWidth() const { return m_size * 4.5; }
    double Gap() const { return m_size * 3; }
    double ColumnWidth(std::size_t begin, std::size_t end) const {
        double width = 0;
        for (std::size_t i = begin; i < end; ++i)
            width = std::max(width, WidthOf(PlaceLeft(StyleOf(m_rows[i]), m_rows[i].caption, 0, 0, 0)) +
                                        CaptionAt(m_rows[i]));
        return width;
    }
    double ColumnsWidth() const {
        const bool hasTwo = m_split < m_rows.size();
        return ColumnWidth(0, m_split) + (hasTwo ? Gap() + ColumnWidth(m_split, m_rows.size()) : 0);
    }

    // A title has some air above it.
    double RowsHeight(const Row& row, bool isFirst) const {
        return RowHeight() * (row.kind == Row::TITLE && !isFirst ? 1.5 : 1);
    }
    double RowsHeight(std::size_t begin, std::size_t end) const {
        double height = 0;
        for (std::size_t i = begin; i < end; ++i) height += RowsHeight(m_rows[i], i == begin);
        return height;
    }

    // Where the second column begins: where both are lowest, rather at a title, and never behind one.
    std::size_t BestSplit() const {
        std::size_t best = m_rows.size() / 2;
        double lowest = std::numeric_limits<double>::infinity();
        for (std::size_t split = 1; split < m_rows.size(); ++split) {
            if (m_rows[split - 1].kind == Row::TITLE) continue;
            const double higher = std::max(RowsHeight(0, split), RowsHeight(split, m_rows.size()));
            const double apart = m_rows[split].kind == Row::TITLE ? 0 : 3 * RowHeight();
            if (higher + apart >= lowest) continue;
            lowest = higher + apart;
            best = split;
        }
        return best;
    }

    double CaptionAt(const Row& row) const {
        return row.kind == Row::TITLE ? 0 : SwatchWidth() + m_size * 0.8;
    }
    const TextInfo& StyleOf(const Row& row) const {
        return row.kind == Row::TITLE ? m_panel.subheading : m_panel.text;
    }

    void DrawRow(const Row& row, double x, double y, Surface& surface) const {
        const double middle = y + RowHeight() / 2, high = RowHeight() * 0.8;
        if (row.kind == Row::COLOR) {
            surface.Rectangle(x, middle - high / 2, SwatchWidth(), high, row.color);
            surface.Frame(x, middle - high / 2, SwatchWidth(), high, {RGBColor(m_panel.text.Color()), 0.1});
        } else if (row.kind == Row::LINE) {
            surface.Line(x, middle, x + SwatchWidth(), middle, row.pen);
        } else if (row.kind == Row::DEPTH) {
            PlacedText depth = PlaceDepth(m_depths, row.depth, {});
            if (depth.parts.empty()) return;
            const Occupied::Box box = depth.Box(0);
            depth.place = {x + SwatchWidth() / 2 - (box.left + box.right) / 2,
                           middle - (box.top + box.bottom) / 2};
            depth.Draw(surface);
        }
        PlacedText caption = PlaceLeft(StyleOf(row), row.caption, 0, x + CaptionAt(row), 0);
        caption.place.y = middle - HeightOf(caption) / 2;
        caption.Draw(surface);
    }

    const Panel& m_panel;
    const DepthLabelInfo& m_depths;
    std::vector<Row> m_rows;
    double m_size;
    PlacedText m_heading;
    double m_top = 0;        // of the first row
    std::size_t m_split = 0; // the first row of the second column
};

} // namespace

PanelContent Legend(const Sheet& sheet, double height) {
    const Drawing drawing(sheet, height);
    return {drawing.Width(), drawing.Height(),
            [drawing](const Occupied::Box& box, Surface& surface) { drawing.Draw(box, surface); }};
}
