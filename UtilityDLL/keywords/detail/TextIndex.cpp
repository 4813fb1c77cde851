#include "UtilityDLL/keywords/detail/TextIndex.h"

#include <chrono>
#include <cstring>
#include <random>

namespace {

constexpr std::size_t kFewestSlots = 16;

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

std::uint32_t TextIndex::Hash(std::wstring_view text) {
    static const std::uint64_t seed = ProcessSeed();
    constexpr std::size_t kBlock = sizeof(std::uint64_t) / sizeof(wchar_t);
    std::uint64_t hash = Mixed(seed + text.size());
    std::uint64_t block = 0;
    for (; text.size() >= kBlock; text.remove_prefix(kBlock)) {
        std::memcpy(&block, text.data(), sizeof block);
        hash = Mixed((hash ^ block) + seed);
    }
    block = 0;
    std::memcpy(&block, text.data(), text.size() * sizeof(wchar_t));
    return static_cast<std::uint32_t>(Mixed((hash ^ block) + seed));
}

void TextIndex::Clear() {
    m_slots.clear();
    m_used = 0;
}

void TextIndex::MakeRoomForOne() {
    if ((m_used + 1) * 2 <= m_slots.size()) return;
    std::vector<Slot> old(m_slots.empty() ? kFewestSlots : m_slots.size() * 2);
    m_slots.swap(old);
    m_used = 0;
    for (const Slot& entry : old)
        if (entry.position != kNone) Put(entry);
}

void TextIndex::Put(const Slot& entry) {
    std::size_t slot = entry.hash & Mask();
    while (m_slots[slot].position != kNone) slot = (slot + 1) & Mask();
    m_slots[slot] = entry;
    ++m_used;
}
