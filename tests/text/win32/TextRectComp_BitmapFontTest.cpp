// SPDX-License-Identifier: MIT
// A font without outlines, which is made here: the system gives no outline metrics for it.

#include "Framework/device/DC.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

constexpr std::string_view FACE = "Bitmap Of A Test";

class Bytes {
public:
    Bytes& Add(unsigned value, int count) {
        for (int i = 0; i < count; ++i) m_bytes += static_cast<char>(value >> (8 * i));
        return *this;
    }
    Bytes& Add(std::string_view bytes) { return m_bytes += bytes, *this; }
    const std::string& String() const { return m_bytes; }

private:
    std::string m_bytes;
};

// A font file of version 2: the printable characters of ASCII, each a block of 8 by 13 pixels.
std::string FontFile() {
    constexpr unsigned FIRST = 32, LAST = 126, WIDTH = 8, HEIGHT = 13, HEADER = 118;
    constexpr unsigned GLYPHS = LAST - FIRST + 1;
    constexpr unsigned BITS = HEADER + 4 * (GLYPHS + 1);
    constexpr unsigned NAME = BITS + GLYPHS * HEIGHT;
    Bytes file;
    file.Add(0x200, 2).Add(NAME + FACE.size() + 1, 4).Add(std::string(60, ' '));
    file.Add(0, 2).Add(10, 2).Add(96, 2).Add(96, 2).Add(11, 2).Add(0, 4); // type, points, resolution, ascent
    file.Add(0, 3).Add(400, 2).Add(0, 1); // no lines or slant, weight, character set
    file.Add(WIDTH, 2).Add(HEIGHT, 2).Add(0x30, 1).Add(WIDTH, 2).Add(WIDTH, 2);
    file.Add(FIRST, 1).Add(LAST, 1).Add('.' - FIRST, 1).Add(0, 1).Add(1, 2); // the last: bytes a row
    file.Add(0, 4).Add(NAME, 4).Add(0, 4).Add(BITS, 4).Add(0, 1);
    for (unsigned i = 0; i <= GLYPHS; ++i) file.Add(WIDTH, 2).Add(BITS + i * HEIGHT, 2);
    for (unsigned i = 0; i < GLYPHS * HEIGHT; ++i) file.Add(0x7E, 1);
    file.Add(FACE).Add(0, 1);
    return file.String();
}

} // namespace

TEST(TextRectComp_BitmapFont, HasTheFactorZeroAndRectanglesWithoutSize) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"bitmap.fnt");
    WriteBytes(path, FontFile());
    ASSERT_EQ(1, AddFontResourceExW(path.c_str(), FR_PRIVATE, nullptr));

    TextInfo info;
    info.SetFont(FromUtf8(std::string(FACE)));
    TextRectComp measure;
    const float factor = TextHeightFactComp::Get()(info);
    const TextRectComp::Rectangle rectangle = measure(info, L"abc");

    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    {
        CFont font;
        ASSERT_TRUE(font.CreateFontW(13, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES,
                                     PROOF_QUALITY, 0, info.Font().c_str()));
        CGdiObject* const before = CDC::SelectGdiObject(dc.m_hDC, font.m_hObject);
        ASSERT_TRUE(before);
        // A system may keep to the flag and take a font with outlines instead.
        const bool isTaken = dc.GetTextFaceW() == info.Font();
        OUTLINETEXTMETRICW metrics = {};
        EXPECT_EQ(isTaken, dc.GetOutlineTextMetricsW(sizeof metrics, &metrics) == 0);
        EXPECT_EQ(isTaken, factor == 0.0f);
        EXPECT_EQ(isTaken, rectangle.Width() == 0.0 && rectangle.Height() == 0.0);
        EXPECT_EQ(isTaken, dc.GetTextExtent(L"abc") == (CSize{24, 13}));
        CDC::SelectGdiObject(dc.m_hDC, before->m_hObject);
    }
    EXPECT_TRUE(RemoveFontResourceExW(path.c_str(), FR_PRIVATE, nullptr));
}
