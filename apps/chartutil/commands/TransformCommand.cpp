#include "UtilityDLL/GTL/Transformation2D.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/files/CsvColumns.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Point = GTL::Point2D<double>;

struct Step {
    bool isRotation;
    std::string text;
};

struct Options {
    std::vector<std::string> columns = {"1", "2"};
    std::vector<Step> steps; // as they were given
    CsvTable table;

    bool IsLong() const { return IsMuchWork(table.input); }
};

std::vector<double> Numbers(const std::string& text, const char* form) {
    std::vector<double> numbers;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        if (!ParseNumber(std::string_view(text).substr(start, end - start), numbers.emplace_back()))
            throw CommandError(ExitCode::WRONG_USE, "'" + text + "' is not " + form);
        start = end + 1;
    }
    return numbers;
}

void AddStep(GTL::Transformation2D<Point>& transformation, const Step& step) {
    const char* const form =
        step.isRotation ? "DEGREES or DEGREES,X,Y for --rotate" : "DX,DY for --translate";
    const std::vector<double> numbers = Numbers(step.text, form);
    if (step.isRotation && (numbers.size() == 1 || numbers.size() == 3)) {
        transformation.Rotate(numbers[0], numbers.size() == 3 ? Point(numbers[1], numbers[2]) : Point());
    } else if (!step.isRotation && numbers.size() == 2) {
        transformation.Translate(numbers[0], numbers[1]);
    } else {
        throw CommandError(ExitCode::WRONG_USE, "'" + step.text + "' is not " + form);
    }
}

void Run(const Options& options) {
    if (options.steps.empty())
        throw CommandError(ExitCode::WRONG_USE, "nothing to do; give --translate or --rotate");
    GTL::Transformation2D<Point> transformation;
    for (const Step& step : options.steps) AddStep(transformation, step);
    ChangeColumns(options.table, options.columns, [&](std::span<double> numbers) {
        Point point(numbers[0], numbers[1]);
        point.Transform(transformation);
        numbers[0] = point.X();
        numbers[1] = point.Y();
    });
}

// --- the command line ---

void AddStepOption(CLI::App& command, Options& options, const char* name, bool isRotation, const char* type,
                   const char* help) {
    const auto take = [&options, isRotation](const std::vector<std::string>& texts) {
        options.steps.push_back({isRotation, texts.back()});
    };
    command.add_option_function<std::vector<std::string>>(name, take, help)
        ->type_name(type)
        ->allow_extra_args(false)
        ->trigger_on_parse();
}

} // namespace

void AddTransformCommand(CLI::App& program) {
    const auto [command, options] =
        AddCommand<Options>(program, "transform", "Translate and rotate the points of a table", Run,
                            R"(Steps can be repeated and are done in the order in which they are given.

Examples:
  chartutil transform soundings.csv --translate 100,-50 --decimals 2 -o moved.csv
  chartutil transform soundings.csv --x easting_m --y northing_m --rotate 30,500000,3370000)");
    command
        .add_option("INPUT", options.table.input,
                    "The table, comma separated values; '-' is standard input. It may be larger than memory")
        ->required();
    AddStepOption(command, options, "--translate", false, "DX,DY", "Move by this much");
    AddStepOption(command, options, "--rotate", true, "DEGREES[,X,Y]",
                  "Turn clockwise with y up, about the point (X, Y) or else about (0, 0)");
    command
        .add_option("--x", options.columns[0],
                    "The column of x: a name of the header line, or a number from 1")
        ->capture_default_str();
    command.add_option("--y", options.columns[1], "The column of y")->capture_default_str();
    AddCsvOptions(command, options.table);
}
