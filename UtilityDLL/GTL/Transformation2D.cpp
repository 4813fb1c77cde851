// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Transformation2D.h"

#include "UtilityDLL/GTL/Element.h"

#include <typeinfo>

namespace GTL {

namespace {

// The rows that map a point; the third is always (0, 0, 1), since every step is affine. Copied from the
// matrix: for all the compiler knows, a point could overlap that.
struct Planar {
    explicit Planar(const double (&rows)[3][3]) noexcept
        : m11(rows[0][0]), m12(rows[0][1]), m13(rows[0][2]), m21(rows[1][0]), m22(rows[1][1]),
          m23(rows[1][2]) {}

    template <typename P> void Map(P& point) const noexcept {
        using T = typename P::ElementType;
        const auto x = static_cast<double>(point.X());
        const auto y = static_cast<double>(point.Y());
        point.X(ELEMENT::FromDouble<T>(m11 * x + m12 * y + m13));
        point.Y(ELEMENT::FromDouble<T>(m21 * x + m22 * y + m23));
    }

    double m11, m12, m13, m21, m22, m23;
};

} // namespace

template <typename P> void Transformation2D<P>::Apply(P& point) const { Planar(m_rows).Map(point); }

template <typename P> void Transformation2D<P>::ApplyAll(std::span<P> points) const {
    if (typeid(*this) != typeid(Transformation2D)) return Transformation<P>::ApplyAll(points);
    const Planar planar(m_rows);
    for (P& point : points) planar.Map(point);
}

template <typename P> void Transformation2D<P>::Translate(double dx, double dy) noexcept {
    m_rows[0][2] += dx;
    m_rows[1][2] += dy;
}

template <typename P> void Transformation2D<P>::Rotate(const Angle& angle, const P& centre) noexcept {
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

} // namespace GTL

GTL_TEMPLATE(GTL::Transformation2D<GTL::Point2D<int>>);
GTL_TEMPLATE(GTL::Transformation2D<GTL::Point2D<float>>);
GTL_TEMPLATE(GTL::Transformation2D<GTL::Point2D<double>>);
