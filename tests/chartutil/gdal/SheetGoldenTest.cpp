// SPDX-License-Identifier: MIT
// The tiny chart's picture was looked at and is kept, so that no change of it goes unseen. CONTRIBUTING.md
// says how it is renewed.

#include "tests/support/Environment.h"
#include "tests/support/Program.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const fs::path kTests(TEST_DATA_FOLDER);
const fs::path kProject = kTests / "chartutil/data/tiny-chart";

std::string SvgOf(const fs::path& project) {
    const TemporaryFolder folder;
    const fs::path file = folder.Path() / "sheet.svg";
    const ProgramResult result = RunChartutil({"sheet", project.string(), "-o", file.string()});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("", result.error);
    return ReadBytes(file);
}

// Where two texts differ for the first time, short enough to be read; empty when they are the same.
std::string Difference(const std::string& wanted, const std::string& drawn) {
    constexpr std::size_t kLongest = 160;
    std::istringstream wantedLines(wanted), drawnLines(drawn);
    for (int number = 1; wanted != drawn; ++number) {
        std::string wantedLine, drawnLine;
        const bool isMore = !!std::getline(wantedLines, wantedLine);
        const bool isDrawnMore = !!std::getline(drawnLines, drawnLine);
        if (!isMore && !isDrawnMore) return "they differ in how they end\n";
        if (wantedLine == drawnLine && isMore == isDrawnMore) continue;
        std::size_t at = 0;
        while (at < wantedLine.size() && at < drawnLine.size() && wantedLine[at] == drawnLine[at]) ++at;
        at -= std::min(at, kLongest / 2);
        return "line " + std::to_string(number) + " was\n  " + wantedLine.substr(at, kLongest) +
               "\nand is\n  " + drawnLine.substr(at, kLongest) + '\n';
    }
    return {};
}

} // namespace

TEST(SheetGolden, TinyChartIsDrawnByteForByte) {
    EXPECT_EQ("", Difference(ReadBytes(kTests / "golden/tiny-chart.svg"), SvgOf(kProject)))
        << "The tiny chart is no longer drawn as in tests/golden/tiny-chart.svg. Where that is meant, look "
           "at "
           "the new picture and keep it: CONTRIBUTING.md, \"The kept chart\".";
}

TEST(SheetGolden, FolderLocaleLanguageAndTimeZoneDoNotShow) {
    const TemporaryFolder folder;
    fs::copy(kProject, folder.Path() / "project", fs::copy_options::recursive);
    for (const wchar_t* const name : {L"LC_ALL", L"LANG"}) SetEnvironment(name, L"de_DE.UTF-8");
    SetEnvironment(L"TZ", L"Pacific/Chatham");
    SetEnvironment(L"UTILITYDLL_LANGUAGE", L"de");
    const std::string elsewhere = SvgOf(folder.Path() / "project");
    for (const wchar_t* const name : {L"LC_ALL", L"LANG", L"TZ"}) SetEnvironment(name, L"");
    SetEnvironment(L"UTILITYDLL_LANGUAGE", L"en");
    EXPECT_EQ("", Difference(ReadBytes(kTests / "golden/tiny-chart.svg"), elsewhere));
}
