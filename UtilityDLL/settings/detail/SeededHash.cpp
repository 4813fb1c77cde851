// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/detail/SeededHash.h"

#include "VelmBase/WideString.h"

#include <chrono>
#include <cstddef>
#include <random>

namespace {

std::uint64_t Mixed(std::uint64_t value) {
    value ^= value >> 32;
    value *= 0xD6E8FEB86659FD93u;
    value ^= value >> 32;
    return value;
}

std::uint64_t ProcessSeed() {
    const auto time = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    return Mixed(time ^ static_cast<std::uint64_t>(std::random_device{}()) << 32);
}

// Takes the text in blocks of 64 bits; a character has its share of them and overlaps the next one where that
// is too narrow.
template <std::size_t kCharacters, typename Fold> std::uint32_t HashOf(std::wstring_view text, Fold fold) {
    static const std::uint64_t seed = ProcessSeed();
    std::uint64_t hash = Mixed(seed + text.size());
    const auto block = [&](std::size_t count) {
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < count; ++i)
            bits ^= static_cast<std::uint64_t>(fold(text[i])) << (64 / kCharacters * i);
        return bits;
    };
    for (; text.size() >= kCharacters; text.remove_prefix(kCharacters))
        hash = Mixed((hash ^ block(kCharacters)) + seed);
    return static_cast<std::uint32_t>(Mixed((hash ^ block(text.size())) + seed) >> 32);
}

} // namespace

std::uint32_t SeededHash(std::wstring_view text) {
    return HashOf<sizeof(std::uint64_t) / sizeof(wchar_t)>(text, [](wchar_t c) { return c; });
}

// The characters of names in files have 8 bits, so that nothing is lost by taking four at a time.
std::uint32_t SeededNameHash(std::wstring_view name) { return HashOf<4>(name, ToUpperW); }
