// SPDX-License-Identifier: MIT
// What is installed, and what becomes of it: each test has fonts of its own, in a process of its own, since a
// process asks once what there is.

#include "Framework/device/DC.h"
#include "Framework/device/GdiObject.h"
#include "tests/Framework/posix/DeviceTestFont.h"
#include "tests/support/TestFiles.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <malloc.h>
#include <memory>
#include <new>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

/// A folder with the only fonts that there are.
class InstalledFonts {
public:
    void Add(const std::string& file, const std::string& bytes) const {
        std::filesystem::create_directories(Folder());
        WriteBytes(Folder() / file, bytes);
    }
    void Remove() const { std::filesystem::remove_all(Folder()); }
    std::filesystem::path Folder() const { return m_folder.Path() / "fonts"; }

    /// Runs in a process that sees these fonts. What fails there fails here.
    void See(const std::function<void()>& body) const {
        const std::string path = m_folder.Path().string();
        WriteBytes(m_folder.Path() / "fonts.conf", "<fontconfig><dir>" + Folder().string() +
                                                       "</dir><cachedir>" + path +
                                                       "/cache</cachedir></fontconfig>");
        std::fflush(nullptr);
        const pid_t process = fork();
        ASSERT_NE(-1, process);
        if (process == 0) {
            setenv("FONTCONFIG_FILE", (path + "/fonts.conf").c_str(), 1);
            body();
            std::fflush(nullptr);
            _exit(::testing::Test::HasFailure() ? 1 : 0);
        }
        int status = -1;
        waitpid(process, &status, 0);
        EXPECT_EQ(0, status) << "what failed is told above";
    }

private:
    TemporaryFolder m_folder;
};

struct Measured {
    UINT bytes = 0; ///< of the outline metrics
    OUTLINETEXTMETRICW metrics = {};
    CSize extent;
    std::wstring face;
};

Measured Measure(const std::wstring& face, const std::wstring& text = L"ABC", int height = 1000,
                 int weight = FW_NORMAL) {
    Measured measured;
    CDC dc;
    EXPECT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    dc.SetMapMode(MM_HIMETRIC);
    CFont font;
    EXPECT_TRUE(font.CreateFontW(height, 0, 0, 0, weight, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES,
                                 PROOF_QUALITY, 0, face.c_str()));
    EXPECT_NE(nullptr, CDC::SelectGdiObject(dc.m_hDC, font.m_hObject));
    measured.bytes = dc.GetOutlineTextMetricsW(sizeof measured.metrics, &measured.metrics);
    measured.extent = dc.GetTextExtent(text);
    measured.face = dc.GetTextFaceW().GetString();
    return measured;
}

/// A font that stays until this goes.
class LivingFont {
public:
    explicit LivingFont(const std::wstring& face, int height = 1000) {
        EXPECT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        m_dc.SetMapMode(MM_HIMETRIC);
        EXPECT_TRUE(m_font.CreateFontW(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, face.c_str()));
        EXPECT_NE(nullptr, CDC::SelectGdiObject(m_dc.m_hDC, m_font.m_hObject));
    }
    int Width(const std::wstring& text) { return m_dc.GetTextExtent(text).cx; }

private:
    CDC m_dc;
    CFont m_font;
};

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

/// A font whose file takes that much.
void AddLarge(const InstalledFonts& fonts, const std::u16string& family, int megabytes, int first = 'A') {
    TestFont font;
    font.family = family;
    font.first = first;
    fonts.Add("large" + std::to_string(family.back()) + ".ttf",
              font.Bytes() + std::string(std::size_t(megabytes) * kMegabyte, '\0'));
}

// With the large blocks, which the heap has apart; 0 under a sanitizer.
std::size_t MemoryInUse() {
    const auto memory = mallinfo2();
    return memory.uordblks + memory.hblkhd;
}

void Limit(decltype(RLIMIT_AS) resource, rlim_t most) {
    rlimit limit = {};
    EXPECT_EQ(0, getrlimit(resource, &limit));
    limit.rlim_cur = most;
    EXPECT_EQ(0, setrlimit(resource, &limit));
}

// The addresses that are in use, in bytes.
std::size_t AddressesInUse() {
    return std::stoull(ReadBytes(std::filesystem::path("/proc/self/statm"))) *
           static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void ExpectNothing(const Measured& measured) {
    EXPECT_EQ(0u, measured.bytes);
    EXPECT_EQ(0, measured.extent.cx);
    EXPECT_EQ(0, measured.extent.cy);
}

std::u16string Numbered(int number) {
    std::u16string name = u"Test ";
    for (const char digit : std::to_string(number)) name += static_cast<char16_t>(digit);
    return name;
}
std::wstring Name(int number) { return L"Test " + std::to_wstring(number); }

} // namespace

TEST(DeviceInstalledFonts, WithoutAnyFontNothingIsMeasured) {
    InstalledFonts().See([] {
        ExpectNothing(Measure(L"Arial"));
        EXPECT_EQ(L"", Measure(L"").face);
        CDC dc;
        ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        const FONTENUMPROCW fail = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM) { return 0; };
        EXPECT_EQ(1, EnumFontFamiliesExW(dc.m_hDC, nullptr, fail, 0, 0));
    });
}

TEST(DeviceInstalledFonts, BitmapFontIsSelectedByItsNameAloneAndHasNoMeasures) {
    const InstalledFonts fonts;
    fonts.Add("bits.bdf", BitmapFont("Bits"));
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.See([] {
        const Measured bits = Measure(L"bits");
        ExpectNothing(bits);
        EXPECT_EQ(L"Bits", bits.face);
        EXPECT_EQ(L"Test", Measure(L"Another").face);
        EXPECT_EQ(1500, Measure(L"Another").extent.cx);
    });
}

TEST(DeviceInstalledFonts, BitmapFontIsEnumeratedAsOne) {
    const InstalledFonts fonts;
    fonts.Add("bits.bdf", BitmapFont("Bits"));
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.See([] {
        CDC dc;
        ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        std::vector<std::pair<std::wstring, DWORD>> found;
        const FONTENUMPROCW keep = [](const LOGFONTW* font, const TEXTMETRICW*, DWORD type, LPARAM list) {
            // NOLINTNEXTLINE(performance-no-int-to-ptr): what the caller handed over
            reinterpret_cast<decltype(found)*>(list)->emplace_back(font->lfFaceName, type);
            return 1;
        };
        EnumFontFamiliesExW(dc.m_hDC, nullptr, keep, reinterpret_cast<LPARAM>(&found), 0);
        const decltype(found) expected = {{L"Bits", RASTER_FONTTYPE}, {L"Test", TRUETYPE_FONTTYPE}};
        EXPECT_EQ(expected, found);
    });
}

TEST(DeviceInstalledFonts, UsersLanguageDoesNotCount) {
    TestFont font;
    font.family = u"Another";
    const InstalledFonts fonts;
    fonts.Add("another.ttf", font.Bytes());
    fonts.Add("test.ttf", TestFont().Bytes());
    for (const char* const language : {"C", "ja_JP.UTF-8", "ar_EG.UTF-8"})
        fonts.See([&] {
            for (const char* const variable : {"LANG", "LC_ALL", "LC_CTYPE", "FC_LANG"})
                setenv(variable, language, 1);
            EXPECT_EQ(L"Test", Measure(L"Test").face);
            EXPECT_EQ(1500, Measure(L"Test").extent.cx);
        });
}

TEST(DeviceInstalledFonts, FontWithOutlinesGoesBeforeTheBitmapsOfItsFamily) {
    const InstalledFonts fonts;
    fonts.Add("bits.bdf", BitmapFont("Test"));
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.See([] { EXPECT_EQ(1500, Measure(L"Test").extent.cx); });
}

TEST(DeviceInstalledFonts, BitmapFontsAloneHaveNoMeasures) {
    const InstalledFonts fonts;
    fonts.Add("bits.bdf", BitmapFont("Bits"));
    fonts.See([] { ExpectNothing(Measure(L"Arial")); });
}

TEST(DeviceInstalledFonts, CellComesFromTheNextTableWhereOneHasNone) {
    struct Row {
        const char* what;
        TestFont font;
        int ascent, descent, external;
    };
    TestFont all, noOs2, noWin, noHeader, none, negative;
    noOs2.hasOs2 = false;
    noWin.winAscent = noWin.winDescent = 0;
    noHeader = noWin;
    noHeader.ascent = noHeader.descent = noHeader.lineGap = 0;
    none = noHeader;
    none.typoAscent = none.typoDescent = 0;
    negative = noOs2;
    negative.ascent = -750;
    for (const Row& row :
         {Row{"Windows' own", all, 800, 200, 90}, Row{"no OS/2", noOs2, 750, 250, 90},
          Row{"zero of Windows", noWin, 750, 250, 90}, Row{"no header", noHeader, 700, 150, 0},
          Row{"box", none, 700, 0, 0}, Row{"negative", negative, 700, 0, -1}}) {
        SCOPED_TRACE(row.what);
        const InstalledFonts fonts;
        fonts.Add("test.ttf", row.font.Bytes());
        fonts.See([&] {
            const Measured test = Measure(L"Test", L"ABC", -1000);
            ASSERT_EQ(sizeof(OUTLINETEXTMETRICW), test.bytes);
            EXPECT_EQ(row.ascent, test.metrics.otmTextMetrics.tmAscent);
            EXPECT_EQ(row.descent, test.metrics.otmTextMetrics.tmDescent);
            EXPECT_EQ(row.ascent + row.descent - 1000, test.metrics.otmTextMetrics.tmInternalLeading);
            if (row.external >= 0) {
                EXPECT_EQ(row.external, test.metrics.otmTextMetrics.tmExternalLeading);
            }
            EXPECT_EQ(1500, test.extent.cx);
        });
    }
}

TEST(DeviceInstalledFonts, AbsurdMeasuresAreStillDefined) {
    TestFont small, large, wide;
    small.family = u"Small";
    small.unitsPerEm = 16;
    large.family = u"Large";
    large.unitsPerEm = 16384;
    large.winAscent = large.winDescent = 0xFFFF;
    large.ascent = 32767;
    large.descent = -32768;
    large.lineGap = 32767;
    wide.family = u"Wide";
    wide.advance = 0xFFFF;
    wide.winAscent = 1;
    wide.winDescent = 0;
    const InstalledFonts fonts;
    fonts.Add("small.ttf", small.Bytes());
    fonts.Add("large.ttf", large.Bytes());
    fonts.Add("wide.ttf", wide.Bytes());
    fonts.See([] {
        for (const wchar_t* const face : {L"Small", L"Large", L"Wide"})
            for (const int height : {0, 1, -1, 1000, -1000, 2147483647, -2147483647 - 1}) {
                const Measured test = Measure(face, L"ABC", height);
                EXPECT_EQ(face, test.face);
                const TEXTMETRICW& text = test.metrics.otmTextMetrics;
                EXPECT_EQ(text.tmHeight, text.tmAscent + text.tmDescent);
                EXPECT_GE(test.extent.cx, 0);
                EXPECT_GE(test.extent.cy, 0);
            }
    });
}

TEST(DeviceInstalledFonts, CollectionHoldsSeveralFaces) {
    TestFont first, second;
    first.family = u"First";
    second.family = u"Second";
    second.advance = 700;
    const InstalledFonts fonts;
    fonts.Add("both.ttc", TestFont::Collection(first, second));
    fonts.See([] {
        EXPECT_EQ(1500, Measure(L"First").extent.cx);
        EXPECT_EQ(2100, Measure(L"Second").extent.cx);
    });
}

TEST(DeviceInstalledFonts, VariableFontHasTheWidthsOfTheWeightThatIsAskedFor) {
    TestFont font;
    font.boldAdvance = 620;
    const InstalledFonts fonts;
    fonts.Add("test.ttf", font.Bytes());
    fonts.See([] {
        EXPECT_EQ(1500, Measure(L"Test").extent.cx);
        EXPECT_EQ(3 * 620, Measure(L"Test", L"ABC", 1000, FW_BOLD).extent.cx);
    });
}

TEST(DeviceInstalledFonts, FamilyWithALongNameIsFoundByWhatALogicalFontHolds) {
    TestFont font;
    font.family = u"A Family Whose Name Has More Than Thirty-One Letters";
    const InstalledFonts fonts;
    fonts.Add("long.ttf", font.Bytes());
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.See([] {
        const std::wstring name = L"A Family Whose Name Has More Than Thirty-One Letters";
        EXPECT_EQ(name, Measure(name).face);
        CDC dc;
        ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        std::wstring first;
        const FONTENUMPROCW keep = [](const LOGFONTW* found, const TEXTMETRICW*, DWORD, LPARAM text) {
            // NOLINTNEXTLINE(performance-no-int-to-ptr): what the caller handed over
            *reinterpret_cast<std::wstring*>(text) = found->lfFaceName;
            return 0;
        };
        EnumFontFamiliesExW(dc.m_hDC, nullptr, keep, reinterpret_cast<LPARAM>(&first), 0);
        EXPECT_EQ(name.substr(0, 31), first);
        EXPECT_EQ(name, Measure(first).face);
    });
}

TEST(DeviceInstalledFonts, MeasuredFaceNeedsItsFileNoMore) {
    const InstalledFonts fonts;
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.See([&] {
        EXPECT_EQ(500, Measure(L"Test", L"A").extent.cx);
        fonts.Remove();
        EXPECT_EQ(1000, Measure(L"Test", L"BC").extent.cx);
        EXPECT_EQ(2000, Measure(L"Test", L"XY", 2000).extent.cx);
        EXPECT_EQ(500, Measure(L"Test", L"\u6D77").extent.cx); // no font has it
    });
}

TEST(DeviceInstalledFonts, FileThatIsGoneOrShorterSinceItWasFoundHasNoMeasures) {
    for (const bool isGone : {true, false}) {
        const InstalledFonts fonts;
        TestFont other;
        other.family = u"Other";
        fonts.Add("other.ttf", other.Bytes());
        fonts.Add("test.ttf", TestFont().Bytes());
        fonts.See([&] {
            EXPECT_EQ(L"Other", Measure(L"Other").face); // now it is known what there is
            if (isGone)
                std::filesystem::remove(fonts.Folder() / "test.ttf");
            else
                std::filesystem::resize_file(fonts.Folder() / "test.ttf", 100);
            ExpectNothing(Measure(L"Test"));
        });
    }
}

TEST(DeviceInstalledFonts, FileThatCanBeReadAgainIsMeasuredAgain) {
    const InstalledFonts fonts;
    TestFont other, helper;
    other.family = u"Other";
    helper.family = u"Helper";
    helper.first = 0x627;
    helper.advance = 300;
    fonts.Add("other.ttf", other.Bytes());
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.Add("helper.ttf", helper.Bytes());
    const auto moved = fonts.Folder().parent_path() / "moved";
    struct Row {
        const char* what;
        std::function<void()> hinder, restore;
    };
    for (const Row& row :
         {Row{"a file that is being replaced", [&] { std::filesystem::rename(fonts.Folder(), moved); },
              [&] { std::filesystem::rename(moved, fonts.Folder()); }},
          Row{"too many open files", [] { Limit(RLIMIT_NOFILE, 0); }, [] { Limit(RLIMIT_NOFILE, 200); }}}) {
        SCOPED_TRACE(row.what);
        fonts.See([&] {
            LivingFont font(L"Other"); // now it is known what there is
            EXPECT_EQ(500, font.Width(L"A"));
            row.hinder();
            ExpectNothing(Measure(L"Test"));
            for (int i = 0; i < 3; ++i) EXPECT_EQ(1000, font.Width(L"A\u0628")); // the sign for missing ones
            row.restore();
            EXPECT_EQ(1500, Measure(L"Test").extent.cx);
            EXPECT_EQ(800, font.Width(L"A\u0628"));
        });
    }
}

TEST(DeviceInstalledFonts, FaceThatThereWasNoMemoryForIsMeasuredWhenThereIs) {
    if (MemoryInUse() == 0) GTEST_SKIP() << "a sanitizer takes too much memory for a limit";
    const InstalledFonts fonts;
    fonts.Add("test.ttf", TestFont().Bytes());
    AddLarge(fonts, u"Large", 60);
    fonts.See([&] {
        EXPECT_EQ(1500, Measure(L"Test").extent.cx);
        Limit(RLIMIT_AS, AddressesInUse() + 30 * kMegabyte);
        EXPECT_THROW(Measure(L"Large"), std::bad_alloc);
        Limit(RLIMIT_AS, RLIM_INFINITY);
        EXPECT_EQ(1500, Measure(L"Large").extent.cx);
    });
}

TEST(DeviceInstalledFonts, FileThatIsCutShortWhileItIsUsedDoesNoHarm) {
    const InstalledFonts fonts;
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.See([&] {
        EXPECT_EQ(500, Measure(L"Test", L"A").extent.cx);
        std::filesystem::resize_file(fonts.Folder() / "test.ttf", 0);
        EXPECT_EQ(1500, Measure(L"Test", L"XYZ").extent.cx);
    });
}

TEST(DeviceInstalledFonts, FaceOfALivingFontIsNotReadAgainHoweverManyOthersWere) {
    const InstalledFonts fonts;
    for (int i = 0; i < 6; ++i) AddLarge(fonts, Numbered(i), 30);
    fonts.See([&] {
        std::vector<std::unique_ptr<LivingFont>> living;
        for (const int height : {1000, 2000, 3000}) {
            for (int i = 0; i < 4; ++i) {
                living.push_back(std::make_unique<LivingFont>(Name(i), height));
                EXPECT_EQ(3 * height / 2, living.back()->Width(L"ABC"));
            }
            for (int i = 4; i < 6; ++i) EXPECT_EQ(1500, Measure(Name(i)).extent.cx); // the fonts of these go
            EXPECT_LT(MemoryInUse(), (4 * 30 + 64 + 5) * kMegabyte);
        }
        fonts.Remove();
        for (int i = 0; i < 4; ++i) EXPECT_EQ(6000, LivingFont(Name(i), 4000).Width(L"XYZ"));
        // Asked for in another way, by what is the same file.
        for (int i = 0; i < 4; ++i) EXPECT_LT(1500, Measure(Name(i), L"ABC", 1000, FW_BOLD).extent.cx);
        living.clear();
        EXPECT_LT(MemoryInUse(), (64 + 5) * kMegabyte);
    });
}

TEST(DeviceInstalledFonts, TwoLargeFacesThatHelpEachOtherOutStay) {
    const InstalledFonts fonts;
    AddLarge(fonts, u"Letters", 40);
    AddLarge(fonts, u"Arabic", 30, 0x627);
    fonts.See([&] {
        LivingFont first(L"Letters");
        EXPECT_EQ(1500, first.Width(L"A\u0627\u0628"));
        fonts.Remove();
        for (int height = 2000; height < 10'000; height += 1000) {
            LivingFont font(L"Letters", height);
            EXPECT_EQ(3 * height / 2, font.Width(L"A\u0628\u0627"));
        }
    });
}

TEST(DeviceInstalledFonts, MemoryIsBoundedHoweverManyFacesAndNamesAreMeasured) {
    const InstalledFonts fonts;
    constexpr int kFaces = 150;
    for (int i = 0; i < kFaces; ++i) {
        TestFont font;
        font.family = Numbered(i);
        fonts.Add("test" + std::to_string(i) + ".ttf", font.Bytes() + std::string(1 << 20, '\0'));
    }
    fonts.See([&] {
        for (int i = 0; i < kFaces; ++i) EXPECT_EQ(1500, Measure(Name(i)).extent.cx);
        EXPECT_LT(MemoryInUse(), 80 * kMegabyte); // 64 MB of files, and what is small
        for (int i = 0; i < 3000; ++i) Measure(L"Missing " + std::to_wstring(i));
        for (int i = 0; i < kFaces; ++i) EXPECT_EQ(1500, Measure(Name(i)).extent.cx); // some are read again
        EXPECT_LT(MemoryInUse(), 80 * kMegabyte);
    });
}

// The leak sanitizer cannot be asked, since it is told to let what fontconfig allocates pass.
TEST(DeviceInstalledFonts, WhatWasAskedForOnceTakesNoMemoryAfterwards) {
    const InstalledFonts fonts;
    fonts.Add("bits.bdf", BitmapFont("Bits"));
    for (int i = 0; i < 70; ++i) { // more than are kept
        TestFont font;
        font.family = Numbered(i);
        fonts.Add("test" + std::to_string(i) + ".ttf", font.Bytes());
    }
    fonts.See([] {
        int name = 0;
        const auto ask = [&] {
            for (int i = 0; i < 2000; ++i) Measure(L"Missing " + std::to_wstring(++name));
            for (int i = 0; i < 1000; ++i) Measure(std::wstring(40, L'x') + std::to_wstring(++name));
            for (std::size_t i = 0; i < 1000; ++i) // each spelled in another way
                Measure(std::wstring(i % 32, L' ') + L"B" + std::wstring(i / 32, L' ') + L"its");
            for (int i = 0; i < 500; ++i) Measure(Name(i % 70), L"\u6D77\u0628"); // looked for in the others
        };
        ask();
        const std::size_t before = MemoryInUse();
        ask();
        EXPECT_LT(MemoryInUse(), before + kMegabyte / 10); // below 25 bytes for each
    });
}

TEST(DeviceInstalledFonts, MemoryIsBoundedHoweverManyCharactersAreMeasured) {
    const InstalledFonts fonts;
    fonts.Add("test.ttf", TestFont().Bytes());
    fonts.See([] {
        Measure(L"Test");
        const std::size_t before = MemoryInUse();
        std::wstring all;
        for (int character = 0; character < 0x110000; ++character) all += static_cast<wchar_t>(character);
        EXPECT_GT(Measure(L"Test", all).extent.cx, 0);
        std::wstring().swap(all); // an assignment would leave it its memory
        EXPECT_LT(MemoryInUse(), before + 8 * kMegabyte);
    });
}
