#include "apps/chartutil/files/LineRules.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/Errors.h"

#include <cstdio>
#include <string_view>

namespace {

[[noreturn]] void Refuse(const std::string& what, const std::string& reason) {
    throw CommandError(ExitCode::WRONG_USE, "the " + what + " " + reason);
}

// The first character of `text` that no file can hold, as "U+03A9"; empty when there is none.
std::string FirstUnstorable(std::wstring_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<unsigned long>(text[i]);
        if (code <= 0xFF) continue;
        const bool isPair = code >= 0xD800 && code < 0xDC00 && i + 1 < text.size();
        if (isPair)
            code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<unsigned long>(text[i + 1]) - 0xDC00);
        char name[16];
        std::snprintf(name, sizeof name, "U+%04lX", code);
        return name;
    }
    return {};
}

// The rules that hold for every text, and the characters that this one may not have.
void RequireText(const std::string& what, std::wstring_view text, std::string_view forbidden) {
    if (const std::string character = FirstUnstorable(text); !character.empty())
        Refuse(what, "has the character " + character + "; a settings file holds characters up to U+00FF");
    if (text.find_first_of(L"\r\n") != std::wstring_view::npos)
        Refuse(what, "has a line break; a settings file keeps it on one line");
    for (const char c : forbidden)
        if (text.find(static_cast<wchar_t>(c)) != std::wstring_view::npos)
            Refuse(what, std::string("has a \"") + c + "\", which ends it in a settings file; leave it out");
}

void RequireNoOuterBlanks(const std::string& what, std::wstring_view text) {
    if (TrimmedW(text).size() != text.size())
        Refuse(what, "begins or ends with a blank, which a settings file does not keep; leave it out");
}

} // namespace

void RequireSectionName(const std::wstring& name) {
    if (name.empty()) Refuse("section name", "is empty");
    RequireText("section name", name, "]");
}

void RequireKeyLine(const std::wstring& name, const std::wstring& value, const std::wstring& comment) {
    if (name.empty()) Refuse("key name", "is empty");
    RequireText("key name", name, "=;");
    RequireNoOuterBlanks("key name", name);
    RequireText("value", value, ";");
    RequireNoOuterBlanks("value", value);
    RequireText("comment", comment, "");
    // Blanks before a comment stay: they are how people set it off.
    if (TrimmedW(L";" + comment).size() != comment.size() + 1)
        Refuse("comment", "ends with a blank, which a settings file does not keep; leave it out");
    if (name.front() == L'[' && (name + value + comment).find(L']') != std::wstring::npos)
        Refuse("key name", "begins with \"[\" and a \"]\" follows: the line would be a section's header");
}
