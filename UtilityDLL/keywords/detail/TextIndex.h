// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/detail/SeededHash.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Finds the position of a text in a sequence that its owner keeps, by exact equality. The texts stay with
/// the owner, who tells each time how to read them: `textAt(position)` gives the text at a position.
class TextIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    UTILITYDLL_API void Clear();

    /// How many texts were added.
    std::size_t Size() const { return m_used; }

    /// Makes sure that the next Add() cannot fail.
    UTILITYDLL_API void MakeRoomForOne();

    /// The position that was added with this text, or kNone.
    template <typename TextAt> std::uint32_t Find(std::wstring_view text, TextAt textAt) const {
        if (m_slots.empty()) return kNone;
        const std::uint32_t hash = SeededHash(text);
        for (std::size_t slot = hash & Mask();; slot = (slot + 1) & Mask()) {
            const Slot& candidate = m_slots[slot];
            if (candidate.position == kNone) return kNone;
            if (candidate.hash == hash && textAt(candidate.position) == text) return candidate.position;
        }
    }

    /// Adds a text that Find() does not know yet, after MakeRoomForOne().
    void Add(std::wstring_view text, std::uint32_t position) { Put({SeededHash(text), position}); }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = kNone;
    };

    std::size_t Mask() const { return m_slots.size() - 1; }
    UTILITYDLL_API void Put(const Slot& entry);

    std::vector<Slot> m_slots; // a power of two, at most half of them taken
    std::size_t m_used = 0;
};
