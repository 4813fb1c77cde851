// SPDX-License-Identifier: MIT
#include "VelmBase/private/LanguageChoice.h"

#include "tests/support/Language.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

TEST(LanguageChoice, FilesAreNamedAfterLanguageAndRegion) {
    for (const wchar_t* const german : {L"de", L"DE", L"de.UTF-8", L"de@euro"})
        EXPECT_THAT(LANGUAGES::FileNames(german), ElementsAre(L"de")) << german;
    for (const wchar_t* const austrian :
         {L"de_AT", L"de-AT", L"DE_at.UTF-8", L"de_AT@euro", L"de_AT.UTF-8@euro"})
        EXPECT_THAT(LANGUAGES::FileNames(austrian), ElementsAre(L"de_AT", L"de")) << austrian;
    EXPECT_THAT(LANGUAGES::FileNames(L"zh-Hans-CN"), ElementsAre(L"zh_HANS_CN", L"zh"));
}

TEST(LanguageChoice, WhatIsNoLanguageHasNoFile) {
    for (const std::wstring& none :
         {std::wstring(), std::wstring(L"../de"), std::wstring(L"de/x"), std::wstring(L"de\\x"),
          std::wstring(L".."), std::wstring(L"_DE"), std::wstring(L"d e"), std::wstring(L"d\u00E9"),
          std::wstring(L"de\0x", 4), std::wstring(33, L'd'), std::wstring(L"*"), std::wstring(L"C:")})
        EXPECT_THAT(LANGUAGES::FileNames(none), IsEmpty()) << ::testing::PrintToString(none);
}

TEST(LanguageChoice, TheVariableComesBeforeTheUsersLanguage) {
    {
        const EnvironmentSetting set(L"UTILITYDLL_LANGUAGE", L"pt_BR");
        EXPECT_EQ(L"pt_BR", LANGUAGES::ChosenLanguage());
    }
    const EnvironmentSetting unset(L"UTILITYDLL_LANGUAGE", L"");
    EXPECT_NE(L"pt_BR", LANGUAGES::ChosenLanguage());
}

} // namespace
