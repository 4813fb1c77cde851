// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/SvgFile.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/HexText.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace {

// Thousandths of a millimetre, whatever the locale.
std::string Number(double value) {
    char text[400];
    char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3).ptr;
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
    return {text, end};
}

std::string Attribute(const char* name, std::string_view value) {
    return std::string(" ") + name + "=\"" + std::string(value) + '"';
}

std::string Attribute(const char* name, double value) { return Attribute(name, Number(value)); }

std::string Numbers(const std::vector<double>& values) {
    std::string text;
    for (const double value : values) text += (text.empty() ? "" : " ") + Number(value);
    return text;
}

std::string PointsText(const std::vector<Surface::Point>& points) {
    std::string text;
    for (const Surface::Point& point : points)
        text += (text.empty() ? "" : " ") + Number(point.x) + ',' + Number(point.y);
    return text;
}

std::string PointsAttribute(const std::vector<Surface::Point>& points) {
    return Attribute("points", PointsText(points));
}

// The characters that mean something in SVG are replaced; control characters become spaces.
std::string Escaped(std::string_view text) {
    // XML holds neither bytes that are no UTF-8 nor the two codes that are no characters.
    std::wstring wide = FromUtf8(text);
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const bool isPaired = i > 0 && wide[i - 1] >= 0xD800 && wide[i - 1] <= 0xDBFF;
        if ((wide[i] >= 0xDC00 && wide[i] <= 0xDFFF && !isPaired) || wide[i] == 0xFFFE || wide[i] == 0xFFFF)
            wide[i] = 0xFFFD;
    }
    std::string escaped;
    for (const char c : ToUtf8(wide)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
        }
    }
    return escaped;
}

// A family before those that all texts have. Within its quotes CSS takes a backslash for what follows it.
std::string FamiliesFrom(const std::string& family) {
    std::string quoted;
    for (const char c : family) {
        if (c == '\'' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return Escaped("'" + quoted + "', " + std::string(kFontFamilies));
}

std::string Base64(std::string_view bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        unsigned int group = 0;
        for (std::size_t j = 0; j < 3; ++j)
            group = group << 8 | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0U);
        for (std::size_t j = 0; j < 4; ++j) text += j <= count ? kDigits[group >> (18 - 6 * j) & 63] : '=';
    }
    return text;
}

// One element for each kind of shape.
struct Element {
    bool isInLayer = false;
    std::set<std::string> ids = {};

    std::string operator()(const Surface::FilledRectangle& shape) const {
        // Without smoothed edges no light shines through between neighbours, whatever the scale.
        return "<rect" + Attribute("x", shape.x) + Attribute("y", shape.y) + Attribute("width", shape.width) +
               Attribute("height", shape.height) + Attribute("fill", HexText(shape.fill)) +
               " shape-rendering=\"crispEdges\"/>\n";
    }
    std::string operator()(const Surface::FilledPolygon& shape) const {
        if (shape.rings.size() == 1)
            return "<polygon" + PointsAttribute(shape.rings.front()) +
                   Attribute("fill", HexText(shape.fill)) + " fill-rule=\"evenodd\"/>\n";
        std::string path;
        for (const std::vector<Surface::Point>& ring : shape.rings) path += 'M' + PointsText(ring) + 'z';
        return "<path" + Attribute("d", path) + Attribute("fill", HexText(shape.fill)) +
               " fill-rule=\"evenodd\"/>\n";
    }
    std::string operator()(const Surface::Stroke& shape) const {
        return (shape.isClosed ? "<polygon" : "<polyline") + PointsAttribute(shape.points) +
               " fill=\"none\"" + Attribute("stroke", HexText(shape.pen.color)) +
               Attribute("stroke-width", shape.pen.width) +
               (shape.pen.dashes.empty() ? "" : Attribute("stroke-dasharray", Numbers(shape.pen.dashes))) +
               "/>\n";
    }
    std::string operator()(const Surface::Image& shape) const {
        return "<image" + Attribute("x", shape.x) + Attribute("y", shape.y) +
               Attribute("width", shape.width) + Attribute("height", shape.height) +
               " preserveAspectRatio=\"none\" href=\"data:image/png;base64," + Base64(shape.png) + "\"/>\n";
    }
    std::string operator()(const Surface::Layer& layer) {
        const std::string end = isInLayer ? "</g>\n" : "";
        isInLayer = true;
        return end + "<g" + Attribute("id", IdFrom(layer.name)) + ">\n";
    }
    // A name that XML takes for an identifier, and no other has.
    std::string IdFrom(const std::string& name) {
        const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
        std::string id = name;
        for (char& c : id)
            if (!isLetter(c) && !(c >= '0' && c <= '9') && c != '_') c = '-';
        if (id.empty() || !isLetter(id.front())) id.insert(0, "layer");
        const std::string first = id;
        for (int i = 2; !ids.insert(id).second; ++i) id = first + '-' + std::to_string(i);
        return id;
    }
    std::string operator()(const Surface::Label& shape) const {
        constexpr const char* kAnchors[] = {"start", "middle", "end"};
        std::string text = "<text" + Attribute("x", shape.x) + Attribute("y", shape.y) +
                           Attribute("font-size", shape.font.size) + Attribute("fill", HexText(shape.color));
        if (shape.anchor != Surface::Anchor::START)
            text += Attribute("text-anchor", kAnchors[static_cast<int>(shape.anchor)]);
        if (shape.font.bold) text += " font-weight=\"bold\"";
        if (shape.font.italic) text += " font-style=\"italic\"";
        if (shape.font.underline) text += " text-decoration=\"underline\"";
        if (!shape.font.family.empty()) text += Attribute("font-family", FamiliesFrom(shape.font.family));
        if (shape.isFitted)
            text += Attribute("textLength", shape.width) +
                    " lengthAdjust=\"spacingAndGlyphs\" xml:space=\"preserve\" "
                    "style=\"font-kerning:none;font-variant-ligatures:none\"";
        if (shape.rotation != 0) // SVG turns clockwise
            text += Attribute("transform", "rotate(" + Numbers({-shape.rotation, shape.x, shape.y}) + ')');
        return text + ">" + Escaped(shape.text) + "</text>\n";
    }
};

} // namespace

std::string SvgFile(const Surface& surface) {
    const std::string width = Number(surface.Width());
    const std::string height = Number(surface.Height());
    std::string svg =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
        Attribute("width", width + "mm") + Attribute("height", height + "mm") +
        Attribute("viewBox", "0 0 " + width + ' ' + height) + Attribute("font-family", kFontFamilies) +
        ">\n<rect" + Attribute("width", width) + Attribute("height", height) + " fill=\"#FFFFFF\"/>\n";
    const Progress progress("the picture", surface.Shapes().size());
    std::size_t done = 0;
    Element element;
    for (const Surface::Shape& shape : surface.Shapes()) {
        svg += std::visit(element, shape);
        progress.Show(++done);
    }
    return svg + (element.isInLayer ? "</g>\n</svg>\n" : "</svg>\n");
}
