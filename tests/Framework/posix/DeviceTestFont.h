// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

/// Makes the bytes of small fonts: 26 characters, each a triangle of the same width.
struct TestFont {
    std::u16string family = u"Test";
    int first = 0x41;             ///< the first of its characters
    bool hasDottedCircle = false; ///< U+25CC as well, for marks that have no letter
    int unitsPerEm = 1000;
    int advance = 500;
    bool hasOs2 = true;
    int winAscent = 800, winDescent = 200;
    int typoAscent = 700, typoDescent = -150;
    int ascent = 750, descent = -250, lineGap = 90; ///< of the horizontal header
    int shapedDifference = 0;                       ///< added to each advance where text is shaped
    int boldAdvance = 0; ///< with a value, the font is a variable one, this wide at its bold end

    std::string Bytes() const {
        const int glyphs = 27; // the first for what is missing
        std::map<std::string, std::string> tables;
        std::string outline = U16(1) + Box() + U16(2) + U16(0) + std::string(3, '\x01') + U16(0) + U16(400) +
                              U16(-200) + U16(0) + U16(0) + U16(700);
        outline.resize((outline.size() + 3) / 4 * 4);
        std::string places;
        for (int i = 0; i <= glyphs; ++i)
            places += U32(static_cast<std::uint32_t>(outline.size()) * unsigned(i));
        for (int i = 0; i < glyphs; ++i) tables["glyf"] += outline;
        tables["loca"] = places;
        tables["head"] = U32(0x00010000) + U32(0x00010000) + U32(0) + U32(0x5F0F3CF5) + U16(0) +
                         U16(unitsPerEm) + std::string(16, '\0') + Box() + U16(0) + U16(8) + U16(2) + U16(1) +
                         U16(0);
        tables["hhea"] = U32(0x00010000) + U16(ascent) + U16(descent) + U16(lineGap) + U16(advance) + U16(0) +
                         U16(0) + U16(400) + U16(1) + U16(0) + U16(0) + std::string(8, '\0') + U16(0) +
                         U16(1);
        tables["hmtx"] = U16(advance) + U16(0) + std::string(2 * (glyphs - 1), '\0');
        tables["maxp"] = U32(0x00010000) + U16(glyphs) + U16(3) + U16(1) + std::string(22, '\0');
        tables["post"] = U32(0x00030000) + U32(0) + U16(-100) + U16(50) + std::string(20, '\0');
        const std::string circle = hasDottedCircle ? U16(0x25CC) : "";
        const std::string segments = U16(first + 25) + circle + U16(0xFFFF) + U16(0) + U16(first) + circle +
                                     U16(0xFFFF) + U16(1 - first) + (hasDottedCircle ? U16(1 - 0x25CC) : "") +
                                     U16(1) + std::string(hasDottedCircle ? 6 : 4, '\0');
        const int count = hasDottedCircle ? 3 : 2;
        tables["cmap"] = U16(0) + U16(1) + U16(3) + U16(1) + U32(12) + U16(4) + U16(16 + 8 * count) + U16(0) +
                         U16(2 * count) + U16(4) + U16(1) + U16(2 * count - 4) + segments;
        tables["name"] = Names();
        if (hasOs2)
            tables["OS/2"] = U16(4) + U16(advance) + U16(400) + U16(5) + U16(0) + std::string(20, '\0') +
                             U16(0) + std::string(10, '\0') + std::string(16, '\0') + "test" + U16(0x40) +
                             U16(first) + U16(first + 25) + U16(typoAscent) + U16(typoDescent) + U16(0) +
                             U16(winAscent) + U16(winDescent) + U32(1) + U32(0) + U16(500) + U16(700) +
                             U16(0) + U16(32) + U16(1);
        if (shapedDifference != 0) tables["GPOS"] = Positioning();
        if (boldAdvance != 0) AddVariations(tables, glyphs);
        return Assembled(tables, 0);
    }

    /// Fonts in one file.
    static std::string Collection(const TestFont& first, const TestFont& second) {
        constexpr std::size_t header = 20;
        const std::string a = first.Moved(header);
        const std::string b = second.Moved(header + a.size());
        return "ttcf" + U32(0x00010000) + U32(2) + U32(header) +
               U32(static_cast<std::uint32_t>(header + a.size())) + a + b;
    }

private:
    static std::string U16(int value) {
        return {static_cast<char>(value >> 8 & 0xFF), static_cast<char>(value & 0xFF)};
    }
    static std::string U32(std::uint32_t value) {
        return U16(static_cast<int>(value >> 16)) + U16(static_cast<int>(value & 0xFFFF));
    }
    static std::string Box() { return U16(0) + U16(0) + U16(400) + U16(700); }

    std::string Names() const {
        std::string family16;
        for (const char16_t unit : family) family16 += U16(unit);
        const std::string style = std::string("\0R\0e\0g\0u\0l\0a\0r", 14);
        const auto record = [](int id, std::size_t length, std::size_t offset) {
            return U16(3) + U16(1) + U16(0x409) + U16(id) + U16(static_cast<int>(length)) +
                   U16(static_cast<int>(offset));
        };
        return U16(0) + U16(3) + U16(6 + 3 * 12) + record(1, family16.size(), 0) +
               record(2, style.size(), family16.size()) + record(4, family16.size(), 0) + family16 + style;
    }

    // For any script, under a feature that is always on: one lookup, which adjusts all glyphs.
    std::string Positioning() const {
        const std::string scripts =
            U16(1) + "DFLT" + U16(8) + U16(4) + U16(0) + U16(0) + U16(0xFFFF) + U16(1) + U16(0);
        const std::string features = U16(1) + "mark" + U16(8) + U16(0) + U16(1) + U16(0);
        const std::string lookups = U16(1) + U16(4) + U16(1) + U16(0) + U16(1) + U16(8) + U16(1) + U16(8) +
                                    U16(4) + U16(shapedDifference) + U16(2) + U16(1) + U16(1) + U16(26) +
                                    U16(0);
        const auto begin = static_cast<int>(10 + scripts.size());
        return U32(0x00010000) + U16(10) + U16(begin) + U16(begin + static_cast<int>(features.size())) +
               scripts + features + lookups;
    }

    void AddVariations(std::map<std::string, std::string>& tables, int glyphs) const {
        const auto fixed = [](int value) { return U32(static_cast<std::uint32_t>(value) << 16); };
        tables["fvar"] = U16(1) + U16(0) + U16(16) + U16(2) + U16(1) + U16(20) + U16(2) + U16(8) + "wght" +
                         fixed(400) + fixed(400) + fixed(700) + U16(0) + U16(256) + U16(2) + U16(0) +
                         fixed(400) + U16(2) + U16(0) + fixed(700);
        tables["gvar"] = U16(1) + U16(0) + U16(1) + U16(0) + U32(20 + 2 * unsigned(glyphs + 1)) +
                         U16(glyphs) + U16(0) + U32(20 + 2 * unsigned(glyphs + 1)) +
                         std::string(2 * std::size_t(glyphs + 1), '\0');
        // One region, from the regular end to the bold one, and a row of its one difference for each glyph.
        std::string rows;
        for (int i = 0; i < glyphs; ++i) rows += U16(boldAdvance - advance);
        const std::string regions = U16(1) + U16(1) + U16(0) + U16(0x4000) + U16(0x4000);
        const std::string data = U16(glyphs) + U16(1) + U16(1) + U16(0) + rows;
        const std::string store =
            U16(1) + U32(12) + U16(1) + U32(static_cast<std::uint32_t>(12 + regions.size())) + regions + data;
        tables["HVAR"] = U16(1) + U16(0) + U32(20) + U32(0) + U32(0) + U32(0) + store;
    }

    static std::string Assembled(const std::map<std::string, std::string>& tables, std::size_t at) {
        std::string directory = U32(0x00010000) + U16(static_cast<int>(tables.size())) + std::string(6, '\0');
        std::string body;
        const std::size_t begin = at + 12 + 16 * tables.size();
        for (const auto& [tag, bytes] : tables) {
            directory += tag + U32(0) + U32(static_cast<std::uint32_t>(begin + body.size())) +
                         U32(static_cast<std::uint32_t>(bytes.size()));
            body += bytes;
            body.resize((body.size() + 3) / 4 * 4);
        }
        return directory + body;
    }

    // As it stands at that place of a file.
    std::string Moved(std::size_t at) const {
        std::string bytes = Bytes();
        const std::size_t tables = static_cast<unsigned char>(bytes[5]);
        for (std::size_t i = 0; i < tables; ++i) {
            const std::size_t place = 12 + 16 * i + 8;
            std::uint32_t offset = 0;
            for (std::size_t n = 0; n < 4; ++n)
                offset = offset << 8 | static_cast<unsigned char>(bytes[place + n]);
            bytes.replace(place, 4, U32(offset + static_cast<std::uint32_t>(at)));
        }
        return bytes;
    }
};

/// The bytes of a font of bitmaps, with the letter A alone.
inline std::string BitmapFont(const std::string& family) {
    return "STARTFONT 2.1\nFONT -test-" + family +
           "-medium-r-normal--8-80-75-75-c-80-iso10646-1\nSIZE 8 75 75\nFONTBOUNDINGBOX 8 8 0 -1\n"
           "STARTPROPERTIES 8\nFAMILY_NAME \"" +
           family +
           "\"\nWEIGHT_NAME \"Medium\"\nSLANT \"R\"\nPIXEL_SIZE 8\nCHARSET_REGISTRY \"ISO10646\"\n"
           "CHARSET_ENCODING \"1\"\nFONT_ASCENT 7\nFONT_DESCENT 1\nENDPROPERTIES\nCHARS 1\nSTARTCHAR A\n"
           "ENCODING 65\nSWIDTH 1000 0\nDWIDTH 8 0\nBBX 8 8 0 -1\nBITMAP\n18\n24\n42\n42\n7E\n42\n42\n00\n"
           "ENDCHAR\nENDFONT\n";
}
