// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

TextInfo Style(float size) {
    TextInfo style;
    style.SetFont(L"Liberation Sans");
    style.SetSize(size);
    return style;
}

// A host's static object that measures when the process ends. It was made before anything was measured, so
// it is destroyed after what the library and the framework make on first use.
struct MeasuresAtTheEnd {
    ~MeasuresAtTheEnd() {
        TextHeightFactComp& factors = TextHeightFactComp::Get();
        const bool isRight = factors(Style(2.5f)) > 1.0f && factors(Style(44.25f)) > 1.0f &&
                             factors.GetMetrics(Style(44.25f)).otmEMSquare > 0 &&
                             TextRectComp()(Style(44.25f), L"abc").Width() > 0.0;
        if (!isRight) std::_Exit(99);
    }
} measuresAtTheEnd;

TEST(TextHeightFactComp, MeasuresInDestructorsOfStaticObjects) {
    // Whether it does so again when the process ends, this program's exit code tells.
    EXPECT_GT(TextHeightFactComp::Get()(Style(2.5f)), 1.0f);
    EXPECT_GT(TextRectComp()(Style(2.5f), L"abc").Width(), 0.0);
}

} // namespace
