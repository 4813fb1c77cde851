// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Where the sections and keys of a settings file stand in it, to tell a user of what is wrong with one.
/// Names count in any letter case; of keys that a section has twice, the first.
class SettingsLines {
public:
    SettingsLines() = default;

    /// Empty where the file cannot be read, and up to the first fault in its text.
    explicit SettingsLines(const UserText& path);

    /// The line from 1 of the key; of its section's header where there is none of that name; 0 without the
    /// section.
    std::uint32_t LineOf(std::wstring_view section, std::wstring_view key = {}) const;

    /// "FILE:LINE: [Section] Key: ", as far as these are there.
    std::string Place(std::wstring_view section, std::wstring_view key = {}) const;

    /// The line of the first section or key whose name stands in the text; 0 where none does.
    std::uint32_t LineOfNamedIn(std::wstring_view text) const;

    struct Name {
        std::wstring section, key; ///< as they are written; a header has no key
        std::uint32_t line;
    };
    /// All of them, in file order. A key that is there twice is there twice.
    const std::vector<Name>& Names() const { return m_names; }

private:
    struct Finder;
    std::string m_path;
    std::vector<Name> m_names;
    std::map<std::pair<std::wstring, std::wstring>, std::uint32_t> m_lines; // by the names in small letters
};
