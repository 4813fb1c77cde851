// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/IniDocument.h"
#include "apps/chartutil/files/TextEncoding.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/UserText.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A settings file as the user names it: which one, and what its bytes stand for.
struct SettingsSource {
    UserText file; ///< "-" for standard input
    TextEncoding encoding = TextEncoding::ONE_BYTE;
};

/// The lines of a settings file in the words of the user, who may have given the wrong file, name or encoding
/// and is told so: each function ends the command when it cannot do its work.
class SettingsDocument {
public:
    /// Reads the file. One that is obviously of another kind ends the command (ExitCode::CHECK_FAILED).
    explicit SettingsDocument(const SettingsSource& source);

    /// Takes the content of the file, of whatever kind it is.
    SettingsDocument(const SettingsSource& source, std::string content);

    /// What the file is called in messages.
    const std::string& Name() const { return m_name; }

    IniDocument& Lines() { return m_lines; }
    const IniDocument& Lines() const { return m_lines; }

    /// A text that the user gave as the file has it, and one of the file as the user reads it.
    std::wstring Stored(const UserText& text) const;
    std::string Shown(std::wstring_view stored) const;

    /// Looks, before the first text beyond ASCII is used, whether the file looks like UTF-8. Stored() and
    /// Shown() do so with theirs.
    void Consider(std::wstring_view stored) const;

    // Names are as the file has them, and match whatever their letter case.

    /// Whether there is a section of that name. One that cannot be seen behind a byte order mark ends the
    /// command (ExitCode::CHECK_FAILED).
    bool HasSection(const std::wstring& name) const;

    /// The section of that name (ExitCode::CHECK_FAILED when there is none).
    Section RequireSection(const std::wstring& name) const;

    /// The keys of that name in a section that is there; the error key is none.
    std::vector<SectionKey> Keys(const std::wstring& section, const std::wstring& name) const;

    /// The same where there has to be one (ExitCode::CHECK_FAILED).
    std::vector<SectionKey> RequireKeys(const std::wstring& section, const std::wstring& name) const;

    /// All sections, in file order. A note tells of one behind a byte order mark, which is not among them.
    std::vector<std::wstring> Sections() const;

    /// The sections of these names; without names all, of which there has to be one (ExitCode::CHECK_FAILED).
    std::vector<std::wstring> RequireSections(const std::vector<UserText>& names) const;

    /// Notes, once, that the file looks like UTF-8, if that changes one of the texts that were used so far.
    void HintAtEncoding() const;

    /// Ends the command (ExitCode::WRONG_USE) where an edit has put other bytes into a file that is in UTF-8.
    void RequireOneEncoding() const;

private:
    std::string HiddenText() const;

    std::string m_name;
    TextEncoding m_encoding;
    std::wstring m_hiddenSection; ///< behind a byte order mark that is not known as one; empty for none
    mutable bool m_isBeyondAscii = false; ///< a text that was used
    mutable bool m_looksLikeUtf8 = false; ///< the content, if such a text asked for it
    mutable bool m_isHinted = false;
    IniDocument m_lines;
};

/// How a command changes a settings file.
struct SettingsChange : SettingsSource {
    bool create = false;   ///< make the file if there is none
    bool isForced = false; ///< also a file of another kind
    bool isDryRun = false; ///< only show what would change
};

/// Reads the file, lets `edit` change it, and replaces it by the result, while no other program changes it; a
/// file in which nothing changes is left alone. `edit` may be called again, on a fresh document. With "-" the
/// result goes to standard output, and all that is printed from now on to standard error. A dry run prints
/// the difference instead, and the answer is false.
bool ChangeSettings(const SettingsChange& change, const std::function<void(SettingsDocument&)>& edit);
