// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/CRCFile.h"

#include "VelmBase/CRCChecksum.h"
#include "tests/support/Random.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

unsigned int Crc(std::string_view bytes) {
    CRCChecksum checksum;
    checksum.Update(bytes.data(), bytes.size());
    return checksum.Value();
}

/// The data with the trailer behind it.
std::string Sealed(std::string_view data) {
    std::string bytes(data);
    for (unsigned int crc = Crc(data), i = 0; i < 4; ++i, crc >>= 8) bytes += static_cast<char>(crc);
    return bytes;
}

std::string RandomBytes(Random& random, std::size_t count) {
    std::string bytes(count, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random.Below(256));
    return bytes;
}

/// A file of its own with this content.
class TestFile {
public:
    TestFile() = default;
    explicit TestFile(std::string_view bytes) { WriteBytes(Path(), bytes); }
    std::wstring Path() const { return m_folder.File(L"data.bin"); }
    std::string Bytes() const { return ReadBytes(Path()); }
    bool Exists() const { return m_folder.NumFiles() != 0; }

    /// Whether it opens with "rb".
    bool Passes() const { return static_cast<bool>(CRCFile().Open(Path(), L"rb")); }

private:
    TemporaryFolder m_folder;
};

void WriteThrough(const std::wstring& path, std::string_view data, const wchar_t* mode = L"wb") {
    CRCFile file;
    ASSERT_TRUE(file.Open(path, mode));
    ASSERT_EQ(data.size(), file.Write(data.data(), 1, data.size()));
    file.Close();
}

std::string ReadAll(CRCFile& file, std::size_t most = 1u << 24) {
    std::string bytes(most, '\0');
    bytes.resize(file.Read(bytes.data(), 1, most));
    return bytes;
}

std::wstring OpenError(const std::wstring& path) { return L"Error opening \"" + path + L"\"."; }
std::wstring ChecksumError(const std::wstring& path) {
    return OpenError(path) + L" The file has an invalid checksum";
}

} // namespace

TEST(CRCFile, StartsClosed) {
    CRCFile file;
    char buffer[4];
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(0u, file.Read(buffer, 1, 4));
    EXPECT_EQ(0u, file.Write("abcd", 1, 4));
    EXPECT_FALSE(file.Seek(0, SEEK_SET));
    EXPECT_EQ(0u, file.Tell());
    file.Rewind();
    file.Flush();
    file.Close();
    file.Close();
    EXPECT_FALSE(file.IsOpen());
}

TEST(CRCFile, AWrittenFileGetsItsTrailerOnClosing) {
    for (const std::size_t length : {0u, 1u, 3u, 4u, 5u, 4095u, 4096u, 4097u, 100000u}) {
        Random random(length);
        const std::string data = RandomBytes(random, length);
        const TestFile file;
        WriteThrough(file.Path(), data);
        EXPECT_EQ(Sealed(data), file.Bytes());
        CRCFile reader;
        EXPECT_TRUE(reader.Open(file.Path(), L"rb"));
        EXPECT_TRUE(reader.IsOpen());
        EXPECT_EQ(0u, reader.Tell());
        EXPECT_EQ(Sealed(data), ReadAll(reader)); // the trailer is not hidden
        reader.Close();
        EXPECT_FALSE(reader.IsOpen());
        EXPECT_EQ(Sealed(data), file.Bytes());
    }
}

TEST(CRCFile, KnownTrailer) {
    const TestFile file;
    WriteThrough(file.Path(), "123456789");
    EXPECT_EQ("123456789\x26\x39\xF4\xCB", file.Bytes());
    EXPECT_EQ(0xCBF43926u, CRCFile::GetCRC(file.Path()));
}

TEST(CRCFile, TheDestructorClosesAndSeals) {
    const TestFile file;
    {
        CRCFile writer;
        ASSERT_TRUE(writer.Open(file.Path(), L"wb"));
        EXPECT_EQ(3u, writer.Write("abc", 1, 3));
    }
    EXPECT_EQ(Sealed("abc"), file.Bytes());
}

TEST(CRCFile, OpeningAnotherFileClosesAndSealsTheFirst) {
    const TestFile first, second;
    CRCFile writer;
    ASSERT_TRUE(writer.Open(first.Path(), L"wb"));
    EXPECT_EQ(3u, writer.Write("abc", 1, 3));
    ASSERT_TRUE(writer.Open(second.Path(), L"wb"));
    EXPECT_EQ(Sealed("abc"), first.Bytes());
    EXPECT_EQ(2u, writer.Write("xy", 1, 2));
    EXPECT_FALSE(writer.Open(L"", L"rb")); // also when the next one fails
    EXPECT_FALSE(writer.IsOpen());
    EXPECT_EQ(Sealed("xy"), second.Bytes());
}

TEST(CRCFile, EveryWritingModeSealsAndCanReadBack) {
    for (const wchar_t* mode : {L"w", L"wb", L"w+", L"w+b", L"wb+", L"wt"}) {
        const TestFile file("old content that is longer");
        CRCFile writer;
        ASSERT_TRUE(writer.Open(file.Path(), mode));
        EXPECT_EQ(8u, writer.Write("a\nb\r\nc\x1A", 1, 8)); // always binary; the NUL counts
        EXPECT_TRUE(writer.Seek(0, SEEK_SET));
        EXPECT_EQ(std::string("a\nb\r\nc\x1A", 8), ReadAll(writer, 100));
        writer.Close();
        EXPECT_EQ(Sealed(std::string_view("a\nb\r\nc\x1A", 8)), file.Bytes()) << mode;
        EXPECT_TRUE(file.Passes());
    }
}

TEST(CRCFile, ACapitalWIsWritingAndNoModeOfTheRuntime) {
    // It counts as writing, so nothing is checked; then the runtime refuses the mode.
    const TestFile file("not sealed");
    CRCFile writer;
    const ErrorString result = writer.Open(file.Path(), L"W");
    EXPECT_FALSE(result);
    EXPECT_EQ(OpenError(file.Path()), result.Text());
    EXPECT_FALSE(writer.IsOpen());
    EXPECT_EQ("not sealed", file.Bytes());
    // A "W" behind a letter that the runtime knows makes a reader a writer: no check, and a seal at the end.
    ASSERT_TRUE(writer.Open(file.Path(), L"r+W"));
    writer.Close();
    EXPECT_EQ(Sealed("not sealed"), file.Bytes());
}

TEST(CRCFile, UnknownModesAreErrors) {
    for (const wchar_t* mode : {L"", L"x", L"b", L" rb", L"+", L"\u0161"}) {
        const TestFile file(Sealed("abc"));
        CRCFile reader;
        const ErrorString result = reader.Open(file.Path(), mode);
        EXPECT_FALSE(result) << mode;
        EXPECT_EQ(OpenError(file.Path()), result.Text());
        EXPECT_EQ(Sealed("abc"), file.Bytes());
    }
    const TestFile file(Sealed("abc"));
    CRCFile reader;
    EXPECT_EQ(OpenError(file.Path()), reader.Open(file.Path(), nullptr).Text());
}

TEST(CRCFile, AFileThatCannotBeOpenedIsNamed) {
    const TemporaryFolder folder;
    for (const std::wstring& path : {folder.File(L"missing \u03A9.bin"), folder.File(L"missing/x.bin"),
                                     std::wstring(), WidePath(folder.Path())})
        for (const wchar_t* mode : {L"rb", L"r+b", L"r"}) {
            CRCFile file;
            const ErrorString result = file.Open(path, mode);
            EXPECT_FALSE(result);
            EXPECT_EQ(OpenError(path), result.Text());
            EXPECT_FALSE(file.IsOpen());
        }
    CRCFile file;
    EXPECT_EQ(OpenError(folder.File(L"missing/x.bin")),
              file.Open(folder.File(L"missing/x.bin"), L"wb").Text());
    EXPECT_EQ(OpenError(WidePath(folder.Path())), file.Open(WidePath(folder.Path()), L"wb").Text());
    EXPECT_EQ(0u, folder.NumFiles());
}

TEST(CRCFile, AFileShorterThanItsTrailerFailsTheCheck) {
    for (const char* bytes : {"", "a", "ab", "abc"}) {
        const TestFile file(bytes);
        CRCFile reader;
        const ErrorString result = reader.Open(file.Path(), L"rb");
        EXPECT_FALSE(result);
        EXPECT_EQ(ChecksumError(file.Path()), result.Text());
        EXPECT_FALSE(reader.IsOpen());
        EXPECT_EQ(bytes, file.Bytes());
    }
    EXPECT_TRUE(TestFile(std::string(4, '\0')).Passes()); // no data: the sum of nothing is 0
    EXPECT_FALSE(TestFile(std::string_view("\0\0\0\1", 4)).Passes());
}

TEST(CRCFile, ChangedDataIsAnErrorThatLeavesTheObjectClosed) {
    std::string bytes = Sealed("some data");
    bytes[2] ^= 1;
    const TestFile file(bytes);
    for (const wchar_t* mode : {L"rb", L"r", L"r+b", L"rb+", L"a", L"ab", L"a+b"}) {
        CRCFile reader;
        const ErrorString result = reader.Open(file.Path(), mode);
        EXPECT_FALSE(result);
        EXPECT_EQ(ChecksumError(file.Path()), result.Text());
        EXPECT_FALSE(reader.IsOpen());
        EXPECT_EQ(bytes, file.Bytes());
    }
}

TEST(CRCFile, OtherModesCheckOnOpeningAndAddNoTrailer) {
    for (const wchar_t* mode : {L"rb", L"r", L"rt", L"r+b", L"rb+", L"r+", L"a", L"ab", L"a+b", L"ab+"}) {
        const TestFile file(Sealed("some data"));
        CRCFile reader;
        EXPECT_TRUE(reader.Open(file.Path(), mode)) << mode;
        EXPECT_EQ(0u, reader.Tell()) << mode;
        EXPECT_EQ(Sealed("some data"), ReadAll(reader, 100)) << mode;
        reader.Close();
        EXPECT_EQ(Sealed("some data"), file.Bytes());
    }
}

TEST(CRCFile, AnUpdatedFileKeepsItsOldTrailerAndFailsTheNextCheck) {
    const TestFile file(Sealed("some data"));
    CRCFile writer;
    ASSERT_TRUE(writer.Open(file.Path(), L"r+b"));
    EXPECT_EQ(4u, writer.Write("SOME", 1, 4));
    writer.Close();
    EXPECT_EQ("SOME data" + Sealed("some data").substr(9), file.Bytes());
    EXPECT_FALSE(file.Passes());
}

TEST(CRCFile, AnAppendedFileGetsNoNewTrailer) {
    const TestFile file(Sealed("some data"));
    CRCFile writer;
    ASSERT_TRUE(writer.Open(file.Path(), L"ab"));
    EXPECT_EQ(4u, writer.Write("more", 1, 4));
    writer.Close();
    EXPECT_EQ(Sealed("some data") + "more", file.Bytes());
    EXPECT_FALSE(file.Passes());
}

TEST(CRCFile, AppendingToAMissingFileCreatesItAndFailsTheCheck) {
    const TestFile file;
    CRCFile writer;
    const ErrorString result = writer.Open(file.Path(), L"ab");
    EXPECT_FALSE(result);
    EXPECT_EQ(ChecksumError(file.Path()), result.Text());
    EXPECT_FALSE(writer.IsOpen());
    EXPECT_TRUE(file.Exists());
    EXPECT_EQ("", file.Bytes());
}

TEST(CRCFile, AFileOpenedForReadingCannotBeWritten) {
    const TestFile file(Sealed("some data"));
    CRCFile reader;
    ASSERT_TRUE(reader.Open(file.Path(), L"rb"));
    EXPECT_EQ(0u, reader.Write("SOME", 1, 4));
    reader.Close();
    EXPECT_EQ(Sealed("some data"), file.Bytes());
}

TEST(CRCFile, BlocksCountItems) {
    const TestFile file;
    CRCFile writer;
    ASSERT_TRUE(writer.Open(file.Path(), L"wb"));
    EXPECT_EQ(3u, writer.Write("aabbcc", 2, 3));
    EXPECT_EQ(0u, writer.Write("x", 0, 3));
    EXPECT_EQ(0u, writer.Write("x", 1, 0));
    writer.Rewind();
    char buffer[16] = {};
    EXPECT_EQ(1u, writer.Read(buffer, 4, 3)); // six bytes hold one whole item of four
    EXPECT_EQ(std::string("aabb"), std::string(buffer, 4));
    EXPECT_EQ(0u, writer.Read(buffer, 0, 3));
    writer.Close();
    EXPECT_EQ(Sealed("aabbcc"), file.Bytes());
}

TEST(CRCFile, SeekTellAndRewind) {
    const TestFile file(Sealed("0123456789"));
    CRCFile reader;
    ASSERT_TRUE(reader.Open(file.Path(), L"rb"));
    EXPECT_TRUE(reader.Seek(3, SEEK_SET));
    EXPECT_EQ(3u, reader.Tell());
    EXPECT_TRUE(reader.Seek(-1, SEEK_CUR));
    EXPECT_EQ(2u, reader.Tell());
    EXPECT_TRUE(reader.Seek(-4, SEEK_END));
    EXPECT_EQ(10u, reader.Tell());
    EXPECT_FALSE(reader.Seek(-1, SEEK_SET));
    EXPECT_FALSE(reader.Seek(-100, SEEK_CUR));
    EXPECT_FALSE(reader.Seek(0, 77));
    EXPECT_EQ(10u, reader.Tell());
    reader.Rewind();
    EXPECT_EQ(0u, reader.Tell());
    char byte = 0;
    EXPECT_EQ(1u, reader.Read(&byte, 1, 1));
    EXPECT_EQ('0', byte);
    EXPECT_TRUE(reader.Seek(100, SEEK_SET)); // past the end is a place, with nothing to read
    EXPECT_EQ(0u, reader.Read(&byte, 1, 1));
    EXPECT_TRUE(reader.Flush());
}

TEST(CRCFile, FlushBringsTheDataToTheFile) {
    const TestFile file;
    CRCFile writer;
    ASSERT_TRUE(writer.Open(file.Path(), L"wb"));
    EXPECT_EQ(3u, writer.Write("abc", 1, 3));
    EXPECT_TRUE(writer.Flush());
    EXPECT_EQ("abc", file.Bytes());
}

TEST(CRCFile, GetCRCGivesTheStoredTrailerUnchecked) {
    EXPECT_EQ(0xCBF43926u, CRCFile::GetCRC(TestFile(Sealed("123456789")).Path()));
    EXPECT_EQ(0x04030201u, CRCFile::GetCRC(TestFile("\x01\x02\x03\x04").Path()));
    EXPECT_EQ(0x04030201u, CRCFile::GetCRC(TestFile("xyz\x01\x02\x03\x04").Path()));
    EXPECT_EQ(0x0D0A1A0Du, CRCFile::GetCRC(TestFile("x\r\x1A\n\r").Path())); // binary, whatever the bytes
    EXPECT_EQ(0u, CRCFile::GetCRC(TestFile("abc").Path()));
    EXPECT_EQ(0u, CRCFile::GetCRC(TestFile("").Path()));
    EXPECT_EQ(0u, CRCFile::GetCRC(TestFile().Path()));
    EXPECT_EQ(0u, CRCFile::GetCRC(std::wstring()));
    EXPECT_EQ(0u, CRCFile::GetCRC(WidePath(TemporaryFolder().Path())));
}

// Sharing

TEST(CRCFile_Sharing, BothObjectsUseOneFileAndCloseItOnce) {
    const TestFile file;
    CRCFile first, second;
    ASSERT_TRUE(first.Open(file.Path(), L"wb"));
    second = first;
    EXPECT_TRUE(second.IsOpen());
    EXPECT_EQ(3u, first.Write("abc", 1, 3));
    EXPECT_EQ(3u, second.Tell());
    EXPECT_EQ(3u, second.Write("def", 1, 3));
    first.Close();
    EXPECT_FALSE(first.IsOpen());
    EXPECT_FALSE(second.IsOpen());
    EXPECT_EQ(Sealed("abcdef"), file.Bytes());
    EXPECT_EQ(0u, second.Write("ghi", 1, 3));
    second.Close();
    EXPECT_EQ(Sealed("abcdef"), file.Bytes()); // no second trailer
}

TEST(CRCFile_Sharing, TheFirstDestructorClosesForBoth) {
    const TestFile file;
    CRCFile survivor;
    {
        CRCFile first;
        ASSERT_TRUE(first.Open(file.Path(), L"wb"));
        survivor = first;
        EXPECT_EQ(3u, first.Write("abc", 1, 3));
    }
    EXPECT_FALSE(survivor.IsOpen());
    EXPECT_EQ(Sealed("abc"), file.Bytes());
}

TEST(CRCFile_Sharing, OpeningThroughOneClosesTheOthers) {
    const TestFile one, two;
    CRCFile first, second;
    ASSERT_TRUE(first.Open(one.Path(), L"wb"));
    second = first;
    EXPECT_EQ(3u, second.Write("abc", 1, 3));
    ASSERT_TRUE(first.Open(two.Path(), L"wb"));
    EXPECT_EQ(Sealed("abc"), one.Bytes());
    EXPECT_FALSE(second.IsOpen());
    EXPECT_TRUE(first.IsOpen());
    second.Close();
    EXPECT_TRUE(first.IsOpen());
}

TEST(CRCFile_Sharing, AnObjectAssignedOverLetsItsFileGoSealed) {
    const TestFile one, two;
    CRCFile first, second;
    ASSERT_TRUE(first.Open(one.Path(), L"wb"));
    ASSERT_TRUE(second.Open(two.Path(), L"wb"));
    EXPECT_EQ(3u, first.Write("abc", 1, 3));
    first = second;
    EXPECT_EQ(3u, first.Write("xyz", 1, 3));
    second.Close();
    EXPECT_EQ(Sealed("xyz"), two.Bytes());
    EXPECT_EQ(Sealed("abc"), one.Bytes());
    first = CRCFile();
    EXPECT_FALSE(first.IsOpen());
}

TEST(CRCFile_Sharing, SelfAssignmentKeepsTheFileOpen) {
    const TestFile file;
    CRCFile writer;
    ASSERT_TRUE(writer.Open(file.Path(), L"wb"));
    const CRCFile& self = writer;
    writer = self;
    EXPECT_TRUE(writer.IsOpen());
    EXPECT_EQ(3u, writer.Write("abc", 1, 3));
    writer.Close();
    EXPECT_EQ(Sealed("abc"), file.Bytes());
}

// Damage

namespace {

/// Flips bits of one file in place, and says whether it still passes.
class Damage {
public:
    explicit Damage(std::string bytes) : m_bytes(std::move(bytes)), m_file(m_bytes) {
        m_stream.open(NativePath(m_file.Path()), std::ios::in | std::ios::out | std::ios::binary);
    }
    void Flip(std::size_t bit) {
        m_bytes[bit / 8] = static_cast<char>(m_bytes[bit / 8] ^ (1 << bit % 8));
        m_stream.seekp(static_cast<std::streamoff>(bit / 8));
        m_stream.put(m_bytes[bit / 8]);
        m_stream.flush();
    }
    bool Passes() const { return m_file.Passes(); }

private:
    std::string m_bytes;
    TestFile m_file;
    std::fstream m_stream;
};

} // namespace

TEST(CRCFile_Damage, EverySingleBitFlipOfAFileOf4KiBIsFound) {
    Random random(40);
    const std::string bytes = Sealed(RandomBytes(random, 4096));
    Damage damage(bytes);
    ASSERT_TRUE(damage.Passes());
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        damage.Flip(bit);
        ASSERT_FALSE(damage.Passes()) << bit;
        damage.Flip(bit);
    }
    EXPECT_TRUE(damage.Passes());
}

TEST(CRCFile_Damage, EveryTruncationIsFound) {
    Random random(41);
    const std::string bytes = Sealed(RandomBytes(random, 4096));
    const TestFile file(bytes);
    for (std::size_t length = bytes.size(); length-- > 0;) {
        std::filesystem::resize_file(NativePath(file.Path()), length);
        ASSERT_FALSE(file.Passes()) << length;
    }
}

TEST(CRCFile_Damage, RandomPairsOfFlippedBitsAreFound) {
    Random random(42);
    const std::string bytes = Sealed(RandomBytes(random, 4096));
    Damage damage(bytes);
    for (int i = 0; i < 200000; ++i) {
        const std::size_t first = random.Below(bytes.size() * 8);
        const std::size_t second = random.Below(bytes.size() * 8);
        if (first == second) continue;
        damage.Flip(first);
        damage.Flip(second);
        ASSERT_FALSE(damage.Passes()) << first << ' ' << second;
        damage.Flip(first);
        damage.Flip(second);
    }
}

TEST(CRCFile_Damage, AnyByteAddedOrRemovedIsFound) {
    Random random(43);
    const TestFile file;
    for (int i = 0; i < 2000; ++i) {
        std::string bytes = Sealed(RandomBytes(random, 1 + random.Below(300)));
        if (random.OnceIn(2))
            bytes.insert(random.Below(bytes.size() + 1), 1, static_cast<char>(random.Below(256)));
        else
            bytes.erase(random.Below(bytes.size()), 1);
        const bool stillSealed = bytes.size() >= 4 && Sealed(bytes.substr(0, bytes.size() - 4)) == bytes;
        WriteBytes(file.Path(), bytes);
        ASSERT_EQ(stillSealed, file.Passes());
        std::filesystem::remove(NativePath(file.Path())); // a file written over would go to the disk
    }
}

// Random use against a plain model

TEST(CRCFile, RandomScriptsOfWritesSeeksAndReadsMatchAPlainBuffer) {
    Random random(44);
    for (int script = 0; script < 400; ++script) {
        const TestFile file;
        CRCFile writer;
        ASSERT_TRUE(writer.Open(file.Path(), random.OnceIn(2) ? L"wb" : L"w+b"));
        std::string model;
        std::size_t position = 0;
        for (unsigned step = 0; step < 40; ++step) {
            switch (random.Below(6)) {
            case 0:
            case 1: {
                const std::string data = RandomBytes(random, random.Below(random.OnceIn(5) ? 10000 : 50));
                ASSERT_EQ(data.size(), writer.Write(data.data(), 1, data.size()));
                if (data.empty()) break;
                if (model.size() < position + data.size()) model.resize(position + data.size(), '\0');
                model.replace(position, data.size(), data);
                position += data.size();
                break;
            }
            case 2: { // reads and writes follow each other without a seek in between
                std::string buffer(random.Below(100), '\0');
                const std::size_t count = writer.Read(buffer.data(), 1, buffer.size());
                const std::string expected =
                    position < model.size() ? model.substr(position, buffer.size()) : std::string();
                ASSERT_EQ(expected, buffer.substr(0, count));
                position += count;
                break;
            }
            case 3: {
                const std::size_t target = random.Below(model.size() + 200);
                const int origin = static_cast<int>(random.Below(3));
                const std::size_t base = origin == 0 ? 0 : origin == 1 ? position : model.size();
                const int from[] = {SEEK_SET, SEEK_CUR, SEEK_END};
                ASSERT_TRUE(writer.Seek(static_cast<int>(target) - static_cast<int>(base), from[origin]));
                position = target;
                break;
            }
            case 4:
                writer.Rewind();
                position = 0;
                break;
            default:
                ASSERT_TRUE(writer.Flush());
            }
            ASSERT_EQ(position, writer.Tell());
        }
        writer.Close();
        ASSERT_EQ(Sealed(model), file.Bytes());
        ASSERT_TRUE(file.Passes());
    }
}

TEST(CRCFile, AClosedFileCannotBeFlushed) { EXPECT_FALSE(CRCFile().Flush()); }

TEST(CRCFile, TheSameFileOpenedAgainIsSealedFirst) {
    const TemporaryFolder folder;
    CRCFile file;
    ASSERT_TRUE(file.Open(folder.File(L"a"), L"wb"));
    EXPECT_EQ(9u, file.Write("123456789", 1, 9));
    EXPECT_TRUE(file.Open(folder.File(L"a"), L"rb"));
    EXPECT_EQ(0u, file.Tell());
    file.Close();
    EXPECT_EQ("123456789\x26\x39\xF4\xCB", ReadBytes(folder.File(L"a")));
}

TEST(CRCFile, AReadingModeWithAWIsNotCheckedAndGetsNoTrailer) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a"), "not sealed");
    CRCFile file;
    EXPECT_TRUE(file.Open(folder.File(L"a"), L"rbw"));
    char bytes[3] = {};
    EXPECT_EQ(3u, file.Read(bytes, 1, 3));
    file.Close();
    EXPECT_EQ("not sealed", ReadBytes(folder.File(L"a")));
}

TEST(CRCFile, AnExclusiveModeKeepsAFileThatIsThere) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a");
    WriteBytes(path, "precious");
    CRCFile file;
    for (const wchar_t* mode : {L"wx", L"wbx", L"w+bx"}) {
        EXPECT_EQ(L"Error opening \"" + path + L"\".", file.Open(path, mode).Text());
        EXPECT_EQ("precious", ReadBytes(path));
    }
}

TEST(CRCFile, MovesHandTheOpenFileOver) {
    static_assert(std::is_nothrow_move_constructible_v<CRCFile> &&
                  std::is_nothrow_move_assignable_v<CRCFile>);
    static_assert(!std::is_copy_constructible_v<CRCFile>);
    const TestFile first, second;
    CRCFile file;
    ASSERT_TRUE(file.Open(first.Path(), L"wb"));
    EXPECT_EQ(4u, file.Write("some", 1, 4));
    CRCFile moved(std::move(file));
    EXPECT_FALSE(file.IsOpen()); // NOLINT(bugprone-use-after-move): closed is what is promised
    EXPECT_EQ(5u, moved.Write(" data", 1, 5));
    CRCFile other;
    ASSERT_TRUE(other.Open(second.Path(), L"wb"));
    EXPECT_EQ(5u, other.Write("other", 1, 5));
    other = std::move(moved); // its own file goes sealed
    EXPECT_EQ(Sealed("other"), second.Bytes());
    EXPECT_TRUE(other.IsOpen());
    other.Close();
    EXPECT_EQ(Sealed("some data"), first.Bytes());
}
