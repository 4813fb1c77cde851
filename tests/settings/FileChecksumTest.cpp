// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/FileChecksum.h"

#include "VelmBase/CRCChecksum.h"
#include "VelmBase/File.h"
#include "tests/support/Random.h"
#include "tests/support/TestFiles.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

/// A file with this content and a known modification time.
class TestFile {
public:
    explicit TestFile(std::string_view bytes, long long seconds = 1000000000) {
        WriteBytes(Path(), bytes);
        Touch(seconds);
    }
    std::wstring Path() const { return m_folder.File(L"data.bin"); }
    void Touch(long long seconds) const {
        // The clocks' distance is taken from the file itself: its epoch is the implementation's secret.
        std::uint32_t now = 0;
        ASSERT_TRUE(FILES::ModificationTime(Path(), now));
        const auto path = NativePath(Path());
        const auto time = std::filesystem::last_write_time(path);
        const auto whole = std::chrono::floor<std::chrono::seconds>(time);
        std::filesystem::last_write_time(path,
                                         whole + std::chrono::seconds(seconds - static_cast<long long>(now)));
    }

private:
    TemporaryFolder m_folder;
};

std::string RandomBytes(Random& random, std::size_t count) {
    std::string bytes(count, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random.Below(256));
    return bytes;
}

/// The steps as they are told, one word at a time.
unsigned int Fingerprint(std::string_view bytes, std::uint32_t time, unsigned int maxWords) {
    CRCChecksum checksum;
    checksum += time;
    const std::size_t block = maxWords < 4096 ? maxWords : 4096;
    if (block == 0) return checksum.Value();
    std::size_t remaining = maxWords;
    const std::size_t words = bytes.size() / 4;
    for (std::size_t word = 0; word < words || word == 0;) {
        const std::size_t count = std::min(block, words - word);
        for (std::size_t i = 0; i < count; ++i, ++word) {
            unsigned int value = 0;
            for (unsigned b = 4; b-- > 0;)
                value = value << 8 | static_cast<unsigned char>(bytes[word * 4 + b]);
            checksum += value;
        }
        if (count < block) break;
        if (maxWords != 0xFFFFFFFF) {
            if (count > remaining) break;
            remaining -= count;
        }
    }
    return checksum.Value();
}

} // namespace

TEST(FileChecksum, MatchesThePlainStepsAtEveryLimitAndLength) {
    Random random(50);
    for (const unsigned int maxWords :
         {1u, 2u, 3u, 100u, 4095u, 4096u, 4097u, 8191u, 8192u, 8193u, 0xFFFFFFFEu, 0xFFFFFFFFu})
        for (const std::size_t words :
             {0u,    1u,    2u,    3u,    99u,   100u,  101u,   199u,   200u,   201u,   4095u,
              4096u, 4097u, 8190u, 8191u, 8192u, 8193u, 12287u, 12288u, 12289u, 16384u, 20000u})
            for (const std::size_t odd : {0u, 3u}) {
                const std::string bytes = RandomBytes(random, words * 4 + odd);
                const TestFile file(bytes);
                EXPECT_EQ(Fingerprint(bytes, 1000000000, maxWords),
                          FileChecksum(file.Path(), maxWords).Value())
                    << maxWords << " words of " << words << " and " << odd << " bytes";
            }
}

TEST(FileChecksum, ALimitCoversUpToOneBlockMore) {
    Random random(51);
    std::string bytes = RandomBytes(random, 40 * 4);
    const auto covers = [&](unsigned int maxWords, std::size_t word) {
        const unsigned int before = FileChecksum(TestFile(bytes).Path(), maxWords).Value();
        std::string changed = bytes;
        changed[word * 4] ^= 1;
        return before != FileChecksum(TestFile(changed).Path(), maxWords).Value();
    };
    EXPECT_TRUE(covers(10, 0));
    EXPECT_TRUE(covers(10, 9));
    EXPECT_TRUE(covers(10, 19)); // reading stops only when more was read than remained: one block later
    EXPECT_FALSE(covers(10, 20));
    EXPECT_FALSE(covers(10, 39));
    EXPECT_TRUE(covers(0xFFFFFFFF, 39));
}

TEST(FileChecksum, TrailingBytesThatMakeNoWordDoNotCount) {
    EXPECT_EQ(FileChecksum(TestFile("abcd").Path(), 100).Value(),
              FileChecksum(TestFile("abcdxyz").Path(), 100).Value());
    EXPECT_NE(FileChecksum(TestFile("abcd").Path(), 100).Value(),
              FileChecksum(TestFile("abcdxyzz").Path(), 100).Value());
}

TEST(FileChecksum, ALimitOfZeroDoesNotHang) {
    CRCChecksum time;
    time += 1000000000;
    EXPECT_EQ(time.Value(), FileChecksum(TestFile("some content").Path(), 0).Value());
    EXPECT_EQ(time.Value(), FileChecksum(TestFile("").Path(), 0).Value());
    EXPECT_EQ(0u, FileChecksum(L"", 0).Value());
}

TEST(FileChecksum, AnEmptyFileHasTheChecksumOfItsTime) {
    CRCChecksum time;
    time += 1000000000;
    EXPECT_EQ(time.Value(), FileChecksum(TestFile("").Path(), 100).Value());
    EXPECT_EQ(time.Value(), FileChecksum(TestFile("abc").Path(), FileChecksum::ALL_WORDS).Value());
}

TEST(FileChecksum, IsZeroWithoutAReadableFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(0u, FileChecksum(std::wstring(), 100).Value());
    EXPECT_EQ(0u, FileChecksum(folder.File(L"missing"), 100).Value());
    EXPECT_EQ(0u, FileChecksum(WidePath(folder.Path()), 100).Value());
    EXPECT_EQ(folder.File(L"missing"), FileChecksum(folder.File(L"missing"), 100).Path());
}

TEST(FileChecksum, ANewTimeChangesTheValue) {
    const TestFile file("some content");
    const FileChecksum before(file.Path(), 100);
    EXPECT_TRUE(before == FileChecksum(file.Path(), 100));
    file.Touch(1000000001);
    EXPECT_TRUE(before != FileChecksum(file.Path(), 100));
    EXPECT_FALSE(before == FileChecksum(file.Path(), 100));
    file.Touch(1000000000);
    EXPECT_TRUE(before == FileChecksum(file.Path(), 100));
}

TEST(FileChecksum, TakesTheLow32BitsOfAnyTime) {
    for (const long long seconds : {0ll, 1ll, -1ll, -1000000ll, 2147483647ll, 2147483648ll, 4294967295ll,
                                    4294967296ll, 4294967301ll, 5000000000ll}) {
        const TestFile file("abcd", seconds);
        EXPECT_EQ(Fingerprint("abcd", static_cast<std::uint32_t>(seconds), 100),
                  FileChecksum(file.Path(), 100).Value())
            << seconds;
    }
}

TEST(FileChecksum, ComparesValuesOnly) {
    const TestFile a("content"), b("content"), c("another");
    EXPECT_TRUE(FileChecksum(a.Path(), 100) == FileChecksum(b.Path(), 100));
    EXPECT_FALSE(FileChecksum(a.Path(), 100) != FileChecksum(b.Path(), 100));
    EXPECT_TRUE(FileChecksum(a.Path(), 100) != FileChecksum(c.Path(), 100));
}

TEST(FileChecksum, CopiesAndMovesCarryPathAndValue) {
    const TestFile a("content");
    const FileChecksum original(a.Path(), 100);
    FileChecksum copied(original);
    FileChecksum assigned(L"", 0);
    assigned = original;
    FileChecksum moved(std::move(copied));
    FileChecksum moveAssigned(L"", 0);
    moveAssigned = std::move(assigned);
    for (const FileChecksum& copy : {moved, moveAssigned}) {
        EXPECT_EQ(original.Value(), copy.Value());
        EXPECT_EQ(a.Path(), copy.Path());
    }
}
