#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/contours/ContourCheck.h"
#include "apps/chartutil/commands/contours/ContourLegend.h"
#include "apps/chartutil/commands/contours/LineTypes.h"
#include "apps/chartutil/drawing/Picture.h"
#include "apps/chartutil/files/ColorTableFile.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>
#include <set>

namespace {

using Json = nlohmann::ordered_json;
using Info = ContourDefinitionList::ContourDefInfo;

std::string NumberOf(double value, int digits = 10) { return ToUtf8(NumberText::FromGeneral(value, digits)); }

// --- the table, the document and the legend ---

struct Output {
    std::string picture;
    bool json = false;
};

void Show(const ContourDefinitionList& list, const std::string& path, const Output& output) {
    if (!output.picture.empty())
        ContourLegend(list, path.substr(path.find_last_of("/\\") + 1)).Save(output.picture);
    Json levels = Json::array();
    std::size_t width = 5;
    for (int i = 0; i < list.NumContours(); ++i) width = std::max(width, NumberOf(list[i].level).size());
    if (!output.json)
        std::cout << Colored(std::string(width - 5, ' ') + "level  colour   DXF  line          width  label",
                             TextColor::BOLD)
                  << '\n';
    for (int i = 0; i < list.NumContours(); ++i) {
        const Info& info = list[i];
        const RGBColor color(info.trueColor);
        const int index = DXFColor(color).Index();
        if (output.json) {
            levels.push_back({{"level", info.level},
                              {"color", HexText(color)},
                              {"trueColor", info.trueColor},
                              {"dxf", index},
                              {"lineType", LineTypeName(info.lineType)},
                              {"lineWidth", std::stod(NumberOf(static_cast<double>(info.lineWidth), 7))},
                              {"annotate", info.annotate}});
            continue;
        }
        const std::string level = NumberOf(info.level);
        const std::string dxf = std::to_string(index);
        const std::string lineWidth = NumberOf(static_cast<double>(info.lineWidth), 6);
        const std::string& type = LineTypeName(info.lineType);
        std::cout << std::string(width - level.size(), ' ') << level << "  " << OnColor(HexText(color), color)
                  << "  " << std::string(3 - dxf.size(), ' ') << dxf << "  " << type
                  << std::string(12 - type.size(), ' ')
                  << std::string(lineWidth.size() < 7 ? 7 - lineWidth.size() : 0, ' ') << lineWidth
                  << (info.annotate ? "  yes" : "") << '\n';
    }
    if (output.json) PrintJson({{"file", path}, {"contours", levels}});
}

// --- reading and writing ---

// The store's own reading of a file, for what the list does not tell.
IniFile OpenSettings(const std::string& path) {
    IniFile file;
    if (const ErrorString result = file.Open(FromUtf8(path)); !result)
        throw CommandError(ExitCode::IO_ERROR, path + ": " + ToUtf8(result.Text()));
    return file;
}

void List(const std::string& path, const Output& output) {
    ContourDefinitionList list;
    if (!list.Load(FromUtf8(path).c_str())) {
        OpenSettings(path);
        throw CommandError(ExitCode::CHECK_FAILED,
                           path + ": there is no section [Contour(0)] with keys, so no contour; "
                                  "'chartutil contours range' makes a file with some");
    }
    Show(list, path, output);
}

void SaveAndShow(const ContourDefinitionList& list, const std::string& path, const Output& output) {
    if (!list.Save(FromUtf8(path).c_str()))
        throw CommandError(ExitCode::IO_ERROR,
                           path + ": cannot be written, a file there is as it was; check that the "
                                  "folder exists and takes new files");
    Show(list, path, output);
}

struct Style {
    std::string color = "#000000";
    std::string lineType = "continuous";
    float width = 0;
    int labelEvery = 0;
};

void Range(const std::string& path, double from, double to, double step, const Style& style,
           const Output& output) {
    const RGBColor color = RequireColor(style.color);
    const auto type = std::find(kLineTypes.begin(), kLineTypes.end(), style.lineType) - kLineTypes.begin();
    ContourDefinitionList list;
    if (!(style.width <= 1e6f)) throw CommandError(ExitCode::WRONG_USE, "--width has to be 0 to 1000000");
    if (!(from < to)) throw CommandError(ExitCode::WRONG_USE, "--from has to be below --to");
    if (!(step > 0)) throw CommandError(ExitCode::WRONG_USE, "--step has to be above 0");
    if (!list.Generate(from, to, step))
        throw CommandError(ExitCode::WRONG_USE,
                           "that range has more than " +
                               std::to_string(+ContourDefinitionList::MAX_GENERATED) +
                               " levels, or levels that the step does not change; take a larger --step");
    for (int i = 1; i < list.NumContours(); ++i)
        if (NumberText::FromFixed(list[i - 1].level) == NumberText::FromFixed(list[i].level))
            throw CommandError(ExitCode::WRONG_USE,
                               "a file keeps six digits after the point, by which not all "
                               "of these levels differ; take a larger --step");
    if (list.NumContours() == 0)
        throw CommandError(ExitCode::WRONG_USE, "there is no multiple of --step between --from and --to");
    for (int i = 0; i < list.NumContours(); ++i) {
        Info info = list[i];
        info.lineWidth = style.width;
        info.lineType = static_cast<int>(type);
        info.trueColor = static_cast<std::uint32_t>(static_cast<unsigned long>(color));
        info.annotate =
            style.labelEvery > 0 && std::fmod(std::round(info.level / step), style.labelEvery) == 0;
        list.Set(i, info);
    }
    SaveAndShow(list, path, output);
}

void FromTable(const std::string& path, const std::string& tablePath, bool invert, const Output& output) {
    bool complete = true;
    const DXFColorTable table = OpenColorTable(tablePath, complete);
    if (!complete)
        throw CommandError(ExitCode::CHECK_FAILED,
                           tablePath + ": not all of the table could be read; mend what is named above");
    ContourDefinitionList list;
    if (!list.Generate(table, invert))
        throw CommandError(ExitCode::CHECK_FAILED,
                           tablePath + ": the table has no entries, so there are no levels");
    SaveAndShow(list, path, output);
}

// --- check ---

void Check(const std::string& path, const Output& output) {
    const IniFile file = OpenSettings(path);
    const ContourFindings found = CheckContours(file);
    if (!output.picture.empty()) {
        ContourDefinitionList list;
        list.Load(FromUtf8(path).c_str());
        ContourLegend(list, path.substr(path.find_last_of("/\\") + 1)).Save(output.picture);
    }
    if (output.json) {
        PrintJson({{"file", path}, {"contours", found.numContours}, {"findings", found.findings}});
    } else {
        for (const std::string& finding : found.findings)
            std::cout << Printable(path) << ": " << Printable(finding) << '\n';
        if (found.findings.empty())
            std::cout << Printable(path) << ": " << found.numContours << " contours, nothing odd\n";
    }
    if (!found.findings.empty()) throw CommandExit{ExitCode::CHECK_FAILED};
}

} // namespace

void AddContoursCommand(CLI::App& program) {
    CLI::App* contours =
        program.add_subcommand("contours", "Contour definition files: levels and their lines");
    contours->require_subcommand(1);
    struct Options {
        std::string file, table;
        double from = 0, to = 0, step = 0;
        Style style;
        Output output;
        bool invert = false;
    };
    const auto options = std::make_shared<Options>();
    const auto add = [&](const char* name, const char* what, const char* fileText, auto action) {
        CLI::App* command = contours->add_subcommand(name, what);
        command->add_option("FILE", options->file, fileText)->required();
        command->add_option("--picture", options->output.picture,
                            "Also draw a legend into this .svg or .png file");
        command->add_flag("--json", options->output.json, "Print a JSON document");
        command->callback([=] {
            if (!options->output.picture.empty()) Picture::CheckEnding(options->output.picture);
            action(*options);
        });
        return command;
    };

    add("list", "The contours of a file", "The contour definition file (.cdf)",
        [](const Options& o) { List(o.file, o.output); })
        ->footer("Examples:\n  chartutil contours list pensacola-bay.cdf\n"
                 "  chartutil contours list pensacola-bay.cdf --picture legend.png");

    CLI::App* range =
        add("range", "Make a file with the multiples of a step", "The contour definition file to write",
            [](const Options& o) { Range(o.file, o.from, o.to, o.step, o.style, o.output); });
    range->add_option("--from", options->from, "The lowest level")->required();
    range->add_option("--to", options->to, "The highest level")->required();
    range->add_option("--step", options->step, "The interval; levels are its multiples")->required();
    range->add_option("--color", options->style.color, "The lines' colour, '#RRGGBB' or R,G,B")
        ->capture_default_str();
    range->add_option("--line-type", options->style.lineType, "continuous, dashed or dotted")
        ->check(CLI::IsMember(kLineTypes))
        ->capture_default_str();
    range->add_option("--width", options->style.width, "The lines' width")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    range
        ->add_option("--label-every", options->style.labelEvery,
                     "Label the levels that are multiples of so many steps")
        ->check(CLI::NonNegativeNumber);
    range->footer(
        "Each level is the one before plus the step, so rounding decides whether the highest is reached:\n"
        "0 to 0.3 by 0.1 ends at 0.2.\n\nExamples:\n"
        "  chartutil contours range depths.cdf --from 0 --to 20 --step 2 --label-every 5\n"
        "  chartutil contours range depths.cdf --from -5 --to 5 --step 0.5 --color '#1B75B0' --width 0.25");

    CLI::App* fromTable = add("from-table", "Make a file with a contour for each entry of a colour table",
                              "The contour definition file to write",
                              [](const Options& o) { FromTable(o.file, o.table, o.invert, o.output); });
    fromTable->add_option("TABLE", options->table, "The colour table (.col)")->required();
    fromTable->add_flag("--invert", options->invert,
                        "255 minus the colour reference; only pure reds become their complement");
    fromTable->footer("Examples:\n  chartutil contours from-table depths.cdf depths.col\n"
                      "  chartutil contours from-table depths.cdf depths.col --picture legend.svg");

    add("check", "Whether a file says what its reader will understand", "The contour definition file (.cdf)",
        [](const Options& o) { Check(o.file, o.output); })
        ->footer("Told are gaps in the numbers, levels out of order or equal, keys and line types that are "
                 "not known,\n"
                 "numbers that are none and colours that do not fit each other. The exit code is 1 when "
                 "there is any.\n\n"
                 "Examples:\n  chartutil contours check pensacola-bay.cdf\n  chartutil contours check "
                 "pensacola-bay.cdf --json");
}
