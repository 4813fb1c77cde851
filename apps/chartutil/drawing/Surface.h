// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/RGBColor.h"
#include "UtilityDLL/presentation/DXFInfo.h"
#include "apps/chartutil/drawing/Font.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A page that a command draws on: a palette, a legend, a chart sheet. Lengths are millimetres, x to the
/// right and y down from the top left corner; texts are UTF-8. The page keeps what was drawn, in that order,
/// for the formats that a picture is saved in (PictureFile.h). A coordinate that is not finite is drawn as 0.
class Surface {
public:
    enum class Anchor { START, MIDDLE, END };

    struct Point {
        double x, y;
    };

    /// Which point of a text is meant to stay where it is when a drawing program sets it in another font, by
    /// the codes of the DXF format: horizontal 0 left, 1 centre, 2 right; vertical 0 baseline, 1 bottom, 2
    /// middle, 3 top.
    struct Justification {
        int horizontal, vertical;
    };

    /// How a line is drawn; `dashes` are the lengths of dashes and gaps in turn, none for a solid line.
    struct Pen {
        RGBColor color;
        double width = 0.25;
        std::vector<double> dashes = {};
    };

    struct FilledRectangle {
        double x, y, width, height;
        RGBColor fill;
    };
    struct FilledPolygon {
        std::vector<std::vector<Point>> rings;
        RGBColor fill;
    };
    struct Stroke {
        std::vector<Point> points;
        bool isClosed;
        Pen pen;
    };
    struct Label {
        double x, y;
        std::string text;
        Font font;
        RGBColor color;
        Anchor anchor;
        double rotation; // degrees anticlockwise
        double width;    // as measured; a format whose font is wider squeezes the text
        bool isFitted;   // also one whose font is narrower draws it that wide
        Justification justification;
    };
    /// A picture that is laid over what is there; formats of lines alone leave it out.
    struct Image {
        double x, y, width, height;
        std::string png; ///< a file of that kind, which may have an opacity
    };
    /// What follows belongs to the layer of that name, for formats that have layers.
    struct Layer {
        std::string name;
    };
    using Shape = std::variant<FilledRectangle, FilledPolygon, Stroke, Label, Image, Layer>;

    /// A white page of that size, from 1 to 5000 millimetres a side.
    Surface(double width, double height);

    double Width() const { return m_width; }
    double Height() const { return m_height; }
    const std::vector<Shape>& Shapes() const { return m_shapes; }

    /// Filled, and without an outline. Neighbours that share an edge show no seam.
    void Rectangle(double x, double y, double width, double height, const RGBColor& fill);

    /// One without a file draws nothing.
    void Picture(Image image);

    /// The layer of all that is drawn from now on, in UTF-8; before the first call there is none.
    void BeginLayer(std::string_view name);

    /// The outline of a rectangle alone.
    void Frame(double x, double y, double width, double height, const Pen& pen);

    void Line(double x1, double y1, double x2, double y2, const Pen& pen);

    /// Less than two points draw nothing.
    void Polyline(std::vector<Point> points, const Pen& pen);

    /// Rings filled by the even-odd rule, so that one within another is a hole, and without an outline. Rings
    /// of less than three points are left out.
    void Polygon(std::vector<std::vector<Point>> rings, const RGBColor& fill);

    /// The text's baseline starts, ends or is centred at the point, about which the text is turned by
    /// `rotation` degrees anticlockwise.
    void Text(double x, double y, std::string_view text, const Font& font, const RGBColor& color,
              Anchor anchor = Anchor::START, double rotation = 0);

    /// A text that was measured in its own font: it starts at the point and takes `width` millimetres along
    /// its baseline, also where another font stands in. One without width is not drawn. Codes that the
    /// justification does not have count as 0.
    void FittedText(double x, double y, std::string_view text, const Font& font, const RGBColor& color,
                    double width, double rotation = 0, Justification justification = {});

    /// How lines are exported as DXF: a width above 0 is that of all lines, in millimetres, and in the colour
    /// mode 1 the colour is that of all lines; else each keeps its own.
    void SetDxf(const DXFInfo& dxf) { m_dxf = dxf; }
    const DXFInfo& Dxf() const { return m_dxf; }

private:
    double m_width;
    double m_height;
    std::vector<Shape> m_shapes;
    DXFInfo m_dxf;
};
