// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/GTL/Element.h"

#include <cstdlib>

/// A cursor on a ring of consecutive integers start, start + 1, ..., start + range - 1, such as the vertices
/// of a closed polygon. The position is one of these integers, not an offset.
///
/// All arithmetic wraps at 32 bits. A range of 0 is an empty ring: bringing a position into it ends the
/// process (std::abort). Only construction from two values and single steps do not bring the position in.
class UTILITYDLL_API CircIterator {
public:
    /// At `start`.
    constexpr CircIterator(int start, int range) noexcept : m_start(start), m_range(range), m_pos(start) {}

    /// At `pos`, brought into the ring.
    constexpr CircIterator(int start, int range, int pos) noexcept : CircIterator(start, range) {
        *this = pos;
    }

    /// The first integer of the ring, how many it has, and the position.
    /// @{
    constexpr int Start() const noexcept { return m_start; }
    constexpr int Range() const noexcept { return m_range; }
    constexpr int operator*() const noexcept { return m_pos; }
    /// @}

    /// Each brings the position into the new ring.
    /// @{
    constexpr void SetStart(int start) noexcept {
        m_start = start;
        Normalize();
    }
    constexpr void SetRange(int range) noexcept {
        m_range = range;
        Normalize();
    }
    /// @}

    /// Goes to `pos`, brought into the ring.
    constexpr CircIterator& operator=(int pos) noexcept {
        m_pos = Normalized(pos);
        return *this;
    }

    /// So many steps forward or backward at once, brought into the ring.
    /// @{
    constexpr CircIterator& operator+=(int n) noexcept { return *this = GTL::ELEMENT::Sum(m_pos, n); }
    constexpr CircIterator& operator-=(int n) noexcept { return *this = GTL::ELEMENT::Difference(m_pos, n); }
    constexpr CircIterator operator+(int n) const noexcept { return CircIterator(*this) += n; }
    constexpr CircIterator operator-(int n) const noexcept { return CircIterator(*this) -= n; }
    /// @}

    /// A step forward, from the last integer to the first.
    /// @{
    constexpr CircIterator& operator++() noexcept {
        m_pos = GTL::ELEMENT::Sum(m_pos, 1);
        if (Offset() >= m_range) m_pos = m_start;
        return *this;
    }
    constexpr CircIterator operator++(int) noexcept {
        const CircIterator before = *this;
        ++*this;
        return before;
    }
    /// @}

    /// A step backward. The offset is compared with `start`, not with 0, and hosts rely on it: in a ring that
    /// starts at 0 the step wraps from the first integer to the last; where start > 0 it goes to the last
    /// already when the offset falls below start; where start < 0 it leaves the ring without a wrap.
    /// @{
    constexpr CircIterator& operator--() noexcept {
        m_pos = GTL::ELEMENT::Difference(m_pos, 1);
        if (Offset() < m_start) m_pos = GTL::ELEMENT::Sum(m_start, GTL::ELEMENT::Difference(m_range, 1));
        return *this;
    }
    constexpr CircIterator operator--(int) noexcept {
        const CircIterator before = *this;
        --*this;
        return before;
    }
    /// @}

    /// Whether `pos`, brought into the ring, is the position; != is the negation.
    constexpr bool operator==(int pos) const noexcept { return Normalized(pos) == m_pos; }

private:
    constexpr int Offset() const noexcept { return GTL::ELEMENT::Difference(m_pos, m_start); }

    constexpr void Normalize() noexcept { *this = m_pos; }

    constexpr int Normalized(int pos) const noexcept {
        int offset = GTL::ELEMENT::Difference(pos, m_start);
        if (offset < 0) offset = GTL::ELEMENT::Sum(Remainder(offset), m_range);
        if (offset >= m_range) offset = Remainder(offset);
        return GTL::ELEMENT::Sum(m_start, offset);
    }

    // Of the division toward zero. The quotient of the lowest int and -1 would not fit; its remainder is 0.
    constexpr int Remainder(int offset) const noexcept {
        if (m_range == 0) std::abort(); // a compiler may do anything with a division by zero, even nothing
        return m_range == -1 ? 0 : offset % m_range;
    }

    int m_start;
    int m_range;
    int m_pos;
};
