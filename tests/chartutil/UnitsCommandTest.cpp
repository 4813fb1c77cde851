// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"
#include "tests/support/Random.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>

using testing::HasSubstr;

namespace {

ProgramResult Convert(std::vector<std::string> arguments, std::string_view input = {}) {
    arguments.insert(arguments.begin(), {"units", "convert"});
    return RunChartutil(arguments, input);
}

TEST(UnitsCommand, ConvertsLengths) {
    const ProgramResult result = Convert({"--from", "inches", "--to", "mm", "1", "-2.5", "-.5", "+4"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("1 inches = 25.4 mm\n-2.5 inches = -63.5 mm\n-0.5 inches = -12.7 mm\n4 inches = 101.6 mm\n",
              result.output);
}

TEST(UnitsCommand, PrintsDigitsThatAreNoNoise) {
    struct Row {
        const char *from, *to, *length, *line;
    };
    for (const Row& row : {Row{"FEET", "MM", "1", "1 feet = 304.8 mm\n"}, // the factor is a trace less
                           Row{"feet", "m", "12", "12 feet = 3.6576 m\n"},
                           Row{"m", "feet", "1", "1 m = 3.28083989501312 feet\n"},
                           Row{"feet", "m", "3.28083989501312", "3.28083989501312 feet = 1 m\n"},
                           Row{"m", "m", "123456.123456789", "123456.123456789 m = 123456.123456789 m\n"},
                           Row{"m", "mm", "0.1", "0.1 m = 100 mm\n"}, Row{"mm", "m", "0", "0 mm = 0 m\n"}})
        EXPECT_EQ(row.line, Convert({"--from", row.from, "--to", row.to, row.length}).output);
}

TEST(UnitsCommand, PrintsTheDecimalsThatAreAskedFor) {
    const std::vector<std::string> toMillimetres = {"--from", "feet", "--to", "mm", "--decimals"};
    const auto convert = [&](std::vector<std::string> rest, const char* input = "") {
        rest.insert(rest.begin(), toMillimetres.begin(), toMillimetres.end());
        return Convert(rest, input).output;
    };
    EXPECT_EQ("1 feet = 304.80 mm\n", convert({"2", "1"}));
    // Half a step up: 19.05, of which the arithmetic makes a trace less.
    EXPECT_EQ("0.0625 feet = 19.1 mm\n", convert({"1", "0.0625"}));
    EXPECT_EQ("19.1\n", convert({"1", "--column", "1", "--no-header"}, "0.0625\n"));
    EXPECT_THAT(convert({"1", "0.0625", "--json"}), HasSubstr("\"converted\": 19.1\n"));
}

// Lengths with up to nine digits, as people write them.
TEST(UnitsCommand, GivesALengthBackThatIsConvertedThereAndBack) {
    Random random(7);
    std::vector<std::string> lengths;
    for (int i = 0; i < 500; ++i) {
        std::string length = std::to_string(random.Integer(1, 9)) + random.Text("0123456789", 8);
        if (random.OnceIn(2)) length.insert(random.Below(length.size()), ".");
        lengths.push_back(length);
    }
    const auto convert = [](const char* from, const char* to, const std::vector<std::string>& values) {
        std::vector<std::string> arguments = {"--from", from, "--to", to};
        arguments.insert(arguments.end(), values.begin(), values.end());
        std::istringstream lines(Convert(arguments).output);
        std::vector<std::string> converted;
        for (std::string length, unit, equals, number, toUnit;
             lines >> length >> unit >> equals >> number >> toUnit;)
            converted.push_back(number);
        return converted;
    };
    const char* const units[] = {"mm", "cm", "m", "inches", "feet"};
    for (const char* from : units)
        for (const char* to : units) {
            const std::vector<std::string> back = convert(to, from, convert(from, to, lengths));
            ASSERT_EQ(lengths.size(), back.size());
            for (std::size_t i = 0; i < lengths.size(); ++i)
                ASSERT_EQ(std::stod(lengths[i]), std::stod(back[i]))
                    << lengths[i] << ' ' << from << " by way of " << to;
        }
}

TEST(UnitsCommand, PrintsJson) {
    const ProgramResult result = Convert({"--from", "m", "--to", "feet", "1", "0", "--json"});
    ASSERT_EQ(0, result.exitCode) << result.error;
    const auto document = nlohmann::json::parse(result.output);
    EXPECT_EQ("m", document["from"]);
    EXPECT_EQ("feet", document["to"]);
    EXPECT_EQ(3.28083989501312, document["conversions"][0]["converted"]);
    EXPECT_EQ(0.0, document["conversions"][1]["value"]);
}

TEST(UnitsCommand, ConvertsAColumnOfATable) {
    const ProgramResult result =
        Convert({"--from", "m", "--to", "cm", "--column", "depth"}, "x,depth,remark\n1,2.5,a\n3,-4,b\n");
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("x,depth,remark\n1,250,a\n3,-400,b\n", result.output);
}

TEST(UnitsCommand, AColumnKeepsItsDecimalsAndThoseOfItsUnits) {
    struct Row {
        const char *from, *to, *column, *converted;
    };
    for (const Row& row :
         {Row{"feet", "m", "12\n12.5\n-0.50\n", "3.6576\n3.81000\n-0.152400\n"}, // all of 0.3048
          Row{"feet", "mm", "1\n", "304.8\n"}, Row{"feet", "inches", "1.5\n", "18.0\n"},
          Row{"m", "feet", "12.34\n10\n", "40.4856\n32.81\n"}, // a hundredth of the last decimal
          Row{"mm", "inches", "25.4\n", "1.00000\n"}, Row{"m", "mm", "12.3456\n12.3\n", "12345.6\n12300\n"},
          Row{"mm", "m", "12.5\n", "0.0125\n"}, Row{"m", "m", "1.50\n", "1.50\n"},
          Row{"m", "feet", "1e-3\n1.5e3\n1e30\n", "0.00328\n4921.26\n3.28083989501312e+30\n"},
          Row{"m", "feet", "12.34000000000000\n", "40.4855643044619\n"}, // no more than 15 digits
          Row{"m", "feet", "0.000\n1e-40\n", "0.00000\n3.28083989501312e-40\n"}}) {
        const ProgramResult result =
            Convert({"--from", row.from, "--to", row.to, "--column", "1", "--no-header"}, row.column);
        EXPECT_EQ(row.converted, result.output) << row.from << " to " << row.to << result.error;
    }
}

TEST(UnitsCommand, AColumnOfFeetIsTheSameAfterMetres) {
    std::string feet;
    for (int i = -3000; i < 3000; i += 7) feet += std::to_string(i / 100.0) + "\n";
    const auto convert = [&](const char* from, const char* to, const std::string& column) {
        return Convert({"--from", from, "--to", to, "--column", "1", "--no-header"}, column).output;
    };
    std::istringstream before(feet), after(convert("m", "feet", convert("feet", "m", feet)));
    double number = 0, back = 0;
    int count = 0;
    for (; before >> number && after >> back; ++count) ASSERT_EQ(number, back);
    EXPECT_EQ(858, count);
}

TEST(UnitsCommand, RefusesWrongUse) {
    struct Row {
        std::vector<std::string> arguments;
        const char* message;
    };
    for (const Row& row : {Row{{"--from", "m", "--to", "fathoms", "1"}, "'fathoms' is no unit; use mm"},
                           Row{{"--from", "", "--to", "m", "1"}, "'' is no unit"},
                           Row{{"--from", "m", "--to", "mm", "1,5"}, "'1,5' is no number"},
                           Row{{"--from", "m", "--to", "mm", "nan"}, "'nan' is no number"},
                           Row{{"--from", "m", "--to", "mm"}, "lengths to convert, or --column"},
                           Row{{"--from", "m", "--to", "mm", "1", "--column", "2"}, "either lengths"},
                           Row{{"--to", "mm", "1"}, "--from"}}) {
        const ProgramResult result = Convert(row.arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
}

TEST(UnitsCommand, HelpShowsExamples) {
    const ProgramResult result = Convert({"--help"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.output, HasSubstr("Examples:\n  chartutil units convert"));
}

} // namespace

TEST(UnitsCommand, TellsOfALengthThatIsTooLarge) {
    EXPECT_NE(0, Convert({"--from", "m", "--to", "mm", "1e308"}).exitCode);
    EXPECT_NE(0, Convert({"--from", "m", "--to", "mm", "1e308", "--json"}).exitCode);
}

TEST(UnitsCommand, RefusesOptionsThatDoNotGoTogether) {
    EXPECT_EQ(2, Convert({"--from", "m", "--to", "mm", "--column", "1", "--json"}, "a\n1\n").exitCode);
    EXPECT_EQ(2, Convert({"--from", "m", "--to", "mm", "5", "-o", "out.csv"}).exitCode);
    EXPECT_EQ(2, Convert({"--from", "m", "--to", "mm", "5", "--input", "in.csv"}).exitCode);
}
