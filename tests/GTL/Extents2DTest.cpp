// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Extents2D.h"

#include "UtilityDLL/GTL/Transformation2D.h"
#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <array>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <type_traits>
#include <vector>

using GTL::Extents2D;
using GTL::Point2D;
namespace CLS = GTL::CLS;

namespace {

template <typename T> class Extents2DOf : public ::testing::Test {
protected:
    static T Any(Random& random) { return static_cast<T>(random.Integer(-10, 10)); }
};
using ElementTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Extents2DOf, ElementTypes);

template <typename T> Extents2D<T> Box(T minX, T minY, T maxX, T maxY) {
    Extents2D<T> box;
    box.Update(minX, minY);
    box.Update(maxX, maxY);
    return box;
}

template <typename T> Extents2D<T> Stored(T minX, T minY, T maxX, T maxY) {
    return std::bit_cast<Extents2D<T>>(std::array<T, 4>{minX, minY, maxX, maxY});
}

template <typename T> void ExpectBox(T minX, T minY, T maxX, T maxY, const Extents2D<T>& box) {
    EXPECT_EQ(minX, box.MinX());
    EXPECT_EQ(minY, box.MinY());
    EXPECT_EQ(maxX, box.MaxX());
    EXPECT_EQ(maxY, box.MaxY());
    EXPECT_EQ(minX, box.MinPnt().X());
    EXPECT_EQ(minY, box.MinPnt().Y());
    EXPECT_EQ(maxX, box.MaxPnt().X());
    EXPECT_EQ(maxY, box.MaxPnt().Y());
}

TYPED_TEST(Extents2DOf, IsAPlainValueOfMinimumAndMaximum) {
    using E = Extents2D<TypeParam>;
    static_assert(std::is_trivially_copyable_v<E> && std::is_standard_layout_v<E>);
    static_assert(sizeof(E) == 4 * sizeof(TypeParam));
    static_assert(!E().IsValid() && E().ExtentX() == 0);
    ExpectBox<TypeParam>(1, 2, 3, 4, Stored<TypeParam>(1, 2, 3, 4));
}

TYPED_TEST(Extents2DOf, NewBoxIsNotValid) {
    const Extents2D<TypeParam> box;
    ExpectBox<TypeParam>(1, 1, 0, 0, box);
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(0, box.ExtentX());
    EXPECT_EQ(0, box.ExtentY());
    EXPECT_EQ(TypeParam{0.5}, box.Center().X());
    EXPECT_EQ(TypeParam{0.5}, box.Center().Y());
}

TYPED_TEST(Extents2DOf, ResetMakesItInvalidAgain) {
    Extents2D<TypeParam> box = Box<TypeParam>(2, 3, 4, 5);
    box.Reset();
    ExpectBox<TypeParam>(1, 1, 0, 0, box);
}

TYPED_TEST(Extents2DOf, ValidityNeedsBothRanges) {
    EXPECT_TRUE(Stored<TypeParam>(0, 0, 0, 0).IsValid());
    EXPECT_FALSE(Stored<TypeParam>(1, 0, 0, 9).IsValid());
    EXPECT_FALSE(Stored<TypeParam>(0, 1, 9, 0).IsValid());
    EXPECT_EQ(0, Stored<TypeParam>(0, 1, 9, 0).ExtentX());
    EXPECT_EQ(0, Stored<TypeParam>(0, 1, 9, 0).ExtentY());
}

TYPED_TEST(Extents2DOf, FirstPointIsTheWholeBox) {
    Extents2D<TypeParam> box;
    box.Update(Point2D<TypeParam>(3, 4));
    ExpectBox<TypeParam>(3, 4, 3, 4, box);
    EXPECT_TRUE(box.IsValid());
    EXPECT_EQ(0, box.ExtentX());
}

TYPED_TEST(Extents2DOf, GrowsToTheRangesOfThePoints) {
    Random random(1);
    for (int i = 0; i < kPropertyRuns / 10; ++i) {
        Extents2D<TypeParam> box;
        std::vector<TypeParam> xs, ys;
        for (int n = 0; n < 10; ++n) {
            xs.push_back(this->Any(random));
            ys.push_back(this->Any(random));
            if (n % 2)
                box.Update(xs.back(), ys.back());
            else
                box.Update(Point2D<TypeParam>(xs.back(), ys.back()));
            const auto [minX, maxX] = std::minmax_element(xs.begin(), xs.end());
            const auto [minY, maxY] = std::minmax_element(ys.begin(), ys.end());
            ExpectBox<TypeParam>(*minX, *minY, *maxX, *maxY, box);
            EXPECT_EQ(*maxX - *minX, box.ExtentX());
            EXPECT_EQ(*maxY - *minY, box.ExtentY());
            EXPECT_EQ((*minX + *maxX) / 2, box.Center().X());
            EXPECT_EQ((*minY + *maxY) / 2, box.Center().Y());
        }
        if (this->HasFailure()) break;
    }
}

TYPED_TEST(Extents2DOf, GrowsByARunOfPointsAsByEachOfThem) {
    Random random(4);
    const auto any = [&] {
        return static_cast<TypeParam>(random.Integer(0, 9) ? random.Integer(-9, 9) : kNaN);
    };
    for (int i = 0; i < kPropertyRuns; ++i) {
        std::vector<Point2D<TypeParam>> points(static_cast<std::size_t>(random.Integer(0, 7)));
        for (auto& point : points) point = Point2D<TypeParam>(any(), any());
        Extents2D<TypeParam> box, expected;
        if (random.Integer(0, 1)) box = expected = Box<TypeParam>(-2, -2, 2, 2);
        for (const auto& point : points) expected.Update(point);
        box.Update(points);
        ASSERT_EQ(expected.IsValid(), box.IsValid());
        if (box.IsValid()) ExpectBox(expected.MinX(), expected.MinY(), expected.MaxX(), expected.MaxY(), box);
        if (this->HasFailure()) break;
    }
}

TYPED_TEST(Extents2DOf, GrowsByBoxes) {
    using E = Extents2D<TypeParam>;
    const E box = Box<TypeParam>(0, 0, 10, 10);
    ExpectBox<TypeParam>(-5, 0, 10, 12, box + Box<TypeParam>(-5, 3, 4, 12));
    ExpectBox<TypeParam>(0, 0, 10, 10, box); // the sum is a copy
    ExpectBox<TypeParam>(0, 0, 10, 10, box + E());
    ExpectBox<TypeParam>(2, 3, 4, 5, E() + Box<TypeParam>(2, 3, 4, 5));
    ExpectBox<TypeParam>(1, 1, 0, 0, E() + E());
    E grown = box;
    E& result = grown += Box<TypeParam>(20, 20, 21, 21);
    EXPECT_EQ(&grown, &result);
    ExpectBox<TypeParam>(0, 0, 21, 21, grown);
    grown.Update(Box<TypeParam>(-1, -1, 0, 0));
    grown += grown;
    ExpectBox<TypeParam>(-1, -1, 21, 21, grown);
}

TYPED_TEST(Extents2DOf, TakesItsOwnCorners) {
    Extents2D<TypeParam> box;
    box.Update(box.MaxPnt());
    ExpectBox<TypeParam>(0, 0, 0, 0, box);
    Extents2D<TypeParam> other;
    other.Update(other.MinPnt());
    ExpectBox<TypeParam>(1, 1, 1, 1, other);
}

TYPED_TEST(Extents2DOf, ClassifiesPoints) {
    const Extents2D<TypeParam> box = Box<TypeParam>(0, 0, 10, 10);
    struct Row {
        double x, y;
        CLS::CLASSIFICATION expected;
    };
    for (const Row& row :
         {Row{5, 5, CLS::INSIDE}, Row{10, 5, CLS::INSIDE}, Row{0, 0, CLS::INSIDE}, Row{10, 10, CLS::INSIDE},
          Row{10.5, 5, CLS::OUTSIDE}, Row{-0.5, 5, CLS::OUTSIDE}, Row{5, 10.5, CLS::OUTSIDE},
          Row{5, -0.5, CLS::OUTSIDE}, Row{kNaN, 5, CLS::OUTSIDE}}) {
        const Point2D<TypeParam> point(static_cast<TypeParam>(row.x), static_cast<TypeParam>(row.y));
        EXPECT_EQ(row.expected, box.Classify(point)) << row.x << ' ' << row.y;
        EXPECT_EQ(CLS::INVALID, Extents2D<TypeParam>().Classify(point));
    }
}

TYPED_TEST(Extents2DOf, ClassifiesBoxes) {
    const Extents2D<TypeParam> box = Box<TypeParam>(0, 0, 10, 10);
    struct Row {
        Extents2D<TypeParam> other;
        CLS::CLASSIFICATION expected;
    };
    for (const Row& row :
         {Row{Box<TypeParam>(10, 10, 20, 20), CLS::OVERLAP}, // touching at a corner
          Row{Box<TypeParam>(2, 2, 3, 3), CLS::INSIDE}, Row{box, CLS::INSIDE},
          Row{Box<TypeParam>(11, 0, 12, 1), CLS::OUTSIDE}, Row{Box<TypeParam>(0, -5, 1, -1), CLS::OUTSIDE},
          Row{Box<TypeParam>(-1, -1, 11, 11), CLS::OVERLAP},
          Row{Box<TypeParam>(10, 0, 10, 10), CLS::INSIDE}, // flat, on the border
          Row{Extents2D<TypeParam>(), CLS::INVALID}}) {
        EXPECT_EQ(row.expected, box.Classify(row.other)) << row.other.MinX() << ' ' << row.other.MinY();
        EXPECT_EQ(CLS::INVALID, Extents2D<TypeParam>().Classify(row.other));
    }
}

// Boxes with whole corners, compared through all the half-integer points that they hold.
TYPED_TEST(Extents2DOf, ClassificationAgreesWithThePointsHeld) {
    using E = Extents2D<TypeParam>;
    Random random(2);
    const auto small = [&] { return static_cast<TypeParam>(random.Integer(0, 5)); };
    const auto holds = [](const E& box, double x, double y) {
        return box.MinX() <= x && x <= box.MaxX() && box.MinY() <= y && y <= box.MaxY();
    };
    for (int i = 0; i < kPropertyRuns; ++i) {
        const E a = Box<TypeParam>(small(), small(), small(), small());
        const E b = Box<TypeParam>(small(), small(), small(), small());
        int shared = 0, onlyOther = 0;
        for (double x = 0; x <= 5; x += 0.5) {
            for (double y = 0; y <= 5; y += 0.5) {
                shared += holds(a, x, y) && holds(b, x, y);
                onlyOther += !holds(a, x, y) && holds(b, x, y);
            }
        }
        const auto expected = !shared ? CLS::OUTSIDE : onlyOther ? CLS::OVERLAP : CLS::INSIDE;
        ASSERT_EQ(expected, a.Classify(b));
    }
}

struct Turning : GTL::Transformation<Point2D<double>> {
    void Apply(Point2D<double>& point) const override {
        point = Point2D<double>(point.Y(), -point.X());
        ++calls;
    }
    mutable int calls = 0;
};

TEST(Extents2D, TransformIsTheBoxAroundTheFourCorners) {
    Extents2D<double> box = Box<double>(1, 2, 4, 8);
    const Turning turning;
    box.Transform(turning);
    ExpectBox<double>(2, -4, 8, -1, box);
    EXPECT_EQ(4, turning.calls);
}

TEST(Extents2D, TransformLeavesAnInvalidBoxAlone) {
    Extents2D<double> box;
    const Turning turning;
    box.Transform(turning);
    ExpectBox<double>(1, 1, 0, 0, box);
    EXPECT_EQ(0, turning.calls);
}

TEST(Extents2D, RotatedBoxAgreesWithItsCornersTurnedOneByOne) {
    Random random(3);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const double x = random.Real(-100, 100), y = random.Real(-100, 100);
        const double width = random.Real(0, 50), height = random.Real(0, 50), degrees = random.Real(0, 360);
        GTL::Transformation2D<Point2D<double>> rotation;
        rotation.Rotate(degrees, {0, 0});
        Extents2D<double> box = Box<double>(x, y, x + width, y + height);
        box.Transform(rotation);
        const double sine = std::sin(degrees * std::acos(-1.0) / 180),
                     cosine = std::cos(degrees * std::acos(-1.0) / 180);
        double minX = 1e9, maxX = -1e9, minY = 1e9, maxY = -1e9;
        for (const double cx : {x, x + width}) {
            for (const double cy : {y, y + height}) {
                minX = std::min(minX, cx * cosine + cy * sine);
                maxX = std::max(maxX, cx * cosine + cy * sine);
                minY = std::min(minY, cy * cosine - cx * sine);
                maxY = std::max(maxY, cy * cosine - cx * sine);
            }
        }
        ASSERT_NEAR(minX, box.MinX(), 1e-10);
        ASSERT_NEAR(minY, box.MinY(), 1e-10);
        ASSERT_NEAR(maxX, box.MaxX(), 1e-10);
        ASSERT_NEAR(maxY, box.MaxY(), 1e-10);
    }
}

TYPED_TEST(Extents2DOf, EqualityIsTolerantOnEachOfTheFourValues) {
    using E = Extents2D<TypeParam>;
    const auto tiny = TypeParam(1e-12), much = TypeParam(1e-3);
    const E box = Stored<TypeParam>(0, 0, 0, 0);
    EXPECT_EQ(box, Stored<TypeParam>(tiny, -tiny, tiny, -tiny));
    for (const E& other : {Stored<TypeParam>(much, 0, 0, 0), Stored<TypeParam>(0, much, 0, 0),
                           Stored<TypeParam>(0, 0, much, 0), Stored<TypeParam>(0, 0, 0, much)}) {
        EXPECT_NE(box, other);
    }
}

TEST(Extents2D, NaNDoesNotGrowAValidBox) {
    Extents2D<double> box = Box<double>(0, 0, 1, 1);
    box.Update(kNaN, 5);
    ExpectBox<double>(0, 0, 1, 5, box);
    Extents2D<double> first;
    first.Update(kNaN, kNaN); // a box of NaN is not valid, so the next point replaces it
    EXPECT_FALSE(first.IsValid());
    first.Update(2, 3);
    ExpectBox<double>(2, 3, 2, 3, first);
}

TEST(Extents2D, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            const Extents2D<double> box = Box<double>(a, b, b, a);
            if (!std::isnan(a) && !std::isnan(b)) {
                EXPECT_EQ(std::min(a, b), box.MinX());
                EXPECT_EQ(std::max(a, b), box.MaxY());
                EXPECT_EQ(CLS::INSIDE, box.Classify(Point2D<double>(a, b)));
            }
            EXPECT_EQ(box.IsValid() ? CLS::INSIDE : CLS::INVALID, box.Classify(box));
            Extents2D<double> turned = box;
            turned.Transform(Turning());
            EXPECT_EQ(box.IsValid(), turned.IsValid());
            EXPECT_EQ(!(box == turned), box != turned);
        }
    }
}

template <typename P> struct ShiftTurn : GTL::Transformation<P> {
    void Apply(P& p) const override { p = P(p.Y() + 100, -p.X(), 0); }
};

TYPED_TEST(Extents2DOf, TransformOfEitherElementType) {
    Extents2D<TypeParam> box = Box<TypeParam>(1, 2, 4, 8);
    box.Transform(ShiftTurn<Point2D<TypeParam>>());
    ExpectBox<TypeParam>(102, -4, 108, -1, box);
}

TYPED_TEST(Extents2DOf, FirstCornerThatIsNaNGivesWayToTheNext) {
    struct Spoiled : GTL::Transformation<Point2D<TypeParam>> {
        void Apply(Point2D<TypeParam>& p) const override {
            if (p.X() == 1 && p.Y() == 2) p.X(static_cast<TypeParam>(kNaN));
        }
    };
    Extents2D<TypeParam> box = Box<TypeParam>(1, 2, 4, 8);
    box.Transform(Spoiled());
    ExpectBox<TypeParam>(1, 2, 4, 8, box);
}

} // namespace
