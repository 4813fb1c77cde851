#include "VelmBase/SettingsText.h"

#include "VelmBase/File.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <type_traits>
#include <vector>

namespace SETTINGS {
namespace {

bool IsTrimmed(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

Bytes Trimmed(Bytes text) {
    while (!text.empty() && IsTrimmed(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsTrimmed(text.back())) text.remove_suffix(1);
    return text;
}

// The lines of a file, one at a time, from a buffer that grows only for a line longer than it.
class LineReader {
public:
    explicit LineReader(FILES::Reader& file) : m_file(file), m_buffer(kBlock) {}

    // False at the end of the file. `line` holds until the next call.
    bool Next(Bytes& line) {
        std::size_t searched = 0;
        for (;;) {
            const char* const begin = m_buffer.data() + m_begin;
            const std::size_t available = m_end - m_begin;
            const void* const found = std::memchr(begin + searched, '\n', available - searched);
            if (found) {
                line = {begin, static_cast<std::size_t>(static_cast<const char*>(found) - begin)};
                m_begin += line.size() + 1;
                return true;
            }
            searched = available;
            if (!Fill()) {
                line = {m_buffer.data() + m_begin, m_end - m_begin};
                m_begin = m_end;
                return !line.empty();
            }
        }
    }

private:
    bool Fill() {
        std::copy(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_begin),
                  m_buffer.begin() + static_cast<std::ptrdiff_t>(m_end), m_buffer.begin());
        m_end -= m_begin;
        m_begin = 0;
        if (m_end == m_buffer.size()) m_buffer.resize(m_buffer.size() * 2);
        const std::size_t got = m_file.Read(m_buffer.data() + m_end, m_buffer.size() - m_end);
        m_end += got;
        return got > 0;
    }

    static constexpr std::size_t kBlock = 256 * 1024;
    FILES::Reader& m_file;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
};

void ReadKey(Bytes line, Handler& handler) {
    Bytes comment;
    const std::size_t semicolon = line.find(';');
    if (semicolon != Bytes::npos) {
        comment = line.substr(semicolon + 1);
        line = line.substr(0, semicolon);
    }
    const std::size_t equals = line.find('=');
    const Bytes name = Trimmed(line.substr(0, equals));
    const Bytes value = equals == Bytes::npos ? Bytes() : Trimmed(line.substr(equals + 1));
    handler.OnKey(name, value, comment);
}

} // namespace

std::wstring Widened(Bytes bytes) {
    const auto* const first = reinterpret_cast<const unsigned char*>(bytes.data());
    return std::wstring(first, first + bytes.size());
}

ReadResult Read(const std::wstring& path, Handler& handler) {
    FILES::Reader file(path);
    if (!file.IsOpen()) return {ReadStatus::NOT_OPENED, 0};

    ReadResult result;
    LineReader lines(file);
    bool insideSection = false;
    for (Bytes line; lines.Next(line);) {
        ++result.lineNumber;
        line = Trimmed(line);
        if (line.empty()) continue;
        const std::size_t bracket = line.front() == '[' ? line.find(']') : Bytes::npos;
        if (bracket == Bytes::npos) {
            if (insideSection) ReadKey(line, handler);
            continue;
        }
        if (bracket == 1) {
            result.status = ReadStatus::BAD_HEADER;
            return result;
        }
        if (!handler.OnSection(line.substr(1, bracket - 1))) {
            result.status = ReadStatus::STOPPED;
            return result;
        }
        insideSection = true;
    }
    if (file.Failed()) result.status = ReadStatus::NOT_OPENED;
    return result;
}

void Writer::BeginSection(std::wstring_view name, std::wstring_view comment) {
    const std::size_t start = m_text.size();
    m_text += '[';
    Put(Extend(name.size()), name);
    m_text += ']';
    if (!comment.empty()) {
        m_text += " ;";
        Put(Extend(comment.size()), comment);
    }
    EndLine(start);
}

void Writer::Key(std::wstring_view name, std::wstring_view value, std::wstring_view comment,
                 std::size_t nameWidth, std::size_t valueWidth) {
    const std::size_t valueColumn = nameWidth + 3;
    const std::size_t valueEnd = comment.empty() ? value.size() : valueWidth + 1;
    const std::size_t commentColumn = name.empty() ? 0 : valueColumn + valueEnd;
    const std::size_t length = commentColumn + (comment.empty() ? 0 : 1 + comment.size());

    const std::size_t start = m_text.size();
    char* const line = Extend(length);
    if (!name.empty()) {
        Put(line, name);
        std::fill(line + name.size(), line + nameWidth + 1, ' ');
        line[nameWidth + 1] = '=';
        line[nameWidth + 2] = ' ';
        Put(line + valueColumn, value);
        std::fill(line + valueColumn + value.size(), line + commentColumn, ' ');
    }
    if (!comment.empty()) {
        line[commentColumn] = ';';
        Put(line + commentColumn + 1, comment);
    }
    EndLine(start);
}

void Writer::EndSection() { m_text += "\r\n"; }

bool Writer::Save(const std::wstring& path) const {
    return m_storable && FILES::ReplaceContents(path, m_text);
}

void Writer::EndLine(std::size_t start) {
    if (m_text.find('\n', start) != std::string::npos) {
        const std::string line = m_text.substr(start);
        m_text.resize(start);
        for (const char c : line) {
            if (c == '\n') m_text += '\r';
            m_text += c;
        }
    }
    m_text += "\r\n";
}

char* Writer::Extend(std::size_t count) {
    const std::size_t start = m_text.size();
    m_text.resize(start + count);
    return m_text.data() + start;
}

void Writer::Put(char* bytes, std::wstring_view text) {
    using Code = std::make_unsigned_t<wchar_t>;
    Code all = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<Code>(text[i]);
        all |= code;
        bytes[i] = static_cast<char>(code);
    }
    m_storable = m_storable && all <= 0xFF;
}

} // namespace SETTINGS
