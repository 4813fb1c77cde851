#pragma once

#include "UtilityDLL/settings/IniFile.h"
#include "apps/chartutil/terminal/UserText.h"

#include <string>
#include <string_view>

// Settings files as commands use them. Each function ends the command when it cannot do its work, with the
// same words for the same fault.

/// Opens a settings file, or "-" for standard input. The error has the line at which reading it stopped
/// (ExitCode::IO_ERROR).
IniFile OpenSettings(const UserText& path);

/// The settings of a file's content; `path` is for the error.
IniFile SettingsOf(std::string_view content, const UserText& path);

/// The same for a reader that joins sections of one name.
FileObject OpenFileObject(const UserText& path);

/// Saves a settings file (ExitCode::IO_ERROR; a file there is then as it was). A note tells what of it will
/// not come back, such as a value without a name in a file of another program.
void SaveSettings(const IniFile& file, const UserText& path);

/// The section or key of that name, whatever its letter case (ExitCode::CHECK_FAILED when it is not there).
Section& RequireSection(IniFile& file, const UserText& path, const UserText& name);
SectionKey& RequireKey(Section& section, const UserText& path, const UserText& name);

/// "[NAME]"
std::string InBrackets(const std::wstring& section);
