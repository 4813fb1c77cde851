// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/freetype/module/private/FaceFile.h"

#include <cstddef>
#include <hb.h>
#include <memory>
#include <string_view>
#include <vector>

/// Whether what the character takes depends on its neighbours: marks, joiners, and the letters of scripts
/// that join, stack or reorder. Without kerning, other characters have a width of their own.
bool NeedsShaping(char32_t character);

/// Joins what is on both sides of it.
constexpr char32_t kZeroWidthJoiner = 0x200D;

/// Whether a character that needs shaping goes with the one before it.
bool GoesWithPrevious(char32_t character);

/// What a character takes in a text that was shaped. Of characters that became one glyph the first takes it
/// all.
struct ShapedCharacter {
    double units = 0;       ///< font units
    std::size_t glyphs = 0; ///< that take room
    bool isLacking = false; ///< the face has no glyph for it
};

/// Shapes text with a face by HarfBuzz, without kerning. Any thread may call, one at a time.
class Shaper {
public:
    /// `bytes` is the font file and has to outlive this.
    Shaper(std::string_view bytes, const FaceFile& file, unsigned unitsPerEm);

    /// False for a font of a kind that HarfBuzz does not read.
    bool CanShape() const { return m_font != nullptr; }

    /// What each character of a piece takes: `length` of them from `begin` on, which are shaped as they stand
    /// in the text.
    std::vector<ShapedCharacter> Shape(std::u32string_view text, std::size_t begin, std::size_t length) const;

private:
    void Add(std::u32string_view text, std::size_t begin, std::size_t end, ShapedCharacter* shaped) const;

    std::unique_ptr<hb_font_t, void (*)(hb_font_t*)> m_font;
};
