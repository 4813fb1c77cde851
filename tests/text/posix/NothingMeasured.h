// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/text/TextRectComp.h"

#include <gtest/gtest.h>

/// The style cannot be measured: a text has no size and no lines in it.
inline void ExpectNothingMeasured(TextInfo style) {
    for (const bool isMultiLine : {false, true}) {
        style.SetMultiLine(isMultiLine);
        TextRectComp measure;
        const TextRectComp::Rectangle rectangle = measure(style, L"ABC");
        EXPECT_EQ(0.0, rectangle.Width());
        EXPECT_EQ(0.0, rectangle.Height());
        EXPECT_EQ(0, measure.GetNumberOfSubStrings());
        EXPECT_EQ(0.0, measure.GetTextHeight());
    }
}
