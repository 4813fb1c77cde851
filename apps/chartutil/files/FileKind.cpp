// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/FileKind.h"

#include "VelmBase/File.h"
#include "VelmBase/SettingsText.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Errors.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <vector>

namespace {

constexpr std::size_t kBeginning = 64 * 1024;

/// What a file looks like, as a set to say which of them a kind takes.
enum Look : unsigned {
    NOTHING = 1U << 0U, // empty, or remarks alone
    PNG_PICTURE = 1U << 1U,
    JPEG_PICTURE = 1U << 2U,
    PDF_FILE = 1U << 3U,
    UTF16 = 1U << 4U,
    BINARY = 1U << 5U,
    SVG_PICTURE = 1U << 6U,
    XML = 1U << 7U,
    DXF_DRAWING = 1U << 8U,
    CONTOURS = 1U << 9U,
    COLOR_TABLE = 1U << 10U,
    SETTINGS_FILE = 1U << 11U,
    HEADER = 1U << 12U, // a line of it could be that of a section
    COLUMNS = 1U << 13U,
    PLAIN = 1U << 14U,
};

struct LookName {
    Look look;
    const char* name;
};
constexpr LookName kLookNames[] = {
    {PNG_PICTURE, "a PNG picture"},
    {JPEG_PICTURE, "a JPEG picture"},
    {PDF_FILE, "a PDF file"},
    {UTF16, "a text in UTF-16"},
    {BINARY, "a binary file"},
    {SVG_PICTURE, "an SVG picture"},
    {XML, "an XML file"},
    {DXF_DRAWING, "a DXF drawing"},
    {CONTOURS, "a contour definition file"},
    {COLOR_TABLE, "a colour table"},
    {SETTINGS_FILE, "a settings file"},
    {HEADER, "another text"},
    {COLUMNS, "a table"},
    {PLAIN, "a text without sections"},
};

struct KindLooks {
    FileKind kind;
    const char* name;
    unsigned looks; // that a file of the kind may have
};
constexpr unsigned kSettings = SETTINGS_FILE | CONTOURS | COLOR_TABLE | HEADER;
constexpr KindLooks kKinds[] = {
    {FileKind::SETTINGS, "settings file", kSettings},
    {FileKind::CONTOURS, "contour definition file", CONTOURS},
    {FileKind::COLOR_TABLE, "colour table", COLOR_TABLE},
    {FileKind::TABLE, "table", COLUMNS},
    {FileKind::TEXT, "plain text", PLAIN | COLUMNS},
    {FileKind::SVG, "SVG picture", SVG_PICTURE},
    {FileKind::XML, "XML file", XML | SVG_PICTURE},
    {FileKind::PNG, "PNG picture", PNG_PICTURE},
    {FileKind::PDF, "PDF file", PDF_FILE},
    {FileKind::DXF, "DXF drawing", DXF_DRAWING},
};

std::optional<Look> LookOfSignature(std::string_view content) {
    struct Signature {
        std::string_view begin;
        Look look;
    };
    constexpr Signature kSignatures[] = {
        {"\x89PNG\r\n\x1A\n", PNG_PICTURE},
        {"\xFF\xD8\xFF", JPEG_PICTURE},
        {"%PDF-", PDF_FILE},
        {"\xFF\xFE", UTF16},
        {"\xFE\xFF", UTF16},
    };
    const auto* const found = std::ranges::find_if(
        kSignatures, [&](const Signature& signature) { return content.starts_with(signature.begin); });
    return found == std::end(kSignatures) ? std::nullopt : std::optional(found->look);
}

// UTF-16 without its mark: nearly all of a text in letters of the west are pairs with one zero byte, in the
// same place.
bool IsUtf16(std::string_view content) {
    constexpr std::size_t kFewest = 8;
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < content.size(); ++i) zeros[i % 2] += content[i] == '\0';
    const std::size_t numPairs = content.size() / 2;
    const auto [fewer, more] = std::minmax(zeros[0], zeros[1]);
    return content.size() >= kFewest && fewer == 0 && more * 2 > numPairs;
}

// More control codes than a text has of them.
bool HasManyControls(std::string_view content) {
    constexpr std::size_t kMost = 16; // one in so many, and one more
    const auto isControl = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 &&
               std::string_view("\t\n\v\f\r").find(c) == std::string_view::npos;
    };
    return static_cast<std::size_t>(std::ranges::count_if(content, isControl)) > content.size() / kMost + 1;
}

// The text's next line, which it loses.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

bool IsDxf(std::string_view text) {
    const std::string_view code = Trimmed(TakeLine(text));
    const std::string_view value = Trimmed(TakeLine(text));
    return code == "999" || (code == "0" && value == "SECTION");
}

bool IsNamed(std::string_view name, std::wstring_view other) {
    return icompareW(SETTINGS::Widened(name), std::wstring(other));
}

// How many columns the line has; -1 when it is no line of a table with that separator, ' ' for any blanks. A
// separator between quotes is none.
int NumColumns(std::string_view line, char separator) {
    bool isQuoted = false;
    bool isInside = false; // of a text between blanks
    int count = separator == ' ' ? 0 : 1;
    for (const char c : line) {
        if (c == '"') isQuoted = !isQuoted;
        if (separator == ' ') {
            const bool isBlank = c == ' ' || c == '\t';
            count += !isBlank && !isInside;
            isInside = !isBlank;
        } else {
            count += c == separator && !isQuoted;
        }
    }
    return isQuoted ? -1 : count;
}

bool IsNumeric(std::string_view line) {
    return line.find_first_not_of("0123456789+-.eE \t") == std::string_view::npos;
}

// A table: all of its first lines have the same columns. Between blanks these are numbers, or any text would
// be one.
bool HasColumns(std::string_view text) {
    constexpr std::size_t kMostLines = 20;
    std::vector<std::string_view> lines;
    while (lines.size() < kMostLines && text.find('\n') != std::string_view::npos)
        if (const std::string_view line = Trimmed(TakeLine(text)); !line.empty()) lines.push_back(line);
    if (lines.empty() && text.size() < kBeginning) lines.push_back(Trimmed(text));
    const auto areAlike = [&](char separator) {
        const int count = NumColumns(lines.front(), separator);
        return count > (separator == ' ' ? 0 : 1) && std::ranges::all_of(lines, [&](std::string_view line) {
                   return NumColumns(line, separator) == count;
               });
    };
    if (lines.empty()) return false;
    const bool isNumeric = lines.size() > 1 && std::ranges::all_of(lines.begin() + 1, lines.end(), IsNumeric);
    return std::ranges::any_of(std::string_view(",;\t|"), areAlike) || (isNumeric && areAlike(' '));
}

Look LookOfLines(std::string_view text) {
    const bool hasColumns = HasColumns(text);
    bool isContours = false;
    bool isTable = false;
    bool hasHeader = false;
    bool hasKey = false;   // "name =" behind a header
    bool hasOther = false; // any line that is no remark
    while (!text.empty()) {
        const SETTINGS::Line line = SETTINGS::Parse(TakeLine(text));
        if (line.kind == SETTINGS::Line::HEADER) {
            hasHeader = true;
            isContours = isContours || IsNamed(line.name, L"Contour(0)");
            isTable = isTable || IsNamed(line.name, L"ColorTable");
        } else if (line.kind == SETTINGS::Line::KEY && !line.name.empty() && line.name.front() != '#') {
            hasOther = true;
            hasKey = hasKey || (hasHeader && line.value.data() != nullptr);
        }
    }
    if (isContours) return CONTOURS;
    if (isTable) return COLOR_TABLE;
    if (hasHeader && hasKey) return SETTINGS_FILE;
    if (hasColumns) return COLUMNS;
    if (hasHeader) return HEADER;
    return hasOther ? PLAIN : NOTHING;
}

Look LookOf(std::string_view content) {
    if (const auto look = LookOfSignature(content)) return *look;
    if (IsUtf16(content)) return UTF16;
    if (content.find('\0') != std::string_view::npos) return BINARY;
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (content.starts_with(kUtf8Mark)) content.remove_prefix(kUtf8Mark.size());
    const std::string_view text = Trimmed(content);
    if (text.starts_with('<')) {
        const auto has = [text](std::string_view tag) { return text.find(tag) != std::string_view::npos; };
        if (has("<svg") && !has("<html")) return SVG_PICTURE;
        if (text.starts_with("<?xml") || text.starts_with("<!DOCTYPE")) return XML;
    }
    if (IsDxf(content)) return DXF_DRAWING;
    const Look look = LookOfLines(content); // sections may hold any character
    return look == PLAIN && HasManyControls(content) ? BINARY : look;
}

std::string BeginningOf(const UserText& path) {
    FILES::Reader file(path.Wide());
    std::string content(kBeginning, '\0');
    std::size_t size = 0;
    while (const std::size_t got = file.IsOpen() ? file.Read(&content[size], kBeginning - size) : 0)
        size += got;
    content.resize(size);
    return content;
}

} // namespace

std::string MismatchOf(std::string_view content, FileKind kind) {
    const Look look = LookOf(content.substr(0, kBeginning));
    const KindLooks& wanted = *std::ranges::find(kKinds, kind, &KindLooks::kind);
    if (look == NOTHING || (wanted.looks & look) != 0) return {};
    return std::string(std::ranges::find(kLookNames, look, &LookName::look)->name) + ", no " + wanted.name;
}

FileKind KindOfText(std::string_view content) {
    switch (LookOf(content.substr(0, kBeginning))) {
    case SVG_PICTURE:
        return FileKind::SVG;
    case XML:
        return FileKind::XML;
    case DXF_DRAWING:
        return FileKind::DXF;
    case CONTOURS:
    case COLOR_TABLE:
    case SETTINGS_FILE:
    case HEADER:
        return FileKind::SETTINGS;
    default:
        return FileKind::TEXT;
    }
}

void RequireKind(const UserText& path, std::string_view content, FileKind kind, bool isForced) {
    if (isForced) return;
    if (const std::string mismatch = MismatchOf(content, kind); !mismatch.empty())
        throw CommandError(ExitCode::WRONG_USE,
                           path.Utf8() + ": is " + mismatch +
                               "; nothing was written; --force replaces it all the same");
}

void RequireReplaceable(const UserText& path, FileKind kind, bool isForced) {
    if (IsStandardStream(path))
        StandardStreams::TakeOutput();
    else if (!isForced)
        RequireKind(path, BeginningOf(path), kind, isForced);
}

void AddForce(CLI::App& command, bool& isForced) {
    command.add_flag("--force", isForced, "Write also over a file of another kind");
}
