// SPDX-License-Identifier: MIT
#include "UtilityDLL/res/private/StringTable.h"

#include "tests/support/Language.h"
#include "tests/support/StartLine.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

TEST(StringTable_Threads, TheFirstTextMayBeAskedForBySeveralThreadsAtOnce) {
    const EnvironmentSetting language(L"UTILITYDLL_LANGUAGE", L"de");
    ChooseLanguageAnew(); // the file is not read yet
    constexpr int kThreads = 8;
    StartLine start(kThreads);
    std::vector<std::jthread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            start.ArriveAndWait();
            for (int k = 0; k < 100; ++k) {
                EXPECT_STREQ(L"Abbrechen", LoadText(TextId::DIALOG_CANCEL));
                if (k % 10 == 0) ChooseLanguageAnew();
            }
        });
}
