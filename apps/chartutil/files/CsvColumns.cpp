#include "apps/chartutil/files/CsvColumns.h"

#include "VelmBase/File.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/work/Interrupt.h"
#include "apps/chartutil/work/LongWork.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr std::size_t kBlock = 1 << 16;
constexpr std::size_t kMaxLine = 1 << 20;
constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Tells which characters stand between quotes. A quote opens a field only at the field's beginning; two
/// quotes in a quoted field are one of its characters; anywhere else a quote is a character like any other.
class Quotes {
public:
    explicit Quotes(char separator) : m_separator(separator) {}

    /// Takes the next character; whether it stands between quotes.
    bool Takes(char c) {
        if (m_state == State::QUOTED) {
            if (c == '"') m_state = State::CLOSED;
            return true;
        }
        if (c == m_separator || c == '\n')
            m_state = State::BEGIN;
        else if (c == '"' && m_state != State::PLAIN)
            m_state = State::QUOTED;
        else if (m_state == State::CLOSED || kBlanks.find(c) == std::string_view::npos)
            m_state = State::PLAIN;
        return false;
    }

    bool IsOpen() const { return m_state == State::QUOTED; }

private:
    enum class State { BEGIN, PLAIN, QUOTED, CLOSED };
    char m_separator;
    State m_state = State::BEGIN;
};

/// Lines of a file or of standard input. A line break between quotes belongs to the line.
class LineReader {
public:
    LineReader(const UserText& path, char separator)
        : m_name(path.Utf8() == "-" ? "standard input" : path.Utf8()), m_separator(separator) {
        if (path.Utf8() == "-") return;
        m_file = std::make_unique<FILES::Reader>(path.Wide());
        if (!m_file->IsOpen()) ThrowNotReadable(path);
        m_progress.emplace(path.Utf8(), m_file->Size());
    }

    /// The next line with its line end; empty at the end of the table. It holds until the next call.
    std::string_view Next() {
        m_line = m_nextLine;
        Quotes quotes(m_separator);
        std::size_t length = 0;
        for (;; ++length) {
            if (m_begin + length == m_end && !Fill(length)) {
                if (quotes.IsOpen())
                    throw CommandError(ExitCode::IO_ERROR, Place() + ": has a quote that is not closed");
                break;
            }
            const char c = m_buffer[m_begin + length];
            const bool isQuoted = quotes.Takes(c);
            if (c != '\n') continue;
            ++m_nextLine;
            if (isQuoted) continue;
            ++length;
            break;
        }
        const std::string_view line(m_buffer.data() + m_begin, length);
        m_begin += length;
        return line;
    }

    /// What stands before the first line and belongs to none: the mark of UTF-8, or nothing.
    std::string_view ByteOrderMark() {
        constexpr std::string_view kMark = "\xEF\xBB\xBF";
        Fill(0);
        if (!std::string_view(m_buffer.data(), m_end).starts_with(kMark)) return {};
        m_begin = kMark.size();
        return kMark;
    }

    /// "FILE, line N" of the line that was read last.
    std::string Place() const { return m_name + ", line " + std::to_string(m_line); }

private:
    // Reads more behind what is held of the line. False at the end of the table.
    bool Fill(std::size_t held) {
        if (held >= kMaxLine)
            throw CommandError(ExitCode::IO_ERROR,
                               Place() + ": longer than a megabyte; check for a quote that is not closed");
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, held);
        m_begin = 0;
        m_end = held;
        m_buffer.resize(std::max(m_buffer.size(), held + kBlock));
        const std::size_t count = Read(m_buffer.data() + held, kBlock);
        m_end += count;
        m_done += count;
        if (m_progress) m_progress->Show(m_done);
        return count > 0;
    }

    std::size_t Read(char* buffer, std::size_t size) {
        std::size_t count = 0;
        const bool read = m_file ? ReadFile(buffer, size, count) : ReadStandardInput(buffer, size, count);
        StopIfInterrupted(); // before the end of the input is taken for the end of the table
        if (!read) throw CommandError(ExitCode::IO_ERROR, Place() + ": reading failed");
        return count;
    }

    bool ReadFile(char* buffer, std::size_t size, std::size_t& count) {
        count = m_file->Read(buffer, size);
        return count > 0 || !m_file->Failed();
    }

    std::string m_name;
    char m_separator;
    std::unique_ptr<FILES::Reader> m_file;
    std::optional<Progress> m_progress;
    std::vector<char> m_buffer = std::vector<char>(kBlock);
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::uint64_t m_done = 0;
    std::uint64_t m_line = 1;
    std::uint64_t m_nextLine = 1;
};

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

/// A line cut at its separators; quotes hold a separator together.
struct Fields {
    Fields(std::string_view line, char separator) {
        const std::size_t end = line.find_last_not_of("\r\n") + 1;
        lineEnd = line.substr(end);
        Quotes quotes(separator);
        std::size_t start = 0;
        for (std::size_t i = 0; i <= end; ++i) {
            if (i < end && (quotes.Takes(line[i]) || line[i] != separator)) continue;
            items.push_back(line.substr(start, i - start));
            start = i + 1;
        }
    }
    std::vector<std::string_view> items;
    std::string_view lineEnd;
};

std::string Unquoted(std::string_view field) {
    field = Trimmed(field);
    if (field.size() < 2 || field.front() != '"' || field.back() != '"') return std::string(field);
    std::string text(Trimmed(field.substr(1, field.size() - 2)));
    for (std::size_t at = 0; (at = text.find("\"\"", at)) != std::string::npos; ++at) text.erase(at, 1);
    return text;
}

std::optional<std::size_t> ColumnNumber(const std::string& column) {
    std::size_t number = 0;
    const auto [stop, error] = std::from_chars(column.data(), column.data() + column.size(), number);
    if (error != std::errc() || stop != column.data() + column.size() || number == 0) return std::nullopt;
    return number - 1;
}

// The index of a column: by the name in the header, else by its number.
std::size_t ColumnIndex(const std::string& column, const Fields* header, const std::string& place) {
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

// Reads the table to its end and writes it to `output`.
void ChangeColumns(LineReader& input, Output& output, const CsvTable& table,
                   std::span<const std::string> columns,
                   const std::function<void(std::span<double>)>& change) {
    const char separator = Separator(table.separator);
    std::vector<std::size_t> indices;
    std::vector<double> numbers(columns.size());

    const auto findColumns = [&](const Fields* header) {
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
        Fields fields(line, separator);
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
            if (!std::isfinite(numbers[i]))
                throw CommandError(ExitCode::IO_ERROR, input.Place() + ": the result in " +
                                                           ColumnName(indices[i]) + " is too large a number");
            fields.items[indices[i]] = texts[i] = DecimalText(numbers[i], table.decimals);
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
    command.add_option("-o,--output", table.output, "The table to write; standard output without it");
    command.add_option("--separator", table.separator, "The character between columns, or 'tab'")
        ->capture_default_str();
    command.add_flag("--no-header", table.hasNoHeader,
                     "The first line holds numbers, not the columns' names");
    command
        .add_option("--decimals", table.decimals,
                    "Digits after the point of changed numbers; without it as many as read back\n"
                    "as the same number")
        ->check(CLI::Range(0, 20));
}

void ChangeColumns(const CsvTable& table, std::span<const std::string> columns,
                   const std::function<void(std::span<double>)>& change) {
    const auto changeInto = [&](const std::string& name, const Sink& sink) {
        LineReader input(table.input, Separator(table.separator));
        Output output(name, sink);
        ChangeColumns(input, output, table, columns, change);
        return true;
    };
    const auto print = [](std::string_view text) { return static_cast<bool>(std::cout << Printable(text)); };
    if (table.output.Empty()) {
        changeInto("standard output", print);
        return;
    }
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
    if (!FILES::ReplaceContents(table.output.Wide(),
                                [&](const Sink& sink) { return changeInto(table.output.Utf8(), sink); }))
        ThrowNotWritten(table.output.Utf8());
    NoteChanged(table.output.Utf8());
}
