// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The name that `typed` was most likely meant to be: the first of those that the fewest changed, missing,
/// added or exchanged letters make of it, whatever their case, and no more than one in three. Empty where
/// none is that near, and for more than 200 letters. All texts are UTF-8.
std::string NearestName(std::string_view typed, const std::vector<std::string>& names);

/// "; did you mean NAME?" for the nearest name, with `before` and `after` around it; empty where there is
/// none.
std::string DidYouMean(std::string_view typed, const std::vector<std::string>& names, char before,
                       char after);
