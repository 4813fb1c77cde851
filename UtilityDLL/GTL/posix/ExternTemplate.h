// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

/// Declares an instance of a GTL template that the library holds and exports. Members that are not inlined
/// are linked from there.
#define GTL_EXTERN_TEMPLATE(...) extern template class UTILITYDLL_API __VA_ARGS__

/// Makes the instance, in the source of the template.
#define GTL_TEMPLATE(...) template class __VA_ARGS__
