// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A part of a help text. All texts are UTF-8.
struct Block {
    enum class Kind {
        PARAGRAPH, ///< `text` in one line, to be wrapped
        ITEM,      ///< a `term` and what it means
        LINES,     ///< as it stands, such as examples; the lines begin in the first column
    };
    Kind kind;
    std::string term;
    std::string text;

    bool operator==(const Block&) const = default;
};
using Prose = std::vector<Block>;

/// Reads the form in which help is written in the sources. Lines of text up to a blank or an indented one are
/// a paragraph, whatever their length. Lines that are indented by two blanks or more stay as they are,
/// without two of these; one with " :: " in it is an item with its term before and its text behind.
Prose ReadProse(std::string_view text);

/// What stands behind the headings "Examples:" or "Example of ...:", and all the rest.
struct ProseParts {
    Prose text;
    Prose examples;
};
ProseParts WithoutExamples(const Prose& prose);

/// The width of all help, in characters.
inline constexpr std::size_t kHelpWidth = 80;

/// `text` broken at blanks into lines of at most kHelpWidth characters, each behind `indent` blanks and with
/// a line break at its end. A longer word is broken behind a comma, or has a line of its own.
std::string Wrapped(std::string_view text, std::size_t indent = 0);

/// The column in which the texts of such terms begin. A longer term has a line of its own.
std::size_t ItemColumn(const std::vector<std::string>& terms);

/// An item in two columns.
std::string ItemText(std::string_view term, std::string_view text, std::size_t column);

/// The blocks as a terminal shows them, with blank lines between paragraphs and lists, each list in columns
/// of its own.
std::string ProseText(const Prose& prose);
