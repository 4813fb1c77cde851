// SPDX-License-Identifier: MIT
// Files in tests/golden were composed without this library and reviewed: every platform must write these very
// bytes and accept them.
#include "UtilityDLL/settings/CRCFile.h"
#include "UtilityDLL/settings/FileChecksum.h"
#include "UtilityDLL/settings/HashedString.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/CRCChecksum.h"
#include "VelmBase/File.h"
#include "tests/support/TestFiles.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace {

std::filesystem::path Golden(const char* name) {
    return std::filesystem::path(TEST_DATA_FOLDER) / "golden" / name;
}

std::wstring EveryLatinCharacter() {
    std::wstring text;
    for (wchar_t c = 0xA1; c <= 0xFF; ++c) text += c;
    return text;
}

IniFile SealedFile() {
    IniFile file;
    Section& plot = file[L"Plot"];
    plot.SetComments(L"how the sheet is drawn");
    plot[L"Scale"] << 25000;
    plot[L"Rotation"] << -12.5;
    plot[L"Rotation"].SetComments(L"degrees");
    plot[L"Visible"] << true;
    plot[L"TrueColor"] << 4294967295ul;
    plot[L"Offset"] << -2147483647l - 1;
    plot[L"Huge"] << 1e20;
    plot[L"Huge"].SetComments(L"a double");
    plot.AddKey(L"");
    plot[plot.NumKeys() - 1].SetComments(L"alone on its line");
    plot[L"Font Name"] << L"Gro\u00DFe Schrift, \u00B5m";
    plot[L"Font Name"].SetComments(L"Stra\u00DFe");
    plot.AddChecksum();
    Section& latin = file[L"\u00DCberl\u00E4nge"];
    latin[L"Stra\u00DFe"] << L"\u00C4\u00D6\u00DC\u00E4\u00F6\u00FC\u00FF\u00B5\u00D7\u00F7";
    latin.AddKey(SectionKey(L"stra\u00DFe") << L"twice");
    latin[L"All"] << EveryLatinCharacter();
    latin[L"Sub"] << L"a\u001Ab";
    latin.AddChecksum();
    file.AddSection(Section(L"Empty"));
    return file;
}

} // namespace

TEST(CrossPlatform, ASealedSettingsFileIsWrittenByteForByte) {
    const TemporaryFolder folder;
    ASSERT_TRUE(SealedFile().Save(folder.File(L"sealed.ini")));
    EXPECT_EQ(ReadBytes(Golden("sealed.ini")), ReadBytes(folder.File(L"sealed.ini")));
}

TEST(CrossPlatform, ASealedSettingsFileIsReadAndItsSealsHold) {
    IniFile file;
    ASSERT_TRUE(file.Open(WidePath(Golden("sealed.ini"))));
    const IniFile expected = SealedFile();
    ASSERT_EQ(expected.NumSections(), file.NumSections());
    for (int i = 0; i < expected.NumSections(); ++i) {
        SCOPED_TRACE(ToUtf8(expected[i].GetName().String()));
        EXPECT_EQ(expected[i].GetName().String(), file[i].GetName().String());
        EXPECT_EQ(expected[i].NumKeys() == 0, file[i].IsModified());
        ASSERT_EQ(expected[i].NumKeys(), file[i].NumKeys());
        for (int k = 0; k < expected[i].NumKeys(); ++k) {
            EXPECT_EQ(expected[i][k].GetName().String(), file[i][k].GetName().String());
            EXPECT_EQ(expected[i][k].GetValue(), file[i][k].GetValue());
            EXPECT_EQ(expected[i][k].GetComments(), file[i][k].GetComments());
        }
    }
    unsigned long color = 0;
    long offset = 0;
    double huge = 0;
    const Section& plot = file[L"PLOT"];
    plot[L"truecolor"] >> color;
    plot[L"Offset"] >> offset;
    plot[L"Huge"] >> huge;
    EXPECT_EQ(0xFFFFFFFFul, color);
    EXPECT_EQ(-2147483648LL, offset);
    EXPECT_EQ(1e20, huge);
}

TEST(CrossPlatform, NamesHashAndTextsSumUpAlike) {
    std::istringstream lines(ReadBytes(Golden("names.txt")));
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        SCOPED_TRACE(line);
        ASSERT_LE(18u, line.size());
        const std::wstring name = FromUtf8(line.substr(18));
        EXPECT_EQ(std::stoul(line.substr(0, 8), nullptr, 16), HashedString<wchar_t>(name).Hash());
        CRCChecksum checksum;
        checksum += name;
        EXPECT_EQ(std::stoul(line.substr(9, 8), nullptr, 16), checksum.Value());
    }
    EXPECT_EQ(12, count);
}

TEST(CrossPlatform, AGuardedFileIsWrittenByteForByteAndAccepted) {
    const std::string golden = ReadBytes(Golden("guarded.bin"));
    ASSERT_EQ(5008u, golden.size());
    const TemporaryFolder folder;
    CRCFile file;
    ASSERT_TRUE(file.Open(folder.File(L"guarded.bin"), L"w"));
    EXPECT_EQ(5004u, file.Write(golden.data(), 1, 5004));
    file.Close();
    EXPECT_EQ(golden, ReadBytes(folder.File(L"guarded.bin")));
    EXPECT_TRUE(file.Open(WidePath(Golden("guarded.bin")), L"r"));
    EXPECT_EQ(0xAF2D5E45u, CRCFile::GetCRC(WidePath(Golden("guarded.bin"))));
}

TEST(CrossPlatform, AFingerprintIsTheSame) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"guarded.bin");
    std::filesystem::copy_file(Golden("guarded.bin"), NativePath(path));
    const std::chrono::sys_seconds time{std::chrono::seconds(1'600'000'000)};
    std::filesystem::last_write_time(NativePath(path), std::chrono::file_clock::from_sys(time));
    std::uint32_t seconds = 0;
    ASSERT_TRUE(FILES::ModificationTime(path, seconds));
    EXPECT_EQ(1'600'000'000u, seconds);
    EXPECT_EQ(0xE3A1F0C3u, FileChecksum(path, FileChecksum::ALL_WORDS).Value());
}
