// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/Section.h"

#include <gtest/gtest.h>
#include <ostream>

// How keys and sections show in the message of a failed comparison.

inline void PrintTo(const HashedString<wchar_t>& name, std::ostream* out) {
    *out << ::testing::PrintToString(name.String());
}

inline void PrintTo(const SectionKey& key, std::ostream* out) {
    PrintTo(key.GetName(), out);
    *out << " = " << ::testing::PrintToString(key.GetValue());
    if (!key.GetComments().empty()) *out << " ;" << ::testing::PrintToString(key.GetComments());
}

inline void PrintTo(const Section& section, std::ostream* out) {
    *out << '[';
    PrintTo(section.GetName(), out);
    *out << "] {";
    for (int i = 0; i < section.NumKeys(); ++i) {
        *out << (i > 0 ? ", " : "");
        PrintTo(section[i], out);
    }
    *out << '}';
}
