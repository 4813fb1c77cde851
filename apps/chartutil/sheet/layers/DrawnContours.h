// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "apps/chartutil/sheet/layers/LineOnPaper.h"
#include "apps/chartutil/sheet/scene/MapFrame.h"
#include "apps/chartutil/sheet/scene/Scene.h"

#include <cstddef>
#include <vector>

/// The contours on the paper, those of the list's levels, and where they run.
class DrawnContours {
public:
    struct Contour {
        LineOnPaper line;
        ContourDefinitionList::ContourDefInfo look;
    };

    DrawnContours(const ContourDefinitionList& levels, const MapFrame& frame, const Scene& scene);

    const std::vector<Contour>& Contours() const { return m_contours; }

    /// Whether one of them runs through the box.
    bool Cross(const Occupied::Box& box) const;

    /// Whether one but that of this number runs through a rectangle of this size, with its centre there and
    /// turned clockwise.
    bool OthersCross(std::size_t contour, const Surface::Point& centre, double width, double height,
                     double degrees) const;

private:
    struct Segment {
        std::size_t contour, end; // from the point before it
    };

    std::vector<Contour> m_contours;
    std::vector<Segment> m_segments;
    Occupied m_boxes; // of each segment
};
