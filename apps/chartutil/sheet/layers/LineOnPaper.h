// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/sheet/scene/Occupied.h"

#include <optional>
#include <utility>
#include <vector>

/// A line of the map on the paper, by the way along it in millimetres. It has two points at least.
class LineOnPaper {
public:
    explicit LineOnPaper(std::vector<Surface::Point> points);

    double Length() const { return m_ways.back(); }
    bool IsClosed() const;
    const std::vector<Surface::Point>& Points() const { return m_points; }
    const std::vector<double>& Ways() const { return m_ways; } ///< to each point

    /// Its ends for what lies before and beyond them.
    Surface::Point At(double way) const;
    std::vector<Surface::Point> Part(double from, double to) const;

private:
    std::vector<Surface::Point> m_points;
    std::vector<double> m_ways;
};

/// A part of a line that is left out, by the way along it.
struct Gap {
    double from, to;
};

/// The part of the way from one point to the other, as shares of it, that lies in the box; none where that is
/// a single place at most.
std::optional<std::pair<double, double>> PartWithin(const Surface::Point& from, const Surface::Point& to,
                                                    const Occupied::Box& box);

/// Where the line runs through what stands on the paper.
std::vector<Gap> GapsFor(const LineOnPaper& line, const Occupied& occupied);

/// Draws what is left of the line. What remains between two gaps and is too short to be seen as a line is
/// left out as well.
void DrawBroken(const LineOnPaper& line, std::vector<Gap> gaps, const Surface::Pen& pen, Surface& surface);
