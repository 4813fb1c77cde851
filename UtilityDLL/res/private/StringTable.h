#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>

/// The resource numbers of the library's texts.
enum class TextId : std::uint32_t {
    CRC_ERROR_OPENING = 9070,
    CRC_INVALID_CHECKSUM = 9071,
    INI_ERROR_OPENING = 9080,
    INI_FOR_READING = 9081,
    INI_DUPLICATE_SECTION = 9082,
    INI_FOUND = 9083,
    INI_ERROR_ADDING_KEY = 9084,
    INI_DUPLICATE_KEY_NAME = 9085,
    INI_INVALID_SECTION = 9086,
};

/// The text of that number in the library's string table; empty for a number that it does not have.
UTILITYDLL_API const wchar_t* LoadText(TextId id);
