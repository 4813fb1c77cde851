// SPDX-License-Identifier: MIT
// The program itself where it has no display, and where it is stopped while its dialog is open.

#include "tests/chartutil/posix/TypedCtrlC.h"
#include "tests/support/Program.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sched.h>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr char kOne[] = "[Contour(0)]\r\nLevel=1\r\n";

// Whether the process waits for something, with Qt's platform loaded: its dialog is open. Also when it has
// ended.
bool WaitsInItsDialog(pid_t process) {
    const std::string folder = "/proc/" + std::to_string(process);
    const std::string status = ReadBytes(fs::path(folder + "/status"));
    if (status.find("State:\tZ") != std::string::npos) return true;
    return status.find("State:\tS") != std::string::npos &&
           ReadBytes(fs::path(folder + "/maps")).find("libqoffscreen") != std::string::npos;
}

} // namespace

TEST(EditCommand_Display, WithoutADisplaySaysWhatToDo) {
    const TemporaryFolder folder;
    const std::string path = (folder.Path() / "chart.cdf").string();
    WriteBytes(folder.Path() / "chart.cdf", kOne);
    const ProgramResult result =
        RunProgramAt("/usr/bin/env", {"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM",
                                      ChartutilPath(), "edit", path});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error, AllOf(StartsWith("chartutil: the editor cannot be shown: "),
                                    HasSubstr("there is no display"), HasSubstr("DISPLAY")));
    EXPECT_EQ("", result.output);
    EXPECT_EQ(kOne, ReadBytes(fs::path(path)));
}

TEST(EditCommand_Display, SignalsEndTheProgramWithTheFileAsItWas) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const TemporaryFolder folder;
        const std::string path = (folder.Path() / "chart.cdf").string();
        WriteBytes(folder.Path() / "chart.cdf", kOne);
        const std::string program = ChartutilPath();
        const pid_t child = fork();
        if (child == 0) BecomeChartutil({"edit", path}, program);
        while (!WaitsInItsDialog(child)) sched_yield();
        EXPECT_EQ(0, kill(child, number));
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(number, WTERMSIG(status));
        EXPECT_EQ(kOne, ReadBytes(fs::path(path)));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}
