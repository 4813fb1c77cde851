// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/module/private/Installed.h"

#include "VelmBase/WideString.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <tuple>

namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using FontSet = std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)>;

std::mutex guard; // of every call of fontconfig

const FcChar8* Bytes(const std::string& text) { return reinterpret_cast<const FcChar8*>(text.c_str()); }
std::string Text(const FcChar8* bytes) { return reinterpret_cast<const char*>(bytes); }

int IntegerOf(FcPattern* pattern, const char* property, int otherwise) {
    int value = 0;
    return FcPatternGetInteger(pattern, property, 0, &value) == FcResultMatch ? value : otherwise;
}

std::string TextOf(FcPattern* pattern, const char* property) {
    FcChar8* value = nullptr;
    return FcPatternGetString(pattern, property, 0, &value) == FcResultMatch ? Text(value) : std::string();
}

bool HasOutlines(FcPattern* pattern) {
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern, FC_OUTLINE, 0, &value) == FcResultMatch && value;
}

// The settings may have a font that is not bold or italic made so, which they say of it then.
bool IsMadeBold(FcPattern* pattern) {
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern, FC_EMBOLDEN, 0, &value) == FcResultMatch && value;
}
bool IsMadeItalic(FcPattern* pattern) {
    FcMatrix* matrix = nullptr;
    return FcPatternGetMatrix(pattern, FC_MATRIX, 0, &matrix) == FcResultMatch;
}

// A variable font that is not yet one of its instances has a range of weights, the regular one among them.
int WeightOf(FcPattern* pattern) {
    const int weight = FcWeightToOpenType(IntegerOf(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR));
    return weight > 0 ? weight : FW_NORMAL;
}

bool IsItalic(FcPattern* pattern) { return IntegerOf(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN; }

// fontconfig takes a language from the environment where it is told none.
Pattern Wanted(const std::string& family, int weight, bool isItalic) {
    Pattern wanted(FcPatternCreate(), &FcPatternDestroy);
    if (!family.empty()) FcPatternAddString(wanted.get(), FC_FAMILY, Bytes(family));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, FcWeightFromOpenType(weight));
    FcPatternAddInteger(wanted.get(), FC_SLANT, isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    for (const char* const language : {FC_LANG, FC_NAMELANG})
        FcPatternAddString(wanted.get(), language, Bytes("en"));
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    return wanted;
}

std::string WithoutBlanks(std::string name) {
    std::erase(name, ' ');
    return name;
}

// The family's name as the font spells it; empty for a font of another family.
std::string OwnName(FcPattern* font, const std::string& family) {
    const std::string wanted = WithoutBlanks(family);
    FcChar8* name = nullptr;
    for (int n = 0; FcPatternGetString(font, FC_FAMILY, n, &name) == FcResultMatch; ++n)
        if (FcStrCmpIgnoreCase(Bytes(WithoutBlanks(Text(name))), Bytes(wanted)) == 0) return Text(name);
    return {};
}

InstalledFont Described(FcPattern* font, const std::string& family) {
    InstalledFont found;
    const std::string name = OwnName(font, family);
    found.family = FromUtf8(name.empty() ? TextOf(font, FC_FAMILY) : name);
    found.file = {TextOf(font, FC_FILE), IntegerOf(font, FC_INDEX, 0), TextOf(font, FC_FONT_VARIATIONS)};
    found.weight = IsMadeBold(font) ? FW_NORMAL : WeightOf(font);
    found.isItalic = IsItalic(font) && !IsMadeItalic(font);
    found.hasOutlines = HasOutlines(font);
    return found;
}

// The first font with outlines, of the family if that has any; `best` where nothing better is.
Pattern WithOutlines(FcPattern* wanted, const std::string& family, Pattern best) {
    FcResult result;
    const FontSet fonts(FcFontSort(nullptr, wanted, FcFalse, nullptr, &result), &FcFontSetDestroy);
    const bool isOfFamily = !OwnName(best.get(), family).empty();
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcPattern* const font = fonts->fonts[i];
        if (HasOutlines(font) && (!isOfFamily || !OwnName(font, family).empty()))
            return {FcFontRenderPrepare(nullptr, wanted, font), &FcPatternDestroy};
    }
    return best;
}

bool Match(const std::string& family, bool isBold, bool isItalic, InstalledFont& found) {
    const Pattern wanted = Wanted(family, isBold ? FW_BOLD : FW_NORMAL, isItalic);
    FcResult result;
    Pattern font(FcFontMatch(nullptr, wanted.get(), &result), &FcPatternDestroy);
    if (!font) return false;
    if (!HasOutlines(font.get())) font = WithOutlines(wanted.get(), family, std::move(font));
    found = Described(font.get(), family);
    return !OwnName(font.get(), family).empty();
}

// Upright ones first, of these the nearest to regular.
auto Order(const ListedFont& font) {
    return std::tuple(font.isItalic, std::abs(font.weight - FW_NORMAL), font.weight, !font.hasOutlines);
}

bool IsBefore(const ListedFont& a, const ListedFont& b) {
    if (const int order = CompareNoCaseW(a.family, b.family)) return order < 0;
    if (a.family != b.family) return a.family < b.family;
    return Order(a) < Order(b);
}

} // namespace

InstalledFont FindInstalled(std::wstring_view family, bool isBold, bool isItalic) {
    InstalledFont found;
    {
        const std::lock_guard lock(guard);
        if (Match(ToUtf8(family), isBold, isItalic, found)) return found;
    }
    if (family.size() < LF_FACESIZE - 1) return found;
    const std::wstring_view cut = TrimmedW(family.substr(0, LF_FACESIZE - 1), L" ");
    const std::vector<ListedFont> fonts = ListInstalled();
    const auto begins = std::find_if(fonts.begin(), fonts.end(), [&](const ListedFont& font) {
        return icompareW(std::wstring_view(font.family).substr(0, LF_FACESIZE - 1), cut);
    });
    if (begins == fonts.end()) return found;
    const std::lock_guard lock(guard);
    Match(ToUtf8(begins->family), isBold, isItalic, found);
    return found;
}

std::vector<ListedFont> ListInstalled() {
    std::vector<ListedFont> fonts;
    {
        const std::lock_guard lock(guard);
        const Pattern all(FcPatternCreate(), &FcPatternDestroy);
        const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> asked(
            FcObjectSetBuild(FC_FAMILY, FC_WEIGHT, FC_SLANT, FC_SPACING, FC_OUTLINE, nullptr),
            &FcObjectSetDestroy);
        const FontSet found(FcFontList(nullptr, all.get(), asked.get()), &FcFontSetDestroy);
        for (int i = 0; found && i < found->nfont; ++i) {
            FcPattern* const pattern = found->fonts[i];
            ListedFont font;
            font.weight = WeightOf(pattern);
            font.isItalic = IsItalic(pattern);
            font.isMonospaced = IntegerOf(pattern, FC_SPACING, FC_PROPORTIONAL) >= FC_MONO;
            font.hasOutlines = HasOutlines(pattern);
            FcChar8* family = nullptr;
            for (int n = 0; FcPatternGetString(pattern, FC_FAMILY, n, &family) == FcResultMatch; ++n) {
                font.family = FromUtf8(Text(family));
                if (!font.family.empty()) fonts.push_back(font);
            }
        }
    }
    std::sort(fonts.begin(), fonts.end(), IsBefore);
    // Several files may be the same style to the one who asks, as two widths of a family are.
    fonts.erase(std::unique(fonts.begin(), fonts.end(),
                            [](const auto& a, const auto& b) { return !IsBefore(a, b) && !IsBefore(b, a); }),
                fonts.end());
    return fonts;
}

InstalledFallbacks::InstalledFallbacks(const InstalledFont& font) : m_fonts(nullptr, &FcFontSetDestroy) {
    const std::lock_guard lock(guard);
    const Pattern wanted = Wanted(ToUtf8(font.family), font.weight, font.isItalic);
    FcResult result;
    m_fonts.reset(FcFontSort(nullptr, wanted.get(), FcTrue, nullptr, &result));
}

bool InstalledFallbacks::Find(char32_t character, InstalledFont& font) const {
    const std::lock_guard lock(guard);
    for (int i = 0; m_fonts && i < m_fonts->nfont; ++i) {
        FcPattern* const each = m_fonts->fonts[i];
        FcCharSet* characters = nullptr;
        if (!HasOutlines(each) || FcPatternGetCharSet(each, FC_CHARSET, 0, &characters) != FcResultMatch ||
            !FcCharSetHasChar(characters, character))
            continue;
        font = Described(each, {});
        return true;
    }
    return false;
}
