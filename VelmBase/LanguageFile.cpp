// SPDX-License-Identifier: MIT
#include "VelmBase/private/LanguageFile.h"

#include "VelmBase/File.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t kLargestFile = 1 << 20;

enum Field { NUMBER, ORIGINAL, TRANSLATION, NUM_FIELDS };
constexpr std::array<std::string_view, NUM_FIELDS> kKeywords = {"msgctxt", "msgid", "msgstr"};

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Appends what the quoted piece stands for; false when it is not one.
bool AppendQuoted(std::string_view piece, std::string& text) {
    if (piece.size() < 2 || piece.front() != '"' || piece.back() != '"') return false;
    piece = piece.substr(1, piece.size() - 2);
    for (std::size_t i = 0; i < piece.size(); ++i) {
        char c = piece[i];
        if (c == '"') return false;
        if (c == '\\') {
            constexpr std::string_view kLetters = "nt\"\\", kMeanings = "\n\t\"\\";
            if (++i == piece.size()) return false; // it escapes the quote at the end
            const std::size_t letter = kLetters.find(piece[i]);
            if (letter == std::string_view::npos) return false;
            c = kMeanings[letter];
        }
        text += c;
    }
    return true;
}

// Decodes a text; false when it is no UTF-8 or would steer a terminal.
bool Decode(std::string_view bytes, std::wstring& text) {
    text = FromUtf8(bytes);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        const bool isControl = (c < 0x20 && c != L'\n' && c != L'\t') || (c >= 0x7F && c < 0xA0);
        const bool isPaired = i > 0 && text[i - 1] >= 0xD800 && text[i - 1] < 0xDC00;
        const bool isStrayByte = c >= 0xDC80 && c < 0xDD00 && !isPaired;
        if (isControl || isStrayByte) return false;
    }
    return true;
}

// The number that all of `digits` make; false for anything else.
bool ParseNumber(std::string_view digits, std::uint32_t& number) {
    constexpr std::size_t kMostDigits = 9; // any of which fit
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.empty() || digits.size() > kMostDigits || !std::all_of(digits.begin(), digits.end(), isDigit))
        return false;
    number = 0;
    for (const char c : digits) number = number * 10 + static_cast<std::uint32_t>(c - '0');
    return true;
}

class EntryReader {
public:
    explicit EntryReader(const LANGUAGES::EntryHandler& handler) : m_handler(handler) {}

    void Line(std::string_view line) {
        line = Trimmed(line);
        if (line.empty()) return Finish();
        if (line.front() == '#') return Comment(line);
        if (line.front() == '"') {
            m_isDamaged = m_isDamaged || m_field < 0 || !AppendQuoted(line, m_texts[m_field]);
            return;
        }
        const std::size_t wordEnd = line.find_first_of(" \t\"");
        const auto keyword = std::find(kKeywords.begin(), kKeywords.end(), line.substr(0, wordEnd));
        if (keyword == kKeywords.end()) {
            m_isDamaged = true;
            return;
        }
        Begin(static_cast<int>(keyword - kKeywords.begin()), Trimmed(line.substr(keyword->size())));
    }

    void Finish() {
        std::uint32_t number = 0;
        std::wstring original;
        std::wstring translation;
        if (m_field == TRANSLATION && !m_isDamaged && !m_isFuzzy && ParseNumber(m_texts[NUMBER], number) &&
            Decode(m_texts[ORIGINAL], original) && Decode(m_texts[TRANSLATION], translation))
            m_handler(number, original, translation);
        m_field = -1;
        m_isDamaged = m_isFuzzy = false;
        for (std::string& text : m_texts) text.clear();
    }

private:
    // Comments stand above their entry.
    void Comment(std::string_view line) {
        if (m_field == TRANSLATION) Finish();
        if (line.starts_with("#,") && line.find("fuzzy") != std::string_view::npos) m_isFuzzy = true;
    }

    void Begin(int field, std::string_view quoted) {
        // An entry begins with a number, with or without an empty line above it.
        if (field <= m_field || (field == NUMBER && m_isDamaged)) Finish();
        m_isDamaged = m_isDamaged || field != m_field + 1 || !AppendQuoted(quoted, m_texts[field]);
        m_field = field;
    }

    const LANGUAGES::EntryHandler& m_handler;
    std::array<std::string, NUM_FIELDS> m_texts;
    int m_field = -1; // the one that was begun last
    bool m_isDamaged = false;
    bool m_isFuzzy = false;
};

} // namespace

void LANGUAGES::ReadEntries(std::string_view bytes, const EntryHandler& handler) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
    EntryReader reader(handler);
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        reader.Line(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    reader.Finish();
}

bool LANGUAGES::ReadEntriesOf(const std::wstring& path, const EntryHandler& handler) {
    FILES::Reader file(path);
    if (!file.IsOpen() || file.Size() > kLargestFile) return false;
    std::string bytes(static_cast<std::size_t>(file.Size()), '\0');
    std::size_t size = 0;
    while (const std::size_t count = file.Read(bytes.data() + size, bytes.size() - size)) size += count;
    if (file.Failed()) return false;
    ReadEntries(std::string_view(bytes).substr(0, size), handler);
    return true;
}
