// SPDX-License-Identifier: MIT
// Built as a host's code may be: for a processor that multiplies and adds in one step, and told to do so
// wherever it can. The geometry's results are those of single steps all the same, to the last bit.

#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/GTL/Extents2D.h"
#include "UtilityDLL/GTL/Point3D.h"
#include "UtilityDLL/GTL/Rectangle.h"
#include "UtilityDLL/GTL/Transformation2D.h"
#include "UtilityDLL/GTL/UnitType.h"
#include "UtilityDLL/GTL/Vector3D.h"
#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <cmath>
#include <gtest/gtest.h>

using GTL::Point2D;
using GTL::Point3D;
using GTL::Vector3D;

namespace {

constexpr int kRuns = kPropertyRuns / 10;

// Each is one step, whose result is stored before the next.
template <typename T> T Times(T a, T b) {
    const volatile T product = a * b;
    return product;
}
template <typename T> T Plus(T a, T b) {
    const volatile T sum = a + b;
    return sum;
}
template <typename T> T Minus(T a, T b) {
    const volatile T difference = a - b;
    return difference;
}

template <typename T> class FusedHost : public ::testing::Test {
protected:
    T Any() { return static_cast<T>(m_random.Real(-1e6, 1e6)); }

private:
    Random m_random{1};
};
using ElementTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(FusedHost, ElementTypes);

template <typename T> [[gnu::noinline]] T InOneExpression(T a, T b, T c, T d) { return a * b + c * d; }

// Without this the tests below would show nothing.
TYPED_TEST(FusedHost, RoundsItsOwnSumsOfProductsOnce) {
    if (!HOST_CAN_FUSE) GTEST_SKIP() << "this processor or compiler does not multiply and add in one step";
    int differing = 0;
    for (int i = 0; i < kRuns; ++i) {
        const TypeParam a = this->Any(), b = this->Any(), c = this->Any(), d = this->Any();
        differing += InOneExpression(a, b, c, d) != Plus(Times(a, b), Times(c, d));
    }
    EXPECT_GT(differing, kRuns / 10);
}

TYPED_TEST(FusedHost, GetsDistancesOfSingleSteps) {
    using T = TypeParam;
    for (int i = 0; i < kRuns; ++i) {
        const Point3D<T> a(this->Any(), this->Any(), this->Any()), b(this->Any(), this->Any(), this->Any());
        const T dx = Minus(a.X(), b.X()), dy = Minus(a.Y(), b.Y()), dz = Minus(a.Z(), b.Z());
        const T planar = Plus(Times(dx, dx), Times(dy, dy));
        ASSERT_EQ(static_cast<double>(planar), a.Dist2D(b, true));
        ASSERT_EQ(static_cast<double>(Plus(planar, Times(dz, dz))), a.Dist3D(b, true));
    }
}

TYPED_TEST(FusedHost, GetsProductsOfVectorsOfSingleSteps) {
    using T = TypeParam;
    for (int i = 0; i < kRuns; ++i) {
        const Vector3D<T> a(this->Any(), this->Any(), this->Any()), b(this->Any(), this->Any(), this->Any());
        const T dot = Plus(Plus(Times(a.X(), b.X()), Times(a.Y(), b.Y())), Times(a.Z(), b.Z()));
        ASSERT_EQ(dot, a.Dot(b));
        const Vector3D<T> cross = a.Cross(b);
        ASSERT_EQ(Minus(Times(a.Y(), b.Z()), Times(a.Z(), b.Y())), cross.X());
        ASSERT_EQ(Minus(Times(a.Z(), b.X()), Times(a.X(), b.Z())), cross.Y());
        ASSERT_EQ(Minus(Times(a.X(), b.Y()), Times(a.Y(), b.X())), cross.Z());
        const T square = Plus(Plus(Times(a.X(), a.X()), Times(a.Y(), a.Y())), Times(a.Z(), a.Z()));
        ASSERT_EQ(std::sqrt(square), a.Length());
        const double bearing =
            Times(std::atan2(static_cast<double>(a.X()), static_cast<double>(a.Y())), MATH::RTD);
        ASSERT_EQ(bearing < 0 ? Plus(bearing, 360.0) : bearing, a.Bearing().Get());
    }
}

TYPED_TEST(FusedHost, GetsTransformationsOfSingleSteps) {
    using P = Point2D<TypeParam>;
    for (int i = 0; i < kRuns; ++i) {
        const Angle angle(static_cast<double>(this->Any()));
        GTL::Transformation2D<P> t;
        t.Translate(5.25, -7.75);
        t.Rotate(angle, P(0, 0));
        const double s = angle.Sin(), c = angle.Cos();
        const double m13 = Plus(Times(c, 5.25), Times(s, -7.75));
        const double m23 = Minus(Times(c, -7.75), Times(s, 5.25));
        ASSERT_EQ(m13, t.M(1, 3));
        ASSERT_EQ(m23, t.M(2, 3));

        const P point(this->Any(), this->Any());
        const auto x = static_cast<double>(point.X()), y = static_cast<double>(point.Y());
        const auto toX = static_cast<TypeParam>(Plus(Plus(Times(t.M(1, 1), x), Times(t.M(1, 2), y)), m13));
        const auto toY = static_cast<TypeParam>(Plus(Plus(Times(t.M(2, 1), x), Times(t.M(2, 2), y)), m23));
        P moved = point, all[1] = {point};
        t.Apply(moved);
        t.ApplyAll(all);
        ASSERT_EQ(toX, moved.X());
        ASSERT_EQ(toY, moved.Y());
        ASSERT_EQ(toX, all[0].X());
        ASSERT_EQ(toY, all[0].Y());
    }
}

TYPED_TEST(FusedHost, GetsRectanglesOfSingleSteps) {
    using P = Point2D<TypeParam>;
    for (int i = 0; i < kRuns; ++i) {
        const P origin(this->Any(), this->Any());
        const double width = std::fabs(static_cast<double>(this->Any())),
                     height = std::fabs(static_cast<double>(this->Any()));
        const Angle angle(static_cast<double>(this->Any()));
        const GTL::Rectangle<P> rectangle(origin, width, height, angle);
        const double s = angle.Sin(), c = angle.Cos();
        const double x = Plus(Times(width, c), Times(height, s)),
                     y = Minus(Times(height, c), Times(width, s));
        ASSERT_EQ(static_cast<TypeParam>(Plus(static_cast<double>(origin.X()), x)), rectangle.Corner(2).X());
        ASSERT_EQ(static_cast<TypeParam>(Plus(static_cast<double>(origin.Y()), y)), rectangle.Corner(2).Y());
    }
}

TYPED_TEST(FusedHost, GetsCentresOfBoxesOfSingleSteps) {
    using T = TypeParam;
    for (int i = 0; i < kRuns; ++i) {
        GTL::Extents2D<T> box;
        box.Update(this->Any(), this->Any());
        box.Update(this->Any(), this->Any());
        ASSERT_EQ(Plus(box.MinX(), Times(Minus(box.MaxX(), box.MinX()), T{0.5})), box.Center().X());
    }
}

TYPED_TEST(FusedHost, GetsAnglesOfSingleSteps) {
    for (int i = 0; i < kRuns; ++i) {
        const double degrees = static_cast<double>(this->Any()), factor = static_cast<double>(this->Any());
        const Angle angle(degrees), other(factor);
        const double product = std::fmod(Times(angle.Get(), factor), 360.0);
        ASSERT_EQ(product < 0 ? Plus(product, 360.0) : product, (angle * factor).Get());
        const double sum = std::fmod(Plus(product < 0 ? Plus(product, 360.0) : product, other.Get()), 360.0);
        ASSERT_EQ(sum, (angle * factor + other).Get());
        ASSERT_EQ(MATH::ToInt(Plus(angle.Get() / 90.0, 1.0)), angle.Quadrant());
    }
}

} // namespace
