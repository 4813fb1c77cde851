// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The trailer of a CRC-guarded file: its last bytes are the CRC-32 of all bytes before them, low byte first.
namespace CRC_TRAILER {

constexpr std::size_t SIZE = 4;
using Bytes = std::array<unsigned char, SIZE>;

constexpr Bytes Of(std::uint32_t checksum) {
    Bytes bytes{};
    for (std::size_t i = 0; i < SIZE; ++i) bytes[i] = static_cast<unsigned char>(checksum >> (8 * i));
    return bytes;
}

/// The checksum that the SIZE bytes from `bytes` on hold.
constexpr std::uint32_t Value(const unsigned char* bytes) {
    std::uint32_t checksum = 0;
    for (std::size_t i = 0; i < SIZE; ++i) checksum |= std::uint32_t{bytes[i]} << (8 * i);
    return checksum;
}

} // namespace CRC_TRAILER
