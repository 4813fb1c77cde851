// SPDX-License-Identifier: MIT
// Processes that change one file at the same time, and such as are ended in the middle of it.
#include "VelmBase/File.h"

#include "tests/support/TestFiles.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kProcesses = 30;
constexpr int kUpdates = 10;

/// A process of its own that does `act` and ends with 0 when that is true.
template <typename Act> pid_t Begin(Act act) {
    const pid_t child = fork();
    if (child == 0) _exit(act() ? 0 : 1);
    return child;
}

int StatusOf(pid_t child) {
    int status = 0;
    return waitpid(child, &status, 0) == child ? status : -1;
}

bool Append(const std::wstring& path, const std::string& line) {
    return !FILES::UpdateContents(path, [&](std::string& content, bool) {
        content += line + '\n';
        return true;
    });
}

std::string LineOf(int process, int update) {
    return std::to_string(process) + " wrote line " + std::to_string(update);
}

} // namespace

TEST(UpdateContents_Processes, ThirtyLoseNothingOfEachOther) {
    enum Kind { MADE, REPLACED, IN_PLACE };
    for (const Kind kind : {MADE, REPLACED, IN_PLACE}) {
        const TemporaryFolder folder;
        const std::wstring path = folder.File(L"shared.ini");
        if (kind != MADE) WriteBytes(path, "");
        if (kind == IN_PLACE)
            std::filesystem::create_hard_link(NativePath(path), folder.Path() / "other.ini");
        std::vector<pid_t> children;
        for (int n = 0; n < kProcesses; ++n)
            children.push_back(Begin([&] {
                for (int i = 0; i < kUpdates; ++i)
                    if (!Append(path, LineOf(n, i))) return false;
                return true;
            }));
        for (const pid_t child : children) EXPECT_EQ(0, StatusOf(child)) << "an update failed";

        std::istringstream content(ReadBytes(path));
        std::vector<std::vector<std::string>> lines(kProcesses), expected(kProcesses);
        for (std::string line; std::getline(content, line);)
            lines.at(std::stoul(line)).push_back(line); // each one's in its own order
        for (int n = 0; n < kProcesses; ++n)
            for (int i = 0; i < kUpdates; ++i) expected[n].push_back(LineOf(n, i));
        EXPECT_EQ(expected, lines) << kind;
        EXPECT_EQ(kind == IN_PLACE ? 2u : 1u, folder.NumFiles());
    }
}

TEST(UpdateContents_Processes, KilledOnesLoseNothingOfTheOthers) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"shared.ini");
    std::vector<pid_t> writers, victims;
    for (int n = 0; n < 5; ++n)
        writers.push_back(Begin([&] {
            for (int i = 0; i < 20; ++i)
                if (!Append(path, LineOf(n, i))) return false;
            return true;
        }));
    for (int n = 0; n < 40; ++n) {
        const pid_t victim = Begin([&] {
            while (Append(path, "victim")) {
            }
            return false;
        });
        for (int seen = 0; seen < n % 7; ++seen) FILES::Reader{path}; // some time, never the same
        kill(victim, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(StatusOf(victim)));
    }
    for (const pid_t writer : writers) EXPECT_EQ(0, StatusOf(writer));
    EXPECT_TRUE(Append(path, "last"));
    const std::string content = '\n' + ReadBytes(path);
    for (int n = 0; n < 5; ++n)
        for (int i = 0; i < 20; ++i)
            EXPECT_NE(std::string::npos, content.find('\n' + LineOf(n, i) + '\n')) << LineOf(n, i);
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(UpdateContents_Processes, ASignalThatEndsALongWriteLeavesNothing) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGKILL})
        for (const bool exists : {true, false}) {
            const TemporaryFolder folder;
            const std::wstring path = folder.File(L"a.csv");
            if (exists) WriteBytes(path, "old");
            int begun[2];
            ASSERT_EQ(0, pipe(begun));
            const pid_t writer = Begin([&] {
                for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
                std::ignore = FILES::ReplaceContents(path, [&](const FILES::ContentSink& sink) {
                    for (int i = 0; i < 20; ++i)
                        if (!sink(std::string(100'000, 'x'))) return false;
                    while (write(begun[1], "", 1) == 1) pause();
                    return true;
                });
                return true;
            });
            char byte = 1;
            ASSERT_EQ(1, read(begun[0], &byte, 1));
            EXPECT_EQ(0, kill(writer, signal));
            const int status = StatusOf(writer);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
            EXPECT_EQ(exists ? 1u : 0u, folder.NumFiles()) << signal;
            EXPECT_EQ(exists ? "old" : "", ReadBytes(path));
            close(begun[0]);
            close(begun[1]);
        }
}
