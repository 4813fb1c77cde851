// SPDX-License-Identifier: MIT
// Programs that change one settings file at the same time.

#include "tests/support/Program.h"

#include <gmock/gmock.h>

#include <future>
#include <set>
#include <string>
#include <vector>

TEST(SettingsCommand_ManyWriters, LoseNothingOfWhatTheOthersWrite) {
    constexpr int kWriters = 30;
    constexpr int kKeys = 15;
    const std::string before = "# written by hand\n\n[A]\n  x\t= 1 ; one\n";
    const std::string after = "\n# the end\n[B]\ny=2";
    const TemporaryFolder folder;
    const std::string path = ToUtf8(folder.File(L"a.ini"));
    WriteBytes(folder.File(L"a.ini"), before + after);

    const auto write = [&](int writer) { // gives the number of failures
        int failures = 0;
        for (int key = 0; key < kKeys; ++key) {
            const std::string name = "k" + std::to_string(writer) + "-" + std::to_string(key);
            failures += RunChartutil({"settings", "set", path, "A", name, "v"}).exitCode != 0;
        }
        return failures;
    };
    // The threads are only the processes' parents: what is tried has none.
    std::vector<std::future<int>> writers;
    for (int writer = 0; writer < kWriters; ++writer)
        writers.push_back(std::async(std::launch::async, write, writer));
    for (std::future<int>& writer : writers) EXPECT_EQ(0, writer.get());

    std::string bytes = ReadBytes(folder.Path() / "a.ini");
    ASSERT_TRUE(bytes.starts_with(before));
    ASSERT_TRUE(bytes.ends_with(after));
    bytes = bytes.substr(before.size(), bytes.size() - before.size() - after.size());
    std::multiset<std::string> expected;
    for (int writer = 0; writer < kWriters; ++writer)
        for (int key = 0; key < kKeys; ++key)
            expected.insert("  k" + std::to_string(writer) + "-" + std::to_string(key) + "\t= v");
    std::multiset<std::string> lines;
    std::istringstream stream(bytes);
    for (std::string line; std::getline(stream, line);) lines.insert(line);
    EXPECT_EQ(expected, lines);
}
