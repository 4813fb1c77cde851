// SPDX-License-Identifier: MIT
#include "VelmBase/WideString.h"

std::wstring FromNarrow(std::string_view text) { return FromUtf8(text); }
