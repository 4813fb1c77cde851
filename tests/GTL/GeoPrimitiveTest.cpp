// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/GeoPrimitive.h"

#include "UtilityDLL/GTL/Transformation2D.h"
#include "tests/support/GeometryPrinters.h"

#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <memory>
#include <type_traits>

using GTL::Extents3D;
using GTL::GeoPrimitive;
using GTL::GeoPrimitiveBase;
using GTL::Point2D;
using GTL::Point3D;
namespace CLS = GTL::CLS;

namespace {

/// The simplest shape: only its first corner is inside.
template <typename P> struct Corners : GeoPrimitive<P, 4> {
    CLS::CLASSIFICATION Classify(const P& point) const override {
        return point == this->Corner(0) ? CLS::INSIDE : CLS::OUTSIDE;
    }
};

template <typename T> class GeoPrimitiveOf : public ::testing::Test {
protected:
    GeoPrimitiveOf() {
        m_shape->SetCorner(0, {1, 2});
        m_shape->SetCorner(1, {3, -4});
        m_shape->SetCorner(2, {5, 6});
        m_shape->SetCorner(3, {-7, 8});
    }
    void ExpectCorner(int index, T x, T y) const {
        EXPECT_EQ(x, std::as_const(*m_shape).Corner(index).X()) << index;
        EXPECT_EQ(y, std::as_const(*m_shape).Corner(index).Y()) << index;
    }
    std::unique_ptr<GeoPrimitiveBase<Point2D<T>>> m_shape = std::make_unique<Corners<Point2D<T>>>();
};
using ElementTypes = ::testing::Types<int, float, double>;
TYPED_TEST_SUITE(GeoPrimitiveOf, ElementTypes);

TYPED_TEST(GeoPrimitiveOf, IsAbstractWithAVirtualDestructor) {
    using P = Point2D<TypeParam>;
    static_assert(std::is_abstract_v<GeoPrimitiveBase<P>> && std::is_abstract_v<GeoPrimitive<P, 4>>);
    static_assert(std::has_virtual_destructor_v<GeoPrimitiveBase<P>>);
    static_assert(std::is_base_of_v<GeoPrimitiveBase<P>, GeoPrimitive<P, 4>>);
}

TYPED_TEST(GeoPrimitiveOf, HoldsItsCorners) {
    EXPECT_EQ(4, this->m_shape->NumCorners());
    this->ExpectCorner(0, 1, 2);
    this->ExpectCorner(1, 3, -4);
    this->ExpectCorner(2, 5, 6);
    this->ExpectCorner(3, -7, 8);
}

TYPED_TEST(GeoPrimitiveOf, CornersAreGivenByReference) {
    Point2D<TypeParam>& corner = this->m_shape->SetCorner(2, {50, 60});
    EXPECT_EQ(&corner, &this->m_shape->Corner(2));
    corner.X(51);
    this->m_shape->Corner(2).Y(61);
    this->ExpectCorner(2, 51, 61);
    this->ExpectCorner(1, 3, -4);
}

TYPED_TEST(GeoPrimitiveOf, ClassificationIsTheShapesOwn) {
    EXPECT_EQ(CLS::INSIDE, this->m_shape->Classify({1, 2}));
    EXPECT_EQ(CLS::OUTSIDE, this->m_shape->Classify({3, -4}));
}

TYPED_TEST(GeoPrimitiveOf, TransformMovesEachCorner) {
    GTL::Transformation2D<Point2D<TypeParam>> t;
    t.Translate(10, 20);
    this->m_shape->Transform(t);
    this->ExpectCorner(0, 11, 22);
    this->ExpectCorner(1, 13, 16);
    this->ExpectCorner(2, 15, 26);
    this->ExpectCorner(3, 3, 28);
}

TYPED_TEST(GeoPrimitiveOf, UpdateMakesAnEmptyBoxTheBoxOfTheCornersAtHeightZero) {
    Extents3D<double> extents =
        std::bit_cast<Extents3D<double>>(std::array<double, 8>{1, 1, 5, 7, 0, 0, 5, 7});
    this->m_shape->Update(extents);
    EXPECT_EQ(Point3D<double>(-7, -4, 0), extents.MinPnt());
    EXPECT_EQ(Point3D<double>(5, 8, 0), extents.MaxPnt());
    EXPECT_EQ(0.0, extents.MinPnt().B());
    EXPECT_EQ(0.0, extents.MaxPnt().B());
}

TYPED_TEST(GeoPrimitiveOf, UpdateGrowsAValidBox) {
    Extents3D<double> extents;
    extents.Update(100, 0, 30);
    this->m_shape->Update(extents);
    EXPECT_EQ(Point3D<double>(-7, -4, 0), extents.MinPnt());
    EXPECT_EQ(Point3D<double>(100, 8, 30), extents.MaxPnt());
}

} // namespace
