// SPDX-License-Identifier: MIT
// What chartutil says when nobody gets its output: a disk that is full, a reader that is gone.

#include "tests/support/Program.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::HasSubstr;

namespace {

// Runs chartutil with the descriptor `output` as its standard output; without any for -1.
ProgramResult RunInto(int output, const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    const std::string program = ChartutilPath();
    const std::string errors = ToUtf8(folder.File(L"error"));
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGPIPE,
                    SIG_IGN); // else a reader that is gone ends the program before it can say anything
        const int error = open(errors.c_str(), O_WRONLY | O_CREAT, 0600);
        dup2(error, STDERR_FILENO);
        close(error);
        output < 0 ? close(STDOUT_FILENO) : dup2(output, STDOUT_FILENO);
        std::vector<char*> words = {const_cast<char*>(program.c_str())};
        for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        execv(program.c_str(), words.data());
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, {}, ReadBytes(folder.Path() / "error")};
}

// A pipe that nobody reads, a device that is full, and no output at all.
class LostOutputs {
public:
    LostOutputs() {
        int ends[2];
        EXPECT_EQ(0, pipe(ends));
        close(ends[0]);
        m_pipe = ends[1];
        m_full = open("/dev/full", O_WRONLY);
        EXPECT_GE(m_full, 0);
    }
    ~LostOutputs() {
        close(m_pipe);
        close(m_full);
    }
    LostOutputs(const LostOutputs&) = delete;
    LostOutputs& operator=(const LostOutputs&) = delete;
    std::vector<int> All() const { return {m_pipe, m_full, -1}; }

private:
    int m_pipe, m_full;
};

} // namespace

TEST(OutputLoss, IsAnInputOutputErrorOfEveryCommand) {
    const TemporaryFolder folder;
    const std::string data = PROJECT_DATA_FOLDER;
    WriteBytes(folder.File(L"odd.col"), "[ColorTable]\nEntry(0)=1,0,0,0\nEntry(1)=x,0,0,0\n");
    WriteBytes(folder.File(L"odd.cdf"), "[Contour(0)]\nLevel=deep\n");
    const LostOutputs outputs;
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"--help"},
             {"--version"},
             {"settings", "show", data + "/sample-project.ini"},
             {"settings", "check", data + "/sample-project.ini"}, // which else fails with 1
             {"settings", "show", data + "/sample-project.ini", "--json"},
             {"crc", "print", data + "/sample-project.ini"},
             {"colors", "palette", "--json"},
             {"colors", "table", ToUtf8(folder.File(L"odd.col"))}, // with 1 too
             {"style", "line", "0.5,1,Dashed"},
             {"units", "convert", "--from", "m", "--to", "mm", "1"},
             {"transform", data + "/pensacola/soundings.csv", "--translate", "1,1"},
             {"keywords", "list", data + "/pensacola/title-block.txt"},
             {"keywords", "fill", data + "/pensacola/title-block.txt"}, // with 1 too
             {"contours", "list", data + "/pensacola/levels.cdf"},
             {"contours", "range", "-", "--from", "0", "--to", "1", "--step", "1"},
             {"colors", "palette", "--picture", "-"},
             {"contours", "check", ToUtf8(folder.File(L"odd.cdf"))}}) { // with 1 too
        for (const int output : outputs.All()) {
            SCOPED_TRACE(testing::PrintToString(arguments) + " into " + std::to_string(output));
            const ProgramResult result = RunInto(output, arguments);
            EXPECT_EQ(3, result.exitCode);
            EXPECT_THAT(result.error, HasSubstr("standard output"));
            EXPECT_THAT(result.error, HasSubstr("cannot be written"));
        }
    }
}

TEST(OutputLoss, AChangedFileIsWholeThoughNobodyIsTold) {
    const LostOutputs outputs;
    for (const int output : outputs.All()) {
        const TemporaryFolder folder;
        WriteBytes(folder.File(L"a.ini"), "[A]\r\nk = v\r\n\r\n");
        EXPECT_EQ(
            3, RunInto(output, {"settings", "set", ToUtf8(folder.File(L"a.ini")), "A", "k", "w"}).exitCode);
        EXPECT_EQ("[A]\r\nk = w\r\n\r\n", ReadBytes(folder.File(L"a.ini")));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}
