#include "UtilityDLL/settings/NamedSequence.h"

#include <algorithm>
#include <bit>
#include <chrono>
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

} // namespace

std::uint64_t NameIndex::Hash(std::wstring_view name) {
    static const std::uint64_t seed = ProcessSeed();
    std::uint64_t hash = seed;
    for (const wchar_t character : name)
        hash = Mixed(hash + static_cast<std::uint64_t>(ToUpperW(character)) + seed);
    return hash;
}

void NameIndex::Clear(std::size_t expected) {
    m_stale = true; // for good, should memory run out below
    m_slots.assign(std::bit_ceil(std::max<std::size_t>(64, expected * 4)), kEmpty);
    m_used = 0;
    m_stale = false;
}
