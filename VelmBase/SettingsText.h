#pragma once

#include "VelmBase/Export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The text form of settings files: "[section]" headers and "name = value ;comment" lines, one byte a
/// character (codes 0 to 255). Reading and writing work on this form alone; who keeps the sections is the
/// caller's matter.
namespace SETTINGS {

/// Text of a file as it stands there, one byte a character.
using Bytes = std::string_view;

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
};

enum class ReadStatus : std::int32_t {
    COMPLETE,   ///< the whole file was read
    NOT_OPENED, ///< the file cannot be opened, is no regular file, or reading it failed
    BAD_HEADER, ///< a header "[]"
    STOPPED,    ///< the handler did not take a section
};

struct ReadResult {
    ReadStatus status = ReadStatus::COMPLETE;
    std::uint32_t lineNumber = 0; ///< of the last line read, from 1
};

/// Reads `path` line by line. Lines end at LF and lose the blanks " \t\n\r" at both ends; lines before the
/// first header and blank lines are passed over. Holds one line and a read buffer at a time, never the whole
/// file.
VELMBASE_API ReadResult Read(const std::wstring& path, Handler& handler);

/// Composes the bytes of a settings file. For each section: BeginSection(), one Key() for each of its keys
/// with the widths of their columns, EndSection().
class VELMBASE_API Writer {
public:
    /// `numLines` is how many lines will come, roughly: growing a large text step by step costs as much as
    /// composing it.
    explicit Writer(std::size_t numLines = 0) { m_text.reserve(numLines * kUsualLine); }

    void BeginSection(std::wstring_view name, std::wstring_view comment);

    /// One line: the name and "= " aligned behind `nameWidth` characters, the value, and ";" with the comment
    /// aligned behind `valueWidth` when there is one. A key without a name shows its comment alone. The
    /// widths are the largest of the section, so no name or value is longer.
    void Key(std::wstring_view name, std::wstring_view value, std::wstring_view comment,
             std::size_t nameWidth, std::size_t valueWidth);
    void EndSection();

    /// Replaces the file `path` by what was composed, whole or not at all (see FILES::ReplaceContents).
    /// False, with the file as it was, when a text has a character above 255, which no file can hold, or when
    /// the file cannot be written.
    [[nodiscard]] bool Save(const std::wstring& path) const;

    const std::string& Text() const { return m_text; }
    bool IsStorable() const { return m_storable; }

private:
    // Ends the line that begins at `start`. A line feed within it is a line break of the file as well.
    void EndLine(std::size_t start);

    // Room for `count` more bytes.
    char* Extend(std::size_t count);
    void Put(char* bytes, std::wstring_view text);

    static constexpr std::size_t kUsualLine = 64;
    std::string m_text;
    bool m_storable = true;
};

} // namespace SETTINGS
