// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/TitleText.h"

#include "UtilityDLL/keywords/Placeholders.h"
#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/files/Files.h"

#include <cmath>
#include <optional>
#include <set>

namespace {

void AddDefault(CKeywords& keywords, const wchar_t* name, const std::wstring& value) {
    if (value.empty() || keywords.GetKeywordConst(name)) return;
    CKeyword keyword;
    keyword.name = name;
    keyword.value = value;
    keywords.AddKeyword(&keyword);
}

// Systems are named as "NAD83 / UTM zone 16N": the datum, and the projection if there is one.
void AddSystem(CKeywords& keywords, const std::wstring& name) {
    AddDefault(keywords, L"coordinate system", name);
    const std::size_t slash = name.find(L" / ");
    AddDefault(keywords, L"horizontal datum", name.substr(0, slash));
    if (slash != std::wstring::npos) AddDefault(keywords, L"projection", name.substr(slash + 3));
}

class Filler {
public:
    Filler(const Project& project, const CKeywords& keywords) : m_project(project), m_keywords(keywords) {}

    // Nothing where the line is to be left out.
    std::optional<std::wstring> Line(const std::wstring& text, std::size_t number) {
        std::wstring filled;
        std::size_t done = 0;
        bool isResolved = false, isUnresolved = false;
        for (Placeholders walk(text); walk.Next();) {
            const std::wstring name(walk.Name());
            const CKeyword* const keyword = m_keywords.GetKeywordConst(name);
            filled.append(text, done, walk.Begin() - done);
            done = walk.End();
            (keyword ? isResolved : isUnresolved) = true;
            if (keyword)
                filled += keyword->value;
            else
                Report(name, number);
        }
        if (isUnresolved && !isResolved) return std::nullopt;
        return filled.append(text, done);
    }

private:
    void Report(const std::wstring& name, std::size_t line) {
        if (!m_reported.insert(name).second) return;
        const std::string place =
            m_project.titleFile.empty() ? "" : m_project.titleFile + ":" + std::to_string(line) + ": ";
        PlotErrorReporter::Get()[L"Title Block"].emplace_back(FromUtf8(place) + L"there is no value for %" +
                                                              name + L"%; write it into [Keywords]");
    }

    const Project& m_project;
    const CKeywords& m_keywords;
    std::set<std::wstring> m_reported;
};

} // namespace

std::wstring ScaleText(const MapFrame& frame) {
    std::wstring digits = std::to_wstring(std::llround(frame.Scale()));
    for (std::size_t at = digits.size(); at > 3;) digits.insert(at -= 3, 1, L' ');
    return L"1 : " + digits;
}

std::wstring TitleText(const Project& project, const MapFrame& frame, const Scene& scene) {
    CKeywords keywords = project.keywords;
    AddDefault(keywords, L"sounding count", std::to_wstring(scene.soundings.size()));
    if (!scene.system || !scene.system->IsGeographic()) AddDefault(keywords, L"scale", ScaleText(frame));
    if (scene.system) AddSystem(keywords, FromUtf8(scene.system->Name()));
    AddDefault(keywords, L"plot project", FromUtf8(FileNameOf(project.folder)));
    AddDefault(keywords, L"plot name", project.title);

    const std::wstring& text = project.titleText;
    Filler filler(project, keywords);
    std::wstring filled;
    std::size_t number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        std::wstring line = text.substr(begin, end - begin);
        begin = end + 1;
        if (!line.empty() && line.back() == L'\r') line.pop_back();
        if (const std::optional<std::wstring> content = filler.Line(line, ++number))
            filled += *content + L'\n';
    }
    return filled;
}
