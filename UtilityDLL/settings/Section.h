// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/SectionKey.h"

#include <string>

/// A named group of keys: one bracketed block of a settings file. Keys keep the order in which they were
/// added; names may repeat, and look-ups find the first one, whatever its letter case. References to keys
/// hold while keys are added.
///
/// A section can carry a checksum of its keys' names and values in the key "$CHECKSUM$", by which a reader
/// tells whether the file was edited by hand.
///
/// Finding, adding, removing and renaming a key takes about the same time in a long section as in a short
/// one.
///
/// A section name with "]" or a line break, or an empty one, does not come back from a file as it was.
class UTILITYDLL_API Section {
public:
    Section() = default; ///< nameless and without keys

    /// A null pointer gives the empty name.
    /// @{
    Section(const wchar_t* name) : m_name(HashedString<wchar_t>(name)) {}
    Section(const std::wstring& name) : m_name(HashedString<wchar_t>(name)) {}
    explicit Section(const HashedString<wchar_t>& name) : m_name(name) {}
    /// @}

    /// The name; empty for a section that is not valid.
    const HashedString<wchar_t>& GetName() const { return m_name.Get(); }

    /// Gives the section another name. An IniFile that it is in goes on to find it, by the new name.
    void SetName(const HashedString<wchar_t>& name) { m_name.Set(name); }

    /// Written after the section's header; the header's comment of a file is not read.
    const std::wstring& GetComments() const { return m_comments.Get(); }

    /// A null pointer leaves the comment as it is.
    /// @{
    void SetComments(const std::wstring& comments) {
        m_comments = comments.empty() ? SharedValue<std::wstring>() : SharedValue<std::wstring>(comments);
    }
    void SetComments(const wchar_t* comments) {
        if (comments) SetComments(std::wstring(comments));
    }
    /// @}

    /// Whether the name is not empty.
    bool IsValid() const { return !GetName().String().empty(); }

    /// How many keys there are, comment-only lines of a file included.
    int NumKeys() const { return static_cast<int>(m_keys.Size()); }

    /// Whether there is a key of that name.
    /// @{
    bool HasKey(const SectionKey& key) const { return HasKey(key.GetName().String()); }
    bool HasKey(const wchar_t* name) const { return HasKey(std::wstring(name ? name : L"")); }
    bool HasKey(const std::wstring& name) const;
    /// @}

    /// The key at that position, from 0. Positions outside 0 to NumKeys() - 1 are the caller's error.
    /// @{
    SectionKey& operator[](int position) { return m_keys[static_cast<std::size_t>(position)]; }
    const SectionKey& operator[](int position) const { return m_keys[static_cast<std::size_t>(position)]; }
    /// @}

    /// The first key of that name; a missing one is added at the end, without value and comment.
    /// @{
    SectionKey& operator[](const wchar_t* name) { return KeyOf(name ? name : L""); }
    SectionKey& operator[](const std::wstring& name) { return KeyOf(name); }
    SectionKey& operator[](const HashedString<wchar_t>& name); ///< a new key shares the name
    /// @}

    /// The first key of that name, or m_ErrorKey: nameless and empty, so that numbers read from it keep their
    /// value.
    /// @{
    const SectionKey& operator[](const wchar_t* name) const { return KeyOf(name ? name : L""); }
    const SectionKey& operator[](const std::wstring& name) const { return KeyOf(name); }
    const SectionKey& operator[](const HashedString<wchar_t>& name) const { return KeyOf(name.String()); }
    /// @}

    /// Adds a copy, or a key of that name, at the end, also when the name is taken. Always true.
    /// @{
    bool AddKey(const SectionKey& key);
    bool AddKey(const wchar_t* name) { return AddKey(SectionKey(name)); }
    bool AddKey(const std::wstring& name) { return AddKey(SectionKey(name)); }
    bool AddKey(SectionKey&& key);
    bool AddKey(const HashedString<wchar_t>& name, std::wstring value, const std::wstring& comments);
    Section& operator+=(const SectionKey& key);
    Section& operator+=(const wchar_t* name) { return *this += SectionKey(name); }
    Section& operator+=(const std::wstring& name) { return *this += SectionKey(name); }
    /// @}

    /// Adds copies of all keys of `other` at the end, in order.
    Section& operator<<(const Section& other);

    /// Removes the first key of that name. False when there is none.
    /// @{
    bool RemoveKey(const SectionKey& key) { return RemoveKey(key.GetName().String()); }
    bool RemoveKey(const wchar_t* name) { return RemoveKey(std::wstring(name ? name : L"")); }
    bool RemoveKey(const std::wstring& name);
    /// @}

    /// Removes all keys; name and comment stay.
    void Clear() { m_keys.Clear(); }

    /// The largest length of a name and of a value over all keys, in characters; 0 without keys.
    void GetWriteOffsets(int& nameWidth, int& valueWidth) const;

    /// The CRCChecksum over the value and then the name of each key, in order, the checksum key left out.
    unsigned int ComputeChecksum() const;

    /// Stores the checksum in the key "$CHECKSUM$", which is added at the end if it is missing.
    void AddChecksum();

    /// Whether the stored checksum is missing or differs from the computed one. Comments do not count.
    bool IsModified() const;

    /// By name only, ignoring letter case: equality, and an order by hash that is not alphabetical.
    /// @{
    bool operator==(const Section& other) const { return SameName(GetName(), other.GetName()); }
    bool operator!=(const Section& other) const { return !(*this == other); }
    bool operator<(const Section& other) const { return NameIsSmaller(GetName(), other.GetName()); }
    bool operator>(const Section& other) const { return NameIsSmaller(other.GetName(), GetName()); }
    /// @}

    /// The name of the key that holds the checksum: "$CHECKSUM$".
    static const HashedString<wchar_t> m_ChecksumName;

    /// What look-ups of a const section give for a name that is missing: nameless, without value and comment.
    static const SectionKey m_ErrorKey;

private:
    SectionKey& KeyOf(std::wstring_view name);
    const SectionKey& KeyOf(std::wstring_view name) const;

    IndexedName m_name;
    SharedValue<std::wstring> m_comments;
    friend class NamedSequence<Section>; // follows the name
    friend class IniFile;                // walks the keys
    NamedSequence<SectionKey> m_keys;
};
