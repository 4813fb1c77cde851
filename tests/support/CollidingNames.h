// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/HashedString.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

/// Pairs of different names (in any letter case) with equal hashes, found by trying: by the birthday rule
/// 300,000 random names hold about ten. Computed once, the same in every run.
inline const std::vector<std::pair<std::wstring, std::wstring>>& CollidingNames() {
    static const auto pairs = [] {
        Random random(20);
        std::vector<std::pair<unsigned int, std::wstring>> names(300000);
        for (auto& [hash, name] : names) {
            for (int i = 0; i < 8; ++i) name += static_cast<wchar_t>(L'a' + random.Below(26));
            hash = HashedString<wchar_t>(name).Hash();
        }
        std::sort(names.begin(), names.end());
        std::vector<std::pair<std::wstring, std::wstring>> found;
        for (std::size_t i = 1; i < names.size(); ++i)
            if (names[i - 1].first == names[i].first && names[i - 1].second != names[i].second)
                found.emplace_back(names[i - 1].second, names[i].second);
        return found;
    }();
    return pairs;
}
