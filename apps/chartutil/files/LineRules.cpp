// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/LineRules.h"

#include "VelmBase/SettingsText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/Errors.h"

namespace {

// A lone carriage return comes back from a file, but not from one that an editor has saved.
void RequireOneLine(const std::string& what, const std::wstring& text) {
    if (text.find_first_of(L"\r\n") != std::wstring::npos)
        throw CommandError(ExitCode::WRONG_USE,
                           "the " + what + " has a line break; a settings file keeps it on one line");
}

} // namespace

void RequireStored(const ErrorString& result) {
    if (!result) throw CommandError(ExitCode::WRONG_USE, ToUtf8(result.Text()));
}

void RequireSectionName(const std::wstring& name) {
    RequireOneLine("section name", name);
    RequireStored(SETTINGS::CheckSectionName(name));
}

void RequireKeyLine(const std::wstring& name, const std::wstring& value, const std::wstring& comment) {
    if (name.empty()) throw CommandError(ExitCode::WRONG_USE, "the key name is empty");
    RequireOneLine("key name", name);
    RequireOneLine("value", value);
    RequireOneLine("comment", comment);
    RequireStored(SETTINGS::CheckKeyLine(name, value, comment));
}
