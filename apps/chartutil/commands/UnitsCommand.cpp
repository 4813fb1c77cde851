// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/UnitType.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/files/CsvColumns.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr UnitType::U_TYPE kUnits[] = {UnitType::MM, UnitType::CM, UnitType::M, UnitType::INCHES,
                                       UnitType::FEET};

UnitType ParseUnit(const UserText& name) {
    for (const UnitType unit : kUnits) {
        if (icompareW(unit.AsString(), name.Wide())) return unit;
    }
    throw CommandError(ExitCode::WRONG_USE,
                       "'" + name.Utf8() + "' is no unit; use mm, cm, m, inches or feet");
}

struct Options {
    UserText from, to;
    std::string column;
    std::vector<std::string> values;
    bool json = false;
    CsvTable table;

    bool IsLong() const { return !column.empty() && IsMuchWork(table.input); }
};

// From one unit to another, in numbers that people can read and convert back.
class Conversion {
public:
    Conversion(const UnitType& from, const UnitType& to)
        : m_from(from), m_to(to), m_decimals(Decimals(from, to)) {
        // A length with an end may come from one without, which was cut behind its 15th digit.
        if (m_decimals && !Decimals(to, from)) m_digits = 13;
    }

    double Exact(double value) const { return m_from.Convert(m_to.GetType(), value); }

    /// With the digits that are no noise.
    double Rounded(double value) const { return RoundedToDigits(Exact(value), m_digits); }

    /// All decimals of the result where it ends, else such that its last one but two is as fine as that of
    /// `number`, or finer.
    DecimalNumber OfColumn(const DecimalNumber& number) const {
        const int more = m_decimals ? *m_decimals : EndlessDecimals();
        return {Exact(number.value), std::max(0, number.decimals + more)};
    }

private:
    // Those that the factor adds to a length; nothing for a factor that never ends.
    static std::optional<int> Decimals(const UnitType& from, const UnitType& to) {
        const double factor = from.Convert(to.GetType(), 1);
        for (int decimals = -3; decimals <= 4; ++decimals) {
            const double shifted = RoundedToDigits(factor * std::pow(10, decimals));
            if (shifted == std::round(shifted)) return decimals;
        }
        return std::nullopt;
    }

    int EndlessDecimals() const {
        return static_cast<int>(std::ceil(-std::log10(Exact(1)))) + kEndlessDecimals;
    }

    UnitType m_from, m_to;
    std::optional<int> m_decimals;
    int m_digits = 15;
};

void ConvertValues(const Options& options, const UnitType& from, const UnitType& to) {
    const Conversion conversion(from, to);
    const int decimals = options.table.decimals;
    Json conversions = Json::array();
    for (const std::string& text : options.values) {
        double value = 0;
        if (!ParseNumber(text, value)) throw CommandError(ExitCode::WRONG_USE, "'" + text + "' is no number");
        if (!std::isfinite(conversion.Exact(value)))
            throw CommandError(ExitCode::WRONG_USE,
                               "'" + text + "' is too large a length to convert to " + ToUtf8(to.AsString()));
        const double rounded = conversion.Rounded(value);
        const std::string converted = decimals < 0 ? DecimalText(rounded) : DecimalText(rounded, decimals);
        if (options.json) {
            double number = 0;
            ParseNumber(converted, number);
            conversions.push_back({{"value", value}, {"converted", number}});
        } else {
            std::cout << DecimalText(value) << ' ' << ToUtf8(from.AsString()) << " = " << converted << ' '
                      << ToUtf8(to.AsString()) << '\n';
        }
    }
    if (options.json)
        PrintJson(
            {{"from", ToUtf8(from.AsString())}, {"to", ToUtf8(to.AsString())}, {"conversions", conversions}});
}

void Run(const Options& options) {
    const UnitType from = ParseUnit(options.from);
    const UnitType to = ParseUnit(options.to);
    if (options.column.empty() != options.values.empty()) {
        if (options.column.empty()) return ConvertValues(options, from, to);
        const Conversion conversion(from, to);
        return ChangeColumns(options.table, {&options.column, 1}, [&](std::span<DecimalNumber> numbers) {
            numbers[0] = conversion.OfColumn(numbers[0]);
        });
    }
    throw CommandError(ExitCode::WRONG_USE,
                       "give either lengths to convert, or --column to convert a column of a table");
}

// --- the command line ---

void AddConvert(CLI::App& units) {
    const auto [command, options] = AddCommand<Options>(
        units, "convert", "Convert lengths, or a column of a table of lengths", Run, R"(Examples:
  chartutil units convert --from feet --to m 12 6.5
  chartutil units convert --from m --to feet --column depth_m \
      --decimals 2 --input soundings.csv --output soundings-feet.csv)");
    CLI::Option* const values = command.add_option("VALUE", options.values, "Lengths, with a decimal point");
    AllowPointAfterMinus(command, *values);
    std::vector<std::string> unitNames;
    for (const UnitType unit : kUnits) unitNames.push_back(ToUtf8(unit.AsString()));
    command.add_option("--from", options.from, "Their unit: mm, cm, m, inches or feet")
        ->type_name("UNIT")
        ->check(OfferedNames(unitNames))
        ->required();
    command.add_option("--to", options.to, "The unit to convert to")
        ->type_name("UNIT")
        ->check(OfferedNames(unitNames))
        ->required();
    CLI::Option* const json =
        command.add_flag("--json", options.json, "Print a JSON document of the lengths");
    CLI::Option* const column = command.add_option(
        "--column", options.column,
        "Convert this column of a table instead: a name of its header line, or a number from 1");
    command
        .add_option("--input", options.table.input,
                    "The table, comma separated values; '-' is standard input. It may be larger than memory")
        ->type_name(kFileValue)
        ->capture_default_str();
    AddCsvOptions(command, options.table);
    json->excludes(column);
    for (const char* name : {"--input", "--output", "--force", "--separator", "--no-header"})
        values->excludes(command.get_option(name));
}

} // namespace

void AddUnitsCommand(CLI::App& program) {
    CLI::App& units = *program.add_subcommand("units", "Units of length");
    units.require_subcommand(1);
    AddConvert(units);
}
