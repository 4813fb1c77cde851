// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The names that users read and write for the numbers in text styles and depth labels.

inline constexpr const char* kJustifications[] = {
    "bottom left", "bottom centre", "bottom right",  "middle right",  "top right",       "top centre",
    "top left",    "middle left",   "middle centre", "baseline left", "baseline centre", "baseline right"};
inline constexpr const char* kTextStyles[] = {
    "regular",   "bold",           "italic",           "bold italic",
    "underline", "bold underline", "italic underline", "bold italic underline"};
inline constexpr const char* kPresentations[] = {"in line", "small decimals", "lowered decimals"};
inline constexpr const char* kPlacements[] = {"decimal point", "whole part", "whole label"};

/// The number that a user wrote, or the number of the name: in any letter case, with hyphens or underscores
/// for blanks, and "center" for "centre". Nothing for another text.
std::optional<int> NumberOfName(std::string_view text, std::span<const char* const> names);

/// The same for a text that has to be a name: another one ends the command (ExitCode::WRONG_USE), which then
/// says that it is no `what`.
int RequireName(const std::string& text, std::span<const char* const> names, const char* what);

/// The names as they are written on a command line: "a-b", "c".
std::vector<std::string> TypedNames(std::span<const char* const> names);

/// The same in a sentence: "a-b, c or d".
std::string ListOfNames(std::span<const char* const> names);
