// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"
#include "VelmBase/File.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <vector>

namespace SETTINGS {
class Writer;
}

/// A section of a FileObject: key/value items in the order in which they came. Keys match without regard to
/// letter case; each stands once.
class VELMBASE_API FobjSection {
public:
    /// A section without items.
    explicit FobjSection(const std::wstring& name) : m_name(name) {}

    /// The section's name.
    const std::wstring& Name() const { return m_name; }

    /// How many items there are.
    int NumItems() const { return static_cast<int>(m_items.size()); }

    /// The value of `key`, or null when there is no such key. The pointer holds until the section changes.
    const std::wstring* GetItem(const std::wstring& key) const;

    /// The walk over the items: First sets `position` and gives the first item, Next the one behind it. False
    /// when there is none; the texts are then unchanged.
    /// @{
    bool GetFirstMapEntry(int& position, std::wstring& key, std::wstring& value) const;
    bool GetNextMapEntry(int& position, std::wstring& key, std::wstring& value) const;
    /// @}

    /// Gives `key` this value. A key that is not there is added at the end if `create` is set.
    /// False when it is not there and was not added.
    bool SetItem(const std::wstring& key, const std::wstring& value, bool create);

private:
    friend class FileObject; // writes the items
    struct Item {
        std::wstring key;
        std::wstring value;
    };
    std::wstring m_name;
    std::vector<Item> m_items;
    std::unordered_map<std::wstring, std::size_t> m_positions; // by the key in capitals
};

/// The base library's sectioned container: named sections of key/value items, without comments. On disk it is
/// a settings file. Section names match without regard to letter case; each stands once.
class VELMBASE_API FileObject {
public:
    /// Replaces the content by that of a settings file. Sections of one name are joined, and of keys with one
    /// name the last value stays. `flags` are the suite's file flags; a settings file has no use for them.
    /// False when the file cannot be read or has a bad header; what was read before stays.
    bool Open(const std::wstring& path, int flags);

    /// Open() that tells in `badLine` the line of the bad header, from 1, or 0 when there is none.
    bool Open(const std::wstring& path, int flags, std::uint32_t& badLine);

    /// Open() for the content of a settings file.
    bool ReadText(std::string_view content, std::uint32_t& badLine);

    /// Writes a settings file, whole or not at all, in a few kilobytes of memory. False when there is no
    /// section, when a text has a character above 255, when memory runs out, or when the file cannot be
    /// written; a file there stays as it was.
    bool Save(const std::wstring& path, int flags) const;

    /// Save() that tells in `error` why it could not be done: errc::no_message when there is no section,
    /// otherwise as SETTINGS::Save.
    bool Save(const std::wstring& path, int flags, std::error_code& error) const;

    /// Hands what Save() would write to a sink, piece by piece. False when a text has a character above 255,
    /// or when the sink did not take a piece.
    bool Write(const FILES::ContentSink& sink) const;

    /// How many sections there are.
    int NumSections() const { return static_cast<int>(m_sections.size()); }

    /// The section of that name, or null. The pointer holds until a section is added.
    const FobjSection* GetSection(const std::wstring& name) const;

    /// The walk over the sections, as FobjSection's over its items.
    /// @{
    bool GetFirstSectionEntry(int& position, std::wstring& name) const;
    bool GetNextSectionEntry(int& position, std::wstring& name) const;
    /// @}

    /// Gives the key of that section this value. What is missing, section or key, is added at the end if
    /// `create` is set. False when it is missing and was not added.
    bool SetItem(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                 bool create);

    /// The value of a key, or null when the section or the key is missing.
    const std::wstring* GetItem(const std::wstring& section, const std::wstring& key) const;

private:
    struct Collector; // of what is read
    void Clear();
    void Compose(SETTINGS::Writer& writer) const;
    FobjSection& SectionOf(const std::wstring& name);

    std::deque<FobjSection> m_sections; // a text of one may be given to another that is added
    std::unordered_map<std::wstring, std::size_t> m_positions; // by the name in capitals
};
