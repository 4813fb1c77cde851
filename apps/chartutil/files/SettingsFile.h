#pragma once

#include "UtilityDLL/settings/IniFile.h"

#include <string>

// Settings files as commands use them. Each function ends the command when it cannot do its work.

/// Opens a settings file. The error has the line at which reading it stopped (ExitCode::IO_ERROR).
IniFile OpenSettings(const std::string& path);

/// Saves a settings file (ExitCode::IO_ERROR; a file there is then as it was).
void SaveSettings(const IniFile& file, const std::string& path);

/// The section or key of that name, whatever its letter case (ExitCode::CHECK_FAILED when it is not there).
Section& RequireSection(IniFile& file, const std::string& path, const std::string& name);
SectionKey& RequireKey(Section& section, const std::string& path, const std::string& name);

/// "[NAME]"
std::string InBrackets(const std::wstring& section);
