#include "UtilityDLL/res/private/StringTable.h"

#include <gtest/gtest.h>

TEST(StringTable, HoldsTheTextsLetterForLetter) {
    struct Row {
        std::uint32_t number;
        const wchar_t* text;
    };
    for (const Row& row : {
             Row{9070, L"Error opening \""},
             Row{9071, L" The file has an invalid checksum"},
             Row{9080, L"Error opening \""},
             Row{9081, L"\" for reading!"},
             Row{9082, L"Error! Duplicate section"},
             Row{9083, L" found!"},
             Row{9084, L"Error adding key on line "},
             Row{9085, L" (duplicate key name?)"},
             Row{9086, L"Invalid section definition on line "},
         })
        EXPECT_STREQ(row.text, LoadText(static_cast<TextId>(row.number))) << row.number;
}

TEST(StringTable, ANumberThatItDoesNotHaveIsEmpty) {
    for (const std::uint32_t number : {0u, 1u, 65536u, 9070u + 65536, 0xFFFFFFFFu})
        EXPECT_STREQ(L"", LoadText(static_cast<TextId>(number))) << number;
}
