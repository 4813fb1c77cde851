// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Point2D.h"

#include "UtilityDLL/GTL/Point3D.h"
#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <type_traits>

using GTL::Point2D;
using GTL::Vector2D;

namespace {

template <typename T> class Point2DOf : public ::testing::Test {
protected:
    static T Any(Random& random) { return static_cast<T>(random.Integer(-1000, 1000)); }
};
using ElementTypes = ::testing::Types<int, float, double>;
TYPED_TEST_SUITE(Point2DOf, ElementTypes);

template <typename A, typename B> void ExpectXY(A x, A y, const B& xy) {
    EXPECT_EQ(x, xy.X());
    EXPECT_EQ(y, xy.Y());
}

TYPED_TEST(Point2DOf, IsAPlainValueOfTwoElements) {
    using P = Point2D<TypeParam>;
    static_assert(std::is_trivially_copyable_v<P> && std::is_standard_layout_v<P>);
    static_assert(sizeof(P) == 2 * sizeof(TypeParam));
    static_assert(std::is_nothrow_default_constructible_v<P>);
    constexpr P point(1, 2);
    static_assert(point.X() == 1 && (point + Vector2D<TypeParam>(1, 1)).Y() == 3 && point < P(1, 3));
    ExpectXY<TypeParam>(0, 0, P());
}

TYPED_TEST(Point2DOf, ConstructionDropsTheThirdValue) {
    using P = Point2D<TypeParam>;
    ExpectXY<TypeParam>(1, 2, P(1, 2, 99));
    EXPECT_EQ(P(1, 2, 99), P(1, 2));
}

TYPED_TEST(Point2DOf, ConvertsToAndFromAVector) {
    const Point2D<TypeParam> point = Vector2D<TypeParam>(3, 4);
    ExpectXY<TypeParam>(3, 4, point);
    const Vector2D<TypeParam> vector = point;
    ExpectXY<TypeParam>(3, 4, vector);
}

TYPED_TEST(Point2DOf, AccessorsReadAndWriteTheFields) {
    Point2D<TypeParam> point(1, 2);
    point.X() = 5;
    point.Y() += 5;
    ExpectXY<TypeParam>(5, 7, point);
    point.X(-1);
    point.Y(-2);
    ExpectXY<TypeParam>(-1, -2, point);
}

TYPED_TEST(Point2DOf, SumsAndDifferencesOfPointsAreVectors) {
    using P = Point2D<TypeParam>;
    using V = Vector2D<TypeParam>;
    static_assert(std::is_same_v<V, decltype(P() + P())> && std::is_same_v<V, decltype(P() - P())>);
    static_assert(std::is_same_v<P, decltype(P() + V())> && std::is_same_v<P, decltype(P() - V())>);
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const TypeParam ax = this->Any(random), ay = this->Any(random);
        const TypeParam bx = this->Any(random), by = this->Any(random);
        const P a(ax, ay);
        ExpectXY<TypeParam>(ax - bx, ay - by, a - P(bx, by));
        ExpectXY<TypeParam>(ax + bx, ay + by, a + P(bx, by));
        ExpectXY<TypeParam>(ax - bx, ay - by, a - V(bx, by));
        ExpectXY<TypeParam>(ax + bx, ay + by, a + V(bx, by));
        P moved = a;
        ExpectXY<TypeParam>(ax + bx, ay + by, moved += V(bx, by));
        ExpectXY<TypeParam>(ax, ay, moved -= V(bx, by));
        ExpectXY<TypeParam>(ax, ay, moved);
        if (this->HasFailure()) break;
    }
}

TYPED_TEST(Point2DOf, DividesBothCoordinates) {
    Random random(2);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const TypeParam x = this->Any(random), y = this->Any(random);
        const auto divisor = static_cast<TypeParam>(random.OneOf<int>({-7, -2, -1, 1, 3, 10}));
        const Point2D<TypeParam> divided = Point2D<TypeParam>(x, y) / divisor;
        ASSERT_EQ(static_cast<TypeParam>(x / divisor), divided.X());
        ASSERT_EQ(static_cast<TypeParam>(y / divisor), divided.Y());
    }
}

TYPED_TEST(Point2DOf, OrderIsByXAndThenByY) {
    using P = Point2D<TypeParam>;
    Random random(3);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const std::pair<int, int> a(random.Integer(0, 3), random.Integer(0, 3));
        const std::pair<int, int> b(random.Integer(0, 3), random.Integer(0, 3));
        const P p(static_cast<TypeParam>(a.first), static_cast<TypeParam>(a.second));
        const P q(static_cast<TypeParam>(b.first), static_cast<TypeParam>(b.second));
        ASSERT_EQ(a < b, p < q);
        ASSERT_EQ(a > b, p > q);
        ASSERT_EQ(a <= b, p <= q);
        ASSERT_EQ(a >= b, p >= q);
        ASSERT_EQ(a == b, p == q);
        ASSERT_EQ(a != b, p != q);
    }
}

TYPED_TEST(Point2DOf, DistanceOfAKnownTriangle) {
    using P = Point2D<TypeParam>;
    EXPECT_EQ(5.0, P(0, 0).Dist2D(P(3, 4), false));
    EXPECT_EQ(25.0, P(0, 0).Dist2D(P(3, 4), true));
    EXPECT_EQ(5.0, P(4, -2).Dist2D(P(1, 2)));
}

TYPED_TEST(Point2DOf, DistanceIsThatOfAnIndependentFormula) {
    using P = Point2D<TypeParam>;
    Random random(4);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const P a(this->Any(random), this->Any(random));
        const P b(this->Any(random), this->Any(random));
        const double dx = static_cast<double>(a.X()) - static_cast<double>(b.X());
        const double dy = static_cast<double>(a.Y()) - static_cast<double>(b.Y());
        ASSERT_NEAR(std::hypot(dx, dy), a.Dist2D(b, false), 1e-9);
        ASSERT_EQ(dx * dx + dy * dy, a.Dist2D(b, true)); // whole numbers: exact in every element type
        ASSERT_EQ(a.Dist2D(b), b.Dist2D(a));
    }
}

struct Doubling : GTL::Transformation<Point2D<int>> {
    void Apply(Point2D<int>& point) const override { point = Point2D<int>(2 * point.X(), 2 * point.Y()); }
};

TEST(Point2D, TransformationChangesThePointInPlace) {
    Point2D<int> point(3, -4);
    point.Transform(Doubling());
    ExpectXY(6, -8, point);
}

TEST(Point2D, TransformationOfASpanIsThatOfEachPoint) {
    std::vector<Point2D<int>> points = {{1, 2}, {3, 4}, {-5, 6}};
    static_cast<const GTL::Transformation<Point2D<int>>&>(Doubling()).ApplyAll(points);
    ExpectXY(2, 4, points[0]);
    ExpectXY(6, 8, points[1]);
    ExpectXY(-10, 12, points[2]);
    Doubling().ApplyAll({});
}

TEST(Point2D, EqualityIsTolerantOnBothCoordinates) {
    EXPECT_EQ(Point2D<double>(0, 0), Point2D<double>(1e-12, -1e-12));
    EXPECT_EQ(Point2D<double>(0, 0), Point2D<double>(1e-12, 0));
    EXPECT_NE(Point2D<double>(0, 0), Point2D<double>(1e-6, 0));
    EXPECT_NE(Point2D<double>(0, 0), Point2D<double>(0, 1e-6));
    EXPECT_EQ(Point2D<float>(0, 0), Point2D<float>(1e-12f, 0));
    EXPECT_EQ(Point2D<double>(5e9, 0), Point2D<double>(5e9 + 1, 0)); // relative for large values
    EXPECT_NE(Point2D<double>(kNaN, 0), Point2D<double>(kNaN, 0));
}

TEST(Point2D, OrderIsExactWhereEqualityIsTolerant) {
    const Point2D<double> a(0, 5);
    const Point2D<double> b(1e-12, 0);
    EXPECT_LT(a, b);
    EXPECT_LE(a, b);
    EXPECT_PRED2(std::not_fn(std::greater<>()), a, b);
    EXPECT_PRED2(std::not_fn(std::greater_equal<>()), a, b);
}

TEST(Point2D, BesideNaNOnlyTheInclusiveComparisonsHold) {
    using P = Point2D<double>;
    struct Row {
        P a, b;
    };
    for (const Row& row : {Row{P(kNaN, 1), P(0, 2)}, Row{P(0, 1), P(kNaN, 2)}, Row{P(0, kNaN), P(0, 2)},
                           Row{P(kNaN, kNaN), P(kNaN, kNaN)}}) {
        EXPECT_PRED2(std::not_fn(std::less<>()), row.a, row.b);
        EXPECT_PRED2(std::not_fn(std::greater<>()), row.a, row.b);
        EXPECT_LE(row.a, row.b);
        EXPECT_GE(row.a, row.b);
    }
    EXPECT_LT(P(0, kNaN), P(1, 0)); // x decides before the NaN is met
    EXPECT_PRED2(std::not_fn(std::greater_equal<>()), P(0, kNaN), P(1, 0));
}

TEST(Point2D, IntegersWrapAt32Bits) {
    constexpr int kMin = std::numeric_limits<int>::min();
    constexpr int kMax = std::numeric_limits<int>::max();
    using P = Point2D<int>;
    ExpectXY(kMin, kMax, P(kMax, kMin) + P(1, -1));
    ExpectXY(kMax, kMin, P(kMin, kMax) - Vector2D<int>(1, -1));
    EXPECT_EQ(0.0, P(0, 0).Dist2D(P(65536, 0), true));           // 2^32
    EXPECT_EQ(-2147479015.0, P(0, 0).Dist2D(P(46341, 0), true)); // 46341^2 - 2^32
    EXPECT_TRUE(std::isnan(P(0, 0).Dist2D(P(46341, 0), false)));

    Random random(5);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const P a(random.AnyInteger(), random.AnyInteger());
        const P b(random.AnyInteger(), random.AnyInteger());
        const auto dx = static_cast<std::uint64_t>(std::int64_t{a.X()} - b.X());
        const auto dy = static_cast<std::uint64_t>(std::int64_t{a.Y()} - b.Y());
        const auto wrapped = static_cast<std::int32_t>(static_cast<std::uint32_t>(dx * dx + dy * dy));
        ASSERT_EQ(static_cast<double>(wrapped), a.Dist2D(b, true));
    }
}

TEST(Point2D, IntegerDivisionIsTowardZeroAndAlwaysDefined) {
    using P = Point2D<int>;
    ExpectXY(3, -3, P(7, -7) / 2);
    ExpectXY(kIntegerIndefinite, kIntegerIndefinite, P(7, 0) / 0);
    ExpectXY(kIntegerIndefinite, 5, P(kIntegerIndefinite, -5) / -1);
}

// The processor's division ends the process here; the compiler's own does not.
TEST(Point2D, IntegerDivisionIsDefinedForDivisorsThatTheCompilerDoesNotKnow) {
    using P = Point2D<int>;
    const auto unknown = [](int value) {
        const volatile int held = value;
        return static_cast<int>(held);
    };
    const P point(unknown(kIntegerIndefinite), unknown(5));
    ExpectXY(kIntegerIndefinite, -5, point / unknown(-1));
    ExpectXY(kIntegerIndefinite, kIntegerIndefinite, point / unknown(0));
    ExpectXY(kIntegerIndefinite / 2, 2, point / unknown(2));
}

TEST(Point2D, SquareOfFloatsIsComputedInSinglePrecisionAndItsRootInDouble) {
    Random random(6);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto x = static_cast<float>(random.Real(-1e4, 1e4));
        const auto y = static_cast<float>(random.Real(-1e4, 1e4));
        const volatile float xx = x * x; // volatile: each step is rounded to float
        const volatile float yy = y * y;
        const volatile float sum = xx + yy;
        const Point2D<float> origin;
        ASSERT_EQ(static_cast<double>(sum), origin.Dist2D({x, y}, true));
        ASSERT_EQ(std::sqrt(static_cast<double>(sum)), origin.Dist2D({x, y}, false));
    }
    EXPECT_EQ(kInfinity, Point2D<float>(0, 0).Dist2D({1e30f, 0}, true));
}

TEST(Point2D, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            const Point2D<double> p(a, b);
            const Point2D<double> q(b, a);
            EXPECT_EQ(!(p == q), p != q);
            EXPECT_EQ(!(p < q), p >= q);
            EXPECT_EQ(!(p > q), p <= q);
            const double square = p.Dist2D(q, true);
            EXPECT_TRUE(square >= 0 || std::isnan(square));
            const Point2D<double> quotient = p / b;
            EXPECT_TRUE(quotient.X() == a / b || std::isnan(a / b));
        }
    }
}

TEST(Point2D, HoldsItsValuesInOrder) {
    EXPECT_EQ((std::array<int, 2>{1, 2}), (std::bit_cast<std::array<int, 2>>(Point2D<int>(1, 2))));
}

TEST(Point2D, IsMadeOfASpatialPointInEveryForm) {
    const GTL::Point3D<double> spatial(1, 2, 3, 4);
    const Point2D<double> direct(spatial);
    const Point2D<double> copied = spatial;
    const Point2D<double>& view = spatial;
    for (const Point2D<double>& point : {direct, copied, view}) ExpectXY<double>(1, 2, point);
}

} // namespace
