// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Columns.h"

#include <gtest/gtest.h>

TEST(Columns, WidthCountsCharacters) {
    struct Row {
        const char* text;
        std::size_t width;
    };
    for (const Row& row : {Row{"", 0}, Row{"abc", 3}, Row{"\u00FCber", 4}, Row{"\u6D77\u56F3", 2},
                           Row{"\U0001D11E", 1},               // two wide characters where those have 16 bits
                           Row{"\xFF", 1}, Row{"\x9F\x80", 2}, // no UTF-8: each byte
                           Row{"\U0001D11E\U0001D11E\xFF", 3}}) {
        EXPECT_EQ(row.width, TextWidth(row.text)) << row.text;
    }
}

TEST(Columns, PaddingFillsUpToTheWidthAndCutsNothing) {
    EXPECT_EQ("\u00FC   ", Padded("\u00FC", 4));
    EXPECT_EQ("   \u00FC", Padded("\u00FC", 4, Align::RIGHT));
    EXPECT_EQ("\U0001D11E ", Padded("\U0001D11E", 2));
    EXPECT_EQ("long", Padded("long", 3));
    EXPECT_EQ("", Padded("", 0));
}
