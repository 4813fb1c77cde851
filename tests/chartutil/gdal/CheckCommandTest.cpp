// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;

namespace {

const std::string kTiny = TEST_DATA_FOLDER "/chartutil/data/tiny-chart";

TEST(CheckCommand, TellsWhatIsInAProject) {
    const ProgramResult result = RunChartutil({"check", kTiny});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("", result.error);
    EXPECT_THAT(result.output, AllOf(HasSubstr("soundings           40\n"), HasSubstr("1 : 4000\n"),
                                     HasSubstr("EPSG:32632 (WGS 84 / UTM zone 32N)\n"),
                                     HasSubstr("levels              0, 2, 3, 5, 7\n")));
}

TEST(CheckCommand, PrintsJson) {
    const ProgramResult result = RunChartutil({"check", kTiny, "--json"});
    const json project = json::parse(result.output, nullptr, false);
    EXPECT_EQ(40, project["soundings"]);
    EXPECT_EQ(500000, project["extents"]["west"]);
    EXPECT_EQ(6000240, project["extents"]["north"]);
    EXPECT_EQ(210, project["paper"]["width"]);
    EXPECT_EQ(4000, project["scale"]);
    EXPECT_EQ(5u, project["files"].size());
    EXPECT_EQ(json::array(), project["faults"]);
}

// The chart of a changed project, by the exit code and what is said of it.
struct Changed {
    Changed(const std::string& from, const std::string& to) {
        std::filesystem::copy(kTiny, folder.Path() / "p");
        std::string settings = ReadBytes(folder.Path() / "p" / "project.ini");
        const std::size_t at = settings.find(from);
        EXPECT_NE(std::string::npos, at);
        settings.replace(at, from.size(), to);
        WriteBytes(folder.Path() / "p" / "project.ini", settings);
        checked = RunChartutil({"check", (folder.Path() / "p").string()});
        drawn =
            RunChartutil({"sheet", (folder.Path() / "p").string(), "-o", (folder.Path() / "p.svg").string()});
        hasSheet = std::filesystem::exists(folder.Path() / "p.svg");
    }
    TemporaryFolder folder;
    ProgramResult checked, drawn;
    bool hasSheet = false;
};

TEST(CheckCommand, SaysOfAFaultWhatTheSheetSays) {
    struct Row {
        const char *from, *to, *error;
        bool hasSheet;
    };
    for (const Row& row : {
             Row{"Scale       = 4000", "Scales      = 4000",
                 "project.ini:6: [Sheet] Scales: there is no such key", true},
             Row{"Scale       = 4000", "Scale       = 1e-9",
                 "project.ini:6: [Sheet] Scale: no chart is larger than nature", true},
             Row{"depths.col", "other.col", "[Surface] ColorTable: ", true},
             Row{"CoordinateSystem = EPSG:32632", "CoordinateSystem = EPSG:4326",
                 "project.ini:15: [Soundings] CoordinateSystem: 'EPSG:4326' has longitudes and latitudes",
                 false},
             Row{"CoordinateSystem = EPSG:32632", "CoordinateSystem = EPSG:9",
                 "'EPSG:9' is no coordinate system", false},
             Row{"Margin      = 6", "Margin      = 70",
                 "project.ini:5: [Sheet] Margin: the margin and the border take", false},
             Row{"CentreX     = 500270", "CentreX     = 900270", "[Sheet] CentreX: no sounding is on the map",
                 false},
             Row{"soundings.csv", "none.csv", "none.csv: no such file", false},
         }) {
        SCOPED_TRACE(row.to);
        const Changed changed(row.from, row.to);
        EXPECT_NE(0, changed.checked.exitCode);
        EXPECT_EQ(changed.checked.exitCode, changed.drawn.exitCode);
        EXPECT_THAT(changed.checked.error, HasSubstr(row.error));
        EXPECT_THAT(changed.drawn.error, HasSubstr(row.error));
        EXPECT_EQ(row.hasSheet, changed.hasSheet);
    }
}

TEST(SheetCommand, LeavesTheProjectsOwnFilesAlone) {
    const TemporaryFolder folder;
    const std::filesystem::path project = folder.Path() / "p";
    std::filesystem::copy(kTiny, project);
    std::filesystem::create_symlink(project / "soundings.csv", folder.Path() / "link.svg");
    const std::string before = ReadBytes(project / "soundings.csv");
    const ProgramResult result =
        RunChartutil({"sheet", project.string(), "-o", (folder.Path() / "link.svg").string()});
    EXPECT_EQ(2, result.exitCode);
    EXPECT_THAT(result.error, HasSubstr("the chart is drawn from this file"));
    EXPECT_EQ(before, ReadBytes(project / "soundings.csv"));
}

} // namespace
