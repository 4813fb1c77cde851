// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <string>

/// The language in which the user wants to be spoken to, as the system writes it ("de_DE.UTF-8", "de-DE");
/// empty when the user has not chosen one.
VELMBASE_API std::wstring UserLanguage();
