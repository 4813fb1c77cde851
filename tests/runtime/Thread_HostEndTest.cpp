// SPDX-License-Identifier: MIT
// A worker at work while its host unloads the library or ends: a program of its own for each way.
#include "tests/support/Program.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <string>

namespace {

class Thread_HostEnd : public ::testing::TestWithParam<const char*> {};

TEST_P(Thread_HostEnd, IsNoMatter) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "input", "");
    for (int i = 0; i < 5; ++i) {
        const int exitCode = RunWithFiles(LOADING_HOST, {UTILITYDLL_FILE, GetParam()}, folder.File(L"input"),
                                          folder.File(L"output"), folder.File(L"error"));
        EXPECT_EQ(0, exitCode) << ReadBytes(folder.Path() / "error");
        EXPECT_EQ("", ReadBytes(folder.Path() / "error"));
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, Thread_HostEnd,
                         ::testing::Values("unload", "unload-return", "unload-exit", "return", "exit",
                                           "destroy-return", "static-return", "exit-in-step"),
                         [](const auto& way) {
                             std::string name = way.param;
                             for (char& c : name)
                                 if (c == '-') c = '_';
                             return name;
                         });

} // namespace
