// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/detail/NameIndex.h"

#include "UtilityDLL/settings/detail/SeededHash.h"

#include <algorithm>
#include <bit>
#include <new>
#include <numeric>
#include <utility>

void IndexedName::TellIndex(const HashedString<wchar_t>& newName) const noexcept {
    if (m_name.String() != newName.String()) m_watch->index->Rename(m_name, newName, m_watch->place);
}

const NameIndex::Entry* NameIndex::Find(std::wstring_view name) const {
    if (m_entries.empty()) return nullptr;
    const Entry& entry = m_entries[EntryOf(name, SeededNameHash(name))];
    return entry.count != kFree && entry.count > 0 ? &entry : nullptr;
}

void NameIndex::MakeRoomFor(std::size_t place) {
    while (m_watches.Size() <= place)
        m_watches.EmplaceBack(IndexedName::Watch{this, static_cast<std::uint32_t>(m_watches.Size())});
    if ((m_used + 1) * 2 <= m_entries.size()) return;
    const auto isAlive = [](const Entry& entry) { return entry.count != kFree && entry.count > 0; };
    const auto alive = static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(), isAlive));
    std::vector<Entry> entries(std::bit_ceil(4 * std::max<std::size_t>(alive + 1, 32)));
    m_entries.swap(entries);
    m_used = alive;
    for (Entry& entry : entries) {
        if (!isAlive(entry)) continue;
        std::size_t i = entry.hash & (m_entries.size() - 1);
        while (m_entries[i].count != kFree) i = (i + 1) & (m_entries.size() - 1);
        m_entries[i] = std::move(entry);
    }
}

void NameIndex::Add(const HashedString<wchar_t>& name, std::size_t place) noexcept {
    const std::uint32_t hash = SeededNameHash(name.String());
    m_watches[place].hash = hash;
    Entry& entry = m_entries[EntryOf(name.String(), hash)];
    const auto first = static_cast<std::uint32_t>(place);
    if (entry.count == kFree) {
        const auto length = static_cast<std::uint32_t>(name.String().size());
        entry = {name, name.String().data(), length, hash, first, 1};
        ++m_used;
    } else {
        entry.first = entry.count > 0 ? std::min(entry.first, first) : first;
        ++entry.count;
    }
}

void NameIndex::Remove(const HashedString<wchar_t>& name, std::size_t place) noexcept {
    Entry& entry = m_entries[EntryOf(name.String(), m_watches[place].hash)];
    --entry.count;
    if (entry.first == place) ++entry.first;
}

void NameIndex::Rename(const HashedString<wchar_t>& from, const HashedString<wchar_t>& to,
                       std::size_t place) noexcept {
    if (m_stale) return;
    Remove(from, place);
    try {
        MakeRoomFor(place);
        Add(to, place);
    } catch (const std::bad_alloc&) {
        MarkStale();
    }
}

void NameIndex::SetFirstPlace(std::wstring_view name, std::size_t place) noexcept {
    m_entries[EntryOf(name, SeededNameHash(name))].first = static_cast<std::uint32_t>(place);
}

void NameIndex::ClearNames() {
    m_entries.clear();
    m_used = 0;
    m_stale = false;
}

std::size_t NameIndex::PositionFrom(std::size_t place) const {
    if (!IsSparse()) return place;
    return static_cast<std::size_t>(std::lower_bound(m_order.begin(), m_order.end(), place) -
                                    m_order.begin());
}

void NameIndex::VacatePosition(std::size_t position, std::size_t numPlaces) {
    if (!IsSparse()) {
        std::deque<std::uint32_t> order(numPlaces);
        std::iota(order.begin(), order.end(), 0u);
        m_order.swap(order);
    }
    m_order.erase(m_order.begin() + static_cast<std::ptrdiff_t>(position));
}

std::size_t NameIndex::EntryOf(std::wstring_view name, std::uint32_t hash) const {
    std::size_t i = hash & (m_entries.size() - 1);
    while (m_entries[i].count != kFree &&
           !(m_entries[i].hash == hash && icompareW({m_entries[i].text, m_entries[i].length}, name)))
        i = (i + 1) & (m_entries.size() - 1);
    return i;
}
