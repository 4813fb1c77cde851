// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/settings/Seals.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

namespace {

// A line of a section as the user reads it.
struct ShownLine {
    std::string name, value, comment;
};

std::vector<ShownLine> LinesOf(const SettingsDocument& document, const Section& section) {
    std::vector<ShownLine> lines;
    for (int i = 0; i < section.NumKeys(); ++i) {
        const SectionKey& key = section[i];
        lines.push_back({document.Shown(key.GetName().String()), document.Shown(key.GetValue()),
                         document.Shown(key.GetComments())});
    }
    return lines;
}

std::size_t WidthOf(const std::vector<ShownLine>& lines, std::string ShownLine::*field) {
    std::size_t width = 0;
    for (const ShownLine& line : lines) width = std::max(width, TextWidth(line.*field));
    return width;
}

void PrintSection(const SettingsDocument& document, const Section& section) {
    const std::vector<ShownLine> lines = LinesOf(document, section);
    const std::size_t nameWidth = WidthOf(lines, &ShownLine::name);
    const std::size_t valueWidth = WidthOf(lines, &ShownLine::value);
    std::cout << Colored(Printable("[" + document.Shown(section.GetName().String()) + "]"), TextColor::BOLD)
              << '\n';
    for (const ShownLine& line : lines) {
        const bool hasComment = !line.comment.empty();
        if (!line.name.empty())
            std::cout << Printable(Padded(line.name, nameWidth)) << " = "
                      << Printable(Padded(line.value, hasComment ? valueWidth + 1 : 0));
        if (hasComment) std::cout << Colored(Printable(";" + line.comment), TextColor::DIM);
        std::cout << '\n';
    }
}

Json ToJson(const SettingsDocument& document, const SectionKey& key) {
    return {{"name", document.Shown(key.GetName().String())},
            {"value", document.Shown(key.GetValue())},
            {"comment", document.Shown(key.GetComments())}};
}

Json ToJson(const SettingsDocument& document, const Section& section) {
    Json keys = Json::array();
    for (int i = 0; i < section.NumKeys(); ++i) keys.push_back(ToJson(document, section[i]));
    return {{"name", document.Shown(section.GetName().String())},
            {"seal", NameOf(SealOf(section))},
            {"keys", std::move(keys)}};
}

// The keys that the user asks for; where there are none the text that is to stand for them, if there is one.
std::vector<SectionKey> AskedKeys(const SettingsDocument& document, const GetSetting& options) {
    const std::wstring section = document.Stored(options.section);
    const std::wstring name = document.Stored(options.key);
    std::vector<SectionKey> keys;
    if (!options.otherwise)
        keys = document.RequireKeys(section, name);
    else if (document.HasSection(section))
        keys = document.Keys(section, name);
    if (keys.empty()) {
        const std::wstring text = document.Stored(*options.otherwise);
        keys.emplace_back(name, text, options.wantsComment ? text : std::wstring());
    }
    if (!options.wantsAll) keys.erase(keys.begin() + 1, keys.end());
    return keys;
}

// As the file spells it; of one that is not there as the user does.
std::string SectionNameOf(const SettingsDocument& document, const GetSetting& options) {
    const std::wstring name = document.Stored(options.section);
    return document.HasSection(name) ? document.Shown(document.Lines().Read(name).GetName().String())
                                     : options.section.Utf8();
}

} // namespace

void Run(const ShowSettings& options) {
    const SettingsDocument document(options);
    std::vector<std::wstring> shown;
    if (!options.section.Empty())
        shown.push_back(document.RequireSection(document.Stored(options.section)).GetName());
    else
        shown = document.Sections();
    if (shown.empty()) PrintNote("chartutil: note: " + document.Name() + ": there is no section in it");

    if (options.json) {
        Json sections = Json::array();
        for (const std::wstring& name : shown)
            sections.push_back(ToJson(document, document.Lines().Read(name)));
        PrintJson({{"file", options.file.Utf8()}, {"sections", std::move(sections)}});
    } else {
        for (const std::wstring& name : shown) {
            StopIfInterrupted();
            if (&name != &shown.front()) std::cout << '\n';
            PrintSection(document, document.Lines().Read(name));
        }
    }
    document.HintAtEncoding();
}

void Run(const GetSetting& options) {
    const SettingsDocument document(options);
    const std::vector<SectionKey> keys = AskedKeys(document, options);
    Json found = Json::array();
    const std::string section = options.json ? SectionNameOf(document, options) : std::string();
    for (const SectionKey& key : keys) {
        if (options.json) {
            found.push_back({{"file", options.file.Utf8()}, {"section", section}});
            found.back().update(ToJson(document, key));
        } else {
            const std::wstring& text = options.wantsComment ? key.GetComments() : key.GetValue();
            std::cout << Printable(document.Shown(text)) << '\n';
        }
    }
    if (options.json) PrintJson(options.wantsAll ? found : found[0]);
    document.HintAtEncoding();
}
