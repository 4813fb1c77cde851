// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/PictureModule.h"
#include "tests/chartutil/gdal/DxfReader.h"
#include "tests/support/Program.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

constexpr RGBColor kRed(255, 0, 0);

std::string Rendered(const Surface& surface) {
    std::string whyNot, file;
    RenderPictureFunction* const render = LoadPictureModule(PictureFormat::DXF, whyNot);
    EXPECT_NE(nullptr, render) << whyNot;
    EXPECT_TRUE(render && render(
                              surface, PictureFormat::DXF, [](std::size_t) {}, file));
    return file;
}

// What was drawn on the page, without the page.
std::vector<DxfEntity> EntitiesOf(const Surface& surface) {
    std::vector<DxfEntity> entities = DxfObjectsOf(Rendered(surface), "ENTITIES");
    EXPECT_FALSE(entities.empty());
    if (!entities.empty()) {
        EXPECT_EQ("Paper", entities.front().Text(8));
        entities.erase(entities.begin());
    }
    return entities;
}

DxfEntity EntityOf(const Surface& surface) {
    const std::vector<DxfEntity> entities = EntitiesOf(surface);
    EXPECT_EQ(1u, entities.size());
    return entities.empty() ? DxfEntity{} : entities.front();
}

std::string ContentOf(const std::string& text) {
    Surface surface(50, 50);
    surface.Text(1, 1, text, {3}, kRed);
    const DxfEntity entity = EntityOf(surface);
    std::string content;
    for (const std::string& part : entity.All(3)) content += part;
    return content + entity.Text(1);
}

} // namespace

TEST(DxfFile, PageIsInMillimetresFromItsLowerLeftCorner) {
    const std::string file = Rendered(Surface(841, 594.5));
    EXPECT_THAT(file, HasSubstr("\n$INSUNITS\n70\n4\n"));
    EXPECT_THAT(file, HasSubstr("\n$EXTMIN\n10\n0\n20\n0\n"));
    EXPECT_THAT(file, HasSubstr("\n$EXTMAX\n10\n841\n20\n594.5\n"));
    EXPECT_THAT(file, HasSubstr("\n$PLIMMAX\n10\n841\n20\n594.5\n"));
}

TEST(DxfFile, LinesHaveLayerColorWeightAndType) {
    Surface surface(100, 50);
    surface.BeginLayer("Contours");
    surface.Polyline({{1, 2}, {3, 4}, {5, 6.5}}, {kRed, 0.31, {3, 1.5}});
    const DxfEntity line = EntityOf(surface);
    EXPECT_EQ("LWPOLYLINE", line.kind);
    EXPECT_EQ("Contours", line.Text(8));
    EXPECT_EQ("10", line.Text(62)); // by its hue
    EXPECT_EQ("16711680", line.Text(420));
    EXPECT_EQ("30", line.Text(370)); // the nearest that the format has
    EXPECT_THAT(line.All(10), ElementsAre("1", "3", "5"));
    EXPECT_THAT(line.All(20), ElementsAre("48", "46", "43.5"));
    const std::vector<DxfEntity> types = DxfObjectsOf(Rendered(surface), "LTYPE");
    ASSERT_FALSE(types.empty());
    EXPECT_EQ(line.Text(6), types.back().Text(2));
    EXPECT_THAT(types.back().All(49), ElementsAre("3", "-1.5"));
    EXPECT_EQ("Contours", DxfObjectsOf(Rendered(surface), "LAYER").back().Text(2));
}

TEST(DxfFile, RecordGivesAllLinesItsWidthAndColor) {
    Surface surface(100, 50);
    surface.Line(0, 0, 10, 10, {kRed, 0.2});
    DXFInfo dxf;
    dxf.SetWidth(0.5F);
    dxf.SetColor(static_cast<unsigned long>(RGBColor(0, 0, 255)));
    surface.SetDxf(dxf);
    EXPECT_EQ("50", EntityOf(surface).Text(370));
    EXPECT_EQ("10", EntityOf(surface).Text(62));
    dxf.SetColorMode(1);
    surface.SetDxf(dxf);
    EXPECT_EQ("170", EntityOf(surface).Text(62));
}

TEST(DxfFile, AreasAreHatchesWithHoles) {
    Surface surface(100, 50);
    surface.Polygon({{{0, 0}, {20, 0}, {20, 20}}, {{12, 2}, {15, 2}, {15, 5}}}, {170, 204, 238});
    const DxfEntity area = EntityOf(surface);
    EXPECT_EQ("HATCH", area.kind);
    EXPECT_EQ("2", area.Text(91));
    EXPECT_EQ("SOLID", area.Text(2));
    EXPECT_EQ(std::to_string(0xAACCEE), area.Text(420));
}

TEST(DxfFile, BlackAndWhiteStayWhatTheyAre) {
    Surface surface(100, 50);
    surface.Line(0, 0, 10, 10, {{0, 0, 0}});
    surface.Rectangle(0, 0, 10, 10, {255, 255, 255});
    const std::vector<DxfEntity> entities = EntitiesOf(surface);
    ASSERT_EQ(2u, entities.size());
    EXPECT_EQ("7", entities[0].Text(62));   // 0 is the colour of a block
    EXPECT_EQ("255", entities[1].Text(62)); // 7 prints black
    EXPECT_EQ(std::to_string(0x010101), entities[0].Text(420));
    EXPECT_EQ(std::to_string(0xFEFEFE), entities[1].Text(420));
}

TEST(DxfFile, TextsStandAtThePointThatTheirJustificationNames) {
    struct Row {
        Surface::Justification justification;
        const char* attachment;
        double x, y;
    };
    // Ten millimetres wide, with capitals of two, turned to the left by 90 degrees.
    const Font font{4, false, false, false, "Liberation Sans", 0.5};
    for (const Row& row : {Row{{0, 0}, "7", 30, 30}, Row{{1, 0}, "8", 30, 35}, Row{{2, 1}, "9", 30, 40},
                           Row{{0, 2}, "4", 29, 30}, Row{{1, 2}, "5", 29, 35}, Row{{2, 3}, "3", 28, 40}}) {
        Surface surface(100, 50);
        surface.FittedText(30, 20, "Text", font, kRed, 10, 90, row.justification);
        const DxfEntity text = EntityOf(surface);
        EXPECT_EQ("MTEXT", text.kind);
        EXPECT_EQ(row.attachment, text.Text(71));
        EXPECT_NEAR(row.x, text.Number(10), 1e-9);
        EXPECT_NEAR(row.y, text.Number(20), 1e-9);
        EXPECT_NEAR(2, text.Number(40), 1e-9);
        EXPECT_NEAR(90, text.Number(50), 1e-9);
    }
}

TEST(DxfFile, AnchoredTextsAreJustifiedThere) {
    Surface surface(100, 50);
    surface.Text(30, 20, "Text", {3}, kRed, Surface::Anchor::END);
    const DxfEntity text = EntityOf(surface);
    EXPECT_EQ("9", text.Text(71));
    EXPECT_NEAR(30, text.Number(10), 1e-9);
    EXPECT_NEAR(30, text.Number(20), 1e-9);
}

TEST(DxfFile, UnderlineIsALineBelowTheText) {
    Surface surface(100, 50);
    surface.FittedText(30, 20, "4", {4, false, false, true}, kRed, 10, 90);
    const std::vector<DxfEntity> entities = EntitiesOf(surface);
    ASSERT_EQ(2u, entities.size());
    EXPECT_EQ("LWPOLYLINE", entities[1].kind);
    ASSERT_EQ(2u, entities[1].All(20).size());
    EXPECT_NEAR(30.5, entities[1].Number(10), 1e-9);
    EXPECT_NEAR(30, std::stod(entities[1].All(20)[0]), 1e-9);
    EXPECT_NEAR(40, std::stod(entities[1].All(20)[1]), 1e-9);
}

TEST(DxfFile, TextsReadAsTheyWereGiven) {
    EXPECT_EQ("Pensacola Bay, 5 m", ContentOf("Pensacola Bay, 5 m"));
    EXPECT_EQ("a\\\\P\\{b\\}", ContentOf("a\\P{b}"));
    EXPECT_EQ("5%{%}c", ContentOf("5%%c"));
    EXPECT_EQ("^ I", ContentOf("^I"));
    EXPECT_EQ("\\\\{U}+0041", ContentOf("\\U+0041"));
    EXPECT_EQ("a b c", ContentOf("a\nb\x07"
                                 "c"));
    EXPECT_EQ("30\\U+00B0 \\U+03A9", ContentOf("30\xC2\xB0 \xCE\xA9"));
    EXPECT_EQ("\\U+FFFD", ContentOf("\xF0\x9F\x98\x80"));
    // Stroke fonts have no primes, and no dash but the hyphen.
    EXPECT_EQ("87\\U+00B020'30\" 2 - 5, -3", ContentOf("87\xC2\xB0"
                                                       "20\xE2\x80\xB2"
                                                       "30\xE2\x80\xB3 2 \xE2\x80\x93 5, \xE2\x88\x92"
                                                       "3"));
    std::string greek, expected;
    for (int i = 0; i < 300; ++i) {
        greek += "\xCE\xA9";
        expected += "\\U+03A9";
    }
    EXPECT_EQ(expected, ContentOf(greek));
}

TEST(DxfFile, HostileShapesGiveAWholeFile) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Surface surface(100, 50);
    surface.BeginLayer("");
    surface.BeginLayer("a\n0\nEOF|<>*");
    for (const double odd : {kNan, kInfinity, -kInfinity, 1e300, -1e300, 0.0}) {
        surface.Line(odd, 0, 1, odd, {kRed, odd, {odd, 1}});
        surface.Rectangle(odd, odd, odd, odd, kRed);
        surface.Polygon({{{odd, odd}, {odd, odd}, {odd, odd}}}, kRed);
        surface.Text(odd, odd, "0\nSECTION", {odd, false, false, false, "\")\n,{"}, kRed,
                     Surface::Anchor::MIDDLE, odd);
        surface.FittedText(odd, odd, "x", {3}, kRed, odd, odd, {99, -7});
    }
    surface.Polygon({}, kRed);
    surface.Polygon({{}}, kRed);
    const std::string file = Rendered(surface);
    const std::vector<DxfGroup> groups = DxfGroupsOf(file);
    ASSERT_FALSE(groups.empty());
    EXPECT_EQ("EOF", groups.back().value);
    for (const DxfGroup& group : groups) {
        if ((group.code < 10 || group.code >= 60) && group.code != 370) continue;
        EXPECT_TRUE(std::isfinite(std::stod(group.value))) << group.code << ' ' << group.value;
    }
    for (const DxfEntity& entity : EntitiesOf(surface))
        EXPECT_THAT(entity.kind, ::testing::AnyOf("LWPOLYLINE", "HATCH", "MTEXT"));
}

TEST(DxfFile, LineOfAMillionPointsIsWritten) {
    std::vector<Surface::Point> points(1'000'000);
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {static_cast<double>(i) * 1e-4, static_cast<double>(i % 2)};
    Surface surface(100, 50);
    surface.Polyline(std::move(points), {kRed});
    EXPECT_EQ("1000000", EntityOf(surface).Text(90));
}

TEST(DxfFile, SamePageGivesSameBytes) {
    Surface surface(100, 50);
    surface.BeginLayer("Contours");
    surface.Line(0, 0, 5, 5, {kRed, 0.2, {1, 1}});
    surface.Text(1, 1, "Text", {3}, kRed);
    EXPECT_EQ(Rendered(surface), Rendered(surface));
}

TEST(DxfFile, CommandsWriteIt) {
    const TemporaryFolder folder;
    const std::string path = (folder.Path() / "palette.dxf").string();
    const ProgramResult result = RunChartutil({"colors", "palette", "--picture", path});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_FALSE(DxfObjectsOf(ReadBytes(std::filesystem::path(path)), "ENTITIES").empty());
}
