// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/TextEncoding.h"

#include <gtest/gtest.h>

TEST(TextEncoding, StoresEachByteOrEachCharacter) {
    EXPECT_EQ(L"\u00E9\u03A9",
              StoredText("\u00E9\u03A9", TextEncoding::ONE_BYTE)); // the file cannot hold the last
    EXPECT_EQ(L"\u00C3\u00A9\u00CE\u00A9", StoredText("\u00E9\u03A9", TextEncoding::UTF_8));
    EXPECT_EQ(L"\u00FF", StoredText("\xFF", TextEncoding::UTF_8)); // no UTF-8 stays what it is
}

TEST(TextEncoding, ShowsWhatWasStored) {
    for (const char* text : {"", "ASCII", "\u00E9\u03A9\U0001D11E", "\xFF\x80"}) {
        EXPECT_EQ(text, ShownText(StoredText(text, TextEncoding::UTF_8), TextEncoding::UTF_8));
        EXPECT_EQ(text, ShownText(StoredText(text, TextEncoding::ONE_BYTE), TextEncoding::ONE_BYTE));
    }
    EXPECT_EQ("\u00C3\u00A9", ShownText(L"\u00C3\u00A9", TextEncoding::ONE_BYTE));
}

TEST(TextEncoding, KnowsUtf8ByItsBytes) {
    struct Row {
        const char* content;
        bool looksLike;
    };
    for (const Row& row :
         {Row{"", false}, Row{"[A]\nk = v\n", false}, // nothing to tell it by
          Row{"k = \u00E9", true}, Row{"k = \u03A9 \U0001F480", true}, Row{"k = \xE9", false}, // Latin-1
          Row{"k = \u00E9 \xE9", false},                                                       // some of both
          Row{"k = \xED\xB2\x80", false}, // half of a pair
          Row{"\xEF\xBB\xBF[A]", true}})
        EXPECT_EQ(row.looksLike, LooksLikeUtf8(row.content)) << row.content;
}
