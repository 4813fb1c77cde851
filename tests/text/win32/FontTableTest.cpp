// SPDX-License-Identifier: MIT
// The device interface of Linux against Windows' own: FontTable printed there what this program measures here
// with the same font files. docs/text-on-both-platforms.md tells what differs, and why.

#include "tests/text/FontTable.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string_view>

namespace {

using namespace FONT_TABLE;

// A pixel of this display in units of 0.01 mm. The mode takes it from the display's size, which is in whole
// millimetres, so that it is not square.
struct Pixel {
    Pixel() {
        CDC display;
        display.CreateDCW(L"DISPLAY", nullptr, nullptr);
        x = 100.0 * display.GetDeviceCaps(HORZSIZE) / display.GetDeviceCaps(HORZRES);
        y = 100.0 * display.GetDeviceCaps(VERTSIZE) / display.GetDeviceCaps(VERTRES);
    }
    double x, y;
};

const Pixel& ThePixel() {
    static const Pixel pixel;
    return pixel;
}

// What a display rounds a length by, in pixels: a half, and the whole logical units in both tables.
constexpr double ROUNDING = 0.55;

std::size_t IndexOf(std::string_view name) {
    const auto& columns = Columns();
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return c.name == name; });
    return static_cast<std::size_t>(found - columns.begin());
}

bool IsAcross(std::string_view column) {
    return column == "average width" || column == "greatest width" || column == "box left" ||
           column == "box right" || column == "extent x";
}

struct Pair {
    Row row;
    std::vector<double> linux, windows; // by column
    double em = 0;                      // of the font that the display took, in pixels

    double OfLinux(std::string_view column) const { return linux.at(IndexOf(column)); }
    double OfWindows(std::string_view column) const { return windows.at(IndexOf(column)); }
    bool IsRegular() const { return !row.face.ends_with("bold") && !row.face.ends_with("italic"); }
    double Units() const { return static_cast<double>(row.text.text.size()); }

    double EmOfLinux() const { return OfLinux("height") - OfLinux("internal leading"); }
    double EmAsked() const { return EmOfLinux() / ThePixel().y; }

    // What a length of Linux would be in a font whose em has so many pixels; and the length of Windows.
    double PixelsOfLinux(std::size_t column, double emInPixels) const {
        return linux[column] / EmOfLinux() * emInPixels;
    }
    double PixelsOfWindows(std::size_t column) const {
        return windows[column] / (IsAcross(Columns()[column].name) ? ThePixel().x : ThePixel().y);
    }

    double GreatestDifference(double emInPixels) const {
        double greatest = 0;
        for (std::size_t i = 0; i < Columns().size(); ++i)
            if (Columns()[i].kind == Kind::LENGTH)
                greatest = std::max(greatest, std::abs(PixelsOfLinux(i, emInPixels) - PixelsOfWindows(i)));
        return greatest;
    }

    // A display takes a font at a whole number of pixels an em, and no call tells at which: it is the one,
    // not far from what was asked for, at which the lengths fit best.
    double EmOnTheDisplay() const {
        const double asked = std::round(EmAsked());
        double best = asked;
        for (double candidate = std::max(1.0, asked - 3); candidate <= asked + 3; ++candidate)
            if (GreatestDifference(candidate) < GreatestDifference(best)) best = candidate;
        return best;
    }
};

struct Tables {
    std::vector<Pair> pairs;
    std::string fault; // why there is nothing to compare
};

Tables Read() {
    Tables tables;
    std::ifstream file(LINUX_FONT_TABLE);
    std::string heading = "face,size,text";
    for (const Column& column : Columns()) heading += std::string(",") + column.name;
    std::string line;
    if (!std::getline(file, line) || line != heading) {
        tables.fault =
            std::string("There is no table of Linux, or one of another version, in ") + LINUX_FONT_TABLE +
            ".\n`./test --windows` makes it. By hand: cmake --build build/release --target FontTable "
            "&& build/release/bin/FontTable >build/windows/FontTable.csv";
        return tables;
    }
    std::map<std::string, std::vector<double>> rowsOfLinux;
    while (std::getline(file, line)) {
        std::size_t end = 0; // of the name, which has three cells
        for (int cell = 0; cell < 3; ++cell) end = line.find(',', end + 1);
        std::vector<double>& numbers = rowsOfLinux[line.substr(0, end)];
        std::istringstream cells(end == std::string::npos ? "" : line.substr(end));
        char comma;
        for (double number; cells >> comma >> number;) numbers.push_back(number);
    }
    for (const Row& row : Rows()) {
        Pair pair{row, rowsOfLinux[row.Name()], {}};
        for (const Column& column : Columns()) pair.windows.push_back(column.value(row.measured));
        if (pair.linux.size() != Columns().size()) {
            tables.fault = "The table of Linux has not all of row " + row.Name();
            return tables;
        }
        pair.em = pair.EmOnTheDisplay();
        tables.pairs.push_back(pair);
    }
    return tables;
}

const Tables& BothTables() {
    static const Tables tables = Read();
    return tables;
}

// Tells the first few of the many that a fault causes.
class Differences {
public:
    ~Differences() {
        EXPECT_GT(m_compared, 0);
        if (m_found > 0) ADD_FAILURE() << m_found << " of " << m_compared << " differ:\n" << m_listed;
    }
    void Compare(const Pair& pair, std::string_view what, double linux, double windows, double tolerance) {
        Compare(std::abs(linux - windows) <= tolerance, pair, what, linux, windows, tolerance);
    }
    void Compare(bool isWithin, const Pair& pair, std::string_view what, double linux, double windows,
                 double tolerance) {
        ++m_compared;
        if (isWithin || ++m_found > 12) return;
        std::ostringstream line;
        line << pair.row.Name() << ", " << what << ": " << linux << " on Linux, " << windows
             << " on Windows, tolerance " << tolerance << "\n";
        m_listed += line.str();
    }

private:
    int m_compared = 0;
    int m_found = 0;
    std::string m_listed;
};

class FontTable : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(BothTables().fault.empty()) << BothTables().fault; }

    const std::vector<Pair>& m_pairs = BothTables().pairs;
    Differences m_differences;
};

} // namespace

TEST_F(FontTable, HasEveryFontOnBoth) {
    for (const Pair& pair : m_pairs)
        m_differences.Compare(pair.OfLinux("height") > 0 && pair.OfWindows("height") > 0, pair, "height",
                              pair.OfLinux("height"), pair.OfWindows("height"), 0);
}

TEST_F(FontTable, WhatIsNoLengthIsTheSame) {
    for (const Pair& pair : m_pairs)
        for (std::size_t i = 0; i < Columns().size(); ++i)
            if (Columns()[i].kind == Kind::SAME)
                m_differences.Compare(pair, Columns()[i].name, pair.linux[i], pair.windows[i], 0);
}

TEST_F(FontTable, TheDisplayTakesAWholeEmBesideTheOneAskedFor) {
    // The cell that is asked for is truncated to a pixel, and its em rounded to one.
    for (const Pair& pair : m_pairs)
        m_differences.Compare(pair.em > pair.EmAsked() - 1.5 && pair.em <= pair.EmAsked() + 0.5, pair,
                              "em in pixels", pair.EmAsked(), pair.em, 1.5);
}

TEST_F(FontTable, LengthsAgreeWithinAPixelInTheFontThatTheDisplayTakes) {
    for (const Pair& pair : m_pairs) {
        for (std::size_t i = 0; i < Columns().size(); ++i) {
            const Kind kind = Columns()[i].kind;
            if (kind == Kind::LENGTH || kind == Kind::HEIGHT)
                m_differences.Compare(pair, Columns()[i].name, pair.PixelsOfLinux(i, pair.em),
                                      pair.PixelsOfWindows(i), (kind == Kind::HEIGHT ? 2 : 1) * ROUNDING);
        }
    }
}

TEST_F(FontTable, ExtentsAgreeButForTheRoundingOfEachCharacter) {
    const std::size_t extent = IndexOf("extent x");
    for (const Pair& pair : m_pairs)
        m_differences.Compare(pair, "extent x", pair.PixelsOfLinux(extent, pair.em),
                              pair.PixelsOfWindows(extent), pair.Units() * ROUNDING);
}

TEST_F(FontTable, AgreesAsItIsWithinHalfAPercentAtTheLargestSizes) {
    for (const Pair& pair : m_pairs) {
        for (std::size_t i = 0; i < Columns().size(); ++i) {
            const Kind kind = Columns()[i].kind;
            if (pair.row.size >= 50 && kind != Kind::SAME && kind != Kind::DERIVED)
                m_differences.Compare(pair, Columns()[i].name, pair.linux[i], pair.windows[i],
                                      std::max(ThePixel().x, 0.005 * std::abs(pair.linux[i])));
        }
    }
}

// Both platforms compute the factor from the metrics in the same way, with a product of 32 bits that wraps at
// the larger sizes. What the formula makes of metrics that are a pixel more or less is how far they may be
// apart.
TEST_F(FontTable, FactorsDifferByWhatAPixelMakesOfThem) {
    int jumps = 0;
    const double pixel = ThePixel().y;
    for (const Pair& pair : m_pairs) {
        if (!pair.IsRegular()) continue; // the factor is always the regular font's
        const auto onTheDisplay = [&](std::string_view column) {
            return std::abs(pair.PixelsOfLinux(IndexOf(column), pair.em)) * pixel;
        };
        const double height = pair.row.size * 1000.0;
        const double cell = onTheDisplay("height");
        const double below = onTheDisplay("outline descent") + onTheDisplay("internal leading") +
                             onTheDisplay("external leading");
        const double least = below - 3 * pixel, greatest = below + 3 * pixel;
        // Where the product wraps between the least and the greatest, the factor jumps.
        const auto wraps = [&](double part) { return std::floor((part * height + 0x1p31) / 0x1p32); };
        if (wraps(least) != wraps(greatest)) {
            ++jumps;
            continue;
        }
        const auto factor = [&](double part, double of) {
            return height / (height - std::remainder(part * height, 0x1p32) / of);
        };
        const auto [from, to] = std::minmax({factor(least, cell - pixel), factor(least, cell + pixel),
                                             factor(greatest, cell - pixel), factor(greatest, cell + pixel)});
        for (const double given : {pair.OfLinux("factor"), pair.OfWindows("factor")})
            m_differences.Compare(given >= from && given <= to, pair, "factor", pair.OfLinux("factor"),
                                  pair.OfWindows("factor"), to - from);
    }
    EXPECT_LT(jumps, static_cast<int>(m_pairs.size()) / 20);
}

// The rectangle's font is as high as size and factor say. What its text is wide for that height is the same
// on both but for the pixels.
TEST_F(FontTable, RectanglesFollowFromTheFactor) {
    for (const Pair& pair : m_pairs) {
        if (!pair.IsRegular()) continue;
        for (const auto* const numbers : {&pair.linux, &pair.windows}) {
            const double height = std::ceil(pair.row.size * (*numbers)[IndexOf("factor")] * 1000) / 1000;
            // The table's nine digits may be on the other side of a whole number.
            m_differences.Compare(pair, "rectangle height", height, (*numbers)[IndexOf("rectangle height")],
                                  0.00101);
        }
        const double cell = pair.OfWindows("rectangle height") * 1000 / ThePixel().y; // in pixels
        const double aspect = pair.OfLinux("rectangle width") / pair.OfLinux("rectangle height");
        const double onTheDisplay = pair.OfWindows("rectangle width") / pair.OfWindows("rectangle height") *
                                    ThePixel().y / ThePixel().x;
        // A cell is up to 2.5 pixels lower than was asked for: truncated, and two lengths of a whole em.
        const double least = cell - 2.5;
        m_differences.Compare(pair, "width for a height", aspect, onTheDisplay,
                              (pair.Units() + 2 * aspect) * ROUNDING / least);
        m_differences.Compare(pair, "line height in pixels", cell,
                              pair.OfWindows("line height") * 1000 / ThePixel().y, 2.5);
    }
}
