// SPDX-License-Identifier: MIT
#include "UtilityDLL/res/private/StringTable.h"

#include "VelmBase/Module.h"
#include "VelmBase/ResourceModule.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr BuiltInText kTexts[] = {
#define LIBRARY_TEXT(name, number, text) {TextId::name, text},
#include "UtilityDLL/res/private/Texts.inc"
#undef LIBRARY_TEXT
};

constexpr bool IsBefore(const BuiltInText& a, const BuiltInText& b) { return a.id < b.id; }
static_assert(std::is_sorted(std::begin(kTexts), std::end(kTexts), IsBefore));

} // namespace

std::span<const BuiltInText> BuiltInTexts() { return kTexts; }

const wchar_t* LoadText(TextId id) {
    const auto* const own =
        std::lower_bound(std::begin(kTexts), std::end(kTexts), BuiltInText{id, nullptr}, IsBefore);
    if (own == std::end(kTexts) || own->id != id) return L"";
    static const void* const module = ModuleAt(kTexts);
    const wchar_t* const translated = VELMSUITE::LanguageText(module, static_cast<std::uint32_t>(id));
    return translated ? translated : own->text;
}
