// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Suggestion.h"

#include "VelmBase/WideString.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace {

std::wstring Letters(std::string_view utf8) {
    std::wstring letters = FromUtf8(utf8);
    std::ranges::transform(letters, letters.begin(), ToLowerW);
    return letters;
}

// How many letters have to be changed, taken out, put in, or exchanged with their neighbour.
std::size_t Distance(std::wstring_view a, std::wstring_view b) {
    std::vector<std::size_t> before;
    std::vector<std::size_t> above(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(above.begin(), above.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t k = 1; k <= b.size(); ++k) {
            row[k] = std::min({above[k] + 1, row[k - 1] + 1, above[k - 1] + (a[i - 1] != b[k - 1])});
            const bool isExchange = i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1];
            if (isExchange) row[k] = std::min(row[k], before[k - 2] + 1);
        }
        before = std::exchange(above, row);
    }
    return above.back();
}

} // namespace

std::string NearestName(std::string_view typed, const std::vector<std::string>& names) {
    constexpr std::size_t kLongest = 200; // nobody types more, and the work grows with its square
    const std::wstring letters = Letters(typed);
    if (letters.size() > kLongest) return {};
    const std::string* nearest = nullptr;
    std::size_t limit = letters.size() / 3 + 1; // the distance has to be below
    for (const std::string& name : names) {
        const std::wstring other = Letters(name);
        const auto [shorter, longer] = std::minmax({letters.size(), other.size()});
        if (longer - shorter >= limit) continue;
        const std::size_t distance = Distance(letters, other);
        if (distance >= limit) continue;
        nearest = &name;
        limit = distance;
    }
    return nearest ? *nearest : std::string();
}

std::string DidYouMean(std::string_view typed, const std::vector<std::string>& names, char before,
                       char after) {
    const std::string nearest = NearestName(typed, names);
    return nearest.empty() ? "" : std::string("; did you mean ") + before + nearest + after + '?';
}
