// SPDX-License-Identifier: MIT
#include "tests/support/Charts.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

// 400 mm by 300 mm of paper at 1 : 10 000, with lines at each 500 m and ticks at each 100 m.
Chart Harbour() {
    Chart chart("", 463000, 3352000, 464000, 3353000);
    chart.project.hasGrid = true;
    chart.project.scale = 10'000;
    chart.project.grid.SetXInterval(500);
    chart.project.grid.SetYInterval(500);
    chart.project.grid.SetXMinorTicks(5);
    chart.project.grid.SetYMinorTicks(5);
    chart.project.grid.SetTickSize(3);
    chart.project.grid.SetMinorTickSize(1);
    chart.project.gridText.SetSize(2);
    return chart;
}

using Strokes = std::vector<Surface::Stroke>;

Surface GridOf(const Chart& chart) {
    return chart.Drawn([](const Sheet& sheet, Surface& surface) {
        Occupied occupied;
        const MapGrid grid = PlaceGrid(sheet, occupied);
        DrawGrid(sheet, grid, occupied, surface);
    });
}

Strokes With(Chart& chart, std::uint32_t style) {
    chart.project.grid.SetGridStyle(style);
    return ShapesOf<Surface::Stroke>(GridOf(chart));
}

double LengthOf(const Surface::Stroke& stroke) {
    return std::hypot(stroke.points.back().x - stroke.points.front().x,
                      stroke.points.back().y - stroke.points.front().y);
}

bool IsUpright(const Surface::Stroke& stroke) { return stroke.points.front().x == stroke.points.back().x; }

} // namespace

TEST(MapGrid, EachFlagDrawsItsPart) {
    struct Row {
        std::uint32_t flag;
        bool isUpright;
        double length; // 0 for the map's
    };
    Chart chart = Harbour();
    const MapFrame frame = chart.Frame();
    for (const Row& row : {Row{GridInfo::X_TICKS, true, 3}, Row{GridInfo::Y_TICKS, false, 3},
                           Row{GridInfo::X_MINORTICKS, true, 1}, Row{GridInfo::Y_MINORTICKS, false, 1}}) {
        const Strokes strokes = With(chart, row.flag);
        ASSERT_FALSE(strokes.empty()) << row.flag;
        for (const Surface::Stroke& stroke : strokes) {
            EXPECT_EQ(row.isUpright, IsUpright(stroke)) << row.flag;
            EXPECT_NEAR(row.length, LengthOf(stroke), 1e-9) << row.flag;
            // At a multiple of the interval.
            const double x = frame.World().MinX() + (stroke.points[0].x - frame.Left()) * frame.UnitsPerMm();
            const double y = frame.World().MaxY() - (stroke.points[0].y - frame.Top()) * frame.UnitsPerMm();
            const double interval = row.length == 3 ? 500 : 100;
            EXPECT_NEAR(0, std::remainder(row.isUpright ? x : y, interval), 1e-6);
        }
    }
    for (const auto flag : {GridInfo::X_LINES, GridInfo::Y_LINES}) {
        const Strokes strokes = With(chart, flag);
        double drawn = 0; // it is broken at labels
        for (const Surface::Stroke& stroke : strokes) drawn += LengthOf(stroke);
        EXPECT_GT(drawn, frame.Height()) << flag;
        EXPECT_EQ(flag == GridInfo::X_LINES, IsUpright(strokes.front()));
    }
    const Strokes points = With(chart, GridInfo::POINTS);
    ASSERT_FALSE(points.empty());
    EXPECT_EQ(0u, points.size() % 2);
    for (const Surface::Stroke& stroke : points) EXPECT_NEAR(3, LengthOf(stroke), 1e-9);
    EXPECT_THAT(With(chart, 0), IsEmpty());
    EXPECT_THAT(With(chart, GridInfo::LONG_NORTHTICK), IsEmpty());
}

TEST(MapGrid, TheTickTowardsNorthIsLonger) {
    Chart chart = Harbour();
    const MapFrame frame = chart.Frame();
    for (const Surface::Stroke& stroke : With(chart, GridInfo::X_TICKS | GridInfo::LONG_NORTHTICK))
        EXPECT_NEAR(stroke.points[0].y < frame.Top() + 1 ? 6 : 3, LengthOf(stroke), 1e-9);
    for (const Surface::Stroke& arm : With(chart, GridInfo::POINTS | GridInfo::LONG_NORTHTICK))
        EXPECT_NEAR(IsUpright(arm) ? 4.5 : 3, LengthOf(arm), 1e-9);
}

TEST(MapGrid, LabelsAreGroupedMarkedAndWithinTheMap) {
    Chart chart = Harbour();
    chart.project.grid.SetEastingMark(L" mE");
    chart.project.grid.SetNorthingMark(L" mN");
    const MapFrame frame = chart.Frame();
    const Surface surface = GridOf(chart);
    EXPECT_THAT(TextsOf(surface), Contains("463 500 mE").Times(2)); // below and above
    EXPECT_THAT(TextsOf(surface), Contains("3 352 500 mN").Times(2));
    for (const Surface::Label& label : ShapesOf<Surface::Label>(surface)) {
        EXPECT_GT(label.x, frame.Left());
        EXPECT_LT(label.x + label.width, frame.Right());
        EXPECT_GT(label.y, frame.Top());
        EXPECT_LT(label.y, frame.Bottom());
    }
}

TEST(MapGrid, LabelsHaveTheDecimalsOfTheInterval) {
    Chart chart = Harbour();
    chart.world = {};
    chart.world.Update(-1.5, -1.5);
    chart.world.Update(1.5, 1.5);
    chart.project.hasCentre = true;
    chart.project.scale = 10;
    chart.project.grid.SetXInterval(0.5);
    chart.project.grid.SetYInterval(0.25);
    const std::vector<std::string> texts = TextsOf(GridOf(chart));
    EXPECT_THAT(texts, Contains("-0.5"));
    EXPECT_THAT(texts, Contains("0.25"));
}

TEST(MapGrid, LabelsAreThinnedWhereTicksAreClose) {
    Chart chart = Harbour();
    chart.project.grid.SetXInterval(20); // 2 mm
    chart.project.grid.SetXMinorTicks(0);
    std::vector<Surface::Label> below;
    const MapFrame frame = chart.Frame();
    for (const Surface::Label& label : ShapesOf<Surface::Label>(GridOf(chart)))
        if (label.y > frame.Bottom() - 6) below.push_back(label);
    ASSERT_GE(below.size(), 3u);
    std::ranges::sort(below, {}, &Surface::Label::x);
    for (std::size_t i = 1; i < below.size(); ++i) EXPECT_GT(below[i].x, below[i - 1].x + below[i - 1].width);
}

TEST(MapGrid, TextsKeepOffTicksAndLabels) {
    const Chart chart = Harbour();
    Occupied occupied;
    const MapFrame frame = chart.Frame();
    const MapGrid grid = PlaceGrid({chart.project, frame, chart.scene}, occupied);
    ASSERT_FALSE(grid.labels.empty());
    for (const PlacedText& label : grid.labels) EXPECT_FALSE(occupied.IsFree(label.Box(0)));
    for (const auto& line : grid.lines) {
        const Surface::Point middle = {(line[0].x + line[1].x) / 2, (line[0].y + line[1].y) / 2};
        EXPECT_FALSE(occupied.IsFree({middle.x - 0.1, middle.y - 0.1, middle.x + 0.1, middle.y + 0.1}));
    }
}

TEST(MapGrid, CrossesGiveWayToWhatIsWritten) {
    Chart chart = Harbour();
    chart.project.grid.SetGridStyle(GridInfo::POINTS);
    const MapFrame frame = chart.Frame();
    const Surface::Point crossing = frame({463500, 3352500});
    const Occupied::Box depth = {crossing.x - 1, crossing.y - 1, crossing.x + 1, crossing.y + 1};
    Occupied occupied;
    const MapGrid grid = PlaceGrid({chart.project, frame, chart.scene}, occupied);
    EXPECT_TRUE(occupied.IsFree(depth)) << "a depth can stand where lines would meet";
    const auto crosses = [&] {
        return ShapesOf<Surface::Stroke>(chart.Drawn([&](const Sheet& sheet, Surface& surface) {
                   DrawGrid(sheet, grid, occupied, surface);
               }))
            .size();
    };
    const std::size_t before = crosses();
    occupied.Take(depth);
    EXPECT_EQ(before - 2, crosses());
}

TEST(MapGrid, ReportsAnIntervalThatCannotBe) {
    for (const double interval : {0.0, -500.0, 1e-9, 1e-320, std::numeric_limits<double>::quiet_NaN()}) {
        Chart chart = Harbour();
        chart.project.grid.SetGridStyle(255);
        chart.project.grid.SetXInterval(interval);
        for (const Surface::Stroke& stroke : ShapesOf<Surface::Stroke>(GridOf(chart)))
            EXPECT_FALSE(IsUpright(stroke)) << interval;
        EXPECT_THAT(ReportsOf(L"Map Grid"), Contains(HasSubstr("XInterval"))) << interval;
    }
}

TEST(MapGrid, TakesAnySizeAndNumberOfTicks) {
    for (const float size : {-3.0F, 0.0F, 1e30F, std::numeric_limits<float>::quiet_NaN()}) {
        for (const int minor : {-1, 0, 1, 2'000'000'000}) {
            Chart chart = Harbour();
            chart.project.grid.SetGridStyle(255);
            chart.project.grid.SetTickSize(size);
            chart.project.grid.SetXMinorTicks(minor);
            const Surface surface = GridOf(chart);
            EXPECT_LT(surface.Shapes().size(), 20'000u);
            for (const Surface::Stroke& stroke : ShapesOf<Surface::Stroke>(surface))
                for (const Surface::Point& point : stroke.points) {
                    EXPECT_GE(point.y, 0);
                    EXPECT_LE(point.y, surface.Height());
                }
        }
    }
}

TEST(MapGrid, APointGridOfMillionsIsReported) {
    Chart chart = Harbour();
    chart.project.grid.SetGridStyle(GridInfo::POINTS);
    chart.project.grid.SetXInterval(2);
    chart.project.grid.SetYInterval(2);
    EXPECT_LT(GridOf(chart).Shapes().size(), 10'000u);
    EXPECT_THAT(ReportsOf(L"Map Grid"), Contains(HasSubstr("points")));
}
