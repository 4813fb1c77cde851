// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/MapFrame.h"

#include <algorithm>
#include <cmath>

namespace {

// The smallest of these numbers, times a power of ten, that is not below `scale`.
double RoundScale(double scale) {
    constexpr double kRound[] = {1, 1.25, 1.5, 2, 2.5, 3, 4, 5, 6, 7.5, 8, 10};
    const double power = std::pow(10, std::floor(std::log10(scale)));
    for (const double round : kRound)
        if (round * power >= scale * (1 - 1e-9)) return round * power;
    return scale;
}

} // namespace

MapFrame::MapFrame(const Project& project, const WorldBox& data)
    : m_left(project.margin + project.borderStyle.room), m_top(m_left),
      m_width(std::max(project.paperWidth - 2 * m_left, 1.0)),
      m_height(std::max(project.paperHeight - 2 * m_top, 1.0)) {
    constexpr double kAir = 1.02, kOfNone = 1000;
    const double fitting = std::max(data.ExtentX() / m_width, data.ExtentY() / m_height) * 1000 * kAir;
    const double scale = fitting < 1 ? kOfNone : RoundScale(fitting);
    m_unitsPerMm = (project.scale > 0 ? project.scale : scale) / 1000;
    const WorldPoint centre =
        project.hasCentre ? WorldPoint(project.centreX, project.centreY) : data.Center();
    const double halfWidth = m_width * m_unitsPerMm / 2, halfHeight = m_height * m_unitsPerMm / 2;
    m_world.Update(centre.X() - halfWidth, centre.Y() - halfHeight);
    m_world.Update(centre.X() + halfWidth, centre.Y() + halfHeight);
}
