// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Vector3D.h"

#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <array>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <type_traits>

using GTL::Point3D;
using GTL::Vector3D;

namespace {

template <typename T> class Vector3DOf : public ::testing::Test {
protected:
    static constexpr double kTolerance = std::is_same_v<T, float> ? 1e-5 : 1e-12;
    static Vector3D<T> Any(Random& random) {
        const auto coordinate = [&] { return static_cast<T>(random.Real(-100, 100)); };
        const T x = coordinate(), y = coordinate(), z = coordinate();
        return {x, y, z, coordinate()};
    }
};
using ElementTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Vector3DOf, ElementTypes);

template <typename T> void ExpectXYZW(T x, T y, T z, T w, const Vector3D<T>& vector) {
    EXPECT_EQ(x, vector.X());
    EXPECT_EQ(y, vector.Y());
    EXPECT_EQ(z, vector.Z());
    EXPECT_EQ(w, vector.W());
}

TYPED_TEST(Vector3DOf, IsAPlainValueOfFourElements) {
    using V = Vector3D<TypeParam>;
    static_assert(std::is_trivially_copyable_v<V> && std::is_standard_layout_v<V>);
    static_assert(sizeof(V) == 4 * sizeof(TypeParam));
    static_assert((V(1, 2, 3) * 2 + 1).Y() == 5);
    ExpectXYZW<TypeParam>(0, 0, 0, 0, V());
    ExpectXYZW<TypeParam>(1, 2, 3, 0, V(1, 2, 3));
    ExpectXYZW<TypeParam>(1, 2, 3, 4, V(1, 2, 3, 4));
    V vector;
    vector.X(5);
    vector.Y(6);
    vector.Z(7);
    vector.W(8);
    ExpectXYZW<TypeParam>(5, 6, 7, 8, vector);
}

TYPED_TEST(Vector3DOf, BearingRunsClockwiseFromNorth) {
    struct Row {
        int x, y;
        double bearing;
    };
    for (const Row& row : {Row{0, 1, 0}, Row{1, 1, 45}, Row{1, 0, 90}, Row{1, -1, 135}, Row{0, -1, 180},
                           Row{-1, -1, 225}, Row{-1, 0, 270}, Row{-1, 1, 315}, Row{0, 0, 0}}) {
        const Vector3D<TypeParam> vector(static_cast<TypeParam>(row.x), static_cast<TypeParam>(row.y), 42);
        EXPECT_NEAR(row.bearing, vector.Bearing().Get(), 1e-12) << row.x << ' ' << row.y;
    }
}

TYPED_TEST(Vector3DOf, BearingLeadsBackToTheDirection) {
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Vector3D<TypeParam> vector = this->Any(random);
        const double length = std::hypot(static_cast<double>(vector.X()), static_cast<double>(vector.Y()));
        const Angle bearing = vector.Bearing();
        ASSERT_NEAR(static_cast<double>(vector.X()), length * bearing.Sin(), 1e-10);
        ASSERT_NEAR(static_cast<double>(vector.Y()), length * bearing.Cos(), 1e-10);
    }
}

TYPED_TEST(Vector3DOf, AngleToIsThatBetweenTheDirections) {
    using V = Vector3D<TypeParam>;
    EXPECT_NEAR(90.0, V(1, 0, 0).AngleTo(V(0, 5, 0)).Get(), 1e-12);
    EXPECT_NEAR(180.0, V(1, 0, 0).AngleTo(V(-3, 0, 0)).Get(), 1e-12);
    EXPECT_NEAR(45.0, V(0, 0, 2).AngleTo(V(0, 1, 1)).Get(), 1e-4);
    EXPECT_TRUE(std::isnan(V(0, 0, 0).AngleTo(V(1, 0, 0)).Get()));
    Random random(2);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const V a = this->Any(random);
        const V b = this->Any(random);
        // The independent formula: the arc tangent of the lengths of the cross product and the dot product.
        const double ax = a.X(), ay = a.Y(), az = a.Z(), bx = b.X(), by = b.Y(), bz = b.Z();
        const double cross = std::hypot(ay * bz - az * by, az * bx - ax * bz, ax * by - ay * bx);
        const double degrees = std::atan2(cross, ax * bx + ay * by + az * bz) * 180.0 / std::acos(-1.0);
        // The arc cosine is steep at its ends, so less exact there.
        ASSERT_NEAR(degrees, a.AngleTo(b).Get(), (std::is_same_v<TypeParam, float> ? 0.1 : 1e-5));
    }
}

TYPED_TEST(Vector3DOf, ParallelVectorsHaveAnAngle) {
    Random random(3);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Vector3D<TypeParam> vector = this->Any(random);
        ASSERT_NEAR(0.0, vector.AngleTo(vector).Get(), 0.1);
        ASSERT_NEAR(180.0, vector.AngleTo(vector * -1).Get(), 0.1);
    }
}

TYPED_TEST(Vector3DOf, LengthIsThatOfThreeValues) {
    using V = Vector3D<TypeParam>;
    EXPECT_EQ(TypeParam{7}, V(2, -3, 6, 99).Length());
    EXPECT_EQ(TypeParam{0}, V(0, 0, 0, 99).Length());
    static_assert(std::is_same_v<TypeParam, decltype(V().Length())>);
    Random random(7);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const V v = this->Any(random);
        const double x = v.X(), y = v.Y(), z = v.Z();
        const auto length = static_cast<double>(v.Length());
        ASSERT_NEAR(std::hypot(x, y, z), length, length * this->kTolerance);
        ASSERT_EQ(Point3D<TypeParam>().Dist3D(Point3D<TypeParam>(v)), length);
    }
    EXPECT_TRUE(std::isnan(V(static_cast<TypeParam>(kNaN), 0, 0).Length()));
    EXPECT_TRUE(std::isinf(V(std::numeric_limits<TypeParam>::max(), 0, 0).Length()));
}

TYPED_TEST(Vector3DOf, NormalizeKeepsTheDirectionAndTheFourthValue) {
    Vector3D<TypeParam> known(3, 0, 4, 9);
    known.Normalize();
    EXPECT_NEAR(0.6, static_cast<double>(known.X()), 1e-7);
    EXPECT_EQ(0, known.Y());
    EXPECT_NEAR(0.8, static_cast<double>(known.Z()), 1e-7);
    EXPECT_EQ(9, known.W());

    Random random(4);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Vector3D<TypeParam> vector = this->Any(random);
        const double length = std::hypot(static_cast<double>(vector.X()), static_cast<double>(vector.Y()),
                                         static_cast<double>(vector.Z()));
        Vector3D<TypeParam> unit = vector;
        unit.Normalize();
        ASSERT_NEAR(static_cast<double>(vector.X()) / length, static_cast<double>(unit.X()),
                    this->kTolerance);
        ASSERT_NEAR(static_cast<double>(vector.Y()) / length, static_cast<double>(unit.Y()),
                    this->kTolerance);
        ASSERT_NEAR(static_cast<double>(vector.Z()) / length, static_cast<double>(unit.Z()),
                    this->kTolerance);
        ASSERT_EQ(vector.W(), unit.W());
    }

    Vector3D<TypeParam> none;
    none.Normalize();
    EXPECT_TRUE(std::isnan(none.X()));
}

TYPED_TEST(Vector3DOf, CrossAndDotOfKnownVectors) {
    using V = Vector3D<TypeParam>;
    ExpectXYZW<TypeParam>(0, 0, 1, 0, V(1, 0, 0, 5).Cross(V(0, 1, 0, 6)));
    ExpectXYZW<TypeParam>(-3, 6, -3, 0, V(1, 2, 3, 5).Cross(V(4, 5, 6, 6)));
    EXPECT_EQ(32, V(1, 2, 3, 5).Dot(V(4, 5, 6, 6)));
}

TYPED_TEST(Vector3DOf, CrossIsPerpendicularAndObeysLagrange) {
    Random random(5);
    const auto whole = [&] { return static_cast<TypeParam>(random.Integer(-20, 20)); }; // exact products
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Vector3D<TypeParam> a(whole(), whole(), whole()), b(whole(), whole(), whole());
        const Vector3D<TypeParam> cross = a.Cross(b);
        ASSERT_EQ(0, cross.Dot(a));
        ASSERT_EQ(0, cross.Dot(b));
        ASSERT_EQ(a.Dot(a) * b.Dot(b) - a.Dot(b) * a.Dot(b), cross.Dot(cross));
        ASSERT_EQ(0, cross.W());
    }
}

TYPED_TEST(Vector3DOf, ScalarsActOnThreeValues) {
    Random random(6);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Vector3D<TypeParam> v = this->Any(random);
        const auto s = static_cast<TypeParam>(random.Real(0.5, 10));
        ExpectXYZW<TypeParam>(v.X() + s, v.Y() + s, v.Z() + s, 0, v + s);
        ExpectXYZW<TypeParam>(v.X() - s, v.Y() - s, v.Z() - s, 0, v - s);
        ExpectXYZW<TypeParam>(v.X() * s, v.Y() * s, v.Z() * s, 0, v * s);
        ExpectXYZW<TypeParam>(v.X() / s, v.Y() / s, v.Z() / s, 0, v / s);
        Vector3D<TypeParam> changed = v;
        ExpectXYZW<TypeParam>(v.X() + s, v.Y() + s, v.Z() + s, v.W(), changed += s);
        changed = v;
        ExpectXYZW<TypeParam>(v.X() - s, v.Y() - s, v.Z() - s, v.W(), changed -= s);
        changed = v;
        ExpectXYZW<TypeParam>(v.X() * s, v.Y() * s, v.Z() * s, v.W(), changed *= s);
        changed = v;
        ExpectXYZW<TypeParam>(v.X() / s, v.Y() / s, v.Z() / s, v.W(), changed /= s);
        if (this->HasFailure()) break;
    }
}

TEST(Vector3D, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            const Vector3D<double> v(a, b, 1), w(b, 1, a);
            const double bearing = v.Bearing().Get();
            EXPECT_TRUE((bearing >= 0 && bearing <= 360) || std::isnan(bearing)) << a << ' ' << b;
            const double angle = v.AngleTo(w).Get();
            EXPECT_TRUE((angle >= 0 && angle <= 180) || std::isnan(angle)) << a << ' ' << b;
            Vector3D<double> unit = v.Cross(w) / b + a;
            unit.Normalize();
            EXPECT_TRUE(std::fabs(unit.X()) <= 1 + 1e-9 || std::isnan(unit.X())) << a << ' ' << b;
        }
    }
}

TEST(Vector3D, HoldsItsValuesInOrder) {
    EXPECT_EQ((std::array<double, 4>{1, 2, 3, 4}),
              (std::bit_cast<std::array<double, 4>>(Vector3D<double>(1, 2, 3, 4))));
}

} // namespace
