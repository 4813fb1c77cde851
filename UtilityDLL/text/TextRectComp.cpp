#include "UtilityDLL/text/TextRectComp.h"

#include "UtilityDLL/text/GDIScaleFactor.h"
#include "UtilityDLL/text/GDISelector.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/private/MeasuringDevice.h"
#include "VelmBase/Math.h"

#include <cmath>
#include <cstdlib>

namespace {

bool IsOnBaseline(TextInfo::JUSTIFICATION justification) {
    return justification >= TextInfo::BASELINE_LEFT && justification <= TextInfo::BASELINE_RIGHT;
}

// The point of a box of width and height 1, from its lower left corner, that sits on the insertion point.
GTL::Point2D<double> Anchor(TextInfo::JUSTIFICATION justification) {
    switch (justification) {
    case TextInfo::BOTTOM_CENTER:
    case TextInfo::BASELINE_CENTER:
        return {0.5, 0.0};
    case TextInfo::BOTTOM_RIGHT:
    case TextInfo::BASELINE_RIGHT:
        return {1.0, 0.0};
    case TextInfo::MIDDLE_RIGHT:
        return {1.0, 0.5};
    case TextInfo::TOP_RIGHT:
        return {1.0, 1.0};
    case TextInfo::TOP_CENTER:
        return {0.5, 1.0};
    case TextInfo::TOP_LEFT:
        return {0.0, 1.0};
    case TextInfo::MIDDLE_LEFT:
        return {0.0, 0.5};
    case TextInfo::MIDDLE_CENTER:
        return {0.5, 0.5};
    default:
        return {0.0, 0.0};
    }
}

TextRectComp::Rectangle Place(const TextInfo& info, const GTL::Vector2D<double>& extents) {
    const TextRectComp::Rectangle atOrigin({}, extents.X(), extents.Y(), info.Rotation());
    const GTL::Point2D<double> anchor = Anchor(info.Justification());
    const GTL::Vector2D<double> along = atOrigin.Corner(1) - atOrigin.Corner(0);
    const GTL::Vector2D<double> up = atOrigin.Corner(3) - atOrigin.Corner(0);
    const GTL::Point2D<double> origin(-anchor.X() * along.X() - anchor.Y() * up.X(),
                                      -anchor.X() * along.Y() - anchor.Y() * up.Y());
    return {origin, extents.X(), extents.Y(), info.Rotation()};
}

} // namespace

TextRectComp::Rectangle TextRectComp::operator()(const TextInfo& info, const wchar_t* text) {
    return Place(info, GetTextExtents(info, text, false));
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
    std::wstring line = text; // it may be one of the lines that are forgotten here
    m_subStrings.clear();
    MeasuringDevice device;
    TextInfo sized = info;
    sized.SetSize(static_cast<float>(info.Size() * (smaller ? 0.6666666666666666 : 1.0)));
    const double scale = GDIScaleFactor::Get();
    const float factor = TextHeightFactComp::Get()(sized);
    if (factor == 0.0f) return {};
    const int height = MATH::ToInt(std::ceil(sized.Size() * (factor * scale)));
    CFont font;
    MakeMeasuringFont(font, height, (info.Style() & TextInfo::BOLD) != 0,
                      (info.Style() & TextInfo::ITALIC) != 0, (info.Style() & TextInfo::UNDERLINE) != 0,
                      sized.Font());
    const GDISelector selected(&device, font);
    const CSize extent = device.GetTextExtent(line);
    const double ratio = double(height) / extent.cy;
    const OUTLINETEXTMETRICW& metrics = TextHeightFactComp::Get().GetMetrics(sized);
    int lineHeight = extent.cy;
    if (IsOnBaseline(info.Justification())) {
        const int below = std::abs(metrics.otmDescent) +
                          std::abs(static_cast<int>(metrics.otmTextMetrics.tmInternalLeading));
        lineHeight -= CellPart(below, height, metrics.otmTextMetrics);
    }
    m_subStrings.push_back(std::move(line));
    m_textHeight = lineHeight / scale;
    return {extent.cx / scale * ratio, lineHeight / scale * ratio};
}

GTL::Vector2D<double> TextRectComp::GetMTextExtents(const TextInfo& info, const wchar_t* text) {
    TextInfo single = info;
    single.SetMultiLine(false);
    return GetTextExtents(single, text, false);
}

std::pair<std::pair<TextRectComp::Rectangle, std::wstring>, std::pair<TextRectComp::Rectangle, std::wstring>>
TextRectComp::operator()(const DepthLabelInfo& info, double value) {
    const std::wstring text = std::to_wstring(value);
    return {{(*this)(info, text), text}, {}};
}

void TextRectComp::OffsetLabels(const DepthLabelInfo&, Rectangle&, Rectangle&) const {}
