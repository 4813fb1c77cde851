// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/sheet/geometry/Geometry.h"
#include "apps/chartutil/sheet/project/Project.h"
#include "apps/chartutil/sheet/scene/Occupied.h"

/// Where the map is on the paper, and at which scale. Millimetres are those of a Surface.
class MapFrame {
public:
    /// Within the margins of the project's paper, with room for the border, so that `data` fits. What has no
    /// extent to fit is shown at 1:1000.
    MapFrame(const Project& project, const WorldBox& data);

    double Left() const { return m_left; }
    double Top() const { return m_top; }
    double Width() const { return m_width; }
    double Height() const { return m_height; }
    double Right() const { return m_left + m_width; }
    double Bottom() const { return m_top + m_height; }

    const WorldBox& World() const { return m_world; }
    double Scale() const { return m_unitsPerMm * 1000; } ///< 1 to this
    double UnitsPerMm() const { return m_unitsPerMm; }

    Surface::Point operator()(const WorldPoint& place) const {
        return {m_left + (place.X() - m_world.MinX()) / m_unitsPerMm,
                m_top + (m_world.MaxY() - place.Y()) / m_unitsPerMm};
    }

    WorldPoint WorldAt(const Surface::Point& place) const {
        return {m_world.MinX() + (place.x - m_left) * m_unitsPerMm,
                m_world.MaxY() - (place.y - m_top) * m_unitsPerMm};
    }

    bool IsWithin(const Occupied::Box& box) const {
        return box.left > Left() && box.right < Right() && box.top > Top() && box.bottom < Bottom();
    }

private:
    double m_left, m_top, m_width, m_height;
    double m_unitsPerMm;
    WorldBox m_world;
};
