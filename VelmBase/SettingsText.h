// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/ErrorString.h"
#include "VelmBase/Export.h"
#include "VelmBase/File.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// The text form of settings files: "[section]" headers and "name = value ;comment" lines, one byte a
/// character (codes 0 to 255). Reading and writing work on this form alone; who keeps the sections is the
/// caller's matter.
namespace SETTINGS {

/// Text of a file as it stands there, one byte a character.
using Bytes = std::string_view;

/// `text` without the blanks that lines, names and values lose at their ends: " \t\n\r".
VELMBASE_API Bytes Trimmed(Bytes text);

/// The characters of `bytes`, code for code.
VELMBASE_API std::wstring Widened(Bytes bytes);

/// Takes what a settings file holds, in file order. The views end with the call.
class Handler {
public:
    virtual ~Handler() = default;

    /// A header line; the keys that follow belong to it. Reading stops when the answer is false.
    virtual bool OnSection(Bytes name) = 0;

    /// A line of the section: trimmed name and value, and the comment as it stands behind the ";". A line
    /// with a comment alone has an empty name.
    virtual void OnKey(Bytes name, Bytes value, Bytes comment) = 0;

protected:
    /// The line of the file that a call is about, from 1.
    std::uint32_t LineNumber() const { return m_lineNumber; }

private:
    friend struct LineCounter; // of the reader
    std::uint32_t m_lineNumber = 0;
};

/// How reading a file ended.
enum class ReadStatus : std::int32_t {
    COMPLETE,   ///< the whole file was read
    NOT_OPENED, ///< the file cannot be opened, is no regular file, or reading it failed
    BAD_HEADER, ///< a header "[]"
    STOPPED,    ///< the handler did not take a section
};

/// How reading a file ended, and where.
struct ReadResult {
    ReadStatus status = ReadStatus::COMPLETE; ///< whether all was read
    std::uint32_t lineNumber = 0;             ///< of the last line read, from 1
    std::error_code error;                    ///< why the file could not be opened or read
};

/// What a line of a file says. The views are parts of that line, also the empty ones, but for a part that the
/// line has not: that has no data().
struct Line {
    /// The kinds of lines.
    enum Kind : std::int32_t {
        BLANK,
        HEADER,     ///< "[name]"
        BAD_HEADER, ///< "[]"
        KEY,        ///< before the first header: a line that is passed over
    };
    Kind kind = BLANK; ///< what the line is
    Bytes name;        ///< of a header as it stands, of a key trimmed
    Bytes value;       ///< of a key, trimmed; missing without "="
    Bytes comment;     ///< of a key, behind the first ";"; missing without one
};

/// Takes a line apart, with or without its LF, by the rules that hold for every settings file.
VELMBASE_API Line Parse(Bytes line);

/// Takes the first line off `content`, with its LF where it has one. The content is not empty.
inline Bytes TakeLine(Bytes& content) {
    const std::size_t feed = content.find('\n');
    const Bytes line = content.substr(0, feed == Bytes::npos ? feed : feed + 1);
    content.remove_prefix(line.size());
    return line;
}

/// Where a header stands in the content of a file: its line, LF included, begins at `begin` and ends before
/// `end`.
struct FoundHeader {
    Line line;             ///< HEADER or BAD_HEADER
    std::size_t begin = 0; ///< of the line's first byte
    std::size_t end = 0;   ///< behind the line
};

/// Finds the first header from `position` on, which is where a line begins. False when there is none. Looks
/// at other lines no closer than it must.
VELMBASE_API bool FindHeader(Bytes content, std::size_t position, FoundHeader& found);

/// Reads `path` line by line. Lines end at LF and lose the blanks at both ends; lines before the
/// first header and blank lines are passed over. Holds one line and a read buffer at a time, never the whole
/// file.
VELMBASE_API ReadResult Read(const std::wstring& path, Handler& handler);

/// Read() for the content of a file.
VELMBASE_API ReadResult ReadText(Bytes content, Handler& handler);

/// Composes the bytes of a settings file and hands them to a sink piece by piece, however long a line is. For
/// each section: BeginSection(), one Key() for each of its keys with the widths of their columns,
/// EndSection().
class VELMBASE_API Writer {
public:
    /// The sink is called by the other functions, and has to outlive the writer.
    explicit Writer(const FILES::ContentSink& sink) : m_sink(sink), m_block(kBlock) {}
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// The header, with the comment behind it unless that is empty.
    void BeginSection(std::wstring_view name, std::wstring_view comment);

    /// One line: the name and "= " aligned behind `nameWidth` characters, the value, and ";" with the comment
    /// aligned behind `valueWidth` when there is one. A key without a name shows its comment alone. The
    /// widths are the largest of the section, so no name or value is longer.
    void Key(std::wstring_view name, std::wstring_view value, std::wstring_view comment,
             std::size_t nameWidth, std::size_t valueWidth);

    /// Ends the section with an empty line.
    void EndSection();

    /// Hands over what is left. False when a text had a character above 255, which no file can hold, or when
    /// the sink did not take a piece; what comes after that is passed over.
    bool Finish();

    /// Whether a text had a character above 255.
    bool HadUnstorable() const { return m_hadUnstorable; }

private:
    void Put(std::wstring_view text);
    void PutByte(char byte);
    void Fill(std::size_t count); // with blanks
    std::size_t Room();           // at least 1
    void Flush();

    static constexpr std::size_t kBlock = 64 * 1024;
    const FILES::ContentSink& m_sink;
    std::vector<char> m_block;
    std::size_t m_used = 0;
    bool m_good = true;
    bool m_hadUnstorable = false;
};

/// Replaces the file `path` by what `compose` writes, whole or not at all (see FILES::ReplaceContents). It
/// may be called twice, and has to write the same each time. With an error the file is as it was:
/// errc::illegal_byte_sequence when a text has a character above 255, errc::not_enough_memory, and those of
/// ReplaceContents.
[[nodiscard]] VELMBASE_API std::error_code Save(const std::wstring& path,
                                                const std::function<void(Writer&)>& compose);

/// What a line cannot carry back: success when reading the header "[name]" gives this name again, otherwise
/// an error that says why not, such as: the section name has a "]", which ends it in a settings file; leave
/// it out.
VELMBASE_API ErrorString CheckSectionName(std::wstring_view name);

/// CheckSectionName() for the comment behind a header: it is not read back, but what follows a line break in
/// it is.
VELMBASE_API ErrorString CheckSectionComment(std::wstring_view comment);

/// CheckSectionName() for the line of a key.
VELMBASE_API ErrorString CheckKeyLine(std::wstring_view name, std::wstring_view value,
                                      std::wstring_view comment);

} // namespace SETTINGS
