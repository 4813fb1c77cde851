// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

ProgramResult Transform(std::vector<std::string> arguments, std::string_view input = {}) {
    arguments.insert(arguments.begin(), "transform");
    return RunChartutil(arguments, input);
}

} // namespace

TEST(TransformCommand_Files, KeepsModeAndLinksOfItsOutput) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "in.csv", "x,y\n1,2\n");
    WriteBytes(folder.Path() / "real.csv", "x,y\n0,0\n");
    std::filesystem::create_symlink("real.csv", folder.Path() / "soft.csv");
    ASSERT_EQ(0, chmod(ToUtf8(folder.File(L"real.csv")).c_str(), 0600));
    ASSERT_EQ(0, Transform({ToUtf8(folder.File(L"in.csv")), "--translate", "1,1", "-o",
                            ToUtf8(folder.File(L"soft.csv"))})
                     .exitCode);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "soft.csv"));
    EXPECT_EQ("x,y\n2,3\n", ReadBytes(folder.Path() / "real.csv"));
    struct stat status {};
    ASSERT_EQ(0, stat(ToUtf8(folder.File(L"real.csv")).c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 07777);
}

TEST(TransformCommand_Files, HoldsNoMoreThanALineOfItsTable) {
    // Under the address sanitizer the program would else hold on to what it freed.
    setenv("ASAN_OPTIONS", "intercept_tls_get_addr=0:quarantine_size_mb=1:thread_local_quarantine_size_kb=64",
           1);
    const TemporaryFolder folder;
    {
        std::ofstream file(folder.Path() / "large.csv", std::ios::binary);
        file << "x,y,note\n";
        const std::string note(1000, 'n');
        for (int i = 0; i < 200000; ++i) file << i << ",2," << note << '\n'; // 200 MB
    }
    const auto largest = [] {
        struct rusage usage {};
        getrusage(RUSAGE_CHILDREN, &usage);
        return usage.ru_maxrss; // KiB
    };
    ASSERT_EQ(0, Transform({"-", "--translate", "1,1"}, "x,y\n1,2\n").exitCode);
    const long before = largest();
    ASSERT_EQ(0, Transform({ToUtf8(folder.File(L"large.csv")), "--translate", "1,1", "-o",
                            ToUtf8(folder.File(L"out.csv"))})
                     .exitCode);
    EXPECT_LT(largest(), before + 32 * 1024);
    EXPECT_GT(std::filesystem::file_size(folder.Path() / "out.csv"), 200000000u);
}

TEST(TransformCommand_Files, AFailedChangeLeavesTheOldTableAndNothingElse) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "out.csv", "x,y\n0,0\n");
    ASSERT_EQ(0, chmod(ToUtf8(folder.File(L"out.csv")).c_str(), 0600));
    // The change fails behind the first block, when some of it has been written.
    std::string table = "x,y\n";
    for (int i = 0; i < 100000; ++i) table += "1,2\n";
    EXPECT_EQ(3,
              Transform({"-", "--translate", "1,1", "-o", ToUtf8(folder.File(L"out.csv"))}, table + "1,bad\n")
                  .exitCode);
    EXPECT_EQ("x,y\n0,0\n", ReadBytes(folder.Path() / "out.csv"));
    EXPECT_EQ(1u, folder.NumFiles());
    // Another name of the file would go on having the old table.
    std::filesystem::create_hard_link(folder.Path() / "out.csv", folder.Path() / "too.csv");
    EXPECT_EQ(3,
              Transform({"-", "--translate", "1,1", "-o", ToUtf8(folder.File(L"out.csv"))}, table).exitCode);
    EXPECT_EQ("x,y\n0,0\n", ReadBytes(folder.Path() / "too.csv"));
}
