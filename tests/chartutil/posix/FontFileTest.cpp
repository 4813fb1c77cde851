// SPDX-License-Identifier: MIT
// The widths that pictures are laid out by, held against the font's own files.

#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/Font.h"
#include "tests/support/TestFiles.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace {

// As much of a TrueType file as says how wide its characters are.
class FontFile {
public:
    explicit FontFile(const std::wstring& path) : m_bytes(ReadBytes(path)) {
        const std::size_t hmtx = Table("hmtx"), cmap = Table("cmap");
        m_units = U16(Table("head") + 18);
        const std::size_t metrics = U16(Table("hhea") + 34);
        for (std::size_t i = 0; i < U16(cmap + 2); ++i) {
            const std::size_t entry = cmap + 4 + 8 * i;
            if (U16(entry) != 3 || U16(entry + 2) != 1) continue; // the basic plane of Unicode
            const std::size_t map = cmap + U32(entry + 4), segments = U16(map + 6) / 2;
            const std::size_t ends = map + 14, starts = ends + 2 * segments + 2;
            const std::size_t deltas = starts + 2 * segments, offsets = deltas + 2 * segments;
            for (std::size_t s = 0; s < segments; ++s)
                for (std::size_t c = U16(starts + 2 * s); c <= U16(ends + 2 * s) && c < 0xFFFF; ++c) {
                    const std::size_t offset = U16(offsets + 2 * s), delta = U16(deltas + 2 * s);
                    std::size_t glyph = c;
                    if (offset != 0) glyph = U16(offsets + 2 * s + offset + 2 * (c - U16(starts + 2 * s)));
                    if (offset == 0 || glyph != 0) glyph = (glyph + delta) & 0xFFFF;
                    if (glyph != 0)
                        m_widths[static_cast<wchar_t>(c)] = U16(hmtx + 4 * std::min(glyph, metrics - 1));
                }
        }
    }

    /// The advance widths of the characters that the font has, in parts of its size.
    const std::map<wchar_t, std::size_t>& Widths() const { return m_widths; }
    std::size_t Units() const { return m_units; }

private:
    std::size_t U16(std::size_t at) const {
        return static_cast<unsigned char>(m_bytes.at(at)) * 256u +
               static_cast<unsigned char>(m_bytes.at(at + 1));
    }
    std::size_t U32(std::size_t at) const { return U16(at) * 65536 + U16(at + 2); }
    std::size_t Table(const std::string& name) const {
        for (std::size_t i = 0; i < U16(4); ++i)
            if (m_bytes.compare(12 + 16 * i, 4, name) == 0) return U32(12 + 16 * i + 8);
        throw std::out_of_range(name);
    }

    std::string m_bytes;
    std::size_t m_units = 0;
    std::map<wchar_t, std::size_t> m_widths;
};

} // namespace

TEST(FontFile, WidthsAreTheOnesOfTheFont) {
    for (const bool bold : {false, true}) {
        const std::wstring path = bold ? L"/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"
                                       : L"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
        ASSERT_TRUE(std::filesystem::exists(path)) << "the package fonts-dejavu-core is missing";
        const FontFile file(path);
        ASSERT_GT(file.Widths().size(), 5000u);
        const Font font{static_cast<double>(file.Units()), bold};
        int exact = 0;
        for (const auto& [character, width] : file.Widths()) {
            const double measured = font.Width(ToUtf8(std::wstring(1, character)));
            exact += measured == static_cast<double>(width);
            EXPECT_LE(static_cast<double>(width), measured) << "U+" << std::hex << int(character);
            const bool isKnown = (character >= 0x20 && character < 0x250) ||
                                 (character >= 0x370 && character < 0x530) ||
                                 (character >= 0x2010 && character < 0x205F);
            if (isKnown) {
                EXPECT_EQ(static_cast<double>(width), measured) << "U+" << std::hex << int(character);
            }
        }
        EXPECT_GT(exact, 1000);
    }
}
