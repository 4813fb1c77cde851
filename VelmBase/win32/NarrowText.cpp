// SPDX-License-Identifier: MIT
#include "VelmBase/WideString.h"

#include <algorithm>
#include <limits>
#include <windows.h>

std::wstring FromNarrow(std::string_view text) {
    const int size = static_cast<int>(std::min<std::size_t>(text.size(), std::numeric_limits<int>::max()));
    if (size == 0) return {};
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
    return wide;
}
