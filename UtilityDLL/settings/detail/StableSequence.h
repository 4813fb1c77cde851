// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

/// An array that grows at its end without moving its elements: they stand in blocks, each twice as large as
/// the one before. A settings file is thousands of short sections, and std::deque takes half a kilobyte for
/// the first key.
template <typename T> class StableSequence {
public:
    StableSequence() = default;
    StableSequence(StableSequence&& other) noexcept
        : m_blocks(std::move(other.m_blocks)), m_size(std::exchange(other.m_size, 0)) {}
    StableSequence& operator=(StableSequence&& other) noexcept {
        StableSequence taken(std::move(other));
        m_blocks.swap(taken.m_blocks);
        std::swap(m_size, taken.m_size);
        return *this;
    }
    ~StableSequence() { Clear(); }

    std::size_t Size() const { return m_size; }
    T& operator[](std::size_t i) { return *Place(i); }
    const T& operator[](std::size_t i) const { return *Place(i); }

    template <typename... Arguments> T& EmplaceBack(Arguments&&... arguments) {
        if (BlockOf(m_size) == m_blocks.size())
            m_blocks.push_back(std::make_unique_for_overwrite<Slot[]>(kFirstBlock << m_blocks.size()));
        T* const element = std::construct_at(Place(m_size), std::forward<Arguments>(arguments)...);
        ++m_size;
        return *element;
    }

    /// Removes one element; those behind it move up.
    void Remove(std::size_t i) {
        for (; i + 1 < m_size; ++i) (*this)[i] = std::move((*this)[i + 1]);
        std::destroy_at(Place(--m_size));
    }

    /// Removes the elements from position `size` on and gives the memory of their blocks back.
    void Truncate(std::size_t size) {
        while (m_size > size) std::destroy_at(Place(--m_size));
        m_blocks.resize(size > 0 ? BlockOf(size - 1) + 1 : 0);
    }

    void Clear() { Truncate(0); }

private:
    struct Slot {
        alignas(T) std::byte bytes[sizeof(T)];
    };
    static constexpr std::size_t kFirstBlock = 8;

    // Block b holds the elements from kFirstBlock * (2^b - 1) on.
    static std::size_t BlockOf(std::size_t i) {
        return static_cast<std::size_t>(std::bit_width(i / kFirstBlock + 1)) - 1;
    }
    T* Place(std::size_t i) const {
        const std::size_t block = BlockOf(i);
        const std::size_t first = (kFirstBlock << block) - kFirstBlock;
        return std::launder(reinterpret_cast<T*>(m_blocks[block][i - first].bytes));
    }

    std::vector<std::unique_ptr<Slot[]>> m_blocks;
    std::size_t m_size = 0;
};
