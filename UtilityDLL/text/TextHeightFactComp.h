// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/presentation/TextInfo.h"

#include <map>
#include <utility>

/// By how much the nominal height of a text style must be multiplied so that what is visible above the
/// descent has that height; with the outline metrics of the style's font. Each style is measured once, and
/// kept as long as the object lives, where it is: references and iterators stay valid.
///
/// Face (ignoring letter case), size and style flags make a style here (TextInfo::operator<); yet what is
/// measured is always the regular, upright font. Each takes about 450 bytes, and nothing else grows: memory
/// is bounded by the number of different faces, sizes and flags that a host asks for. One thread at a time
/// may use an object.
///
/// At a height of h = size * GDIScaleFactor::Get(), truncated, in a cell of tmHeight, the factor is
/// size * GDIScaleFactor::Get() / (h - (|otmDescent| + |tmExternalLeading| + |tmInternalLeading|) * h /
/// tmHeight). The integers are those of 32 bits that wrap, and their division truncates. The product leaves
/// 32 bits at a size that depends on the font, from 72 on (Droid Sans Fallback) or only from 88 on
/// (Liberation Mono): from there on factors have no sense. Below, they are negative where a font says that
/// the three parts are higher than its cell, as a damaged one can.
class UTILITYDLL_API TextHeightFactComp {
public:
    using Entry =
        std::pair<float, OUTLINETEXTMETRICW>;  ///< the factor, and the metrics at the size it was taken
    using Entries = std::map<TextInfo, Entry>; ///< the styles that were measured, in TextInfo's order

    /// The one that the library measures with. It lasts to the very end of the process, so that static
    /// objects may still measure in their destructors. Only making it is guarded against other threads.
    static TextHeightFactComp& Get();

    /// The style's factor, a pure ratio. 0 for a size of which nothing would be seen, as one that has less
    /// than one logical unit, and when it cannot be measured: its font has no outlines, its height is NaN or
    /// leaves 32 bits, or there is no display context (Windows). It is then tried again the next time.
    float operator()(const TextInfo& text);

    /// The metrics of the style's font at a cell height of its size times GDIScaleFactor::Get(), in logical
    /// units; at a size of 0, of a height of the system's choice. All zero for a style that cannot be
    /// measured.
    const OUTLINETEXTMETRICW& GetMetrics(const TextInfo& text);

    /// Measures the style and keeps it. The entry that there is when there is one, the map's end when it
    /// cannot be measured. There is nothing to compare the end with: hosts that go to an entry ask first
    /// whether GetMetrics() has an otmSize, which no style without an entry has.
    Entries::const_iterator AddEntry(const TextInfo& text);

private:
    Entries m_entries;
};
