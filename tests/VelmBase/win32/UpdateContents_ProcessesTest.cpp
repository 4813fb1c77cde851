// SPDX-License-Identifier: MIT
// Processes that change one file at the same time, and such as are ended in the middle of it. A process is
// this program once more, told by its environment what to do.
#include "VelmBase/File.h"

#include "tests/support/Environment.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <memory>
#include <tuple>
#include <vector>
#include <windows.h>

namespace {

constexpr int kProcesses = 6;
constexpr int kUpdates = 10;

struct Close {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, Close>;

Handle Begin(const char* test, const std::wstring& path, const std::wstring& word) {
    SetEnvironment(L"UPDATED_FILE", path);
    SetEnvironment(L"UPDATE_WORD", word);
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring command = L"\"" + std::wstring(program) +
                           L"\" --gtest_also_run_disabled_tests --gtest_brief=1 --gtest_filter=" +
                           FromUtf8(test);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(CreateProcessW(program, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                               &process));
    if (process.hThread) CloseHandle(process.hThread);
    SetEnvironment(L"UPDATED_FILE", L"");
    SetEnvironment(L"UPDATE_WORD", L"");
    return Handle(process.hProcess);
}

DWORD ExitCodeOf(const Handle& process) {
    DWORD code = 1;
    WaitForSingleObject(process.get(), INFINITE);
    GetExitCodeProcess(process.get(), &code);
    return code;
}

std::wstring Environment(const wchar_t* name) {
    wchar_t value[1024] = L"";
    GetEnvironmentVariableW(name, value, 1024);
    return value;
}

} // namespace

// What the processes do.

TEST(UpdateContents_Processes, DISABLED_AppendsItsWord) {
    const std::wstring path = Environment(L"UPDATED_FILE");
    const std::string word = ToUtf8(Environment(L"UPDATE_WORD"));
    if (path.empty()) GTEST_SKIP() << "for processes of the other tests";
    for (int i = 0; i < kUpdates; ++i)
        ASSERT_EQ(std::error_code(), FILES::UpdateContents(path, [&](std::string& content, bool) {
                      content += word;
                      return true;
                  }));
}

TEST(UpdateContents_Processes, DISABLED_WritesUntilItIsEnded) {
    const std::wstring path = Environment(L"UPDATED_FILE");
    if (path.empty()) GTEST_SKIP() << "for processes of the other tests";
    const Handle begun(OpenEventW(EVENT_MODIFY_STATE, FALSE, Environment(L"UPDATE_WORD").c_str()));
    std::ignore = FILES::ReplaceContents(path, [&](const FILES::ContentSink& sink) {
        sink(std::string(1'000'000, 'x'));
        SetEvent(begun.get());
        return WaitForSingleObject(GetCurrentProcess(), INFINITE) == WAIT_FAILED;
    });
}

TEST(UpdateContents_Processes, LoseNothingOfEachOther) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"shared.ini");
    std::vector<Handle> processes;
    for (int n = 0; n < kProcesses; ++n)
        processes.push_back(
            Begin("*DISABLED_AppendsItsWord", path, std::wstring(1, static_cast<wchar_t>(L'a' + n))));
    for (const Handle& process : processes) EXPECT_EQ(0u, ExitCodeOf(process)) << "an update failed";
    const std::string content = ReadBytes(path);
    EXPECT_EQ(static_cast<std::size_t>(kProcesses * kUpdates), content.size());
    for (int n = 0; n < kProcesses; ++n)
        EXPECT_EQ(kUpdates, std::count(content.begin(), content.end(), static_cast<char>('a' + n)));
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(UpdateContents_Processes, OneThatIsEndedLeavesNothing) {
    for (const bool exists : {true, false}) {
        const TemporaryFolder folder;
        const std::wstring path = folder.File(L"a.csv");
        if (exists) WriteBytes(path, "old");
        const std::wstring name = L"utilitydll-begun-" + std::to_wstring(GetCurrentProcessId());
        const Handle begun(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
        const Handle process = Begin("*DISABLED_WritesUntilItIsEnded", path, name);
        const HANDLE either[] = {begun.get(), process.get()};
        ASSERT_EQ(WAIT_OBJECT_0, WaitForMultipleObjects(2, either, FALSE, INFINITE)) << "it ended by itself";
        EXPECT_TRUE(TerminateProcess(process.get(), 99));
        EXPECT_EQ(99u, ExitCodeOf(process));
        EXPECT_EQ(exists ? 1u : 0u, folder.NumFiles());
        EXPECT_EQ(exists ? "old" : "", ReadBytes(path));
        EXPECT_EQ(std::error_code(), FILES::ReplaceContents(path, "new"));
        EXPECT_EQ("new", ReadBytes(path));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}
