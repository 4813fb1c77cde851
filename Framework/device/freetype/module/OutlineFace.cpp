// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/module/private/OutlineFace.h"

#include "Framework/device/freetype/module/private/FaceMetrics.h"

#include <algorithm>
#include <freetype/ftadvanc.h>
#include <string>
#include <utility>

namespace {

// What stands in a page instead of an advance.
constexpr float kNeedsShaping = -1;
constexpr float kLacking = -2; // and no other face was asked yet
constexpr float kNowhere = -3; // as kNeedsShaping, and no other face has it

constexpr char32_t kNone = 0x110000; // no character

// How many others may help each other out in one piece of text. Without an end a text of joiners could send
// it from face to face with each character.
constexpr int kMostHelpers = 8;

bool IsSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

// The character at `at`, which is moved behind it. A pair of surrogates is one character.
char32_t Next(std::wstring_view text, std::size_t& at) {
    const auto unit = static_cast<char32_t>(text[at++]);
    if (!IsSurrogate(unit)) return unit;
    const auto second = at < text.size() ? static_cast<char32_t>(text[at]) : 0;
    if (unit >= 0xDC00 || second < 0xDC00 || second > 0xDFFF) return unit;
    ++at;
    return 0x10000 + ((unit & 0x3FF) << 10) + (second & 0x3FF);
}

float AdvanceOf(FT_Face face, FT_UInt glyph) {
    FT_Fixed advance = 0;
    if (FT_Get_Advance(face, glyph, FT_LOAD_NO_SCALE, &advance) != 0) return 0;
    return static_cast<float>(std::clamp<FT_Fixed>(advance, 0, 0xFFFFFF));
}

// Controls are looked for in no other face.
bool MayBeElsewhere(char32_t character) {
    return character >= 0xA0 && character < kNone && !IsSurrogate(character);
}

// With the character before it.
bool IsJoined(std::u32string_view text, std::size_t at) {
    return GoesWithPrevious(text[at]) || text[at - 1] == kZeroWidthJoiner;
}

void Add(const ShapedCharacter& character, double scale, TextAdvance& sum) {
    sum.units += character.units * scale;
    sum.characters += character.glyphs;
}

} // namespace

std::shared_ptr<OutlineFace> OutlineFace::Open(std::string bytes, const FaceFile& file,
                                               std::unique_ptr<const HelpingFaces> helpers) {
    std::shared_ptr<OutlineFace> face(new OutlineFace(std::move(bytes), file, std::move(helpers)));
    return face->m_face ? face : nullptr;
}

OutlineFace::OutlineFace(std::string bytes, const FaceFile& file, std::unique_ptr<const HelpingFaces> helpers)
    : m_bytes(std::move(bytes)), m_face(OpenFreeTypeFace(m_bytes, file)),
      m_shaper(m_bytes, file, m_face ? m_face->units_per_EM : 0), m_helpers(std::move(helpers)) {
    if (!m_face) return;
    if (!m_face->charmap) m_isSymbol = FT_Select_Charmap(m_face.get(), FT_ENCODING_MS_SYMBOL) == 0;
    m_missing = AdvanceOf(m_face.get(), 0);
    m_metrics = MetricsOf(m_face.get());
}

OutlineFace::~OutlineFace() {
    for (const std::atomic<Page*>& page : m_pages) delete page.load(std::memory_order_relaxed);
}

TextAdvance OutlineFace::Advance(std::wstring_view text) const {
    TextAdvance sum;
    char32_t previous = kNone;     // an unshaped one directly before
    const Page* page = &PageOf(0); // of the last character
    char32_t numberOfPage = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        char32_t character = Next(text, i);
        if (character >> 8 != numberOfPage && character < kNone) {
            numberOfPage = character >> 8;
            page = &PageOf(character);
        }
        float advance =
            character < kNone ? (*page)[character & 0xFF].load(std::memory_order_relaxed) : m_missing;
        if (advance == kLacking) advance = HelpedAdvance(character);
        if (advance >= 0) {
            sum.units += advance;
            ++sum.characters;
            previous = character;
            continue;
        }
        // All that is to be shaped together, with the letter that bears a mark.
        std::u32string run;
        if (previous != kNone && GoesWithPrevious(character)) {
            run += previous;
            sum.units -= Known(previous);
            --sum.characters;
        }
        for (i = begin; i < text.size();) {
            std::size_t following = i;
            character = Next(text, following);
            if (Known(character) >= 0 && (run.empty() || run.back() != kZeroWidthJoiner)) break;
            run += character;
            i = following;
        }
        AddShaped(run, 0, run.size(), *this, kMostHelpers, sum);
        previous = kNone;
    }
    sum.units = std::max(sum.units, 0.0); // a font may move back in what is shaped
    return sum;
}

// The advance, or a negative number for what needs shaping.
float OutlineFace::Known(char32_t character) const {
    if (character >= kNone) return m_missing;
    const std::atomic<float>& place = PageOf(character)[character & 0xFF];
    const float advance = place.load(std::memory_order_relaxed);
    return advance != kLacking ? advance : HelpedAdvance(character);
}

OutlineFace::Page& OutlineFace::PageOf(char32_t character) const {
    Page* const page = m_pages[character >> 8].load(std::memory_order_acquire);
    return page ? *page : FilledPage(character);
}

OutlineFace::Page& OutlineFace::FilledPage(char32_t character) const {
    const std::lock_guard lock(m_guard);
    std::atomic<Page*>& place = m_pages[character >> 8];
    if (Page* const page = place.load(std::memory_order_relaxed)) return *page; // of another thread
    auto page = std::make_unique<Page>();
    for (char32_t i = 0; i < page->size(); ++i) {
        const char32_t each = (character & ~char32_t{0xFF}) + i;
        (*page)[i] = NeedsShaping(each) ? kNeedsShaping : OwnAdvance(each);
    }
    place.store(page.get(), std::memory_order_release);
    return *page.release();
}

float OutlineFace::OwnAdvance(char32_t character) const {
    FT_UInt glyph = FT_Get_Char_Index(m_face.get(), character);
    // Symbols have their codes in the private area, and stand for the letters.
    if (glyph == 0 && m_isSymbol && character < 0x100)
        glyph = FT_Get_Char_Index(m_face.get(), 0xF000 + character);
    if (glyph != 0) return AdvanceOf(m_face.get(), glyph);
    return m_helpers && MayBeElsewhere(character) ? kLacking : m_missing;
}

// Two threads may ask for the same at once; they get the same. The other face is asked for what it knows
// itself, so that two that send each other do not go round.
float OutlineFace::HelpedAdvance(char32_t character) const {
    const auto found = m_helpers->FaceWith(character);
    if (!found) return m_missing;
    float advance = m_missing;
    if (const auto& helper = *found) {
        const float theirs = helper->PageOf(character)[character & 0xFF].load(std::memory_order_relaxed);
        if (theirs >= 0)
            advance = theirs * static_cast<float>(m_metrics.otmEMSquare) /
                      static_cast<float>(helper->m_metrics.otmEMSquare);
    }
    PageOf(character)[character & 0xFF].store(advance, std::memory_order_relaxed);
    return advance;
}

// Null when no other face has it.
std::shared_ptr<const OutlineFace> OutlineFace::HelperFor(char32_t character) const {
    if (!m_helpers || !MayBeElsewhere(character)) return nullptr;
    std::atomic<float>& known = PageOf(character)[character & 0xFF];
    const float state = known.load(std::memory_order_relaxed);
    if (state == kNowhere) return nullptr;
    auto helper = m_helpers->FaceWith(character);
    if (!helper) return nullptr;
    if (!*helper && state == kNeedsShaping) known.store(kNowhere, std::memory_order_relaxed);
    return *std::move(helper);
}

// Measures a piece of a text by `face`. What that lacks comes from another, with what goes with it: a letter
// with its marks, but of a letter that the face has the mark alone. What none has is measured by this one.
void OutlineFace::AddShaped(std::u32string_view text, std::size_t begin, std::size_t length,
                            const OutlineFace& face, int helpers, TextAdvance& sum) const {
    const double scale = double(m_metrics.otmEMSquare) / face.m_metrics.otmEMSquare;
    const std::vector<ShapedCharacter> shaped = face.Shape(text, begin, length);
    for (std::size_t i = 0; i < length;) {
        const std::size_t first = i++;
        if (!shaped[first].isLacking) {
            Add(shaped[first], scale, sum);
            continue;
        }
        const auto helper = helpers > 0 ? HelperFor(text[begin + first]) : nullptr;
        if (!helper || helper.get() == &face) {
            Add(Shape(text, begin + first, 1).front(), 1, sum);
            continue;
        }
        while (i < length && (shaped[i].isLacking || IsJoined(text, begin + i))) ++i;
        AddShaped(text, begin + first, i - first, *helper, helpers - 1, sum);
    }
}

std::vector<ShapedCharacter> OutlineFace::Shape(std::u32string_view text, std::size_t begin,
                                                std::size_t length) const {
    const std::lock_guard lock(m_guard);
    if (m_shaper.CanShape()) return m_shaper.Shape(text, begin, length);
    std::vector<ShapedCharacter> plain(length);
    for (std::size_t i = 0; i < length; ++i) {
        const float advance = OwnAdvance(text[begin + i]);
        plain[i] = {advance >= 0 ? advance : m_missing, 1, advance < 0};
    }
    return plain;
}
