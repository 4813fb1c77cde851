// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/OutputOptions.h"
#include "apps/chartutil/commands/style/LineSample.h"
#include "apps/chartutil/commands/style/Records.h"
#include "apps/chartutil/drawing/PictureFile.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace {

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

// What a reader has to know beside the value: what it stands for, and where it came from.
std::string RemarksOn(const Field& field) {
    std::string remarks = field.note;
    const std::string comma = remarks.empty() ? "" : ", ";
    if (!field.isGiven)
        remarks += comma + "not given";
    else if (field.given != field.value)
        remarks += comma + "given as \"" + Printable(field.given) + '"';
    return remarks;
}

void Print(const Record& record) {
    std::cout << Colored(record.type, TextColor::BOLD);
    if (!record.prefix.empty()) std::cout << " with the prefix " << Printable(record.prefix);
    std::cout << '\n';
    constexpr std::size_t kWidestValue = 30; // a longer one moves the rest of its line only
    std::size_t nameWidth = 0;
    std::size_t valueWidth = 0;
    for (const Field& field : record.fields) {
        nameWidth = std::max(nameWidth, TextWidth(Printable(field.name)));
        valueWidth = std::max(valueWidth, std::min(TextWidth(Printable(field.value)), kWidestValue));
    }
    for (const Field& field : record.fields) {
        const std::string value = Printable(field.value);
        const std::string remarks = RemarksOn(field);
        std::cout << "  " << Padded(Printable(field.name), nameWidth) << "  ";
        std::cout << (remarks.empty() ? value : Padded(value, valueWidth) + "  " + remarks) << '\n';
    }
    if (!record.line.empty()) std::cout << "  in one line: " << Printable(record.line) << '\n';
}

// --- show ---

struct ShowOptions {
    UserText file, section;
    bool json = false;
};

void Run(const ShowOptions& options) {
    IniFile file = OpenSettings(options.file);
    const std::vector<Record> records = RecordsOf(RequireSection(file, options.file, options.section));
    if (options.json) {
        Json list = Json::array();
        for (const Record& record : records) list.push_back(ToJson(record));
        PrintJson({{"file", options.file.Utf8()},
                   {"section", options.section.Utf8()},
                   {"records", std::move(list)}});
    } else {
        for (const Record& record : records) Print(record);
    }
    if (records.empty())
        throw CommandError(ExitCode::CHECK_FAILED, InputName(options.file) + ": the section [" +
                                                       options.section.Utf8() +
                                                       "] has at least half of the keys of no record");
}

// --- line ---

struct LineOptions {
    UserText line;
    std::string as;
    PictureTarget picture;
    bool json = false;

    bool IsLong() const { return picture.IsAsked(); }
};

template <typename Style> Surface SampleOf(const UserText& line) {
    Style style;
    style.FromString(line.Wide());
    return LineSample(style);
}

Surface SampleOf(const Record& record, const UserText& line) {
    if (record.type == "LineInfo") return SampleOf<LineInfo>(line);
    if (record.type == "DXFInfo") return SampleOf<DXFInfo>(line);
    const std::string command = record.type == "TextInfo" ? "text measure TEXT" : "text sounding DEPTH";
    throw CommandError(ExitCode::WRONG_USE, "this is the style of a text; 'chartutil " + command +
                                                " --style LINE --picture FILE' draws one in it");
}

void Run(const LineOptions& options) {
    const Record record = RecordOfLine(options.line.Wide(), options.as);
    if (options.picture.IsAsked()) {
        RequirePicture(options.picture);
        SavePicture(SampleOf(record, options.line), options.picture);
    }
    if (options.json)
        PrintJson(ToJson(record));
    else
        Print(record);
}

// --- the command line ---

void AddJson(CLI::App& command, bool& json) { command.add_flag("--json", json, "Print a JSON document"); }

void AddShow(CLI::App& style) {
    const auto [command, options] = AddCommand<ShowOptions>(
        style, "show", "What each record in a section of a settings file says", Run,
        R"(A record is shown when the section has at least half of its keys, also behind a prefix. The exit
code is 1 when there is none.

Examples:
  chartutil style show layout.ini Title
  chartutil style show layout.ini "Depth lines" --json)");
    command.add_option("FILE", options.file, "The settings file; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_option("SECTION", options.section, "The section's name, in any letter case")->required();
    AddJson(command, options.json);
}

void AddLine(CLI::App& style) {
    const auto [command, options] = AddCommand<LineOptions>(
        style, "line", "Explain the one-line form of a record", Run,
        R"(Every line is a record: items that are missing or cannot be read give the defaults.

Examples:
  chartutil style line 'Arial,2.5,1,8,10,0,0,0,0,255'
  chartutil style line '0.5,5,Dashed,16711680,1' --picture dashed.svg
  chartutil style line --as dxf '2,1,3')");
    command.add_option("LINE", options.line, "The line; put it in quotes")->required();
    command
        .add_option("--as", options.as, "What it is: text, depth, line or dxf. Without this it is guessed")
        ->type_name("KIND")
        ->check(CLI::IsMember({"text", "depth", "line", "dxf"}));
    AddPicture(command, "--picture", options.picture, "Also draw lines in the style into this file");
    AddJson(command, options.json);
}

} // namespace

void AddStyleCommand(CLI::App& program) {
    CLI::App& style =
        *program.add_subcommand("style", "Presentation records in settings files and one-line forms");
    style.require_subcommand(1);
    AddShow(style);
    AddLine(style);
}
