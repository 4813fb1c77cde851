// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/Soundings.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "apps/chartutil/terminal/Errors.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

class Soundings : public ::testing::Test {
protected:
    std::vector<Sounding> Read(const std::string& name, const std::string& bytes) {
        WriteBytes(folder.Path() / name, bytes);
        project.soundings = UserText((folder.Path() / name).string());
        PlotErrorReporter::Get().Clear();
        return ReadSoundings(project);
    }

    // As "x y depth" each.
    std::string Text(const std::string& name, const std::string& bytes) {
        std::string text;
        for (const Sounding& s : Read(name, bytes))
            text += std::to_string(std::lround(s.place.X())) + ' ' +
                    std::to_string(std::lround(s.place.Y())) + ' ' +
                    std::to_string(std::lround(s.depth * 100)) + '\n';
        return text;
    }

    std::string Fault(const std::string& name, const std::string& bytes) {
        try {
            (void)Read(name, bytes);
        } catch (const CommandError& error) {
            return error.what();
        }
        return {};
    }

    static std::vector<std::string> Reports() {
        std::vector<std::string> reports;
        for (const ErrorString& error : PlotErrorReporter::Get()[L"Soundings"])
            reports.push_back(ToUtf8(error.Text()));
        return reports;
    }

    TemporaryFolder folder;
    Project project;
};

TEST_F(Soundings, TablesComeWithAnySeparatorHeaderAndLineEnd) {
    const std::string expected = "500000 6000000 150\n500100 6000100 -25\n";
    struct Row {
        const char *name, *bytes;
    };
    for (const Row& row : {
             Row{"a.csv", "easting,northing,depth\n500000,6000000,1.5\n500100,6000100,-.25\n"},
             Row{"a.csv", "\xEF\xBB\xBF"
                          "depth_m;Northing (m);EASTING\r\n1.5;6000000;500000\r\n\r\n-0.25;6000100;500100"},
             Row{"a.csv", "id;z;y;x\n1;1,5;6000000;500000\n2;-0,25;6000100;500100\n"},
             Row{"a.csv", "Tiefe;X;Y\n1,5;500000;6000000\n-0,25;500100;6000100\n"}, // what is left
             Row{"a.tsv", "x\ty\tz\n500000\t6000000\t1.5\n500100\t6000100\t-0.25\n"},
             Row{"a.xyz", "500000 6000000 1.5\n  500100\t 6000100   -0.25\n"},
             Row{"a.txt", "# easting northing depth\n500000 6000000 1.5\n# more\n500100 6000100 -0.25\n"},
             Row{"a", "500000,6000000,1.5\n500100,6000100,-0.25\n"},
             Row{"a.csv",
                 "name,x,y,depth\n\"a,b\",\"500000\",6000000,1.5\n\"two\nlines\",500100,6000100,-0.25\n"},
             Row{"a.csv",
                 "longitude,latitude,easting,northing,depth\n9,54,500000,6000000,1.5\n9,54,500100,6000100,"
                 "-0.25\n"},
         }) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(expected, Text(row.name, row.bytes));
        EXPECT_THAT(Reports(), ElementsAre());
    }
}

TEST_F(Soundings, ColumnsAreNamedOrNumbered) {
    const std::string table = "a,b,c\n1000,2000,3\n";
    project.xColumn = "b";
    project.yColumn = "1";
    project.depthColumn = "c";
    EXPECT_EQ("2000 1000 300\n", Text("a.csv", table));
    project.depthColumn = "d";
    EXPECT_THAT(Fault("a.csv", table),
                HasSubstr("a.csv:1: there is no column 'd'; write in [Soundings], or with --depth of "
                          "'chartutil init', which one is Depth, one of a, b, c"));
    project.xColumn.clear();
    EXPECT_THAT(Fault("a.csv", table), HasSubstr("no column has a usual name for X"));
}

TEST_F(Soundings, DepthsHaveAUnitAndADirection) {
    project.unit = UnitType::FEET;
    EXPECT_EQ("1000 2000 3048\n", Text("a.xyz", "1000 2000 100\n"));
    project.isDepthNegative = true;
    EXPECT_EQ("1000 2000 3048\n", Text("a.xyz", "1000 2000 -100\n"));
}

TEST_F(Soundings, TheFirstFaultsAreToldByLineAndTheRestIsCounted) {
    std::string table = "x,y,depth\n1000,2000,3\n";
    for (int i = 0; i < 30; ++i) table += "1000,none,3\n";
    EXPECT_EQ("1000 2000 300\n", Text("a.csv", table));
    const std::vector<std::string> reports = Reports();
    ASSERT_EQ(21u, reports.size());
    EXPECT_THAT(reports.front(), HasSubstr("a.csv:3: 'none' is no number, so there is no sounding"));
    EXPECT_THAT(reports.back(), HasSubstr("a.csv: 10 more soundings are left out like these"));
    for (const char* const line : {"1000,2000,nan", "1000,2000,inf", "1000,2000,1e999", "1000,2000",
                                   "1e300,1,1", "1000,2000,1e9", "1000,2000,0x10", ",,", "\"\",\"\",\"\""}) {
        EXPECT_EQ("1000 2000 300\n", Text("a.csv", std::string("x,y,depth\n1000,2000,3\n") + line + "\n"));
        EXPECT_EQ(1u, Reports().size()) << line;
    }
}

TEST_F(Soundings, WhatIsNoTableOfSoundingsIsRefused) {
    for (const char* const bytes :
         {"", "\n\n", "x,y,depth\n", "# nothing\n", "\x89PNG\r\n\x1A\n", "Dear Sirs,\n"})
        EXPECT_NE("", Fault("a.csv", bytes)) << bytes;
    EXPECT_NE("", Fault("a.csv", "x,y,depth\n\"1000,2000,3\n"));
    EXPECT_NE("", Fault("a.csv", std::string(3'000'000, '1')));
    EXPECT_NE("", Fault("a.csv", std::string(100, '\0')));
    EXPECT_NE("", Fault("a.geojson", "{\"type\":"));
    EXPECT_NE("", Fault("a.gpkg", "SQLite format 3"));
    project.soundings = UserText((folder.Path() / "none.csv").string());
    EXPECT_THROW(ReadSoundings(project), CommandError);
    project.soundings = UserText(folder.Path().string());
    EXPECT_THROW(ReadSoundings(project), CommandError);
    project.soundings = {};
    EXPECT_THROW(ReadSoundings(project), CommandError);
}

const char* const kPoints = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"depth":2.5},"geometry":{"type":"Point","coordinates":[9,54.2]}},
{"type":"Feature","properties":{"depth":null},"geometry":{"type":"Point","coordinates":[9,54.2]}},
{"type":"Feature","properties":{},"geometry":null},
{"type":"Feature","properties":{"depth":4},"geometry":{"type":"MultiPoint","coordinates":[[9,54.2],[9.001,54.2]]}}]})";

TEST_F(Soundings, ALayerBringsItsCoordinateSystem) {
    project.coordinateSystem = "EPSG:32632";
    // On the central meridian: 0.9996 of the meridian's arc, which Simpson's rule puts at 6005774.13 m.
    // series.
    EXPECT_EQ("500000 6005774 250\n500000 6005774 400\n500065 6005774 400\n", Text("a.geojson", kPoints));
    ASSERT_EQ(1u, Reports().size());
    EXPECT_THAT(Reports()[0], HasSubstr("a.geojson: a point has no depth"));
    project.depthColumn = "deep";
    EXPECT_THAT(Fault("a.geojson", kPoints), HasSubstr("has no attribute 'deep'"));
    project.depthColumn.clear();
    project.layer = "other";
    EXPECT_THAT(Fault("a.geojson", kPoints), HasSubstr("there is no layer 'other'; it has "));
}

TEST_F(Soundings, ATablesCoordinatesAreTurnedIntoTheCharts) {
    project.fileSystem = "EPSG:4326";
    project.coordinateSystem = "EPSG:32632";
    EXPECT_EQ("500000 6005774 100\n", Text("a.csv", "lon,lat,depth\n9,54.2,1\n"));
    EXPECT_EQ("500000 6005774 100\n", Text("a.csv", "lon,lat,depth\n9,54.2,1\n9,123,1\n"));
    EXPECT_FALSE(Reports().empty());
}

TEST_F(Soundings, NoChartIsDrawnInLongitudesAndLatitudes) {
    const std::string table = "lon,lat,depth\n9,54.2,1\n9.1,54.3,2\n";
    EXPECT_THAT(Fault("a.csv", table),
                HasSubstr("[Soundings] CoordinateSystem: the soundings have longitudes and "
                          "latitudes, which no chart can be drawn in; write EPSG:32632, and "
                          "FileCoordinateSystem = EPSG:4326"));
    project.coordinateSystem = "EPSG:4326";
    EXPECT_THAT(Fault("a.csv", table), HasSubstr("write EPSG:32632"));
    project.coordinateSystem = "EPSG:32632";
    EXPECT_THAT(Fault("a.csv", table), HasSubstr("FileCoordinateSystem: the soundings look like longitudes"));
    for (const char* const wrong : {"EPSG:1", "utm", "EPSG:2225" /* in feet */, "EPSG:5773" /* heights */,
                                    "/etc/passwd", "http://127.0.0.1:1/crs"}) {
        project.coordinateSystem = wrong;
        EXPECT_THAT(Fault("a.csv", table), HasSubstr(wrong));
    }
}

TEST(SuitableSystem, IsTheZoneOfUtmOrAMercatorProjection) {
    struct Row {
        const char* system;
        std::vector<WorldPoint> points;
        const char* suitable;
    };
    for (const Row& row : {
             Row{"EPSG:4326", {{-87.2, 30.3}, {-86.9, 30.6}}, "EPSG:32616"},
             Row{"EPSG:4269", {{-87.2, 30.3}, {-86.9, 30.6}}, "EPSG:26916"},
             Row{"EPSG:4258", {{9, 54}, {9.2, 54.2}}, "EPSG:25832"},
             Row{"EPSG:4326", {{151.2, -33.9}, {151.3, -33.8}}, "EPSG:32756"},
             Row{"EPSG:4326", {{179.9, -17}, {-179.9, -16.9}}, "EPSG:32760"}, // across the date line
             Row{"EPSG:4326", {{-180, 10}, {-179.9, 10.1}}, "EPSG:32601"},
             Row{"EPSG:4326", {{0, 85}, {10, 86}}, "EPSG:32661"},
             Row{"EPSG:4326",
                 {{-30, 40}, {-10, 50}},
                 "+proj=merc +lat_ts=45 +lon_0=-20 +datum=WGS84 +units=m"},
         }) {
        std::vector<WorldPoint> points = row.points;
        EXPECT_EQ(row.suitable, SuitableSystem(row.system, points));
    }
}

} // namespace
