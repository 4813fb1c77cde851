// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The number of characters in `text` (UTF-8); a byte that is no part of one counts as one.
std::size_t TextWidth(std::string_view text);

enum class Align { LEFT, RIGHT };

/// `text` with blanks up to `width` characters; as it is when it has more.
std::string Padded(std::string_view text, std::size_t width, Align align = Align::LEFT);
