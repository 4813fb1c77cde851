// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "VelmBase/ErrorString.h"

/// How the loading of this library ended: it asks VersionControlR whether it matches the rest of the suite,
/// makes itself known to the framework, and chooses the language of its texts
/// (VELMSUITE::LoadDLLResourceDLL). An error's text says what does not match and what to do about it.
///
/// On Windows it always ended well: a module that fails is not loaded, and no program that needs it starts.
/// Elsewhere nothing keeps a library from being loaded, so that a program asks before its first other call,
/// and ends when this is an error. One that does not ask finds everything working as far as the libraries fit
/// together, with texts in English.
UTILITYDLL_API ErrorString UtilityDLLStartUp();
