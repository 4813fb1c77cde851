// SPDX-License-Identifier: MIT
// Whether what is drawn lies in the rectangles that were measured for it: a white cover over them leaves a
// white page.

#include "apps/chartutil/drawing/DrawnText.h"
#include "apps/chartutil/drawing/PictureModule.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace {

constexpr RGBColor kWhite(255, 255, 255);
constexpr double kScale = 3; // millimetres of the page to a world unit: a text of size 2.5 is 45 pixels high
constexpr double kPage = 64;
constexpr Surface::Point kInsertion{32, 32};

std::string Png(const Surface& surface) {
    std::string whyNot, file;
    RenderPictureFunction* const render = LoadPictureModule(PictureFormat::PNG, whyNot);
    EXPECT_NE(nullptr, render) << whyNot;
    EXPECT_TRUE(render && render(
                              surface, PictureFormat::PNG, [](std::size_t) {}, file));
    return file;
}

bool IsWhite(const Surface& page) {
    static const std::string white = Png({kPage, kPage});
    return Png(page) == white;
}

Font FontOf(const DrawnText& text) {
    return {text.font.em * text.cellHeight * kScale, (text.style.Style() & TextInfo::BOLD) != 0,
            (text.style.Style() & TextInfo::ITALIC) != 0, false, ToUtf8(text.font.family)};
}

DrawnText Measured(const TextInfo& style, const std::wstring& text) {
    return LayOut(style, FindFont(style), TextRectComp()(style, text), {text});
}

void Draw(Surface& page, const DrawnText& text) {
    const DrawnText::Line& line = text.lines.at(0);
    page.FittedText(kInsertion.x + line.start.X() * kScale, kInsertion.y - line.start.Y() * kScale,
                    ToUtf8(line.text), FontOf(text), RGBColor(0, 0, 0), line.width * kScale,
                    -text.box.Rotation().Get());
}

// Covers the part of the box from `left` to `right` and from `bottom` to `top`, shares of its sides.
void Cover(Surface& page, const DrawnText& text, double left, double right, double bottom, double top) {
    const GTL::Vector2D<double> along = text.box.Corner(1) - text.box.Corner(0);
    const GTL::Vector2D<double> up = text.box.Corner(3) - text.box.Corner(0);
    std::vector<Surface::Point> points;
    for (const auto& [u, v] : {std::pair(left, bottom), {right, bottom}, {right, top}, {left, top}})
        points.push_back({kInsertion.x + (text.box.Corner(0).X() + u * along.X() + v * up.X()) * kScale,
                          kInsertion.y - (text.box.Corner(0).Y() + u * along.Y() + v * up.Y()) * kScale});
    page.Polygon({points}, kWhite);
}

// Whether nothing of the text is outside that part of its box.
bool IsWithin(const DrawnText& text, double left, double right, double bottom, double top) {
    Surface page(kPage, kPage);
    Draw(page, text);
    Cover(page, text, left, right, bottom, top);
    return IsWhite(page);
}

// Of the box's height: a smoothed edge, and how far round letters reach over the baseline.
constexpr double kOver = 0.06;

} // namespace

TEST(TextSheetGlyphs, AreInTheirRectangleAtEveryJustificationAndRotation) {
    for (const wchar_t* const face : {L"Liberation Sans", L"Liberation Serif", L"DejaVu Sans"})
        for (int justification = 0; justification < 12; ++justification)
            for (const double rotation : {30.0, 0.0, 90.0, 200.0}) {
                TextInfo style;
                style.SetFont(face);
                style.SetRotation(rotation);
                style.SetJustification(TextInfo::JUSTIFICATION(justification));
                SCOPED_TRACE(ToUtf8(style.ToString()) + " " + std::to_string(justification));
                const DrawnText text = Measured(style, L"HxEd"); // without descenders
                EXPECT_TRUE(IsWithin(text, -kOver, 1 + kOver, -kOver, 1 + kOver));
                EXPECT_FALSE(IsWithin(text, 0.15, 1.1, -0.1, 1.1)) << "nothing at the left";
                EXPECT_FALSE(IsWithin(text, -0.1, 0.9, -0.1, 1.1)) << "nothing at the right";
                if (style.Font() != L"Liberation Sans") break; // one rotation tells of a face
            }
}

TEST(TextSheetGlyphs, DescendersAreAboveTheBottomAndBelowTheBaseline) {
    TextInfo style;
    style.SetFont(L"Liberation Sans");
    EXPECT_TRUE(IsWithin(Measured(style, L"gpq\u00C4"), -kOver, 1 + kOver, -kOver, 1 + kOver));
    EXPECT_FALSE(IsWithin(Measured(style, L"gpq"), -0.1, 1.1, 0.15, 1.1));
    style.SetJustification(TextInfo::BASELINE_LEFT);
    EXPECT_FALSE(IsWithin(Measured(style, L"gpq"), -0.1, 1.1, -kOver, 1.1));
    EXPECT_TRUE(IsWithin(Measured(style, L"HxE"), -kOver, 1 + kOver, -kOver, 1))
        << "the baseline is elsewhere";
}

// A fitted text shows nothing of a width that was measured wrongly, so these keep their own.
TEST(TextSheetGlyphs, TakeTheWidthThatWasMeasured) {
    struct Row {
        const wchar_t* face;
        TextInfo::STYLE flags;
        const wchar_t* text;
    };
    for (const Row& row :
         {Row{L"Liberation Sans", TextInfo::REGULAR, L"Sound 1.4 H"},
          Row{L"Liberation Sans", TextInfo::BOLD, L"Sound 1.4 H"},
          Row{L"Liberation Serif", TextInfo::ITALIC, L"Sound 1.4 H"},
          Row{L"Liberation Sans", TextInfo::REGULAR, L"AVAVAVA H"}, // not kerned
          Row{L"DejaVu Sans", TextInfo::REGULAR, L"\u0393\u03BB\u03C5 \u0413\u043B\u0443 H"},
          Row{L"Droid Sans Fallback", TextInfo::REGULAR, L"\u6C34\u6DF1\u56FE\u56FE\u56FE\u56FE"}}) {
        TextInfo style;
        style.SetFont(row.face);
        style.SetStyle(row.flags);
        SCOPED_TRACE(ToUtf8(row.face) + " " + ToUtf8(row.text));
        const DrawnText text = Measured(style, row.text);
        ASSERT_TRUE(text.font.isInstalled);
        constexpr double kLeft = 2;
        const auto isWithin = [&](double share) {
            // The width that pictures are laid out by is another font's, too large to squeeze the text.
            Surface page(kPage, kPage);
            page.Text(kLeft, kPage / 2, ToUtf8(row.text), FontOf(text), RGBColor(0, 0, 0));
            page.Rectangle(0, 0, kLeft + text.box.Width() * kScale * share, kPage, kWhite);
            return IsWhite(page);
        };
        EXPECT_TRUE(isWithin(1.01)) << "is drawn wider";
        EXPECT_FALSE(isWithin(0.96)) << "is drawn narrower";
    }
}
