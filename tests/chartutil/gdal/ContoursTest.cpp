// SPDX-License-Identifier: MIT
#include "tests/chartutil/gdal/SheetSamples.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <map>

using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

struct Drawn {
    explicit Drawn(const Chart& chart, Occupied occupied = {})
        : surface(chart.project.paperWidth, chart.project.paperHeight),
          labels(DrawContours(chart.sheet, chart.contours, occupied, surface)) {}

    Surface surface;
    std::vector<PlacedText> labels;
};

Project Labelled(ContourInfo::label_orientation orientation = ContourInfo::OPTIMUM_TEXT_ANGLE) {
    Project project = PlainProject();
    AddLevels(project, {6, 8, 10, 12, 14}, true);
    project.contours.SetLabelSpacing(60);
    project.contours.SetLabelOrientation(orientation);
    return project;
}

// Its four corners, of its text alone.
std::array<Surface::Point, 4> Corners(const PlacedText& label) {
    std::array<Surface::Point, 4> corners;
    for (int i = 0; i < 4; ++i)
        corners[static_cast<std::size_t>(i)] = {label.place.x + label.parts[0].box.Corner(i).X(),
                                                label.place.y - label.parts[0].box.Corner(i).Y()};
    return corners;
}

// Whether a line runs through the text: the convex corners lie on both sides of a part of it.
bool RunsThrough(const Surface::Point& a, const Surface::Point& b, const PlacedText& label) {
    const std::array<Surface::Point, 4> corners = Corners(label);
    for (double share = 0; share <= 1; share += 0.02) {
        const Surface::Point at = {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
        int left = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const Surface::Point &p = corners[i], &q = corners[(i + 1) % 4];
            left += (q.x - p.x) * (at.y - p.y) - (q.y - p.y) * (at.x - p.x) > 0;
        }
        if (left == 0 || left == 4) return true;
    }
    return false;
}

// Clockwise from where a text runs to the right, from -180 to 180.
double TurnOf(const PlacedText& label) { return std::remainder(label.parts[0].box.Rotation().Get(), 360); }

} // namespace

TEST(Contours, LabelsAreNeverUpsideDown) {
    for (const auto orientation :
         {ContourInfo::OPTIMUM_TEXT_ANGLE, ContourInfo::LOW_TO_HIGH, ContourInfo::HIGH_TO_LOW}) {
        const Drawn drawn{Chart(Labelled(orientation), Survey(3000, Waves))};
        ASSERT_THAT(drawn.labels, SizeIs(Ge(10u)));
        for (const PlacedText& label : drawn.labels) {
            EXPECT_GE(TurnOf(label), -90.001);
            EXPECT_LE(TurnOf(label), 90.001);
        }
    }
}

TEST(Contours, TopsOfLabelsArePutTowardsTheSideThatTheRecordNames) {
    // Round a shoal there is a place for either.
    const auto shoal = [](double x, double y) { return 2 + std::hypot(x - 100, y - 75) / 5; };
    for (const auto& [orientation, isAbove] :
         {std::pair(ContourInfo::LOW_TO_HIGH, true), std::pair(ContourInfo::HIGH_TO_LOW, false)}) {
        Project project = Labelled(orientation);
        project.contours.SetLabelSpacing(1000); // one each
        const Chart chart(project, Survey(4000, shoal));
        const Drawn drawn(chart);
        ASSERT_THAT(drawn.labels, SizeIs(Ge(3u)));
        for (const PlacedText& label : drawn.labels) {
            const double up = (TurnOf(label) - 90) * M_PI / 180;
            const auto depth = [&](double way) {
                return chart.scene.depths.ValueAt(chart.frame.WorldAt(
                    {label.place.x + way * std::cos(up), label.place.y + way * std::sin(up)}));
            };
            EXPECT_EQ(isAbove, depth(2) > depth(-2));
        }
    }
}

TEST(Contours, ALineIsInterruptedForItsLabelAndByNoOtherCrossed) {
    const Chart chart(Labelled(), Survey(3000, Waves));
    const Drawn drawn(chart);
    ASSERT_THAT(drawn.labels, SizeIs(Ge(10u)));
    for (const Surface::Stroke& stroke : ShapesOf<Surface::Stroke>(drawn.surface))
        for (std::size_t i = 1; i < stroke.points.size(); ++i)
            for (const PlacedText& label : drawn.labels)
                ASSERT_FALSE(RunsThrough(stroke.points[i - 1], stroke.points[i], label))
                    << label.place.x << ' ' << label.place.y;
}

TEST(Contours, LabelsStandOnTheirLineAndAlongIt) {
    const Chart chart(Labelled(), Survey(3000, Waves));
    for (const PlacedText& label : Drawn(chart).labels) {
        const double level = std::stod(label.parts[0].lines[0].text);
        EXPECT_NEAR(level, chart.scene.depths.ValueAt(chart.frame.WorldAt(label.place)), 0.15);
        const double along = TurnOf(label) * M_PI / 180;
        for (const double way : {-1.0, 1.0})
            EXPECT_NEAR(level,
                        chart.scene.depths.ValueAt(chart.frame.WorldAt(
                            {label.place.x + way * std::cos(along), label.place.y + way * std::sin(along)})),
                        0.25);
    }
}

TEST(Contours, LabelsAreTurnedByTheirLineAlone) {
    Project turned = Labelled();
    turned.contourLabels.SetRotation(Angle(30.0));
    const std::vector<PlacedText> labels = Drawn(Chart(Labelled(), Survey(3000, Waves))).labels,
                                  others = Drawn(Chart(turned, Survey(3000, Waves))).labels;
    ASSERT_EQ(labels.size(), others.size());
    for (std::size_t i = 0; i < labels.size(); ++i) EXPECT_NEAR(TurnOf(labels[i]), TurnOf(others[i]), 1e-6);
}

TEST(Contours, LabelsOverlapNoOtherTextAndKeepWithinTheFrame) {
    const Chart chart(Labelled(), Survey(3000, Waves));
    Occupied occupied;
    const std::vector<PlacedText> depths = PlaceSoundings(chart.sheet, chart.contours, occupied);
    const Drawn drawn(chart, occupied);
    ASSERT_THAT(drawn.labels, SizeIs(Ge(5u)));
    for (std::size_t i = 0; i < drawn.labels.size(); ++i) {
        const Occupied::Box box = drawn.labels[i].Box(0);
        EXPECT_TRUE(chart.frame.IsWithin(box));
        for (const PlacedText& depth : depths) EXPECT_FALSE(Overlap(box, depth.Box(0)));
        for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(Overlap(box, drawn.labels[j].Box(0)));
    }
}

TEST(Contours, NoLineRunsThroughADepthOrAPanel) {
    const Chart chart(Labelled(), Survey(3000, Waves));
    Occupied occupied;
    const Occupied::Box panel = {60, 60, 110, 90};
    occupied.Take(panel);
    const std::vector<PlacedText> depths = PlaceSoundings(chart.sheet, chart.contours, occupied);
    const Drawn drawn(chart, occupied);
    for (const Surface::Stroke& stroke : ShapesOf<Surface::Stroke>(drawn.surface))
        for (std::size_t i = 1; i < stroke.points.size(); ++i) {
            const auto isCrossed = [&](const Occupied::Box& box) {
                const auto part = PartWithin(stroke.points[i - 1], stroke.points[i], box);
                return part && part->second - part->first > 1e-6;
            };
            ASSERT_FALSE(isCrossed(panel));
            for (const PlacedText& depth : depths) ASSERT_FALSE(isCrossed(depth.Box(0)));
        }
}

TEST(Contours, StayWholeAsFarAsNumbersLetThem) {
    const Chart chart(Labelled(), Survey(3000, Waves));
    Occupied occupied;
    PlaceSoundings(chart.sheet, chart.contours, occupied);
    const auto length = [](const std::vector<Surface::Point>& points) {
        return LineOnPaper(points).Length();
    };
    double all = 0, drawn = 0;
    for (const DrawnContours::Contour& contour : chart.contours.Contours()) all += contour.line.Length();
    for (const Surface::Stroke& stroke : ShapesOf<Surface::Stroke>(Drawn(chart, occupied).surface)) {
        drawn += length(stroke.points);
        EXPECT_GT(length(stroke.points), 0);
    }
    EXPECT_GT(drawn, 0.8 * all);
}

TEST(Contours, EachLevelHasItsOwnLook) {
    Project project = PlainProject();
    const ContourDefinitionList::ContourDefInfo looks[] = {
        {0.1F, 0, 8, 0x0000FF, false}, {0.2F, 1, 10, 0x00FF00, true}, {0.4F, 2, 12, 0xFF0000, false}};
    for (const auto& look : looks) project.levels.Add(look);
    project.contours.SetLabelSpacing(80);
    const Chart chart(project, Survey(3000, Waves));
    const Drawn drawn(chart);
    std::map<unsigned long, std::pair<double, std::size_t>> pens;
    for (const Surface::Stroke& stroke : ShapesOf<Surface::Stroke>(drawn.surface))
        pens[stroke.pen.color] = {stroke.pen.width, stroke.pen.dashes.size()};
    ASSERT_THAT(pens, SizeIs(3));
    for (const auto& look : looks) {
        EXPECT_NEAR(static_cast<double>(look.lineWidth), pens[look.trueColor].first, 1e-6);
        EXPECT_EQ(look.lineType == 0, pens[look.trueColor].second == 0);
    }
    ASSERT_FALSE(drawn.labels.empty());
    for (const PlacedText& label : drawn.labels) EXPECT_EQ(L"10", label.parts[0].lines[0].text);
}

TEST(Contours, LinesEndAtTheProjectsGapFromTheirLabel) {
    const auto lengthWith = [](double gap) {
        Project project = PlainProject();
        AddLevels(project, {5}, true);
        project.reach = 100;
        project.contours.SetLabelSpacing(1000);
        project.contourLabelGap = gap;
        const Drawn drawn{Chart(project, Survey(4000, [](double x, double) { return x / 20; }))};
        EXPECT_THAT(drawn.labels, SizeIs(1));
        double length = 0;
        for (const auto& stroke : ShapesOf<Surface::Stroke>(drawn.surface))
            for (std::size_t i = 1; i < stroke.points.size(); ++i)
                length += std::hypot(stroke.points[i].x - stroke.points[i - 1].x,
                                     stroke.points[i].y - stroke.points[i - 1].y);
        return length;
    };
    EXPECT_NEAR(2 * 4.0, lengthWith(1) - lengthWith(5), 0.01);
}

TEST(Contours, LabelsNeedRoomOnTheirLine) {
    Project project = PlainProject();
    AddLevels(project, {10}, true);
    const auto hollow = [](double x, double y) { return 12 - std::hypot(x - 100, y - 75); };
    EXPECT_THAT(Drawn(Chart(project, Survey(20000, hollow))).labels, IsEmpty()) << "a circle of 4 mm";
}

TEST(Contours, LevelsAreWrittenWithUpToTwoDecimals) {
    Project project = PlainProject();
    AddLevels(project, {2.5}, true);
    project.contours.SetLabelSpacing(1000);
    const Drawn drawn{Chart(project, Survey(2000, [](double x, double) { return x / 40; }))};
    ASSERT_THAT(drawn.labels, SizeIs(1));
    EXPECT_EQ(L"2.5", drawn.labels[0].parts[0].lines[0].text);
}

TEST(Contours, LabelsComeAtTheRecordsSpacing) {
    const auto slope = [](double x, double) { return x / 20; };
    for (const auto& [spacing, count] :
         {std::pair(1000.0F, 1u), std::pair(70.0F, 2u), std::pair(30.0F, 5u)}) {
        Project project = PlainProject();
        AddLevels(project, {5}, true);
        project.reach = 100;
        project.contours.SetLabelSpacing(spacing);
        EXPECT_THAT(Drawn(Chart(project, Survey(4000, slope))).labels, SizeIs(count)) << spacing;
    }
}
