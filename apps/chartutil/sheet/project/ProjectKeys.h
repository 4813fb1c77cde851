// SPDX-License-Identifier: MIT
#pragma once

#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The sections and keys of project.ini: the one place that says what there is. ProjectFile reads by it,
// 'init' takes its remarks from it, and the help and docs/project-keys.md are printed of it. It needs nothing
// that draws, so that a program that draws no sheets explains projects as well.

struct ProjectSection;

/// A key of a section. Texts are ASCII.
struct ProjectKey {
    enum class Kind {
        TEXT,
        PATH, ///< of a file, from the project's folder
        NUMBER,
        WHOLE,  ///< a number without decimals
        SWITCH, ///< 0 or 1
        COLOR,  ///< a colour reference
        NAME,   ///< one of the choices
        NAMES,  ///< some of the choices, with commas between them
        RECORD, ///< a record of the library in one line
        GROUP,  ///< no key, but all those of a group behind this name, which may be empty
    };

    const wchar_t* name;
    Kind kind;
    bool isUsed = true; ///< false for what records have and a sheet does not look at
    const char* what;
    const char* value = "";     ///< taken without the key, in a section that is there
    const char* otherwise = ""; ///< what that means, where the value does not say it
    const char* unit = "";      ///< of a number; what a text or record has to be
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    const char* choices = "";              ///< with ", " between them
    const ProjectSection* group = nullptr; ///< of a GROUP
    const wchar_t* newer = nullptr;        ///< the key that goes before this one
};

/// A section, or a group of keys that several sections have.
struct ProjectSection {
    const wchar_t* name;
    const char* what;
    std::span<const ProjectKey> keys;
    bool hasAnyKeys = false; ///< its keys are the user's
};

/// In the order of the manual.
std::span<const ProjectSection> ProjectSections();

/// A key by the name that it has in its section: "Text.Font".
struct NamedProjectKey {
    std::wstring name;
    const ProjectKey* key;
};

/// Whether the keys of the section are the user's.
bool HasAnyKeys(std::wstring_view section);

/// All of a section, with those of its groups and none for the groups themselves. Empty for a name that is no
/// section. Names count in any letter case.
std::vector<NamedProjectKey> KeysOf(std::wstring_view section);

/// Null when the section has no such key.
const ProjectKey* FindProjectKey(std::wstring_view section, std::wstring_view key);

std::vector<std::string> ChoicesOf(const ProjectKey& key);

/// What is wrong with a value by the key's kind and range, as "is not from 0 to 8"; empty where nothing is,
/// and for all that is not a number.
std::string FaultOf(const ProjectKey& key, const std::wstring& value);

/// What the key is, for whoever reads the settings; empty for a key that is not in the table.
std::string RemarkOn(std::wstring_view section, std::wstring_view key);

/// The table for the program's help: what holds for all keys in paragraphs, "[Section]: what it is" in a line
/// of its own, and below it "  Key :: what it is" in one line each. What several sections have stands at the
/// end. UTF-8.
std::string ProjectKeysText();

/// The table as docs/project-keys.md has it.
std::string ProjectKeysMarkdown();
