// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;

namespace {

struct NewProject {
    explicit NewProject(const std::string& name, const std::string& bytes) {
        WriteBytes(folder.Path() / name, bytes);
        path = (folder.Path() / "chart").string();
        made = RunChartutil({"init", path, "--soundings", (folder.Path() / name).string()});
    }
    std::string File(const std::string& name) const { return ReadBytes(std::filesystem::path(path) / name); }
    json Check() const {
        const ProgramResult result = RunChartutil({"check", path, "--json"});
        EXPECT_EQ(0, result.exitCode) << result.error;
        return json::parse(result.output, nullptr, false);
    }

    TemporaryFolder folder;
    std::string path;
    ProgramResult made;
};

// Soundings of a square with sides of `side`, as deep as `depth` times 0 to 1.
std::string Square(const std::string& header, double x, double y, double side, double depth) {
    std::string table = header;
    for (int row = 0; row < 12; ++row)
        for (int column = 0; column < 12; ++column)
            table += std::to_string(x + side * column / 11) + ',' + std::to_string(y + side * row / 11) +
                     ',' + std::to_string(depth * (row + column) / 22) + '\n';
    return table;
}

TEST(InitCommand, TakesATableFromStandardInput) {
    const std::string table = Square("easting,northing,depth\n", 4e5, 6e6, 5000, 40);
    const NewProject ofFile("soundings.csv", table);
    const TemporaryFolder folder;
    const std::string path = (folder.Path() / "chart").string();
    EXPECT_EQ(0, RunChartutil({"init", path, "--soundings", "-"}, table).exitCode);
    for (const char* name : {"project.ini", "depths.col", "levels.cdf", "soundings.csv"})
        EXPECT_EQ(ofFile.File(name), ReadBytes(std::filesystem::path(path) / name)) << name;

    const std::string other = (folder.Path() / "other").string();
    EXPECT_NE(0, RunChartutil({"init", other, "--soundings", "-"}, "no table\n").exitCode);
    EXPECT_FALSE(std::filesystem::exists(other));
}

TEST(InitCommand, TakesColumnsByTheirNamesOrNumbers) {
    const TemporaryFolder folder;
    const std::string table = (folder.Path() / "weser.csv").string();
    WriteBytes(table, Square("Tiefe,Rechtswert,Hochwert\n", 4e5, 6e6, 5000, 40));
    const auto init = [&](const std::string& name, std::vector<std::string> options) {
        options.insert(options.begin(), {"init", (folder.Path() / name).string(), "--soundings", table});
        return RunChartutil(options);
    };
    const ProgramResult none = init("none", {});
    EXPECT_EQ(1, none.exitCode);
    EXPECT_THAT(none.error, HasSubstr("with --x of 'chartutil init', which one is X"));
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "none"));

    // Each in another's place, so that the soundings lie elsewhere than by the names of the header.
    for (const std::vector<std::string>& columns :
         {std::vector<std::string>{"Rechtswert", "Hochwert", "Tiefe"}, {"2", "3", "1"}}) {
        const std::string path = (folder.Path() / columns[0]).string();
        EXPECT_EQ(0, init(columns[0], {"--x", columns[0], "--y", columns[1], "--depth", columns[2],
                                       "--system", "EPSG:25832"})
                         .exitCode);
        const json check = json::parse(RunChartutil({"check", path, "--json"}).output, nullptr, false);
        EXPECT_EQ("EPSG:25832", check["coordinateSystem"]["definition"]) << check.dump(1);
        EXPECT_THAT(ReadBytes(std::filesystem::path(path) / "project.ini"), HasSubstr(columns[1]));
    }
    const ProgramResult wrong =
        init("wrong", {"--x", "2", "--y", "3", "--depth", "1", "--system", "EPSG:none"});
    EXPECT_NE(0, wrong.exitCode);
    EXPECT_THAT(wrong.error, HasSubstr("EPSG:none"));
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "wrong"));
}

TEST(InitCommand, SaysThatItTakesNumbersForLongitudesAndLatitudes) {
    const NewProject guessed("a.xyz", Square("", 8, 54, 0.01, 40));
    EXPECT_THAT(guessed.made.error, HasSubstr("--system"));
    const NewProject named("a.csv", Square("lon,lat,depth\n", 8, 54, 0.01, 40));
    EXPECT_EQ("", named.made.error);
}

TEST(InitCommand, MakesAProjectThatIsDrawnAtOnce) {
    struct Row {
        const char* name;
        std::string bytes, system;
        double shoalest, deepest;
        std::vector<double> levels;
    };
    for (const Row& row : {
             Row{"a.csv",
                 Square("easting,northing,depth\n", 4e5, 6e6, 5000, 40),
                 "",
                 0,
                 40,
                 {2, 5, 10, 15, 20, 30}},
             Row{"lake.xyz", Square("", 4e5, 6e6, 200, 3), "", 0, 3, {0.5, 1, 1.5, 2, 2.5}},
             Row{"ocean.csv",
                 Square("lon,lat,elevation\n", -30, 40, 20, -6000),
                 "+proj=merc +lat_ts=50 +lon_0=-20 +datum=WGS84 +units=m",
                 0,
                 6000,
                 {50, 100, 200, 500, 1000, 2000, 3000, 4000, 5000}},
             Row{"feet.csv",
                 Square("x,y,depth_ft\n", 4e5, 6e6, 5000, 100),
                 "",
                 0,
                 30.48,
                 {2, 5, 10, 15, 20, 30}},
             Row{"lonlat.csv", Square("lon,lat,depth\n", 9, 54, 0.1, 10), "EPSG:32632", 0, 10, {2, 4, 6, 8}},
         }) {
        SCOPED_TRACE(row.name);
        const NewProject project(row.name, row.bytes);
        ASSERT_EQ(0, project.made.exitCode) << project.made.error;
        const json found = project.Check();
        EXPECT_NEAR(row.shoalest, found["depths"]["shoalest"].get<double>(), 1e-6);
        EXPECT_NEAR(row.deepest, found["depths"]["deepest"].get<double>(), 1e-6);
        EXPECT_EQ(row.system, row.system.empty() ? "" : found["coordinateSystem"]["definition"]);
        EXPECT_EQ(row.system.empty(), found["coordinateSystem"].is_null());
        EXPECT_EQ(json(row.levels), found["levels"]);
        EXPECT_EQ("[]", found["faults"].dump());
        const ProgramResult drawn = RunChartutil({"sheet", project.path, "-o", project.path + "/chart.svg"});
        EXPECT_EQ(0, drawn.exitCode);
        EXPECT_EQ("", drawn.error);
    }
}

TEST(InitCommand, TakesOneSounding) {
    const NewProject project("one.xyz", "400000 6000000 7\n");
    EXPECT_EQ(0, project.made.exitCode) << project.made.error;
    const json found = project.Check();
    EXPECT_EQ(1, found["soundings"]);
    EXPECT_EQ(7, found["depths"]["deepest"]);
}

TEST(InitCommand, ExplainsEachSettingWhereItStands) {
    const NewProject project("a.csv", Square("easting,northing,depth\n", 4e5, 6e6, 5000, 40));
    EXPECT_THAT(project.File("project.ini"),
                AllOf(HasSubstr(";from the paper's sides to the border with its labels (mm, 0 to 1000)"),
                      HasSubstr("Depth                = depth"), HasSubstr("[Keywords]")));
    std::istringstream lines(project.File("project.ini"));
    for (std::string line; std::getline(lines, line) && !line.starts_with("[Keywords]");)
        EXPECT_EQ(line.find('=') != std::string::npos, line.find(';') != std::string::npos) << line;
    EXPECT_EQ(project.File("a.csv"), ReadBytes(project.folder.Path() / "a.csv"));
    EXPECT_EQ("chart", project.Check()["title"]);
}

TEST(InitCommand, HasTheLimitOfTheSurveyToBeSwitchedOn) {
    const NewProject project("a.csv", Square("easting,northing,depth\n", 4e5, 6e6, 5000, 40));
    const std::string sheet = project.path + "/chart.svg";
    std::string settings = project.File("project.ini"), drawn[2];
    for (const bool isOn : {false, true}) {
        if (isOn) {
            const std::size_t at = settings.find("Enable", settings.find("[Survey Limit]"));
            settings.replace(settings.find('0', at), 1, "1");
            WriteBytes(project.folder.Path() / "chart" / "project.ini", settings);
        }
        EXPECT_EQ(0, RunChartutil({"sheet", project.path, "-o", sheet}).exitCode);
        drawn[isOn ? 1 : 0] = ReadBytes(std::filesystem::path(sheet));
    }
    EXPECT_THAT(drawn[0], testing::Not(HasSubstr("limit of survey")));
    EXPECT_THAT(drawn[1], HasSubstr("limit of survey"));
}

TEST(InitCommand, NeverOverwrites) {
    const std::string table = Square("easting,northing,depth\n", 4e5, 6e6, 5000, 40);
    for (const char* const taken : {"project.ini", "depths.col", "levels.cdf", "title-block.txt", "a.csv"}) {
        SCOPED_TRACE(taken);
        const TemporaryFolder folder;
        WriteBytes(folder.Path() / taken, "mine");
        const TemporaryFolder other;
        WriteBytes(other.Path() / "a.csv", table);
        const ProgramResult made =
            RunChartutil({"init", folder.Path().string(), "--soundings", (other.Path() / "a.csv").string()});
        EXPECT_EQ(1, made.exitCode);
        EXPECT_THAT(made.error, HasSubstr("is there already and stays as it is"));
        EXPECT_EQ("mine", ReadBytes(folder.Path() / taken));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}

TEST(InitCommand, LeavesNothingBehindWhereSoundingsCannotBeRead) {
    for (const char* const bytes : {"", "Dear Sirs,\n", "a,b,c\n1,2,3\n"}) {
        const NewProject project("a.csv", bytes);
        EXPECT_NE(0, project.made.exitCode);
        EXPECT_FALSE(std::filesystem::exists(project.path));
    }
}

TEST(InitCommand, MakesAProjectToBeFilledIn) {
    const TemporaryFolder folder;
    const std::string path = (folder.Path() / "chart").string();
    EXPECT_EQ(0, RunChartutil({"init", path}).exitCode);
    const ProgramResult checked = RunChartutil({"check", path});
    EXPECT_NE(0, checked.exitCode);
    EXPECT_THAT(checked.error, HasSubstr("soundings.csv: no such file"));
    WriteBytes(folder.Path() / "chart" / "soundings.csv", Square("", 4e5, 6e6, 5000, 40));
    EXPECT_EQ(0, RunChartutil({"check", path}).exitCode);
}

} // namespace
