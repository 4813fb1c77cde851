// SPDX-License-Identifier: MIT
// The system does not load a module that fails to start up, and no program that needs it.

#include "tests/support/PackageCopy.h"

#include <windows.h>

namespace {

constexpr int kDllInitFailed = static_cast<int>(0xC0000142); // STATUS_DLL_INIT_FAILED

void ExpectNotStarted(const ProgramResult& result) {
    EXPECT_EQ(kDllInitFailed, result.exitCode);
    EXPECT_EQ("", result.output);
    EXPECT_EQ("", result.error);
}

class StartUp_Refused : public ::testing::Test {
protected:
    StartUp_Refused() {
        SetErrorMode(SEM_FAILCRITICALERRORS);
    } // the system's own message, also for what is started
};

TEST_F(StartUp_Refused, WhereTheVersionControlSaysNoNoProgramStarts) {
    const PackageCopy package;
    EXPECT_EQ(0, package.Run(ChartutilPath(), {"--version"}).exitCode);
    package.CopyLibraries(STAND_IN_VERSION_CONTROL);
    ExpectNotStarted(package.Run(ChartutilPath(), {"--version"}));
    ExpectNotStarted(package.Run(PRINT_OPEN_FAULT, {"none.ini"}));
}

TEST_F(StartUp_Refused, NorWithALibraryOfAnotherVersion) {
    const PackageCopy package;
    package.CopyLibraries(OTHER_VELM_CONFIGURE);
    ExpectNotStarted(package.Run(ChartutilPath(), {"--version"}));
}

TEST_F(StartUp_Refused, AModuleThatFailsIsNotLoaded) {
    for (const wchar_t* const step : {L"CheckDllVersion", L"AfxInitExtensionModule"}) {
        const EnvironmentSetting failing(L"FAILING_STEP", step);
        const std::string output = RunProgramAt(LOAD_MODULE, {START_UP_MODULE}).output;
        EXPECT_NE(std::string::npos, output.find("not loaded")) << output;
    }
}

} // namespace
