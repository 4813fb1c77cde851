// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Scene.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "tests/chartutil/gdal/SheetSamples.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <set>

using ::testing::Each;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool IsClosed(const std::vector<WorldPoint>& points) { return points.front() == points.back(); }

// By the even-odd rule.
bool Contains(const std::vector<Area>& areas, const WorldPoint& place) {
    bool isInside = false;
    for (const Area& area : areas)
        for (const std::vector<WorldPoint>& ring : area)
            for (std::size_t i = 1; i < ring.size(); ++i) {
                const WorldPoint &a = ring[i - 1], &b = ring[i];
                if ((a.Y() > place.Y()) == (b.Y() > place.Y())) continue;
                if (place.X() < a.X() + (b.X() - a.X()) * (place.Y() - a.Y()) / (b.Y() - a.Y()))
                    isInside = !isInside;
            }
    return isInside;
}

double LengthOf(const std::vector<WorldPoint>& points) {
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].X() - points[i - 1].X(), points[i].Y() - points[i - 1].Y());
    return length;
}

} // namespace

TEST(Scene, ContoursRunWhereTheSurfaceHasTheirLevel) {
    Project project = PlainProject();
    AddLevels(project, {-5, 0, 6, 9.25, 10, 13, 100});
    const Chart chart(project, Survey(3000, Waves));
    std::set<double> found;
    for (const ContourLine& contour : chart.scene.contours) {
        found.insert(contour.level);
        for (const WorldPoint& point : contour.points)
            ASSERT_NEAR(contour.level, chart.scene.depths.ValueAt(point), 0.02)
                << point.X() << ' ' << point.Y();
    }
    EXPECT_THAT(found, ::testing::ElementsAre(6, 9.25, 10, 13));
}

TEST(Scene, AContourRoundAHillIsClosed) {
    Project project = PlainProject();
    AddLevels(project, {10});
    const Chart chart(project,
                      Survey(3000, [](double x, double y) { return 5 + std::hypot(x - 100, y - 75) / 8; }));
    ASSERT_THAT(chart.scene.contours, SizeIs(1));
    const std::vector<WorldPoint>& points = chart.scene.contours[0].points;
    EXPECT_TRUE(IsClosed(points));
    for (const WorldPoint& point : points) EXPECT_NEAR(40, std::hypot(point.X() - 100, point.Y() - 75), 1.5);
}

TEST(Scene, AClosedContourThatTheLimitCutsIsOneLine) {
    // Soundings on half of the map: the circle is an arc, wherever the tracing began.
    for (const bool isRight : {false, true}) {
        Project project = PlainProject();
        AddLevels(project, {10});
        std::vector<Sounding> soundings =
            Survey(6000, [](double x, double y) { return 5 + std::hypot(x - 100, y - 75) / 8; });
        std::erase_if(soundings, [&](const Sounding& s) { return (s.place.X() > 95) != isRight; });
        soundings.push_back({{100, 75}, 5}); // so that triangles close the circle on the other side, too
        const Chart chart(project, soundings);
        EXPECT_THAT(chart.scene.contours, SizeIs(1));
    }
}

TEST(Scene, ShortContoursAreSuppressedAndOfTheirTintsThoseOfHollows) {
    const auto cone = [](double x, double y) { return std::hypot(x - 100, y - 75); };
    const auto hill = [&](double x, double y) { return std::min(20.0, 5 + cone(x, y)); };
    const auto hollow = [&](double x, double y) { return std::max(0.0, 15 - cone(x, y)); };
    for (const auto& [shortest, count] : {std::pair(0.0, 1u), std::pair(20.0, 1u), std::pair(45.0, 0u)}) {
        for (const bool isHill : {true, false}) {
            Project project = PlainProject();
            AddLevels(project, {10}); // a circle of about 31 units
            project.colors.AddEntry(10, RGBColor(1, 2, 3));
            project.contours.SetSuppressionLength(shortest);
            const Chart chart(project, Survey(6000, isHill ? std::function(hill) : hollow));
            EXPECT_THAT(chart.scene.contours, SizeIs(count)) << shortest;
            const std::vector<Area>& tenAndDeeper = chart.scene.areas[0];
            EXPECT_EQ(!isHill && count == 1, Contains(tenAndDeeper, {100.1, 75.1})) << shortest;
            EXPECT_EQ(isHill, Contains(tenAndDeeper, {50.1, 75.1})) << shortest;
        }
    }
}

TEST(Scene, SmoothingShortensLinesAndKeepsEndsAndClosure) {
    const auto rough = [](double x, double y) {
        return x / 20 + 0.4 * std::sin(x * 1.7) * std::cos(y * 1.3);
    };
    double last = std::numeric_limits<double>::infinity();
    for (const int window : {0, 2, 8}) {
        Project project = PlainProject();
        AddLevels(project, {5});
        project.contours.SetSmoothingWindow(window);
        project.contours.SetSmoothingPasses(3);
        const Chart chart(project, Survey(20000, rough));
        double length = 0;
        for (const ContourLine& contour : chart.scene.contours) length += LengthOf(contour.points);
        EXPECT_LT(length, last) << window;
        last = length;
    }
}

TEST(Scene, TheSurfaceIsSmoothedAsFarAsTheProjectSays) {
    const auto rough = [](double x, double y) { return 10 + std::sin(x * 1.7) * std::cos(y * 1.3); };
    double last = std::numeric_limits<double>::infinity();
    for (const double smoothing : {0.0, 1.3, 4.0}) {
        Project project = PlainProject();
        project.smoothing = smoothing;
        const Chart chart(project, Survey(20000, rough));
        const auto [least, most] = std::ranges::minmax_element(chart.scene.depths.values);
        const double range = static_cast<double>(*most) - static_cast<double>(*least);
        EXPECT_LT(range, last) << smoothing;
        EXPECT_TRUE(smoothing > 0 || range > 1.9) << "as deep as the soundings are";
        last = range;
    }
}

TEST(Scene, AnyNumbersOfTheContourRecordEnd) {
    for (const int number : {-1, 9, 2147483647, -2147483647 - 1}) {
        Project project = PlainProject();
        AddLevels(project, {10});
        project.contours.SetSmoothingWindow(number);
        project.contours.SetSmoothingPasses(number);
        project.contours.SetSuppressionLength(kNaN);
        project.contours.SetLabelSpacing(std::numeric_limits<float>::quiet_NaN());
        EXPECT_FALSE(Chart(project, Survey(500, Waves)).scene.contours.empty());
    }
}

TEST(Scene, NothingIsTracedWhereContouringIsOff) {
    Project project = PlainProject();
    AddLevels(project, {10});
    project.contours.SetEnableContouring(false);
    EXPECT_THAT(Chart(project, Survey(500, Waves)).scene.contours, IsEmpty());
}

TEST(Scene, AreasLieWhereTheSurfaceIsAtTheirValueAndDeeper) {
    Project project = PlainProject();
    for (const double value : {-3.0, 6.0, 10.0, 13.0, 50.0})
        project.colors.AddEntry(value, RGBColor(1, 2, 3));
    const Chart chart(project, Survey(3000, Waves));
    const Grid& depths = chart.scene.depths;
    for (int column = 0; column < depths.columns; column += 3)
        for (int row = 0; row < depths.rows; row += 3) {
            const WorldPoint place(depths.box.MinX() + (column + 0.5) * depths.CellWidth(),
                                   depths.box.MinY() + (row + 0.5) * depths.CellHeight());
            for (int i = 0; i < project.colors.NumEntries(); ++i) {
                const double above =
                    static_cast<double>(depths.At(column, row)) - project.colors.EntryValue(i);
                if (std::fabs(above) < 0.05) continue; // at the edge itself
                ASSERT_EQ(above > 0, Contains(chart.scene.areas[static_cast<std::size_t>(i)], place))
                    << column << ' ' << row << ' ' << i;
            }
            if (std::fabs(chart.scene.coverage.ValueAt(place)) > 0.1) {
                ASSERT_EQ(chart.scene.coverage.ValueAt(place) < 0, Contains(chart.scene.unknown, place));
            }
        }
}

TEST(Scene, AreasEndAtTheContoursThatAreSmoothedLikeThem) {
    Project project = PlainProject();
    AddLevels(project, {10});
    project.colors.AddEntry(10, RGBColor(1, 2, 3));
    project.contours.SetSmoothingWindow(8);
    project.contours.SetSmoothingPasses(5);
    project.reach = 200; // all is known
    const Chart chart(project, Survey(3000, Waves));
    std::set<std::pair<double, double>> corners;
    for (const Area& area : chart.scene.areas[0])
        for (const auto& ring : area)
            for (const WorldPoint& point : ring)
                corners.emplace(std::round(point.X() * 1e4), std::round(point.Y() * 1e4));
    std::size_t points = 0, found = 0;
    for (const ContourLine& contour : chart.scene.contours)
        for (const WorldPoint& point : contour.points) {
            ++points;
            found += corners.count({std::round(point.X() * 1e4), std::round(point.Y() * 1e4)});
        }
    EXPECT_GT(points, 100u);
    EXPECT_GE(found, points * 98 / 100) << points;
}

TEST(Scene, NothingIsDrawnWhereNoSoundingIsNear) {
    Project project = PlainProject();
    AddLevels(project, {8, 10, 12});
    std::vector<Sounding> soundings = Survey(3000, Waves);
    std::erase_if(soundings, [](const Sounding& s) { return s.place.X() > 60 && s.place.X() < 140; });
    const Chart chart(project, soundings);
    for (const ContourLine& contour : chart.scene.contours)
        for (const WorldPoint& point : contour.points)
            EXPECT_TRUE(point.X() < 60 + 1.5 * project.reach || point.X() > 140 - 1.5 * project.reach)
                << point.X();
    EXPECT_TRUE(Contains(chart.scene.unknown, {100.1, 75.1}));
    EXPECT_FALSE(Contains(chart.scene.unknown, {30.1, 75.1}));
    EXPECT_FALSE(chart.scene.limit.empty());
}

TEST(Scene, FewAndOddSoundingsAreDrawn) {
    const std::vector<std::vector<Sounding>> surveys = {
        {{{100, 75}, 7}},
        {{{90, 75}, 3}, {{110, 75}, 9}},
        {{{90, 65}, 3}, {{100, 75}, 5}, {{110, 85}, 9}},
        {{{100, 75}, 7}, {{100, 75}, 3}, {{100, 75}, 9}},
        {{{100, 75}, 7}, {{kNaN, 75}, 3}, {{100, kNaN}, 9}, {{101, 75}, kNaN}, {{102, 75}, 1e300}},
        Survey(200, [](double, double) { return 5; }), // exactly at a level
    };
    for (std::size_t i = 0; i < surveys.size(); ++i) {
        SCOPED_TRACE(i);
        Project project = PlainProject();
        AddLevels(project, {5, 6});
        project.colors.AddEntry(0, RGBColor(1, 2, 3));
        project.colors.AddEntry(5, RGBColor(1, 2, 3));
        const Chart chart(project, surveys[i]);
        EXPECT_GT(chart.scene.coverage.ValueAt({100, 75}), 0);
        EXPECT_THAT(chart.scene.areas, SizeIs(2));
        for (const float depth : chart.scene.depths.values) ASSERT_TRUE(std::isfinite(depth));
    }
}

TEST(Scene, OfDepthsAtOnePlaceTheShoalestCounts) {
    const Chart chart(PlainProject(), {{{100, 75}, 7}, {{100, 75}, 3}, {{100, 75}, 9}});
    EXPECT_EQ(3.0F, chart.scene.depths.values.front());
}

TEST(Scene, ASheetOfCountlessCellsHasCoarserOnesAndSaysSo) {
    PlotErrorReporter::Get().Clear();
    Project project = PlainProject();
    project.paperWidth = project.paperHeight = 5000;
    project.cellSize = 0.05;
    const Chart chart(project, {{{100, 75}, 2}});
    EXPECT_LE(chart.scene.depths.values.size(), 5'000'000u);
    ASSERT_EQ(1u, PlotErrorReporter::Get()[L"Surface"].size());
    EXPECT_NE(std::wstring::npos, PlotErrorReporter::Get()[L"Surface"].front().Text().find(L"CellSize"));
    PlotErrorReporter::Get().Clear();
}

TEST(Scene, OfThousandsOfLevelsAndColoursTheShoalestAreDrawn) {
    PlotErrorReporter::Get().Clear();
    Project project = PlainProject();
    project.cellSize = 4;
    for (int i = 0; i < 2000; ++i) {
        AddLevels(project, {i * 0.01});
        project.colors.AddEntry(i * 0.01, 0xC86464);
    }
    const Chart chart(project, Survey(300, [](double x, double) { return 1 + x / 11; }));
    double deepest = 0;
    for (const ContourLine& line : chart.scene.contours) deepest = std::max(deepest, line.level);
    const auto shoalest = static_cast<double>(std::ranges::min(chart.scene.depths.values));
    EXPECT_NEAR(shoalest + 5, deepest, 0.1);
    EXPECT_EQ(1u, PlotErrorReporter::Get()[L"Surface"].size());
    EXPECT_EQ(1u, PlotErrorReporter::Get()[L"Contours"].size());
    PlotErrorReporter::Get().Clear();
}

TEST(Scene, AMapBesideItsSoundingsIsEmptyAndSaysSo) {
    PlotErrorReporter::Get().Clear(L"Soundings");
    Project project = PlainProject();
    project.centreX = 1e6;
    AddLevels(project, {5});
    project.colors.AddEntry(0, RGBColor(1, 2, 3));
    const Chart chart(project, Survey(200, Waves));
    EXPECT_THAT(chart.scene.contours, IsEmpty());
    EXPECT_TRUE(Contains(chart.scene.unknown, {1e6, 75}));
    ASSERT_THAT(PlotErrorReporter::Get()[L"Soundings"], SizeIs(1));
    PlotErrorReporter::Get().Clear(L"Soundings");
}

TEST(Scene, FarFromTheOriginTheMapIsTheSame) {
    Project project = PlainProject();
    AddLevels(project, {8, 10, 12});
    const std::vector<Sounding> soundings = Survey(1000, Waves);
    const Chart near(project, soundings);
    constexpr double kFar = 1e7;
    project.centreX += kFar;
    project.centreY -= kFar;
    std::vector<Sounding> moved = soundings;
    for (Sounding& s : moved) s.place = {s.place.X() + kFar, s.place.Y() - kFar};
    const Chart far(project, moved);
    for (std::size_t i = 0; i < near.scene.depths.values.size(); ++i)
        ASSERT_NEAR(near.scene.depths.values[i], far.scene.depths.values[i], 1e-3) << i;
    EXPECT_EQ(near.scene.contours.size(), far.scene.contours.size());
}
