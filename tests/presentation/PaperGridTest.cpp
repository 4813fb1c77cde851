// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/PaperGrid.h"

#include "tests/support/Random.h"
#include "tests/support/Records.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using Origin = GTL::Point2D<float>;
using Place = GTL::Point2D<double>;

TEST(PaperGrid, Defaults) {
    const PaperGrid grid;
    EXPECT_EQ(1.0, grid.XStep());
    EXPECT_EQ(1.0, grid.YStep());
    EXPECT_EQ(Origin(0, 0), grid.Origin());
    EXPECT_TRUE(grid.SnapOn());
    EXPECT_TRUE(grid.Visible());
}

TEST(PaperGrid, FieldsInASection) {
    using FlagSetter = void (PaperGrid::*)(bool);
    // Through the constructor, since the setters raise a step of 0.
    const auto setX = [](PaperGrid& grid, double x) {
        grid = PaperGrid(x, grid.YStep(), grid.Origin(), grid.SnapOn(), grid.Visible());
    };
    const auto setY = [](PaperGrid& grid, double y) {
        grid = PaperGrid(grid.XStep(), y, grid.Origin(), grid.SnapOn(), grid.Visible());
    };
    ExpectFields<PaperGrid>({
        Field<PaperGrid>(L"XStep", L"2.500000", setX, 2.5, 1.0, 0.0),
        Field<PaperGrid>(L"YStep", L"0.500000", setY, 0.5, 1.0, 0.0),
        Field<PaperGrid>(L"Visible", L"0", static_cast<FlagSetter>(&PaperGrid::Visible), false, true, false),
        Field<PaperGrid>(L"SnapOn", L"0", static_cast<FlagSetter>(&PaperGrid::SnapOn), false, true, false),
        WrittenKey<PaperGrid>(L"OringinX", L"0.000000"),
        WrittenKey<PaperGrid>(L"OringinY", L"0.000000"),
    });
}

TEST(PaperGrid, OriginIsWrittenAndNotRead) {
    PaperGrid grid(2, 3, Origin(1.5f, -2.25f), false, false);
    const Section section = Written(grid);
    EXPECT_EQ(L"1.500000", section[L"OringinX"].GetValue());
    EXPECT_EQ(L"-2.250000", section[L"OringinY"].GetValue());
    const PaperGrid back = ReadFrom(section, PaperGrid(1, 1, Origin(7, 8)));
    EXPECT_EQ(7.0f, back.Origin().X());
    EXPECT_EQ(8.0f, back.Origin().Y());
    EXPECT_EQ(2.0, back.XStep());
}

TEST(PaperGrid, StepsHaveALowerBoundInTheSettersAlone) {
    struct Row {
        double given, set, kept;
    };
    for (const Row& row : {Row{0.2, 1, 0.2}, Row{-3, 3, 3}, Row{-0.5, 1, 0.5}, Row{0, 1, 0}, Row{1, 1, 1},
                           Row{1e300, 1e300, 1e300}}) {
        SCOPED_TRACE(row.given);
        PaperGrid grid;
        grid.XStep(row.given);
        grid.YStep(row.given);
        EXPECT_EQ(row.set, grid.XStep());
        EXPECT_EQ(row.set, grid.YStep());
        EXPECT_EQ(row.kept, PaperGrid(row.given, 5).XStep());
        EXPECT_EQ(row.kept, PaperGrid(5, row.given).YStep());
    }
    const PaperGrid read = ReadFrom<PaperGrid>(SectionOf({{L"XStep", L"-0.5"}, {L"YStep", L"-4"}}));
    EXPECT_EQ(0.5, read.XStep());
    EXPECT_EQ(4.0, read.YStep());
    PaperGrid nan;
    nan.XStep(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(1.0, nan.XStep());
}

TEST(PaperGrid, ToggleVisibleTwiceRestoresTheFlag) {
    PaperGrid grid;
    grid.ToggleVisible();
    EXPECT_FALSE(grid.Visible());
    grid.ToggleVisible();
    EXPECT_TRUE(grid.Visible());
    EXPECT_TRUE(grid.SnapOn());
}

TEST(PaperGrid_SnapToGrid, HalvesGoAwayFromTheOrigin) {
    struct Row {
        double given, snapped;
    };
    for (const Row& row :
         {Row{2.5, 3}, Row{-2.5, -3}, Row{2.49, 2}, Row{-2.49, -2}, Row{0, 0}, Row{0.5, 1}}) {
        const Place place = PaperGrid().SnapToGrid(Place(row.given, -row.given));
        EXPECT_EQ(row.snapped, place.X()) << row.given;
        EXPECT_EQ(-row.snapped, place.Y()) << row.given;
    }
}

TEST(PaperGrid_SnapToGrid, CountsFromTheOriginInEachDirection) {
    const PaperGrid grid(2, 10, Origin(0.5f, -3), false);
    const Place place = grid.SnapToGrid(Place(3.4, 4.5));
    EXPECT_EQ(2.5, place.X());
    EXPECT_EQ(7.0, place.Y());
}

TEST(PaperGrid_SnapToGrid, WithoutAStepTheCoordinateStays) {
    const PaperGrid grid(0, 2);
    const Place place = grid.SnapToGrid(Place(3.4, 4.5));
    EXPECT_EQ(3.4, place.X());
    EXPECT_EQ(4.0, place.Y());
}

TEST(PaperGrid_SnapToGrid, FindsTheNearestLineOfAWalkOverThem) {
    Random random(9);
    const auto number = [&](int range) { return static_cast<int>(random() % static_cast<unsigned>(range)); };
    for (int i = 0; i < 100'000; ++i) {
        const double step = (1 + number(40)) / 4.0;
        const auto origin = static_cast<float>(number(200) - 100) / 8.0f;
        const double given = (number(4000) - 2000) / 64.0;
        const double snapped = PaperGrid(step, 1, Origin(origin, 0)).SnapToGrid(Place(given, 0)).X();
        double best = origin;
        for (int line = -400; line <= 400; ++line) {
            const double x = origin + line * step;
            const double better = std::fabs(given - best) - std::fabs(given - x);
            if (better > 0 || (better == 0 && std::fabs(x - origin) > std::fabs(best - origin))) best = x;
            if (x > given + step && x > origin) break;
        }
        ASSERT_EQ(best, snapped) << step << ' ' << origin << ' ' << given;
    }
}

TEST(PaperGrid, ReadAndWriteAreAlwaysSuccessful) {
    PaperGrid grid;
    Section section;
    EXPECT_TRUE(grid.Read(section));
    EXPECT_TRUE(grid.Write(section));
    EXPECT_EQ(L"", grid.Read(section).Text());
}

TEST(PaperGrid, EqualityComparesEveryField) {
    const PaperGrid grid(2, 3, Origin(1, 2), true, true);
    EXPECT_EQ(grid, PaperGrid(2 + 1e-10, 3, Origin(1, 2), true, true));
    for (const PaperGrid& other :
         {PaperGrid(4, 3, Origin(1, 2), true, true), PaperGrid(2, 4, Origin(1, 2), true, true),
          PaperGrid(2, 3, Origin(9, 2), true, true), PaperGrid(2, 3, Origin(1, 9), true, true),
          PaperGrid(2, 3, Origin(1, 2), false, true), PaperGrid(2, 3, Origin(1, 2), true, false)})
        EXPECT_NE(grid, other);
}
