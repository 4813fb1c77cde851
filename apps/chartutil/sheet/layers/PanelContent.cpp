// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/PanelContent.h"

namespace {

PlacedText PlaceWrapped(TextInfo style, TextInfo::JUSTIFICATION justification, const std::wstring& text,
                        double width, Surface::Point place) {
    style.SetJustification(justification);
    style.SetRotation(Angle(0.0));
    style.SetMultiLine(true);
    style.SetRectWidth(static_cast<float>(width));
    return PlaceText(style, text, place);
}

} // namespace

PlacedText PlaceCentred(const TextInfo& style, const std::wstring& text, double width, double x, double y) {
    return PlaceWrapped(style, TextInfo::TOP_CENTER, text, width, {x, y});
}

PlacedText PlaceLeft(const TextInfo& style, const std::wstring& text, double width, double x, double y) {
    return PlaceWrapped(style, TextInfo::TOP_LEFT, text, width, {x, y});
}

double HeightOf(const PlacedText& text) {
    const Occupied::Box box = text.Box(0);
    return text.parts.empty() ? 0 : box.bottom - box.top;
}

double WidthOf(const PlacedText& text) {
    const Occupied::Box box = text.Box(0);
    return text.parts.empty() ? 0 : box.right - box.left;
}
