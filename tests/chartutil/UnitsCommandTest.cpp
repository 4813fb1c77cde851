#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

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

TEST(UnitsCommand, PrintsAllDigitsUnlessToldOtherwise) {
    EXPECT_EQ("1 feet = 304.79999999999995 mm\n", Convert({"--from", "FEET", "--to", "MM", "1"}).output);
    EXPECT_EQ("1 feet = 304.80 mm\n",
              Convert({"--from", "feet", "--to", "mm", "1", "--decimals", "2"}).output);
}

TEST(UnitsCommand, PrintsJson) {
    const ProgramResult result = Convert({"--from", "m", "--to", "feet", "1", "0", "--json"});
    ASSERT_EQ(0, result.exitCode) << result.error;
    const auto document = nlohmann::json::parse(result.output);
    EXPECT_EQ("m", document["from"]);
    EXPECT_EQ("feet", document["to"]);
    EXPECT_EQ(3.2808398950131235, document["conversions"][0]["converted"]);
    EXPECT_EQ(0.0, document["conversions"][1]["value"]);
}

TEST(UnitsCommand, ConvertsAColumnOfATable) {
    const ProgramResult result =
        Convert({"--from", "m", "--to", "cm", "--column", "depth"}, "x,depth,remark\n1,2.5,a\n3,-4,b\n");
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("x,depth,remark\n1,250,a\n3,-400,b\n", result.output);
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
