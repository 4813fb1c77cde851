// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Point3D.h"

#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <tuple>
#include <type_traits>

using GTL::Point2D;
using GTL::Point3D;
using GTL::Vector2D;
using GTL::Vector3D;

namespace {

template <typename T> class Point3DOf : public ::testing::Test {
protected:
    static T Any(Random& random) { return static_cast<T>(random.Integer(-1000, 1000)); }
};
using ElementTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Point3DOf, ElementTypes);

template <typename T> void ExpectXYZB(T x, T y, T z, T b, const Point3D<T>& point) {
    EXPECT_EQ(x, point.X());
    EXPECT_EQ(y, point.Y());
    EXPECT_EQ(z, point.Z());
    EXPECT_EQ(b, point.B());
}

TYPED_TEST(Point3DOf, IsAPlainValueOfFourElementsInOrder) {
    using P = Point3D<TypeParam>;
    static_assert(std::is_trivially_copyable_v<P>);
    static_assert(sizeof(P) == 4 * sizeof(TypeParam));
    constexpr P point(1, 2, 3, 4);
    static_assert(point.Z() == 3 && (point + Vector3D<TypeParam>(1, 1, 1)).B() == 0 && point < P(1, 2, 4));
    EXPECT_EQ((std::array<TypeParam, 4>{1, 2, 3, 4}), (std::bit_cast<std::array<TypeParam, 4>>(point)));
    ExpectXYZB<TypeParam>(0, 0, 0, 0, P());
}

TYPED_TEST(Point3DOf, ConstructsFromAPlanarPointAndFromAVector) {
    using P = Point3D<TypeParam>;
    ExpectXYZB<TypeParam>(1, 2, 3, 4, P(Point2D<TypeParam>(1, 2), 3, 4));
    const P constructed = Vector3D<TypeParam>(1, 2, 3, 4);
    ExpectXYZB<TypeParam>(1, 2, 3, 4, constructed); // the vector's w arrives in b
    P assigned(9, 9, 9, 9);
    assigned = Vector3D<TypeParam>(5, 6, 7, 8);
    ExpectXYZB<TypeParam>(5, 6, 7, 8, assigned);
}

TYPED_TEST(Point3DOf, AccessorsReadAndWriteTheFields) {
    Point3D<TypeParam> point;
    point.X(1);
    point.Y(2);
    point.Z(3);
    point.B(4);
    ExpectXYZB<TypeParam>(1, 2, 3, 4, point);
    point.X() += 10;
    point.Y() += 10;
    point.Z() += 10;
    point.B() += 10;
    ExpectXYZB<TypeParam>(11, 12, 13, 14, point);
}

TYPED_TEST(Point3DOf, PlanarPartIsAReferenceToThisPoint) {
    Point3D<TypeParam> point(1, 2, 3, 4);
    Point2D<TypeParam>& planar = point;
    planar.X(7);
    planar += Vector2D<TypeParam>(0, 6);
    ExpectXYZB<TypeParam>(7, 8, 3, 4, point);

    const Point3D<TypeParam>& unchanging = point;
    const Point2D<TypeParam>& view = unchanging;
    point.Y(9);
    EXPECT_EQ(9, view.Y());
}

TYPED_TEST(Point3DOf, ConvertsToVectorsWithoutTheAttribute) {
    const Point3D<TypeParam> point(1, 2, 3, 4);
    const auto planar = static_cast<Vector2D<TypeParam>>(point);
    EXPECT_EQ(1, planar.X());
    EXPECT_EQ(2, planar.Y());
    const auto vector = static_cast<Vector3D<TypeParam>>(point);
    EXPECT_EQ(3, vector.Z());
    EXPECT_EQ(0, vector.W());
}

TYPED_TEST(Point3DOf, NewPointsOfArithmeticHaveNoAttribute) {
    using P = Point3D<TypeParam>;
    using V = Vector3D<TypeParam>;
    ExpectXYZB<TypeParam>(2, 3, 4, 0, P(1, 2, 3, 7) + V(1, 1, 1, 5));
    ExpectXYZB<TypeParam>(0, 1, 2, 0, P(1, 2, 3, 7) - V(1, 1, 1, 5));
    ExpectXYZB<TypeParam>(1, 2, 3, 0, P(2, 4, 6, 7) / TypeParam{2});
    static_assert(std::is_same_v<V, decltype(P() - P())>);
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const TypeParam x = this->Any(random), y = this->Any(random), z = this->Any(random);
        const TypeParam dx = this->Any(random), dy = this->Any(random), dz = this->Any(random);
        const P point(x, y, z, 7);
        const V moves(dx, dy, dz, 5);
        ExpectXYZB<TypeParam>(x + dx, y + dy, z + dz, 0, point + moves);
        ExpectXYZB<TypeParam>(x - dx, y - dy, z - dz, 0, point - moves);
        const V difference = point - P(dx, dy, dz, 3);
        ExpectXYZB<TypeParam>(x - dx, y - dy, z - dz, 0, Point3D<TypeParam>(difference));
        const TypeParam divisor = dx == 0 ? TypeParam{3} : dx;
        ExpectXYZB<TypeParam>(x / divisor, y / divisor, z / divisor, 0, point / divisor);
        P moved = point;
        ExpectXYZB<TypeParam>(x + dx, y + dy, z + dz, 7, moved += moves); // in place it is kept
        ExpectXYZB<TypeParam>(x, y, z, 7, moved -= moves);
        if (this->HasFailure()) break;
    }
}

TYPED_TEST(Point3DOf, OrderAndEqualityAreThoseOfTheThreeCoordinates) {
    Random random(2);
    const auto any = [&] {
        const int x = random.Integer(0, 2), y = random.Integer(0, 2);
        return std::tuple(x, y, random.Integer(0, 2));
    };
    const auto point = [&](const std::tuple<int, int, int>& t) {
        return Point3D<TypeParam>(static_cast<TypeParam>(std::get<0>(t)),
                                  static_cast<TypeParam>(std::get<1>(t)),
                                  static_cast<TypeParam>(std::get<2>(t)), this->Any(random));
    };
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto a = any();
        const auto b = any();
        const Point3D<TypeParam> p = point(a);
        const Point3D<TypeParam> q = point(b);
        ASSERT_EQ(a < b, p < q);
        ASSERT_EQ(a > b, p > q);
        ASSERT_EQ(a <= b, p <= q);
        ASSERT_EQ(a >= b, p >= q);
        ASSERT_EQ(a == b, p == q);
        ASSERT_EQ(a != b, p != q);
    }
}

TYPED_TEST(Point3DOf, DistanceInSpaceAndInThePlane) {
    using P = Point3D<TypeParam>;
    EXPECT_EQ(7.0, P(1, 1, 1, 5).Dist3D(P(3, 4, 7, 6), false));
    EXPECT_EQ(49.0, P(1, 1, 1, 5).Dist3D(P(3, 4, 7, 6), true));
    EXPECT_EQ(5.0, P(1, 1, 1, 5).Dist2D(Point2D<TypeParam>(4, 5), false));
    EXPECT_EQ(25.0, P(1, 1, 1, 5).Dist2D(Point2D<TypeParam>(4, 5), true));
    EXPECT_EQ(25.0, P(1, 1, 1, 5).Dist2D(P(4, 5, 99, 99), true));
    Random random(3);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const P a(this->Any(random), this->Any(random), this->Any(random), this->Any(random));
        const P b(this->Any(random), this->Any(random), this->Any(random), this->Any(random));
        const double dx = a.X() - b.X(), dy = a.Y() - b.Y(), dz = a.Z() - b.Z();
        ASSERT_EQ(dx * dx + dy * dy + dz * dz, a.Dist3D(b, true)); // whole numbers: exact
        ASSERT_NEAR(std::hypot(dx, dy, dz), a.Dist3D(b), (std::is_same_v<TypeParam, float> ? 3e-4 : 1e-9));
        ASSERT_NEAR(std::hypot(dx, dy), a.Dist2D(b), 1e-9);
    }
}

TEST(Point3D, DistanceOfFloatsTakesItsRootInSinglePrecision) {
    Random random(4);
    int differing = 0;
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto x = static_cast<float>(random.Real(-1e4, 1e4));
        const auto y = static_cast<float>(random.Real(-1e4, 1e4));
        const auto z = static_cast<float>(random.Real(-1e4, 1e4));
        const volatile float xx = x * x, yy = y * y, zz = z * z; // volatile: each step is rounded to float
        const volatile float xy = xx + yy;
        const volatile float square = xy + zz;
        const volatile float root = std::sqrt(square);
        const Point3D<float> origin, point(x, y, z);
        ASSERT_EQ(static_cast<double>(square), origin.Dist3D(point, true));
        ASSERT_EQ(static_cast<double>(root), origin.Dist3D(point, false));
        differing += static_cast<double>(root) != std::sqrt(static_cast<double>(square));
    }
    EXPECT_GT(differing, kPropertyRuns / 2); // so the precision of the root was seen
}

TEST(Point3D, PlanarDistanceOfFloatsTakesItsRootInDoublePrecision) {
    const Point3D<float> origin;
    EXPECT_EQ(std::sqrt(2.0), origin.Dist2D(Point2D<float>(1, 1)));
    EXPECT_EQ(static_cast<double>(std::sqrt(2.0f)), origin.Dist3D(Point3D<float>(1, 1, 0)));
}

// Constant evaluation refuses to read a value whose life has ended.
TYPED_TEST(Point3DOf, PlanarPartOfATemporaryLivesAsLongAsItsReference) {
    using P = Point3D<TypeParam>;
    constexpr auto sum = [] {
        const Point2D<TypeParam>& planar = P(1, 2, 3, 4);
        const Point2D<TypeParam>& moved = P(10, 20, 30) + Vector3D<TypeParam>(100, 200, 300);
        return planar.X() + planar.Y() + moved.X() + moved.Y();
    };
    static_assert(sum() == 333);
    EXPECT_EQ(333, sum());
    static_assert(!std::is_convertible_v<P, Point2D<TypeParam>&>); // nor is it changed in vain
}

TYPED_TEST(Point3DOf, IsComparedWithAPlanarPointAsOne) {
    using P = Point3D<TypeParam>;
    using Planar = Point2D<TypeParam>;
    EXPECT_EQ(P(1, 2, 3), Planar(1, 2));
    EXPECT_EQ(Planar(1, 2), P(1, 2, 3));
    EXPECT_NE(P(1, 2, 3), Planar(1, 3));
    EXPECT_NE(Planar(2, 2), P(1, 2, 3));
    const TypeParam tiny = TypeParam{1e-12f};
    EXPECT_EQ(P(0, 0, 3), Planar(tiny, 0)); // with the tolerance of planar points
    EXPECT_EQ(Planar(tiny, 0), P(0, 0, 3));
    EXPECT_NE(P(0, 0, 3), P(tiny, 0, 3));
}

TEST(Point3D, EqualityIsExact) {
    EXPECT_NE(Point3D<double>(0, 0, 0), Point3D<double>(1e-12, 0, 0));
    EXPECT_NE(Point3D<double>(0, 0, 0), Point3D<double>(0, 0, 1e-300));
    EXPECT_EQ(Point3D<double>(1, 2, 3, 4), Point3D<double>(1, 2, 3, 5));
    EXPECT_EQ(Point3D<double>(1, 2, 3, 4), Point3D<double>(1, 2, 3, 5));
    EXPECT_NE(Point3D<double>(kNaN, 0, 0), Point3D<double>(kNaN, 0, 0));
}

TEST(Point3D, BesideNaNOnlyTheInclusiveComparisonsHold) {
    using P = Point3D<double>;
    struct Row {
        P a, b;
    };
    for (const Row& row : {Row{P(kNaN, 1, 1), P(0, 2, 2)}, Row{P(0, kNaN, 1), P(0, 2, 2)},
                           Row{P(0, 0, 1), P(0, 0, kNaN)}, Row{P(0, 1, 1), P(kNaN, 2, 2)}}) {
        EXPECT_PRED2(std::not_fn(std::less<>()), row.a, row.b);
        EXPECT_PRED2(std::not_fn(std::greater<>()), row.a, row.b);
        EXPECT_LE(row.a, row.b);
        EXPECT_GE(row.a, row.b);
    }
    EXPECT_LT(P(0, 1, kNaN), P(0, 2, kNaN)); // y decides before the NaN is met
}

struct Raising : GTL::Transformation<Point3D<double>> {
    void Apply(Point3D<double>& point) const override { point += Vector3D<double>(0, 0, 100); }
};

TEST(Point3D, TransformationChangesThePointInPlace) {
    Point3D<double> point(1, 2, 3, 4);
    point.Transform(Raising());
    ExpectXYZB<double>(1, 2, 103, 4, point);
}

TEST(Point3D, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            const Point3D<double> p(a, b, 1, a), q(b, 1, a, b);
            EXPECT_EQ(!(p == q), p != q);
            EXPECT_EQ(!(p < q), p >= q);
            EXPECT_EQ(!(p > q), p <= q);
            const double square = p.Dist3D(q, true);
            EXPECT_TRUE(square >= 0 || std::isnan(square));
            EXPECT_EQ(0.0, (p / b).B());
        }
    }
}

} // namespace
