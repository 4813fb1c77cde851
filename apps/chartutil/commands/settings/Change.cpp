// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/settings/Seals.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/LineRules.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Console.h"

namespace {

void RequireNoChecksumKey(const std::wstring& name) {
    if (icompareW(name, Section::m_ChecksumName.String()))
        throw CommandError(ExitCode::WRONG_USE,
                           "\"$CHECKSUM$\" holds the seal of its section; use 'chartutil settings seal'");
}

[[noreturn]] void ThrowNameTaken(const SettingsDocument& document, const UserText& name) {
    throw CommandError(ExitCode::CHECK_FAILED,
                       document.Name() + ": the name \"" + name.Utf8() +
                           "\" is taken (letter case does not count); nothing is changed");
}

std::string InBrackets(const SettingsDocument& document, const Section& section) {
    return "[" + document.Shown(section.GetName().String()) + "]";
}

// Gives the key its value and comment, and says what that has changed.
std::string Set(SettingsDocument& document, const SetSetting& options) {
    const std::wstring section = document.Stored(options.section);
    const std::wstring key = document.Stored(options.key);
    const std::wstring value = document.Stored(options.value);
    RequireNoChecksumKey(key);
    const bool isNewSection = !document.HasSection(section);
    if (isNewSection) RequireSectionName(section);
    const std::vector<SectionKey> there =
        isNewSection ? std::vector<SectionKey>() : document.Keys(section, key);
    const SectionKey old = there.empty() ? SectionKey(key) : there.front();
    const std::wstring comment = options.comment ? document.Stored(*options.comment) : old.GetComments();
    RequireKeyLine(old.GetName().String(), value, comment);
    if (!isNewSection) RequireNoEdits(document, section, options);

    RequireStored(document.Lines().Set(section, key, value));
    if (options.comment) RequireStored(document.Lines().SetComment(section, key, comment));
    RenewSeal(document, section, options);

    const std::string result = InBrackets(document, document.Lines().Read(section)) + " " +
                               document.Shown(old.GetName().String()) + " = " + options.value.Utf8();
    if (isNewSection) return result + " (new section)";
    if (there.empty()) return result + " (new key)";
    return result + " (was \"" + document.Shown(old.GetValue()) + "\")";
}

// Removes the section or the key, and says which.
std::string Remove(SettingsDocument& document, const RemoveSetting& options) {
    const Section section = document.RequireSection(document.Stored(options.section));
    const std::wstring name = section.GetName();
    std::string shown = InBrackets(document, section);
    if (!options.key) {
        if (document.Lines().SectionNames().size() == 1)
            throw CommandError(ExitCode::WRONG_USE,
                               document.Name() + ": " + shown +
                                   " is the only section, and a settings file has one at "
                                   "least; delete the file instead");
        document.Lines().Remove(name);
        return shown;
    }
    const SectionKey key = document.RequireKeys(name, document.Stored(*options.key)).front();
    RequireNoEdits(document, name, options);
    document.Lines().Remove(name, key.GetName());
    RenewSeal(document, name, options);
    return shown + " " + document.Shown(key.GetName().String());
}

void RenameSection(SettingsDocument& document, const std::wstring& section, const RenameSetting& options) {
    const std::wstring newName = document.Stored(options.newName);
    RequireSectionName(newName);
    if (document.HasSection(newName)) ThrowNameTaken(document, options.newName);
    RequireNoEdits(document, section, options);
    RequireStored(document.Lines().Rename(section, newName));
    if (options.seal) RenewSeal(document, newName, options);
}

void RenameKey(SettingsDocument& document, const std::wstring& section, const RenameSetting& options) {
    const SectionKey key = document.RequireKeys(section, document.Stored(*options.key)).front();
    const std::wstring newName = document.Stored(options.newName);
    RequireNoChecksumKey(key.GetName());
    RequireNoChecksumKey(newName);
    RequireKeyLine(newName, key.GetValue(), key.GetComments());
    if (!document.Keys(section, newName).empty()) ThrowNameTaken(document, options.newName);
    RequireNoEdits(document, section, options);
    RequireStored(document.Lines().Rename(section, key.GetName(), newName));
    RenewSeal(document, section, options);
}

} // namespace

void Run(const SetSetting& options) {
    std::string done;
    if (ChangeSettings(options, [&](SettingsDocument& document) { done = Set(document, options); }))
        PrintDone(InputName(options.file) + ": " + done);
}

void Run(const RemoveSetting& options) {
    std::string removed;
    if (ChangeSettings(options, [&](SettingsDocument& document) { removed = Remove(document, options); }))
        PrintDone(InputName(options.file) + ": removed " + removed);
}

void Run(const RenameSetting& options) {
    const bool isDone = ChangeSettings(options, [&](SettingsDocument& document) {
        const std::wstring section = document.Stored(options.section);
        (void)document.RequireSection(section);
        options.key ? RenameKey(document, section, options) : RenameSection(document, section, options);
    });
    const std::string& newName = options.newName.Utf8();
    if (isDone)
        PrintDone(
            InputName(options.file) + ": [" + options.section.Utf8() + "]" +
            (options.key ? " " + options.key->Utf8() + " is now " + newName : " is now [" + newName + "]"));
}
