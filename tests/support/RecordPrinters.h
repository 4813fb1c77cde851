// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/settings/Section.h"
#include "tests/support/ColorPrinters.h"

#include <gtest/gtest.h>
#include <ostream>

// What a failed comparison shows of a presentation record: its one-line form, or else its keys with values.

template <typename Record>
concept HasOneLineForm = requires(const Record record) {
    record.ToString();
};

template <typename Record>
concept IsKeptInSections = requires(const Record record, Section section) {
    record.Write(section);
};

template <HasOneLineForm Record> void PrintTo(const Record& record, std::ostream* out) {
    *out << testing::PrintToString(record.ToString());
}

template <IsKeptInSections Record>
requires(!HasOneLineForm<Record>) void PrintTo(const Record& record, std::ostream* out) {
    Section section;
    (void)record.Write(section);
    for (int i = 0; i < section.NumKeys(); ++i)
        *out << (i > 0 ? ", " : "") << testing::PrintToString(section[i].GetName().String()) << " = "
             << testing::PrintToString(section[i].GetValue());
}

inline void PrintTo(const ContourDefinitionList::ContourDefInfo& info, std::ostream* out) {
    *out << info.level << " width " << info.lineWidth << " type " << info.lineType << ' ';
    PrintTo(RGBColor(info.trueColor), out);
    *out << (info.annotate ? " annotated" : "");
}

inline void PrintTo(const ContourDefinitionList& list, std::ostream* out) {
    for (int i = 0; i < list.NumContours(); ++i) {
        *out << (i > 0 ? ", " : "");
        PrintTo(list[i], out);
    }
}
