// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/GeoGridInfo.h"

#include <string>

/// How a longitude or latitude is written: in degrees, in degrees and minutes, or with seconds as well. It is
/// rounded once, in the last unit that is shown, so that 60 minutes or seconds are never written.
struct DegreeFormat {
    enum Parts { DEGREES, MINUTES, SECONDS };
    Parts parts = MINUTES;
    int decimals = 0;             ///< of the last part, 0 to 9
    bool hasSymbols = true;       ///< or blanks between the parts
    bool isHemisphereLast = true; ///< the letter, N, S, E or W

    /// What a record asks for. LatLonStyle: 0 degrees and minutes (and so any number without a meaning), 1
    /// degrees, minutes and seconds, 2 degrees; LatLonDecimals are those of the last part.
    static DegreeFormat Of(const GeoGridInfo& info);
};

/// The value with its hemisphere, which neither the equator, the meridian of Greenwich nor that of 180
/// degrees has. Longitudes are brought into -180 to 180. Empty for what is no number below a million.
std::wstring DegreeText(double degrees, bool isLatitude, const DegreeFormat& format);

/// The same without the degrees and the hemisphere, for a place beside a full label: "25′". Whole where the
/// format has degrees alone.
std::wstring MinuteText(double degrees, bool isLatitude, const DegreeFormat& format);

/// The text without decimals that the value does not need: the format with the fewest that write it as
/// exactly as this one does.
DegreeFormat Shortened(double degrees, DegreeFormat format);

/// Whether the format writes the value without rounding it, but for errors of computation.
bool IsWrittenExactly(double degrees, const DegreeFormat& format);
