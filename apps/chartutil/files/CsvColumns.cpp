// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/CsvColumns.h"

#include "VelmBase/File.h"
#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/files/TableLines.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/ValueNames.h"
#include "apps/chartutil/work/LongWork.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr std::size_t kBlock = 1 << 16;

/// Where pieces of a text go; false when they cannot be written.
using Sink = std::function<bool(std::string_view)>;

/// Hands what is written to a sink in larger pieces.
class Output {
public:
    Output(std::string name, const Sink& sink) : m_name(std::move(name)), m_sink(sink) {}

    void Write(std::string_view text) {
        m_text += text;
        if (m_text.size() >= kBlock) Flush();
    }

    void Flush() {
        if (!m_sink(m_text))
            throw CommandError(ExitCode::IO_ERROR,
                               m_name + ": cannot be written; check the space on the disk");
        m_text.clear();
    }

private:
    std::string m_name;
    const Sink& m_sink;
    std::string m_text;
};

std::optional<std::size_t> ColumnNumber(const std::string& column) {
    std::size_t number = 0;
    const auto [stop, error] = std::from_chars(column.data(), column.data() + column.size(), number);
    if (error != std::errc() || stop != column.data() + column.size() || number == 0) return std::nullopt;
    return number - 1;
}

// The index of a column: by the name in the header, else by its number.
std::size_t ColumnIndex(const std::string& column, const TableFields* header, const std::string& place) {
    for (std::size_t i = 0; header && i < header->items.size(); ++i) {
        if (Unquoted(header->items[i]) == column) return i;
    }
    if (const auto number = ColumnNumber(column)) return *number;
    throw CommandError(ExitCode::WRONG_USE, place + ": no column '" + column +
                                                "'; give a name of the header line or a number from 1");
}

std::string ColumnName(std::size_t index) { return "column " + std::to_string(index + 1); }

char Separator(const std::string& text) {
    if (text == "tab") return '\t';
    if (text.size() == 1 && std::string_view("\"\n\r+-.0123456789eE").find(text[0]) == std::string_view::npos)
        return text[0];
    throw CommandError(ExitCode::WRONG_USE, "'" + text + "' is no separator; give one character, or 'tab'");
}

std::string ChangedText(const DecimalNumber& number, const CsvTable& table) {
    if (table.decimals < 0) return DecimalText(number);
    return DecimalText(RoundedToDigits(number.value),
                       table.decimals); // 19.05 is one even where it is a trace less
}

// Reads the table to its end and writes it to `output`.
void ChangeColumns(TableLines& input, Output& output, const CsvTable& table,
                   std::span<const std::string> columns, const ChangeNumbers& change) {
    const char separator = Separator(table.separator);
    std::vector<std::size_t> indices;
    std::vector<DecimalNumber> numbers(columns.size());

    const auto findColumns = [&](const TableFields* header) {
        for (const std::string& column : columns) {
            const std::size_t index = ColumnIndex(column, header, input.Place());
            if (std::find(indices.begin(), indices.end(), index) != indices.end())
                throw CommandError(ExitCode::WRONG_USE, ColumnName(index) + " is named twice");
            indices.push_back(index);
        }
    };
    if (table.hasNoHeader) findColumns(nullptr);

    output.Write(input.ByteOrderMark());
    for (std::string_view line = input.Next(); !line.empty(); line = input.Next()) {
        if (line.find_first_not_of(" \t\r\n") == std::string_view::npos) {
            output.Write(line);
            continue;
        }
        const bool isHeader = indices.empty();
        TableFields fields;
        fields.Cut(line, separator);
        if (isHeader) findColumns(&fields);

        for (std::size_t i = 0; i < indices.size(); ++i) {
            const std::size_t index = indices[i];
            if (index >= fields.items.size())
                throw CommandError(ExitCode::IO_ERROR, input.Place() + ": has no " + ColumnName(index) +
                                                           ", only " + std::to_string(fields.items.size()));
            const bool isNumber = ParseNumber(Unquoted(fields.items[index]), numbers[i]);
            if (isHeader && isNumber)
                throw CommandError(ExitCode::WRONG_USE,
                                   input.Place() + ": has to name the columns, but " + ColumnName(index) +
                                       " is a number; say --no-header when there are no names");
            if (!isHeader && !isNumber)
                throw CommandError(ExitCode::IO_ERROR, input.Place() + ": '" +
                                                           std::string(fields.items[index].substr(0, 60)) +
                                                           "' in " + ColumnName(index) + " is no number");
        }
        if (isHeader) {
            output.Write(line);
            continue;
        }

        change(numbers);
        std::vector<std::string> texts(indices.size());
        for (std::size_t i = 0; i < indices.size(); ++i) {
            if (!std::isfinite(numbers[i].value))
                throw CommandError(ExitCode::IO_ERROR, input.Place() + ": the result in " +
                                                           ColumnName(indices[i]) + " is too large a number");
            fields.items[indices[i]] = texts[i] = ChangedText(numbers[i], table);
        }
        for (std::size_t i = 0; i < fields.items.size(); ++i) {
            if (i > 0) output.Write({&separator, 1});
            output.Write(fields.items[i]);
        }
        output.Write(fields.lineEnd);
    }
    output.Flush();
}

} // namespace

void AddCsvOptions(CLI::App& command, CsvTable& table) {
    command.add_option("-o,--output", table.output, "The table to write; standard output without it")
        ->type_name(kFileValue);
    AddForce(command, table.isForced);
    command.add_option("--separator", table.separator, "The character between columns, or 'tab'")
        ->type_name("CHARACTER")
        ->capture_default_str();
    command.add_flag("--no-header", table.hasNoHeader,
                     "The first line holds numbers, not the columns' names");
    command
        .add_option("--decimals", table.decimals,
                    "Digits after the point of changed numbers; without it those of the number that "
                    "was there, and as many more as the change needs")
        ->check(CLI::Range(0, 20));
}

void ChangeColumns(const CsvTable& table, std::span<const std::string> columns, const ChangeNumbers& change) {
    const auto changeInto = [&](const std::string& name, const Sink& sink) {
        TableLines input(table.input, Separator(table.separator));
        Output output(name, sink);
        ChangeColumns(input, output, table, columns, change);
        return true;
    };
    const auto print = [](std::string_view text) { return static_cast<bool>(std::cout << Printable(text)); };
    if (table.output.Empty() || IsStandardStream(table.output)) {
        changeInto("standard output", print);
        return;
    }
    RequireReplaceable(table.output, FileKind::TABLE, table.isForced);
    std::error_code ignored;
    const std::filesystem::path target = NativePath(table.output);
    if (std::filesystem::exists(target, ignored) && !std::filesystem::is_regular_file(target, ignored))
        throw CommandError(ExitCode::IO_ERROR, table.output.Utf8() +
                                                   ": is no regular file; leave out --output to write to "
                                                   "standard output");
    const std::uintmax_t numNames = std::filesystem::hard_link_count(target, ignored);
    if (!ignored && numNames > 1)
        throw CommandError(ExitCode::IO_ERROR, table.output.Utf8() +
                                                   ": has other names (hard links), which would keep the old "
                                                   "table; write to another file");
    const auto compose = [&](const Sink& sink) { return changeInto(table.output.Utf8(), sink); };
    if (const std::error_code error = FILES::ReplaceContents(table.output.Wide(), compose))
        ThrowNotWritten(table.output.Utf8(), error);
    NoteChanged(table.output.Utf8());
}
