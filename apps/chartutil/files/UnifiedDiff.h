// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/IniDocument.h"

#include <string>
#include <string_view>
#include <vector>

/// The changes of a file as people are used to read them: runs of lines that begin with "-", "+" or, for
/// those that stay, up to three on each side, with a blank; each run below "@@ -LINE,COUNT +LINE,COUNT @@".
/// Nothing without changes. `before` is the content to which they were made. The lines have no line ends.
std::vector<std::string> UnifiedDiff(std::string_view before,
                                     const std::vector<IniDocument::Change>& changes);

/// Prints a line of a difference (UTF-8), which its first character tells the kind of.
void PrintDifferenceLine(const std::string& line);
