// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/GDIScaleFactor.h"

#include <gtest/gtest.h>

namespace {

const double factorBeforeMain = GDIScaleFactor::Get();
const unsigned int maxCoordBeforeMain = GDIScaleFactor::MaxCoord();

TEST(GDIScaleFactor, IsFixed) {
    EXPECT_EQ(GDIScaleFactor::Get(), 1000.0);
    EXPECT_EQ(GDIScaleFactor::MaxCoord(), 2147483647u);
}

TEST(GDIScaleFactor, IsThereBeforeTheProgramBegins) {
    EXPECT_EQ(factorBeforeMain, 1000.0);
    EXPECT_EQ(maxCoordBeforeMain, 2147483647u);
}

TEST(GDIScaleFactor, IsAValueThatChangesNothing) {
    {
        GDIScaleFactor one;
        const GDIScaleFactor other(one);
        one = other;
    }
    EXPECT_EQ(GDIScaleFactor::Get(), 1000.0);
    EXPECT_EQ(GDIScaleFactor::MaxCoord(), 2147483647u);
}

} // namespace
