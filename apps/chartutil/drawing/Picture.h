#pragma once

#include "UtilityDLL/colors/RGBColor.h"

#include <string>
#include <string_view>

/// A picture that a command draws: a palette, a legend, a chart sheet. It is composed as SVG text, the same
/// on every platform; a PNG is made from that text. Lengths are pixels, x to the right and y down from the
/// top left corner. Texts are UTF-8.
class Picture {
public:
    enum class Anchor { START, MIDDLE, END };

    /// White, of that size; whole pixels from 1 to 20000.
    Picture(int width, int height);

    int Width() const { return m_width; }
    int Height() const { return m_height; }

    void Rectangle(double x, double y, double width, double height, const RGBColor& fill);

    /// Its outline alone, one pixel wide.
    void Frame(double x, double y, double width, double height, const RGBColor& color);

    /// `dashes` are the lengths of dashes and gaps in turn, as in "6 3"; empty for a solid line.
    void Line(double x1, double y1, double x2, double y2, const RGBColor& color, double width = 1.0,
              std::string_view dashes = {});

    /// The text's baseline starts, ends or is centred at the point. `size` is the font's height.
    void Text(double x, double y, std::string_view text, double size, const RGBColor& color,
              Anchor anchor = Anchor::START, bool bold = false);

    /// Shapes in SVG's own words, for what the others do not draw. `markup` is complete elements.
    void Raw(std::string_view markup) { m_body += markup; }

    std::string Svg() const;

    /// Writes the picture to a file, whole or not at all. The name's ending says which kind: .svg, or .png in
    /// a program that was built with Qt. Throws a CommandError for another ending and when the file cannot be
    /// written.
    void Save(const std::string& path) const;

    /// Throws the CommandError that Save() would throw for the ending: to ask before the work is done.
    static void CheckEnding(const std::string& path);

private:
    int m_width;
    int m_height;
    std::string m_body;
};

/// `text` with the characters that mean something in SVG replaced; control characters become spaces.
std::string SvgEscaped(std::string_view text);
