// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Angle.h"

#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<Angle>);
static_assert(sizeof(Angle) == sizeof(double));
static_assert(std::is_nothrow_constructible_v<Angle, double>);

namespace {

double DegreesOf(double degrees) { return Angle(degrees).Get(); }

TEST(Angle, DefaultIsZero) { EXPECT_EQ(0.0, Angle().Get()); }

TEST(Angle, DegreesAreKeptOnOneTurn) {
    struct Row {
        double degrees, kept;
    };
    for (const Row& row :
         {Row{0, 0}, Row{90, 90}, Row{359.5, 359.5}, Row{360, 0}, Row{720, 0}, Row{-90, 270}, Row{-450, 270},
          Row{361.25, 1.25}, Row{-0.5, 359.5}, Row{36000045, 45}, Row{1e308, std::fmod(1e308, 360.0)},
          Row{-1e-20, 360}}) { // rounds up to the whole turn, which is kept
        EXPECT_EQ(row.kept, DegreesOf(row.degrees)) << row.degrees;
    }
}

TEST(Angle, MinusAWholeTurnIsMinusZero) {
    for (const double degrees : {-360.0, -720.0, -0.0}) {
        EXPECT_EQ(0.0, DegreesOf(degrees));
        EXPECT_TRUE(std::signbit(DegreesOf(degrees))) << degrees;
    }
}

TEST(Angle, WhatIsNotFiniteIsNaN) {
    for (const double degrees : {kNaN, kInfinity, -kInfinity}) EXPECT_TRUE(std::isnan(DegreesOf(degrees)));
}

TEST(Angle, AnyAngleIsOnOneTurnAndAWholeNumberOfTurnsAway) {
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const double degrees = random.Real(-1e6, 1e6);
        const double kept = DegreesOf(degrees);
        ASSERT_GE(kept, 0.0);
        ASSERT_LT(kept, 360.0) << degrees;
        const double turns = (degrees - kept) / 360.0;
        ASSERT_NEAR(std::round(turns), turns, 1e-9) << degrees;
    }
}

TEST(Angle, RadiansAndFunctionsAreThoseOfTheDegrees) {
    Random random(2);
    const long double radiansPerDegree = std::acos(-1.0L) / 180.0L;
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Angle angle(random.Real(-720, 720));
        const long double radians = angle.Get() * radiansPerDegree;
        ASSERT_NEAR(static_cast<double>(radians), angle.Rad(), 1e-14);
        ASSERT_NEAR(static_cast<double>(std::sin(radians)), angle.Sin(), 1e-14);
        ASSERT_NEAR(static_cast<double>(std::cos(radians)), angle.Cos(), 1e-14);
        const double tangent = static_cast<double>(std::tan(radians));
        ASSERT_NEAR(tangent, angle.Tan(), 1e-14 * (1 + tangent * tangent));
    }
    EXPECT_EQ(180.0 * MATH::DTR, Angle(180).Rad());
}

TEST(Angle, Quadrant) {
    struct Row {
        double degrees;
        int quadrant;
    };
    for (const Row& row :
         {Row{0, 1}, Row{89.999, 1}, Row{90, 2}, Row{179.999, 2}, Row{180, 3}, Row{269.999, 3}, Row{270, 4},
          Row{359.999, 4}, Row{-1, 4}, Row{-1e-20, 5}, // kept as 360 exactly
          Row{kNaN, kIntegerIndefinite}}) {
        EXPECT_EQ(row.quadrant, Angle(row.degrees).Quadrant()) << row.degrees;
    }
}

TEST(Angle, DifferenceTurnsForwardToTheOther) {
    struct Row {
        double from, to, difference;
    };
    for (const Row& row : {Row{10, 350, 340}, Row{350, 10, 20}, Row{42, 42, 0}, Row{0, 359, 359},
                           Row{359, 0, 1}, Row{-1e-20, 0, 0}}) {
        EXPECT_EQ(row.difference, Angle(row.from).Difference(Angle(row.to)).Get())
            << row.from << ' ' << row.to;
    }
    Random random(3);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Angle from(random.Real(0, 360));
        const Angle to(random.Real(0, 360));
        const double distance = std::fabs((from + from.Difference(to)).Get() - to.Get());
        ASSERT_LT(std::min(distance, 360.0 - distance), 1e-12) << from.Get() << ' ' << to.Get();
    }
}

TEST(Angle, ArithmeticIsThatOfTheDegrees) {
    EXPECT_EQ(20.0, (Angle(350) + Angle(30)).Get());
    EXPECT_EQ(340.0, (Angle(10) - Angle(30)).Get());
    EXPECT_EQ(330.0, (-Angle(30)).Get());
    EXPECT_EQ(0.0, (-Angle(0)).Get());
    EXPECT_EQ(40.0, (Angle(200) * 2).Get());
    EXPECT_EQ(160.0, (Angle(200) * -1).Get());
    EXPECT_EQ(100.0, (Angle(200) / 2).Get());
    EXPECT_EQ(260.0, (Angle(200) / -2).Get());

    Random random(4);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const Angle a(random.Real(0, 360));
        const Angle b(random.Real(0, 360));
        const double factor = random.Real(-10, 10);
        ASSERT_EQ(DegreesOf(a.Get() + b.Get()), (a + b).Get());
        ASSERT_EQ(DegreesOf(a.Get() - b.Get()), (a - b).Get());
        ASSERT_EQ(DegreesOf(a.Get() * factor), (a * factor).Get());
        ASSERT_EQ(DegreesOf(a.Get() / factor), (a / factor).Get());
        ASSERT_EQ(DegreesOf(-a.Get()), (-a).Get());

        Angle changed = a;
        ASSERT_EQ((a + b).Get(), (changed += b).Get());
        changed = a;
        ASSERT_EQ((a - b).Get(), (changed -= b).Get());
        changed = a;
        ASSERT_EQ((a * factor).Get(), (changed *= factor).Get());
        changed = a;
        ASSERT_EQ((a / factor).Get(), (changed /= factor).Get());
        ASSERT_EQ((a / factor).Get(), changed.Get());
    }
}

TEST(Angle, ArithmeticWithItselfTakesTheOldValue) {
    Angle angle(200);
    EXPECT_EQ(40.0, (angle += angle).Get());
    EXPECT_EQ(0.0, (angle -= angle).Get());
}

TEST(Angle, DivisionByZeroIsNaN) {
    EXPECT_TRUE(std::isnan((Angle(10) / 0).Get()));
    EXPECT_TRUE(std::isnan((Angle(0) / 0).Get()));
}

TEST(Angle, EqualityIsTolerantAndInequalityExact) {
    const Angle angle(10);
    const Angle near(10 + 1e-10);
    EXPECT_EQ(angle, near);
    EXPECT_NE(angle, near); // both at once
    EXPECT_EQ(angle, Angle(10));
    EXPECT_PRED2(std::not_fn(std::not_equal_to<>()), angle, Angle(10));
    EXPECT_PRED2(std::not_fn(std::equal_to<>()), angle, Angle(10.001));
    EXPECT_NE(angle, Angle(10.001));
    EXPECT_PRED2(std::not_fn(std::equal_to<>()), Angle(0), Angle(-1e-20)); // 0 and 360 are a turn apart
    EXPECT_PRED2(std::not_fn(std::equal_to<>()), Angle(kNaN), Angle(kNaN));
    EXPECT_NE(Angle(kNaN), Angle(kNaN));
}

// C++20 would make the missing form of a comparison from another one: != from the tolerant ==.
TEST(Angle, ComparesWithDegreesOnEitherSide) {
    const Angle angle(10);
    const double near = 10 + 1e-10;
    EXPECT_EQ(angle, near);
    EXPECT_EQ(near, angle);
    EXPECT_NE(angle, near);
    EXPECT_NE(near, angle);
    EXPECT_PRED2(std::not_fn(std::not_equal_to<>()), angle, 10.0);
    EXPECT_PRED2(std::not_fn(std::not_equal_to<>()), 10.0, angle);
    EXPECT_EQ(370.0, angle); // the number is an angle, kept on one turn
    EXPECT_LT(angle, near);
    EXPECT_GT(near, angle);
    EXPECT_LE(10.0, angle);
    EXPECT_GE(370.0, angle);
}

TEST(Angle, OrderIsExact) {
    const std::vector<double> degrees = {0.0, 10.0, 10.0 + 1e-10, 200.0, -1e-20, kNaN};
    for (const double a : degrees) {
        for (const double b : degrees) {
            SCOPED_TRACE(::testing::Message() << a << ' ' << b);
            const double keptA = DegreesOf(a);
            const double keptB = DegreesOf(b);
            EXPECT_EQ(keptA < keptB, Angle(a) < Angle(b));
            EXPECT_EQ(keptA > keptB, Angle(a) > Angle(b));
            EXPECT_EQ(!(keptA > keptB), Angle(a) <= Angle(b));
            EXPECT_EQ(!(keptB > keptA), Angle(a) >= Angle(b));
        }
    }
}

TEST(Angle, AwkwardNumbersGoThroughEveryFunction) {
    for (const double a : kAwkwardNumbers) {
        for (const double b : kAwkwardNumbers) {
            const Angle x(a);
            const Angle y(b);
            for (const Angle& angle : {x + y, x - y, -x, x * b, x / b, x.Difference(y)}) {
                const bool isOnTheTurn = angle.Get() >= 0.0 && angle.Get() <= 360.0;
                EXPECT_TRUE(isOnTheTurn || std::isnan(angle.Get())) << a << ' ' << b;
                const int quadrant = angle.Quadrant();
                EXPECT_TRUE((quadrant >= 1 && quadrant <= 5) || quadrant == kIntegerIndefinite);
            }
        }
    }
}

} // namespace
