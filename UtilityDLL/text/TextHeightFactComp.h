#pragma once

#include "Framework/device/Gdi.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/presentation/TextInfo.h"

#include <map>
#include <utility>

/// By how much the nominal height of a text style must be multiplied so that what is visible above the
/// descent has that height; with the outline metrics of the style's font. Each style is measured once, and
/// kept as long as the object lives.
///
/// Face (ignoring letter case), size and style flags make a style here (TextInfo::operator<); yet what is
/// measured is always the regular, upright font. One thread at a time may use an object.
class UTILITYDLL_API TextHeightFactComp {
public:
    using Entry =
        std::pair<float, OUTLINETEXTMETRICW>; ///< the factor, and the metrics at the size it was taken
    using Entries = std::map<TextInfo, Entry>;

    /// The one that the library measures with. It lives until the process ends.
    static TextHeightFactComp& Get();

    /// The style's factor, a pure ratio. 0 when it cannot be measured: its font has no outlines, or there is
    /// no display context (Windows). It is then tried again the next time.
    float operator()(const TextInfo& text);

    /// The metrics of the style's font at a cell height of its size times GDIScaleFactor::Get(), in logical
    /// units. All zero for a style whose factor is 0 because it cannot be measured.
    const OUTLINETEXTMETRICW& GetMetrics(const TextInfo& text);

    /// Measures the style and keeps it. The entry that there is when there is one, the map's end on failure.
    Entries::const_iterator AddEntry(const TextInfo& text);

private:
    Entries::const_iterator Find(const TextInfo& text);

    Entries m_entries;
};
