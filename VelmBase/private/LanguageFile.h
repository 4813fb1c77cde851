// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// Language files hold a library's texts in another language, in the form of the PO files of gettext, for
// which there are editors:
//
//     # a comment
//     msgctxt "9086"
//     msgid "Invalid section definition on line "
//     msgstr "Ungültige Abschnittsdefinition in Zeile "
//
// "msgctxt" has the text's number, "msgid" the original, which only the translator needs, "msgstr" the
// translation. Quoted pieces on lines of their own continue a text; \n \t \" and \\ stand for a line break, a
// tab, a quote and a backslash. A "#, fuzzy" above an entry says that it is not to be used yet.
namespace LANGUAGES {

/// Takes an entry; the translation is empty where there is none yet. A text has no control characters but
/// line breaks and tabs.
using EntryHandler =
    std::function<void(std::uint32_t number, const std::wstring& original, const std::wstring& translation)>;

/// Hands over the entries of `bytes` (UTF-8) in their order. An entry that is fuzzy, incomplete, or damaged
/// by so much as a byte is left out, and those after it are not the worse for it. Needs time and memory in
/// proportion to the size.
VELMBASE_API void ReadEntries(std::string_view bytes, const EntryHandler& handler);

/// The same for a file. False, and nothing is handed over, when it cannot be read or has more than a
/// mebibyte.
VELMBASE_API bool ReadEntriesOf(const std::wstring& path, const EntryHandler& handler);

} // namespace LANGUAGES
