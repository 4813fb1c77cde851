// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/HashedString.h"

#include "VelmBase/CRCChecksum.h"
#include "VelmBase/Utf16.h"

unsigned int NameHash(std::wstring_view name) {
    CRCChecksum checksum;
    unsigned char buffer[256];
    std::size_t filled = 0;
    ForEachUtf16Unit(name, [&](char16_t unit) {
        const wchar_t upper = ToUpperW(static_cast<wchar_t>(unit));
        buffer[filled++] = static_cast<unsigned char>(upper & 0xFF);
        buffer[filled++] = static_cast<unsigned char>(upper >> 8 & 0xFF);
        buffer[filled++] = 0;
        buffer[filled++] = 0;
        if (filled == sizeof buffer) {
            checksum.Update(buffer, filled);
            filled = 0;
        }
    });
    checksum.Update(buffer, filled);
    return checksum.Value();
}
