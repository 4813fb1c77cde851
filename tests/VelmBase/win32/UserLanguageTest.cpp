// SPDX-License-Identifier: MIT
#include "VelmBase/private/UserLanguage.h"

#include "VelmBase/private/LanguageChoice.h"
#include "tests/support/Language.h"

#include <gtest/gtest.h>
#include <windows.h>

TEST(UserLanguage, IsTheFirstOfTheLanguagesOfTheSystemsTexts) {
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = L"";
    LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), name, LOCALE_NAME_MAX_LENGTH, 0);
    EXPECT_STRNE(L"", name);
    EXPECT_EQ(name, UserLanguage());
    const EnvironmentSetting unset(L"UTILITYDLL_LANGUAGE", L"");
    EXPECT_EQ(name, LANGUAGES::ChosenLanguage());
}
