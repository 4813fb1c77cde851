// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Transformation2D.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/files/CsvColumns.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

using Point = GTL::Point2D<double>;

struct Step {
    bool isRotation;
    std::string text;
};

using Numbers = std::vector<DecimalNumber>;

struct Options {
    std::vector<std::string> columns = {"1", "2"};
    std::vector<Step> steps; // as they were given
    CsvTable table;

    bool IsLong() const { return IsMuchWork(table.input); }
};

Numbers NumbersOf(const Step& step) {
    const char* const form =
        step.isRotation ? "DEGREES or DEGREES,X,Y for --rotate" : "DX,DY for --translate";
    const std::string& text = step.text;
    const auto throwNotOfForm = [&] {
        throw CommandError(ExitCode::WRONG_USE, "'" + text + "' is not " + form);
    };
    Numbers numbers;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        if (!ParseNumber(std::string_view(text).substr(start, end - start), numbers.emplace_back()))
            throwNotOfForm();
        start = end + 1;
    }
    if (numbers.size() != (step.isRotation ? 3 : 2) && !(step.isRotation && numbers.size() == 1))
        throwNotOfForm();
    return numbers;
}

// A point's way through the steps. Coordinates keep the digits after the point that they and the steps'
// numbers have; a turn by other than quarters, whose sines never end, adds kEndlessDecimals.
class Way {
public:
    explicit Way(const std::vector<Step>& steps) {
        for (const Step& step : steps) step.isRotation ? Rotate(NumbersOf(step)) : Translate(NumbersOf(step));
    }

    void Move(DecimalNumber& x, DecimalNumber& y) const {
        Point point(x.value, y.value);
        point.Transform(m_transformation);
        const int both = std::max(x.decimals, y.decimals);
        x = {point.X(), std::max(m_isTurned ? both : x.decimals, m_xDecimals) + m_moreDecimals};
        y = {point.Y(), std::max(m_isTurned ? both : y.decimals, m_yDecimals) + m_moreDecimals};
    }

private:
    void Translate(const Numbers& by) {
        m_transformation.Translate(by[0].value, by[1].value);
        m_xDecimals = std::max(m_xDecimals, by[0].decimals);
        m_yDecimals = std::max(m_yDecimals, by[1].decimals);
    }

    void Rotate(const Numbers& by) {
        const bool hasCentre = by.size() == 3;
        m_transformation.Rotate(by[0].value, hasCentre ? Point(by[1].value, by[2].value) : Point());
        m_isTurned = true;
        if (std::fmod(by[0].value, 90) != 0) m_moreDecimals = kEndlessDecimals;
        const int ofCentre = hasCentre ? std::max(by[1].decimals, by[2].decimals) : 0;
        m_xDecimals = m_yDecimals = std::max({m_xDecimals, m_yDecimals, ofCentre});
    }

    GTL::Transformation2D<Point> m_transformation;
    bool m_isTurned = false;
    int m_xDecimals = 0;
    int m_yDecimals = 0;
    int m_moreDecimals = 0;
};

void Run(const Options& options) {
    if (options.steps.empty())
        throw CommandError(ExitCode::WRONG_USE, "nothing to do; give --translate or --rotate");
    const Way way(options.steps);
    ChangeColumns(options.table, options.columns,
                  [&](std::span<DecimalNumber> numbers) { way.Move(numbers[0], numbers[1]); });
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
  chartutil transform soundings.csv --translate 100,-50 -o moved.csv
  chartutil transform soundings.csv --x easting_m --y northing_m \
      --rotate 30,500000,3370000)");
    command
        .add_option("INPUT", options.table.input,
                    "The table, comma separated values; '-' is standard input. It may be larger than memory")
        ->type_name(kFileValue)
        ->required();
    AddStepOption(command, options, "--translate", false, "DX,DY", "Move by this much");
    AddStepOption(command, options, "--rotate", true, "DEGREES[,X,Y]",
                  "Turn clockwise with y up, about the point (X, Y) or else about (0, 0)");
    command
        .add_option("--x", options.columns[0],
                    "The column of x: a name of the header line, or a number from 1")
        ->type_name("COLUMN")
        ->capture_default_str();
    command.add_option("--y", options.columns[1], "The column of y")
        ->type_name("COLUMN")
        ->capture_default_str();
    AddCsvOptions(command, options.table);
}
