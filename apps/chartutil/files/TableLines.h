// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/terminal/UserText.h"
#include "apps/chartutil/work/LongWork.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Lines of a table of separated values, one held at a time. A line break between quotes belongs to the line.
/// A quote opens a field only at the field's beginning; two quotes in a quoted field are one of its
/// characters; anywhere else a quote is a character like any other. Throws a CommandError
/// (ExitCode::IO_ERROR) for a file that cannot be read, a quote that is not closed, and a line of more than a
/// megabyte.
class TableLines {
public:
    /// A file, or "-" for standard input.
    TableLines(const UserText& path, char separator);

    /// The separator of the lines that are still to be read.
    void SetSeparator(char separator) { m_separator = separator; }

    /// The next line with its line end; empty at the end of the table. It holds until the next call.
    std::string_view Next();

    /// What stands before the first line and belongs to none: the mark of UTF-8, or nothing.
    std::string_view ByteOrderMark();

    /// "FILE, line N" of the line that was read last.
    std::string Place() const { return m_name + ", line " + std::to_string(m_line); }
    std::uint64_t LineNumber() const { return m_line; } ///< from 1

    /// The file's bytes; 0 for standard input.
    std::uint64_t Size() const { return m_file.Size(); }
    /// Those up to the end of the line that was read last.
    std::uint64_t Position() const { return m_done - (m_end - m_begin); }

private:
    bool Fill(std::size_t held);

    std::string m_name;
    char m_separator;
    InputFile m_file;
    std::optional<Progress> m_progress;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::uint64_t m_done = 0;
    std::uint64_t m_line = 1;
    std::uint64_t m_nextLine = 1;
};

/// A line cut at its separators; quotes hold a separator together. The views are those of the line.
struct TableFields {
    void Cut(std::string_view line, char separator);

    /// At each run of blanks and tabs; those at the line's ends do not count.
    void CutAtBlanks(std::string_view line);

    std::vector<std::string_view> items;
    std::string_view lineEnd;
};

/// The field's text without blanks and quotes round it.
std::string Unquoted(std::string_view field);
