// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/ExternTemplate.h"

#include <span>

namespace GTL {

template <typename T> class Point2D;
template <typename T> class Point3D;

/// A mapping of points to points. The points and extents take any mapping through this interface; derive from
/// it and write Apply() for one of your own.
template <typename P> class Transformation {
public:
    Transformation() = default;

    /// Mappings of derived classes are copied with what they hold.
    /// @{
    Transformation(const Transformation&) = default;
    Transformation& operator=(const Transformation&) = default;
    /// @}

    virtual ~Transformation() = default;

    /// Moves `point` in place.
    virtual void Apply(P& point) const = 0;

    /// Moves every point of `points` in place, as Apply() one by one would.
    virtual void ApplyAll(std::span<P> points) const {
        for (P& point : points) Apply(point);
    }
};

GTL_EXTERN_TEMPLATE(Transformation<Point2D<int>>);
GTL_EXTERN_TEMPLATE(Transformation<Point2D<float>>);
GTL_EXTERN_TEMPLATE(Transformation<Point2D<double>>);
GTL_EXTERN_TEMPLATE(Transformation<Point3D<float>>);
GTL_EXTERN_TEMPLATE(Transformation<Point3D<double>>);

} // namespace GTL
