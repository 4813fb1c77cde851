// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/PaperGrid.h"

#include "UtilityDLL/presentation/private/Fields.h"

namespace {

double Snapped(double coordinate, double step, double origin) {
    if (step == 0.0) return coordinate;
    const double distance = coordinate - origin;
    const double lines = std::floor(std::fabs(distance) / step + 0.5);
    return (distance >= 0.0 ? lines : -lines) * step + origin;
}

} // namespace

template <typename Exchange, typename Record> bool PaperGrid::Fields(Exchange field, Record& record) {
    field(L"XStep"_key, record.m_xStep, FORM::Magnitude());
    field(L"YStep"_key, record.m_yStep, FORM::Magnitude());
    field(L"Visible"_key, record.m_visible);
    field(L"SnapOn"_key, record.m_snapOn);
    // "Oringin" is how existing layout files spell it.
    field.OnlyWritten(L"OringinX"_key, record.m_origin.X());
    field.OnlyWritten(L"OringinY"_key, record.m_origin.Y());
    return true;
}

ErrorString PaperGrid::Read(const Section& section) {
    return ErrorString(Fields(FieldReader(section), *this));
}

ErrorString PaperGrid::Write(Section& section) const {
    return ErrorString(Fields(FieldWriter(section), *this));
}

bool PaperGrid::operator==(const PaperGrid& other) const {
    return MATH::equal(m_xStep, other.m_xStep) && MATH::equal(m_yStep, other.m_yStep) &&
           m_origin == other.m_origin && m_snapOn == other.m_snapOn && m_visible == other.m_visible;
}

GTL::Point2D<double> PaperGrid::SnapToGrid(const GTL::Point2D<double>& p) const {
    return {Snapped(p.X(), m_xStep, static_cast<double>(m_origin.X())),
            Snapped(p.Y(), m_yStep, static_cast<double>(m_origin.Y()))};
}
