// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/TableLines.h"

#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Errors.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kBlock = 1 << 16;
constexpr std::size_t kMaxLine = 1 << 20;
constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Tells which characters stand between quotes.
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

} // namespace

TableLines::TableLines(const UserText& path, char separator)
    : m_name(InputName(path)), m_separator(separator), m_file(path), m_buffer(kBlock) {
    if (!IsStandardStream(path)) m_progress.emplace(m_name, m_file.Size());
}

std::string_view TableLines::Next() {
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

std::string_view TableLines::ByteOrderMark() {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    Fill(0);
    if (!std::string_view(m_buffer.data(), m_end).starts_with(kMark)) return {};
    m_begin = kMark.size();
    return kMark;
}

// Reads more behind what is held of the line. False at the end of the table.
bool TableLines::Fill(std::size_t held) {
    if (held >= kMaxLine)
        throw CommandError(ExitCode::IO_ERROR,
                           Place() + ": longer than a megabyte; check for a quote that is not closed");
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, held);
    m_begin = 0;
    m_end = held;
    m_buffer.resize(std::max(m_buffer.size(), held + kBlock));
    const std::size_t count = m_file.Read(m_buffer.data() + held, kBlock);
    m_end += count;
    m_done += count;
    if (m_progress) m_progress->Show(m_done);
    return count > 0;
}

void TableFields::Cut(std::string_view line, char separator) {
    items.clear();
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

void TableFields::CutAtBlanks(std::string_view line) {
    items.clear();
    const std::size_t end = line.find_last_not_of("\r\n") + 1;
    lineEnd = line.substr(end);
    line = line.substr(0, end);
    for (std::size_t start = 0; (start = line.find_first_not_of(kBlanks, start)) != std::string_view::npos;) {
        const std::size_t stop = std::min(line.find_first_of(kBlanks, start), line.size());
        items.push_back(line.substr(start, stop - start));
        start = stop;
    }
}

std::string Unquoted(std::string_view field) {
    field = Trimmed(field);
    if (field.size() < 2 || field.front() != '"' || field.back() != '"') return std::string(field);
    std::string text(Trimmed(field.substr(1, field.size() - 2)));
    for (std::size_t at = 0; (at = text.find("\"\"", at)) != std::string::npos; ++at) text.erase(at, 1);
    return text;
}
