// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/PictureFile.h"
#include "apps/chartutil/drawing/SvgFile.h"
#include "apps/chartutil/terminal/Errors.h"
#include "tests/support/TestFiles.h"

#include <clocale>
#include <gmock/gmock.h>
#include <limits>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

constexpr RGBColor kRed(255, 0, 0);
const Font kFont{2.048}; // a thousandth of a millimetre is a unit of the font's design

} // namespace

TEST(Font, WidthIsTheSumOfTheFontsAdvances) {
    struct Row {
        const char* text;
        double regular, bold; // thousandths of a millimetre
    };
    for (const Row& row : {Row{"", 0, 0}, Row{"0", 1303, 1425}, Row{"AV", 2802, 3170}, Row{"i", 569, 702},
                           Row{"W", 2025, 2259}, Row{"\xC3\x84", 1401, 1585}, // Ä
                           Row{"12.5", 3 * 1303 + 651, 3 * 1425 + 778},
                           Row{"\t", 651, 713}}) { // a control is drawn as a space
        SCOPED_TRACE(row.text);
        EXPECT_NEAR(row.regular / 1000, kFont.Width(row.text), 1e-12);
        EXPECT_NEAR(row.bold / 1000, (Font{2.048, true}.Width(row.text)), 1e-12);
    }
}

TEST(Font, WidthGrowsWithSizeAndText) {
    const std::string text = "Pensacola Bay 12.5";
    EXPECT_DOUBLE_EQ(3 * Font{1}.Width(text), Font{3}.Width(text));
    double width = 0;
    for (std::size_t n = 1; n <= text.size(); ++n) {
        EXPECT_GT(kFont.Width(text.substr(0, n)), width);
        width = kFont.Width(text.substr(0, n));
    }
}

TEST(Font, UnknownCharactersAreAsWideAsTheWidest) {
    for (const char* text :
         {"\xE6\xB5\xB7", "\xF0\x9F\x8C\x8A", "\xFF"}) // a sign, one of two halves, no UTF-8
        EXPECT_NEAR(4.129, kFont.Width(text), 1e-12) << text;
}

TEST(Surface, SvgIsInMillimetres) {
    Surface surface(100, 50.5);
    surface.Rectangle(1, 2, 3.25, 4, kRed);
    surface.Frame(1, 2, 3, 4, {kRed, 0.5});
    surface.Line(0, 0, 1, 1, {kRed, 0.18, {1.5, 0.75}});
    surface.Text(5, 6, "a<b&c", {3, true, true}, kRed, Surface::Anchor::END, 30);
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100mm\" height=\"50.5mm\" "
              "viewBox=\"0 0 100 50.5\" font-family=\"DejaVu Sans, Verdana, Segoe UI, sans-serif\">\n"
              "<rect width=\"100\" height=\"50.5\" fill=\"#FFFFFF\"/>\n"
              "<rect x=\"1\" y=\"2\" width=\"3.25\" height=\"4\" fill=\"#FF0000\" "
              "shape-rendering=\"crispEdges\"/>\n"
              "<polygon points=\"1,2 4,2 4,6 1,6\" fill=\"none\" stroke=\"#FF0000\" stroke-width=\"0.5\"/>\n"
              "<polyline points=\"0,0 1,1\" fill=\"none\" stroke=\"#FF0000\" stroke-width=\"0.18\" "
              "stroke-dasharray=\"1.5 0.75\"/>\n"
              "<text x=\"5\" y=\"6\" font-size=\"3\" fill=\"#FF0000\" text-anchor=\"end\" "
              "font-weight=\"bold\" font-style=\"italic\" transform=\"rotate(-30 5 6)\">a&lt;b&amp;c</text>\n"
              "</svg>\n",
              SvgFile(surface));
}

TEST(Surface, FittedTextIsAsWideAsItWasMeasuredInItsOwnFont) {
    Surface surface(100, 50);
    surface.FittedText(5, 6, "A  B", {3, false, false, true, R"(O'Neil \ "Sans" <x>)"}, kRed, 12.5, -30);
    surface.FittedText(5, 6, "no width", {3}, kRed, 0);
    surface.FittedText(5, 6, "no width", {3}, kRed, std::numeric_limits<double>::quiet_NaN());
    ASSERT_EQ(1u, surface.Shapes().size());
    EXPECT_THAT(
        SvgFile(surface),
        HasSubstr("<text x=\"5\" y=\"6\" font-size=\"3\" fill=\"#FF0000\" text-decoration=\"underline\" "
                  "font-family=\"'O\\'Neil \\\\ &quot;Sans&quot; &lt;x&gt;', DejaVu Sans, Verdana, Segoe UI, "
                  "sans-serif\" textLength=\"12.5\" lengthAdjust=\"spacingAndGlyphs\" xml:space=\"preserve\" "
                  "style=\"font-kerning:none;font-variant-ligatures:none\" "
                  "transform=\"rotate(30 5 6)\">A  B</text>"));
}

TEST(Surface, PolygonsNeedThreePointsAndLinesTwo) {
    Surface surface(10, 10);
    surface.Polygon({{{1, 1}, {2, 2}}}, kRed);
    surface.Polyline({{1, 1}}, {kRed});
    EXPECT_TRUE(surface.Shapes().empty());
    surface.Polygon({{{1, 1}, {2, 2}, {3, 0.5}}}, kRed);
    surface.Polyline({{1, 1}, {2, 2}, {3, 0}}, {kRed});
    EXPECT_THAT(SvgFile(surface),
                AllOf(HasSubstr("<polygon points=\"1,1 2,2 3,0.5\" fill=\"#FF0000\""),
                      HasSubstr("<polyline points=\"1,1 2,2 3,0\" fill=\"none\" stroke=\"#FF0000\"")));
}

TEST(Surface, SizeAndCoordinatesStayWithinBounds) {
    const Surface surface(0, 1e9);
    EXPECT_EQ(1, surface.Width());
    EXPECT_EQ(5000, surface.Height());
    Surface odd(10, 10);
    const double infinite = std::numeric_limits<double>::infinity();
    odd.Line(std::numeric_limits<double>::quiet_NaN(), infinite, 1e300, -infinite, {kRed});
    odd.Text(infinite, 1, "x", kFont, kRed, Surface::Anchor::START, infinite);
    EXPECT_THAT(SvgFile(odd), AllOf(HasSubstr("\"0,0 1"), Not(HasSubstr("nan")), Not(HasSubstr("inf"))));
}

TEST(PictureFile, EndingDecidesAndOthersAreRefused) {
    for (const char* name : {"a.svg", "A.SVG", "folder.png/a.svg"})
        EXPECT_NO_THROW(RequirePicture({name, ""}));
    EXPECT_NO_THROW(RequirePicture({"a.jpg", "svg"})); // what was said counts more
    for (const char* name : {"a.jpg", "svg", "a.svg/b", ""}) {
        try {
            RequirePicture({name, ""});
            ADD_FAILURE() << name;
        } catch (const CommandError& error) {
            EXPECT_EQ(ExitCode::WRONG_USE, error.Code());
            EXPECT_THAT(error.what(), HasSubstr("has to end in .svg, .png, .pdf or .dxf"));
        }
    }
}
