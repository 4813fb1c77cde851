// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/IniFile.h"
#include "apps/chartutil/terminal/UserText.h"

#include <string>
#include <string_view>
#include <vector>

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

/// Ends the command: the content of the file `name` stops at that fault (ExitCode::IO_ERROR).
[[noreturn]] void ThrowSettingsFault(const std::string& name, const IniFile::Fault& fault);

/// The section of that name, whatever its letter case (ExitCode::CHECK_FAILED when it is not there).
Section& RequireSection(IniFile& file, const UserText& path, const UserText& name);

/// Ends the command: there is no section, or no key, of that name in `file` (ExitCode::CHECK_FAILED). Says
/// which of those that are there may be meant. All in UTF-8.
[[noreturn]] void ThrowNoSection(const std::string& file, const std::string& name,
                                 const std::vector<std::string>& names);
[[noreturn]] void ThrowNoKey(const std::string& file, const std::string& name, const std::string& section,
                             const std::vector<std::string>& names);

/// "[NAME]"
std::string InBrackets(const std::wstring& section);
