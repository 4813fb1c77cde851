// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/style/Records.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/presentation/BiasInfo.h"
#include "UtilityDLL/presentation/ContourInfo.h"
#include "UtilityDLL/presentation/DXFInfo.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/GeoGridInfo.h"
#include "UtilityDLL/presentation/GridInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "UtilityDLL/presentation/MapInfo.h"
#include "UtilityDLL/presentation/PanelInfo.h"
#include "UtilityDLL/presentation/PaperGrid.h"
#include "UtilityDLL/presentation/SunIlluminationInfo.h"
#include "VelmBase/FormatString.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/style/Names.h"
#include "apps/chartutil/terminal/HexText.h"

#include <algorithm>
#include <concepts>
#include <iterator>
#include <set>

namespace {

bool EndsWith(const std::wstring& text, std::wstring_view end) {
    return text.size() >= end.size() &&
           icompareW(std::wstring_view(text).substr(text.size() - end.size()), end);
}

// What a number in a field stands for, where that is not plain to see.
std::string NoteOn(const std::wstring& key, const std::wstring& value) {
    const auto named = [&](const auto& names) {
        const auto number = static_cast<std::size_t>(atoi(value));
        return number < std::size(names) ? std::string(names[number]) : std::string();
    };
    if (icompareW(key, L"UseTextColor")) return {}; // a flag
    if (EndsWith(key, L"TrueColor")) {
        unsigned long reference = 0;
        SectionKey number;
        number << value;
        number >> reference;
        return HexText(RGBColor(reference));
    }
    if (EndsWith(key, L"Color")) return "palette " + HexText(RGBColor(DXFColor(atoi(value))));
    if (EndsWith(key, L"TextJustification")) return named(kJustifications);
    if (EndsWith(key, L"TextStyle")) return named(kTextStyles);
    return {};
}

// Whether the numbers of this key have the names of text styles; panels have justifications of their own.
std::wstring NoteKey(const std::string& type, const std::wstring& key) {
    const bool isText = type == "TextInfo" || type == "DepthLabelInfo";
    return isText && (EndsWith(key, L"Style") || EndsWith(key, L"Justification")) ? L"Text" + key : key;
}

struct BelowNoCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const { return SmallerW(a, b); }
};

// The key that a field is read from.
const SectionKey& GivenKey(const Section& section, const std::wstring& key) {
    const SectionKey& given = section[key];
    const bool hasOlderName = icompareW(key, L"ContourLabelSpacing");
    return hasOlderName && given.GetValue().empty() ? section[L"LabelSpacing"] : given;
}

template <typename Style>
concept HasOneLineForm = requires(Style style) {
    style.ToString();
};

// --- records of a section ---

template <typename Style> void ReadStyle(Style& style, const std::wstring& prefix, const Section& section) {
    if constexpr (requires { style.Read(prefix, section); }) {
        if (!prefix.empty()) {
            (void)style.Read(prefix, section);
            return;
        }
    }
    (void)style.Read(section);
}

template <typename Style> void WriteStyle(const Style& style, const std::wstring& prefix, Section& section) {
    if constexpr (requires { style.Write(prefix, section); }) {
        if (!prefix.empty()) {
            (void)style.Write(prefix, section);
            return;
        }
    }
    (void)style.Write(section);
}

// Adds what a record of this type says in the section.
template <typename Style>
void AddIfThere(std::vector<Record>& records, const char* type, const Section& section,
                const std::wstring& prefix = {}) {
    Style style;
    ReadStyle(style, prefix, section);
    Section says;
    WriteStyle(style, prefix, says);

    Record record{type, ToUtf8(prefix), {}, {}};
    int numGiven = 0;
    for (int i = 0; i < says.NumKeys(); ++i) {
        const std::wstring& key = says[i].GetName().String();
        const SectionKey& given = GivenKey(section, key);
        numGiven += given.IsValid();
        record.fields.push_back({ToUtf8(key), ToUtf8(given.GetValue()), given.IsValid(),
                                 ToUtf8(says[i].GetValue()), NoteOn(NoteKey(type, key), says[i].GetValue())});
    }
    if (numGiven == 0 || 2 * numGiven < says.NumKeys()) return;
    if constexpr (HasOneLineForm<Style>) record.line = ToUtf8(style.ToString());
    records.push_back(std::move(record));
}

// --- records in one line ---

struct LineForm {
    const char* name; // for --as
    const char* type;
    std::vector<std::wstring> items;
};

const std::vector<LineForm>& LineForms() {
    static const std::vector<LineForm> forms = {
        {"text", "TextInfo", TextInfo::OneLineItems()},
        {"depth", "DepthLabelInfo", DepthLabelInfo::OneLineItems()},
        {"line", "LineInfo", LineInfo::OneLineItems()},
        {"dxf", "DXFInfo", DXFInfo::OneLineItems()},
    };
    return forms;
}

bool IsNumber(const std::wstring& text) {
    double value = 0;
    return NumberText::Extract(text, value);
}

// The form that a line most likely has: nothing in it says so.
const LineForm& GuessForm(const FormatString& given) {
    const int count = given.NumItems();
    const auto names = LineInfo::STYLEDESCRIPTIONS;
    const bool hasStyle = count >= 3 && std::any_of(names, names + 4, [&](const wchar_t* name) {
                              return icompareW(given[2], name);
                          });
    if (hasStyle) return LineForms()[2];
    if ((count == 3 || count == 4) && IsNumber(given[0]) && IsNumber(given[1])) return LineForms()[3];
    return LineForms()[count > 10 ? 1 : 0];
}

std::wstring Canonical(const LineForm& form, const std::wstring& line) {
    const auto through = [&line](auto style) {
        style.FromString(line);
        return style.ToString();
    };
    const std::string name = form.name;
    if (name == "text") return through(TextInfo());
    if (name == "depth") return through(DepthLabelInfo());
    if (name == "line") return through(LineInfo());
    return through(DXFInfo());
}

const LineForm& FormOf(const FormatString& given, std::string_view as) {
    for (const LineForm& form : LineForms())
        if (form.name == as) return form;
    return GuessForm(given);
}

} // namespace

std::vector<Record> RecordsOf(const Section& section) {
    std::vector<Record> records;
    AddIfThere<TextInfo>(records, "TextInfo", section);
    AddIfThere<LineInfo>(records, "LineInfo", section);
    AddIfThere<DXFInfo>(records, "DXFInfo", section);
    AddIfThere<GridInfo>(records, "GridInfo", section);
    AddIfThere<PaperGrid>(records, "PaperGrid", section);
    AddIfThere<GeoGridInfo>(records, "GeoGridInfo", section);
    AddIfThere<ContourInfo>(records, "ContourInfo", section);
    AddIfThere<PanelInfo>(records, "PanelInfo", section);
    AddIfThere<SunIlluminationInfo>(records, "SunIlluminationInfo", section);
    AddIfThere<BiasInfo>(records, "BiasInfo", section);
    AddIfThere<CMapInfo>(records, "CMapInfo", section);

    std::set<std::wstring, BelowNoCase> prefixes;
    for (int i = 0; i < section.NumKeys(); ++i) {
        const std::wstring& key = section[i].GetName().String();
        const std::size_t point = key.rfind(L'.');
        if (point != std::wstring::npos && point > 0) prefixes.insert(key.substr(0, point));
    }
    for (const std::wstring& prefix : prefixes) {
        AddIfThere<TextInfo>(records, "TextInfo", section, prefix);
        AddIfThere<PanelInfo>(records, "PanelInfo", section, prefix);
        AddIfThere<SunIlluminationInfo>(records, "SunIlluminationInfo", section, prefix);
        AddIfThere<BiasInfo>(records, "BiasInfo", section, prefix);
    }
    return records;
}

Record RecordOfLine(const std::wstring& line, std::string_view as) {
    const FormatString given(line, L',', 64);
    const LineForm& form = FormOf(given, as);
    const std::wstring canonical = Canonical(form, line);
    const FormatString values(canonical, L',');
    // A depth label of old has no true colour: the items from there on stand one place earlier.
    const bool isOld = std::string(form.name) == "depth" && given.NumItems() == 14;
    constexpr std::size_t kTrueColor = 9;

    Record record{form.type, {}, ToUtf8(canonical), {}};
    for (std::size_t i = 0; i < form.items.size(); ++i) {
        const std::wstring value = values[static_cast<int>(i)];
        const bool isLeftOut = isOld && i == kTrueColor;
        const int position = static_cast<int>(i) - (isOld && i > kTrueColor ? 1 : 0);
        const bool isGiven = !isLeftOut && position < given.NumItems();
        record.fields.push_back({ToUtf8(form.items[i]), isGiven ? ToUtf8(given[position]) : std::string(),
                                 isGiven, ToUtf8(value), NoteOn(NoteKey(form.type, form.items[i]), value)});
    }
    return record;
}
