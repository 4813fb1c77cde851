// SPDX-License-Identifier: MIT
#include "VelmBase/private/LanguageChoice.h"

#include "VelmBase/Environment.h"
#include "VelmBase/WideString.h"
#include "VelmBase/private/UserLanguage.h"

#include <algorithm>

namespace {

bool IsLetterOrDigit(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9');
}

} // namespace

std::vector<std::wstring> LANGUAGES::FileNames(const std::wstring& language) {
    constexpr std::size_t kLongest = 32; // what is longer is no language
    std::wstring name = language.substr(0, language.find_first_of(L".@"));
    std::replace(name.begin(), name.end(), L'-', L'_');
    const std::size_t end = std::min(name.find(L'_'), name.size());
    // It becomes a part of a path.
    if (end == 0 || name.size() > kLongest ||
        !std::all_of(name.begin(), name.end(), [](wchar_t c) { return IsLetterOrDigit(c) || c == L'_'; }))
        return {};
    const auto region = name.begin() + static_cast<std::ptrdiff_t>(end);
    std::transform(name.begin(), region, name.begin(), ToLowerW);
    std::transform(region, name.end(), region, ToUpperW);
    if (region == name.end()) return {name};
    return {name, name.substr(0, end)};
}

std::wstring LANGUAGES::ChosenLanguage() {
    const std::wstring set = EnvironmentVariable(L"UTILITYDLL_LANGUAGE");
    return set.empty() ? UserLanguage() : set;
}
