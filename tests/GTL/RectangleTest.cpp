// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Rectangle.h"

#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

using GTL::Point2D;
namespace CLS = GTL::CLS;

namespace {

template <typename T> class RectangleOf : public ::testing::Test {};
using ElementTypes = ::testing::Types<int, float, double>;
TYPED_TEST_SUITE(RectangleOf, ElementTypes);

template <typename T> using Rect = GTL::Rectangle<Point2D<T>>;

template <typename T>
void ExpectCorner(double x, double y, const Rect<T>& rectangle, int index, double tolerance) {
    EXPECT_NEAR(x, static_cast<double>(rectangle.Corner(index).X()), tolerance) << index;
    EXPECT_NEAR(y, static_cast<double>(rectangle.Corner(index).Y()), tolerance) << index;
}

TYPED_TEST(RectangleOf, HoldsSidesAndRotation) {
    const Rect<TypeParam> rectangle({1, 2}, 4, 3, 30);
    EXPECT_EQ(4, rectangle.Width());
    EXPECT_EQ(3, rectangle.Height());
    EXPECT_EQ(30.0, rectangle.Rotation().Get());
    EXPECT_EQ(4, rectangle.NumCorners());
    const Rect<TypeParam> none;
    EXPECT_EQ(0, none.Width());
    EXPECT_EQ(CLS::INSIDE, none.Classify({0, 0}));
    EXPECT_EQ(CLS::OUTSIDE, none.Classify({1, 0}));
}

TYPED_TEST(RectangleOf, CornersRunFromTheOriginAlongTheWidth) {
    struct Row {
        double degrees;
        int corners[8];
    };
    for (const Row& row : {Row{0, {1, 2, 5, 2, 5, 4, 1, 4}}, Row{90, {1, 2, 1, -2, 3, -2, 3, 2}},
                           Row{180, {1, 2, -3, 2, -3, 0, 1, 0}}, Row{270, {1, 2, 1, 6, -1, 6, -1, 2}}}) {
        const Rect<TypeParam> rectangle({1, 2}, 4, 2, row.degrees);
        for (int i = 0; i < 4; ++i)
            ExpectCorner(row.corners[2 * i], row.corners[2 * i + 1], rectangle, i, 1e-6);
    }
}

TYPED_TEST(RectangleOf, CornersFollowTheSinesAndCosines) {
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto x = static_cast<TypeParam>(random.Integer(-100, 100)),
                   y = static_cast<TypeParam>(random.Integer(-100, 100));
        const double width = random.Integer(0, 100), height = random.Integer(0, 100),
                     degrees = random.Real(0, 360);
        const Rect<TypeParam> rectangle({x, y}, width, height, degrees);
        const double radians = degrees * std::acos(-1.0) / 180;
        const double ox = static_cast<double>(x), oy = static_cast<double>(y);
        const double wx = width * std::cos(radians), wy = -width * std::sin(radians);
        const double hx = height * std::sin(radians), hy = height * std::cos(radians);
        const double tolerance = std::is_same_v<TypeParam, int>     ? 0.5 + 1e-9
                                 : std::is_same_v<TypeParam, float> ? 1e-4
                                                                    : 1e-10;
        ExpectCorner(ox, oy, rectangle, 0, 0);
        ExpectCorner(ox + wx, oy + wy, rectangle, 1, tolerance);
        ExpectCorner(ox + wx + hx, oy + wy + hy, rectangle, 2, tolerance);
        ExpectCorner(ox + hx, oy + hy, rectangle, 3, tolerance);
        if (this->HasFailure()) break;
    }
}

TYPED_TEST(RectangleOf, RotatedRectangleHoldsPointsClockwiseOfItsWidth) {
    const Rect<TypeParam> rectangle({0, 0}, 4, 2, 90);
    EXPECT_EQ(CLS::INSIDE, rectangle.Classify({1, -3}));
    EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify({1, 3}));
}

TYPED_TEST(RectangleOf, BorderOfAnUnrotatedRectangleIsInside) {
    const Rect<TypeParam> rectangle({1, 2}, 4, 3, 0);
    struct Row {
        int x, y;
        CLS::CLASSIFICATION expected;
    };
    for (const Row& row : {Row{1, 2, CLS::INSIDE}, Row{5, 2, CLS::INSIDE}, Row{5, 5, CLS::INSIDE},
                           Row{1, 5, CLS::INSIDE}, Row{3, 3, CLS::INSIDE}, Row{0, 3, CLS::OUTSIDE},
                           Row{6, 3, CLS::OUTSIDE}, Row{3, 1, CLS::OUTSIDE}, Row{3, 6, CLS::OUTSIDE}}) {
        EXPECT_EQ(row.expected,
                  rectangle.Classify({static_cast<TypeParam>(row.x), static_cast<TypeParam>(row.y)}))
            << row.x << ' ' << row.y;
    }
}

TYPED_TEST(RectangleOf, EveryCornerOfAnUnrotatedRectangleIsInside) {
    Random random(2);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Rect<TypeParam> rectangle(
            {static_cast<TypeParam>(random.Real(-1e6, 1e6)), static_cast<TypeParam>(random.Real(-1e6, 1e6))},
            random.Real(0, 1e6), random.Real(0, 1e6), 0);
        for (int corner = 0; corner < 4; ++corner) {
            ASSERT_EQ(CLS::INSIDE, rectangle.Classify(rectangle.Corner(corner))) << corner;
        }
    }
}

TYPED_TEST(RectangleOf, ClassificationAgreesWithAnIndependentRotation) {
    Random random(3);
    int tried = 0, inside = 0;
    while (tried < kPropertyRuns) {
        const auto any = [&](double range) { return static_cast<TypeParam>(random.Real(-range, range)); };
        const Point2D<TypeParam> origin(any(1000), any(1000));
        const double width = random.Integer(1, 1000), height = random.Integer(1, 1000);
        const double degrees = random.Integer(0, 9) ? random.Real(0, 360) : 90.0 * random.Integer(0, 3);
        const Point2D<TypeParam> point = origin + GTL::Vector2D<TypeParam>(any(800), any(800));

        // Along the width and along the height, by the products with their directions.
        const double radians = degrees * std::acos(-1.0) / 180;
        const double dx = static_cast<double>(point.X()) - static_cast<double>(origin.X());
        const double dy = static_cast<double>(point.Y()) - static_cast<double>(origin.Y());
        const double along = dx * std::cos(radians) - dy * std::sin(radians);
        const double up = dx * std::sin(radians) + dy * std::cos(radians);
        const double away =
            std::is_same_v<TypeParam, int> ? 2 : 1e-2; // from the border, where rounding decides
        const double distance =
            std::min({std::fabs(along), std::fabs(along - width), std::fabs(up), std::fabs(up - height)});
        if (distance < away) continue;

        const bool expected = 0 <= along && along <= width && 0 <= up && up <= height;
        ASSERT_EQ(expected ? CLS::INSIDE : CLS::OUTSIDE,
                  Rect<TypeParam>(origin, width, height, degrees).Classify(point))
            << degrees << ' ' << along << ' ' << up;
        ++tried;
        inside += expected;
    }
    EXPECT_GT(inside, kPropertyRuns / 20);
}

// Each is asked many things.
constexpr int kRectangles = kPropertyRuns / 4;

// A rectangle of any size and elongation anywhere, turned by any angle.
template <typename T> Rect<T> AnyRotated(Random& random) {
    const bool isInteger = std::is_integral_v<T>; // of few digits: they say something about rounding
    const auto upTo = [&](double exponent) {
        return std::pow(10, random.Real(isInteger ? 0 : -3, exponent));
    };
    const double range = upTo(6), size = upTo(6);
    const Point2D<T> origin(static_cast<T>(random.Real(-range, range)),
                            static_cast<T>(random.Real(-range, range)));
    const double quarters = random.OnceIn(10) ? 90.0 * random.Integer(1, 3) : random.Real(1e-6, 360);
    return {origin, random.Real(0, size), random.Real(0, size) * upTo(isInteger ? 1 : 3), quarters};
}

TYPED_TEST(RectangleOf, EveryCornerOfARotatedRectangleIsInside) {
    Random random(6);
    for (int i = 0; i < kRectangles; ++i) {
        const Rect<TypeParam> rectangle = AnyRotated<TypeParam>(random);
        for (int corner = 0; corner < 4; ++corner) {
            ASSERT_EQ(CLS::INSIDE, rectangle.Classify(rectangle.Corner(corner)))
                << corner << " of " << ::testing::PrintToString(rectangle);
        }
    }
}

// The usual ways to a point between two others, in the element type, and for integers rounded.
template <typename T>
std::vector<Point2D<T>> PointsBetween(const Point2D<T>& a, const Point2D<T>& b, double at) {
    if constexpr (std::is_integral_v<T>) {
        const auto between = [&](int from, int to) {
            return static_cast<int>(std::lround(from + at * (static_cast<double>(to) - from)));
        };
        return {{between(a.X(), b.X()), between(a.Y(), b.Y())}};
    } else {
        const T t = static_cast<T>(at);
        return {{a.X() + t * (b.X() - a.X()), a.Y() + t * (b.Y() - a.Y())},
                {(1 - t) * a.X() + t * b.X(), (1 - t) * a.Y() + t * b.Y()},
                {std::lerp(a.X(), b.X(), t), std::lerp(a.Y(), b.Y(), t)},
                {(a.X() + b.X()) / 2, (a.Y() + b.Y()) / 2}};
    }
}

TYPED_TEST(RectangleOf, EveryComputedPointOfARotatedEdgeIsInside) {
    Random random(7);
    for (int i = 0; i < kRectangles; ++i) {
        const Rect<TypeParam> rectangle = AnyRotated<TypeParam>(random);
        for (int corner = 0; corner < 4; ++corner) {
            const double at = random.Real(0, 1);
            for (const auto& [from, to] :
                 {std::pair(corner, (corner + 1) % 4), std::pair((corner + 1) % 4, corner)}) {
                for (const auto& point : PointsBetween(rectangle.Corner(from), rectangle.Corner(to), at)) {
                    ASSERT_EQ(CLS::INSIDE, rectangle.Classify(point))
                        << ::testing::PrintToString(point) << " at " << at << " from corner " << from
                        << " to " << to << " of " << ::testing::PrintToString(rectangle);
                }
            }
        }
    }
}

// For integers also those that lie on the exact edge before they are rounded.
TEST(Rectangle, IntegerPointsRoundedFromAnExactEdgeAreInside) {
    Random random(8);
    for (int i = 0; i < kRectangles; ++i) {
        const int x = random.Integer(-1000, 1000), y = random.Integer(-1000, 1000);
        const double width = random.Real(0, 1000), height = random.Real(0, 1000),
                     degrees = random.Real(0, 360);
        const Rect<int> rectangle({x, y}, width, height, degrees);
        const Rect<double> exact({static_cast<double>(x), static_cast<double>(y)}, width, height, degrees);
        for (int corner = 0; corner < 4; ++corner) {
            for (const Point2D<double>& p :
                 PointsBetween(exact.Corner(corner), exact.Corner((corner + 1) % 4), random.Real(0, 1))) {
                const Point2D<int> point(static_cast<int>(std::lround(p.X())),
                                         static_cast<int>(std::lround(p.Y())));
                ASSERT_EQ(CLS::INSIDE, rectangle.Classify(point))
                    << ::testing::PrintToString(point) << " of " << ::testing::PrintToString(rectangle);
            }
        }
    }
}

// How far beside its sides a point of a rectangle may lie. This test rounds its own points, and those of int
// to half a unit in x and in y, as the corners are and every point.
template <typename T> double Reach(const Rect<T>& rectangle) {
    if (std::is_integral_v<T>) return 0.5 + 3 * std::sqrt(0.5); // the side itself is rounded
    const auto& origin = rectangle.Corner(0);
    const double size =
        std::max(std::fabs(static_cast<double>(origin.X())), std::fabs(static_cast<double>(origin.Y()))) +
        static_cast<double>(rectangle.Width()) + static_cast<double>(rectangle.Height());
    return 8 * static_cast<double>(std::numeric_limits<T>::epsilon()) * size;
}

// Straight outward through each edge: first all points are inside, then none.
TYPED_TEST(RectangleOf, PointsBeyondTheToleranceOfAnyEdgeAreOutside) {
    using P = Point2D<TypeParam>;
    Random random(9);
    int seen = 0;
    for (int i = 0; i < kRectangles; ++i) {
        const Rect<TypeParam> rectangle = AnyRotated<TypeParam>(random);
        const double sine = rectangle.Rotation().Sin(), cosine = rectangle.Rotation().Cos();
        const double width = static_cast<double>(rectangle.Width()),
                     height = static_cast<double>(rectangle.Height());
        const double reach = Reach(rectangle);
        struct Edge {
            double along, up, outAlong, outUp;
        };
        const double a = random.Real(0, width), u = random.Real(0, height);
        for (const Edge& edge :
             {Edge{a, 0, 0, -1}, Edge{a, height, 0, 1}, Edge{0, u, -1, 0}, Edge{width, u, 1, 0}}) {
            bool wasOutside = false;
            for (double away = reach / 64; away < reach * 64; away *= 2) {
                const double along = edge.along + away * edge.outAlong, up = edge.up + away * edge.outUp;
                const auto at = [&](double from, double by) { return static_cast<TypeParam>(from + by); };
                const P& origin = rectangle.Corner(0);
                const P point(at(static_cast<double>(origin.X()), along * cosine + up * sine),
                              at(static_cast<double>(origin.Y()), up * cosine - along * sine));
                const bool isInside = rectangle.Classify(point) == CLS::INSIDE;
                ASSERT_FALSE(isInside && away > reach)
                    << away << " beyond " << ::testing::PrintToString(rectangle);
                ASSERT_FALSE(isInside && wasOutside && !std::is_integral_v<TypeParam>) << away;
                wasOutside = !isInside;
                seen += wasOutside;
            }
        }
    }
    EXPECT_GT(seen, kRectangles);
}

TYPED_TEST(RectangleOf, FarEdgesOfARotatedRectangleAreItsBorder) {
    struct Row {
        int x, y;
        CLS::CLASSIFICATION expected;
    };
    // The width runs down from (10, 20), the height to the right.
    const Rect<TypeParam> rectangle({10, 20}, 4, 2, 90);
    for (const Row& row : {Row{10, 16, CLS::INSIDE}, Row{11, 16, CLS::INSIDE}, Row{12, 16, CLS::INSIDE},
                           Row{12, 18, CLS::INSIDE}, Row{12, 20, CLS::INSIDE}, Row{11, 20, CLS::INSIDE},
                           Row{10, 18, CLS::INSIDE}, Row{11, 18, CLS::INSIDE}, Row{11, 15, CLS::OUTSIDE},
                           Row{13, 18, CLS::OUTSIDE}, Row{11, 21, CLS::OUTSIDE}, Row{9, 18, CLS::OUTSIDE},
                           Row{13, 15, CLS::OUTSIDE}}) {
        EXPECT_EQ(row.expected,
                  rectangle.Classify({static_cast<TypeParam>(row.x), static_cast<TypeParam>(row.y)}))
            << row.x << ' ' << row.y;
    }
}

TEST(Rectangle, FarEdgesOfARotatedRectangleAreNoFartherThanItsSides) {
    const Rect<double> rectangle({0, 0}, 4, 2, 30);
    const auto at = [&](double along, double up) {
        const double sine = 0.5, cosine = std::sqrt(0.75);
        return Point2D<double>(along * cosine + up * sine, up * cosine - along * sine);
    };
    for (const double far : {1e-13, 1e-9, 1e-3, 1.0, 100.0}) {
        EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify(at(4 + far, 1))) << far;
        EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify(at(2, 2 + far))) << far;
        EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify(at(-far, 1))) << far;
        EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify(at(2, -far))) << far;
    }
    EXPECT_EQ(CLS::INSIDE, rectangle.Classify(at(4, 1)));
    EXPECT_EQ(CLS::INSIDE, rectangle.Classify(at(2, 2)));
}

TEST(Rectangle, RotatedRectangleWithAnInfiniteSideIsAStrip) {
    const Rect<double> strip({0, 0}, kInfinity, 2, 45);
    EXPECT_EQ(CLS::INSIDE, strip.Classify({100, -99}));
    EXPECT_EQ(CLS::OUTSIDE, strip.Classify({100, -96}));
    EXPECT_EQ(CLS::OUTSIDE, strip.Classify({-100, 101}));
    const Rect<double> finite({0, 0}, 4, 2, 45);
    for (const double x : {kInfinity, -kInfinity, kNaN}) {
        for (const double y : {kInfinity, -kInfinity, kNaN, 0.0}) {
            EXPECT_EQ(CLS::OUTSIDE, finite.Classify({x, y})) << x << ' ' << y;
            EXPECT_EQ(CLS::OUTSIDE, finite.Classify({y, x})) << y << ' ' << x;
        }
    }
}

TEST(Rectangle, RotationOfAWholeTurnCountsAsRotated) {
    const Rect<double> rectangle({0, 0}, 4, 2, -1e-20); // kept as 360
    EXPECT_EQ(360.0, rectangle.Rotation().Get());
    EXPECT_EQ(CLS::INSIDE, rectangle.Classify({1, 1}));
    EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify({1, 3}));
    const Rect<double> minusZero({0, 0}, 4, 2, -360); // kept as -0, which is no rotation
    EXPECT_EQ(CLS::INSIDE, minusZero.Classify({4, 2}));
}

TEST(Rectangle, NegativeSidesHoldNothing) {
    for (const double degrees : {0.0, 45.0}) {
        const Rect<double> rectangle({0, 0}, -4, 2, degrees);
        for (const Point2D<double>& point :
             {Point2D<double>(-1, 1), Point2D<double>(1, 1), Point2D<double>(-2, 0)}) {
            EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify(point));
        }
    }
}

TEST(Rectangle, TransformationMovesCornersAndLeavesSidesAndRotation) {
    Rect<double> rectangle({0, 0}, 4, 2, 0);
    GTL::Transformation2D<Point2D<double>> t;
    t.Rotate(90, {0, 0});
    t.Translate(10, 0);
    rectangle.Transform(t);
    ExpectCorner(10, -4, rectangle, 1, 1e-12);
    EXPECT_EQ(4, rectangle.Width());
    EXPECT_EQ(0.0, rectangle.Rotation().Get());
}

TEST(Rectangle, ClassificationFollowsAChangedOrigin) {
    Rect<double> rectangle({0, 0}, 4, 2, 90);
    rectangle.SetCorner(0, {100, 100});
    EXPECT_EQ(CLS::INSIDE, rectangle.Classify({101, 97}));
    EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify({1, -3}));
}

TYPED_TEST(RectangleOf, UpdateAddsTheCornersAtHeightZero) {
    const Rect<TypeParam> rectangle({1, 2}, 4, 3, 90);
    GTL::Extents3D<double> extents;
    const GTL::GeoPrimitiveBase<Point2D<TypeParam>>& shape = rectangle;
    shape.Update(extents);
    EXPECT_NEAR(1, extents.MinX(), 1e-6);
    EXPECT_NEAR(-2, extents.MinY(), 1e-6);
    EXPECT_NEAR(4, extents.MaxX(), 1e-6);
    EXPECT_NEAR(2, extents.MaxY(), 1e-6);
    EXPECT_EQ(0, extents.MinZ());
    EXPECT_EQ(0, extents.MaxZ());
    EXPECT_EQ(0, extents.MinPnt().B());
}

TEST(Rectangle, IntegerExtremesDoNotWrapInside) {
    constexpr int kMin = std::numeric_limits<int>::min();
    constexpr int kMax = std::numeric_limits<int>::max();
    const Rect<int> rectangle({kMax - 10, kMax - 10}, 5, 5, 180);
    EXPECT_EQ(CLS::INSIDE, rectangle.Classify({kMax - 12, kMax - 12}));
    EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify({kMin, kMin}));
    EXPECT_EQ(CLS::OUTSIDE, rectangle.Classify({kMax, kMax}));
}

TYPED_TEST(RectangleOf, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            const Rect<TypeParam> rectangle({1, 2}, a, b, a);
            const auto classification = rectangle.Classify(rectangle.Corner(2));
            EXPECT_TRUE(classification == CLS::INSIDE || classification == CLS::OUTSIDE);
            EXPECT_TRUE(classification == CLS::OUTSIDE || !std::isnan(a));
            GTL::Extents3D<double> extents;
            rectangle.Update(extents);
            EXPECT_TRUE(extents.IsValid()); // the origin at least is a number
        }
    }
}

TEST(Rectangle, ClassificationOfAnUnrotatedOneIsByItsCornersAndOfARotatedOneByItsSides) {
    Rect<double> upright({0, 0}, 4, 2, 0);
    upright.SetCorner(1, {10, 0});
    upright.SetCorner(3, {0, 20});
    EXPECT_EQ(CLS::INSIDE, upright.Classify({9, 19}));
    EXPECT_EQ(CLS::OUTSIDE, upright.Classify({11, 1}));
    Rect<double> turned({0, 0}, 4, 2, 90);
    turned.SetCorner(1, {0, -10});
    turned.SetCorner(3, {20, 0});
    EXPECT_EQ(CLS::OUTSIDE, turned.Classify({1, -9}));
    EXPECT_EQ(CLS::OUTSIDE, turned.Classify({19, -1}));
    EXPECT_EQ(CLS::INSIDE, turned.Classify({1, -3}));
}

TEST(Rectangle, UpdateAgreesWithTheCornersOfAnIndependentRotation) {
    Random random(5);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const double x = random.Real(-100, 100), y = random.Real(-100, 100);
        const double width = random.Real(0, 100), height = random.Real(0, 100), degrees = random.Real(0, 360);
        const double c = std::cos(degrees * std::acos(-1.0) / 180),
                     s = std::sin(degrees * std::acos(-1.0) / 180);
        GTL::Extents3D<double> extents;
        Rect<double>({x, y}, width, height, degrees).Update(extents);
        ASSERT_NEAR(x + std::min(0.0, width * c) + std::min(0.0, height * s), extents.MinX(), 1e-10);
        ASSERT_NEAR(x + std::max(0.0, width * c) + std::max(0.0, height * s), extents.MaxX(), 1e-10);
        ASSERT_NEAR(y + std::min(0.0, -width * s) + std::min(0.0, height * c), extents.MinY(), 1e-10);
        ASSERT_NEAR(y + std::max(0.0, -width * s) + std::max(0.0, height * c), extents.MaxY(), 1e-10);
        ASSERT_EQ(0, extents.MinZ());
        ASSERT_EQ(0, extents.MaxZ());
    }
}

} // namespace
