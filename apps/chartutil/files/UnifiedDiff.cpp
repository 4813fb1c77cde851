// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/UnifiedDiff.h"

#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"

#include <algorithm>
#include <cstddef>
#include <iostream>

namespace {

using Change = IniDocument::Change;

constexpr std::size_t kContext = 3;

std::vector<std::string_view> LinesOf(std::string_view content) {
    std::vector<std::string_view> lines;
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size());
        std::string_view line = content.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        content.remove_prefix(std::min(end + 1, content.size()));
    }
    return lines;
}

std::size_t FirstOf(const Change& change) { return change.line - 1; }
std::size_t EndOf(const Change& change) { return FirstOf(change) + change.before.size(); }

// "LINE,COUNT"; a run without lines is named by the line before it.
std::string Range(std::size_t first, std::size_t count) {
    return std::to_string(count > 0 ? first + 1 : first) + ',' + std::to_string(count);
}

} // namespace

std::vector<std::string> UnifiedDiff(std::string_view before, const std::vector<Change>& changes) {
    const std::vector<std::string_view> lines = LinesOf(before);
    std::vector<std::string> diff;
    std::size_t numAdded = 0; // by the runs so far
    std::size_t numRemoved = 0;
    for (auto change = changes.begin(); change != changes.end();) {
        const std::size_t begin = FirstOf(*change) - std::min(FirstOf(*change), kContext);
        const std::size_t newBegin = begin + numAdded - numRemoved;
        std::vector<std::string> run;
        std::size_t position = begin;
        const auto keepUpTo = [&](std::size_t end) {
            for (; position < std::min(end, lines.size()); ++position)
                run.push_back(' ' + std::string(lines[position]));
        };
        do {
            keepUpTo(FirstOf(*change));
            for (const std::string& line : change->before) run.push_back('-' + line);
            for (const std::string& line : change->after) run.push_back('+' + line);
            position = EndOf(*change);
            numRemoved += change->before.size();
            numAdded += change->after.size();
            ++change;
        } while (change != changes.end() && FirstOf(*change) <= position + 2 * kContext);
        keepUpTo(position + kContext);
        const std::size_t newEnd = position + numAdded - numRemoved;
        diff.push_back("@@ -" + Range(begin, position - begin) + " +" + Range(newBegin, newEnd - newBegin) +
                       " @@");
        diff.insert(diff.end(), run.begin(), run.end());
    }
    return diff;
}

void PrintDifferenceLine(const std::string& line) {
    const char kind = line.empty() ? ' ' : line.front();
    const TextColor color = kind == '-' ? TextColor::RED : kind == '+' ? TextColor::GREEN : TextColor::PLAIN;
    std::cout << Colored(Printable(line), color) << '\n';
}
