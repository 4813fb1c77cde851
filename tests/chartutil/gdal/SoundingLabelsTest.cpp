// SPDX-License-Identifier: MIT
#include "tests/chartutil/gdal/SheetSamples.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

// Whether none that is shoaler, or as shoal and earlier, is in the sounding's square or in one about it.
bool IsShoalestAbout(const Chart& chart, const std::vector<Sounding>& soundings, std::size_t sounding) {
    const double side = chart.project.shoalSquare * static_cast<double>(chart.project.depthLabels.Size());
    const auto square = [&](const Sounding& s) {
        const Surface::Point at = chart.frame(s.place);
        return std::pair(std::floor((at.x - chart.frame.Left()) / side),
                         std::floor((at.y - chart.frame.Top()) / side));
    };
    const auto [column, row] = square(soundings[sounding]);
    for (std::size_t i = 0; i < soundings.size(); ++i) {
        if (chart.frame.World().Classify(soundings[i].place) != GTL::CLS::INSIDE) continue;
        const bool isBefore = soundings[i].depth < soundings[sounding].depth ||
                              (soundings[i].depth == soundings[sounding].depth && i < sounding);
        if (!isBefore) continue;
        const auto [otherColumn, otherRow] = square(soundings[i]);
        if (std::fabs(column - otherColumn) <= 1 && std::fabs(row - otherRow) <= 1) return false;
    }
    return true;
}

// By going through all segments.
bool IsCrossed(const Chart& chart, const Occupied::Box& box) {
    for (const DrawnContours::Contour& contour : chart.contours.Contours()) {
        const std::vector<Surface::Point>& points = contour.line.Points();
        for (std::size_t i = 1; i < points.size(); ++i)
            if (PartWithin(points[i - 1], points[i], box)) return true;
    }
    return false;
}

bool IsPlaced(const std::vector<PlacedText>& placed, const Surface::Point& place) {
    return std::ranges::any_of(
        placed, [&](const PlacedText& text) { return text.place.x == place.x && text.place.y == place.y; });
}

} // namespace

TEST(SoundingLabels, EachIsShownUnlessAShoalerOneThePanelTheFrameOrAContourIsInItsWay) {
    struct Row {
        double gap, contourGap, shoalSquare;
    };
    for (const auto& [gap, contourGap, shoalSquare] :
         {Row{0, 0.2, 5}, Row{3, 0.2, 5}, Row{0, 2, 5}, Row{0, 0, 2}, Row{0, 0.2, 12}}) {
        SCOPED_TRACE(testing::Message() << gap << ' ' << contourGap << ' ' << shoalSquare);
        Project project = PlainProject();
        project.depthLabelGap = gap;
        project.contourGap = contourGap;
        project.shoalSquare = shoalSquare;
        AddLevels(project, {8, 10, 12});
        const std::vector<Sounding> soundings = Survey(1500, Waves);
        const Chart chart(project, soundings);
        const Occupied::Box panel = {chart.frame.Left() + 20, chart.frame.Top() + 30, chart.frame.Left() + 70,
                                     chart.frame.Top() + 60};
        Occupied occupied;
        occupied.Take(panel);
        const std::vector<PlacedText> placed = PlaceSoundings(chart.sheet, chart.contours, occupied);
        ASSERT_GT(placed.size(), 200u);

        for (std::size_t i = 0; i < placed.size(); ++i) {
            const Occupied::Box box = placed[i].Box(gap / 2);
            EXPECT_TRUE(chart.frame.IsWithin(box));
            EXPECT_FALSE(Overlap(box, panel));
            for (std::size_t j = 0; j < i; ++j)
                ASSERT_FALSE(Overlap(box, placed[j].Box(gap / 2))) << i << ' ' << j;
        }
        int crossed = 0;
        for (std::size_t i = 0; i < soundings.size(); ++i) {
            const Sounding& sounding = soundings[i];
            if (chart.frame.World().Classify(sounding.place) != GTL::CLS::INSIDE) continue;
            const Surface::Point place = chart.frame(sounding.place);
            const PlacedText label = PlaceDepth(project.depthLabels, sounding.depth, place);
            const Occupied::Box box = label.Box(gap / 2);
            if (IsPlaced(placed, place)) {
                if (IsCrossed(chart, label.Box(project.contourGap))) {
                    EXPECT_TRUE(IsShoalestAbout(chart, soundings, i)) << i;
                }
                continue;
            }
            const bool isInTheWay =
                !chart.frame.IsWithin(box) || Overlap(box, panel) ||
                std::ranges::any_of(soundings, [&](const Sounding& other) {
                    const Surface::Point at = chart.frame(other.place);
                    return other.depth <= sounding.depth && IsPlaced(placed, at) &&
                           Overlap(box, PlaceDepth(project.depthLabels, other.depth, at).Box(gap / 2));
                });
            if (isInTheWay) continue;
            ++crossed;
            EXPECT_TRUE(IsCrossed(chart, label.Box(project.contourGap))) << i;
            EXPECT_FALSE(IsShoalestAbout(chart, soundings, i)) << i;
        }
        EXPECT_GT(crossed, 0) << "the survey has soundings at its contours";
    }
}

TEST(SoundingLabels, TheShoalestOfAllIsShown) {
    Project project = PlainProject();
    std::vector<Sounding> soundings = Survey(5000, Waves);
    soundings.push_back({{83, 61}, -2.5});
    const Chart chart(project, soundings);
    Occupied occupied;
    const std::vector<PlacedText> placed = PlaceSoundings(chart.sheet, chart.contours, occupied);
    EXPECT_EQ(chart.frame({83, 61}).x, placed.front().place.x);
}

TEST(SoundingLabels, TakeTheirPlaces) {
    const Chart chart(PlainProject(), {{{83, 61}, 2.5}});
    Occupied occupied;
    const std::vector<PlacedText> placed = PlaceSoundings(chart.sheet, chart.contours, occupied);
    ASSERT_THAT(placed, SizeIs(1));
    EXPECT_FALSE(occupied.IsFree(placed[0].Box(0)));
    EXPECT_THAT(PlaceSoundings(chart.sheet, chart.contours, occupied), IsEmpty());
}

TEST(SoundingLabels, OfOnePlaceTheShoalestIsShown) {
    const Chart chart(PlainProject(), {{{83, 61}, 4}, {{83, 61}, 2}, {{83, 61}, 3}});
    Occupied occupied;
    const std::vector<PlacedText> placed = PlaceSoundings(chart.sheet, chart.contours, occupied);
    ASSERT_THAT(placed, SizeIs(1));
    EXPECT_EQ(L"2", placed[0].parts[0].lines[0].text);
}

TEST(SoundingLabels, BesideTheMapAreNotShown) {
    const Chart chart(PlainProject(), {{{100, 75}, 4}, {{-5, 75}, 1}, {{100, 155}, 1}, {{0.1, 75}, 2}});
    Occupied occupied;
    EXPECT_THAT(PlaceSoundings(chart.sheet, chart.contours, occupied), SizeIs(1))
        << "one would be cut by the frame";
}

TEST(SoundingLabels, ADryingHeightIsUnderlinedAndHasNoSign) {
    DepthLabelInfo style;
    style.FromString(L"Liberation Sans,2,0,8,250,0,0,0,0,0,1,2,1,1,0,1,0");
    const PlacedText dry = PlaceDepth(style, -1.25, {});
    ASSERT_THAT(dry.parts, SizeIs(2));
    EXPECT_EQ(L"1", dry.parts[0].lines[0].text);
    EXPECT_EQ(L"3", dry.parts[1].lines[0].text) << "no less height than there is";
    EXPECT_TRUE(dry.parts[0].style.Style() & TextInfo::UNDERLINE);
    EXPECT_FALSE(dry.parts[1].style.Style() & TextInfo::UNDERLINE);
    EXPECT_FALSE(PlaceDepth(style, 1.25, {}).parts[0].style.Style() & TextInfo::UNDERLINE);
    style.SetUnderlineDryingHeights(false);
    EXPECT_EQ(L"-1", PlaceDepth(style, -1.25, {}).parts[0].lines[0].text);
}

TEST(SoundingLabels, ShowNoMoreDepthThanThereIs) {
    struct Row {
        double depth;
        const wchar_t *whole, *decimals;
    };
    DepthLabelInfo style;
    style.FromString(L"Liberation Sans,2,0,8,250,0,0,0,0,0,1,2,1,1,0,1,0");
    for (const Row& row : {Row{1.21, L"1", L"2"}, Row{1.29, L"1", L"2"}, Row{1.3, L"1", L"3"},
                           Row{9.99, L"9", L"9"}, Row{-0.01, L"0", L"1"}, Row{-1.2, L"1", L"2"}}) {
        SCOPED_TRACE(row.depth);
        const PlacedText label = PlaceDepth(style, row.depth, {});
        ASSERT_THAT(label.parts, SizeIs(2));
        EXPECT_EQ(row.whole, label.parts[0].lines[0].text);
        EXPECT_EQ(row.decimals, label.parts[1].lines[0].text);
    }
}
