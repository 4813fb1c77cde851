// SPDX-License-Identifier: MIT
// A font that says its descent is higher than its cell, as a damaged or a made one can.

#include "UtilityDLL/text/TextHeightFactComp.h"
#include "tests/Framework/posix/DeviceTestFont.h"
#include "tests/text/posix/NothingMeasured.h"
#include "tests/text/posix/OnlyFont.h"

#include <gtest/gtest.h>

TEST(TextRectComp_NegativeFactor, GivesNoSizeAndNoLines) {
    TestFont made;
    made.typoDescent = -1500; // in a cell of 1000
    made.lineGap = 0;
    const OnlyFont only("deep.ttf", made.Bytes());
    for (const float size : {0.5f, 2.5f, 20.0f}) {
        TextInfo style;
        style.SetSize(size);
        EXPECT_FLOAT_EQ(-2.0f, TextHeightFactComp::Get()(style)) << size;
        EXPECT_GT(TextHeightFactComp::Get().GetMetrics(style).otmTextMetrics.tmHeight, 0) << size;
        ExpectNothingMeasured(style);
    }
}
