// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/text/TextSheet.h"

#include "UtilityDLL/GTL/Extents2D.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/Layout.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <cmath>

namespace {

using Point = GTL::Point2D<double>;
using Extents = GTL::Extents2D<double>;

constexpr RGBColor kBox(232, 241, 250);
constexpr RGBColor kBoxEdge(70, 130, 190);
constexpr RGBColor kInsertion(213, 60, 0);
constexpr double kMargin = 6;
constexpr double kGap = 4;
const Font kTitle{3.75, true};
const Font kName{2.75};
constexpr double kTitleRow = 6.5;
constexpr double kNameRow = 5;

// Descenders hang out of the rectangle of a text that stands on its baseline.
Extents Bounds(const TextSheet::Cell& cell) {
    Extents bounds;
    bounds.Update(Point());
    for (const DrawnText& text : cell) {
        for (int i = 0; i < 4; ++i) bounds.Update(text.box.Corner(i));
        const double below = text.font.descent * text.cellHeight;
        const Angle& rotation = text.box.Rotation(); // clockwise
        for (const DrawnText::Line& line : text.lines)
            for (const double along : {0.0, line.width})
                bounds.Update(Point(line.start.X() + along * rotation.Cos() - below * rotation.Sin(),
                                    line.start.Y() - along * rotation.Sin() - below * rotation.Cos()));
    }
    return bounds;
}

// The largest scale that is not above the limit and easy to reckon with.
double RoundScale(double limit) {
    if (!std::isfinite(limit) || limit <= 0) return 1;
    const double power = std::pow(10, std::floor(std::log10(limit)));
    for (const double digits : {8.0, 6.0, 5.0, 4.0, 3.0, 2.5, 2.0, 1.5})
        if (digits * power <= limit) return digits * power;
    return power;
}

std::string ScaleText(double scale) {
    return scale >= 1 ? GeneralText(scale, 6) + " : 1" : "1 : " + GeneralText(1 / scale, 6);
}

template <typename Visit> void ForEachRow(const TextSheet& sheet, Visit visit) {
    for (const TextSheet::Block& block : sheet.blocks)
        for (const TextSheet::Row& row : block.rows) visit(row);
}

double ScaleFor(const TextSheet& sheet, double width, double height) {
    constexpr double kHighestLine = 14;
    double limit = 1000;
    ForEachRow(sheet, [&](const TextSheet::Row& row) {
        for (const TextSheet::Cell& cell : row.cells) {
            const Extents bounds = Bounds(cell);
            limit = std::min({limit, width / bounds.ExtentX(), height / bounds.ExtentY()});
            for (const DrawnText& text : cell) limit = std::min(limit, kHighestLine / text.cellHeight);
        }
    });
    return RoundScale(limit);
}

// Controls are measured as a glyph of their own but have none that could be drawn.
std::string ControlsBlanked(std::wstring text) {
    std::replace_if(
        text.begin(), text.end(), [](wchar_t c) { return c < L' ' || (c >= 0x7F && c < 0xA0); }, L' ');
    return ToUtf8(text);
}

// Draws what stands about an insertion point; a world unit is `scale` millimetres on the page.
class Painter {
public:
    Painter(Surface& surface, Surface::Point insertion, double scale)
        : m_surface(surface), m_insertion(insertion), m_scale(scale) {}

    void Draw(const TextSheet::Cell& cell) const {
        for (const DrawnText& text : cell) DrawBox(text.box);
        for (const DrawnText& text : cell) DrawLines(text);
        DrawInsertionPoint();
    }

private:
    Surface::Point OnPage(const Point& point) const {
        return {m_insertion.x + point.X() * m_scale, m_insertion.y - point.Y() * m_scale};
    }

    void DrawBox(const TextRectComp::Rectangle& box) const {
        std::vector<Surface::Point> corners;
        for (const int i : {0, 1, 2, 3, 0}) corners.push_back(OnPage(box.Corner(i)));
        m_surface.Polygon({{corners.begin(), corners.end() - 1}}, kBox);
        m_surface.Polyline(corners, {kBoxEdge, 0.15});
    }

    void DrawLines(const DrawnText& text) const {
        const auto has = [&](TextInfo::STYLE flag) { return (text.style.Style() & flag) != 0; };
        const Font font{text.font.em * text.cellHeight * m_scale,
                        has(TextInfo::BOLD),
                        has(TextInfo::ITALIC),
                        has(TextInfo::UNDERLINE),
                        ToUtf8(text.font.family),
                        text.font.CapShare()};
        for (const DrawnText::Line& line : text.lines) {
            const Surface::Point start = OnPage(line.start);
            m_surface.FittedText(start.x, start.y, ControlsBlanked(line.text), font,
                                 RGBColor(text.style.Color()), line.width * m_scale,
                                 -text.box.Rotation().Get(),
                                 {text.style.AcadHJust(), text.style.AcadVJust()});
        }
    }

    void DrawInsertionPoint() const {
        const auto [x, y] = m_insertion;
        constexpr double kArm = 1.5;
        m_surface.Line(x - kArm, y, x + kArm, y, {kInsertion, 0.2});
        m_surface.Line(x, y - kArm, x, y + kArm, {kInsertion, 0.2});
        m_surface.Rectangle(x - 0.375, y - 0.375, 0.75, 0.75, kInsertion);
    }

    Surface& m_surface;
    Surface::Point m_insertion;
    double m_scale;
};

// Columns are of one width, and rows as high as they need.
class SheetLayout {
public:
    SheetLayout(const TextSheet& sheet, double scale) : m_sheet(sheet), m_scale(scale) {
        for (const std::string& name : sheet.columns)
            m_columnWidth = std::max(m_columnWidth, kName.Width(name) + kGap);
        ForEachRow(sheet, [&](const TextSheet::Row& row) {
            m_numColumns = std::max(m_numColumns, row.cells.size());
            if (!row.name.empty()) m_nameWidth = std::max(m_nameWidth, kName.Width(row.name) + kGap);
            for (const TextSheet::Cell& cell : row.cells)
                m_columnWidth = std::max(m_columnWidth, Bounds(cell).ExtentX() * scale + kGap);
        });
    }

    double Width() const { return m_nameWidth + m_columnWidth * static_cast<double>(m_numColumns); }

    double BlockHeight(const TextSheet::Block& block) const {
        double height = block.title.empty() ? 0 : kNameRow;
        if (!m_sheet.columns.empty()) height += kNameRow;
        for (const TextSheet::Row& row : block.rows) height += RowHeight(row);
        return height;
    }

    /// Draws the block from `y` on, and returns where it ends.
    double DrawBlock(Surface& surface, const TextSheet::Block& block, double y) const {
        if (!block.title.empty()) {
            surface.Text(kMargin, y + kName.CapHeight(), block.title, {kName.size, true}, kBlack);
            y += kNameRow;
        }
        if (!m_sheet.columns.empty()) {
            for (std::size_t i = 0; i < m_sheet.columns.size(); ++i)
                surface.Text(ColumnMiddle(i), y + kName.CapHeight(), m_sheet.columns[i], kName, kGrey,
                             Surface::Anchor::MIDDLE);
            y += kNameRow;
        }
        for (const TextSheet::Row& row : block.rows) {
            const double height = RowHeight(row);
            const double middle = y + height / 2;
            if (!row.name.empty())
                surface.Text(kMargin, BaselineAround(middle, kName), row.name, kName, kGrey);
            for (std::size_t i = 0; i < row.cells.size(); ++i) {
                const Point centre = Bounds(row.cells[i]).Center();
                Painter(surface, {ColumnMiddle(i) - centre.X() * m_scale, middle + centre.Y() * m_scale},
                        m_scale)
                    .Draw(row.cells[i]);
            }
            y += height;
        }
        return y;
    }

private:
    double RowHeight(const TextSheet::Row& row) const {
        double height = 0;
        for (const TextSheet::Cell& cell : row.cells)
            height = std::max(height, Bounds(cell).ExtentY() * m_scale);
        return height + kGap;
    }

    double ColumnMiddle(std::size_t index) const {
        return kMargin + m_nameWidth + m_columnWidth * (static_cast<double>(index) + 0.5);
    }

    const TextSheet& m_sheet;
    double m_scale;
    std::size_t m_numColumns = 0;
    double m_nameWidth = 0;
    double m_columnWidth = 0;
};

} // namespace

std::string CaptionText(const std::wstring& text) {
    constexpr std::size_t kLongest = 60;
    return text.size() <= kLongest ? ToUtf8(text) : ToUtf8(text.substr(0, kLongest)) + "...";
}

Surface TextPicture(const TextSheet& sheet, double width, double height) {
    constexpr double kLargestPage = 5000;
    const double scale = ScaleFor(sheet, width, height);
    const SheetLayout layout(sheet, scale);
    const std::string note = sheet.note + ", drawn " + ScaleText(scale);
    const double pageWidth =
        std::max({layout.Width(), kTitle.Width(sheet.title), kName.Width(note)}) + 2 * kMargin;
    double pageHeight = 2 * kMargin + kTitleRow + kNameRow;
    for (const TextSheet::Block& block : sheet.blocks) pageHeight += layout.BlockHeight(block) + kGap;
    if (pageWidth > kLargestPage || pageHeight > kLargestPage)
        throw CommandError(ExitCode::WRONG_USE, "this is too much for one picture; draw fewer texts in it");

    Surface surface(pageWidth, pageHeight);
    surface.Text(kMargin, kMargin + kTitle.CapHeight(), sheet.title, kTitle, kBlack);
    surface.Text(kMargin, kMargin + kTitleRow + kName.CapHeight(), note, kName, kGrey);
    double y = kMargin + kTitleRow + kNameRow;
    for (const TextSheet::Block& block : sheet.blocks) {
        StopIfInterrupted();
        y = layout.DrawBlock(surface, block, y + kGap);
    }
    return surface;
}
