// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/HashedString.h"
#include "UtilityDLL/settings/detail/StableSequence.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

template <typename Element> class NamedSequence;
class NameIndex;

/// The name of an element of a NamedSequence. It tells the sequence's index when it changes, since a host may
/// rename an element through a reference that it holds. Copies are not watched, and what was moved from keeps
/// its name.
class IndexedName {
public:
    IndexedName() = default;
    IndexedName(HashedString<wchar_t> name) : m_name(std::move(name)) {}
    IndexedName(const IndexedName& other) noexcept : m_name(other.m_name) {}
    IndexedName& operator=(const IndexedName& other) noexcept {
        if (this != &other) Set(other.m_name);
        return *this;
    }
    ~IndexedName() = default;

    const HashedString<wchar_t>& Get() const { return m_name; }
    void Set(const HashedString<wchar_t>& name) noexcept {
        if (m_watch) TellIndex(name);
        m_name = name;
    }

private:
    template <typename Element> friend class NamedSequence;
    friend class NameIndex;

    /// Where the element stands, and the index that wants to know.
    struct Watch {
        NameIndex* index;
        std::uint32_t place;
        std::uint32_t hash = 0; // of the name
    };

    UTILITYDLL_API void TellIndex(const HashedString<wchar_t>& newName) const noexcept;

    HashedString<wchar_t> m_name;
    const Watch* m_watch = nullptr;
};

/// What a long sequence knows about its elements. Each has a place, a number that it keeps until the sequence
/// closes up the places that removals left empty.
///
/// By name: how many elements bear it and the place from which on to look for the first of them. Removing and
/// renaming keep this right in constant time, whatever the number of elements with one name.
/// By position: the places in order, once one of them is empty.
class UTILITYDLL_API NameIndex {
public:
    NameIndex() = default;
    NameIndex(const NameIndex&) = delete; // it is watched for
    NameIndex& operator=(const NameIndex&) = delete;
    ~NameIndex() = default;

    /// What is known about a name that elements bear.
    struct Entry {
        HashedString<wchar_t> name;    // what one of them is or was called; keeps `text`
        const wchar_t* text = nullptr; // a look-up goes there without a detour
        std::uint32_t length = 0;
        std::uint32_t hash = 0;
        std::uint32_t first = 0; // no element of that name stands before this place
        std::uint32_t count = kFree;
    };

    /// Null when no element bears that name.
    const Entry* Find(std::wstring_view name) const;

    /// Makes sure that the next Add(), which is for this place, cannot fail.
    void MakeRoomFor(std::size_t place);
    void Add(const HashedString<wchar_t>& name, std::size_t place) noexcept;
    void Remove(const HashedString<wchar_t>& name, std::size_t place) noexcept;
    void Rename(const HashedString<wchar_t>& from, const HashedString<wchar_t>& to,
                std::size_t place) noexcept;

    /// A look-up found that the first of that name stands no earlier than at this place.
    void SetFirstPlace(std::wstring_view name, std::size_t place) noexcept;

    /// Forgets all names. The index is then up to date.
    void ClearNames();

    /// What stands here about names is no longer true until the next ClearNames(); changes of names are not
    /// followed. This happens where memory runs out.
    void MarkStale() { m_stale = true; }
    bool IsStale() const { return m_stale; }

    const IndexedName::Watch& WatchAt(std::size_t place) const { return m_watches[place]; }

    /// Whether places are empty.
    bool IsSparse() const { return !m_order.empty(); }
    /// Of a sparse sequence, which has at least one element.
    std::size_t NumPlaced() const { return m_order.size(); }
    std::size_t PlaceAt(std::size_t position) const { return IsSparse() ? m_order[position] : position; }
    /// Of the element at this place, or else of the first behind it.
    std::size_t PositionFrom(std::size_t place) const;
    void AppendPlace(std::size_t place) {
        if (IsSparse()) m_order.push_back(static_cast<std::uint32_t>(place));
    }
    /// Leaves the place of that position empty. `numPlaces` counts all places up to now.
    void VacatePosition(std::size_t position, std::size_t numPlaces);
    /// No place is empty any more.
    void ForgetOrder() { m_order.clear(); }

private:
    static constexpr std::uint32_t kFree =
        0xFFFFFFFF; // as the count of an entry; 0 is for a name that is gone

    // The entry of the name, or the free one where it would be.
    std::size_t EntryOf(std::wstring_view name, std::uint32_t hash) const;

    std::vector<Entry> m_entries; // a power of two, at most half of them taken
    std::size_t m_used = 0;
    bool m_stale = false;
    StableSequence<IndexedName::Watch> m_watches; // by place
    std::deque<std::uint32_t> m_order;            // empty while no place is
};
