// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// Running CRC-32 of IEEE 802.3 (reflected polynomial 0xEDB88320, initial value 0xFFFFFFFF, final value
/// inverted): name hashes, section checksums, file trailers and fingerprints. The same content gives the same
/// value on every platform.
class VELMBASE_API CRCChecksum {
public:
    /// Feeds `count` bytes.
    void Update(const void* bytes, std::size_t count);

    /// Feeds four bytes, low byte first.
    /// @{
    CRCChecksum& operator+=(int value) { return *this += static_cast<unsigned int>(value); }
    CRCChecksum& operator+=(unsigned int value);
    /// @}

    /// Feeds each UTF-16 code unit as two bytes, low byte first. Where `wchar_t` has 32 bits, a character
    /// above U+FFFF is fed as its surrogate pair.
    CRCChecksum& operator+=(const std::wstring& text);

    /// The checksum of what was fed so far; 0 when that is nothing.
    unsigned int Value() const { return ~m_register; }

    /// The register before the final inversion: for formats that mark an incomplete sum by leaving it out.
    unsigned int Register() const { return m_register; }

private:
    std::uint32_t m_register = 0xFFFFFFFFu;
};
