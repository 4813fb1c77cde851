// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/module/private/Shaper.h"

#include <hb-ot.h>

namespace {

hb_script_t ScriptOf(char32_t character) {
    return hb_unicode_script(hb_unicode_funcs_get_default(), character);
}

bool IsOfEveryScript(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

void SetVariations(hb_font_t* font, const FaceFile& file) {
    if (file.index >> 16 > 0)
        hb_font_set_var_named_instance(font, static_cast<unsigned>(file.index >> 16) - 1);
    std::vector<hb_variation_t> variations;
    std::string_view rest = file.variations;
    while (!rest.empty()) {
        const std::string_view one = rest.substr(0, rest.find(','));
        hb_variation_t variation;
        if (hb_variation_from_string(one.data(), static_cast<int>(one.size()), &variation))
            variations.push_back(variation);
        rest.remove_prefix(one.size() < rest.size() ? one.size() + 1 : rest.size());
    }
    if (!variations.empty())
        hb_font_set_variations(font, variations.data(), static_cast<unsigned>(variations.size()));
}

} // namespace

bool GoesWithPrevious(char32_t character) {
    switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), character)) {
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
        return true;
    default:
        return character == kZeroWidthJoiner;
    }
}

bool NeedsShaping(char32_t character) {
    if (character < 0x300) return false; // the soft hyphen too, which has the width of its glyph
    if (GoesWithPrevious(character) ||
        hb_unicode_general_category(hb_unicode_funcs_get_default(), character) ==
            HB_UNICODE_GENERAL_CATEGORY_FORMAT)
        return true;
    const hb_script_t script = ScriptOf(character);
    switch (script) {
    case HB_SCRIPT_LATIN:
    case HB_SCRIPT_GREEK:
    case HB_SCRIPT_CYRILLIC:
    case HB_SCRIPT_ARMENIAN:
    case HB_SCRIPT_GEORGIAN:
    case HB_SCRIPT_HEBREW:
    case HB_SCRIPT_HAN:
    case HB_SCRIPT_HIRAGANA:
    case HB_SCRIPT_KATAKANA:
    case HB_SCRIPT_BOPOMOFO:
    case HB_SCRIPT_YI:
    case HB_SCRIPT_CHEROKEE:
    case HB_SCRIPT_ETHIOPIC:
    case HB_SCRIPT_BRAILLE:
        return false;
    case HB_SCRIPT_HANGUL: // syllables stand alone, the letters that they are made of do not
        return !(character >= 0xAC00 && character <= 0xD7A3) && !(character >= 0x3131 && character <= 0x318E);
    default:
        return !IsOfEveryScript(script);
    }
}

Shaper::Shaper(std::string_view bytes, const FaceFile& file, unsigned unitsPerEm)
    : m_font(nullptr, &hb_font_destroy) {
    hb_blob_t* const blob = hb_blob_create(bytes.data(), static_cast<unsigned>(bytes.size()),
                                           HB_MEMORY_MODE_READONLY, nullptr, nullptr);
    hb_face_t* const face = hb_face_create(blob, static_cast<unsigned>(file.index & 0xFFFF));
    hb_blob_destroy(blob);
    if (hb_face_get_glyph_count(face) > 0) {
        m_font.reset(hb_font_create(face));
        const auto scale = static_cast<int>(unitsPerEm);
        hb_font_set_scale(m_font.get(), scale, scale);
        SetVariations(m_font.get(), file);
    }
    hb_face_destroy(face);
}

std::vector<ShapedCharacter> Shaper::Shape(std::u32string_view text, std::size_t begin,
                                           std::size_t length) const {
    std::vector<ShapedCharacter> shaped(length);
    const std::size_t end = begin + length;
    std::size_t first = begin; // of its script
    hb_script_t script = HB_SCRIPT_COMMON;
    for (std::size_t i = begin; i < end; ++i) {
        const hb_script_t own = ScriptOf(text[i]);
        if (IsOfEveryScript(own) || own == script) continue;
        if (script != HB_SCRIPT_COMMON) {
            Add(text, first, i, shaped.data() + (first - begin));
            first = i;
        }
        script = own;
    }
    Add(text, first, end, shaped.data() + (first - begin));
    return shaped;
}

void Shaper::Add(std::u32string_view text, std::size_t begin, std::size_t end,
                 ShapedCharacter* shaped) const {
    const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(),
                                                                            &hb_buffer_destroy);
    hb_buffer_add_utf32(buffer.get(), reinterpret_cast<const std::uint32_t*>(text.data()),
                        static_cast<int>(text.size()), static_cast<unsigned>(begin),
                        static_cast<int>(end - begin));
    hb_buffer_guess_segment_properties(buffer.get());
    hb_buffer_set_language(buffer.get(), hb_language_from_string("en", -1)); // not the user's
    // Else a mark would count as the letter that bears it, and none of the two be known to lack.
    hb_buffer_set_cluster_level(buffer.get(), HB_BUFFER_CLUSTER_LEVEL_CHARACTERS);
    if (begin > 0) // its letter may be of another face
        hb_buffer_set_flags(buffer.get(), HB_BUFFER_FLAG_DO_NOT_INSERT_DOTTED_CIRCLE);
    // A font without a space has joiners deleted, and what is behind them counted as them.
    hb_buffer_set_invisible_glyph(buffer.get(), 1);
    const hb_feature_t withoutKerning = {HB_TAG('k', 'e', 'r', 'n'), 0, HB_FEATURE_GLOBAL_START,
                                         HB_FEATURE_GLOBAL_END};
    hb_shape(m_font.get(), buffer.get(), &withoutKerning, 1);
    unsigned count = 0;
    const hb_glyph_info_t* const glyphs = hb_buffer_get_glyph_infos(buffer.get(), &count);
    const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
    for (unsigned i = 0; i < count; ++i) {
        ShapedCharacter& character = shaped[glyphs[i].cluster - begin];
        character.units += positions[i].x_advance;
        character.glyphs += positions[i].x_advance != 0;
        character.isLacking = character.isLacking || glyphs[i].codepoint == 0;
    }
}
