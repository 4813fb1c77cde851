// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/RGBColor.h"

#include <optional>
#include <string>
#include <string_view>

/// How a text looks on a terminal: the numbers are those by which terminals know it.
enum class TextColor { PLAIN = 0, BOLD = 1, DIM = 2, RED = 31, GREEN = 32, YELLOW = 33 };

/// `text` in that look where the output is a terminal and the user wants colours; else as it is.
std::string Colored(std::string_view text, TextColor color);

/// The same for `text` on that colour.
std::string OnColor(const std::string& text, const RGBColor& color);

/// "255,128,0"
std::string Components(const RGBColor& color);

/// The colour written as "#RRGGBB", in any letter case; nothing for another text.
std::optional<RGBColor> ParseHexColor(std::string_view text);

/// A colour that a user writes as "#RRGGBB", or as R,G,B with numbers from 0 to 255. Another text ends the
/// command (ExitCode::WRONG_USE).
RGBColor RequireColor(const std::string& text);
