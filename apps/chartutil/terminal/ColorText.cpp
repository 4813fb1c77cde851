// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/ColorText.h"

#include "VelmBase/FormatString.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/HexText.h"

#include <charconv>

namespace {

bool ParseNumber(std::string_view digits, int base, int& value) {
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    return error == std::errc() && stop == end && digits[0] != '-';
}

std::optional<RGBColor> ParseComponents(const std::string& text) {
    const FormatString items(FromUtf8(text), L',');
    int components[3] = {};
    if (items.NumItems() != 3) return std::nullopt;
    for (int i = 0; i < 3; ++i) {
        const std::string item = ToUtf8(TrimmedW(items.Item(i)));
        if (item.empty() || !ParseNumber(item, 10, components[i]) || components[i] > 255) return std::nullopt;
    }
    return RGBColor(components[0], components[1], components[2]);
}

bool OutputHasColors() { return OutputIsTerminal() && ColorsAreWanted(); }

std::string InLook(std::string_view text, const std::string& codes) {
    if (!OutputHasColors()) return std::string(text);
    return "\x1b[" + codes + "m" + std::string(text) + "\x1b[0m";
}

} // namespace

std::string Colored(std::string_view text, TextColor color) {
    return InLook(text, std::to_string(static_cast<int>(color)));
}

std::string OnColor(const std::string& text, const RGBColor& color) {
    if (!OutputHasColors()) return text;
    const RGBColor ink = ReadableOn(color);
    const auto codes = [](const RGBColor& c) {
        return std::to_string(c.Red()) + ';' + std::to_string(c.Green()) + ';' + std::to_string(c.Blue());
    };
    return InLook(" " + text + " ", "38;2;" + codes(ink) + ";48;2;" + codes(color));
}

std::string Components(const RGBColor& color) {
    return std::to_string(color.Red()) + ',' + std::to_string(color.Green()) + ',' +
           std::to_string(color.Blue());
}

std::optional<RGBColor> ParseHexColor(std::string_view text) {
    int packed = 0;
    if (text.size() != 7 || text[0] != '#' || !ParseNumber(text.substr(1), 16, packed)) return std::nullopt;
    return RGBColor(packed >> 16, packed >> 8, packed);
}

RGBColor RequireColor(const std::string& text) {
    std::optional<RGBColor> color = ParseHexColor(text);
    if (!color) color = ParseComponents(text);
    if (!color)
        throw CommandError(ExitCode::WRONG_USE, "'" + text +
                                                    "' is no colour; write it as '#RRGGBB' or as R,G,B with "
                                                    "numbers from 0 to 255");
    return *color;
}
