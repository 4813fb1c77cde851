// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/text/Output.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/style/Names.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <charconv>
#include <cstddef>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace {

template <std::size_t N> std::string NameOf(int number, const char* const (&names)[N]) {
    return number >= 0 && static_cast<std::size_t>(number) < N ? names[number] : std::to_string(number);
}

// The number whose shortest text is also the shortest that reads back as this float.
double Shortest(float value) {
    char text[64];
    const char* const end = std::to_chars(text, std::end(text), value).ptr;
    double shortest = double(value);
    std::from_chars(text, end, shortest);
    return shortest;
}

} // namespace

std::string InOneLine(std::string_view text) {
    std::string line;
    for (const char c : WithoutControls(text)) {
        if (c == '\n')
            line += "\\x0A";
        else if (c == '\r')
            line += "\\x0D";
        else
            line += c;
    }
    return line;
}

void PrintFact(std::string_view name, const std::string& text) {
    std::cout << Padded(name, 14) << "  " << InOneLine(text) << '\n';
}

// Adding zero takes the sign off one.
std::string LengthText(double value) { return GeneralText(value + 0.0, 6); }

std::string StyleText(const TextInfo& style) {
    std::string text = NameOf(style.Style(), kTextStyles) + ", " +
                       NameOf(style.Justification(), kJustifications) + ", size " + LengthText(style.Size());
    if (style.Rotation().Get() != 0) text += ", turned by " + LengthText(style.Rotation().Get()) + " degrees";
    if (style.MultiLine())
        text += ", multi-line" +
                (style.RectWidth() > 0 ? " of width " + LengthText(style.RectWidth()) : std::string());
    return text;
}

void PrintFont(const TextInfo& style, const FontInUse& font, float factor) {
    PrintFact("face", FamilyText(font, ToUtf8(style.Font())));
    PrintFact("style", StyleText(style));
    PrintFact("height factor", LengthText(factor));
}

void PrintBox(const TextRectComp::Rectangle& box) {
    PrintFact("rectangle", LengthText(box.Width()) + " wide, " + LengthText(box.Height()) + " high");
    std::string corners;
    for (int i = 0; i < box.NumCorners(); ++i)
        corners += (i > 0 ? "  " : "") + ('(' + LengthText(box.Corner(i).X())) + ", " +
                   LengthText(box.Corner(i).Y()) + ')';
    PrintFact("corners", corners);
}

void NoteOverflow() {
    PrintNote("chartutil: note: texts of this size are not measured exactly, since their heights do not fit; "
              "measure at a smaller size and multiply");
}

Json StyleJson(const TextInfo& style) {
    return {{"font", ToUtf8(style.Font())},
            {"size", Shortest(style.Size())},
            {"style", NameOf(style.Style(), kTextStyles)},
            {"justification", NameOf(style.Justification(), kJustifications)},
            {"rotation", style.Rotation().Get()},
            {"width", Shortest(style.RectWidth())},
            {"multiLine", style.MultiLine()}};
}

Json FontJson(const FontInUse& font, float factor) {
    Json family = font.family.empty() ? Json() : Json(ToUtf8(font.family));
    return {
        {"family", std::move(family)}, {"isInstalled", font.isInstalled}, {"heightFactor", Shortest(factor)}};
}

Json BoxJson(const TextRectComp::Rectangle& box) {
    Json corners = Json::array();
    for (int i = 0; i < box.NumCorners(); ++i)
        corners.push_back({box.Corner(i).X() + 0.0, box.Corner(i).Y() + 0.0});
    return {{"width", box.Width()}, {"height", box.Height()}, {"corners", std::move(corners)}};
}
