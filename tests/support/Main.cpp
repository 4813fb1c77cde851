// SPDX-License-Identifier: MIT
// The main function of every test.

#include "tests/support/Language.h"

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    // ctest asks for English. Whoever runs a test by hand, in whatever language, gets the same texts, and so
    // do the programs that the test starts.
    if (EnvironmentVariable(L"UTILITYDLL_LANGUAGE").empty()) {
        SetEnvironment(L"UTILITYDLL_LANGUAGE", L"en");
        ChooseLanguageAnew();
    }
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
