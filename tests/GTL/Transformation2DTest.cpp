// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Transformation2D.h"

#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <type_traits>
#include <vector>

using GTL::Point2D;
using GTL::Transformation2D;

namespace {

template <typename T> class Transformation2DOf : public ::testing::Test {};
using ElementTypes = ::testing::Types<int, float, double>;
TYPED_TEST_SUITE(Transformation2DOf, ElementTypes);

using Matrix = std::array<std::array<double, 3>, 3>;

Matrix Product(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            for (std::size_t k = 0; k < 3; ++k) product[row][column] += a[row][k] * b[k][column];
        }
    }
    return product;
}

Matrix Translation(double dx, double dy) { return {{{1, 0, dx}, {0, 1, dy}, {0, 0, 1}}}; }
Matrix Rotation(double degrees) {
    const double radians = degrees * std::acos(-1.0) / 180;
    return {
        {{std::cos(radians), std::sin(radians), 0}, {-std::sin(radians), std::cos(radians), 0}, {0, 0, 1}}};
}

template <typename T> void ExpectMatrix(const Matrix& expected, const Transformation2D<Point2D<T>>& t) {
    for (int row = 1; row <= 3; ++row) {
        for (int column = 1; column <= 3; ++column) {
            EXPECT_NEAR(expected[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)],
                        t.M(row, column), 1e-9)
                << row << ' ' << column;
        }
    }
}

template <typename T> Point2D<T> Applied(const GTL::Transformation<Point2D<T>>& t, T x, T y) {
    Point2D<T> point(x, y);
    point.Transform(t); // through the interface, as extents and shapes do
    return point;
}

TYPED_TEST(Transformation2DOf, IsATransformationWithAVirtualDestructor) {
    using P = Point2D<TypeParam>;
    static_assert(std::is_base_of_v<GTL::Transformation<P>, Transformation2D<P>>);
    static_assert(std::has_virtual_destructor_v<GTL::Transformation<P>>);
    static_assert(std::is_abstract_v<GTL::Transformation<P>>);
}

TYPED_TEST(Transformation2DOf, NewOneIsTheIdentity) {
    const Transformation2D<Point2D<TypeParam>> identity;
    ExpectMatrix({{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, identity);
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto x = static_cast<TypeParam>(random.AnyInteger()),
                   y = static_cast<TypeParam>(random.AnyInteger());
        const auto point = Applied(identity, x, y);
        ASSERT_EQ(x, point.X());
        ASSERT_EQ(y, point.Y());
    }
}

TYPED_TEST(Transformation2DOf, ElementsCountFromOne) {
    Transformation2D<Point2D<TypeParam>> t;
    t.Translate(5, 6);
    EXPECT_EQ(5, t.M(1, 3));
    EXPECT_EQ(6, t.M(2, 3));
    for (const int outside : {-1, 0, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_TRUE(std::isnan(t.M(outside, 1)));
        EXPECT_TRUE(std::isnan(t.M(1, outside)));
    }
}

TYPED_TEST(Transformation2DOf, QuarterTurnsAreClockwise) {
    struct Row {
        double degrees;
        int x, y, toX, toY;
    };
    for (const Row& row : {Row{90, 0, 1, 1, 0}, Row{90, 1, 0, 0, -1}, Row{180, 3, 4, -3, -4},
                           Row{270, 0, 1, -1, 0}, Row{-90, 1, 0, 0, 1}, Row{360, 3, 4, 3, 4}}) {
        Transformation2D<Point2D<TypeParam>> t;
        t.Rotate(row.degrees, {0, 0});
        const auto point = Applied(t, static_cast<TypeParam>(row.x), static_cast<TypeParam>(row.y));
        EXPECT_NEAR(row.toX, static_cast<double>(point.X()), 1e-6) << row.degrees;
        EXPECT_NEAR(row.toY, static_cast<double>(point.Y()), 1e-6) << row.degrees;
    }
}

TYPED_TEST(Transformation2DOf, LaterStepsComeAfterEarlierOnes) {
    Transformation2D<Point2D<TypeParam>> moveAndTurn;
    moveAndTurn.Translate(1, 0);
    moveAndTurn.Rotate(90, {0, 0});
    auto point = Applied<TypeParam>(moveAndTurn, 0, 0);
    EXPECT_NEAR(0, static_cast<double>(point.X()), 1e-12);
    EXPECT_NEAR(-1, static_cast<double>(point.Y()), 1e-12);

    Transformation2D<Point2D<TypeParam>> turnAndMove;
    turnAndMove.Rotate(90, {0, 0});
    turnAndMove.Translate(1, 0);
    point = Applied<TypeParam>(turnAndMove, 0, 0);
    EXPECT_NEAR(1, static_cast<double>(point.X()), 1e-12);
    EXPECT_NEAR(0, static_cast<double>(point.Y()), 1e-12);
}

TYPED_TEST(Transformation2DOf, CentreOfARotationStays) {
    Transformation2D<Point2D<TypeParam>> t;
    t.Rotate(37, {10, -20});
    const auto point = Applied<TypeParam>(t, 10, -20);
    EXPECT_NEAR(10, static_cast<double>(point.X()), 1e-5);
    EXPECT_NEAR(-20, static_cast<double>(point.Y()), 1e-5);
}

TYPED_TEST(Transformation2DOf, StepsMultiplyFromTheLeft) {
    using P = Point2D<TypeParam>;
    Random random(2);
    for (int i = 0; i < kPropertyRuns / 10; ++i) {
        Transformation2D<P> t;
        Matrix expected = Translation(0, 0);
        for (int step = random.Integer(1, 10); step > 0; --step) {
            const int x = random.Integer(-100, 100), y = random.Integer(-100, 100);
            if (random.Integer(0, 1)) {
                t.Translate(x + 0.25, y - 0.75);
                expected = Product(Translation(x + 0.25, y - 0.75), expected);
            } else {
                const double degrees = random.Real(0, 360);
                t.Rotate(degrees, P(static_cast<TypeParam>(x), static_cast<TypeParam>(y)));
                expected = Product(Translation(x, y),
                                   Product(Rotation(degrees), Product(Translation(-x, -y), expected)));
            }
        }
        ExpectMatrix(expected, t);
        const auto px = static_cast<TypeParam>(random.Integer(-100, 100));
        const auto py = static_cast<TypeParam>(random.Integer(-100, 100));
        const auto point = Applied(t, px, py);
        const double x = expected[0][0] * static_cast<double>(px) + expected[0][1] * static_cast<double>(py) +
                         expected[0][2];
        const double y = expected[1][0] * static_cast<double>(px) + expected[1][1] * static_cast<double>(py) +
                         expected[1][2];
        const double tolerance = std::is_same_v<TypeParam, int>     ? 0.5 + 1e-9
                                 : std::is_same_v<TypeParam, float> ? 1e-3
                                                                    : 1e-9;
        ASSERT_NEAR(x, static_cast<double>(point.X()), tolerance);
        ASSERT_NEAR(y, static_cast<double>(point.Y()), tolerance);
    }
}

TYPED_TEST(Transformation2DOf, RotationKeepsDistancesAndTurnsBack) {
    using P = Point2D<TypeParam>;
    if (std::is_same_v<TypeParam, int>) return; // rounding moves the points
    Random random(3);
    const auto any = [&] { return static_cast<TypeParam>(random.Real(-100, 100)); };
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Angle angle(random.Real(0, 360));
        const P centre(any(), any()), a(any(), any()), b(any(), any());
        Transformation2D<P> t;
        t.Rotate(angle, centre);
        ASSERT_NEAR(a.Dist2D(b), Applied(t, a.X(), a.Y()).Dist2D(Applied(t, b.X(), b.Y())), 1e-3);
        t.Rotate(-angle, centre);
        ASSERT_LT(a.Dist2D(Applied(t, a.X(), a.Y())), 1e-3);
    }
}

TYPED_TEST(Transformation2DOf, SpanOfPointsIsTransformedAsOneByOne) {
    using P = Point2D<TypeParam>;
    Random random(4);
    Transformation2D<P> t;
    t.Translate(3, -8);
    t.Rotate(33, {5, 6});
    for (std::size_t count = 0; count < 50; ++count) {
        std::vector<P> points, expected;
        for (std::size_t n = 0; n < count; ++n) {
            points.emplace_back(static_cast<TypeParam>(random.Integer(-1000, 1000)),
                                static_cast<TypeParam>(random.Integer(-1000, 1000)));
            expected.push_back(Applied(t, points[n].X(), points[n].Y()));
        }
        static_cast<const GTL::Transformation<P>&>(t).ApplyAll(points);
        for (std::size_t n = 0; n < count; ++n) {
            ASSERT_EQ(expected[n].X(), points[n].X());
            ASSERT_EQ(expected[n].Y(), points[n].Y());
        }
    }
}

// A mapping with one more step of its own, as hosts derive it.
template <typename P> struct Mirrored : Transformation2D<P> {
    void Apply(P& point) const override {
        Transformation2D<P>::Apply(point);
        point.X(-point.X());
    }
};

TYPED_TEST(Transformation2DOf, SpanOfPointsGoesThroughADerivedMapping) {
    using P = Point2D<TypeParam>;
    Mirrored<P> mirrored;
    mirrored.Translate(10, 20);
    const GTL::Transformation<P>& mapping = mirrored;
    std::vector<P> points = {{1, 2}, {3, 4}, {-5, 6}};
    mapping.ApplyAll(points);
    EXPECT_EQ((std::vector<P>{{-11, 22}, {-13, 24}, {-5, 26}}), points);
}

// Deriving without an Apply() changes nothing.
TYPED_TEST(Transformation2DOf, SpanOfPointsGoesThroughADerivedMappingThatAddsNothing) {
    using P = Point2D<TypeParam>;
    struct Named : Transformation2D<P> {
        int name = 7;
    } named;
    named.Translate(10, 20);
    std::vector<P> points = {{1, 2}, {3, 4}};
    named.ApplyAll(points);
    EXPECT_EQ((std::vector<P>{{11, 22}, {13, 24}}), points);
}

TEST(Transformation2D, IntegersAreRoundedToTheNearestHalvesUpward) {
    Transformation2D<Point2D<int>> t;
    t.Translate(0.5, 0.49);
    EXPECT_EQ(3, Applied(t, 2, 2).X());
    EXPECT_EQ(2, Applied(t, 2, 2).Y());
    EXPECT_EQ(-2, Applied(t, -3, -3).X());
    EXPECT_EQ(-3, Applied(t, -3, -3).Y());
}

TEST(Transformation2D, IntegersThatDoNotFitAreTheIntegerIndefiniteValue) {
    for (const double shift : {2147483648.0, -2147483649.0, 1e300, kInfinity, -kInfinity, kNaN}) {
        Transformation2D<Point2D<int>> t;
        t.Translate(shift, 0);
        EXPECT_EQ(kIntegerIndefinite, Applied(t, 0, 7).X()) << shift;
        EXPECT_EQ(7, Applied(t, 0, 7).Y()) << shift;
    }
}

TEST(Transformation2D, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            Transformation2D<Point2D<double>> t;
            t.Translate(a, b);
            t.Rotate(a, Point2D<double>(b, a));
            const Point2D<double> point = Applied(t, b, a);
            if (std::isfinite(a) && std::isfinite(b)) {
                const bool isSmall = std::fabs(a) < 1e10 && std::fabs(b) < 1e10;
                EXPECT_TRUE(!isSmall || (std::fabs(point.X()) < 1e11 && std::fabs(point.Y()) < 1e11));
            } else {
                EXPECT_FALSE(std::isfinite(point.X()) && std::isfinite(point.Y())) << a << ' ' << b;
            }
            Transformation2D<Point2D<float>> narrow;
            narrow.Translate(a, b);
            const float x = Applied(narrow, 0.f, 0.f).X();
            EXPECT_TRUE(x == static_cast<float>(a) || (std::isnan(x) && std::isnan(a))) << a;
        }
    }
}

} // namespace
