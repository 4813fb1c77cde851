#include "apps/chartutil/commands/settings/Seals.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/LineRules.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"

#include <iostream>

namespace {

void RequireNoChecksumKey(const UserText& name) {
    if (icompareW(name.Wide(), Section::m_ChecksumName.String()))
        throw CommandError(ExitCode::WRONG_USE,
                           "\"$CHECKSUM$\" holds the seal of its section; use 'chartutil settings seal'");
}

[[noreturn]] void ThrowNameTaken(const UserText& path, const UserText& name) {
    throw CommandError(ExitCode::CHECK_FAILED,
                       path.Utf8() + ": the name \"" + name.Utf8() +
                           "\" is taken (letter case does not count); nothing is changed");
}

void RenameSection(IniFile& file, const RenameSetting& options) {
    RequireSection(file, options.file, options.section);
    RequireSectionName(options.newName.Wide());
    if (!file.RenameSection(options.section.Wide(), options.newName.Wide()))
        ThrowNameTaken(options.file, options.newName);
    if (options.seal) AddSeal(file[options.newName.Wide()]);
}

void RenameKey(IniFile& file, const RenameSetting& options) {
    Section& section = RequireSection(file, options.file, options.section);
    SectionKey& key = RequireKey(section, options.file, *options.key);
    RequireNoChecksumKey(*options.key);
    RequireNoChecksumKey(options.newName);
    const std::wstring& newName = options.newName.Wide();
    RequireKeyLine(newName, key.GetValue(), key.GetComments());
    if (section.HasKey(newName)) ThrowNameTaken(options.file, options.newName);
    key = SectionKey(newName, key.GetValue(), key.GetComments());
    RenewSeal(section, options.seal);
}

} // namespace

void Run(const SetSetting& options) {
    RequireNoChecksumKey(options.key);
    IniFile file;
    if (!options.create || PathExists(options.file)) file = OpenSettings(options.file);
    const bool isNewSection = !file.HasSection(options.section.Wide());
    if (isNewSection) RequireSectionName(options.section.Wide());
    const SectionKey old = std::as_const(file)[options.section.Wide()][options.key.Wide()];
    const std::wstring comment = options.comment ? options.comment->Wide() : old.GetComments();
    RequireKeyLine(old.IsValid() ? old.GetName().String() : options.key.Wide(), options.value.Wide(),
                   comment);

    Section& section = file[options.section.Wide()];
    SectionKey& key = section[options.key.Wide()];
    key << options.value.Wide();
    key.SetComments(comment);
    RenewSeal(section, options.seal);
    SaveSettings(file, options.file);

    std::cout << Printable(options.file.Utf8() + ": " + InBrackets(section.GetName()) + " " +
                           ToUtf8(key.GetName().String()) + " = " + options.value.Utf8());
    if (old.IsValid())
        std::cout << Printable(" (was \"" + ToUtf8(old.GetValue()) + "\")");
    else
        std::cout << (isNewSection ? " (new section)" : " (new key)");
    std::cout << '\n';
}

void Run(const RemoveSetting& options) {
    IniFile file = OpenSettings(options.file);
    Section& section = RequireSection(file, options.file, options.section);
    std::string removed = InBrackets(section.GetName());
    if (options.key) {
        const std::wstring key = RequireKey(section, options.file, *options.key).GetName();
        removed += " " + ToUtf8(key);
        section.RemoveKey(key);
        RenewSeal(section, options.seal);
    } else {
        if (file.NumSections() == 1)
            throw CommandError(ExitCode::WRONG_USE,
                               options.file.Utf8() + ": " + removed +
                                   " is the only section, and a settings file has one at "
                                   "least; delete the file instead");
        file.RemoveSection(options.section.Wide());
    }
    SaveSettings(file, options.file);
    std::cout << Printable(options.file.Utf8() + ": removed " + removed) << '\n';
}

void Run(const RenameSetting& options) {
    IniFile file = OpenSettings(options.file);
    options.key ? RenameKey(file, options) : RenameSection(file, options);
    SaveSettings(file, options.file);
    const std::string& newName = options.newName.Utf8();
    std::cout << Printable(options.file.Utf8() + ": [" + options.section.Utf8() + "]" +
                           (options.key ? " " + options.key->Utf8() + " is now " + newName
                                        : " is now [" + newName + "]"))
              << '\n';
}
