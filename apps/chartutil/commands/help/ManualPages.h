// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

/// A file that is written for other programs.
struct NamedText {
    std::string path; ///< relative, with "/" on every platform
    std::string text;
};

/// Pages for man(1): one of the program, one for each of its commands, which all have to be there, with the
/// commands of theirs, and one a topic. `date` is empty or a day such as "2026-01-31".
std::vector<NamedText> ManualPages(const CLI::App& program, const std::string& date);
