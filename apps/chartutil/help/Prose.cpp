// SPDX-License-Identifier: MIT
#include "apps/chartutil/help/Prose.h"

#include "apps/chartutil/terminal/Columns.h"

#include <algorithm>
#include <span>
#include <utility>

namespace {

constexpr std::string_view kIndent = "  ";
constexpr std::string_view kTermEnd = " :: ";

bool IsExamplesHeading(const Block& block) {
    return block.kind == Block::Kind::PARAGRAPH && block.text.starts_with("Example") &&
           block.text.ends_with(':');
}

// How many bytes of a word go onto a line of so many characters: all, or those up to the last comma there.
std::size_t FittingPart(std::string_view word, std::size_t width) {
    if (TextWidth(word) <= width) return word.size();
    for (std::size_t end = word.size() - 1; end > 0; --end)
        if (word[end - 1] == ',' && TextWidth(word.substr(0, end)) <= width) return end;
    return word.size();
}

std::string Indented(std::string_view lines) {
    std::string text;
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        text.append(kIndent).append(lines.substr(0, end)) += '\n';
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return text;
}

std::string ListText(std::span<const Block> items) {
    std::vector<std::string> terms;
    terms.reserve(items.size());
    for (const Block& item : items) terms.push_back(item.term);
    const std::size_t column = ItemColumn(terms);
    std::string text;
    for (const Block& item : items) text += ItemText(item.term, item.text, column);
    return text;
}

} // namespace

Prose ReadProse(std::string_view text) {
    Prose prose;
    bool isNew = true; // the next line goes on with no block
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.find_first_not_of(' ') == std::string_view::npos) {
            isNew = true;
            continue;
        }
        Block block{Block::Kind::PARAGRAPH, {}, std::string(line)};
        if (line.starts_with(kIndent)) {
            line.remove_prefix(kIndent.size());
            const std::size_t termEnd = line.find(kTermEnd);
            block = termEnd == std::string_view::npos
                        ? Block{Block::Kind::LINES, {}, std::string(line)}
                        : Block{Block::Kind::ITEM, std::string(line.substr(0, termEnd)),
                                std::string(line.substr(termEnd + kTermEnd.size()))};
        }
        const bool goesOn = !isNew && prose.back().kind == block.kind && block.kind != Block::Kind::ITEM;
        if (goesOn)
            prose.back().text += (block.kind == Block::Kind::LINES ? '\n' : ' ') + block.text;
        else
            prose.push_back(std::move(block));
        isNew = false;
    }
    return prose;
}

ProseParts WithoutExamples(const Prose& prose) {
    ProseParts parts;
    bool isExample = false;
    for (const Block& block : prose) {
        const bool isHeading = IsExamplesHeading(block);
        isExample = isHeading || (isExample && block.kind == Block::Kind::LINES);
        if (!isHeading) (isExample ? parts.examples : parts.text).push_back(block);
    }
    return parts;
}

std::string Wrapped(std::string_view text, std::size_t indent) {
    std::string wrapped;
    std::size_t width = 0; // of the line that is being filled; 0 for none
    while (!text.empty()) {
        const std::size_t start = std::min(text.find_first_not_of(" \n"), text.size());
        std::size_t end = std::min(text.find_first_of(" \n", start), text.size());
        end = start + FittingPart(text.substr(start, end - start), kHelpWidth - indent);
        const std::string_view word = text.substr(start, end - start);
        text.remove_prefix(end);
        if (word.empty()) continue;
        const std::size_t wordWidth = TextWidth(word);
        if (width > 0 && width + 1 + wordWidth <= kHelpWidth) {
            wrapped += ' ';
            width += 1 + wordWidth;
        } else {
            if (width > 0) wrapped += '\n';
            wrapped.append(indent, ' ');
            width = indent + wordWidth;
        }
        wrapped += word;
    }
    return width > 0 ? wrapped + '\n' : wrapped;
}

std::size_t ItemColumn(const std::vector<std::string>& terms) {
    constexpr std::size_t kLongest = 24;
    std::size_t column = 0;
    for (const std::string& term : terms)
        if (TextWidth(term) <= kLongest) column = std::max(column, TextWidth(term));
    return column + 2 * kIndent.size();
}

std::string ItemText(std::string_view term, std::string_view text, std::size_t column) {
    std::string wrapped = Wrapped(text, column);
    const std::string first = std::string(kIndent) + std::string(term);
    const std::size_t width = TextWidth(first);
    if (wrapped.empty() || width + kIndent.size() > column) return first + '\n' + wrapped;
    return first + wrapped.substr(width); // the text's first line begins with as many blanks
}

std::string ProseText(const Prose& prose) {
    std::string text;
    bool isAnnounced = false; // by a paragraph such as "Examples:"
    for (auto block = prose.begin(); block != prose.end();) {
        const auto isNoItem = [](const Block& other) { return other.kind != Block::Kind::ITEM; };
        const auto end = isNoItem(*block) ? block + 1 : std::find_if(block, prose.end(), isNoItem);
        const bool isParagraph = block->kind == Block::Kind::PARAGRAPH;
        if (!text.empty() && (isParagraph || !isAnnounced)) text += '\n';
        if (isParagraph)
            text += Wrapped(block->text);
        else
            text += block->kind == Block::Kind::ITEM ? ListText({block, end}) : Indented(block->text);
        isAnnounced = isParagraph && block->text.ends_with(':');
        block = end;
    }
    return text;
}
