// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace {

const std::string kProject = std::string(TEST_DATA_FOLDER) + "/chartutil/data/tiny-chart";

} // namespace

TEST(SheetCommand, StandardOutputGetsTheChart) {
    const TemporaryFolder folder;
    const ProgramResult file = RunChartutil({"sheet", kProject, "-o", ToUtf8(folder.File(L"chart.svg"))});
    const ProgramResult output = RunChartutil({"sheet", kProject, "-o", "-"});
    EXPECT_EQ(0, output.exitCode) << output.error;
    EXPECT_EQ(ReadBytes(folder.File(L"chart.svg")), output.output);
    EXPECT_THAT(output.output, HasSubstr("</svg>"));
    EXPECT_EQ(file.error, output.error);
}

TEST(SheetCommand, WatchingNeedsAFile) {
    const ProgramResult result = RunChartutil({"sheet", kProject, "-o", "-", "--watch"});
    EXPECT_EQ(2, result.exitCode);
    EXPECT_THAT(result.error, HasSubstr("standard output takes one chart"));
}

TEST(SheetCommand, AFileOfAnotherKindStaysUnlessForced) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"chart.svg");
    WriteBytes(path, "[General]\r\na = 1\r\n");
    const ProgramResult kept = RunChartutil({"sheet", kProject, "-o", ToUtf8(path)});
    EXPECT_EQ(2, kept.exitCode);
    EXPECT_THAT(kept.error, HasSubstr("is a settings file, no SVG picture"));
    EXPECT_EQ("[General]\r\na = 1\r\n", ReadBytes(path));
    EXPECT_EQ(0, RunChartutil({"sheet", kProject, "-o", ToUtf8(path), "--force"}).exitCode);
    EXPECT_THAT(ReadBytes(path), HasSubstr("</svg>"));
}
