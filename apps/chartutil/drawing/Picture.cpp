#include "apps/chartutil/drawing/Picture.h"

#include "VelmBase/File.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/Png.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Errors.h"

#include <algorithm>
#include <charconv>

namespace {

// Hundredths of a pixel, whatever the locale.
std::string Number(double value) {
    char text[400];
    char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 2).ptr;
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
    return {text, end};
}

std::string Attribute(const char* name, double value) {
    return std::string(" ") + name + "=\"" + Number(value) + '"';
}

std::string Attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + value + '"';
}

std::string Ending(const std::string& path) {
    const std::size_t point = path.find_last_of("./\\");
    if (point == std::string::npos || path[point] != '.') return {};
    std::string ending = path.substr(point + 1);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return ending;
}

} // namespace

Picture::Picture(int width, int height)
    : m_width(std::clamp(width, 1, 20000)), m_height(std::clamp(height, 1, 20000)) {}

void Picture::Rectangle(double x, double y, double width, double height, const RGBColor& fill) {
    m_body += "<rect" + Attribute("x", x) + Attribute("y", y) + Attribute("width", width) +
              Attribute("height", height) + Attribute("fill", HexText(fill)) + "/>\n";
}

void Picture::Frame(double x, double y, double width, double height, const RGBColor& color) {
    m_body += "<rect" + Attribute("x", x) + Attribute("y", y) + Attribute("width", width) +
              Attribute("height", height) + " fill=\"none\"" + Attribute("stroke", HexText(color)) + "/>\n";
}

void Picture::Line(double x1, double y1, double x2, double y2, const RGBColor& color, double width,
                   std::string_view dashes) {
    m_body += "<line" + Attribute("x1", x1) + Attribute("y1", y1) + Attribute("x2", x2) +
              Attribute("y2", y2) + Attribute("stroke", HexText(color)) + Attribute("stroke-width", width);
    if (!dashes.empty()) m_body += Attribute("stroke-dasharray", std::string(dashes));
    m_body += "/>\n";
}

void Picture::Text(double x, double y, std::string_view text, double size, const RGBColor& color,
                   Anchor anchor, bool bold) {
    constexpr const char* kAnchors[] = {"start", "middle", "end"};
    m_body += "<text" + Attribute("x", x) + Attribute("y", y) + Attribute("font-size", size) +
              Attribute("fill", HexText(color));
    if (anchor != Anchor::START)
        m_body += Attribute("text-anchor", std::string(kAnchors[static_cast<int>(anchor)]));
    if (bold) m_body += " font-weight=\"bold\"";
    m_body += ">" + SvgEscaped(text) + "</text>\n";
}

std::string Picture::Svg() const {
    const std::string width = std::to_string(m_width);
    const std::string height = std::to_string(m_height);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + ' ' + height +
           "\" font-family=\"DejaVu Sans, Segoe UI, sans-serif\">\n<rect width=\"" + width + "\" height=\"" +
           height + "\" fill=\"#FFFFFF\"/>\n" + m_body + "</svg>\n";
}

void Picture::CheckEnding(const std::string& path) {
    const std::string ending = Ending(path);
    if (ending == "svg" || (ending == "png" && CanRenderPng())) return;
    throw CommandError(ExitCode::WRONG_USE,
                       path + ": " +
                           (ending == "png" ? "this program was built without Qt and makes no PNG; name the "
                                              "picture .svg"
                                            : "a picture's name has to end in .svg or .png"));
}

void Picture::Save(const std::string& path) const {
    CheckEnding(path);
    const bool isPng = Ending(path) == "png";
    const std::string content = isPng ? RenderPng(Svg(), m_width, m_height) : Svg();
    if (content.empty()) throw CommandError(ExitCode::IO_ERROR, path + ": the picture cannot be drawn");
    if (!FILES::ReplaceContents(FromUtf8(path), content)) ThrowNotWritten(path);
}

std::string SvgEscaped(std::string_view text) {
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
