#include "apps/chartutil/files/SettingsFile.h"

#include "VelmBase/SettingsText.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Errors.h"

#include <algorithm>
#include <set>

namespace {

// Takes sections until a name comes again, if names have to differ.
struct Finder : SETTINGS::Handler {
    bool OnSection(SETTINGS::Bytes name) override {
        last = SETTINGS::Widened(name);
        std::wstring capitals = last;
        std::transform(capitals.begin(), capitals.end(), capitals.begin(), ToUpperW);
        return names.insert(capitals).second || !namesDiffer;
    }
    void OnKey(SETTINGS::Bytes, SETTINGS::Bytes, SETTINGS::Bytes) override {}
    bool namesDiffer = true;
    std::set<std::wstring> names;
    std::wstring last;
};

// Tells where reading a file stopped: the library's message has the line for one fault only.
[[noreturn]] void ThrowFault(const UserText& path, bool namesDiffer) {
    Finder finder;
    finder.namesDiffer = namesDiffer;
    const SETTINGS::ReadResult result = SETTINGS::Read(path.Wide(), finder);
    const std::string place = path.Utf8() + ":" + std::to_string(result.lineNumber) + ": ";
    switch (result.status) {
    case SETTINGS::ReadStatus::BAD_HEADER:
        throw CommandError(ExitCode::IO_ERROR,
                           place + "a section has no name; write one between \"[\" and \"]\"");
    case SETTINGS::ReadStatus::STOPPED:
        throw CommandError(ExitCode::IO_ERROR,
                           place + "the section " + InBrackets(finder.last) +
                               " is there already (letter case does not count); rename or remove one of the "
                               "two");
    case SETTINGS::ReadStatus::NOT_OPENED:
    case SETTINGS::ReadStatus::COMPLETE: // by now
        break;
    }
    ThrowNotReadable(path);
}

} // namespace

IniFile OpenSettings(const UserText& path) {
    IniFile file;
    if (!file.Open(path.Wide())) ThrowFault(path, true);
    return file;
}

FileObject OpenFileObject(const UserText& path) {
    FileObject file;
    if (!file.Open(path.Wide(), 0)) ThrowFault(path, false);
    return file;
}

void SaveSettings(const IniFile& file, const UserText& path) {
    if (!file.Save(path.Wide())) ThrowNotWritten(path.Utf8());
}

Section& RequireSection(IniFile& file, const UserText& path, const UserText& name) {
    if (!file.HasSection(name.Wide()))
        throw CommandError(ExitCode::CHECK_FAILED, path.Utf8() + ": there is no section [" + name.Utf8() +
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
