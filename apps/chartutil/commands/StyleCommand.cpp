#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/style/Records.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

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
    std::cout << Colored(record.type, TextColor::BOLD);
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
    const Record record = RecordOfLine(FromUtf8(text), as);
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
