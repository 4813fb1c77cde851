#include "UtilityDLL/GTL/UnitType.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/files/CsvColumns.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cmath>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

constexpr UnitType::U_TYPE kUnits[] = {UnitType::MM, UnitType::CM, UnitType::M, UnitType::INCHES,
                                       UnitType::FEET};

UnitType ParseUnit(const std::string& name) {
    for (const UnitType unit : kUnits) {
        if (icompareW(unit.AsString(), FromUtf8(name))) return unit;
    }
    throw CommandError(ExitCode::WRONG_USE, "'" + name + "' is no unit; use mm, cm, m, inches or feet");
}

struct Options {
    std::string from, to, column;
    std::vector<std::string> values;
    bool json = false;
    CsvTable table;
};

void ConvertValues(const Options& options, const UnitType& from, const UnitType& to) {
    Json conversions = Json::array();
    for (const std::string& text : options.values) {
        double value = 0;
        if (!ParseNumber(text, value)) throw CommandError(ExitCode::WRONG_USE, "'" + text + "' is no number");
        const double converted = from.Convert(to.GetType(), value);
        if (!std::isfinite(converted))
            throw CommandError(ExitCode::WRONG_USE,
                               "'" + text + "' is too large to be told in " + ToUtf8(to.AsString()));
        if (options.json) {
            conversions.push_back({{"value", value}, {"converted", converted}});
        } else {
            std::cout << DecimalText(value) << ' ' << ToUtf8(from.AsString()) << " = "
                      << DecimalText(converted, options.table.decimals) << ' ' << ToUtf8(to.AsString())
                      << '\n';
        }
    }
    if (options.json)
        PrintJson(
            {{"from", ToUtf8(from.AsString())}, {"to", ToUtf8(to.AsString())}, {"conversions", conversions}});
}

void Convert(const Options& options) {
    const UnitType from = ParseUnit(options.from);
    const UnitType to = ParseUnit(options.to);
    if (options.column.empty() != options.values.empty()) {
        if (options.column.empty()) return ConvertValues(options, from, to);
        return ChangeColumns(options.table, {&options.column, 1}, [&](std::span<double> numbers) {
            numbers[0] = from.Convert(to.GetType(), numbers[0]);
        });
    }
    throw CommandError(ExitCode::WRONG_USE,
                       "give either lengths to convert, or --column to convert a column of a table");
}

} // namespace

void AddUnitsCommand(CLI::App& program) {
    CLI::App* units = program.add_subcommand("units", "Units of length");
    units->require_subcommand(1);
    const auto options = std::make_shared<Options>();

    CLI::App* convert =
        units->add_subcommand("convert", "Convert lengths, or a column of a table of lengths");
    CLI::Option* const values =
        convert->add_option("VALUE", options->values, "Lengths, with a decimal point");
    convert->add_option("--from", options->from, "Their unit: mm, cm, m, inches or feet")->required();
    convert->add_option("--to", options->to, "The unit to convert to")->required();
    CLI::Option* const json =
        convert->add_flag("--json", options->json, "Print a JSON document of the lengths");
    CLI::Option* const column = convert->add_option(
        "--column", options->column,
        "Convert this column of a table instead: a name of its header line, or a number from 1");
    convert
        ->add_option("--input", options->table.input,
                     "The table, comma separated values; '-' is standard input. It may be larger than memory")
        ->capture_default_str();
    AddCsvOptions(*convert, options->table);
    json->excludes(column);
    for (const char* name : {"--input", "--output", "--separator", "--no-header"})
        values->excludes(convert->get_option(name));
    convert->footer("Examples:\n  chartutil units convert --from feet --to m 12 6.5\n"
                    "  chartutil units convert --from m --to feet --column depth_m --decimals 2 \\\n"
                    "      --input soundings.csv --output soundings-feet.csv");
    convert->callback([options] { Convert(*options); });
}
