// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/ErrorString.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// A settings file as the lines that stand in it, for programs that edit files which people edit as well.
/// What a line says is what IniFile reads of it, and after an edit IniFile reads what it would hold after the
/// same edit; but each edit changes the bytes that it means and no others: line ends, blanks, columns, "#"
/// lines, blank lines, lines before the first section, comments and the end of the file stay. (A "#" line is
/// a key to IniFile. Here it keeps its place where a new key goes before it, so that the two may differ in
/// the order of such keys.)
///
/// Names match whatever their letter case; of several keys with one name the first counts. Texts are those of
/// IniFile: a byte is the character of the same code. Each edit takes time for what it changes, so that many
/// edits of a file together cost little more than one.
///
/// One thread at a time may use a document, for questions too. One that was moved from can only be destroyed
/// or get another.
class UTILITYDLL_API IniDocument {
public:
    IniDocument(); ///< an empty file
    ~IniDocument();

    /// The other document can afterwards only be destroyed or get another.
    /// @{
    IniDocument(IniDocument&& other) noexcept;
    IniDocument& operator=(IniDocument&& other) noexcept;
    /// @}

    /// Takes the content of a file in the place of what there was. The bytes before `start` stay as they are
    /// and are not read. False, with an empty document, where IniFile::Open would stop; `fault` says where.
    [[nodiscard]] bool Parse(std::string content, IniFile::Fault& fault, std::size_t start = 0);

    /// The content of the file with all edits.
    std::string Text() const;

    std::vector<std::wstring> SectionNames() const; ///< in file order

    /// Whether there is a section of that name.
    bool HasSection(const std::wstring& section) const;

    /// The section as IniFile reads it; nameless and empty when there is none.
    Section Read(const std::wstring& section) const;

    /// Every key of that name in the section, in file order. A look through the section's lines: nothing is
    /// kept of them.
    std::vector<SectionKey> Read(const std::wstring& section, const std::wstring& key) const;

    /// The line of the section's header, or of the first key of that name in it, from 1 in the text that was
    /// parsed; 0 when it is not there or was added since.
    /// @{
    std::uint32_t LineOf(const std::wstring& section) const;
    std::uint32_t LineOf(const std::wstring& section, const std::wstring& key) const;
    /// @}

    /// Adds a section at the end, set off by an empty line; one that is there is left as it is. An error says
    /// what a header cannot carry (see SETTINGS::CheckSectionName), and nothing is changed.
    ErrorString AddSection(const std::wstring& section);

    /// Gives the key this value, and changes nothing else on its line. A section that is missing is added; a
    /// key that is missing goes behind the last key of its section, with the spacing and the line end of its
    /// neighbours (comments and "#" lines at the end of a section stay behind it). An error says what a line
    /// cannot carry (see SETTINGS::CheckKeyLine), and nothing is changed.
    ErrorString Set(const std::wstring& section, const std::wstring& key, const std::wstring& value);

    /// Gives the key's line this comment; an empty one takes it away with its ";" and the blanks before it.
    /// An error when there is no such key, or as for Set().
    ErrorString SetComment(const std::wstring& section, const std::wstring& key, const std::wstring& comment);

    /// Removes the section with all its lines, but for a comment that stands directly above the next header
    /// and apart from the lines before it; that stands behind the section before from then on, unless it has
    /// "#" lines, which would break that section's seal. Or removes the line of the key. False when there is
    /// none; a line with a comment alone is no key.
    /// @{
    bool Remove(const std::wstring& section);
    bool Remove(const std::wstring& section, const std::wstring& key);
    /// @}

    /// Gives the section or the key another name. An error when there is none, when the new name is taken
    /// (whatever its letter case, so that a rename which changes letter case alone is refused), or when a
    /// line cannot carry it.
    /// @{
    ErrorString Rename(const std::wstring& section, const std::wstring& newName);
    ErrorString Rename(const std::wstring& section, const std::wstring& key, const std::wstring& newName);
    /// @}

    /// Stores the section's checksum as Section::AddChecksum() does. False when there is no such section.
    bool Seal(const std::wstring& section);

    /// A run of lines that the edits changed, without their line ends.
    struct Change {
        std::uint32_t line; ///< of the first of them in the text that was parsed, from 1; where nothing was
                            ///< there before, of the line that now follows
        /// What they said and what they say now. One of them is empty where lines were added or removed.
        /// @{
        std::vector<std::string> before, after;
        /// @}
    };
    /// What the edits changed, in file order. The runs do not touch.
    std::vector<Change> Changes() const;

    /// Reads the file `path`, lets `edit` change it, and replaces it by the result, while no other process
    /// updates or saves it: see FILES::UpdateContents, whose errors it has. `edit` returns whether to write
    /// the result. Without a file the document is empty and `exists` false. A file in which IniFile::Open
    /// would stop gives errc::bad_message, and `fault` says where.
    [[nodiscard]] static std::error_code
    Update(const std::wstring& path, const std::function<bool(IniDocument& document, bool exists)>& edit,
           IniFile::Fault& fault);

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
