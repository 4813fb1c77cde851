#pragma once

#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/GTL/Element.h"
#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Transformation.h"

#include <limits>
#include <span>

namespace GTL {

/// An affine mapping of the plane: a 3 x 3 matrix of doubles, which acts on columns (x, y, 1). It is built
/// from steps, and each step comes after those before it. For points of int the coordinates are computed in
/// double and rounded to the nearest integer, halves upward; NaN and what no int can hold become -2147483648.
template <typename P> class Transformation2D : public Transformation<P> {
public:
    /// The identity.
    Transformation2D() noexcept = default;

    /// The element of the matrix; row and column count from 1. NaN outside 1 to 3.
    double M(int row, int column) const noexcept {
        if (row < 1 || row > 3 || column < 1 || column > 3) return std::numeric_limits<double>::quiet_NaN();
        return m_rows[row - 1][column - 1];
    }

    void Apply(P& point) const override { Map(point, Planar(*this)); }

    void ApplyAll(std::span<P> points) const override {
        const Planar planar(*this); // a copy: for all the compiler knows, a point could overlap the matrix
        for (P& point : points) Map(point, planar);
    }

    /// Then moves by (dx, dy).
    void Translate(double dx, double dy) noexcept {
        m_rows[0][2] += dx;
        m_rows[1][2] += dy;
    }

    /// Then turns about `centre`, clockwise when y points up.
    void Rotate(const Angle& angle, const P& centre) noexcept {
        const auto x = static_cast<double>(centre.X());
        const auto y = static_cast<double>(centre.Y());
        Translate(-x, -y);
        const double sine = angle.Sin();
        const double cosine = angle.Cos();
        for (int column = 0; column < 3; ++column) {
            const double first = m_rows[0][column];
            const double second = m_rows[1][column];
            m_rows[0][column] = cosine * first + sine * second;
            m_rows[1][column] = cosine * second - sine * first;
        }
        Translate(x, y);
    }

private:
    // The rows that map a point; the third is always (0, 0, 1), since every step is affine.
    struct Planar {
        explicit Planar(const Transformation2D& t) noexcept
            : m11(t.m_rows[0][0]), m12(t.m_rows[0][1]), m13(t.m_rows[0][2]), m21(t.m_rows[1][0]),
              m22(t.m_rows[1][1]), m23(t.m_rows[1][2]) {}
        double m11, m12, m13, m21, m22, m23;
    };

    static void Map(P& point, const Planar& m) noexcept {
        using T = typename P::ElementType;
        const auto x = static_cast<double>(point.X());
        const auto y = static_cast<double>(point.Y());
        point.X(ELEMENT::FromDouble<T>(m.m11 * x + m.m12 * y + m.m13));
        point.Y(ELEMENT::FromDouble<T>(m.m21 * x + m.m22 * y + m.m23));
    }

    double m_rows[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

GTL_EXTERN_TEMPLATE(Transformation2D<Point2D<int>>);
GTL_EXTERN_TEMPLATE(Transformation2D<Point2D<float>>);
GTL_EXTERN_TEMPLATE(Transformation2D<Point2D<double>>);

} // namespace GTL
