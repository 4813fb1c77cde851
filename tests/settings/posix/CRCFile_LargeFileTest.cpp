// SPDX-License-Identifier: MIT
// Files above 4 GiB: sparse, so they take no room, but every byte of them is checked.

#include "UtilityDLL/settings/CRCFile.h"

#include "VelmBase/CRCChecksum.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace {

constexpr std::uint64_t kDistance = 4ull << 30; // the first byte beyond 32 bits

unsigned int Expected(std::string_view head, std::string_view tail) {
    CRCChecksum checksum;
    checksum.Update(head.data(), head.size());
    const std::string zeros(1 << 20, '\0');
    for (std::uint64_t left = kDistance - head.size(); left > 0;) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left, zeros.size()));
        checksum.Update(zeros.data(), count);
        left -= count;
    }
    checksum.Update(tail.data(), tail.size());
    return checksum.Value();
}

} // namespace

TEST(CRCFile_LargeFile, IsSealedAndCheckedWhole) {
    // Holes are read fastest from a file system in memory.
    const TemporaryFolder folder(
        std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path());
    const std::wstring path = folder.File(L"large.bin");
    {
        CRCFile file;
        ASSERT_TRUE(file.Open(path, L"wb"));
        ASSERT_EQ(4u, file.Write("head", 1, 4));
        // Seek() takes an int, so the far place is reached in steps.
        ASSERT_TRUE(file.Seek(2147483647, SEEK_SET));
        EXPECT_EQ(2147483647u, file.Tell());
        ASSERT_TRUE(file.Seek(2147483647, SEEK_CUR));
        EXPECT_EQ(4294967294u, file.Tell());
        ASSERT_TRUE(file.Seek(1, SEEK_CUR));
        EXPECT_EQ(4294967295u, file.Tell());
        ASSERT_TRUE(file.Seek(1, SEEK_CUR));
        EXPECT_EQ(4294967295u, file.Tell()); // more than it can tell
        ASSERT_EQ(4u, file.Write("tail", 1, 4));
        ASSERT_TRUE(file.Seek(-4, SEEK_CUR));
        char back[5] = {};
        ASSERT_EQ(4u, file.Read(back, 1, 4));
        EXPECT_STREQ("tail", back);
        file.Rewind();
        ASSERT_EQ(4u, file.Read(back, 1, 4));
        EXPECT_STREQ("head", back);
    }
    EXPECT_EQ(kDistance + 8, std::filesystem::file_size(NativePath(path)));
    EXPECT_EQ(Expected("head", "tail"), CRCFile::GetCRC(path));

    CRCFile reader;
    ASSERT_TRUE(reader.Open(path, L"rb"));
    EXPECT_EQ(0u, reader.Tell());
    ASSERT_TRUE(reader.Seek(-8, SEEK_END));
    char back[5] = {};
    ASSERT_EQ(4u, reader.Read(back, 1, 4));
    EXPECT_STREQ("tail", back);
    reader.Close();

    { // a change beyond 4 GiB is found
        std::fstream file(NativePath(path), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(kDistance + 1));
        file.put('A');
    }
    EXPECT_FALSE(reader.Open(path, L"rb"));
    EXPECT_FALSE(reader.IsOpen());
}
