#include "UtilityDLL/text/TextHeightFactComp.h"

#include "UtilityDLL/text/GDIScaleFactor.h"
#include "UtilityDLL/text/GDISelector.h"
#include "UtilityDLL/text/private/MeasuringDevice.h"
#include "VelmBase/Math.h"

#include <cstdlib>

TextHeightFactComp& TextHeightFactComp::Get() {
    static TextHeightFactComp instance;
    return instance;
}

float TextHeightFactComp::operator()(const TextInfo& text) {
    const auto entry = Find(text);
    return entry == m_entries.end() ? 0.0f : entry->second.first;
}

const OUTLINETEXTMETRICW& TextHeightFactComp::GetMetrics(const TextInfo& text) {
    static const OUTLINETEXTMETRICW none = {};
    const auto entry = Find(text);
    return entry == m_entries.end() ? none : entry->second.second;
}

TextHeightFactComp::Entries::const_iterator TextHeightFactComp::Find(const TextInfo& text) {
    const auto entry = m_entries.find(text);
    return entry == m_entries.end() ? AddEntry(text) : entry;
}

TextHeightFactComp::Entries::const_iterator TextHeightFactComp::AddEntry(const TextInfo& text) {
    MeasuringDevice device;
    const double scale = GDIScaleFactor::Get();
    const int height = MATH::ToInt(double{text.Size()} * scale);
    CFont font;
    MakeMeasuringFont(font, height, false, false, false, text.Font());
    const GDISelector selected(&device, font);
    OUTLINETEXTMETRICW metrics = {};
    if (device.GetOutlineTextMetricsW(sizeof metrics, &metrics) == 0) return m_entries.end();
    const TEXTMETRICW& cell = metrics.otmTextMetrics;
    const int below = std::abs(metrics.otmDescent) + std::abs(static_cast<int>(cell.tmExternalLeading)) +
                      std::abs(static_cast<int>(cell.tmInternalLeading));
    const int visible = height - CellPart(below, height, cell);
    const double factor = visible == 0 ? 0.0 : text.Size() / (visible / scale);
    return m_entries.emplace(text, Entry(static_cast<float>(factor), metrics)).first;
}
