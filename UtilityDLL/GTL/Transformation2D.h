// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Transformation.h"

#include <limits>
#include <span>

namespace GTL {

/// An affine mapping of the plane: a 3 x 3 matrix of doubles, which acts on columns (x, y, 1). It is built
/// from steps, and each step comes after those before it. For points of int the coordinates are computed in
/// double and rounded to the nearest integer, halves upward; NaN and values beyond int become -2147483648.
template <typename P> class Transformation2D : public Transformation<P> {
public:
    /// The identity.
    Transformation2D() noexcept = default;

    /// The element of the matrix; row and column count from 1. NaN outside 1 to 3.
    double M(int row, int column) const noexcept {
        if (row < 1 || row > 3 || column < 1 || column > 3) return std::numeric_limits<double>::quiet_NaN();
        return m_rows[row - 1][column - 1];
    }

    void Apply(P& point) const override;

    /// Faster than one by one, unless a derived class has an Apply() of its own: then that is called for
    /// each.
    void ApplyAll(std::span<P> points) const override;

    /// Then moves by (dx, dy).
    void Translate(double dx, double dy) noexcept;

    /// Then turns about `centre`, clockwise when y points up.
    void Rotate(const Angle& angle, const P& centre) noexcept;

private:
    double m_rows[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

GTL_EXTERN_TEMPLATE(Transformation2D<Point2D<int>>);
GTL_EXTERN_TEMPLATE(Transformation2D<Point2D<float>>);
GTL_EXTERN_TEMPLATE(Transformation2D<Point2D<double>>);

} // namespace GTL
