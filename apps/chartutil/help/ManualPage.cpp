// SPDX-License-Identifier: MIT
#include "apps/chartutil/help/ManualPage.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/help/OptionText.h"

#include <algorithm>
#include <cstdio>

namespace {

// A text that is printed as it is: roff has meanings for these characters, or prints them as others.
std::string Escaped(std::string_view text) {
    struct Sequence {
        char character;
        const char* escape;
    };
    constexpr Sequence kSequences[] = {{'\\', "\\e"},  {'-', "\\-"},   {'\'', "\\(aq"}, {'"', "\\(dq"},
                                       {'`', "\\(ga"}, {'^', "\\(ha"}, {'~', "\\(ti"}};
    std::string escaped;
    if (text.starts_with('.')) escaped = "\\&"; // begins no request
    const std::wstring wide = FromUtf8(text);
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto code = static_cast<unsigned long>(wide[i]);
        const bool isPair = code >= 0xD800 && code < 0xDC00 && i + 1 < wide.size(); // of 16 bits each
        if (isPair)
            code = 0x10000 + ((code - 0xD800) << 10U) + (static_cast<unsigned long>(wide[++i]) - 0xDC00);
        if (code >= 0x7F) {
            char name[16];
            std::snprintf(name, sizeof name, "\\[u%04X]", static_cast<unsigned int>(code));
            escaped += name;
            continue;
        }
        const auto* const found =
            std::ranges::find(kSequences, static_cast<char>(code), &Sequence::character);
        if (found == std::end(kSequences))
            escaped += static_cast<char>(code);
        else
            escaped += found->escape;
    }
    return escaped;
}

std::string Bold(std::string_view text) { return "\\fB" + Escaped(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Escaped(text) + "\\fR"; }

std::string Upper(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return upper;
}

} // namespace

ManualPage::ManualPage(std::string_view name, int section, std::string_view about, std::string_view source,
                       std::string_view date) {
    m_text = ".nr HY 0\n" // before the title, which would have words broken
             ".TH " +
             Escaped(Upper(name)) + ' ' + std::to_string(section) + " \"" + std::string(date) + "\" \"" +
             Escaped(source) +
             "\" \"chartutil manual\"\n"
             ".ad l\n"; // lines are not stretched
    AddHeading("NAME");
    m_text += Escaped(name) + " \\- " + Escaped(about) + '\n';
}

void ManualPage::AddHeading(std::string_view heading) {
    m_text += ".SH " + Escaped(heading) + '\n';
    m_isUnderHeading = true;
}

void ManualPage::AddSubheading(std::string_view heading) {
    m_text += ".SS " + Escaped(heading) + '\n';
    m_isUnderHeading = true;
}

void ManualPage::AddProse(const Prose& prose) {
    for (const Block& block : prose) {
        if (block.kind == Block::Kind::ITEM) {
            AddItem(Bold(block.term), block.text);
            continue;
        }
        if (!m_isUnderHeading) m_text += ".PP\n";
        m_isUnderHeading = false;
        if (block.kind == Block::Kind::PARAGRAPH)
            m_text += Escaped(block.text) + '\n';
        else
            AddLines(block.text);
    }
}

void ManualPage::AddOption(const OptionText& option) {
    std::string term;
    for (const std::string& name : option.names)
        term += (term.empty() ? "" : ", ") + (option.isArgument ? Italic(name) : Bold(name));
    if (!option.value.empty()) term += ' ' + Italic(option.value);
    if (option.isArgument && option.isRepeated) term += "...";
    AddItem(term, option.about);
}

void ManualPage::AddUsage(std::string_view command, std::string_view rest) {
    if (!m_isUnderHeading) m_text += ".br\n";
    m_isUnderHeading = false;
    m_text += Bold(command) + ' ' + Italic(rest) + '\n';
}

void ManualPage::AddReferences(const std::vector<std::string>& pages) {
    std::string text;
    for (const std::string& page : pages) {
        const std::size_t bracket = page.find('(');
        text += (text.empty() ? "" : ", ") + Bold(page.substr(0, bracket)) + page.substr(bracket);
    }
    m_text += text + '\n';
}

void ManualPage::AddItem(std::string_view formattedTerm, std::string_view text) {
    m_text += ".TP\n" + std::string(formattedTerm) + '\n' + Escaped(text) + '\n';
    m_isUnderHeading = false;
}

void ManualPage::AddLines(std::string_view lines) {
    m_text += ".EX\n";
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        m_text += Escaped(lines.substr(0, end)) + '\n';
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    m_text += ".EE\n";
}
