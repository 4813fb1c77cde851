#include "apps/chartutil/files/SettingsFile.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

#include <cstdint>

namespace {

[[noreturn]] void ThrowAtLine(const UserText& path, std::uint32_t line, const std::string& what) {
    throw CommandError(ExitCode::IO_ERROR, InputName(path) + ":" + std::to_string(line) + ": " + what);
}

constexpr const char* kNamelessSection = "a section has no name; write one between \"[\" and \"]\"";

} // namespace

IniFile OpenSettings(const UserText& path) {
    const Progress progress(InputName(path));
    return SettingsOf(ReadFile(path), path);
}

IniFile SettingsOf(std::string_view content, const UserText& path) {
    IniFile file;
    IniFile::Fault fault;
    if (file.ReadText(content, fault)) return file;
    if (fault.kind == IniFile::Fault::NAMELESS_SECTION) ThrowAtLine(path, fault.line, kNamelessSection);
    ThrowAtLine(path, fault.line,
                "the section " + InBrackets(fault.section) +
                    " is there already (letter case does not count); rename or remove one of the two");
}

FileObject OpenFileObject(const UserText& path) {
    const Progress progress(InputName(path));
    FileObject file;
    std::uint32_t line = 0;
    if (!file.ReadText(ReadFile(path), line)) ThrowAtLine(path, line, kNamelessSection);
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

Section& RequireSection(IniFile& file, const UserText& path, const UserText& name) {
    if (!file.HasSection(name.Wide()))
        throw CommandError(ExitCode::CHECK_FAILED, InputName(path) + ": there is no section [" + name.Utf8() +
                                                       "]; 'chartutil settings show' lists them");
    return file[name.Wide()];
}

SectionKey& RequireKey(Section& section, const UserText& path, const UserText& name) {
    if (name.Empty() || !section.HasKey(name.Wide()))
        throw CommandError(ExitCode::CHECK_FAILED, path.Utf8() + ": there is no key \"" + name.Utf8() +
                                                       "\" in " + InBrackets(section.GetName()) +
                                                       "; 'chartutil settings show' lists them");
    return section[name.Wide()];
}

std::string InBrackets(const std::wstring& section) { return "[" + ToUtf8(section) + "]"; }
