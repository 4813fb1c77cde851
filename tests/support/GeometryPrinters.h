// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/GTL/CircIterator.h"
#include "UtilityDLL/GTL/Classification.h"
#include "UtilityDLL/GTL/Extents2D.h"
#include "UtilityDLL/GTL/Extents3D.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Point3D.h"
#include "UtilityDLL/GTL/Rectangle.h"
#include "UtilityDLL/GTL/UnitType.h"
#include "UtilityDLL/GTL/Vector2D.h"
#include "UtilityDLL/GTL/Vector3D.h"

#include <gtest/gtest.h>
#include <ostream>

/// How GoogleTest shows the values of the geometry, with all digits, when a comparison fails.

template <typename... Values> void PrintTuple(std::ostream& out, const Values&... values) {
    const char* before = "(";
    ((out << before << ::testing::PrintToString(values), before = ", "), ...);
    out << ')';
}

inline void PrintTo(const Angle& angle, std::ostream* out) {
    *out << ::testing::PrintToString(angle.Get()) << " degrees";
}
inline void PrintTo(const CircIterator& iterator, std::ostream* out) {
    *out << *iterator << " of " << iterator.Start() << " + " << iterator.Range();
}
inline void PrintTo(const UnitType& unit, std::ostream* out) {
    *out << ::testing::PrintToString(unit.AsString()) << " (" << static_cast<int>(unit.GetType()) << ')';
}

namespace GTL {

template <typename T> void PrintTo(const Vector2D<T>& v, std::ostream* out) {
    PrintTuple(*out, v.X(), v.Y());
}
template <typename T> void PrintTo(const Vector3D<T>& v, std::ostream* out) {
    PrintTuple(*out, v.X(), v.Y(), v.Z(), v.W());
}
template <typename T> void PrintTo(const Point2D<T>& p, std::ostream* out) { PrintTuple(*out, p.X(), p.Y()); }
template <typename T> void PrintTo(const Point3D<T>& p, std::ostream* out) {
    PrintTuple(*out, p.X(), p.Y(), p.Z(), p.B());
}

template <typename Extents> void PrintBox(const Extents& box, std::ostream& out) {
    out << ::testing::PrintToString(box.MinPnt()) << " to " << ::testing::PrintToString(box.MaxPnt());
}
template <typename T> void PrintTo(const Extents2D<T>& box, std::ostream* out) { PrintBox(box, *out); }
template <typename T> void PrintTo(const Extents3D<T>& box, std::ostream* out) { PrintBox(box, *out); }

template <typename P> void PrintTo(const Rectangle<P>& rectangle, std::ostream* out) {
    *out << ::testing::PrintToString(rectangle.Width()) << " x "
         << ::testing::PrintToString(rectangle.Height()) << " turned by "
         << ::testing::PrintToString(rectangle.Rotation()) << ", corners";
    for (int i = 0; i < rectangle.NumCorners(); ++i)
        *out << ' ' << ::testing::PrintToString(rectangle.Corner(i));
}

namespace CLS {

inline void PrintTo(CLASSIFICATION classification, std::ostream* out) {
    switch (classification) {
    case INVALID:
        *out << "INVALID";
        return;
    case INSIDE:
        *out << "INSIDE";
        return;
    case OUTSIDE:
        *out << "OUTSIDE";
        return;
    case OVERLAP:
        *out << "OVERLAP";
        return;
    }
    *out << "CLASSIFICATION " << static_cast<int>(classification);
}

} // namespace CLS

} // namespace GTL
