#pragma once

#include "VelmBase/ColorTable.h"

#include <gtest/gtest.h>
#include <ostream>

// How a failed comparison shows the values of the base library.

inline void PrintTo(const ColorTable& table, std::ostream* stream) {
    *stream << "{default " << table.DefaultColor();
    for (int i = 0; i < table.NumEntries(); ++i)
        *stream << "; " << ::testing::PrintToString(table.EntryValue(i)) << ": " << table.EntryColor(i);
    *stream << "}";
}
