// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>
#include <string_view>

// Hashes for tables in memory. They have another seed in each process, so that no file can be made whose
// texts collide.

/// Of a text, letter case included.
UTILITYDLL_API std::uint32_t SeededHash(std::wstring_view text);

/// Of a name, whatever its letter case.
UTILITYDLL_API std::uint32_t SeededNameHash(std::wstring_view name);
