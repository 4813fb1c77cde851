// SPDX-License-Identifier: MIT
#include "VelmBase/Math.h"

#include "tests/support/Random.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

namespace {

double AnyDouble(Random& random) {
    const std::uint64_t bits = random.Bits();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

TEST(MATH, EqualityIsRelativeAboveOneAndAbsoluteBelow) {
    EXPECT_TRUE(MATH::equal(1, 1));
    EXPECT_TRUE(MATH::equal(0.0, -0.0));
    EXPECT_TRUE(MATH::equal(0, 1e-9));
    EXPECT_FALSE(MATH::equal(0, 1.1e-9));
    EXPECT_TRUE(MATH::equal(1e-30, 2e-30));
    EXPECT_TRUE(MATH::equal(1e12, 1e12 + 999));
    EXPECT_FALSE(MATH::equal(1e12, 1e12 + 1001));
    EXPECT_TRUE(MATH::equal(-1e12, -1e12 - 999));
    EXPECT_FALSE(MATH::equal(1e12, -1e12));
    EXPECT_FALSE(MATH::equal(1, 1.0000001));
}

TEST(MATH, NaNEqualsNothingAndInfinityOnlyItself) {
    for (const double other : {kNaN, 0.0, 1.0, kInfinity, -kInfinity, 1e308}) {
        EXPECT_FALSE(MATH::equal(kNaN, other));
        EXPECT_FALSE(MATH::equal(other, kNaN));
        EXPECT_FALSE(MATH::less(kNaN, other));
        EXPECT_FALSE(MATH::less(other, kNaN));
    }
    EXPECT_TRUE(MATH::equal(kInfinity, kInfinity));
    EXPECT_TRUE(MATH::equal(-kInfinity, -kInfinity));
    EXPECT_FALSE(MATH::equal(kInfinity, -kInfinity));
    EXPECT_FALSE(MATH::equal(kInfinity, 1e308));
    EXPECT_TRUE(MATH::less(1e308, kInfinity));
    EXPECT_TRUE(MATH::less(-kInfinity, kInfinity));
    EXPECT_FALSE(MATH::less(kInfinity, kInfinity));
}

TEST(MATH, LessIsBelowAndNotEqual) {
    EXPECT_TRUE(MATH::less(1, 2));
    EXPECT_FALSE(MATH::less(2, 1));
    EXPECT_FALSE(MATH::less(1, 1));
    EXPECT_FALSE(MATH::less(1, 1 + 1e-10));
    EXPECT_TRUE(MATH::less(1, 1 + 1e-8));
    EXPECT_FALSE(MATH::less(1e12, 1e12 + 1));
}

TEST(MATH, RandomPairsFollowTheFormula) {
    Random random(70);
    for (int i = 0; i < 200000; ++i) {
        const double a = random.OnceIn(2) ? AnyDouble(random) : static_cast<double>(random.Below(1000)) / 7;
        const double b = a * (1 + (static_cast<double>(random.Below(4001)) - 2000) * 1e-12) +
                         (static_cast<double>(random.Below(5)) - 2) * 1e-9;
        const bool equal =
            a == b || (std::isfinite(a) && std::isfinite(b) &&
                       std::fabs(a - b) <= 1e-9 * std::max(1.0, std::max(std::fabs(a), std::fabs(b))));
        ASSERT_EQ(equal, MATH::equal(a, b)) << a << ' ' << b;
        ASSERT_EQ(equal, MATH::equal(b, a));
        ASSERT_EQ(a < b && !equal, MATH::less(a, b));
        ASSERT_FALSE(MATH::less(a, b) && MATH::less(b, a));
    }
}

TEST(MATH, RoundTakesHalvesAwayFromZero) {
    EXPECT_EQ(3, MATH::round(2.5));
    EXPECT_EQ(-3, MATH::round(-2.5));
    EXPECT_EQ(2, MATH::round(2.4999999999999996));
    EXPECT_EQ(0, MATH::round(0.49999999999999994));
    EXPECT_EQ(1, MATH::round(0.5));
    EXPECT_EQ(4503599627370497.0, MATH::round(4503599627370497.0));
}

TEST(MATH, DegreesAndRadians) {
    EXPECT_EQ(3.14159265358979323846, MATH::PI);
    EXPECT_DOUBLE_EQ(MATH::PI, 180 * MATH::DTR);
    EXPECT_DOUBLE_EQ(180, MATH::PI * MATH::RTD);
    EXPECT_DOUBLE_EQ(1, MATH::DTR * MATH::RTD);
}

TEST(MATH, ToIntTruncatesAndMarksWhatDoesNotFit) {
    constexpr int kIndefinite = std::numeric_limits<int>::min();
    struct Row {
        double value;
        int result;
    };
    for (const Row& row : {Row{0, 0}, Row{1.9, 1}, Row{-1.9, -1}, Row{-0.5, 0}, Row{2147483647.0, 2147483647},
                           Row{2147483647.9, 2147483647}, Row{2147483648.0, kIndefinite},
                           Row{-2147483648.0, kIndefinite}, Row{-2147483648.9, kIndefinite},
                           Row{-2147483649.0, kIndefinite}, Row{1e300, kIndefinite}, Row{-1e300, kIndefinite},
                           Row{kNaN, kIndefinite}, Row{kInfinity, kIndefinite}, Row{-kInfinity, kIndefinite}})
        EXPECT_EQ(row.result, MATH::ToInt(row.value)) << row.value;
    static_assert(MATH::ToInt(-2147483648.0) == std::numeric_limits<int>::min());
}

TEST(GetDoublePrecision, KnownNumbers) {
    struct Row {
        double value;
        int digits;
    };
    for (const Row& row :
         {Row{0, 1}, Row{-0.0, 1}, Row{1, 1}, Row{-1, 1}, Row{10, 1}, Row{12, 2}, Row{0.1, 1}, Row{0.001, 1},
          Row{1.5, 2}, Row{100.25, 5}, Row{1e300, 1}, Row{5e-324, 1}, Row{0.1 + 0.2, 17}, Row{1.0 / 3, 16},
          Row{123456789, 9}, Row{kNaN, 1}, Row{kInfinity, 1}, Row{-kInfinity, 1},
          Row{std::numeric_limits<double>::max(), 17}})
        EXPECT_EQ(row.digits, GetDoublePrecision(row.value)) << row.value;
}

TEST(GetDoublePrecision, IsTheFewestDigitsThatReadBack) {
    Random random(71);
    for (int i = 0; i < 100000; ++i) {
        double value = AnyDouble(random);
        if (random.OnceIn(2)) {
            char text[64];
            std::snprintf(text, sizeof text, "%.*g", static_cast<int>(random.Below(17) + 1), value);
            value = std::strtod(text, nullptr);
        }
        if (!std::isfinite(value)) continue;
        int digits = 1;
        for (;; ++digits) {
            char text[64];
            std::snprintf(text, sizeof text, "%.*e", digits - 1, value);
            if (std::strtod(text, nullptr) == value) break;
        }
        // Trailing zeros do not count: 1.20e5 has two digits. The loop above finds them shortest anyway.
        ASSERT_EQ(digits, GetDoublePrecision(value)) << value;
    }
}
