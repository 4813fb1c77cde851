// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/SettingsFile.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Suggestion.h"
#include "apps/chartutil/work/LongWork.h"

#include <cstdint>

namespace {

[[noreturn]] void ThrowAtLine(const std::string& name, std::uint32_t line, const std::string& what) {
    throw CommandError(ExitCode::IO_ERROR, name + ":" + std::to_string(line) + ": " + what);
}

constexpr const char* kNamelessSection = "a section has no name; write one between \"[\" and \"]\"";
constexpr const char* kShowLists = " 'chartutil settings show' lists them";

} // namespace

IniFile OpenSettings(const UserText& path) {
    const Progress progress(InputName(path));
    return SettingsOf(ReadFile(path), path);
}

IniFile SettingsOf(std::string_view content, const UserText& path) {
    IniFile file;
    IniFile::Fault fault;
    if (file.ReadText(content, fault)) return file;
    ThrowSettingsFault(InputName(path), fault);
}

FileObject OpenFileObject(const UserText& path) {
    const Progress progress(InputName(path));
    FileObject file;
    std::uint32_t line = 0;
    if (!file.ReadText(ReadFile(path), line)) ThrowAtLine(InputName(path), line, kNamelessSection);
    return file;
}

void SaveSettings(const IniFile& file, const UserText& path) {
    if (const ErrorString storable = file.CheckStorable(); !storable)
        PrintNote("chartutil: note: " + path.Utf8() + ": does not come back: " + ToUtf8(storable.Text()));
    const Progress progress(path.Utf8());
    std::error_code error;
    if (!file.Save(path.Wide(), error)) ThrowNotWritten(path.Utf8(), error);
    NoteChanged(path.Utf8());
}

void ThrowSettingsFault(const std::string& name, const IniFile::Fault& fault) {
    ThrowAtLine(name, fault.line,
                fault.kind == IniFile::Fault::NAMELESS_SECTION
                    ? kNamelessSection
                    : "the section " + InBrackets(fault.section) +
                          " is there already (letter case does not count); rename or remove one of the two");
}

Section& RequireSection(IniFile& file, const UserText& path, const UserText& name) {
    if (file.HasSection(name.Wide())) return file[name.Wide()];
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(file.NumSections()));
    for (int i = 0; i < file.NumSections(); ++i) names.push_back(ToUtf8(file[i].GetName().String()));
    ThrowNoSection(InputName(path), name.Utf8(), names);
}

void ThrowNoSection(const std::string& file, const std::string& name, const std::vector<std::string>& names) {
    const std::string meant = DidYouMean(name, names, '[', ']');
    throw CommandError(ExitCode::CHECK_FAILED, file + ": there is no section [" + name + "]" + meant +
                                                   (meant.empty() ? ";" : "") + kShowLists);
}

void ThrowNoKey(const std::string& file, const std::string& name, const std::string& section,
                const std::vector<std::string>& names) {
    const std::string meant = DidYouMean(name, names, '"', '"');
    throw CommandError(ExitCode::CHECK_FAILED, file + ": there is no key \"" + name + "\" in [" + section +
                                                   "]" + meant + (meant.empty() ? ";" : "") + kShowLists);
}

std::string InBrackets(const std::wstring& section) { return "[" + ToUtf8(section) + "]"; }
