// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/SettingsText.h"

#include <array>
#include <cstddef>
#include <string>

/// Texts that were read lately, by their bytes: sections of one kind repeat names and comments, which then
/// share one text in memory.
template <typename Shared> class RecentTexts {
public:
    const Shared& Get(SETTINGS::Bytes bytes) {
        if (bytes.empty()) return m_none;
        Entry& entry = m_entries[Slot(bytes)];
        if (entry.bytes != bytes) {
            entry.text = Shared(SETTINGS::Widened(bytes));
            entry.bytes = bytes;
        }
        return entry.text;
    }

private:
    struct Entry {
        std::string bytes;
        Shared text;
    };
    static constexpr std::size_t kSlots = 512;

    static std::size_t Slot(SETTINGS::Bytes bytes) {
        const auto code = [&](std::size_t i) {
            return static_cast<std::size_t>(static_cast<unsigned char>(bytes[i]));
        };
        const std::size_t last = bytes.size() - 1;
        return (bytes.size() * 131 + code(0) * 31 + code(last / 2) * 17 + code(last) * 7 +
                code(last - last / 4)) %
               kSlots;
    }

    std::array<Entry, kSlots> m_entries;
    Shared m_none;
};
