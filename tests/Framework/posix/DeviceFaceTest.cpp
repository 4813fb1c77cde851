// Faces of font files that are damaged in every way: whatever comes out of them is defined.

#include "Framework/device/freetype/module/private/OutlineFace.h"
#include "tests/Framework/posix/DeviceTestFont.h"
#include "tests/support/TestFiles.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

// All kinds of text that a face can be asked for. True when it was a face.
bool IsUsed(const std::string& bytes, int index = 0, const std::string& variations = {}) {
    const auto face = OutlineFace::Open(bytes, {{}, index, variations});
    if (!face) return false;
    const OUTLINETEXTMETRICW& metrics = face->Metrics();
    EXPECT_GT(metrics.otmEMSquare, 0u);
    EXPECT_GT(metrics.otmTextMetrics.tmHeight, 0);
    EXPECT_EQ(metrics.otmTextMetrics.tmHeight,
              metrics.otmTextMetrics.tmAscent + metrics.otmTextMetrics.tmDescent);
    for (const wchar_t* const text : {L"ABC xyz \n\u00E9\u03A9\u6D77\U0001F6A2", L"e\u0301\u200D\u20DD",
                                      L"\u0644\u0627 \u0938\u094D\u0924\u0947 \u0E01\u0E33"})
        EXPECT_TRUE(std::isfinite(face->Advance(text).units));
    return true;
}

std::string VariableFont() {
    TestFont font;
    font.boldAdvance = 700;
    return font.Bytes();
}

} // namespace

TEST(DeviceFace, WholeFileIsAFace) {
    EXPECT_TRUE(IsUsed(TestFont().Bytes()));
    EXPECT_TRUE(IsUsed(VariableFont(), 0, "wght=550"));
    EXPECT_TRUE(IsUsed(TestFont::Collection({}, {}), 1));
    EXPECT_FALSE(IsUsed({}));
    EXPECT_FALSE(IsUsed("no font"));
}

TEST(DeviceFace, OtherFacesAndVariationsThanTheFileHasDoNoHarm) {
    for (const int index : {-1, 1, 0x10000, 0x30000, 0x7FFFFFFF, -2147483647 - 1})
        IsUsed(VariableFont(), index);
    for (const char* const variations :
         {"wght=1e999", "wght=nan", "wght=", "=", ",", "wght", "wght=-1e9,wdth=7"})
        EXPECT_TRUE(IsUsed(VariableFont(), 0, variations)) << variations;
}

TEST(DeviceFace, VariationsSetTheWidths) {
    const auto width = [](const char* variations) {
        return OutlineFace::Open(VariableFont(), {{}, 0, variations})->Advance(L"A").units;
    };
    EXPECT_EQ(500, width(""));
    EXPECT_EQ(600, width("wght=550"));
    EXPECT_EQ(700, width("wdth=3,wght=700"));
    EXPECT_EQ(700, width("wght=9000")); // beyond its end
}

TEST(DeviceFace, FileCutAtAnyLengthDoesNoHarm) {
    for (const std::string& whole : {VariableFont(), TestFont::Collection({}, {})})
        for (std::size_t length = 0; length < whole.size(); ++length) IsUsed(whole.substr(0, length));
}

TEST(DeviceFace, FileWithChangedBytesDoesNoHarm) {
    const std::string whole = VariableFont();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        for (const char value : {'\x00', '\x7F', '\x80', '\xFF'}) {
            damaged[i] = value;
            IsUsed(damaged);
        }
    }
}

TEST(DeviceFace, InstalledFontThatIsDamagedDoesNoHarm) {
    const std::string whole =
        ReadBytes(std::filesystem::path("/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf"));
    if (whole.empty()) GTEST_SKIP() << "the font is elsewhere here";
    EXPECT_TRUE(IsUsed(whole));
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        IsUsed(whole.substr(0, random() % whole.size()));
        std::string damaged = whole;
        // Most of the tables that are read are near the beginning or hold few bytes.
        for (int n = 0; n < 20; ++n)
            damaged[random() % (n % 2 == 0 ? 500 : whole.size())] ^= static_cast<char>(random());
        IsUsed(damaged);
    }
}
