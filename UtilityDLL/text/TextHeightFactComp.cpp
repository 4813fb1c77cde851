// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextHeightFactComp.h"

#include "UtilityDLL/GTL/Element.h"
#include "UtilityDLL/text/GDIScaleFactor.h"
#include "UtilityDLL/text/private/MeasuringDevice.h"
#include "UtilityDLL/text/private/MeasuringFont.h"
#include "VelmBase/Math.h"
#include "VelmBase/UntilUnloaded.h"

#include <limits>

namespace {

using GTL::ELEMENT::Difference;
using GTL::ELEMENT::Sum;

int Magnitude(int length) { return length < 0 ? Difference(0, length) : length; }

} // namespace

TextHeightFactComp& TextHeightFactComp::Get() {
    // A host's static objects may measure in their destructors, when the process ends.
    static UntilUnloaded<TextHeightFactComp> instance;
    return *instance;
}

float TextHeightFactComp::operator()(const TextInfo& text) {
    const auto entry = AddEntry(text);
    return entry == m_entries.end() ? 0.0f : entry->second.first;
}

const OUTLINETEXTMETRICW& TextHeightFactComp::GetMetrics(const TextInfo& text) {
    static constexpr OUTLINETEXTMETRICW none = {};
    const auto entry = AddEntry(text);
    return entry == m_entries.end() ? none : entry->second.second;
}

TextHeightFactComp::Entries::const_iterator TextHeightFactComp::AddEntry(const TextInfo& text) {
    const double scale = GDIScaleFactor::Get();
    const int height = MATH::ToInt(double{text.Size()} * scale);
    if (height == std::numeric_limits<int>::min())
        return m_entries.end(); // NaN, which has no place in the map's order, or it does not fit
    const auto place = m_entries.lower_bound(text);
    if (place != m_entries.end() && !(text < place->first)) return place;
    const MeasuringFont font(height, false, false, false, text.Font());
    OUTLINETEXTMETRICW metrics = {};
    if (font.GetOutlineTextMetricsW(sizeof metrics, &metrics) == 0) return m_entries.end();
    const TEXTMETRICW& cell = metrics.otmTextMetrics;
    const int hidden =
        Sum(Magnitude(metrics.otmDescent), Sum(Magnitude(static_cast<int>(cell.tmExternalLeading)),
                                               Magnitude(static_cast<int>(cell.tmInternalLeading))));
    const int visible = Difference(height, CellPart(hidden, height, cell));
    const double factor = visible == 0 ? 0.0 : text.Size() / (visible / scale);
    return m_entries.emplace_hint(place, text, Entry(static_cast<float>(factor), metrics));
}
