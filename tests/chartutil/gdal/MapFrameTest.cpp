// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/MapFrame.h"

#include <gtest/gtest.h>

namespace {

// A survey so wide and so high, in metres, on a map of 200 by 100 mm.
double FittingScale(double width, double height) {
    Project project;
    project.margin = project.borderStyle.room = 10;
    project.paperWidth = 240;
    project.paperHeight = 140;
    WorldBox survey;
    survey.Update(400000, 5950000);
    survey.Update(400000 + width, 5950000 + height);
    return MapFrame(project, survey).Scale();
}

} // namespace

TEST(MapFrame, FitsASurveyByARoundScale) {
    EXPECT_DOUBLE_EQ(5000, FittingScale(900, 10));
    EXPECT_DOUBLE_EQ(10000, FittingScale(10, 900));
    EXPECT_DOUBLE_EQ(7500, FittingScale(1000, 700));
}

TEST(MapFrame, ShowsASurveyWithoutExtentAtOneToAThousand) {
    EXPECT_DOUBLE_EQ(1000, FittingScale(0, 0));
    EXPECT_DOUBLE_EQ(1000, FittingScale(1e-9, 0));
    EXPECT_DOUBLE_EQ(1000, MapFrame({}, {}).Scale());
}
