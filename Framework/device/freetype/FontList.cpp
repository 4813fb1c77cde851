#include "Framework/device/freetype/FontList.h"

#include "VelmBase/WideString.h"

#include <algorithm>
#include <cstdlib>
#include <fontconfig/fontconfig.h>
#include <memory>
#include <tuple>

namespace {

int IntegerOf(FcPattern* pattern, const char* property, int otherwise) {
    int value = 0;
    return FcPatternGetInteger(pattern, property, 0, &value) == FcResultMatch ? value : otherwise;
}

// A variable font has a range of weights, of which the regular one is its most regular.
int WeightOf(FcPattern* pattern) {
    int weight = 0;
    if (FcPatternGetInteger(pattern, FC_WEIGHT, 0, &weight) != FcResultMatch) return 400;
    return FcWeightToOpenType(weight);
}

auto Order(const ListedFont& font) {
    return std::tuple(std::abs(font.weight - 400) + (font.isItalic ? 1000 : 0), font.weight, font.isItalic,
                      !font.hasOutlines);
}

bool IsBefore(const ListedFont& a, const ListedFont& b) {
    if (const int order = CompareNoCaseW(a.family, b.family)) return order < 0;
    if (a.family != b.family) return a.family < b.family;
    return Order(a) < Order(b);
}

} // namespace

std::vector<ListedFont> ListFonts() {
    const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> all(FcPatternCreate(), &FcPatternDestroy);
    const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> asked(
        FcObjectSetBuild(FC_FAMILY, FC_FAMILYLANG, FC_WEIGHT, FC_SLANT, FC_SPACING, FC_OUTLINE, nullptr),
        &FcObjectSetDestroy);
    const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> found(
        FcFontList(nullptr, all.get(), asked.get()), &FcFontSetDestroy);
    std::vector<ListedFont> fonts;
    for (int i = 0; found && i < found->nfont; ++i) {
        FcPattern* const pattern = found->fonts[i];
        ListedFont font;
        font.weight = WeightOf(pattern);
        font.isItalic = IntegerOf(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
        font.isMonospaced = IntegerOf(pattern, FC_SPACING, FC_PROPORTIONAL) >= FC_MONO;
        FcBool hasOutlines = FcFalse;
        font.hasOutlines =
            FcPatternGetBool(pattern, FC_OUTLINE, 0, &hasOutlines) == FcResultMatch && hasOutlines;
        FcChar8* family = nullptr;
        for (int n = 0; FcPatternGetString(pattern, FC_FAMILY, n, &family) == FcResultMatch; ++n) {
            font.family = FromUtf8(reinterpret_cast<const char*>(family));
            if (!font.family.empty()) fonts.push_back(font);
        }
    }
    std::sort(fonts.begin(), fonts.end(), IsBefore);
    // Several files may be the same style to the one who asks, as two widths of a family are.
    fonts.erase(std::unique(fonts.begin(), fonts.end(),
                            [](const ListedFont& a, const ListedFont& b) {
                                return !IsBefore(a, b) && !IsBefore(b, a);
                            }),
                fonts.end());
    return fonts;
}
