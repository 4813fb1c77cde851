// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <string>
#include <vector>

namespace LANGUAGES {

/// The names that the files of a language may have, the closest first: "de_AT" and "de" for "de-at",
/// "DE_AT.UTF-8" or "de_AT@euro". None when `language` is no such name.
VELMBASE_API std::vector<std::wstring> FileNames(const std::wstring& language);

/// The language that is set in the environment, else the user's.
VELMBASE_API std::wstring ChosenLanguage();

} // namespace LANGUAGES
