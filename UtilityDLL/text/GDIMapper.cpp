// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/GDIMapper.h"

#include "UtilityDLL/GTL/Element.h"
#include "VelmBase/Math.h"

void GDIMapper::Create(const GTL::Extents2D<double>& world, const CRect& device) {
    const int width = GTL::ELEMENT::Difference(device.right, device.left);
    m_deviceHeight = GTL::ELEMENT::Difference(device.bottom, device.top);
    const double sy = world.ExtentY() / m_deviceHeight;
    const double sx = world.ExtentX() / width;
    m_scale = sy > sx ? sy : sx;
    m_worldCentre = world.Center();
    m_deviceCentre = {GTL::ELEMENT::Sum(device.left, device.right) / 2,
                      GTL::ELEMENT::Sum(device.top, device.bottom) / 2};
}

CPoint GDIMapper::operator<<(const GTL::Point2D<double>& point) const {
    const double u = (point.X() - m_worldCentre.X()) / m_scale + m_deviceCentre.x;
    const double v = (point.Y() - m_worldCentre.Y()) / m_scale + m_deviceCentre.y;
    return {MATH::ToInt(u), GTL::ELEMENT::Difference(m_deviceHeight, MATH::ToInt(v))};
}

GTL::Point2D<double> GDIMapper::operator<<(const CPoint& pixel) const {
    const double x = GTL::ELEMENT::Difference(pixel.x, m_deviceCentre.x) + 0.5;
    const double y =
        GTL::ELEMENT::Difference(GTL::ELEMENT::Difference(m_deviceHeight, pixel.y), m_deviceCentre.y) - 0.5;
    return {x * m_scale + m_worldCentre.X(), y * m_scale + m_worldCentre.Y()};
}

int GDIMapper::PixelDist(double distance) const { return MATH::ToInt(distance / m_scale + 0.5); }
