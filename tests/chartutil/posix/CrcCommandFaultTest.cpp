// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>

using ::testing::HasSubstr;

// A disk that is full while the checksum is written: files may grow to `limit` blocks of 512 bytes, and the
// signal that would end the program is off.
static ProgramResult SealUnderLimit(const TemporaryFolder& folder, int limit) {
    const std::string path = ToUtf8(folder.File(L""));
    const std::string command = "cd '" + path + "' && trap '' XFSZ && ulimit -f " + std::to_string(limit) +
                                " && exec '" + ChartutilPath() + "' crc seal data >output 2>error";
    const int status = std::system(("exec sh -c \"" + command + "\"").c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(folder.Path() / "output"),
            ReadBytes(folder.Path() / "error")};
}

TEST(CrcCommandFault, AFullDiskLeavesTheFileAsItWas) {
    // No byte of the checksum fits, or one to three.
    for (const std::size_t size : {4096u, 4095u, 4094u, 4093u}) {
        SCOPED_TRACE(size);
        const TemporaryFolder folder;
        const std::string bytes(size, 'x');
        WriteBytes(folder.Path() / "data", bytes);
        const ProgramResult result = SealUnderLimit(folder, 8);
        EXPECT_EQ(3, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("data: its checksum cannot be written; the file is as it was"));
        EXPECT_EQ(bytes, ReadBytes(folder.Path() / "data"));

        EXPECT_EQ(0, SealUnderLimit(folder, 9).exitCode);
        EXPECT_EQ(size + 4, ReadBytes(folder.Path() / "data").size());
    }
}

TEST(CrcCommandFault, KeepsModeAndLinks) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "data", "bytes");
    std::filesystem::create_hard_link(folder.Path() / "data", folder.Path() / "hard");
    std::filesystem::create_symlink("data", folder.Path() / "soft");
    const std::string link = ToUtf8(folder.File(L"soft"));
    ASSERT_EQ(0, chmod(link.c_str(), 0640));
    ASSERT_EQ(0, RunChartutil({"crc", "seal", link}).exitCode);
    EXPECT_EQ(9u, ReadBytes(folder.Path() / "hard").size());
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "soft"));
    struct stat status {};
    ASSERT_EQ(0, stat(link.c_str(), &status));
    EXPECT_EQ(0640u, status.st_mode & 07777);
}
