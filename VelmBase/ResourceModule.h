// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <cstdint>

namespace VELMSUITE {

/// Chooses the language of a library's texts; the library calls it when it is loaded. `instance` and `module`
/// are its handles (ModuleAt), which are one and the same unless its resources lie in another module.
///
/// The language is the one that the environment variable UTILITYDLL_LANGUAGE names ("de", "pt_BR", "en"),
/// else the user's: on Linux that of LC_ALL, LC_MESSAGES or LANG, the first that is not empty; on Windows the
/// first of the user's languages for the system's own texts. The texts are those of the file
/// `utilitydll/languages/<library>.<language>.po` beside the library, where "pt_BR" also does with the file
/// of "pt". The file is read when the first text is asked for; without one the library's own texts hold.
///
/// A second call chooses anew, by what the variables say then. Any thread may call this.
VELMBASE_API void LoadDLLResourceDLL(void* instance, void* module);

/// The text of that number in the language that was chosen for `module`, to keep as long as the process runs.
/// Null when the language has none, or nothing was chosen: the library's own text holds. Any thread may call
/// this.
VELMBASE_API const wchar_t* LanguageText(const void* module, std::uint32_t number);

} // namespace VELMSUITE
