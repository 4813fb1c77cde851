// SPDX-License-Identifier: MIT
// Every function that takes a path, in folders whose names no single code page holds.
#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/settings/CRCFile.h"
#include "UtilityDLL/settings/FileChecksum.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/File.h"
#include "VelmBase/FileObject.h"
#include "VelmConfigure/DataSearch.h"
#include "tests/support/Program.h"

#include <filesystem>
#include <gtest/gtest.h>

class WidePaths : public ::testing::TestWithParam<const wchar_t*> {
protected:
    WidePaths() { std::filesystem::create_directory(NativePath(m_folder.File(GetParam()))); }

    std::wstring Folder() const { return m_folder.File(GetParam()); }
    // Under the folder, and with the same characters in its own name.
    std::wstring File() const { return Folder() + L"/" + GetParam() + L".dat"; }

private:
    TemporaryFolder m_folder;
};

INSTANTIATE_TEST_SUITE_P(Folders, WidePaths,
                         ::testing::Values(L"\u00FCml\u00E4\u00FCt", L"\u03A9\u03BC\u03AD\u03B3\u03B1",
                                           L"\u6D77\u56FE", L"\U0001F6A2",
                                           L"all \u00FC \u03A9 \u6D77 \U0001F6A2 together"));

TEST_P(WidePaths, FilesAreReplacedAndRead) {
    ASSERT_EQ(std::error_code(), FILES::ReplaceContents(File(), "first"));
    ASSERT_EQ(std::error_code(), FILES::ReplaceContents(File(), "second"));
    EXPECT_EQ("second", ReadBytes(File()));
    FILES::Reader reader(File());
    ASSERT_TRUE(reader.IsOpen());
    char bytes[10];
    EXPECT_EQ(6u, reader.Read(bytes, sizeof bytes));
    std::uint32_t seconds = 0;
    EXPECT_TRUE(FILES::ModificationTime(File(), seconds));
    EXPECT_FALSE(FILES::Reader(Folder()).IsOpen());
}

TEST_P(WidePaths, StreamsOpenInEveryMode) {
    WriteBytes(File(), "x");
    for (const wchar_t* mode : {L"r", L"r+", L"a", L"a+", L"w", L"w+"}) {
        std::FILE* const stream = FILES::OpenStream(File(), mode);
        ASSERT_NE(nullptr, stream);
        std::fclose(stream);
    }
}

TEST_P(WidePaths, SettingsFilesAreSavedAndOpened) {
    IniFile file;
    file[L"Plot"][L"Scale"] << 5000;
    ASSERT_TRUE(file.Save(File()));
    EXPECT_TRUE(IniFile().Open(File()));
    EXPECT_TRUE(IniFile().Open(FileName(File())));
    FileObject object;
    EXPECT_TRUE(object.Open(File(), 0));
    EXPECT_TRUE(object.Save(File(), 0));
    const ErrorString missing = IniFile().Open(Folder() + L"/missing");
    EXPECT_EQ(L"Error opening \"" + Folder() + L"/missing\" for reading!", missing.Text());
}

TEST_P(WidePaths, GuardedFilesAndFingerprintsWork) {
    CRCFile file;
    ASSERT_TRUE(file.Open(File(), L"wb"));
    EXPECT_EQ(1u, file.Write("x", 1, 1));
    file.Close();
    EXPECT_TRUE(file.Open(File(), L"rb"));
    file.Close();
    EXPECT_EQ(0x8CDC1683u, CRCFile::GetCRC(File()));
    EXPECT_NE(0u, FileChecksum(File(), FileChecksum::ALL_WORDS).Value());
}

TEST_P(WidePaths, ColorTablesAreSavedAndOpened) {
    DXFColorTable table;
    table.AddEntry(1.5, 0x0000FF);
    ASSERT_TRUE(table.FileSave(CString(File())));
    DXFColorTable read;
    EXPECT_TRUE(read.FileOpen(CString(File())));
    EXPECT_EQ(1, read.NumEntries());
}

TEST_P(WidePaths, DataFoldersAreSearched) {
    WriteBytes(File(), "x");
    constexpr int kCategory = 4711;
    DataSearch& search = DataSearch::GetDataSearch();
    search.SetFolder(kCategory, Folder());
    std::wstring name = std::wstring(GetParam()) + L".dat";
    EXPECT_TRUE(search.GetFullPath(kCategory, name));
    EXPECT_EQ(File(), name);
    search.SetFolder(kCategory, L"");
}

TEST_P(WidePaths, TheProgramTakesAndPrintsThem) {
    const ProgramResult missing = RunChartutil({"settings", "show", ToUtf8(File())});
    EXPECT_EQ(3, missing.exitCode);
    EXPECT_NE(std::string::npos, missing.error.find(ToUtf8(File()))) << missing.error;
    WriteBytes(File(), "[Plot]\r\nScale = 5000\r\n");
    const ProgramResult shown = RunChartutil({"settings", "get", ToUtf8(File()), "Plot", "Scale"});
    EXPECT_EQ(0, shown.exitCode) << shown.error;
    EXPECT_EQ("5000\n", shown.output);
}
