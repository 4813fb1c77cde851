// SPDX-License-Identifier: MIT
// Nothing that is read, written or compared depends on the host's locale. The German and the Turkish locale
// are built here from the system's own sources, since few machines have them ready.

#include "tests/support/IniFiles.h"
#include "tests/support/NumberTexts.h"

#include "UtilityDLL/presentation/DXFInfo.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/GeoGridInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "UtilityDLL/presentation/PanelInfo.h"
#include "VelmBase/ColorTable.h"
#include "VelmBase/VelmString.h"

#include <clocale>
#include <cstdlib>
#include <cwctype>
#include <gtest/gtest.h>

// The C library's newlocale() never frees its copy of LOCPATH; the leak checker asks here what to leave out.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() { return "leak:__argz_add_sep"; }

namespace {

/// Makes `locale` that of the C library and of the C++ streams, for as long as it lives.
class HostLocale {
public:
    explicit HostLocale(const std::string& locale) : m_before(std::setlocale(LC_ALL, nullptr)) {
        m_isSet = std::setlocale(LC_ALL, locale.c_str()) != nullptr;
        if (m_isSet) std::locale::global(std::locale(locale));
    }
    ~HostLocale() {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, m_before.c_str());
    }
    HostLocale(const HostLocale&) = delete;
    HostLocale& operator=(const HostLocale&) = delete;

    bool IsSet() const { return m_isSet; }

private:
    std::string m_before;
    bool m_isSet;
};

class Locale : public ::testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite() {
        s_folder = std::make_unique<TemporaryFolder>();
        for (const char* name : {"de_DE", "tr_TR"})
            s_built = std::system(("localedef -c -i " + std::string(name) + " -f UTF-8 '" +
                                   (s_folder->Path() / name).string() + ".UTF-8' >/dev/null 2>&1")
                                      .c_str()) == 0 &&
                      s_built;
        setenv("LOCPATH", s_folder->Path().c_str(), 1);
    }
    static void TearDownTestSuite() {
        unsetenv("LOCPATH");
        s_folder.reset();
    }
    void SetUp() override {
        ASSERT_TRUE(s_built) << "localedef cannot build " << GetParam()
                             << ": the locale sources are missing (Debian's package locales)";
        m_locale = std::make_unique<HostLocale>(std::string(GetParam()) + ".UTF-8");
        ASSERT_TRUE(m_locale->IsSet());
    }

    static bool IsTurkish() { return std::string(GetParam()) == "tr_TR"; }

private:
    static inline std::unique_ptr<TemporaryFolder> s_folder;
    static inline bool s_built = true;
    std::unique_ptr<HostLocale> m_locale;
};

} // namespace

TEST_P(Locale, IsForeignIndeed) {
    EXPECT_STREQ(",", std::localeconv()->decimal_point);
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", 2.5);
    EXPECT_STREQ("2,5", text);
    std::wostringstream stream;
    stream << std::fixed << 1234.5;
    EXPECT_EQ(L"1.234,500000", stream.str());
    EXPECT_EQ(static_cast<wint_t>(IsTurkish() ? 0x130 : 'I'), std::towupper(L'i'));
}

TEST_P(Locale, ExtractionAgreesWithTheClassicStreams) { ExpectExtractionAgrees(100, 30000); }

TEST_P(Locale, WritingAgreesWithTheClassicStreams) { ExpectWritingAgrees(101, 10000); }

TEST_P(Locale, FilesHaveTheSameBytes) {
    IniFile file;
    Section& section = file[L"Title"];
    section[L"Width"] << 1234567.25;
    section[L"Count"] << 1234567;
    section[L"Color"] << 16711935ul;
    section[L"\u00DC"] << L"\u00FC";
    section.AddChecksum();
    EXPECT_EQ("[Title]\r\nWidth      = 1234567.250000\r\nCount      = 1234567\r\nColor      = 16711935\r\n"
              "\xDC          = \xFC\r\n$CHECKSUM$ = " +
                  std::to_string(section.ComputeChecksum()) + "\r\n\r\n",
              SavedBytes(file));
    const Opened back(SavedBytes(file));
    EXPECT_TRUE(back.result);
    EXPECT_EQ(Plain(file), back.Content());
    EXPECT_FALSE(back.file[0].IsModified());
    double width = 0;
    back.file[0][L"Width"] >> width;
    EXPECT_EQ(1234567.25, width);
}

TEST_P(Locale, NamesMatchAsEverywhere) {
    IniFile file;
    file[L"TITLE"][L"WIDTH I"] << 1;
    EXPECT_TRUE(file.HasSection(L"title"));
    EXPECT_TRUE(file[0].HasKey(L"width i"));
    EXPECT_FALSE(file[0].HasKey(L"width \u0131"));
    EXPECT_FALSE(file.HasSection(L"t\u0130tle"));
    EXPECT_EQ(HashedString<wchar_t>(L"title").Hash(), HashedString<wchar_t>(L"TITLE").Hash());
}

TEST_P(Locale, ItemsAreReadAndWrittenAsEverywhere) {
    CVelmString text(L',');
    text.AddItem(2.5f);
    text.AddItem(1234567);
    EXPECT_EQ(L"2.5,1234567", text.Text());
    float number = 0;
    EXPECT_TRUE(CVelmString(L"2.5", L';').GetItem(0, number));
    EXPECT_EQ(2.5f, number);
    EXPECT_EQ(2.5, atof(L"2.5"));
    EXPECT_EQ(2.0, atof(L"2,5"));
}

TEST_P(Locale, MessagesShowPlainNumbers) {
    EXPECT_EQ(L"Invalid section definition on line 12346",
              Opened(std::string(12345, '\n') + "[]").result.Text());
}

INSTANTIATE_TEST_SUITE_P(GermanAndTurkish, Locale, ::testing::Values("de_DE", "tr_TR"));

TEST_P(Locale, OneLineFormsAreThoseOfEverywhere) {
    DepthLabelInfo label;
    label.FromString(L"Title,1.23457e+06,5,8,10,45.5,1234.5,1,2,16711935,1234567,1,2,0,1,0,1");
    EXPECT_EQ(1.23457e+06f, label.Size());
    EXPECT_EQ(L"Title,1.23457e+06,5,8,210,45.5,1234.5,1,2,16711935,1234567,1,2,0,1,0,1", label.ToString());
    LineInfo line;
    line.FromString(L"1234.5,1,SOLID LINE,16711935,0");
    EXPECT_EQ(L"1234.5,210,Solid Line,16711935,0", line.ToString());
    DXFInfo dxf;
    dxf.FromString(L"2.25,5,1234567");
    EXPECT_EQ(L"2.25,170,1234567,16711680", dxf.ToString());
}

TEST_P(Locale, RecordsInSectionsAreThoseOfEverywhere) {
    GeoGridInfo grid;
    grid.LatInterval(1234567.25);
    grid.LatLonDecimals(1234567);
    Section section;
    grid.Write(section);
    EXPECT_EQ(L"1234567.25", section[L"LatInterval"].GetValue());
    EXPECT_EQ(L"1234567", section[L"LatLonDecimals"].GetValue());
    GeoGridInfo back;
    back.Read(section);
    EXPECT_TRUE(grid == back);
    PanelInfo().Write(L"\u0131", section); // the Turkish small i without a dot
    EXPECT_TRUE(section.HasKey(L"\u0131.wIdth"));
}

TEST_P(Locale, ColourTablesHaveTheSameText) {
    ColorTable table;
    table.AddEntry(1234567.25, 0x030201);
    FileObject file;
    table.FileSave(file);
    EXPECT_EQ(L"1234567.25,1,2,3", *file.GetItem(L"ColorTable", L"Entry(0)"));
    ColorTable back;
    EXPECT_TRUE(back.FileOpen(file));
    EXPECT_TRUE(table == back);
}
