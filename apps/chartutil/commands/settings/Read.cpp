#include "apps/chartutil/commands/settings/Seals.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Json.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace {

void PrintSection(const Section& section) {
    int nameWidth = 0;
    int valueWidth = 0;
    section.GetWriteOffsets(nameWidth, valueWidth);
    const auto column = [](const std::wstring& text, int width) {
        return Printable(Padded(ToUtf8(text), static_cast<std::size_t>(width)));
    };
    std::cout << Colored(Printable(InBrackets(section.GetName())), TextColor::BOLD) << '\n';
    for (int i = 0; i < section.NumKeys(); ++i) {
        const SectionKey& key = section[i];
        const bool hasComment = !key.GetComments().empty();
        if (key.IsValid())
            std::cout << column(key.GetName(), nameWidth) << " = "
                      << column(key.GetValue(), hasComment ? valueWidth + 1 : 0);
        if (hasComment) std::cout << Colored(Printable(";" + ToUtf8(key.GetComments())), TextColor::DIM);
        std::cout << '\n';
    }
}

Json ToJson(const SectionKey& key) {
    return {{"name", ToUtf8(key.GetName().String())},
            {"value", ToUtf8(key.GetValue())},
            {"comment", ToUtf8(key.GetComments())}};
}

Json ToJson(const Section& section) {
    Json keys = Json::array();
    for (int i = 0; i < section.NumKeys(); ++i) keys.push_back(ToJson(section[i]));
    return {{"name", ToUtf8(section.GetName().String())},
            {"seal", NameOf(SealOf(section))},
            {"keys", std::move(keys)}};
}

} // namespace

void Run(const ShowSettings& options) {
    IniFile file = OpenSettings(options.file);
    std::vector<const Section*> shown;
    if (!options.section.Empty())
        shown.push_back(&RequireSection(file, options.file, options.section));
    else
        for (int i = 0; i < file.NumSections(); ++i) shown.push_back(&file[i]);

    if (options.json) {
        Json sections = Json::array();
        for (const Section* section : shown) sections.push_back(ToJson(*section));
        PrintJson({{"file", options.file.Utf8()}, {"sections", std::move(sections)}});
        return;
    }
    for (const Section* section : shown) {
        if (section != shown.front()) std::cout << '\n';
        PrintSection(*section);
    }
}

void Run(const GetSetting& options) {
    IniFile file = OpenSettings(options.file);
    Section& section = RequireSection(file, options.file, options.section);
    const SectionKey& key = RequireKey(section, options.file, options.key);
    if (options.json) {
        Json document = {{"file", options.file.Utf8()}, {"section", ToUtf8(section.GetName().String())}};
        document.update(ToJson(key));
        PrintJson(document);
    } else {
        std::cout << Printable(ToUtf8(options.wantsComment ? key.GetComments() : key.GetValue())) << '\n';
    }
}
