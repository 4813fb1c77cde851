// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Vector2D.h"

#include "tests/support/GeometryPrinters.h"

#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <type_traits>

using GTL::Vector2D;

namespace {

template <typename T> class Vector2DOf : public ::testing::Test {};
using ElementTypes = ::testing::Types<int, float, double>;
TYPED_TEST_SUITE(Vector2DOf, ElementTypes);

TYPED_TEST(Vector2DOf, IsAPlainValueOfTwoElements) {
    using V = Vector2D<TypeParam>;
    static_assert(std::is_trivially_copyable_v<V> && std::is_standard_layout_v<V>);
    static_assert(sizeof(V) == 2 * sizeof(TypeParam));
    static_assert(V(1, 2).Y() == 2);
    EXPECT_EQ(TypeParam{0}, V().X());
    EXPECT_EQ(TypeParam{0}, V().Y());
}

TYPED_TEST(Vector2DOf, HoldsItsComponents) {
    Vector2D<TypeParam> vector(1, 2);
    EXPECT_EQ(TypeParam{1}, vector.X());
    EXPECT_EQ(TypeParam{2}, vector.Y());
    vector.X(3);
    vector.Y(-4);
    EXPECT_EQ(TypeParam{3}, vector.X());
    EXPECT_EQ(TypeParam{-4}, vector.Y());
}

TEST(Vector2D, HoldsItsValuesInOrder) {
    EXPECT_EQ((std::array<int, 2>{1, 2}), (std::bit_cast<std::array<int, 2>>(Vector2D<int>(1, 2))));
}

} // namespace
