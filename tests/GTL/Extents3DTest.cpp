// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Extents3D.h"

#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <type_traits>
#include <vector>

using GTL::Extents2D;
using GTL::Extents3D;
using GTL::Point3D;
namespace CLS = GTL::CLS;

namespace {

template <typename T> class Extents3DOf : public ::testing::Test {};
using ElementTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Extents3DOf, ElementTypes);

template <typename T> using Values = std::array<T, 8>; // minimum x y z b, maximum x y z b

template <typename T> Values<T> ValuesOf(const Extents3D<T>& box) { return std::bit_cast<Values<T>>(box); }
template <typename T> Extents3D<T> Stored(const Values<T>& values) {
    return std::bit_cast<Extents3D<T>>(values);
}

template <typename T> Extents3D<T> Box(T minX, T minY, T minZ, T maxX, T maxY, T maxZ) {
    Extents3D<T> box;
    box.Update(minX, minY, minZ);
    box.Update(maxX, maxY, maxZ);
    return box;
}

TYPED_TEST(Extents3DOf, IsAPlainValueOfMinimumAndMaximum) {
    using E = Extents3D<TypeParam>;
    static_assert(std::is_trivially_copyable_v<E>);
    static_assert(!E().IsValid() && E().ExtentZ() == 0);
    const E box = Stored<TypeParam>({1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(1, box.MinX());
    EXPECT_EQ(2, box.MinY());
    EXPECT_EQ(3, box.MinZ());
    EXPECT_EQ(5, box.MaxX());
    EXPECT_EQ(6, box.MaxY());
    EXPECT_EQ(7, box.MaxZ());
    EXPECT_EQ(4, box.MinPnt().B());
    EXPECT_EQ(8, box.MaxPnt().B());
    EXPECT_EQ(Point3D<TypeParam>(1, 2, 3), box.MinPnt());
    EXPECT_EQ(Point3D<TypeParam>(5, 6, 7), box.MaxPnt());
    EXPECT_EQ(4, box.ExtentX());
    EXPECT_EQ(4, box.ExtentY());
    EXPECT_EQ(4, box.ExtentZ());
    EXPECT_EQ(Point3D<TypeParam>(3, 4, 5), box.Center());
    EXPECT_EQ(0, box.Center().B());
}

TYPED_TEST(Extents3DOf, NewBoxIsNotValid) {
    const Extents3D<TypeParam> box;
    EXPECT_EQ((Values<TypeParam>{1, 1, 0, 0, 0, 0, 0, 0}), ValuesOf(box));
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(0, box.ExtentX());
    EXPECT_EQ(0, box.ExtentY());
    EXPECT_EQ(0, box.ExtentZ());
    EXPECT_EQ(Point3D<TypeParam>(TypeParam{0.5}, TypeParam{0.5}, 0), box.Center());
}

TYPED_TEST(Extents3DOf, ResetKeepsHeightsAndAttributes) {
    Extents3D<TypeParam> box = Stored<TypeParam>({2, 2, 5, 7, 4, 4, 9, 8});
    box.Reset();
    EXPECT_EQ((Values<TypeParam>{1, 1, 5, 7, 0, 0, 9, 8}), ValuesOf(box));
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(0, box.ExtentZ());
}

TYPED_TEST(Extents3DOf, ValidityIsDecidedOnXAndYAlone) {
    const Extents3D<TypeParam> box = Stored<TypeParam>({0, 0, 5, 0, 1, 1, 2, 0});
    EXPECT_TRUE(box.IsValid());
    EXPECT_EQ(-3, box.ExtentZ());
    EXPECT_FALSE(Stored<TypeParam>({1, 0, 0, 0, 0, 9, 9, 0}).IsValid());
    EXPECT_FALSE(Stored<TypeParam>({0, 1, 0, 0, 9, 0, 9, 0}).IsValid());
}

TYPED_TEST(Extents3DOf, FirstPointIsTheWholeBoxWithItsAttribute) {
    Extents3D<TypeParam> box;
    box.Update(Point3D<TypeParam>(3, 4, 5, 6));
    EXPECT_EQ((Values<TypeParam>{3, 4, 5, 6, 3, 4, 5, 6}), ValuesOf(box));
    box.Update(Point3D<TypeParam>(9, 0, 9, 99)); // from then on the attributes stay
    EXPECT_EQ((Values<TypeParam>{3, 0, 5, 6, 9, 4, 9, 6}), ValuesOf(box));
    box.Reset();
    box.Update(1, 2, 3);
    EXPECT_EQ((Values<TypeParam>{1, 2, 3, 0, 1, 2, 3, 0}), ValuesOf(box));
}

TYPED_TEST(Extents3DOf, GrowsToTheRangesOfThePoints) {
    Random random(1);
    const auto any = [&] { return static_cast<TypeParam>(random.Integer(-10, 10)); };
    for (int i = 0; i < kPropertyRuns / 10; ++i) {
        Extents3D<TypeParam> box;
        std::vector<TypeParam> xs, ys, zs;
        for (int n = 0; n < 10; ++n) {
            xs.push_back(any());
            ys.push_back(any());
            zs.push_back(any());
            box.Update(xs.back(), ys.back(), zs.back());
            const auto [minX, maxX] = std::minmax_element(xs.begin(), xs.end());
            const auto [minY, maxY] = std::minmax_element(ys.begin(), ys.end());
            const auto [minZ, maxZ] = std::minmax_element(zs.begin(), zs.end());
            ASSERT_EQ((Values<TypeParam>{*minX, *minY, *minZ, 0, *maxX, *maxY, *maxZ, 0}), ValuesOf(box));
        }
    }
}

TYPED_TEST(Extents3DOf, GrowsByARunOfPointsAsByEachOfThem) {
    Random random(3);
    const auto any = [&] {
        return static_cast<TypeParam>(random.Integer(0, 9) ? random.Integer(-9, 9) : kNaN);
    };
    for (int i = 0; i < kPropertyRuns; ++i) {
        std::vector<Point3D<TypeParam>> points(static_cast<std::size_t>(random.Integer(0, 7)));
        for (auto& point : points) point = Point3D<TypeParam>(any(), any(), any(), any());
        Extents3D<TypeParam> box, expected;
        if (random.Integer(0, 1)) box = expected = Stored<TypeParam>({-2, -2, -2, 5, 2, 2, 2, 6});
        for (const auto& point : points) expected.Update(point);
        box.Update(points);
        const Values<TypeParam> grown = ValuesOf(box), each = ValuesOf(expected);
        for (std::size_t n = 0; n < grown.size(); ++n) {
            ASSERT_TRUE(grown[n] == each[n] || (std::isnan(grown[n]) && std::isnan(each[n]))) << n;
        }
    }
}

TYPED_TEST(Extents3DOf, GrowsByBoxes) {
    using E = Extents3D<TypeParam>;
    const E box = Box<TypeParam>(0, 0, 0, 10, 10, 10);
    EXPECT_EQ(Box<TypeParam>(-5, 0, 0, 10, 12, 20), box + Box<TypeParam>(-5, 3, 2, 4, 12, 20));
    EXPECT_EQ(Box<TypeParam>(0, 0, 0, 10, 10, 10), box); // the sum is a copy
    EXPECT_EQ(box, box + E());
    EXPECT_EQ(box, E() + box);
    EXPECT_FALSE((E() + E()).IsValid());
    E grown = box;
    E& result = grown += Box<TypeParam>(20, 20, 20, 21, 21, 21);
    EXPECT_EQ(&grown, &result);
    grown.Update(Box<TypeParam>(-1, -1, -1, 0, 0, 0));
    grown += grown;
    EXPECT_EQ(Box<TypeParam>(-1, -1, -1, 21, 21, 21), grown);
}

TYPED_TEST(Extents3DOf, BoxWithInvertedHeightsGrowsByBothItsCorners) {
    Extents3D<TypeParam> box = Box<TypeParam>(0, 0, 3, 1, 1, 3);
    box.Update(Stored<TypeParam>({0, 0, 5, 0, 1, 1, 2, 0}));
    EXPECT_EQ((Values<TypeParam>{0, 0, 2, 0, 1, 1, 5, 0}), ValuesOf(box));
}

TYPED_TEST(Extents3DOf, ClassifiesPoints) {
    const Extents3D<TypeParam> box = Box<TypeParam>(0, 0, 0, 10, 10, 10);
    using P = Point3D<TypeParam>;
    struct Row {
        P point;
        CLS::CLASSIFICATION expected;
    };
    for (const Row& row :
         {Row{P(5, 5, 5, 99), CLS::INSIDE}, Row{P(10, 10, 10), CLS::INSIDE}, Row{P(0, 0, 0), CLS::INSIDE},
          Row{P(11, 5, 5), CLS::OUTSIDE}, Row{P(-1, 5, 5), CLS::OUTSIDE}, Row{P(5, 11, 5), CLS::OUTSIDE},
          Row{P(5, -1, 5), CLS::OUTSIDE}, Row{P(5, 5, 11), CLS::OUTSIDE}, Row{P(5, 5, -1), CLS::OUTSIDE}}) {
        EXPECT_EQ(row.expected, box.Classify(row.point))
            << row.point.X() << ' ' << row.point.Y() << ' ' << row.point.Z();
        EXPECT_EQ(CLS::INVALID, Extents3D<TypeParam>().Classify(row.point));
    }
}

TYPED_TEST(Extents3DOf, ClassifiesBoxes) {
    const Extents3D<TypeParam> box = Box<TypeParam>(0, 0, 0, 10, 10, 10);
    struct Row {
        Extents3D<TypeParam> other;
        CLS::CLASSIFICATION expected;
    };
    for (const Row& row :
         {Row{Box<TypeParam>(10, 10, 10, 20, 20, 20), CLS::OVERLAP}, Row{box, CLS::INSIDE},
          Row{Box<TypeParam>(2, 2, 2, 3, 3, 3), CLS::INSIDE},
          Row{Box<TypeParam>(2, 2, 11, 3, 3, 12), CLS::OUTSIDE},
          Row{Box<TypeParam>(2, 2, -2, 3, 3, -1), CLS::OUTSIDE},
          Row{Box<TypeParam>(11, 2, 2, 12, 3, 3), CLS::OUTSIDE},
          Row{Box<TypeParam>(2, 11, 2, 3, 12, 3), CLS::OUTSIDE},
          Row{Box<TypeParam>(2, 2, 2, 3, 3, 11), CLS::OVERLAP},
          Row{Box<TypeParam>(2, 2, -1, 3, 3, 3), CLS::OVERLAP}, Row{Extents3D<TypeParam>(), CLS::INVALID}}) {
        EXPECT_EQ(row.expected, box.Classify(row.other)) << row.other.MinX() << ' ' << row.other.MinZ();
        EXPECT_EQ(CLS::INVALID, Extents3D<TypeParam>().Classify(row.other));
    }
}

TYPED_TEST(Extents3DOf, ClassificationIsThatOfEachAxis) {
    using E = Extents3D<TypeParam>;
    Random random(2);
    const auto small = [&] { return static_cast<TypeParam>(random.Integer(0, 6)); };
    for (int i = 0; i < kPropertyRuns; ++i) {
        const E a = Box<TypeParam>(small(), small(), small(), small(), small(), small());
        const E b = Box<TypeParam>(small(), small(), small(), small(), small(), small());
        const Values<TypeParam> va = ValuesOf(a), vb = ValuesOf(b);
        bool disjoint = false, within = true;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const TypeParam lowest = std::max(va[axis], vb[axis]),
                            highest = std::min(va[axis + 4], vb[axis + 4]);
            disjoint |= lowest > highest;                            // nothing shared
            within &= lowest == vb[axis] && highest == vb[axis + 4]; // all of b shared
        }
        ASSERT_EQ(disjoint ? CLS::OUTSIDE : within ? CLS::INSIDE : CLS::OVERLAP, a.Classify(b));
        const Point3D<TypeParam> p(small(), small(), small());
        ASSERT_EQ(a.Classify(Box<TypeParam>(p.X(), p.Y(), p.Z(), p.X(), p.Y(), p.Z())), a.Classify(p));
    }
}

struct Skewing : GTL::Transformation<Point3D<double>> {
    void Apply(Point3D<double>& point) const override {
        EXPECT_EQ(0.0, point.B());
        point = Point3D<double>(point.Y() + 100, -point.X(), point.Z() + point.X(), 42);
        ++calls;
    }
    mutable int calls = 0;
};

TEST(Extents3D, TransformIsTheBoxAroundTheEightCorners) {
    Extents3D<double> box = Stored<double>({1, 2, 3, 8, 4, 8, 9, 8});
    const Skewing skewing;
    box.Transform(skewing);
    EXPECT_EQ(8, skewing.calls);
    EXPECT_EQ((Values<double>{102, -4, 4, 42, 108, -1, 13, 42}), ValuesOf(box));
}

TEST(Extents3D, TransformLeavesAnInvalidBoxAlone) {
    Extents3D<double> box = Stored<double>({1, 1, 5, 6, 0, 0, 7, 8});
    const Skewing skewing;
    box.Transform(skewing);
    EXPECT_EQ(0, skewing.calls);
    EXPECT_EQ((Values<double>{1, 1, 5, 6, 0, 0, 7, 8}), ValuesOf(box));
}

TYPED_TEST(Extents3DOf, EqualityIsExactOnSixValues) {
    const Values<TypeParam> values = {1, 2, 3, 4, 5, 6, 7, 8};
    for (std::size_t i = 0; i < values.size(); ++i) {
        Values<TypeParam> changed = values;
        changed[i] = std::nextafter(changed[i], TypeParam{99});
        const bool isAttribute = i == 3 || i == 7;
        EXPECT_EQ(isAttribute, Stored<TypeParam>(values) == Stored<TypeParam>(changed)) << i;
        EXPECT_EQ(!isAttribute, Stored<TypeParam>(values) != Stored<TypeParam>(changed)) << i;
    }
}

TYPED_TEST(Extents3DOf, ConvertsToThePlanarBox) {
    const Extents2D<TypeParam> planar = Box<TypeParam>(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(1, planar.MinX());
    EXPECT_EQ(2, planar.MinY());
    EXPECT_EQ(4, planar.MaxX());
    EXPECT_EQ(5, planar.MaxY());
    const Extents2D<TypeParam> invalid = Stored<TypeParam>({9, 9, 0, 0, 8, 8, 0, 0});
    EXPECT_FALSE(invalid.IsValid());
    EXPECT_EQ(1, invalid.MinX()); // an empty one, not a copy
}

TYPED_TEST(Extents3DOf, IsComparedWithAPlanarBoxAsOne) {
    const Extents3D<TypeParam> box = Box<TypeParam>(1, 2, 3, 4, 5, 6);
    Extents2D<TypeParam> planar = box;
    EXPECT_EQ(box, planar);
    EXPECT_EQ(planar, box);
    planar.Update(9, 9);
    EXPECT_NE(box, planar);
    EXPECT_NE(planar, box);
}

TEST(Extents3D, NaNDoesNotGrowAValidBox) {
    Extents3D<double> box = Box<double>(0, 0, 0, 1, 1, 1);
    box.Update(kNaN, 5, kNaN);
    EXPECT_EQ((Values<double>{0, 0, 0, 0, 1, 5, 1, 0}), ValuesOf(box));
}

TEST(Extents3D, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            const Extents3D<double> box = Box<double>(a, b, a, b, a, b);
            if (!std::isnan(a) && !std::isnan(b)) {
                EXPECT_EQ(std::min(a, b), box.MinZ());
                EXPECT_EQ(std::max(a, b), box.MaxY());
                EXPECT_EQ(CLS::INSIDE, box.Classify(Point3D<double>(a, b, a)));
            }
            EXPECT_EQ(box.IsValid() ? CLS::INSIDE : CLS::INVALID, box.Classify(box));
            const Extents2D<double> planar = box;
            EXPECT_EQ(box.IsValid(), planar.IsValid());
            Extents3D<double> skewed = box;
            skewed.Transform(Skewing());
            EXPECT_EQ(!(box == skewed), box != skewed);
        }
    }
}

template <typename T> struct Skew : GTL::Transformation<Point3D<T>> {
    void Apply(Point3D<T>& p) const override { p = Point3D<T>(p.Y() + 100, -p.X(), p.Z() + p.X(), 42); }
};

TYPED_TEST(Extents3DOf, SpatialTransformOfEitherElementType) {
    Extents3D<TypeParam> box;
    box.Update(1, 2, 3);
    box.Update(4, 8, 9);
    box.Transform(Skew<TypeParam>());
    EXPECT_EQ((std::array<TypeParam, 8>{102, -4, 4, 42, 108, -1, 13, 42}),
              (std::bit_cast<std::array<TypeParam, 8>>(box)));
    Point3D<TypeParam> point(1, 2, 3, 4);
    point.Transform(Skew<TypeParam>());
    EXPECT_EQ(102, point.X());
    EXPECT_EQ(42, point.B());
}

TYPED_TEST(Extents3DOf, CentreOfAResetBoxHasItsHeights) {
    Extents3D<TypeParam> box;
    box.Update(Point3D<TypeParam>(2, 2, 5, 7));
    box.Update(Point3D<TypeParam>(4, 4, 9, 7));
    box.Reset();
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(5, box.MinZ());
    EXPECT_EQ(9, box.MaxZ());
    EXPECT_EQ(Point3D<TypeParam>(TypeParam{0.5}, TypeParam{0.5}, 7), box.Center());
    EXPECT_EQ(0, box.Center().B());
}

// Each coordinate goes to a weighted sum of the three; whole numbers, so exact in every element type.
template <typename T> struct Mixing : GTL::Transformation<Point3D<T>> {
    int weights[3][4] = {};
    void Apply(Point3D<T>& p) const override {
        const auto row = [&](int i) {
            const auto w = [&](int k) { return static_cast<T>(weights[i][k]); };
            return w(0) * p.X() + w(1) * p.Y() + w(2) * p.Z() + w(3);
        };
        p = Point3D<T>(row(0), row(1), row(2));
    }
};

TYPED_TEST(Extents3DOf, TransformAgreesWithTheRangeOfEachWeightedSum) {
    using T = TypeParam;
    Random random(4);
    for (int i = 0; i < kPropertyRuns; ++i) {
        int low[3], high[3];
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = random.Integer(-50, 50);
            high[axis] = low[axis] + random.Integer(0, 50);
        }
        Extents3D<T> box;
        box.Update(static_cast<T>(low[0]), static_cast<T>(low[1]), static_cast<T>(low[2]));
        box.Update(static_cast<T>(high[0]), static_cast<T>(high[1]), static_cast<T>(high[2]));
        ASSERT_EQ(high[2] - low[2], box.ExtentZ());
        ASSERT_EQ((low[2] + high[2]) / 2.0, box.Center().Z());
        ASSERT_EQ((low[0] + high[0]) / 2.0, box.Center().X());
        Mixing<T> mixing;
        double lowest[3], highest[3]; // a sum is lowest where each of its terms is
        for (int row = 0; row < 3; ++row) {
            for (int& weight : mixing.weights[row]) weight = random.Integer(-9, 9);
            lowest[row] = highest[row] = mixing.weights[row][3];
            for (int axis = 0; axis < 3; ++axis) {
                const int a = mixing.weights[row][axis] * low[axis],
                          b = mixing.weights[row][axis] * high[axis];
                lowest[row] += std::min(a, b);
                highest[row] += std::max(a, b);
            }
        }
        box.Transform(mixing);
        ASSERT_EQ(lowest[0], box.MinX());
        ASSERT_EQ(lowest[1], box.MinY());
        ASSERT_EQ(lowest[2], box.MinZ());
        ASSERT_EQ(highest[0], box.MaxX());
        ASSERT_EQ(highest[1], box.MaxY());
        ASSERT_EQ(highest[2], box.MaxZ());
    }
}

} // namespace
