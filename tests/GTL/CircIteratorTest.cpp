// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/CircIterator.h"

#include "tests/support/GeometryPrinters.h"
#include "tests/support/Random.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

static_assert(std::is_trivially_copyable_v<CircIterator> && std::is_standard_layout_v<CircIterator>);
static_assert(sizeof(CircIterator) == 3 * sizeof(int));
static_assert(*(CircIterator(0, 5, 3) + 4) == 2);

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();

TEST(CircIterator, HoldsStartRangeAndPositionInThisOrder) {
    const CircIterator iterator(2, 5, 4);
    EXPECT_EQ(2, iterator.Start());
    EXPECT_EQ(5, iterator.Range());
    EXPECT_EQ(4, *iterator);
    EXPECT_EQ((std::array<int, 3>{2, 5, 4}), (std::bit_cast<std::array<int, 3>>(iterator)));
}

TEST(CircIterator, BeginsAtTheStart) {
    EXPECT_EQ(3, *CircIterator(3, 4));
    EXPECT_EQ(3, *CircIterator(3, 0)); // nothing is normalised, so an empty ring will do
}

TEST(CircIterator, PositionsAreBroughtIntoTheRing) {
    struct Row {
        int start, range, position, held;
    };
    for (const Row& row :
         {Row{0, 5, 0, 0}, Row{0, 5, 4, 4}, Row{0, 5, 5, 0}, Row{0, 5, 7, 2}, Row{0, 5, -1, 4},
          Row{0, 5, -5, 0}, Row{0, 5, -6, 4}, Row{2, 5, 1, 6}, Row{2, 5, 7, 2}, Row{-3, 5, 2, -3},
          Row{-3, 5, -4, 1}, Row{0, 1, 99, 0}, Row{0, kMax, kMax, 0}, Row{0, kMax, kMin, kMax - 1}}) {
        SCOPED_TRACE(::testing::Message() << row.start << ' ' << row.range << ' ' << row.position);
        EXPECT_EQ(row.held, *CircIterator(row.start, row.range, row.position));
    }
}

// The ring by walking it: as many single steps as it takes, wrapping at the plain ends.
int Walked(int start, int range, int from, int steps) {
    int offset = from - start;
    for (int i = 0; i < std::abs(steps); ++i) {
        offset += steps < 0 ? -1 : 1;
        if (offset == range) offset = 0;
        if (offset < 0) offset = range - 1;
    }
    return start + offset;
}

TEST(CircIterator, MovingIsWalkingTheRing) {
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const int start = random.Integer(-20, 20), range = random.Integer(1, 12);
        const int position = start + random.Integer(0, range - 1);
        const int n = random.Integer(-40, 40);
        SCOPED_TRACE(::testing::Message() << start << ' ' << range << ' ' << position << ' ' << n);
        const CircIterator iterator(start, range, position);
        ASSERT_EQ(position, *iterator);
        ASSERT_EQ(Walked(start, range, position, n), *(iterator + n));
        ASSERT_EQ(Walked(start, range, position, -n), *(iterator - n));
        ASSERT_EQ(position, *iterator);
        ASSERT_EQ(start, (iterator + n).Start());
        ASSERT_EQ(range, (iterator - n).Range());

        CircIterator moved = iterator;
        ASSERT_EQ(*(iterator + n), *(moved += n));
        ASSERT_EQ(position, *(moved -= n));
        ASSERT_EQ(Walked(start, range, position, n), *(moved = position + n));
        ASSERT_EQ(Walked(start, range, position, 1), *++(moved = position));
        if (start == 0) {
            ASSERT_EQ(Walked(start, range, position, -1), *--(moved = position));
        }
    }
}

TEST(CircIterator, NewRingTakesThePositionIn) {
    CircIterator iterator(0, 10, 7);
    iterator.SetRange(5);
    EXPECT_EQ(5, iterator.Range());
    EXPECT_EQ(2, *iterator);
    iterator.SetStart(3);
    EXPECT_EQ(3, iterator.Start());
    EXPECT_EQ(7, *iterator);
    iterator.SetStart(0);
    EXPECT_EQ(2, *iterator);
}

TEST(CircIterator, StepsForwardFromTheLastToTheFirst) {
    CircIterator iterator(0, 5, 4);
    EXPECT_EQ(0, *++iterator);
    EXPECT_EQ(0, *iterator++);
    EXPECT_EQ(1, *iterator);
    CircIterator higher(2, 5, 6);
    EXPECT_EQ(2, *++higher);
}

TEST(CircIterator, StepBackwardComparesTheOffsetWithTheStart) {
    struct Row {
        int start, range, from, to;
    };
    for (const Row& row : {Row{0, 5, 0, 4}, Row{0, 5, 3, 2}, Row{2, 5, 6, 5}, Row{2, 5, 5, 4},
                           Row{2, 5, 4, 6}, // not 3: the offset 1 is below the start
                           Row{2, 5, 3, 6}, Row{2, 5, 2, 6}, Row{-2, 5, -2, -3}, // out of the ring, no wrap
                           Row{-2, 5, 0, -1}}) {
        SCOPED_TRACE(::testing::Message() << row.start << ' ' << row.from);
        CircIterator iterator(row.start, row.range, row.from);
        EXPECT_EQ(row.from, *iterator--);
        EXPECT_EQ(row.to, *iterator);
        EXPECT_EQ(row.to, *--CircIterator(row.start, row.range, row.from));
    }
    CircIterator below(-2, 5); // offsets -1 and -2 are not below -2, -3 is: then it wraps
    EXPECT_EQ(-3, *--below);
    EXPECT_EQ(-4, *--below);
    EXPECT_EQ(2, *--below);
}

TEST(CircIterator, ComparesWithAPositionBroughtIntoTheRing) {
    const CircIterator iterator(0, 5, 3);
    EXPECT_EQ(iterator, 3);
    EXPECT_EQ(iterator, 8);
    EXPECT_EQ(iterator, -2);
    EXPECT_NE(iterator, 4);
    EXPECT_NE(iterator, -1);
    EXPECT_EQ(8, iterator);
    EXPECT_NE(4, iterator);
}

// The rule of the positions with room to spare: 64 bits, brought back to 32 after each step.
int Wrapped(std::int64_t value) { return static_cast<int>(static_cast<std::uint32_t>(value)); }
int NormalizedIn64Bits(int start, int range, int position) {
    std::int64_t offset = Wrapped(std::int64_t{position} - start);
    if (offset < 0) offset = Wrapped(offset % range + range);
    if (offset >= range) offset %= range;
    return Wrapped(start + offset);
}

TEST(CircIterator, ArithmeticWrapsAt32Bits) {
    EXPECT_EQ(-2, *CircIterator(kMin, kMax, kMax)); // kMax - kMin wraps to -1, the last but one of the ring
    CircIterator top(kMax, 2);
    EXPECT_EQ(kMin, *++top);
    CircIterator bottom(kMin, 2);
    EXPECT_EQ(kMax, *--bottom);
    EXPECT_EQ(0, *CircIterator(0, -1, kMin)); // the quotient of the lowest int and -1 does not fit

    const std::vector<int> extremes = {kMin, kMin + 1, -7, -1, 1, 2, kMax - 1, kMax};
    Random random(2);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto any = [&] { return random.Integer(0, 1) ? random.OneOf(extremes) : random.AnyInteger(); };
        const int start = any(), position = any(), n = any();
        const int range = any() | 1; // not 0
        SCOPED_TRACE(::testing::Message() << start << ' ' << range << ' ' << position << ' ' << n);
        const CircIterator iterator(start, range, position);
        ASSERT_EQ(NormalizedIn64Bits(start, range, position), *iterator);
        ASSERT_EQ(NormalizedIn64Bits(start, range, Wrapped(std::int64_t{*iterator} + n)), *(iterator + n));
        ASSERT_EQ(NormalizedIn64Bits(start, range, Wrapped(std::int64_t{*iterator} - n)), *(iterator - n));
        ASSERT_EQ(NormalizedIn64Bits(start, range, n) == *iterator, iterator == n);
        ASSERT_EQ(NormalizedIn64Bits(start, range, n) != *iterator, iterator != n);
    }
}

// Whether the result is used or not, and whatever the compiler knows of the range.
TEST(CircIteratorDeathTest, BringingAPositionIntoAnEmptyRingEndsTheProcess) {
    volatile int none = 0;
    const CircIterator ring(0, none);
    EXPECT_DEATH(CircIterator(0, 0, 0), "");
    EXPECT_DEATH(CircIterator(0, none, 3), "");
    EXPECT_DEATH(CircIterator{ring} = -3, "");
    EXPECT_DEATH(CircIterator{ring} += 3, "");
    EXPECT_DEATH(CircIterator{ring} -= 3, "");
    EXPECT_DEATH(CircIterator{ring}.SetStart(3), "");
    EXPECT_DEATH(CircIterator(0, 5, 3).SetRange(none), "");
    EXPECT_DEATH(static_cast<void>(ring == 3), "");
}

TEST(CircIterator, StepsDoNotDivideEvenInAnEmptyRing) {
    CircIterator iterator(3, 0);
    EXPECT_EQ(3, *++iterator);
    EXPECT_EQ(2, *--iterator);
    EXPECT_EQ(2, *iterator--);
    EXPECT_EQ(2, *iterator);
}

TEST(CircIterator, AnyStepBackwardFollowsTheRuleOfTheOffset) {
    Random random(3);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const int start = random.Integer(-20, 20), range = random.Integer(1, 12);
        const int position = start + random.Integer(0, range - 1);
        CircIterator iterator(start, range, position);
        const bool jumps = position < 2 * start + 1;
        const CircIterator before = iterator--;
        ASSERT_EQ(position, *before);
        ASSERT_EQ(start, before.Start());
        ASSERT_EQ(range, before.Range());
        ASSERT_EQ(jumps ? start + range - 1 : position - 1, *iterator)
            << start << ' ' << range << ' ' << position;
    }
}

} // namespace
