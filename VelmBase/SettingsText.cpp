// SPDX-License-Identifier: MIT
#include "VelmBase/SettingsText.h"

#include "VelmBase/WideString.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace SETTINGS {

struct LineCounter {
    static void Set(Handler& handler, std::uint32_t lineNumber) { handler.m_lineNumber = lineNumber; }
};

namespace {

bool IsTrimmed(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

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

// A whole content, one line at a time.
class LinesOf {
public:
    explicit LinesOf(Bytes content) : m_content(content) {}

    bool Next(Bytes& line) {
        if (m_content.empty()) return false;
        line = TakeLine(m_content);
        return true;
    }

private:
    Bytes m_content;
};

template <typename Lines> ReadResult ReadLines(Lines& lines, Handler& handler) {
    ReadResult result;
    bool insideSection = false;
    for (Bytes text; lines.Next(text);) {
        LineCounter::Set(handler, ++result.lineNumber);
        const Line line = Parse(text);
        switch (line.kind) {
        case Line::BLANK:
            break;
        case Line::HEADER:
            if (!handler.OnSection(line.name)) {
                result.status = ReadStatus::STOPPED;
                return result;
            }
            insideSection = true;
            break;
        case Line::BAD_HEADER:
            result.status = ReadStatus::BAD_HEADER;
            return result;
        case Line::KEY:
            if (insideSection) handler.OnKey(line.name, line.value, line.comment);
            break;
        }
    }
    return result;
}

// The first character of `text` that no file can hold, as "U+03A9"; empty when there is none.
std::wstring FirstUnstorable(std::wstring_view text) {
    const auto found = std::find_if(text.begin(), text.end(), [](wchar_t c) {
        return static_cast<std::make_unsigned_t<wchar_t>>(c) > 0xFF;
    });
    if (found == text.end()) return {};
    auto code = static_cast<unsigned long>(*found);
    if (code >= 0xD800 && code < 0xDC00 && found + 1 != text.end())
        code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<unsigned long>(found[1]) - 0xDC00);
    char name[16];
    std::snprintf(name, sizeof name, "U+%04lX", code);
    return FromUtf8(name);
}

ErrorString Refusal(const wchar_t* what, const std::wstring& reason) {
    return ErrorString(L"the ") << what << L" " << reason;
}

// The rules that hold for every text, and the characters that this one may not have.
ErrorString CheckText(const wchar_t* what, std::wstring_view text, std::wstring_view forbidden) {
    if (const std::wstring character = FirstUnstorable(text); !character.empty())
        return Refusal(what, L"has the character " + character +
                                 L"; a settings file holds characters up to U+00FF");
    if (text.find(L'\n') != std::wstring_view::npos)
        return Refusal(what, L"has a line break; a settings file keeps it on one line");
    for (const wchar_t c : forbidden)
        if (text.find(c) != std::wstring_view::npos)
            return Refusal(what, std::wstring(L"has a \"") + c +
                                     L"\", which ends it in a settings file; leave it out");
    return {};
}

// The same for a text that loses the blanks at its ends.
ErrorString CheckTrimmedText(const wchar_t* what, std::wstring_view text, std::wstring_view forbidden) {
    ErrorString result = CheckText(what, text, forbidden);
    if (result && TrimmedW(text).size() != text.size())
        return Refusal(what,
                       L"begins or ends with a blank, which a settings file does not keep; leave it out");
    return result;
}

} // namespace

std::wstring Widened(Bytes bytes) {
    const auto* const first = reinterpret_cast<const unsigned char*>(bytes.data());
    return std::wstring(first, first + bytes.size());
}

Bytes Trimmed(Bytes text) {
    while (!text.empty() && IsTrimmed(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsTrimmed(text.back())) text.remove_suffix(1);
    return text;
}

Line Parse(Bytes line) {
    line = Trimmed(line);
    if (line.empty()) return {};
    Line parsed;
    if (line.front() == '[') {
        if (const std::size_t bracket = line.find(']'); bracket != Bytes::npos) {
            parsed.kind = bracket == 1 ? Line::BAD_HEADER : Line::HEADER;
            parsed.name = line.substr(1, bracket - 1);
            return parsed;
        }
    }
    parsed.kind = Line::KEY;
    if (const std::size_t semicolon = line.find(';'); semicolon != Bytes::npos) {
        parsed.comment = line.substr(semicolon + 1);
        line = line.substr(0, semicolon);
    }
    const std::size_t equals = line.find('=');
    parsed.name = Trimmed(line.substr(0, equals));
    if (equals != Bytes::npos) parsed.value = Trimmed(line.substr(equals + 1));
    return parsed;
}

bool FindHeader(Bytes content, std::size_t position, FoundHeader& found) {
    std::size_t bracket = 0;
    while ((bracket = content.find('[', position)) != Bytes::npos) {
        const Bytes before = content.substr(position, bracket - position);
        const std::size_t lastFeed = before.rfind('\n');
        found.begin = lastFeed == Bytes::npos ? position : position + lastFeed + 1;
        Bytes rest = content.substr(found.begin);
        const Bytes line = TakeLine(rest);
        position = found.end = found.begin + line.size();
        if (!Trimmed(line.substr(0, bracket - found.begin)).empty()) continue;
        found.line = Parse(line);
        if (found.line.kind != Line::KEY) return true;
    }
    return false;
}

ReadResult Read(const std::wstring& path, Handler& handler) {
    FILES::Reader file(path);
    ReadResult result;
    if (file.IsOpen()) {
        LineReader lines(file);
        result = ReadLines(lines, handler);
    }
    if (result.status == ReadStatus::COMPLETE && file.Error()) result.status = ReadStatus::NOT_OPENED;
    result.error = file.Error();
    return result;
}

ReadResult ReadText(Bytes content, Handler& handler) {
    LinesOf lines(content);
    return ReadLines(lines, handler);
}

void Writer::BeginSection(std::wstring_view name, std::wstring_view comment) {
    PutByte('[');
    Put(name);
    PutByte(']');
    if (!comment.empty()) {
        PutByte(' ');
        PutByte(';');
        Put(comment);
    }
    EndSection();
}

void Writer::Key(std::wstring_view name, std::wstring_view value, std::wstring_view comment,
                 std::size_t nameWidth, std::size_t valueWidth) {
    if (!m_good) return;
    if (!name.empty()) {
        Put(name);
        Fill(nameWidth + 1 - name.size());
        PutByte('=');
        PutByte(' ');
        Put(value);
        if (!comment.empty()) Fill(valueWidth + 1 - value.size());
    }
    if (!comment.empty()) {
        PutByte(';');
        Put(comment);
    }
    EndSection();
}

void Writer::EndSection() {
    PutByte('\r');
    PutByte('\n');
}

bool Writer::Finish() {
    Flush();
    return m_good;
}

void Writer::Put(std::wstring_view text) {
    using Code = std::make_unsigned_t<wchar_t>;
    while (!text.empty()) {
        const std::wstring_view piece = text.substr(0, Room());
        text.remove_prefix(piece.size());
        char* const bytes = m_block.data() + m_used;
        Code all = 0;
        Code hasLineFeed = 0; // as wide as a code, so that the loop goes several characters at a time
        for (std::size_t i = 0; i < piece.size(); ++i) {
            const auto code = static_cast<Code>(piece[i]);
            all |= code;
            hasLineFeed |= static_cast<Code>(code == '\n');
            bytes[i] = static_cast<char>(code);
        }
        m_hadUnstorable = m_hadUnstorable || all > 0xFF;
        m_good = m_good && !m_hadUnstorable;
        if (hasLineFeed == 0) {
            m_used += piece.size();
            continue;
        }
        // A line feed within a text is a line break of the file as well.
        for (const wchar_t c : piece) {
            if (c == L'\n') PutByte('\r');
            PutByte(static_cast<char>(c));
        }
    }
}

void Writer::PutByte(char byte) {
    Room();
    m_block[m_used++] = byte;
}

void Writer::Fill(std::size_t count) {
    while (count > 0 && m_good) {
        const std::size_t piece = std::min(count, Room());
        std::memset(m_block.data() + m_used, ' ', piece);
        m_used += piece;
        count -= piece;
    }
}

std::size_t Writer::Room() {
    if (m_used == m_block.size()) Flush();
    return m_block.size() - m_used;
}

void Writer::Flush() {
    m_good = m_good && (m_used == 0 || m_sink({m_block.data(), m_used}));
    m_used = 0;
}

std::error_code Save(const std::wstring& path, const std::function<void(Writer&)>& compose) try {
    bool hadUnstorable = false;
    const auto write = [&](const FILES::ContentSink& sink) {
        Writer writer(sink);
        compose(writer);
        const bool finished = writer.Finish();
        hadUnstorable = writer.HadUnstorable();
        return finished;
    };
    const std::error_code error = FILES::ReplaceContents(path, write, FILES::InPlace::ALLOWED);
    return hadUnstorable ? std::make_error_code(std::errc::illegal_byte_sequence) : error;
} catch (const std::bad_alloc&) {
    return std::make_error_code(std::errc::not_enough_memory);
}

ErrorString CheckSectionName(std::wstring_view name) {
    if (name.empty()) return Refusal(L"section name", L"is empty");
    return CheckText(L"section name", name, L"]");
}

ErrorString CheckSectionComment(std::wstring_view comment) {
    const std::size_t end = std::min(comment.find(L'\n'), comment.size());
    const bool isOneLine = TrimmedW(comment.substr(end)).empty();
    return CheckText(L"section comment", isOneLine ? comment.substr(0, end) : comment, {});
}

ErrorString CheckKeyLine(std::wstring_view name, std::wstring_view value, std::wstring_view comment) {
    if (name.empty() && !value.empty()) return Refusal(L"key name", L"is empty, and its value would be lost");
    if (name.empty() && comment.empty())
        return Refusal(L"key name", L"is empty, and so is the comment: the line would be blank");
    if (ErrorString fault = CheckTrimmedText(L"key name", name, L"=;"); !fault) return fault;
    if (ErrorString fault = CheckTrimmedText(L"value", value, L";"); !fault) return fault;
    if (ErrorString fault = CheckText(L"comment", comment, {}); !fault) return fault;
    // Blanks before a comment stay: they are how people set it off.
    if (!comment.empty() && TrimmedW(L";" + std::wstring(comment)).size() != comment.size() + 1)
        return Refusal(L"comment", L"ends with a blank, which a settings file does not keep; leave it out");
    const auto hasBracket = [](std::wstring_view text) { return text.find(L']') != std::wstring_view::npos; };
    if (name.starts_with(L'[') && (hasBracket(name) || hasBracket(value) || hasBracket(comment)))
        return Refusal(L"key name",
                       L"begins with \"[\" and a \"]\" follows: the line would be a section's header");
    return {};
}

} // namespace SETTINGS
