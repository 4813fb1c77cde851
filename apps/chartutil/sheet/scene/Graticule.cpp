// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Graticule.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kSteps = 400; // along a side and along a line

double Share(int step) { return static_cast<double>(step) / kSteps; }

// So far from 0 that multiples cannot be counted any more.
bool IsTooFar(double degrees, double interval) { return !(std::fabs(degrees / interval) < 1e12); }

// What of the segment lies in the box, as shares of its length. False when nothing does.
bool Clip(const WorldPoint& a, const WorldPoint& b, const WorldBox& box, double& from, double& to) {
    from = 0, to = 1;
    const auto cut = [&](double start, double step, double low, double high) {
        if (step == 0) return start >= low && start <= high;
        const double first = (low - start) / step, second = (high - start) / step;
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
        return from <= to;
    };
    return cut(a.X(), b.X() - a.X(), box.MinX(), box.MaxX()) &&
           cut(a.Y(), b.Y() - a.Y(), box.MinY(), box.MaxY());
}

WorldPoint Between(const WorldPoint& a, const WorldPoint& b, double share) {
    return {a.X() + (b.X() - a.X()) * share, a.Y() + (b.Y() - a.Y()) * share};
}

} // namespace

Graticule::Graticule(const MapFrame& frame, const CoordinateSystem& system)
    : m_frame(frame), m_system(system) {
    FindSides();
    FindRanges();
}

double Graticule::Length(Side side) const {
    return ReadsLongitudes(side) ? m_frame.Width() : m_frame.Height();
}

// From the left to the right, and from below upwards.
WorldPoint Graticule::PlaceOn(Side side, double along) const {
    const WorldBox& box = m_frame.World();
    const double x = box.MinX() + along * m_frame.UnitsPerMm(), y = box.MinY() + along * m_frame.UnitsPerMm();
    switch (side) {
    case BOTTOM:
        return {x, box.MinY()};
    case TOP:
        return {x, box.MaxY()};
    case LEFT:
        return {box.MinX(), y};
    default:
        return {box.MaxX(), y};
    }
}

// Longitudes jump at 180 degrees, those of a geographic system where its map says.
double Graticule::Unwrapped(double degrees, double near) const {
    if (m_system.IsGeographic()) return degrees;
    return near + std::remainder(degrees - near, 360.0);
}

void Graticule::FindSides() {
    for (const Side side : kSides) {
        std::vector<WorldPoint> points;
        for (int i = 0; i <= kSteps; ++i) points.push_back(PlaceOn(side, Length(side) * Share(i)));
        m_system.ToGeographic(points);
        double near = std::numeric_limits<double>::quiet_NaN();
        for (const WorldPoint& point : points) {
            double value = ReadsLongitudes(side) ? point.X() : point.Y();
            if (ReadsLongitudes(side) && std::isfinite(near)) value = Unwrapped(value, near);
            if (std::isfinite(value)) near = value;
            m_values[side].push_back(value);
        }
    }
}

bool Graticule::HasPole(double latitude) const {
    std::vector<WorldPoint> pole = {{m_longitudes.low, latitude}};
    m_system.FromGeographic(pole);
    const WorldBox& box = m_frame.World();
    const WorldPoint& at = pole.front();
    return at.X() >= box.MinX() && at.X() <= box.MaxX() && at.Y() >= box.MinY() && at.Y() <= box.MaxY();
}

void Graticule::FindRanges() {
    const WorldBox& box = m_frame.World();
    std::vector<WorldPoint> points = {box.Center()};
    for (const Side side : kSides)
        for (int i = 0; i <= kSteps; ++i) points.push_back(PlaceOn(side, Length(side) * Share(i)));
    constexpr int kWithin = 32;
    for (int row = 1; row < kWithin; ++row)
        for (int column = 1; column < kWithin; ++column)
            points.emplace_back(box.MinX() + box.ExtentX() * column / kWithin,
                                box.MinY() + box.ExtentY() * row / kWithin);
    m_system.ToGeographic(points);
    std::erase_if(points, [](const WorldPoint& point) {
        return !std::isfinite(point.X()) || !std::isfinite(point.Y());
    });
    if (points.empty()) return;
    const double middle = points.front().X();
    m_longitudes = {middle, middle};
    m_latitudes = {points.front().Y(), points.front().Y()};
    for (const WorldPoint& point : points) {
        const double longitude = Unwrapped(point.X(), middle);
        m_longitudes = {std::min(m_longitudes.low, longitude), std::max(m_longitudes.high, longitude)};
        m_latitudes = {std::min(m_latitudes.low, point.Y()), std::max(m_latitudes.high, point.Y())};
    }
    m_latitudes = {std::max(m_latitudes.low, -90.0), std::min(m_latitudes.high, 90.0)};
    if (m_system.IsGeographic()) return;
    for (const double pole : {-90.0, 90.0}) {
        if (!HasPole(pole)) continue;
        m_longitudes = {middle - 180, middle + 180};
        (pole < 0 ? m_latitudes.low : m_latitudes.high) = pole;
    }
}

double Graticule::DegreesPerMm(Side side) const {
    double most = 0;
    for (const Side each : kSides) {
        if (ReadsLongitudes(each) != ReadsLongitudes(side)) continue;
        double change = 0;
        for (std::size_t i = 1; i < m_values[each].size(); ++i) {
            const double step = std::fabs(m_values[each][i] - m_values[each][i - 1]);
            if (std::isfinite(step)) change += step;
        }
        most = std::max(most, change / Length(each));
    }
    return most;
}

std::vector<Graticule::Crossing> Graticule::Crossings(Side side, double interval) const {
    if (!(interval > 0) || DegreesPerMm(side) * Length(side) / interval > MOST) return {};
    struct Bracket {
        long long multiple;
        double from, fromValue, to, toValue; // millimetres and degrees
        double At(double degrees) const {
            return from + (to - from) * (degrees - fromValue) / (toValue - fromValue);
        }
    };
    std::vector<Bracket> brackets;
    const std::vector<double>& values = m_values[side];
    for (int i = 1; i <= kSteps; ++i) {
        const double from = values[static_cast<std::size_t>(i) - 1], to = values[static_cast<std::size_t>(i)];
        if (IsTooFar(from, interval) || IsTooFar(to, interval)) continue; // or no number
        const auto before = static_cast<long long>(std::floor(from / interval)),
                   behind = static_cast<long long>(std::floor(to / interval));
        const auto add = [&](long long multiple) {
            brackets.push_back({multiple, Length(side) * Share(i - 1), from, Length(side) * Share(i), to});
        };
        for (long long multiple = before + 1; multiple <= behind; ++multiple) add(multiple);
        for (long long multiple = before; multiple > behind; --multiple) add(multiple);
    }
    // Between two places a line is nearly straight: a few steps of the rule of false position are enough.
    constexpr int kRefinements = 3;
    for (int refinement = 0; refinement < kRefinements; ++refinement) {
        std::vector<WorldPoint> points;
        points.reserve(brackets.size());
        for (const Bracket& bracket : brackets)
            points.push_back(PlaceOn(side, bracket.At(static_cast<double>(bracket.multiple) * interval)));
        m_system.ToGeographic(points);
        for (std::size_t i = 0; i < brackets.size(); ++i) {
            Bracket& bracket = brackets[i];
            const double degrees = static_cast<double>(bracket.multiple) * interval;
            const double place = bracket.At(degrees);
            const double value = ReadsLongitudes(side) ? Unwrapped(points[i].X(), degrees) : points[i].Y();
            if (!std::isfinite(value) || place <= bracket.from || place >= bracket.to) continue;
            const bool isBefore = (value < degrees) == (bracket.fromValue < bracket.toValue);
            (isBefore ? bracket.from : bracket.to) = place;
            (isBefore ? bracket.fromValue : bracket.toValue) = value;
        }
    }
    std::vector<Crossing> crossings;
    for (const Bracket& bracket : brackets) {
        const double place = bracket.At(static_cast<double>(bracket.multiple) * interval);
        crossings.push_back({bracket.multiple, std::isfinite(place) ? place : bracket.from});
    }
    return crossings;
}

long long Graticule::FirstInterval(Side side, double interval) const {
    const auto first =
        std::ranges::find_if(m_values[side], [](double value) { return std::isfinite(value); });
    if (first == m_values[side].end() || IsTooFar(*first, interval)) return 0;
    return static_cast<long long>(std::floor(*first / interval));
}

double Graticule::NumMeridians(double interval) const {
    return interval > 0 ? std::max(m_longitudes.Size(), 0.0) / interval
                        : std::numeric_limits<double>::infinity();
}

double Graticule::NumParallels(double interval) const {
    return interval > 0 ? std::max(m_latitudes.Size(), 0.0) / interval
                        : std::numeric_limits<double>::infinity();
}

std::vector<Graticule::Line> Graticule::Meridians(double interval) const {
    return Lines(interval, m_longitudes, true);
}

std::vector<Graticule::Line> Graticule::Parallels(double interval) const {
    return Lines(interval, m_latitudes, false);
}

std::vector<Graticule::Line> Graticule::Lines(double interval, const Range& range, bool isMeridian) const {
    std::vector<Line> lines;
    const Range& along = isMeridian ? m_latitudes : m_longitudes;
    if (!(interval > 0) || range.IsEmpty() || along.IsEmpty() || range.Size() / interval > MOST ||
        IsTooFar(range.low, interval))
        return lines;
    const bool isRound = isMeridian && range.Size() >= 360; // its last meridian is its first
    for (double multiple = std::ceil(range.low / interval); multiple * interval <= range.high; ++multiple) {
        const double value = multiple * interval;
        if (isRound && value >= range.low + 360) break;
        std::vector<WorldPoint> points;
        for (int i = 0; i <= kSteps; ++i) {
            const double at = along.low + along.Size() * Share(i);
            points.push_back(isMeridian ? WorldPoint(value, at) : WorldPoint(at, value));
        }
        m_system.FromGeographic(points);
        AddClipped(points, lines);
    }
    return lines;
}

// Neighbours that are far apart are at both ends of the projection.
void Graticule::AddClipped(const std::vector<WorldPoint>& points, std::vector<Line>& lines) const {
    const WorldBox& box = m_frame.World();
    const double longest = std::hypot(box.ExtentX(), box.ExtentY()) / 4;
    Line line;
    const auto close = [&] {
        if (line.size() > 1) lines.push_back(std::move(line));
        line.clear();
    };
    for (std::size_t i = 1; i < points.size(); ++i) {
        const WorldPoint &a = points[i - 1], &b = points[i];
        const double length = std::hypot(b.X() - a.X(), b.Y() - a.Y());
        double from = 0, to = 0;
        if (!(length <= longest) || !Clip(a, b, box, from, to)) {
            close();
            continue;
        }
        if (line.empty()) line.push_back(m_frame(Between(a, b, from)));
        line.push_back(m_frame(Between(a, b, to)));
        if (to < 1) close();
    }
    close();
}

Graticule::Line Graticule::Intersections(double lonInterval, double latInterval) const {
    Line places;
    if (m_longitudes.IsEmpty() || m_latitudes.IsEmpty()) return places;
    const double meridians = NumMeridians(lonInterval), parallels = NumParallels(latInterval);
    constexpr double kMost = 1e6;
    if (!((meridians + 1) * (parallels + 1) < kMost) || IsTooFar(m_longitudes.low, lonInterval) ||
        IsTooFar(m_latitudes.low, latInterval))
        return places;
    const WorldBox& box = m_frame.World();
    std::vector<WorldPoint> points;
    for (double m = std::ceil(m_longitudes.low / lonInterval); m * lonInterval <= m_longitudes.high; ++m) {
        if (m * lonInterval >= m_longitudes.low + 360) break;
        for (double p = std::ceil(m_latitudes.low / latInterval); p * latInterval <= m_latitudes.high; ++p)
            points.emplace_back(m * lonInterval, p * latInterval);
    }
    m_system.FromGeographic(points);
    for (const WorldPoint& point : points)
        if (point.X() >= box.MinX() && point.X() <= box.MaxX() && point.Y() >= box.MinY() &&
            point.Y() <= box.MaxY())
            places.push_back(m_frame(point));
    return places;
}
