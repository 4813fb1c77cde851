// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/detail/NameIndex.h"
#include "UtilityDLL/settings/detail/StableSequence.h"

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

/// An ordered sequence of named elements, found by the first that bears a name, whatever its letter case.
/// References to elements hold while elements are appended. A short sequence is scanned; a long one has an
/// index, which removing and renaming keep right. Const calls change nothing, so that several threads may
/// make them at once.
///
/// `Element` keeps its name in `IndexedName m_name`, which it opens to its sequence by friendship, and has
/// `const HashedString<wchar_t>& GetName() const`. A default element holds no memory.
template <typename Element> class NamedSequence {
public:
    NamedSequence() = default;
    // Delegates, so that the destructor runs should an element's copy fail.
    NamedSequence(const NamedSequence& other) : NamedSequence() {
        for (const Element& element : other) Append(element);
    }
    NamedSequence(NamedSequence&& other) noexcept = default;
    NamedSequence& operator=(const NamedSequence& other) { return *this = NamedSequence(other); }
    NamedSequence& operator=(NamedSequence&& other) noexcept = default;
    ~NamedSequence() = default;

    std::size_t Size() const { return IsSparse() ? m_index->NumPlaced() : m_places.Size(); }
    Element& operator[](std::size_t position) { return m_places[PlaceAt(position)]; }
    const Element& operator[](std::size_t position) const { return m_places[PlaceAt(position)]; }

    /// The position of the first element of that name; Size() when there is none.
    std::size_t Find(std::wstring_view name) const { return Search(name).found; }
    std::size_t Find(std::wstring_view name) {
        if (!m_index) return Scan(0, name);
        if (m_index->IsStale()) IndexNames();
        const SearchResult result = Search(name);
        if (result.isIndexed && result.found > result.start)
            m_index->SetFirstPlace(name,
                                   PlaceAt(result.found)); // nobody need pass over those before it again
        return result.found;
    }

    template <typename... Arguments> Element& Append(Arguments&&... arguments) {
        const std::size_t place = m_places.Size();
        if (!m_index && place == kLongestScan) {
            m_index = std::make_unique<NameIndex>();
            IndexNames();
        }
        if (m_index) m_index->MakeRoomFor(place);
        Element& element = m_places.EmplaceBack(std::forward<Arguments>(arguments)...);
        if (m_index) {
            m_index->AppendPlace(place); // should it fail, the place stays empty
            if (!m_index->IsStale()) AddToIndex(element, place);
        }
        return element;
    }

    /// References to elements end. Should memory run out, nothing has changed.
    void Remove(std::size_t position) {
        if (!m_index) return m_places.Remove(position);
        const std::size_t place = PlaceAt(position);
        m_index->VacatePosition(position, m_places.Size());
        Element& element = m_places[place];
        if (!m_index->IsStale()) m_index->Remove(element.GetName(), place);
        element.m_name.m_watch = nullptr;
        element = Element();
        if (m_index->NumPlaced() < m_places.Size() / 4) CloseUp();
    }

    void Clear() {
        m_places.Clear();
        m_index.reset();
    }

    class ConstIterator {
    public:
        ConstIterator(const NamedSequence& sequence, std::size_t position)
            : m_sequence(&sequence), m_position(position) {}
        const Element& operator*() const { return (*m_sequence)[m_position]; }
        ConstIterator& operator++() {
            ++m_position;
            return *this;
        }
        bool operator==(const ConstIterator& other) const { return m_position == other.m_position; }

    private:
        const NamedSequence* m_sequence;
        std::size_t m_position;
    };
    ConstIterator begin() const { return {*this, 0}; }
    ConstIterator end() const { return {*this, Size()}; }

private:
    static constexpr std::size_t kLongestScan = 32;

    bool IsSparse() const { return m_index && m_index->IsSparse(); }
    std::size_t PlaceAt(std::size_t position) const {
        return m_index ? m_index->PlaceAt(position) : position;
    }

    struct SearchResult {
        std::size_t found;      // Size() when there is none
        std::size_t start;      // where the search began
        bool isIndexed = false; // whether the index knows the name
    };

    SearchResult Search(std::wstring_view name) const {
        if (!m_index || m_index->IsStale()) return {Scan(0, name), 0};
        if (IsNamed((*this)[0], NameOutline(name), name))
            return {0, 0}; // what is taken from the front needs no search
        const NameIndex::Entry* const entry = m_index->Find(name);
        if (!entry) return {Size(), Size()};
        const std::size_t start = m_index->PositionFrom(entry->first);
        const bool isHere = start < Size() && (*this)[start].GetName().SharesTextWith(entry->name);
        return {isHere ? start : Scan(start, name), start, true};
    }

    static bool IsNamed(const Element& element, std::uint32_t outline, std::wstring_view name) {
        const HashedString<wchar_t>& own = element.GetName();
        return own.Outline() == outline && icompareW(own.String(), name);
    }

    std::size_t Scan(std::size_t position, std::wstring_view name) const {
        const std::uint32_t outline = NameOutline(name);
        const std::size_t size = Size();
        if (IsSparse())
            while (position < size && !IsNamed((*this)[position], outline, name)) ++position;
        else // as most are: asking for each element's place takes longer than the comparison
            while (position < size && !IsNamed(m_places[position], outline, name)) ++position;
        return position;
    }

    void AddToIndex(Element& element, std::size_t place) noexcept {
        m_index->Add(element.GetName(), place);
        element.m_name.m_watch = &m_index->WatchAt(place);
    }

    // Should memory run out, the index stays stale.
    void IndexNames() noexcept {
        m_index->ClearNames();
        try {
            for (std::size_t position = 0; position < Size(); ++position) {
                const std::size_t place = PlaceAt(position);
                m_index->MakeRoomFor(place);
                AddToIndex(m_places[place], place);
            }
        } catch (const std::bad_alloc&) {
            m_index->MarkStale();
        }
    }

    // Moves the elements to the first places. A sequence that became short goes without an index again.
    void CloseUp() noexcept {
        m_index->MarkStale(); // so that it does not follow names from place to place
        const std::size_t size = Size();
        for (std::size_t i = 0; i < size; ++i)
            if (PlaceAt(i) != i) m_places[i] = std::move(m_places[PlaceAt(i)]);
        m_places.Truncate(size);
        m_index->ForgetOrder();
        if (size > kLongestScan) return IndexNames();
        for (std::size_t i = 0; i < size; ++i) m_places[i].m_name.m_watch = nullptr;
        m_index.reset();
    }

    StableSequence<Element> m_places; // a place that was left empty has a default element
    std::unique_ptr<NameIndex> m_index;
};
