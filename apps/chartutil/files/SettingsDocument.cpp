// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/SettingsDocument.h"

#include "VelmBase/File.h"
#include "VelmBase/SettingsText.h"
#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/files/UnifiedDiff.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace {

void RequireSettings(const SettingsSource& source, std::string_view content, const char* advice) {
    if (const std::string mismatch = MismatchOf(content, FileKind::SETTINGS); !mismatch.empty())
        throw CommandError(ExitCode::CHECK_FAILED, InputName(source.file) + ": is " + mismatch + advice);
}

std::string ReadSettings(const SettingsSource& source) {
    std::string content = ReadFile(source.file);
    // Where there are sections to be seen, a control code in a value is no reason to show none.
    SETTINGS::FoundHeader header;
    const bool isText = content.find('\0') == std::string::npos;
    if (!isText || !SETTINGS::FindHeader(content, 0, header)) RequireSettings(source, content, "");
    return content;
}

// The section that begins on the file's first line, where a mark keeps it from being read.
std::wstring SectionBehindMark(std::string_view content) {
    if (!content.starts_with(kByteOrderMark)) return {};
    content.remove_prefix(kByteOrderMark.size());
    const SETTINGS::Line line = SETTINGS::Parse(content.substr(0, content.find('\n')));
    return line.kind == SETTINGS::Line::HEADER ? FromUtf8(line.name) : std::wstring();
}

void PrintDifference(const SettingsDocument& document, std::string_view before) {
    const std::vector<std::string> lines = UnifiedDiff(before, document.Lines().Changes());
    if (lines.empty()) return PrintNote("chartutil: note: " + document.Name() + ": nothing would change");
    std::cout << Printable("--- " + document.Name() + "\n+++ " + document.Name()) << '\n';
    for (const std::string& line : lines) PrintDifferenceLine(document.Shown(SETTINGS::Widened(line)));
}

} // namespace

SettingsDocument::SettingsDocument(const SettingsSource& source)
    : SettingsDocument(source, ReadSettings(source)) {}

SettingsDocument::SettingsDocument(const SettingsSource& source, std::string content)
    : m_name(InputName(source.file)), m_encoding(source.encoding) {
    const Progress progress(m_name);
    const bool isUtf8 = m_encoding == TextEncoding::UTF_8;
    if (!isUtf8) m_hiddenSection = SectionBehindMark(content);
    const std::size_t start = isUtf8 && content.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    IniFile::Fault fault;
    if (!m_lines.Parse(std::move(content), fault, start)) ThrowSettingsFault(m_name, fault);
}

std::wstring SettingsDocument::Stored(const UserText& text) const {
    std::wstring stored = StoredText(text, m_encoding);
    Consider(stored);
    HintAtEncoding(); // before it is not found, or refused
    return stored;
}

std::string SettingsDocument::Shown(std::wstring_view stored) const {
    Consider(stored);
    return ShownText(stored, m_encoding);
}

void SettingsDocument::Consider(std::wstring_view stored) const {
    const auto isBeyondAscii = [](wchar_t c) { return c > 0x7F; };
    if (m_isBeyondAscii || std::ranges::none_of(stored, isBeyondAscii)) return;
    m_isBeyondAscii = true;
    m_looksLikeUtf8 = m_encoding == TextEncoding::ONE_BYTE && LooksLikeUtf8(m_lines.Text());
}

bool SettingsDocument::HasSection(const std::wstring& name) const {
    if (m_lines.HasSection(name)) return true;
    if (!name.empty() && icompareW(name, m_hiddenSection))
        throw CommandError(ExitCode::CHECK_FAILED, HiddenText());
    return false;
}

std::string SettingsDocument::HiddenText() const {
    return m_name + ": a byte order mark hides the section [" + ToUtf8(m_hiddenSection) +
           "], as the file is in UTF-8; give --encoding utf-8";
}

Section SettingsDocument::RequireSection(const std::wstring& name) const {
    if (HasSection(name)) return m_lines.Read(name);
    std::vector<std::string> names;
    for (const std::wstring& other : m_lines.SectionNames()) names.push_back(Shown(other));
    ThrowNoSection(m_name, Shown(name), names);
}

std::vector<SectionKey> SettingsDocument::Keys(const std::wstring& section, const std::wstring& name) const {
    if (name.empty()) return {};
    return m_lines.Read(section, name);
}

std::vector<SectionKey> SettingsDocument::RequireKeys(const std::wstring& section,
                                                      const std::wstring& name) const {
    if (HasSection(section))
        if (std::vector<SectionKey> keys = Keys(section, name); !keys.empty()) return keys;
    const Section whole = RequireSection(section);
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(whole.NumKeys()));
    for (int i = 0; i < whole.NumKeys(); ++i) names.push_back(Shown(whole[i].GetName().String()));
    ThrowNoKey(m_name, Shown(name), Shown(whole.GetName().String()), names);
}

std::vector<std::wstring> SettingsDocument::Sections() const {
    if (!m_hiddenSection.empty()) PrintNote("chartutil: note: " + HiddenText());
    return m_lines.SectionNames();
}

std::vector<std::wstring> SettingsDocument::RequireSections(const std::vector<UserText>& names) const {
    std::vector<std::wstring> chosen;
    chosen.reserve(names.size());
    for (const UserText& name : names) chosen.push_back(RequireSection(Stored(name)).GetName());
    if (names.empty()) chosen = Sections();
    if (chosen.empty())
        throw CommandError(ExitCode::CHECK_FAILED,
                           m_name + ": there is no section in it; is it a settings file?");
    return chosen;
}

void SettingsDocument::HintAtEncoding() const {
    if (m_looksLikeUtf8 && !std::exchange(m_isHinted, true))
        PrintNote("chartutil: note: " + m_name +
                  ": looks like UTF-8, and is read as one byte a character; give --encoding utf-8");
}

void SettingsDocument::RequireOneEncoding() const {
    if (!m_looksLikeUtf8) return;
    const auto isOther = [](const std::string& line) { return !IsAscii(line) && !LooksLikeUtf8(line); };
    for (const IniDocument::Change& change : m_lines.Changes())
        if (std::ranges::any_of(change.after, isOther))
            throw CommandError(ExitCode::WRONG_USE,
                               m_name +
                                   ": the text would be written as one byte a character into a file that is "
                                   "in UTF-8; nothing was written; give --encoding utf-8");
}

bool ChangeSettings(const SettingsChange& change, const std::function<void(SettingsDocument&)>& edit) {
    bool isChanged = false;
    const auto update = [&](std::string& content, bool exists) {
        if (!exists && !change.create)
            ThrowNotReadable(change.file, std::make_error_code(std::errc::no_such_file_or_directory));
        if (!change.isForced)
            RequireSettings(change, content, "; nothing was written; --force changes it all the same");
        const std::string before = change.isDryRun ? content : std::string();
        SettingsDocument document(change, std::move(content));
        edit(document);
        if (!change.isForced) document.RequireOneEncoding();
        if (change.isDryRun) PrintDifference(document, before);
        document.HintAtEncoding();
        StopIfInterrupted();
        isChanged = !document.Lines().Changes().empty();
        content = document.Lines().Text();
        return isChanged;
    };
    if (change.isDryRun || IsStandardStream(change.file)) {
        if (!change.isDryRun) StandardStreams::TakeOutput();
        const bool exists = IsStandardStream(change.file) || PathExists(change.file);
        std::string content = exists ? ReadFile(change.file) : std::string();
        update(content, exists);
        if (!change.isDryRun) WriteFile(change.file, content);
        return !change.isDryRun;
    }
    if (const std::error_code error = FILES::UpdateContents(change.file.Wide(), update))
        ThrowNotWritten(change.file.Utf8(), error);
    if (isChanged) NoteChanged(change.file.Utf8());
    return true;
}
