#include "tests/support/Program.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(Chartutil, ExplainsItselfAndItsExitCodes) {
    const ProgramResult result = RunChartutil({"--help"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_THAT(result.output, HasSubstr("Exit codes: 0 success, 1 a check failed, 2 wrong use, 3 input"));
    EXPECT_EQ("", result.error);
}

TEST(Chartutil, TellsItsVersion) {
    const ProgramResult result = RunChartutil({"--version"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.output, StartsWith("chartutil 5.0.0.20"));
}

TEST(Chartutil, RefusesWrongUse) {
    const std::vector<std::string> wrong[] = {
        {},   {"no-such-command"}, {"--no-such-option"},
        {""}, {"\xC3\xBC"},        {"settings", "--no\nsuch \"option\\"}};
    for (const std::vector<std::string>& arguments : wrong) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const ProgramResult result = RunChartutil(arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_NE("", result.error);
    }
}
