// SPDX-License-Identifier: MIT
// Arguments are bytes on this system, and those of a script may be no UTF-8.

#include "tests/support/Program.h"

#include <nlohmann/json.hpp>

TEST(ArgumentBytes, JsonOfATextThatIsNoUtf8HasTheSignForIt) {
    const ProgramResult line = RunChartutil({"style", "line", "A\xFFz,1,0,0,0", "--json"});
    EXPECT_EQ(0, line.exitCode) << line.error;
    EXPECT_EQ("A\uFFFDz", nlohmann::json::parse(line.output)["fields"][0]["given"]);
    const ProgramResult missing = RunChartutil({"crc", "check", "no\xFF", "--json"});
    EXPECT_EQ(3, missing.exitCode);
    EXPECT_EQ("no\uFFFD", nlohmann::json::parse(missing.output)["files"][0]["file"]);
}
