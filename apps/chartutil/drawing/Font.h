// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// How a text is drawn. `size` is the em's height in millimetres. Without a family it is DejaVu Sans, or what
/// the viewer has in its place.
struct Font {
    double size = 3.0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    std::string family = {}; // UTF-8
    double capShare = 0.729; // height of capitals as a part of the size; that of DejaVu Sans

    /// The millimetres that a line of UTF-8 text takes, by the advance widths of DejaVu Sans. Kerning can
    /// make it a trace narrower. Latin, Greek and Cyrillic letters, digits and punctuation are known; for any
    /// other character the widest of the font is counted, so that a box made to measure holds the text. A
    /// viewer without the font draws with another one, which may be wider.
    double Width(std::string_view text) const;

    /// Height of capital letters and digits above the baseline, in millimetres.
    double CapHeight() const { return size * capShare; }
};

/// The families that a picture names, in order of preference.
inline constexpr std::string_view kFontFamilies = "DejaVu Sans, Verdana, Segoe UI, sans-serif";
