// SPDX-License-Identifier: MIT
#include "VelmBase/private/UserLanguage.h"

#include "VelmBase/private/LanguageChoice.h"
#include "tests/support/Language.h"

#include <gtest/gtest.h>

TEST(UserLanguage, IsThatOfTheFirstVariableThatIsNotEmpty) {
    struct Row {
        const wchar_t *all, *messages, *lang, *language;
    };
    for (const Row& row : {Row{L"a", L"b", L"c", L"a"}, Row{L"", L"b", L"c", L"b"}, Row{L"", L"", L"c", L"c"},
                           Row{L"C", L"", L"de_DE.UTF-8", L"C"}, Row{L"", L"", L"", L""}}) {
        const EnvironmentSetting all(L"LC_ALL", row.all);
        const EnvironmentSetting messages(L"LC_MESSAGES", row.messages);
        const EnvironmentSetting lang(L"LANG", row.lang);
        EXPECT_EQ(row.language, UserLanguage());
        const EnvironmentSetting unset(L"UTILITYDLL_LANGUAGE", L"");
        EXPECT_EQ(row.language, LANGUAGES::ChosenLanguage());
        const EnvironmentSetting set(L"UTILITYDLL_LANGUAGE", L"en");
        EXPECT_EQ(L"en", LANGUAGES::ChosenLanguage());
    }
}
