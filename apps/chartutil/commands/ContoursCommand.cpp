// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "VelmBase/NumberText.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/OutputOptions.h"
#include "apps/chartutil/commands/contours/ContourFile.h"
#include "apps/chartutil/commands/contours/ContourLegend.h"
#include "apps/chartutil/commands/contours/LineTypes.h"
#include "apps/chartutil/files/ColorTableFile.h"
#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/HexText.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace {

using Info = ContourDefinitionList::ContourDefInfo;

// The options of all commands on contour files.
struct Options {
    UserText file;
    PictureTarget picture; // its --force is that of the file as well
    bool json = false;

    bool IsLong() const { return picture.IsAsked() || IsMuchWork(file); }
};

// --- the table, the document and the legend ---

void PrintTable(const ContourDefinitionList& list) {
    std::size_t width = 5;
    for (int i = 0; i < list.NumContours(); ++i) width = std::max(width, GeneralText(list[i].level).size());
    std::cout << Colored(Padded("level", width, Align::RIGHT) + "  colour   DXF  line          width  label",
                         TextColor::BOLD)
              << '\n';
    for (int i = 0; i < list.NumContours(); ++i) {
        const Info& info = list[i];
        const RGBColor color(info.trueColor);
        std::cout << Padded(GeneralText(info.level), width, Align::RIGHT) << "  "
                  << OnColor(HexText(color), color) << "  "
                  << Padded(std::to_string(DXFColor(color).Index()), 3, Align::RIGHT) << "  "
                  << Padded(LineTypeName(info.lineType), 12)
                  << Padded(GeneralText(static_cast<double>(info.lineWidth), 6), 7, Align::RIGHT)
                  << (info.annotate ? "  yes" : "") << '\n';
    }
}

Json ToJson(const Info& info) {
    const RGBColor color(info.trueColor);
    return {{"level", info.level},
            {"color", HexText(color)},
            {"trueColor", info.trueColor},
            {"dxf", DXFColor(color).Index()},
            {"lineType", LineTypeName(info.lineType)},
            {"lineWidth", RoundedToDigits(static_cast<double>(info.lineWidth), 7)},
            {"annotate", info.annotate}};
}

void SaveLegend(const ContourDefinitionList& list, const Options& options) {
    if (options.picture.IsAsked())
        SavePicture(ContourLegend(list, FileNameOf(InputName(options.file))), options.picture);
}

void Show(const ContourDefinitionList& list, const Options& options) {
    SaveLegend(list, options);
    if (!options.json) return PrintTable(list);
    Json levels = Json::array();
    for (int i = 0; i < list.NumContours(); ++i) levels.push_back(ToJson(list[i]));
    PrintJson({{"file", options.file.Utf8()}, {"contours", std::move(levels)}});
}

// Before the work is done.
void CheckPicture(const Options& options) {
    if (options.picture.IsAsked()) RequirePicture(options.picture);
}

void CheckTargets(const Options& options) {
    RequireReplaceable(options.file, FileKind::CONTOURS, options.picture.isForced);
    CheckPicture(options);
}

void SaveAndShow(const ContourDefinitionList& list, const Options& options) {
    WriteFile(options.file, [&](const FILES::ContentSink& sink) { return list.Write(sink); });
    Show(list, options);
}

// --- list ---

struct ListOptions : Options {};

void Run(const ListOptions& options) {
    CheckPicture(options);
    Show(OpenContours(options.file), options);
}

// --- range ---

struct RangeOptions : Options {
    double from = 0, to = 0, step = 0;
    std::string color = "#000000";
    std::string lineType = "continuous";
    float width = 0;
    int labelEvery = 0;
};

ContourDefinitionList LevelsOf(const RangeOptions& options) {
    const auto refuse = [](const std::string& why) { throw CommandError(ExitCode::WRONG_USE, why); };
    ContourDefinitionList list;
    if (!(options.from < options.to)) refuse("--from has to be below --to");
    if (!(options.step > 0)) refuse("--step has to be above 0");
    if (!list.Generate(options.from, options.to, options.step))
        refuse("that range has more than " + std::to_string(+ContourDefinitionList::MAX_GENERATED) +
               " levels, or levels that the step does not change; take a larger --step");
    for (int i = 1; i < list.NumContours(); ++i)
        if (NumberText::FromFixed(list[i - 1].level) == NumberText::FromFixed(list[i].level))
            refuse("a file keeps six digits after the point, by which not all of these levels differ; take a "
                   "larger --step");
    if (list.NumContours() == 0) refuse("there is no multiple of --step between --from and --to");
    return list;
}

void Run(const RangeOptions& options) {
    CheckTargets(options);
    const RGBColor color = RequireColor(options.color);
    const auto type = std::find(kLineTypes.begin(), kLineTypes.end(), options.lineType) - kLineTypes.begin();
    if (!(options.width <= 1e6f)) throw CommandError(ExitCode::WRONG_USE, "--width has to be 0 to 1000000");
    ContourDefinitionList list = LevelsOf(options);
    for (int i = 0; i < list.NumContours(); ++i) {
        Info info = list[i];
        info.lineWidth = options.width;
        info.lineType = static_cast<int>(type);
        info.trueColor = static_cast<std::uint32_t>(static_cast<unsigned long>(color));
        info.annotate = options.labelEvery > 0 &&
                        std::fmod(std::round(info.level / options.step), options.labelEvery) == 0;
        list.Set(i, info);
    }
    SaveAndShow(list, options);
}

// --- from-table ---

struct FromTableOptions : Options {
    UserText table;
    bool invert = false;
};

void Run(const FromTableOptions& options) {
    CheckTargets(options);
    bool complete = true;
    const DXFColorTable table = OpenColorTable(options.table, complete);
    RequireComplete(complete, options.table);
    ContourDefinitionList list;
    if (!list.Generate(table, options.invert))
        throw CommandError(ExitCode::CHECK_FAILED,
                           options.table.Utf8() + ": the table has no entries, so there are no levels");
    SaveAndShow(list, options);
}

// --- check ---

struct CheckOptions : Options {};

void Run(const CheckOptions& options) {
    CheckPicture(options);
    std::vector<std::wstring> remarks;
    const ContourDefinitionList list = ReadContours(options.file, &remarks);
    SaveLegend(list, options);
    std::vector<std::string> findings;
    findings.reserve(remarks.size());
    for (const std::wstring& remark : remarks) findings.push_back(ToUtf8(remark));
    const std::string path = InputName(options.file);
    if (options.json) {
        PrintJson({{"file", options.file.Utf8()}, {"contours", list.NumContours()}, {"findings", findings}});
    } else {
        for (const std::string& finding : findings)
            std::cout << Printable(path) << ": " << Printable(finding) << '\n';
        if (findings.empty())
            std::cout << Printable(path) << ": " << list.NumContours() << " contours, nothing odd\n";
    }
    if (!findings.empty()) throw CommandExit{ExitCode::CHECK_FAILED};
}

// --- the command line ---

template <typename CommandOptions>
NewCommand<CommandOptions> Add(CLI::App& contours, const char* name, const char* what, const char* fileText,
                               const char* footer) {
    const auto added = AddCommand<CommandOptions>(contours, name, what, Run, footer);
    added.app.add_option("FILE", added.options.file, fileText)->type_name(kFileValue)->required();
    AddPicture(added.app, "--picture", added.options.picture, "Also draw a legend into this file");
    added.app.add_flag("--json", added.options.json, "Print a JSON document");
    return added;
}

void AddRange(CLI::App& contours) {
    const auto [command, options] = Add<RangeOptions>(
        contours, "range", "Make a file with the multiples of a step",
        "The contour definition file to write; '-' is standard output",
        R"(Each level is the one before plus the step, so rounding decides whether the highest is reached:
0 to 0.3 by 0.1 ends at 0.2.

Examples:
  chartutil contours range depths.cdf --from 0 --to 20 --step 2
  chartutil contours range depths.cdf --from -5 --to 5 --step 0.5 \
      --color '#1B75B0' --width 0.25 --label-every 5)");
    command.add_option("--from", options.from, "The lowest level")->required();
    command.add_option("--to", options.to, "The highest level")->required();
    command.add_option("--step", options.step, "The interval; levels are its multiples")->required();
    command.add_option("--color", options.color, "The lines' colour, '#RRGGBB' or R,G,B")
        ->type_name("COLOUR")
        ->capture_default_str();
    command
        .add_option("--line-type", options.lineType, "How the lines are drawn: continuous, dashed or dotted")
        ->type_name("TYPE")
        ->check(CLI::IsMember(kLineTypes))
        ->capture_default_str();
    command.add_option("--width", options.width, "The lines' width")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command
        .add_option("--label-every", options.labelEvery,
                    "Label the levels that are multiples of so many steps")
        ->check(CLI::NonNegativeNumber);
}

void AddFromTable(CLI::App& contours) {
    const auto [command, options] = Add<FromTableOptions>(
        contours, "from-table", "Make a file with a contour for each entry of a colour table",
        "The contour definition file to write; '-' is standard output", R"(Examples:
  chartutil contours from-table depths.cdf depths.col
  chartutil contours from-table depths.cdf depths.col --picture key.svg)");
    command.add_option("TABLE", options.table, "The colour table (.col); '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_flag("--invert", options.invert,
                     "255 minus the colour reference; only pure reds become their complement");
}

} // namespace

void AddContoursCommand(CLI::App& program) {
    CLI::App& contours =
        *program.add_subcommand("contours", "Contour definition files: levels and their lines");
    contours.require_subcommand(1);
    Add<ListOptions>(contours, "list", "The contours of a file",
                     "The contour definition file (.cdf); '-' is standard input",
                     R"(Examples:
  chartutil contours list pensacola-bay.cdf
  chartutil contours list pensacola-bay.cdf --picture legend.png)");
    AddRange(contours);
    AddFromTable(contours);
    Add<CheckOptions>(
        contours, "check", "Whether a file says what its reader will understand",
        "The contour definition file (.cdf); '-' is standard input",
        R"(It reports gaps in the numbers, levels out of order or equal, keys and line types that are not
known, values that are not numbers, and colours that do not fit each other. The exit code is 1
when it found any.

Examples:
  chartutil contours check pensacola-bay.cdf
  chartutil contours check pensacola-bay.cdf --json)");
}
