// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/PointMimic.h"

#include "tests/support/Random.h"

#include <array>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <type_traits>

using GTL::Point2D;

namespace {

static_assert(std::is_trivially_copyable_v<CPointMimic> && sizeof(CPointMimic) == 2 * sizeof(int));
static_assert(CPointMimic(3, 4).Y() == 4);

void ExpectXY(int x, int y, const CPointMimic& point) {
    EXPECT_EQ(x, point.X());
    EXPECT_EQ(y, point.Y());
}

TEST(PointMimic, DefaultIsTheOrigin) { ExpectXY(0, 0, CPointMimic()); }

TEST(PointMimic, TakesIntegerPointsAsTheyAre) {
    ExpectXY(3, -4, CPointMimic(3, -4));
    ExpectXY(3, -4, CPoint{3, -4});
    ExpectXY(kIntegerIndefinite, 2147483647, Point2D<int>(kIntegerIndefinite, 2147483647));
}

TEST(PointMimic, AccessorsReadAndWriteTheFields) {
    CPointMimic point;
    point.X(5);
    point.Y(-6);
    ExpectXY(5, -6, point);
    CPointMimic copy;
    copy = point;
    ExpectXY(5, -6, copy);
}

TEST(PointMimic, RoundsToTheNearestHalvesUpward) {
    struct Row {
        double coordinate;
        int rounded;
    };
    for (const Row& row : {Row{2.5, 3}, Row{-2.5, -2}, Row{-0.4, 0}, Row{0.49, 0}, Row{0.5, 1}, Row{-0.5, 0},
                           Row{-0.51, -1}, Row{2147483647.0, 2147483647}, Row{2147483647.4, 2147483647},
                           Row{-2147483648.5, kIntegerIndefinite}}) {
        ExpectXY(row.rounded, 7, Point2D<double>(row.coordinate, 7));
        ExpectXY(7, row.rounded, Point2D<double>(7, row.coordinate));
    }
    ExpectXY(3, -2, Point2D<double>(2.5, -2.5));
    ExpectXY(0, 0, Point2D<double>(-0.4, 0.49));
    ExpectXY(3, -2, Point2D<float>(2.5f, -2.5f));
}

TEST(PointMimic, FloatsAreRoundedInDoublePrecision) {
    // In single precision adding a half to these would already round to the next even number.
    ExpectXY(0, 8388609, Point2D<float>(0.49999997f, 8388609.0f));
}

TEST(PointMimic, ValuesBeyondIntBecomeTheIntegerIndefiniteValue) {
    for (const double coordinate :
         {kNaN, kInfinity, -kInfinity, 1e300, -1e300, 2147483647.5, 2147483648.0, -2147483649.0}) {
        ExpectXY(kIntegerIndefinite, kIntegerIndefinite, Point2D<double>(coordinate, coordinate));
        const auto narrow = static_cast<float>(coordinate);
        if (narrow != -2147483648.0f) ExpectXY(kIntegerIndefinite, 0, Point2D<float>(narrow, 0));
    }
}

TEST(PointMimic, RoundedCoordinateIsTheIntegerWithinAHalf) {
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Point2D<double> point(random.Real(-1e6, 1e6), random.Integer(-1000000, 1000000) / 2.0);
        const CPointMimic mimic(point);
        ASSERT_LE(mimic.X() - 0.5, point.X());
        ASSERT_GT(mimic.X() + 0.5, point.X());
        ASSERT_LE(mimic.Y() - 0.5, point.Y());
        ASSERT_GT(mimic.Y() + 0.5, point.Y());
    }
}

TEST(PointMimic, HoldsXAndThenY) {
    EXPECT_EQ((std::array<int, 2>{3, 4}), (std::bit_cast<std::array<int, 2>>(CPointMimic(3, 4))));
}

} // namespace
