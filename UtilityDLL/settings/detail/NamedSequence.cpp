#include "UtilityDLL/settings/detail/NamedSequence.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <utility>

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

// Four characters at a time; those above 16 bits overlap, which only makes the hash less good.
std::uint32_t Hash(std::wstring_view name) {
    static const std::uint64_t seed = ProcessSeed();
    std::uint64_t hash = seed + name.size();
    const auto upper = [&](std::size_t i) { return static_cast<std::uint64_t>(ToUpperW(name[i])); };
    std::size_t i = 0;
    for (; i + 4 <= name.size(); i += 4)
        hash = Mixed(hash ^ upper(i) ^ upper(i + 1) << 16 ^ upper(i + 2) << 32 ^ upper(i + 3) << 48) + seed;
    for (; i < name.size(); ++i) hash = (hash ^ upper(i)) * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint32_t>(Mixed(hash) >> 32);
}

} // namespace

void NameIndex::Clear() {
    m_slots.clear();
    m_used = 0;
    m_stale = false;
}

std::uint32_t NameIndex::Find(std::wstring_view name) const {
    return m_slots.empty() ? kNone : m_slots[SlotOf(name, Hash(name))].position;
}

void NameIndex::Add(std::wstring_view name, std::uint32_t position) {
    if (m_used * 2 >= m_slots.size()) Grow();
    const std::uint32_t hash = Hash(name);
    Slot& slot = m_slots[SlotOf(name, hash)];
    if (slot.position != kNone) return;
    slot = {name, hash, position};
    ++m_used;
}

std::size_t NameIndex::SlotOf(std::wstring_view name, std::uint32_t hash) const {
    std::size_t i = hash & (m_slots.size() - 1);
    while (m_slots[i].position != kNone && !(m_slots[i].hash == hash && icompareW(m_slots[i].name, name)))
        i = (i + 1) & (m_slots.size() - 1);
    return i;
}

void NameIndex::Grow() {
    const bool wasStale = std::exchange(m_stale, true); // for good, should memory run out here
    std::vector<Slot> slots(std::max<std::size_t>(64, m_slots.size() * 4));
    for (const Slot& slot : m_slots) {
        if (slot.position == kNone) continue;
        std::size_t i = slot.hash & (slots.size() - 1);
        while (slots[i].position != kNone) i = (i + 1) & (slots.size() - 1);
        slots[i] = slot;
    }
    m_slots = std::move(slots);
    m_stale = wasStale;
}
