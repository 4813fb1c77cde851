// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/Section.h"

#include <string>
#include <string_view>
#include <vector>

/// What is said of one field of a record.
struct Field {
    std::string name;
    std::string given; // as it stands in the file or the line
    bool isGiven = false;
    std::string value; // what the record makes of it
    std::string note;
};

struct Record {
    std::string type;
    std::string prefix;
    std::string line; // its one-line form, where it has one
    std::vector<Field> fields;
};

/// The presentation records that a section has, also behind prefixes. A section is taken to have one when it
/// has at least half of its keys: files of old lack some, and a few keys are shared by several records.
std::vector<Record> RecordsOf(const Section& section);

/// What the one-line form of a record says. `as` is "text", "depth", "line" or "dxf"; another text has the
/// form guessed from the line.
Record RecordOfLine(const std::wstring& line, std::string_view as);
