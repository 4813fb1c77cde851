#include "apps/chartutil/files/SettingsFile.h"

#include "VelmBase/SettingsText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Errors.h"

#include <algorithm>
#include <set>

namespace {

// Tells where opening a file stopped: the library's message has the line for one fault only.
[[noreturn]] void ThrowOpenError(const std::string& path, const ErrorString& error) {
    struct Finder : SETTINGS::Handler {
        bool OnSection(SETTINGS::Bytes name) override {
            last = SETTINGS::Widened(name);
            std::wstring capitals = last;
            std::transform(capitals.begin(), capitals.end(), capitals.begin(), ToUpperW);
            return names.insert(capitals).second;
        }
        void OnKey(SETTINGS::Bytes, SETTINGS::Bytes, SETTINGS::Bytes) override {}
        std::set<std::wstring> names;
        std::wstring last;
    };
    Finder finder;
    const SETTINGS::ReadResult result = SETTINGS::Read(FromUtf8(path), finder);
    const std::string place = path + ":" + std::to_string(result.lineNumber) + ": ";
    switch (result.status) {
    case SETTINGS::ReadStatus::BAD_HEADER:
        throw CommandError(ExitCode::IO_ERROR,
                           place + "a section has no name; write one between \"[\" and \"]\"");
    case SETTINGS::ReadStatus::STOPPED:
        throw CommandError(ExitCode::IO_ERROR,
                           place + "the section " + InBrackets(finder.last) +
                               " is there already (letter case does not count); rename or "
                               "remove one of the two");
    case SETTINGS::ReadStatus::NOT_OPENED:
        ThrowNotReadable(path);
    case SETTINGS::ReadStatus::COMPLETE:
        break;
    }
    throw CommandError(ExitCode::IO_ERROR, path + ": " + ToUtf8(error.Text()));
}

} // namespace

IniFile OpenSettings(const std::string& path) {
    IniFile file;
    if (const ErrorString result = file.Open(FromUtf8(path)); !result) ThrowOpenError(path, result);
    return file;
}

void SaveSettings(const IniFile& file, const std::string& path) {
    if (!file.Save(FromUtf8(path)))
        throw CommandError(ExitCode::IO_ERROR,
                           path + ": cannot be saved, it is as it was; check that the folder exists, the "
                                  "permissions of file and folder, and the space on the disk");
}

Section& RequireSection(IniFile& file, const std::string& path, const std::string& name) {
    if (!file.HasSection(FromUtf8(name)))
        throw CommandError(ExitCode::CHECK_FAILED, path + ": there is no section [" + name +
                                                       "]; 'chartutil settings show' lists them");
    return file[FromUtf8(name)];
}

SectionKey& RequireKey(Section& section, const std::string& path, const std::string& name) {
    if (name.empty() || !section.HasKey(FromUtf8(name)))
        throw CommandError(ExitCode::CHECK_FAILED, path + ": there is no key \"" + name + "\" in " +
                                                       InBrackets(section.GetName()) +
                                                       "; 'chartutil settings show' lists them");
    return section[FromUtf8(name)];
}

std::string InBrackets(const std::wstring& section) { return "[" + ToUtf8(section) + "]"; }
