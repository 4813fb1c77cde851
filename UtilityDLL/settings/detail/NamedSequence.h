#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/HashedString.h"
#include "UtilityDLL/settings/detail/StableSequence.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

/// Where the names of a long sequence stand: the position of the first element of each name. It is found by a
/// hash that ignores case and is seeded for each process, so that no file can be made to collide.
class UTILITYDLL_API NameIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// Forgets all names. The index is then up to date.
    void Clear();

    /// The position of that name, or kNone.
    std::uint32_t Find(std::wstring_view name) const;

    /// Enters a name unless it is there already. The index points at the text, which must stay where it is
    /// until the index is cleared or marked stale.
    void Add(std::wstring_view name, std::uint32_t position);

    /// A name has changed or an element is gone: what stands here is no longer true until the next Clear().
    void MarkStale() { m_stale = true; }
    bool IsStale() const { return m_stale; }

private:
    struct Slot {
        std::wstring_view name;
        std::uint32_t hash = 0;
        std::uint32_t position = kNone;
    };

    // The slot that holds the name, or the free one where it would be.
    std::size_t SlotOf(std::wstring_view name, std::uint32_t hash) const;
    void Grow();

    std::vector<Slot> m_slots;
    std::size_t m_used = 0;
    bool m_stale = true;
};

/// The name of an element of a NamedSequence. It tells the sequence's index when it changes, since a host may
/// rename an element through a reference that it holds. Copies are not watched.
class IndexedName {
public:
    IndexedName() = default;
    IndexedName(HashedString<wchar_t> name) : m_name(std::move(name)) {}
    IndexedName(const IndexedName& other) : m_name(other.m_name) {}
    IndexedName& operator=(const IndexedName& other) {
        if (this != &other) Set(other.m_name);
        return *this;
    }
    ~IndexedName() = default;

    const HashedString<wchar_t>& Get() const { return m_name; }
    void Set(const HashedString<wchar_t>& name) {
        if (m_name.String() == name.String()) return; // the index goes on pointing at the text
        if (m_index) m_index->MarkStale();
        m_name = name;
    }
    void WatchFor(NameIndex* index) { m_index = index; }

private:
    HashedString<wchar_t> m_name;
    NameIndex* m_index = nullptr;
};

/// An ordered sequence of named elements, found by the first that bears a name, whatever its letter case.
/// References to elements hold while elements are appended. A short sequence is scanned; a long one has an
/// index, which calls on a non-const sequence keep up to date. Const calls change nothing, so that several
/// threads may make them at once.
///
/// `Element` has `const HashedString<wchar_t>& GetName() const` and `IndexedName& NameSlot()`, and keeps its
/// name in that slot when it is moved from.
template <typename Element> class NamedSequence {
public:
    NamedSequence() = default;
    NamedSequence(const NamedSequence& other) : m_elements(other.m_elements) {
        if (m_elements.Size() > kLongestScan) Rebuild();
    }
    NamedSequence(NamedSequence&& other) = default;
    // The elements are replaced as a whole: assigned one by one they would go on watching for the old index.
    NamedSequence& operator=(const NamedSequence& other) { return *this = NamedSequence(other); }
    NamedSequence& operator=(NamedSequence&& other) = default;
    ~NamedSequence() = default;

    std::size_t Size() const { return m_elements.Size(); }
    Element& operator[](std::size_t position) { return m_elements[position]; }
    const Element& operator[](std::size_t position) const { return m_elements[position]; }
    auto begin() const { return m_elements.begin(); }
    auto end() const { return m_elements.end(); }

    /// The position of the first element of that name; Size() when there is none.
    std::size_t Find(std::wstring_view name) const {
        if (!m_index || m_index->IsStale()) return Scan(name);
        const std::uint32_t position = m_index->Find(name);
        return position != NameIndex::kNone ? position : m_elements.Size();
    }
    std::size_t Find(std::wstring_view name) {
        if (m_index && m_index->IsStale()) Rebuild();
        return std::as_const(*this).Find(name);
    }

    template <typename... Arguments> Element& Append(Arguments&&... arguments) {
        Element& element = m_elements.EmplaceBack(std::forward<Arguments>(arguments)...);
        if (m_index && !m_index->IsStale())
            AddToIndex(m_elements.Size() - 1, element);
        else if (!m_index && m_elements.Size() > kLongestScan)
            Rebuild();
        return element;
    }

    void Remove(std::size_t position) {
        m_elements.Remove(position);
        if (m_index) m_index->MarkStale();
    }

    void Clear() {
        m_elements.Clear();
        m_index.reset();
    }

private:
    static constexpr std::size_t kLongestScan = 32;

    std::size_t Scan(std::wstring_view name) const {
        const std::uint32_t outline = NameOutline(name);
        std::size_t position = 0;
        for (const Element& element : m_elements) {
            if (element.GetName().Outline() == outline && icompareW(element.GetName().String(), name)) break;
            ++position;
        }
        return position;
    }

    void AddToIndex(std::size_t position, Element& element) {
        m_index->Add(element.GetName().String(), static_cast<std::uint32_t>(position));
        element.NameSlot().WatchFor(m_index.get());
    }

    void Rebuild() {
        if (!m_index) m_index = std::make_unique<NameIndex>();
        m_index->Clear();
        std::size_t position = 0;
        for (Element& element : m_elements) AddToIndex(position++, element);
    }

    StableSequence<Element> m_elements;
    std::unique_ptr<NameIndex> m_index;
};
