// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/IniDocument.h"
#include "UtilityDLL/settings/IniFile.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

// Edits of settings files, made in the lines of a document and in a model of its sections, and what has to be
// true of the result. Tests of random files and the fuzz target share them.

struct SettingsEdit {
    enum Kind : std::int32_t {
        SET,
        SET_COMMENT,
        ADD_SECTION,
        REMOVE_SECTION,
        REMOVE_KEY,
        RENAME_SECTION,
        RENAME_KEY,
        SEAL,
        NUM_KINDS,
    };
    Kind kind = SET;
    std::wstring section, key, text;

    /// Whether the key is a line that only readers of the format take for one. Such a line keeps its place
    /// while new keys go before it, and may be handed over to another section.
    bool IsOfRemark() const {
        return key.starts_with(L'#') || (kind == RENAME_KEY && text.starts_with(L'#'));
    }

    /// False when the document does not take it.
    bool Apply(IniDocument& document) const {
        switch (kind) {
        case SET:
            return document.Set(section, key, text);
        case SET_COMMENT:
            return document.SetComment(section, key, text);
        case ADD_SECTION:
            return document.AddSection(section);
        case REMOVE_SECTION:
            return document.Remove(section);
        case REMOVE_KEY:
            return document.Remove(section, key);
        case RENAME_SECTION:
            return document.Rename(section, text);
        case RENAME_KEY:
            return document.Rename(section, key, text);
        default:
            return document.Seal(section);
        }
    }

    /// The same in the model, which takes any text; false when there is nothing to edit.
    bool Apply(IniFile& model) const {
        const bool adds = kind == SET || kind == ADD_SECTION;
        if (!adds && !model.HasSection(section)) return false;
        const bool needsKey = kind == SET_COMMENT || kind == REMOVE_KEY || kind == RENAME_KEY;
        if (needsKey && !model[section].HasKey(key)) return false;
        switch (kind) {
        case SET:
            model[section][key] << text;
            return true;
        case SET_COMMENT:
            model[section][key].SetComments(text);
            return true;
        case ADD_SECTION:
            (void)model[section];
            return true;
        case REMOVE_SECTION:
            return model.RemoveSection(section);
        case REMOVE_KEY:
            return model[section].RemoveKey(key);
        case RENAME_SECTION:
            return model.RenameSection(section, text);
        case RENAME_KEY: {
            SectionKey& renamed = model[section][key];
            if (model[section].HasKey(text)) return false;
            renamed = SectionKey(HashedString<wchar_t>(text), renamed.GetValue(), renamed.GetComments());
            return true;
        }
        default:
            model[section].AddChecksum();
            return true;
        }
    }

    /// How many lines it may remove and add.
    bool MayChange(std::size_t removed, std::size_t added) const {
        switch (kind) {
        case REMOVE_SECTION:
            return added == 0;
        case REMOVE_KEY:
            return removed == 1 && added == 0;
        case ADD_SECTION:
            return removed == 0 && added <= 2;
        case SET:
        case SEAL:
            return removed == 0 ? added <= 3 : removed == 1 && added == 1;
        default:
            return removed <= 1 && added == removed;
        }
    }
};

/// Whether a file that was read says what the model does. Remarks ("#" lines, which are keys to readers, and
/// lines with a comment alone) count without their order, and only if `remarksCount`; a seal counts as intact
/// or broken, where remarks are the same.
inline bool SaysTheSame(const IniFile& file, const IniFile& model, bool remarksCount) {
    using Key = std::tuple<std::wstring, std::wstring, std::wstring>;
    const auto keysOf = [](const Section& section, bool remarks) {
        std::vector<Key> keys;
        for (int i = 0; i < section.NumKeys(); ++i) {
            const SectionKey& key = section[i];
            const std::wstring& name = key.GetName();
            const bool isRemark = name.empty() || name[0] == L'#';
            const bool isSeal = SameName(key.GetName(), Section::m_ChecksumName);
            if (isRemark == remarks)
                keys.emplace_back(name, isSeal ? L"" : key.GetValue(), key.GetComments());
        }
        if (remarks) std::sort(keys.begin(), keys.end());
        return keys;
    };
    if (file.NumSections() != model.NumSections()) return false;
    for (int i = 0; i < file.NumSections(); ++i) {
        const Section& a = file[i];
        const Section& b = model[i];
        if (a.GetName().String() != b.GetName().String()) return false;
        if (keysOf(a, false) != keysOf(b, false)) return false;
        const bool hasSameRemarks = keysOf(a, true) == keysOf(b, true);
        if (remarksCount && !hasSameRemarks) return false;
        if (hasSameRemarks && a.IsModified() != b.IsModified()) return false;
    }
    return true;
}

/// The lines of a file with their line ends.
inline std::vector<std::string_view> LinesWithEnds(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return lines;
}

inline std::string_view WithoutEnd(std::string_view line) {
    if (line.ends_with('\n')) line.remove_suffix(line.ends_with("\r\n") ? 2 : 1);
    return line;
}

/// Whether the changes are what made `before` into `after`, and every other line kept its bytes; but for the
/// end of a last line that is not the last any more.
inline bool ChangesExplain(const std::vector<IniDocument::Change>& changes, std::string_view before,
                           std::string_view after) {
    const std::vector<std::string_view> old = LinesWithEnds(before);
    const std::vector<std::string_view> now = LinesWithEnds(after);
    std::size_t o = 0;
    std::size_t n = 0;
    const auto keep = [&](std::size_t upTo) {
        for (; o < upTo; ++o, ++n) {
            if (o >= old.size() || n >= now.size() || WithoutEnd(old[o]) != WithoutEnd(now[n])) return false;
            if (old[o] != now[n] && old[o].ends_with('\n')) return false;
        }
        return true;
    };
    for (const IniDocument::Change& change : changes) {
        if (change.line <= o && o > 0) return false; // the runs do not touch
        if (!keep(change.line - 1)) return false;
        for (const std::string& line : change.before)
            if (o >= old.size() || WithoutEnd(old[o++]) != line) return false;
        for (const std::string& line : change.after)
            if (n >= now.size() || WithoutEnd(now[n++]) != line) return false;
    }
    return keep(old.size()) && n == now.size();
}
