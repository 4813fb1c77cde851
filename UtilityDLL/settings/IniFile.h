// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"
#include "VelmBase/ErrorString.h"
#include "VelmBase/FileName.h"
#include "VelmBase/FileObject.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

/// A settings file: sections in file order, read from and written to a plain text file of bracketed headers
/// and "name = value ;comment" lines. A byte of the file is the character of the same code.
///
/// Section names are unique, whatever their letter case. References to sections hold while sections are
/// added.
///
/// Sections and keys take any text, but a line of a file does not carry all of them. Save() writes these as
/// well, and Open() does not bring them back as they were:
///   - in the name of a section, "]" and line feeds. With an empty name, or with two that differ in letter
///     case alone, as Section::SetName() can make them, the file cannot be opened any more;
///   - in a key's name, "=", ";", line feeds, blanks (`" \t\n\r"`) at its ends, and "[" at its start when "]"
///     follows anywhere in the line;
///   - in a value, ";", line feeds and blanks at its ends; the whole value of a key without a name;
///   - in a comment, line feeds and blanks at its end;
///   - a key without a name and without a comment;
///   - the comment of a section; what follows a line feed in it is read as lines of its own.
///
/// CheckStorable() tells before.
class UTILITYDLL_API IniFile {
public:
    IniFile() = default; ///< no sections

    /// Opens `path`; the sections that could be read are there, whatever went wrong.
    explicit IniFile(const std::wstring& path);

    /// Replaces all sections by those of the file. On an error the sections read before the fault stay, the
    /// one under way included:
    ///   - an empty path: an error without a text;
    ///   - no readable regular file: `Error opening "<path>" for reading!`;
    ///   - a section name that was there before: `Error! Duplicate section<name> found!`;
    ///   - a header "[]": `Invalid section definition on line <number>`.
    /// @{
    ErrorString Open(const std::wstring& path);
    ErrorString Open(const FileName& name) { return Open(name.Path()); }
    /// @}

    /// Where opening a file stopped, for hosts that point at it.
    struct Fault {
        /// What it was that stopped.
        enum Kind : std::int32_t {
            NONE,
            NOT_READABLE,      ///< an empty path, or no readable regular file
            DUPLICATE_SECTION, ///< a section name that was there before
            NAMELESS_SECTION,  ///< a header "[]"
        };
        Kind kind = NONE;            ///< what was wrong
        std::uint32_t line = 0;      ///< of the header that is at fault, from 1; 0 when none is
        std::uint32_t firstLine = 0; ///< of a duplicate: the line of the header that was there before
        std::wstring section;        ///< of a duplicate: the name as the line at fault spells it
        std::error_code error = {};  ///< of a file that is not readable: why, where there is a path
    };

    /// Open() that tells in `fault` what was wrong and where.
    ErrorString Open(const std::wstring& path, Fault& fault);

    /// Open() for the content of a file, which is never "not readable".
    ErrorString ReadText(std::string_view content, Fault& fault);

    /// Writes the whole file, with aligned columns and CR LF line ends: the file on disk is the whole old one
    /// or the whole new one, and the result says which (see FILES::ReplaceContents for how, and for links and
    /// permissions). False without a text when there is no section, when a text has a character above 255,
    /// when the file cannot be written, or when memory runs out; a save takes a few kilobytes, whatever the
    /// size of the file.
    /// @{
    ErrorString Save(const std::wstring& path) const;
    ErrorString Save(const FileName& name) const { return Save(name.Path()); }
    /// @}

    /// Save() that tells in `error` why it could not be done: errc::no_message when there is no section,
    /// errc::illegal_byte_sequence for a character above 255, otherwise as FILES::ReplaceContents.
    ErrorString Save(const std::wstring& path, std::error_code& error) const;

    /// Whether Save() can write the texts and Open() gives the same section names, and for each key the same
    /// name, value and comment. The text of an error names the first section and key that would be lost or
    /// changed, and why. Comments of sections, which are never read, count only when they would add lines.
    ErrorString CheckStorable() const;

    /// Adds the sections of `file`, without comments; a section that is there already is replaced. Always
    /// true.
    bool Open(const FileObject& file);

    /// Gives every key of every section to FileObject::SetItem. Comments are not carried over. Always true.
    bool Save(FileObject& file) const;

    /// How many sections there are.
    int NumSections() const { return static_cast<int>(m_sections.Size()); }

    /// Whether there is no section; Save() refuses such a file.
    bool Empty() const { return m_sections.Size() == 0; }

    /// Whether there is a section of that name.
    /// @{
    bool HasSection(const Section& section) const { return HasSection(section.GetName().String()); }
    bool HasSection(const wchar_t* name) const { return HasSection(std::wstring(name ? name : L"")); }
    bool HasSection(const std::wstring& name) const;
    /// @}

    /// The section at that position, from 0. Positions outside 0 to NumSections() - 1 are the caller's error.
    /// @{
    Section& operator[](int position) { return m_sections[static_cast<std::size_t>(position)]; }
    const Section& operator[](int position) const { return m_sections[static_cast<std::size_t>(position)]; }
    /// @}

    /// The section of that name; a missing one is added at the end, empty.
    /// @{
    Section& operator[](const wchar_t* name) { return SectionOf(name ? name : L""); }
    Section& operator[](const std::wstring& name) { return SectionOf(name); }
    /// @}

    /// The section of that name, or m_ErrorSection: nameless and empty.
    /// @{
    const Section& operator[](const wchar_t* name) const { return SectionOf(name ? name : L""); }
    const Section& operator[](const std::wstring& name) const { return SectionOf(name); }
    /// @}

    /// Adds a copy at the end, or replaces the section of that name whole. False for a nameless section.
    bool AddSection(const Section& section);

    /// Removes the section of that name. False when there is none.
    /// @{
    bool RemoveSection(const Section& section) { return RemoveSection(section.GetName().String()); }
    bool RemoveSection(const wchar_t* name) { return RemoveSection(std::wstring(name ? name : L"")); }
    bool RemoveSection(const std::wstring& name);
    /// @}

    /// Gives the section `oldName` the name `newName`. False, changing nothing, when there is no such section
    /// or the new name is taken; so a rename that only changes letter case is refused.
    /// @{
    bool RenameSection(const std::wstring& oldName, const std::wstring& newName);
    bool RenameSection(const wchar_t* oldName, const wchar_t* newName);
    /// @}

    /// Removes all sections.
    void Clear() { m_sections.Clear(); }

    /// What the look-ups of a const file give for a name that is missing: nameless, without keys.
    static const Section m_ErrorSection;

private:
    struct Builder; // of what is read
    Section& SectionOf(std::wstring_view name);
    const Section& SectionOf(std::wstring_view name) const;

    NamedSequence<Section> m_sections;
};
