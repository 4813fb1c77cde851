// SPDX-License-Identifier: MIT
#include "tests/support/Charts.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::SizeIs;

namespace {

// A bay at 1 : 150 000.
Chart Bay() {
    Chart chart("EPSG:26916", 463000, 3352000, 510000, 3386000);
    chart.project.hasGraticule = true;
    chart.project.scale = 150'000;
    chart.project.graticule.LonInterval(5.0 / 60);
    chart.project.graticule.LatInterval(5.0 / 60);
    chart.project.graticule.DegMinSecSymbols(true);
    chart.project.graticule.TrailingHemisphereIndicator(true);
    return chart;
}

Surface BorderOf(const Chart& chart) { return chart.Drawn(DrawBorder); }
Surface LinesOf(const Chart& chart) {
    return chart.Drawn(
        [](const Sheet& sheet, Surface& surface) { DrawGraticule(sheet, Occupied(), surface); });
}

// Nothing outside of the paper, and no places that are no numbers.
void ExpectOnPaper(const Surface& surface) {
    const auto expect = [&](double x, double y) {
        ASSERT_GE(x, -1e-6);
        ASSERT_LE(x, surface.Width() + 1e-6);
        ASSERT_GE(y, -1e-6);
        ASSERT_LE(y, surface.Height() + 1e-6);
    };
    for (const auto& rectangle : ShapesOf<Surface::FilledRectangle>(surface)) {
        expect(rectangle.x, rectangle.y);
        expect(rectangle.x + rectangle.width, rectangle.y + rectangle.height);
    }
    for (const auto& stroke : ShapesOf<Surface::Stroke>(surface))
        for (const Surface::Point& point : stroke.points) expect(point.x, point.y);
    for (const auto& label : ShapesOf<Surface::Label>(surface)) {
        expect(label.x, label.y);
        if (label.rotation == 0) expect(label.x + label.width, label.y);
    }
}

} // namespace

TEST(Border, BarsAlternateAlongEachSide) {
    const Chart chart = Bay();
    const MapFrame frame = chart.Frame();
    const Surface surface = BorderOf(chart);
    std::vector<Surface::FilledRectangle> above;
    for (const auto& bar : ShapesOf<Surface::FilledRectangle>(surface))
        if (bar.y + bar.height < frame.Top()) above.push_back(bar);
    ASSERT_GE(above.size(), 4u);
    for (std::size_t i = 1; i + 1 < above.size(); ++i) {
        // As long as what is before it, but for the projection.
        const double gap = above[i].x - (above[i - 1].x + above[i - 1].width);
        EXPECT_NEAR(above[i].width, gap, 0.05);
        EXPECT_GE(above[i].width, chart.project.borderStyle.barLength * 0.99);
        EXPECT_NEAR(chart.project.borderStyle.barWidth, above[i].height, 1e-9);
    }
}

TEST(Border, BarsStandOverEachSecondInterval) {
    const Chart chart = Bay();
    const MapFrame frame = chart.Frame();
    constexpr double kInterval = 5.0 / 60; // that of the labels, since two minutes do not divide it
    int bars = 0;
    for (const auto& bar : ShapesOf<Surface::FilledRectangle>(BorderOf(chart))) {
        if (bar.y + bar.height >= frame.Top()) continue;
        const double x = bar.x + bar.width / 2;
        std::vector<WorldPoint> middle = {
            {frame.World().MinX() + (x - frame.Left()) * frame.UnitsPerMm(), frame.World().MaxY()}};
        chart.scene.system->ToGeographic(middle);
        EXPECT_EQ(1, std::fabs(std::fmod(std::floor(middle[0].X() / kInterval), 2))) << middle[0].X();
        ++bars;
    }
    EXPECT_GE(bars, 4);
}

TEST(Border, ASideShorterThanAnIntervalHasOneBarAtMostToEachLine) {
    Chart chart = Bay();
    chart.project.borderStyle.barLength = 1000;
    const MapFrame frame = chart.Frame();
    const auto bars = ShapesOf<Surface::FilledRectangle>(BorderOf(chart));
    EXPECT_LE(bars.size(), 4u);
    for (const auto& bar : bars) {
        EXPECT_LE(bar.width, frame.Width() + 1e-6);
        EXPECT_LE(bar.height, frame.Height() + 1e-6);
    }
}

TEST(Border, LabelsAreFullAtLinesAndMinutesBetween) {
    Chart chart = Bay();
    chart.project.scale = 60'000;
    chart.project.paperWidth = 841;
    chart.project.paperHeight = 594;
    const std::vector<std::string> texts = TextsOf(BorderOf(chart));
    EXPECT_THAT(texts, Contains("11\u2032").Times(2));
    EXPECT_THAT(texts, Contains("87\u00B010\u2032W").Times(2)); // above and below
    EXPECT_THAT(texts, Contains("87\u00B0W").Times(2));         // whole degrees without minutes
    EXPECT_THAT(texts, Contains("30\u00B025\u2032N").Times(2));
    EXPECT_THAT(texts, Not(Contains(HasSubstr("60\u2032"))));
}

TEST(Border, TheFirstLabelOfASideIsFullWhereNoneElseIs) {
    Chart chart = Bay();
    chart.project.scale = 20'000; // a few minutes
    chart.project.borderStyle.labelSpacing = 60;
    chart.project.graticule.LonInterval(1.0 / 60);
    chart.project.graticule.LatInterval(1.0 / 60);
    const std::vector<std::string> texts = TextsOf(BorderOf(chart));
    int full = 0;
    for (const std::string& text : texts) full += text.find("\u00B0") != std::string::npos;
    EXPECT_EQ(4, full);
    EXPECT_GT(texts.size(), 8u);
}

TEST(Border, WritesAsTheRecordSays) {
    Chart chart = Bay();
    chart.project.graticule.TrailingHemisphereIndicator(false);
    chart.project.graticule.LatLonStyle(2);
    chart.project.graticule.LonInterval(0.1);
    chart.project.graticule.LatInterval(0.1);
    EXPECT_THAT(TextsOf(BorderOf(chart)), Contains("W87.1\u00B0"));
    chart.project.graticule.LatLonStyle(1);
    chart.project.graticule.DegMinSecSymbols(false);
    EXPECT_THAT(TextsOf(BorderOf(chart)), IsSupersetOf({"N 30 18 00", "24 00", "W 87"}));
}

TEST(Border, ReportsLinesThatTheDecimalsWouldRound) {
    Chart chart = Bay();
    chart.project.scale = 5000;
    chart.project.graticule.LatLonDecimals(0);
    chart.project.graticule.LonInterval(0.1 / 60);
    chart.project.graticule.LatInterval(0.1 / 60);
    chart.project.borderStyle.labelSpacing = 10;
    BorderOf(chart);
    EXPECT_THAT(ReportsOf(L"Graticule"), Contains(HasSubstr("LatLonDecimals")));
}

TEST(Border, ReportsLabelsThatHaveNoRoom) {
    Chart chart = Bay();
    chart.project.margin = 0;
    chart.project.borderStyle.room = 6;
    ExpectOnPaper(BorderOf(chart));
    EXPECT_THAT(ReportsOf(L"Border"), Contains(HasSubstr("Room")));
}

TEST(Border, KeepsToThePaperWhateverItIs) {
    for (const char* const system : {"", "EPSG:26916", "EPSG:4326", "EPSG:3413", "EPSG:3857"}) {
        for (const double paper : {1.0, 60.0, 400.0}) {
            for (const double interval : {0.0, 1e-9, 0.1, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
                Chart chart(system, -80, -80, 80, 80);
                chart.project.hasGraticule = true;
                chart.project.paperWidth = chart.project.paperHeight = paper;
                chart.project.graticule.LonInterval(interval);
                chart.project.graticule.LatInterval(interval);
                const Surface border = BorderOf(chart), lines = LinesOf(chart);
                if (paper >= 60) ExpectOnPaper(border);
                if (paper >= 60) ExpectOnPaper(lines);
                EXPECT_LT(border.Shapes().size() + lines.Shapes().size(), 100'000u);
            }
        }
    }
}

TEST(Border, IsALineAloneWithoutACoordinateSystem) {
    Chart chart("", 0, 0, 1000, 1000);
    chart.project.hasGraticule = true;
    EXPECT_EQ(1u, BorderOf(chart).Shapes().size());
    EXPECT_THAT(LinesOf(chart).Shapes(), IsEmpty());
    chart.project.border.SetEnable(false);
    EXPECT_THAT(BorderOf(chart).Shapes(), IsEmpty());
}

TEST(GraticuleLines, AreDrawnInTheStyleAndColorOfTheRecord) {
    Chart chart = Bay();
    chart.project.graticule.GridColor(0x0000FF); // red
    std::size_t lines = 0;
    for (const int style : {1, 7}) { // any other number is that of lines
        chart.project.graticule.GridStyle(style);
        const auto strokes = ShapesOf<Surface::Stroke>(LinesOf(chart));
        lines = strokes.size();
        ASSERT_GT(lines, 0u);
        EXPECT_EQ(RGBColor(255, 0, 0), strokes.front().pen.color);
    }
    chart.project.graticule.GridStyle(0);
    EXPECT_THAT(LinesOf(chart).Shapes(), IsEmpty());
    chart.project.graticule.GridStyle(2);
    chart.project.graticuleMark = 3;
    for (const auto& tick : ShapesOf<Surface::Stroke>(LinesOf(chart)))
        EXPECT_NEAR(3, std::hypot(tick.points[1].x - tick.points[0].x, tick.points[1].y - tick.points[0].y),
                    1e-9);
    chart.project.graticule.GridStyle(3);
    const auto crosses = ShapesOf<Surface::Stroke>(LinesOf(chart));
    ASSERT_GE(crosses.size(), 8u);
    for (const auto& arm : crosses)
        EXPECT_NEAR(3, std::hypot(arm.points[1].x - arm.points[0].x, arm.points[1].y - arm.points[0].y),
                    1e-9);
}

TEST(GraticuleLines, AreBrokenAtTexts) {
    const Chart chart = Bay();
    Occupied occupied;
    const Occupied::Box box = {60, 60, 340, 240};
    occupied.Take(box);
    const Surface surface =
        chart.Drawn([&](const Sheet& sheet, Surface& onto) { DrawGraticule(sheet, occupied, onto); });
    ASSERT_FALSE(surface.Shapes().empty());
    for (const auto& stroke : ShapesOf<Surface::Stroke>(surface))
        for (const Surface::Point& point : stroke.points)
            EXPECT_FALSE(point.x > box.left + 1e-6 && point.x < box.right - 1e-6 &&
                         point.y > box.top + 1e-6 && point.y < box.bottom - 1e-6);
}

TEST(GraticuleLines, ReportsAnIntervalThatCannotBe) {
    for (const double interval : {0.0, 1e-9, std::numeric_limits<double>::quiet_NaN()}) {
        Chart chart = Bay();
        chart.project.graticule.LonInterval(interval);
        EXPECT_FALSE(LinesOf(chart).Shapes().empty()); // the parallels
        EXPECT_THAT(ReportsOf(L"Graticule"), Contains(HasSubstr("LonInterval"))) << interval;
        EXPECT_THAT(ReportsOf(L"Graticule"), SizeIs(1));
    }
}
