// SPDX-License-Identifier: MIT
// Lengths on displays of two resolutions: ctest runs this on each, and says in DISPLAY_DPI which it is.

#include "Framework/windows/DpiCor.h"

#include "VelmBase/Environment.h"

#include <gtest/gtest.h>

namespace {

TEST(DpiCor, GivesLengthsInPixelsOfTheDisplay) {
    const std::wstring dpi = EnvironmentVariable(L"DISPLAY_DPI");
    if (dpi.empty()) GTEST_SKIP() << "DISPLAY_DPI does not say how many pixels an inch has here";
    struct Row {
        int length, usual, twiceAsFine;
    };
    for (const Row& row : {Row{0, 0, 0}, Row{1, 1, 2}, Row{75, 75, 150}, Row{-3, -3, -6},
                           Row{1'000'000'000, 1'000'000'000, 2'000'000'000}}) {
        ASSERT_TRUE(dpi == L"96" || dpi == L"192");
        EXPECT_EQ(dpi == L"96" ? row.usual : row.twiceAsFine, DpiCor(row.length)) << row.length;
    }
}

} // namespace
