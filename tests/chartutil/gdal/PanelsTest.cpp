// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/PanelContent.h"
#include "apps/chartutil/sheet/layers/TitleText.h"

#include "tests/support/Charts.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

Chart Bay() {
    Chart chart("EPSG:26916", 463000, 3352000, 510000, 3386000);
    chart.project.scale = 60'000;
    chart.project.paperGrid.SnapOn(false);
    return chart;
}

void Show(Panel& panel, double x, double y, double width, double height, int justification = 0) {
    panel.isShown = true;
    panel.place.posX = x;
    panel.place.posY = y;
    panel.place.width = static_cast<float>(width);
    panel.place.height = static_cast<float>(height);
    panel.place.justification = justification;
}

std::vector<PlacedPanel> PanelsOf(const Chart& chart) {
    const MapFrame frame = chart.Frame();
    Occupied occupied;
    return PlacePanels({chart.project, frame, chart.scene}, occupied);
}

Surface DrawnPanels(const Chart& chart) {
    return chart.Drawn([](const Sheet& sheet, Surface& surface) {
        Occupied occupied;
        DrawPanels(PlacePanels(sheet, occupied), surface);
    });
}

std::wstring Filled(const Chart& chart) {
    const MapFrame frame = chart.Frame();
    return TitleText(chart.project, frame, chart.scene);
}

void SetKeyword(Project& project, const wchar_t* name, const wchar_t* value) {
    CKeyword keyword;
    keyword.name = name;
    keyword.value = value;
    project.keywords.AddKeyword(&keyword);
}

} // namespace

TEST(Panels, StandByTheirJustification) {
    struct Row {
        int justification;
        double left, top;
    };
    // 60 mm by 40 mm at (200, 150) from the lower left corner of 400 mm by 300 mm.
    for (const Row& row : {Row{0, 200, 110}, Row{1, 170, 110}, Row{2, 140, 110}, Row{3, 140, 130},
                           Row{4, 140, 150}, Row{5, 170, 150}, Row{6, 200, 150}, Row{7, 200, 130},
                           Row{8, 170, 130}, Row{9, 200, 110}, Row{-1, 200, 110}}) {
        Chart chart = Bay();
        Show(chart.project.northArrow, 200, 150, 60, 40, row.justification);
        const std::vector<PlacedPanel> panels = PanelsOf(chart);
        ASSERT_THAT(panels, SizeIs(1)) << row.justification;
        EXPECT_NEAR(row.left, panels[0].box.left, 1e-4) << row.justification;
        EXPECT_NEAR(row.top, panels[0].box.top, 1e-4) << row.justification;
        EXPECT_NEAR(60, panels[0].box.right - panels[0].box.left, 1e-4);
    }
}

TEST(Panels, SnapToThePapersGrid) {
    Chart chart = Bay();
    Show(chart.project.northArrow, 201, 148, 60, 40);
    chart.project.paperGrid = PaperGrid(5, 5);
    EXPECT_NEAR(200, PanelsOf(chart)[0].box.left, 1e-4);
    EXPECT_NEAR(150, PanelsOf(chart)[0].box.bottom, 1e-4);
    chart.project.paperGrid.SnapOn(false);
    EXPECT_NEAR(201, PanelsOf(chart)[0].box.left, 1e-4);
    chart.project.paperGrid = PaperGrid(1e-320, 1e-320); // where snapping gives no numbers
    EXPECT_NEAR(201, PanelsOf(chart)[0].box.left, 1);
}

TEST(Panels, OneThatIsTooSmallGrowsAndTellsWhatItNeeds) {
    Chart chart = Bay();
    Show(chart.project.titleBlock, 200, 150, 40, 10, 8);
    chart.project.titleText =
        L"One\n\nAnother line that is wrapped to the width of the panel\nand one more\n";
    const std::vector<PlacedPanel> panels = PanelsOf(chart);
    ASSERT_THAT(panels, SizeIs(1));
    const Occupied::Box& box = panels[0].box;
    EXPECT_GT(box.bottom - box.top, 10);
    EXPECT_NEAR(150, (box.bottom + box.top) / 2, 1e-3); // about its centre
    EXPECT_THAT(ReportsOf(L"Title Block"), Contains(HasSubstr("Height")));
    for (const Surface::Label& label : ShapesOf<Surface::Label>(DrawnPanels(chart))) {
        EXPECT_GE(label.x, box.left);
        EXPECT_LE(label.x + label.width, box.right);
        EXPECT_GT(label.y, box.top);
        EXPECT_LT(label.y, box.bottom);
    }
    chart.project.titleBlock.place.height = static_cast<float>(box.bottom - box.top + 0.1);
    PlotErrorReporter::Get().Clear();
    PanelsOf(chart);
    EXPECT_THAT(ReportsOf(L"Title Block"), IsEmpty()); // what it asked for is enough
}

TEST(Panels, ReportsOverlapsAndWhatIsOutsideOfTheMap) {
    Chart chart = Bay();
    Show(chart.project.northArrow, 100, 100, 60, 60);
    Show(chart.project.legend, 120, 100, 90, 90);
    EXPECT_THAT(PanelsOf(chart), SizeIs(2));
    EXPECT_THAT(ReportsOf(L"North Arrow"), Contains(HasSubstr("over another")));
    chart = Bay();
    Show(chart.project.northArrow, 1, 100, 60, 60);
    EXPECT_THAT(PanelsOf(chart), SizeIs(1));
    EXPECT_THAT(ReportsOf(L"North Arrow"), Contains(HasSubstr("border")));
}

TEST(Panels, LeavesOutAndReportsWhatHasNoPlace) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        double x, y, width, height;
    };
    for (const Row& row :
         {Row{100, 100, 0, 40}, Row{100, 100, 60, -40}, Row{100, 100, kNan, 40}, Row{kNan, 100, 60, 40},
          Row{100, std::numeric_limits<double>::infinity(), 60, 40}, Row{1e300, 100, 60, 40},
          Row{-100, 100, 60, 40}, Row{10, 10, 1000, 1000}, Row{100, 100, 1e30, 40}}) {
        Chart chart = Bay();
        Show(chart.project.northArrow, row.x, row.y, row.width, row.height);
        EXPECT_THAT(PanelsOf(chart), IsEmpty());
        EXPECT_FALSE(ReportsOf(L"North Arrow").empty());
    }
}

TEST(Panels, APaperSmallerThanAPanelHasNone) {
    Chart chart = Bay();
    chart.project.paperWidth = chart.project.paperHeight = 1;
    for (Panel* const panel : {&chart.project.titleBlock, &chart.project.legend, &chart.project.scaleBar,
                               &chart.project.northArrow})
        Show(*panel, 0, 0, 50, 50);
    EXPECT_THAT(PanelsOf(chart), IsEmpty());
}

TEST(TitleBlock, HasHeadingSubheadingsAndText) {
    Chart chart = Bay();
    Show(chart.project.titleBlock, 100, 100, 150, 100);
    chart.project.titleBlock.heading.SetSize(10);
    chart.project.titleBlock.subheading.SetSize(5);
    chart.project.titleText = L"Bay\nCoast\n\nText\r\n";
    const auto labels = ShapesOf<Surface::Label>(DrawnPanels(chart));
    ASSERT_THAT(labels, SizeIs(3));
    EXPECT_THAT(TextsOf(DrawnPanels(chart)), ElementsAre("Bay", "Coast", "Text"));
    EXPECT_NEAR(2, labels[0].font.size / labels[1].font.size, 0.01);
    EXPECT_NEAR(2, labels[1].font.size / labels[2].font.size, 0.01);
    for (const auto& label : labels) EXPECT_NEAR(175, label.x + label.width / 2, 1e-3); // centred
}

TEST(TitleBlock, ALongTextIsReportedAndNotCut) {
    Chart chart = Bay();
    Show(chart.project.titleBlock, 100, 100, 150, 100);
    for (const std::wstring& word : {std::wstring(L"x"), std::wstring(L"word ")}) {
        chart.project.titleText.clear();
        while (chart.project.titleText.size() < 100'000) chart.project.titleText += word;
        EXPECT_THAT(PanelsOf(chart), IsEmpty());
        EXPECT_THAT(ReportsOf(L"Title Block"), Contains(HasSubstr("needs")));
    }
}

TEST(TitleText, IsFilledAndLeavesOutLinesWithoutValues) {
    Chart chart = Bay();
    SetKeyword(chart.project, L"project name", L"Bay");
    chart.project.titleFile = "title.txt";
    chart.project.titleText = L"%project name%\nDate: %date%\nOf %project name%, %date%\n%%\n%project name";
    EXPECT_EQ(L"Bay\nOf Bay, \n%%\n%project name\n", Filled(chart));
    EXPECT_THAT(ReportsOf(L"Title Block"),
                ElementsAre(AllOf(HasSubstr("title.txt:2: "), HasSubstr("%date%"))));
}

TEST(TitleText, KnowsScaleAndCoordinateSystem) {
    Chart chart = Bay();
    chart.project.titleText =
        L"%scale%\n%horizontal datum%\n%projection%\n%coordinate system%\n%sounding count%\n";
    EXPECT_EQ(L"1 : 60 000\nNAD83\nUTM zone 16N\nNAD83 / UTM zone 16N\n0\n", Filled(chart));
    SetKeyword(chart.project, L"projection", L"given");
    EXPECT_THAT(ToUtf8(Filled(chart)), HasSubstr("\ngiven\n"));
}

TEST(Legend, ShowsWhatOccursOnTheMap) {
    Chart chart = Bay();
    Show(chart.project.legend, 100, 100, 120, 80);
    chart.project.colors.AddEntry(0, 0x0000FF);
    chart.project.colors.AddEntry(10, 0x00FF00);
    chart.project.colors.AddEntry(20, 0xFF0000);
    for (const double level : {5.0, 15.0}) {
        ContourDefinitionList::ContourDefInfo contour;
        contour.level = level;
        chart.project.levels.Add(contour);
    }
    const MapFrame frame = chart.Frame();
    chart.scene.depths = {frame.World(), 2, 1, {3, 14}};
    chart.scene.coverage = {frame.World(), 2, 1, {1, 1}};
    chart.scene.contours = {{5, {}}};
    std::vector<std::string> texts = TextsOf(DrawnPanels(chart));
    EXPECT_THAT(texts, Contains("Depths in metres"));
    EXPECT_THAT(texts, Contains("0 \u2013 10"));
    EXPECT_THAT(texts, Contains("10 \u2013 20"));
    EXPECT_THAT(texts, Not(Contains("20 and deeper")));
    EXPECT_THAT(texts, Contains("5"));
    EXPECT_THAT(texts, Not(Contains("15")));
    EXPECT_THAT(texts, Not(Contains("dries")));
    EXPECT_THAT(texts, Not(Contains("limit of survey")));
    chart.scene.limit = {{{463000, 3352000}, {464000, 3353000}}};
    EXPECT_THAT(TextsOf(DrawnPanels(chart)), Contains("limit of survey"));
    chart.scene.depths.values = {-1, 25};
    texts = TextsOf(DrawnPanels(chart));
    EXPECT_THAT(texts, Contains("dries"));
    EXPECT_THAT(texts, Contains("20 and deeper"));
    chart.scene.coverage.values = {1, 0}; // where nobody knows it does not count
    EXPECT_THAT(TextsOf(DrawnPanels(chart)), Not(Contains("20 and deeper")));
}

TEST(Legend, TakesASecondColumnWhereItIsLow) {
    Chart chart = Bay();
    for (int i = 0; i < 20; ++i) {
        ContourDefinitionList::ContourDefInfo contour;
        contour.level = i;
        chart.project.levels.Add(contour);
        chart.scene.contours.push_back({static_cast<double>(i), {}});
    }
    const MapFrame frame = chart.Frame();
    const Sheet sheet{chart.project, frame, chart.scene};
    const PanelContent one = Legend(sheet, 1000), two = Legend(sheet, 70);
    EXPECT_GT(two.width, one.width * 1.5);
    EXPECT_LT(two.height, one.height * 0.7);
}

TEST(ScaleBar, HasTrueLengths) {
    for (const double scale : {500.0, 10'000.0, 60'000.0, 1'000'000.0}) {
        Chart chart = Bay();
        chart.project.scale = scale;
        Show(chart.project.scaleBar, 100, 100, 160, 60);
        const Surface surface = DrawnPanels(chart);
        // The outlines are as long as the numbers at their ends say.
        std::vector<Surface::Stroke> outlines;
        for (const auto& stroke : ShapesOf<Surface::Stroke>(surface))
            if (stroke.isClosed) outlines.push_back(stroke);
        outlines.erase(outlines.begin()); // the panel's
        ASSERT_THAT(outlines, SizeIs(2));
        const double metresPerUnit[] = {1852, 1};
        for (std::size_t i = 0; i < 2; ++i) {
            const double left = outlines[i].points[0].x, right = outlines[i].points[2].x;
            double first = 0, last = 0; // the numbers at both ends, above the bar
            for (const auto& label : ShapesOf<Surface::Label>(surface)) {
                const double x = label.x + label.width / 2;
                if (std::fabs(label.y - outlines[i].points[0].y) > 2.5) continue;
                if (std::fabs(x - left) < 0.01) first = std::stod(label.text);
                if (std::fabs(x - right) < 0.01) last = std::stod(label.text);
            }
            ASSERT_GT(first, 0) << scale;
            EXPECT_NEAR((first + last) * metresPerUnit[i] * 1000 / scale, std::fabs(right - left), 1e-6)
                << scale;
        }
        std::string digits;
        for (const std::string& text : TextsOf(surface))
            if (text.starts_with("SCALE 1 : "))
                for (const char c : text.substr(10)) digits += c == ' ' ? "" : std::string(1, c);
        EXPECT_EQ(std::to_string(std::lround(scale)), digits);
    }
}

TEST(ScaleBar, ThereIsNoneForDegrees) {
    Chart chart("EPSG:4326", -88, 29, -86, 31);
    Show(chart.project.scaleBar, 100, 100, 160, 60);
    EXPECT_THAT(PanelsOf(chart), IsEmpty());
    EXPECT_THAT(ReportsOf(L"Scale Bar"), Contains(HasSubstr("degrees")));
}

// The convergence of the transverse Mercator projection is atan(tan(λ - λ0) sin φ) on the sphere, and on the
// ellipsoid that to a second of arc within a zone.
TEST(NorthArrow, PointsByTheConvergence) {
    const auto system = LoadGeometryModule().OpenSystem("EPSG:26916"); // about 87 degrees west
    for (const auto& [longitude, latitude] :
         {std::pair(-87.0, 30.0), std::pair(-85.0, 30.0), std::pair(-89.0, 60.0), std::pair(-84.5, 10.0)}) {
        std::vector<WorldPoint> place = {{longitude, latitude}};
        system->FromGeographic(place);
        const double radians = M_PI / 180;
        const double convergence =
            std::atan(std::tan((longitude + 87) * radians) * std::sin(latitude * radians)) / radians;
        EXPECT_NEAR(-convergence, TrueNorth(*system, place[0], 60), 0.002) << longitude;
    }
}

TEST(NorthArrow, PointsToThePole) {
    const auto system = LoadGeometryModule().OpenSystem("EPSG:3413"); // with the pole in its middle
    for (const auto& [x, y, degrees] :
         {std::tuple(0.0, -1e6, 0.0), std::tuple(-1e6, 0.0, 90.0), std::tuple(1e6, 0.0, -90.0)})
        EXPECT_NEAR(degrees, TrueNorth(*system, {x, y}, 1000), 1e-3);
    EXPECT_NEAR(180, std::fabs(TrueNorth(*system, {0, 1e6}, 1000)), 1e-3);
    EXPECT_TRUE(std::isfinite(TrueNorth(*system, {1, -1}, 1000))); // almost there
}

TEST(NorthArrow, SaysHowGridNorthLies) {
    Chart chart = Bay();
    Show(chart.project.northArrow, 330, 230, 40, 60, 8);
    EXPECT_THAT(TextsOf(DrawnPanels(chart)), Contains("N"));
    EXPECT_THAT(TextsOf(DrawnPanels(chart)), Contains("grid north"));
    EXPECT_THAT(TextsOf(DrawnPanels(chart)), Not(Contains("GN"))); // too near for two arrows
    Chart east("EPSG:26916", 950000, 3352000, 990000, 3386000);
    Show(east.project.northArrow, 330, 230, 40, 60, 8);
    EXPECT_THAT(TextsOf(DrawnPanels(east)), Contains("GN"));
}

TEST(NorthArrow, WithoutACoordinateSystemPointsUpAndSaysSo) {
    Chart chart("", 0, 0, 1000, 1000);
    Show(chart.project.northArrow, 330, 230, 40, 60, 8);
    EXPECT_THAT(TextsOf(DrawnPanels(chart)), ElementsAre("N"));
    EXPECT_THAT(ReportsOf(L"North Arrow"), Contains(HasSubstr("true north")));
}
