// SPDX-License-Identifier: MIT
#include "tests/chartutil/gdal/SheetSamples.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

TEST(LineOnPaper, IsFoundAndCutByTheWayAlongIt) {
    const LineOnPaper line({{0, 0}, {10, 0}, {10, 0}, {10, 5}});
    EXPECT_EQ(15, line.Length());
    EXPECT_FALSE(line.IsClosed());
    struct Row {
        double way, x, y;
    };
    for (const Row& row :
         {Row{-1, 0, 0}, Row{0, 0, 0}, Row{4, 4, 0}, Row{10, 10, 0}, Row{12, 10, 2}, Row{99, 10, 5}}) {
        EXPECT_EQ(row.x, line.At(row.way).x) << row.way;
        EXPECT_EQ(row.y, line.At(row.way).y) << row.way;
    }
    const std::vector<Surface::Point> part = line.Part(4, 12);
    EXPECT_EQ(4, part.front().x);
    EXPECT_EQ(2, part.back().y);
    EXPECT_EQ(8, LineOnPaper(part).Length());
}

TEST(LineOnPaper, IsDrawnBesideItsGaps) {
    Surface surface(100, 100);
    DrawBroken(LineOnPaper({{0, 50}, {100, 50}}), {{40, 60}, {50, 70}, {70.5, 72}}, {}, surface);
    std::vector<double> ends;
    for (const Surface::Stroke& stroke : ShapesOf<Surface::Stroke>(surface)) {
        ends.push_back(stroke.points.front().x);
        ends.push_back(stroke.points.back().x);
    }
    EXPECT_THAT(ends, ElementsAre(0, 40, 72, 100)) << "half a millimetre between gaps is no line";
}

TEST(LineOnPaper, ASegmentIsCutAtABox) {
    struct Row {
        Surface::Point from, to;
        bool isWithin;
        double enters, leaves;
    };
    const Occupied::Box box = {10, 10, 20, 20};
    for (const Row& row : {Row{{0, 15}, {40, 15}, true, 0.25, 0.5}, Row{{12, 12}, {18, 18}, true, 0, 1},
                           Row{{15, 0}, {15, 40}, true, 0.25, 0.5}, Row{{0, 0}, {9, 9}, false, 0, 0},
                           Row{{0, 25}, {40, 25}, false, 0, 0}, Row{{0, 15}, {15, 30}, false, 0, 0},
                           Row{{5, 15}, {5, 15}, false, 0, 0}}) {
        const auto part = PartWithin(row.from, row.to, box);
        ASSERT_EQ(row.isWithin, part.has_value()) << row.from.x << ' ' << row.from.y;
        if (!part) continue;
        EXPECT_EQ(row.enters, part->first);
        EXPECT_EQ(row.leaves, part->second);
    }
}
