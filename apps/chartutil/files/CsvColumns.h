// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/UserText.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

/// Numbers in some columns of a table of comma separated values, changed line by line. Everything else of the
/// table comes out byte for byte as it came in. Only one line is held at a time, so a table may be larger
/// than memory. A field that begins with a quote may hold separators and line breaks up to the next quote;
/// two quotes in it stand for one. A quote anywhere else is a character like any other.
struct CsvTable {
    UserText input = "-"; ///< a file, or "-" for standard input
    /// A file, which is replaced when all is done (see FILES::ReplaceContents); empty or "-" for standard
    /// output.
    UserText output;
    bool isForced = false; ///< whether the output may be a file of another kind
    std::string separator = ",";
    bool hasNoHeader = false;
    int decimals = -1; ///< digits after the point of changed numbers; -1 for as many as the change gives them
};

/// Adds the options of a table that all commands on tables share, without the input.
void AddCsvOptions(CLI::App& command, CsvTable& table);

/// Changes the numbers of a line, and how many digits after the point each has then; before, those that the
/// table has.
using ChangeNumbers = std::function<void(std::span<DecimalNumber>)>;

/// Hands the numbers of these columns to `change`, line by line, and writes them back. A column is a name of
/// the header line, or its number from 1. Blank lines stay as they are. Throws a CommandError with file and
/// line when a number cannot be read or a result is not finite; an output file is then left as it was.
void ChangeColumns(const CsvTable& table, std::span<const std::string> columns, const ChangeNumbers& change);
