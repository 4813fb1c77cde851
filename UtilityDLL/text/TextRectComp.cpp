// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextRectComp.h"

#include "UtilityDLL/GTL/Element.h"
#include "UtilityDLL/text/GDIScaleFactor.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/private/DepthLabelText.h"
#include "UtilityDLL/text/private/LineDivision.h"
#include "UtilityDLL/text/private/MeasuringDevice.h"
#include "UtilityDLL/text/private/MeasuringFont.h"
#include "VelmBase/Math.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>

namespace {

using Rectangle = TextRectComp::Rectangle;
using Vector = GTL::Vector2D<double>;

// The point of a box that sits on the insertion point: shares of its width and height, from the lower left.
struct Anchor {
    double along, up;
};
constexpr Anchor kAnchors[] = {
    // indexed by TextInfo::JUSTIFICATION
    {0.0, 0.0}, {0.5, 0.0}, {1.0, 0.0},                         // bottom: left, centre, right
    {1.0, 0.5}, {1.0, 1.0}, {0.5, 1.0}, {0.0, 1.0}, {0.0, 0.5}, // on anticlockwise to middle left
    {0.5, 0.5},                                                 // middle centre
    {0.0, 0.0}, {0.5, 0.0}, {1.0, 0.0}, // baseline, where the box ends: left, centre, right
};
static_assert(std::size(kAnchors) == 12);

Anchor AnchorOf(TextInfo::JUSTIFICATION justification) {
    const auto index = static_cast<std::uint32_t>(justification);
    return index < std::size(kAnchors) ? kAnchors[index] : Anchor{0.0, 0.0};
}

void Move(Rectangle& rectangle, const Vector& offset) {
    for (int i = 0; i < 4; ++i) rectangle.SetCorner(i, rectangle.Corner(i) + offset);
}

// The style at the size that it is measured at: a copy where that is another.
const TextInfo& Sized(const TextInfo& info, bool smaller, std::optional<TextInfo>& copy) {
    if (!smaller && !std::signbit(info.Size())) return info;
    copy = info;
    copy->SetSize(static_cast<float>(info.Size() * (smaller ? 0.6666666666666666 : 1.0)));
    return *copy;
}

bool IsInLine(const DepthLabelInfo& info) {
    return info.Presentation() != DepthLabelInfo::SMALL_DECIMALS &&
           info.Presentation() != DepthLabelInfo::LOWERED_DECIMALS;
}

// Which share of a font's cell is below the base line.
double ShareBelowBaseline(const TextInfo& style) {
    const TEXTMETRICW& cell = TextHeightFactComp::Get().GetMetrics(style).otmTextMetrics;
    return cell.tmHeight == 0 ? 0.0 : double(cell.tmDescent) / cell.tmHeight;
}

// Measures lines of a style, in the font of the height that the style's factor gives.
class LineMeter {
public:
    explicit LineMeter(const TextInfo& style) : m_style(style) {
        if (!(style.Size() > 0.0f)) return;
        const float factor = TextHeightFactComp::Get()(style);
        m_height = MATH::ToInt(std::ceil(style.Size() * (factor * m_scale)));
        if (m_height <= 0) return;
        const auto has = [&](TextInfo::STYLE flag) { return (style.Style() & flag) != 0; };
        m_font.emplace(m_height, has(TextInfo::BOLD), has(TextInfo::ITALIC), has(TextInfo::UNDERLINE),
                       style.Font());
    }

    // False, and nothing changes, when the style cannot be measured. What is below is of the line that was
    // measured last; there must be one.
    bool Measure(std::wstring_view line) {
        const CSize extent = m_font ? m_font->GetTextExtent(line) : CSize();
        if (extent.cy <= 0) return false;
        m_width = extent.cx;
        m_cell = extent.cy; // the height of the font's cell as the device has it
        return true;
    }

    // A length of the device in world units, as it is and as it would be in a cell of the height that was
    // asked for.
    double World(double length) const { return length / m_scale; }
    double Adjusted(double length) const { return World(length) * (double(m_height) / m_cell); }

    int Width() const { return m_width; }

    // How high a line is: the part above the base line, or all of it.
    int LineHeight() const {
        if (!m_style.IsOnBaseline()) return m_cell;
        const OUTLINETEXTMETRICW& metrics = Metrics();
        return GTL::ELEMENT::Difference(
            m_cell, CellPart(Sum(metrics.otmDescent, metrics.otmTextMetrics.tmInternalLeading)));
    }

    double LineSpacing() const {
        return double(m_cell) + CellPart(Sum(Metrics().otmTextMetrics.tmExternalLeading, 0));
    }

private:
    const OUTLINETEXTMETRICW& Metrics() const { return TextHeightFactComp::Get().GetMetrics(m_style); }
    int CellPart(int part) const { return ::CellPart(part, m_height, Metrics().otmTextMetrics); }

    static int Sum(std::int64_t a, std::int64_t b) { return static_cast<int>(std::abs(a) + std::abs(b)); }

    const TextInfo& m_style;
    const double m_scale = GDIScaleFactor::Get();
    int m_height = 0;
    std::optional<MeasuringFont> m_font;
    int m_width = 0;
    int m_cell = 0;
};

// One-line forms and settings files can hold any number.
Angle RotationOf(const TextInfo& info) {
    return std::isfinite(info.Rotation().Get()) ? info.Rotation() : Angle();
}

} // namespace

TextRectComp::Rectangle TextRectComp::operator()(const TextInfo& info, const wchar_t* text) {
    const Vector extents = GetTextExtents(info, text, false);
    Rectangle rectangle({}, extents.X(), extents.Y(), RotationOf(info));
    const Anchor anchor = AnchorOf(info.Justification());
    const Vector along = rectangle.Corner(1);
    const Vector up = rectangle.Corner(3);
    Move(rectangle, {0.0 - (anchor.along * along.X() + anchor.up * up.X()),
                     0.0 - (anchor.along * along.Y() + anchor.up * up.Y())});
    return rectangle;
}

TextRectComp::Rectangle TextRectComp::operator()(const TextInfo& info, const std::wstring& text) {
    return (*this)(info, text.c_str());
}

TextRectComp::Rectangle TextRectComp::operator()(const TextInfo& info, const wchar_t* text, double) {
    return (*this)(info, text);
}

TextRectComp::Rectangle TextRectComp::operator()(const TextInfo& info, const std::wstring& text, double) {
    return (*this)(info, text);
}

std::pair<std::pair<TextRectComp::Rectangle, std::wstring>, std::pair<TextRectComp::Rectangle, std::wstring>>
TextRectComp::operator()(const DepthLabelInfo& info, double value) {
    DepthLabelInfo style = info;
    style.SetMultiLine(false);
    style.SetSize(info.Size()); // which is not negative then
    DepthLabelText text = FormatDepth(info, value);
    const bool isInLine = IsInLine(info);
    if (isInLine && !text.decimals.empty()) text.decimals.insert(0, 1, L'.');
    if (isInLine && info.Placement() == DepthLabelInfo::WHOLE_LABEL) {
        text.whole += text.decimals;
        text.decimals.clear();
    }
    // The whole part last, whose text is kept.
    const Vector small = GetTextExtents(style, text.decimals.c_str(), !isInLine);
    const Vector large = GetTextExtents(style, text.whole.c_str(), false);
    Rectangle whole({}, large.X(), large.Y(), RotationOf(info));
    Rectangle decimals;
    if (!text.decimals.empty()) decimals = Rectangle({}, small.X(), small.Y(), RotationOf(info));
    OffsetLabels(style, whole, decimals);
    return {{whole, std::move(text.whole)}, {decimals, std::move(text.decimals)}};
}

bool TextRectComp::IsDryingHeight(const DepthLabelInfo& info, double value) {
    const DepthLabelText text = FormatDepth(info, value);
    const bool isZero = (text.whole + text.decimals).find_first_not_of(L"-0") == std::wstring::npos;
    return !isZero && !std::isnan(value) && (text.whole[0] == L'-') != info.GetSignIsInverted();
}

bool TextRectComp::HeightsFit(const TextInfo& info) {
    std::optional<TextInfo> copy;
    const TextInfo& style = Sized(info, false, copy);
    const OUTLINETEXTMETRICW& metrics = TextHeightFactComp::Get().GetMetrics(style);
    const double descent = std::abs(double(metrics.otmDescent));
    const double internal = std::abs(double(metrics.otmTextMetrics.tmInternalLeading));
    const double external = std::abs(double(metrics.otmTextMetrics.tmExternalLeading));
    const double size = double{style.Size()} * GDIScaleFactor::Get();
    const double height = std::ceil(size * double{TextHeightFactComp::Get()(style)});
    double largest = (descent + external + internal) * size; // which is the factor's
    if (style.MultiLine()) largest = std::max(largest, external * height);
    if (style.IsOnBaseline()) largest = std::max(largest, (descent + internal) * height);
    return !(largest > std::numeric_limits<std::int32_t>::max());
}

std::wstring TextRectComp::GetSubString(int index) const {
    return index >= 0 && index < GetNumberOfSubStrings() ? m_subStrings[static_cast<std::size_t>(index)]
                                                         : L"";
}

bool TextRectComp::GetSubString(int index, std::wstring& out) const {
    if (index >= 0 && index < GetNumberOfSubStrings()) out = m_subStrings[static_cast<std::size_t>(index)];
    return false;
}

GTL::Vector2D<double> TextRectComp::GetTextExtents(const TextInfo& info, const wchar_t* text, bool smaller) {
    if (!text || !*text) return {};
    if (info.MultiLine()) return GetMTextExtents(info, text);
    if (m_subStrings.empty()) m_subStrings.emplace_back();
    m_subStrings.front() = text;
    m_subStrings.resize(1);
    std::optional<TextInfo> copy;
    LineMeter meter(Sized(info, smaller, copy));
    if (!meter.Measure(m_subStrings.front())) {
        m_subStrings.clear();
        return {};
    }
    const int lineHeight = meter.LineHeight();
    m_textHeight = meter.World(lineHeight);
    return {meter.Adjusted(meter.Width()), meter.Adjusted(lineHeight)};
}

GTL::Vector2D<double> TextRectComp::GetMTextExtents(const TextInfo& info, const wchar_t* text) {
    std::optional<TextInfo> copy;
    LineMeter meter(Sized(info, false, copy));
    if (!meter.Measure(L" ")) {
        m_subStrings.clear();
        return {};
    }
    const auto width = [&](std::wstring_view line) {
        return !line.empty() && meter.Measure(line) ? meter.Adjusted(meter.Width()) : 0.0;
    };
    const std::vector<std::wstring_view> lines = DivideIntoLines(text, info.RectWidth(), width);
    m_subStrings = std::vector<std::wstring>(lines.begin(), lines.end());
    double widest = 0.0;
    for (const std::wstring_view line : m_subStrings) widest = std::max(widest, width(line));
    const double spacing = meter.LineSpacing();
    m_textHeight = meter.Adjusted(spacing);
    const auto others = static_cast<double>(m_subStrings.size() - 1);
    return {widest, meter.Adjusted(others * spacing + meter.LineHeight())};
}

void TextRectComp::OffsetLabels(const DepthLabelInfo& info, Rectangle& whole, Rectangle& decimals) const {
    // Where things are is reckoned along the text and upward, from the lower left of the whole part.
    const bool isOnBaseline = info.IsOnBaseline();
    const bool hasDecimals = decimals.Height() > 0.0;
    const double seam = whole.Width();
    double bottom = 0.0; // of the decimals
    if (hasDecimals && !isOnBaseline)
        bottom = (whole.Height() - decimals.Height()) * ShareBelowBaseline(info);
    if (hasDecimals && info.Presentation() == DepthLabelInfo::LOWERED_DECIMALS)
        bottom -= double{info.Size()} / 3.0;

    const Anchor anchor = AnchorOf(info.Justification());
    double x = seam, y = anchor.up * whole.Height(); // of what stands on the position
    if (info.Placement() == DepthLabelInfo::WHOLE_PART) {
        x = seam / 2.0;
        y = whole.Height() / 2.0;
    } else if (info.Placement() == DepthLabelInfo::WHOLE_LABEL) {
        const double low = isOnBaseline ? 0.0 : std::min(0.0, bottom);
        const double high = std::max(whole.Height(), bottom + decimals.Height());
        x = anchor.along * (seam + decimals.Width());
        y = low + anchor.up * (high - low);
    }

    const Angle rotation = RotationOf(info);
    const double sine = rotation.Sin(), cosine = rotation.Cos();
    const auto move = [&](Rectangle& rectangle, double along, double up) {
        Move(rectangle, {along * cosine + up * sine, up * cosine - along * sine});
    };
    move(whole, -x, -y);
    if (hasDecimals) move(decimals, seam - x, bottom - y);
}
