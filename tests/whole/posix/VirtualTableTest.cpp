// SPDX-License-Identifier: MIT
// The order of virtual operations is part of the interface. How a pointer to one holds its place is known of
// the calling convention of these systems.

#include "UtilityDLL/GTL/GeoPrimitive.h"
#include "UtilityDLL/runtime/Observer.h"
#include "UtilityDLL/runtime/Thread.h"

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>

using GTL::Point2D;

namespace {

// The position of a virtual function in the table of its class, behind the two entries of the destructor.
template <typename Member> std::ptrdiff_t Slot(Member member) {
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return offset / static_cast<std::ptrdiff_t>(sizeof(void*)) - 1; // an odd one on some processors
}

template <typename T> class VirtualTableOf : public ::testing::Test {};
using ElementTypes = ::testing::Types<int, float, double>;
TYPED_TEST_SUITE(VirtualTableOf, ElementTypes);

TYPED_TEST(VirtualTableOf, VirtualOperationsStandInTheirSlots) {
    using P = Point2D<TypeParam>;
    using Shape = GTL::GeoPrimitiveBase<P>;
    EXPECT_EQ(1, Slot(static_cast<P& (Shape::*)(int)>(&Shape::Corner)));
    EXPECT_EQ(2, Slot(&Shape::SetCorner));
    EXPECT_EQ(3, Slot(&Shape::NumCorners));
    EXPECT_EQ(4, Slot(&Shape::Classify));
    EXPECT_EQ(5, Slot(&Shape::Transform));
    EXPECT_EQ(6, Slot(&Shape::Update));
    EXPECT_EQ(1, Slot(&GTL::Transformation<P>::Apply));
}

struct Work : ThreadObject {
    using ThreadObject::CancelFunction;
};

TEST(VirtualTable, WorkOfAThreadHasItsDestructorBehindItsOperations) {
    constexpr int kNoDestructor = -2; // none stands before these
    EXPECT_EQ(1, Slot(&ThreadObject::Run) - kNoDestructor);
    EXPECT_EQ(2, Slot(&Work::CancelFunction) - kNoDestructor);
}

TEST(VirtualTable, SubscriberIsNotifiedThroughItsFirstSlot) {
    EXPECT_EQ(1, Slot(&UTL::Subscriber::OnNotify));
}

} // namespace
