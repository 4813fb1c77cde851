// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/style/Names.h"

#include "apps/chartutil/terminal/Errors.h"

#include <algorithm>

namespace {

std::string Plain(std::string_view text) {
    std::string plain(text);
    for (char& c : plain) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
        if (c == '-' || c == '_') c = ' ';
    }
    constexpr std::string_view kAmerican = "center";
    if (plain.ends_with(kAmerican))
        plain.replace(plain.size() - kAmerican.size(), kAmerican.size(), "centre");
    return plain;
}

} // namespace

std::optional<int> NumberOfName(std::string_view text, std::span<const char* const> names) {
    const std::string plain = Plain(text);
    for (std::size_t i = 0; i < names.size(); ++i)
        if (plain == names[i] || plain == std::to_string(i)) return static_cast<int>(i);
    return std::nullopt;
}

int RequireName(const std::string& text, std::span<const char* const> names, const char* what) {
    if (const std::optional<int> number = NumberOfName(text, names)) return *number;
    throw CommandError(ExitCode::WRONG_USE, "'" + text + "' is no " + what + "; give " + ListOfNames(names));
}

std::vector<std::string> TypedNames(std::span<const char* const> names) {
    std::vector<std::string> typed(names.begin(), names.end());
    for (std::string& name : typed) std::replace(name.begin(), name.end(), ' ', '-');
    return typed;
}

std::string ListOfNames(std::span<const char* const> names) {
    std::string list;
    const std::vector<std::string> typed = TypedNames(names);
    for (std::size_t i = 0; i < typed.size(); ++i) {
        if (i > 0) list += i + 1 < typed.size() ? ", " : " or ";
        list += typed[i];
    }
    return list;
}
