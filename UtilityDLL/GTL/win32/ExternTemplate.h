// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

/// GCC exports the members of an instance from a DLL, but not the inline ones, whatever their attributes: a
/// host that linked against them would find only those that it could inline. So each module makes its own
/// instance, and links only the members whose bodies are in the library's sources.
#define GTL_EXTERN_TEMPLATE(...) static_assert(true)

/// Makes the library's instance, in the source of the template.
#define GTL_TEMPLATE(...) template class UTILITYDLL_API __VA_ARGS__
