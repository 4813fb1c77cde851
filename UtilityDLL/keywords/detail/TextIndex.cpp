// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/detail/TextIndex.h"

namespace {

constexpr std::size_t kFewestSlots = 16;

} // namespace

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
