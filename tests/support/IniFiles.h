// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/IniFile.h"
#include "tests/support/TestFiles.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

// Settings files as bytes and as plain values, for tests.

/// What a settings file holds, as plain comparable values.
struct PlainKey {
    std::wstring name, value, comments;

    bool operator==(const PlainKey&) const = default;
};
struct PlainSection {
    std::wstring name;
    std::vector<PlainKey> keys;

    bool operator==(const PlainSection&) const = default;
};
using PlainFile = std::vector<PlainSection>;

inline void PrintTo(const PlainKey& key, std::ostream* stream) {
    *stream << ToUtf8(L"{" + key.name + L"|" + key.value + L"|" + key.comments + L"}");
}
inline void PrintTo(const PlainSection& section, std::ostream* stream) {
    *stream << ToUtf8(L"[" + section.name + L"]");
    for (const PlainKey& key : section.keys) PrintTo(key, stream);
}

inline PlainFile Plain(const IniFile& file) {
    PlainFile plain;
    for (int s = 0; s < file.NumSections(); ++s) {
        const Section& section = file[s];
        plain.push_back({section.GetName().String(), {}});
        for (int k = 0; k < section.NumKeys(); ++k)
            plain.back().keys.push_back(
                {section[k].GetName().String(), section[k].GetValue(), section[k].GetComments()});
    }
    return plain;
}

/// The result of opening a file of these bytes.
struct Opened {
    explicit Opened(std::string_view bytes) {
        const TemporaryFolder folder;
        WriteBytes(folder.File(L"test.ini"), bytes);
        result = file.Open(folder.File(L"test.ini"));
    }
    PlainFile Content() const { return Plain(file); }

    IniFile file;
    ErrorString result;
};

/// The bytes that saving `file` gives; "<not saved>" when it cannot be saved.
inline std::string SavedBytes(const IniFile& file) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"test.ini");
    return file.Save(path) ? ReadBytes(path) : "<not saved>";
}
