// SPDX-License-Identifier: MIT
// The factor in numbers that can be reckoned by head, of a font that is made for them.

#include "UtilityDLL/text/TextHeightFactComp.h"
#include "tests/Framework/posix/DeviceTestFont.h"
#include "tests/text/posix/OnlyFont.h"

#include <gtest/gtest.h>

TEST(TextHeightFactComp_KnownCell, OfAThousandHidesFourHundred) {
    TestFont made;
    made.unitsPerEm = 800; // in a cell of 1000, so that its internal leading is 200
    made.winAscent = 800;
    made.winDescent = 200;
    made.typoDescent = -200;
    made.lineGap = 0;
    const OnlyFont only("known.ttf", made.Bytes());

    TextInfo style;
    style.SetFont(L"Test");
    style.SetSize(1.0f);
    TextHeightFactComp factors;
    const OUTLINETEXTMETRICW& metrics = factors.GetMetrics(style);
    EXPECT_EQ(1000, metrics.otmTextMetrics.tmHeight);
    EXPECT_EQ(200, metrics.otmTextMetrics.tmInternalLeading);
    EXPECT_EQ(0, metrics.otmTextMetrics.tmExternalLeading);
    EXPECT_EQ(-200, metrics.otmDescent);
    EXPECT_EQ(static_cast<float>(1.0 / 0.6), factors(style));
}
