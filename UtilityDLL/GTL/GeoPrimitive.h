// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Classification.h"
#include "UtilityDLL/GTL/Extents3D.h"
#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Transformation.h"

namespace GTL {

/// A shape made of corner points. The order of the virtual operations is part of the interface.
template <typename P> class GeoPrimitiveBase {
public:
    GeoPrimitiveBase() = default;

    /// Shapes are copied with their corners.
    /// @{
    GeoPrimitiveBase(const GeoPrimitiveBase&) = default;
    GeoPrimitiveBase& operator=(const GeoPrimitiveBase&) = default;
    /// @}

    virtual ~GeoPrimitiveBase() = default;

    /// The corner itself, which may be changed. `index` is not checked: 0 to NumCorners() - 1.
    virtual P& Corner(int index) = 0;

    /// Makes the corner a copy of `point` and returns it. `index` is not checked.
    virtual P& SetCorner(int index, const P& point) = 0;

    /// How many corners the shape has.
    virtual int NumCorners() const = 0;

    /// INSIDE or OUTSIDE; the boundary is inside.
    virtual CLS::CLASSIFICATION Classify(const P& point) const = 0;

    /// Transforms each corner, and nothing else.
    virtual void Transform(const Transformation<P>& transformation) = 0;

    /// Grows `extents` to hold every corner, at z = 0.
    virtual void Update(Extents3D<double>& extents) const = 0;

    /// The corner itself. `index` is not checked: 0 to NumCorners() - 1.
    virtual const P& Corner(int index) const = 0;
};

/// A shape that holds its N corners; exported for N = 4.
template <typename P, int N> class GeoPrimitive : public GeoPrimitiveBase<P> {
public:
    /// The corner, which may be changed; `index` is not checked.
    P& Corner(int index) override { return m_corners[index]; }

    /// Makes the corner a copy of `point`; `index` is not checked.
    P& SetCorner(int index, const P& point) override { return m_corners[index] = point; }

    int NumCorners() const override { return N; } ///< N

    /// Transforms the N corners.
    void Transform(const Transformation<P>& transformation) override {
        for (P& corner : m_corners) transformation.Apply(corner);
    }

    /// Grows `extents` to hold the N corners, at z = 0.
    void Update(Extents3D<double>& extents) const override {
        for (const P& corner : m_corners) {
            extents.Update(static_cast<double>(corner.X()), static_cast<double>(corner.Y()), 0.0);
        }
    }

    /// The corner; `index` is not checked.
    const P& Corner(int index) const override { return m_corners[index]; }

private:
    P m_corners[N];
};

GTL_EXTERN_TEMPLATE(GeoPrimitiveBase<Point2D<int>>);
GTL_EXTERN_TEMPLATE(GeoPrimitiveBase<Point2D<float>>);
GTL_EXTERN_TEMPLATE(GeoPrimitiveBase<Point2D<double>>);
GTL_EXTERN_TEMPLATE(GeoPrimitive<Point2D<int>, 4>);
GTL_EXTERN_TEMPLATE(GeoPrimitive<Point2D<float>, 4>);
GTL_EXTERN_TEMPLATE(GeoPrimitive<Point2D<double>, 4>);

} // namespace GTL
