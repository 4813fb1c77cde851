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
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/FormatString.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <concepts>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

// --- what is said of a record ---

struct Field {
    std::string name;
    std::string given; // as it stands in the file or the line
    bool isGiven = false;
    std::string value; // what the record makes of it
    std::string note;
};

struct Record {
    std::string type;
    std::string prefix;
    std::string line; // its one-line form, where it has one
    std::vector<Field> fields;
};

bool EndsWith(const std::wstring& text, std::wstring_view end) {
    return text.size() >= end.size() &&
           icompareW(std::wstring_view(text).substr(text.size() - end.size()), end);
}

// What a number in a field stands for, where that is not plain to see.
std::string NoteOn(const std::wstring& key, const std::wstring& value) {
    constexpr const char* kJustifications[] = {"bottom left",   "bottom centre",   "bottom right",
                                               "middle right",  "top right",       "top centre",
                                               "top left",      "middle left",     "middle centre",
                                               "baseline left", "baseline centre", "baseline right"};
    constexpr const char* kStyles[] = {
        "regular",   "bold",           "italic",           "bold italic",
        "underline", "bold underline", "italic underline", "bold italic underline"};
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
    if (EndsWith(key, L"TextStyle")) return named(kStyles);
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

// --- show ---

template <typename Style> void ReadStyle(Style& style, const std::wstring& prefix, const Section& section) {
    if constexpr (requires { style.Read(prefix, section); }) {
        if (!prefix.empty()) {
            style.Read(prefix, section);
            return;
        }
    }
    style.Read(section);
}

template <typename Style> void WriteStyle(const Style& style, const std::wstring& prefix, Section& section) {
    if constexpr (requires { style.Write(prefix, section); }) {
        if (!prefix.empty()) {
            style.Write(prefix, section);
            return;
        }
    }
    style.Write(section);
}

// Adds what a record of this type says in the section. A section is taken to have one when it has at least
// half of its keys: files of old lack some, and a few keys are shared by several records.
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

// --- line ---

struct LineForm {
    const char* name; // for --as
    const char* type;
    std::vector<std::wstring> items;
};

const std::vector<LineForm>& LineForms() {
    static const std::vector<LineForm> forms = {
        {"text",
         "TextInfo",
         {L"Font", L"Size", L"Style", L"Justification", L"Color", L"Rotation", L"RectWidth", L"MultiLine",
          L"Annotation", L"TrueColor"}},
        {"depth",
         "DepthLabelInfo",
         {L"Font", L"Size", L"Style", L"Justification", L"Color", L"Rotation", L"RectWidth", L"MultiLine",
          L"Annotation", L"TrueColor", L"Precision", L"Presentation", L"Placement", L"UseTextColor",
          L"AutoTextRotation", L"UnderlineDryingHeights", L"NoDecimalZeros"}},
        {"line", "LineInfo", {L"LineWidth", L"LineColor", L"LineStyle", L"LineTrueColor", L"Enable"}},
        {"dxf", "DXFInfo", {L"DXFLineWidth", L"DXFLineColor", L"DXFColorMode", L"DXFLineTrueColor"}},
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

Record RecordOfLine(const LineForm& form, const std::wstring& line) {
    const FormatString given(line, L',', 64);
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

// --- output ---

Json ToJson(const Record& record) {
    Json fields = Json::array();
    for (const Field& field : record.fields) {
        Json entry = {{"name", field.name}, {"value", field.value}};
        entry["given"] = field.isGiven ? Json(field.given) : Json();
        if (!field.note.empty()) entry["note"] = field.note;
        fields.push_back(entry);
    }
    Json document = {{"record", record.type}};
    if (!record.prefix.empty()) document["prefix"] = record.prefix;
    document["fields"] = fields;
    if (!record.line.empty()) document["line"] = record.line;
    return document;
}

void Print(const Record& record) {
    std::cout << Colored(record.type, "1");
    if (!record.prefix.empty()) std::cout << " with the prefix " << Printable(record.prefix);
    std::cout << '\n';
    std::size_t nameWidth = 0;
    std::size_t valueWidth = 0;
    for (const Field& field : record.fields) {
        nameWidth = std::max(nameWidth, field.name.size());
        valueWidth = std::max(valueWidth, std::min<std::size_t>(Printable(field.value).size(), 30));
    }
    const auto padded = [](const std::string& text, std::size_t width) {
        return text + std::string(text.size() < width ? width - text.size() : 0, ' ');
    };
    for (const Field& field : record.fields) {
        std::string remarks = field.note;
        if (!field.isGiven)
            remarks += std::string(remarks.empty() ? "" : ", ") + "not given";
        else if (field.given != field.value)
            remarks += (remarks.empty() ? "given as \"" : ", given as \"") + Printable(field.given) + '"';
        const std::string value = Printable(field.value);
        std::cout << "  " << padded(field.name, nameWidth) << "  ";
        std::cout << (remarks.empty() ? value : padded(value, valueWidth) + "  " + remarks) << '\n';
    }
    if (!record.line.empty()) std::cout << "  in one line: " << Printable(record.line) << '\n';
}

void Show(const std::string& path, const std::string& name, bool json) {
    IniFile file;
    if (const ErrorString opened = file.Open(FromUtf8(path)); !opened)
        throw CommandError(ExitCode::IO_ERROR, path + ": " + ToUtf8(opened.Text()));
    if (!file.HasSection(FromUtf8(name)))
        throw CommandError(ExitCode::CHECK_FAILED, path + ": has no section [" + name +
                                                       "]; 'chartutil settings show' lists its sections");
    const std::vector<Record> records = RecordsOf(std::as_const(file)[FromUtf8(name)]);
    if (json) {
        Json list = Json::array();
        for (const Record& record : records) list.push_back(ToJson(record));
        PrintJson({{"file", path}, {"section", name}, {"records", list}});
    } else {
        for (const Record& record : records) Print(record);
    }
    if (records.empty())
        throw CommandError(ExitCode::CHECK_FAILED,
                           path + ": the section [" + name + "] has at least half of the keys of no record");
}

void Line(const std::string& text, const std::string& as, bool json) {
    const std::wstring line = FromUtf8(text);
    const LineForm* form = &GuessForm(FormatString(line, L',', 64));
    for (const LineForm& candidate : LineForms())
        if (candidate.name == as) form = &candidate;
    const Record record = RecordOfLine(*form, line);
    if (json)
        PrintJson(ToJson(record));
    else
        Print(record);
}

} // namespace

void AddStyleCommand(CLI::App& program) {
    CLI::App* style =
        program.add_subcommand("style", "Presentation records in settings files and one-line forms");
    style->require_subcommand(1);
    struct Options {
        std::string file, section, line, as;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();

    CLI::App* show = style->add_subcommand("show", "What each record in a section of a settings file says");
    show->add_option("FILE", options->file, "The settings file")->required();
    show->add_option("SECTION", options->section, "The section's name, in any letter case")->required();
    show->add_flag("--json", options->json, "Print a JSON document");
    show->footer(
        "A record is shown when the section has at least half of its keys, also behind a prefix. The exit\n"
        "code is 1 when there is none.\n\nExamples:\n  chartutil style show layout.ini Title\n"
        "  chartutil style show layout.ini \"Depth lines\" --json");
    show->callback([options] { Show(options->file, options->section, options->json); });

    CLI::App* line = style->add_subcommand("line", "Explain the one-line form of a record");
    line->add_option("LINE", options->line, "The line; put it in quotes")->required();
    line->add_option("--as", options->as, "What it is: text, depth, line or dxf. Without this it is guessed")
        ->check(CLI::IsMember({"text", "depth", "line", "dxf"}));
    line->add_flag("--json", options->json, "Print a JSON document");
    line->footer(
        "Every line is a record: items that are missing or cannot be read give the defaults.\n\nExamples:\n"
        "  chartutil style line 'Arial,2.5,1,8,10,0,0,0,0,255'\n"
        "  chartutil style line '0.5,1,Dashed'\n  chartutil style line --as dxf '2,1,3'");
    line->callback([options] { Line(options->line, options->as, options->json); });
}
