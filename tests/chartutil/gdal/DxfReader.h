// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <gmock/gmock.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

// What a DXF file says, read group by group without the library that wrote it.

struct DxfGroup {
    int code;
    std::string value;
};

inline std::vector<DxfGroup> DxfGroupsOf(const std::string& file) {
    std::vector<DxfGroup> groups;
    std::istringstream lines(file);
    std::string code, value;
    while (std::getline(lines, code)) {
        EXPECT_TRUE(std::getline(lines, value)) << "a code without a value: " << code;
        EXPECT_THAT(code, ::testing::Not(::testing::IsEmpty()));
        groups.push_back({std::stoi(code), value});
    }
    return groups;
}

struct DxfEntity {
    std::string kind;
    std::multimap<int, std::string> values;

    /// The first value of the code; "none" and not a number where there is none.
    std::string Text(int code) const {
        const auto found = values.find(code);
        return found == values.end() ? std::string("none") : found->second;
    }
    double Number(int code) const {
        const auto found = values.find(code);
        return found == values.end() ? std::nan("") : std::stod(found->second);
    }
    std::vector<std::string> All(int code) const {
        std::vector<std::string> all;
        for (auto [at, end] = values.equal_range(code); at != end; ++at) all.push_back(at->second);
        return all;
    }
};

/// The objects of a section or of its table.
inline std::vector<DxfEntity> DxfObjectsOf(const std::string& file, const std::string& part) {
    std::vector<DxfEntity> objects;
    bool isWithin = false;
    for (const DxfGroup& group : DxfGroupsOf(file)) {
        if (group.code == 0) {
            if (group.value == "ENDSEC" || group.value == "ENDTAB") isWithin = false;
            if (isWithin) objects.push_back({group.value, {}});
        } else if (!isWithin) {
            isWithin = group.code == 2 && group.value == part;
        } else if (!objects.empty()) {
            objects.back().values.emplace(group.code, group.value);
        }
    }
    return objects;
}
