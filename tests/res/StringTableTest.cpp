// SPDX-License-Identifier: MIT
#include "UtilityDLL/res/private/StringTable.h"

#include "tests/support/Language.h"

#include <gtest/gtest.h>
#include <string>

namespace {

TEST(StringTable, HoldsTheTextsLetterForLetter) {
    struct Row {
        std::uint32_t number;
        const wchar_t* text;
    };
    constexpr Row kRows[] = {
        {9064, L"The contour definition is already in the list, it was not added."},
        {9065, L"Failed to implement modifications.\nReason:\n\tThe depth was modfied to a value\n\tthat is "
               L"already "
               L"in the list!"},
        {9066, L"Failed to generate contours."},
        {9067, L"Save changes?"},
        {9068, L"Error"},
        {9070, L"Error opening \""},
        {9071, L" The file has an invalid checksum"},
        {9080, L"Error opening \""},
        {9081, L"\" for reading!"},
        {9082, L"Error! Duplicate section"},
        {9083, L" found!"},
        {9084, L"Error adding key on line "},
        {9085, L" (duplicate key name?)"},
        {9086, L"Invalid section definition on line "},
        {9100, L"OK"},
        {9101, L"Cancel"},
        {9110, L"Contours"},
        {9111, L"Add"},
        {9112, L"Remove"},
        {9113, L"Edit"},
        {9114, L"Generate from"},
        {9115, L"Range"},
        {9116, L"Color Table"},
        {9117, L"Color Level"},
        {9118, L"Annotation"},
        {9119, L"Width"},
        {9120, L"Type"},
        {9121, L"Continous,Dashed,Dot,Dash Dot"},
        {9122, L"Color Table Files (*.col)"},
        {9123, L"Contour Definition Files (*.cdf)"},
        {9124, L"Yes"},
        {9125, L"No"},
        {9126, L"This file is no contour definition file, or cannot be read:\n\t"},
        {9127, L"What is in this file would be lost: it has more than is shown here, is another one than was "
               L"opened, could not be read, or "
               L"another program changed it meanwhile.\nReplace it?\n\t"},
        {9128, L"The contours were not saved.\nCheck that the folder may be written to and has room:\n\t"},
        {9129,
         L"Nothing was saved, and a file that is there stays as it was:\nthere is no contour in the list."},
        {9130, L"Contour Properties"},
        {9131, L"Level:"},
        {9132, L"Color:"},
        {9133, L"Click to Change"},
        {9134, L"Line style:"},
        {9135, L"CONTINUOUS,DASHED,DOTTED"},
        {9136, L"Line width:"},
        {9137, L"Show labels:"},
        {9140, L"Generate Contours"},
        {9141, L"Range"},
        {9142, L"Lowest level:"},
        {9143, L"Highest level:"},
        {9144, L"Interval:"},
        {9150, L"Enter a number."},
        {9151, L"Write the decimals behind a point, as in 2.5."},
        {9152, L"This is no number. Write one as in 12, -3.5 or 1e3."},
        {9153, L"Enter a number that is not below 0."},
        {9154, L"Enter a smaller number."},
        {9155, L"Enter a larger number."},
        {9156, L"These would be more than a million levels. Enter a larger interval."},
        {9160, L"The contours were not saved: no file was chosen."},
    };
    for (const Row& row : kRows) {
        std::wstring text = LoadText(static_cast<TextId>(row.number));
        std::erase(text, L'&'); // before the letters for the keyboard
        EXPECT_EQ(row.text, text) << row.number;
    }
    EXPECT_EQ(std::size(kRows), BuiltInTexts().size());
}

TEST(StringTable, ANumberThatItDoesNotHaveIsEmpty) {
    for (const std::uint32_t number : {0u, 1u, 9063u, 9069u, 9087u, 65536u, 9070u + 65536, 0xFFFFFFFFu})
        EXPECT_STREQ(L"", LoadText(static_cast<TextId>(number))) << number;
}

TEST(StringTable, MessagesLieInTheirRange) {
    for (const BuiltInText& text : BuiltInTexts()) {
        const auto number = static_cast<std::uint32_t>(text.id);
        EXPECT_TRUE((number >= 9064 && number <= 9086) || number >= 9100) << number;
    }
}

TEST(StringTable, ATextThatWasHandedOutStaysWhenAnotherLanguageIsChosen) {
    const wchar_t* const english = LoadText(TextId::CONTOUR_ERROR_CAPTION);
    const wchar_t* german = nullptr;
    {
        const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", L"de");
        ChooseLanguageAnew();
        german = LoadText(TextId::CONTOUR_ERROR_CAPTION);
        EXPECT_STREQ(L"Fehler", german);
    }
    ChooseLanguageAnew();
    EXPECT_EQ(english, LoadText(TextId::CONTOUR_ERROR_CAPTION));
    EXPECT_STREQ(L"Error", english);
    EXPECT_STREQ(L"Fehler", german);
    {
        const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", L"de");
        ChooseLanguageAnew();
        EXPECT_EQ(german, LoadText(TextId::CONTOUR_ERROR_CAPTION)); // the same file is not read again
    }
    ChooseLanguageAnew();
}

} // namespace
