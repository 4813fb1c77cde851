// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/geometry/Geometry.h"
#include "apps/chartutil/sheet/scene/MapFrame.h"

#include <array>
#include <vector>

/// Where meridians and parallels run on the map and cross its sides, in any projection: round the poles and
/// across the meridian of 180 degrees as well. Longitudes may therefore lie outside -180 to 180. Where the
/// projection has no place for a longitude and latitude, or the other way round, there are gaps.
class Graticule {
public:
    enum Side { BOTTOM, TOP, LEFT, RIGHT };
    static constexpr std::array kSides = {BOTTOM, TOP, LEFT, RIGHT};

    using Line = std::vector<Surface::Point>;

    /// Where a side crosses a line: a multiple of an interval, so many millimetres from the side's left or
    /// lower end.
    struct Crossing {
        long long multiple;
        double place;
    };

    /// Both must outlive this.
    Graticule(const MapFrame& frame, const CoordinateSystem& system);

    /// At the lower and upper side longitudes are read, at the others latitudes.
    static bool ReadsLongitudes(Side side) { return side == BOTTOM || side == TOP; }

    /// How long the side is, in millimetres.
    double Length(Side side) const;

    /// How fast the degrees that are read at the side change along it, at most of the two such sides; 0 where
    /// they do not.
    double DegreesPerMm(Side side) const;

    /// All crossings with multiples of `interval` degrees, in the order of their places, to a thousandth of a
    /// millimetre. None where there would be more than MOST of them, or the interval is not above 0.
    std::vector<Crossing> Crossings(Side side, double interval) const;

    /// In which interval a side begins, counted from 0 degrees. 0 where nobody knows.
    long long FirstInterval(Side side, double interval) const;

    /// How many lines there are about, for an interval in degrees; infinite where it is not above 0.
    double NumMeridians(double interval) const;
    double NumParallels(double interval) const;

    /// The lines at the multiples of `interval` degrees, within the map. None where there would be more than
    /// MOST.
    std::vector<Line> Meridians(double interval) const;
    std::vector<Line> Parallels(double interval) const;

    /// The places within the map where both cross.
    Line Intersections(double lonInterval, double latInterval) const;

    static constexpr int MOST = 5000;

private:
    struct Range {
        double low = 0, high = -1;
        bool IsEmpty() const { return !(low <= high); }
        double Size() const { return high - low; }
    };

    WorldPoint PlaceOn(Side side, double along) const;
    double Unwrapped(double degrees, double near) const;
    void FindSides();
    void FindRanges();
    bool HasPole(double latitude) const;
    std::vector<Line> Lines(double interval, const Range& range, bool isMeridian) const;
    void AddClipped(const std::vector<WorldPoint>& points, std::vector<Line>& lines) const;

    const MapFrame& m_frame;
    const CoordinateSystem& m_system;
    std::array<std::vector<double>, 4> m_values; // along each side, at equal distances
    Range m_longitudes, m_latitudes;
};
