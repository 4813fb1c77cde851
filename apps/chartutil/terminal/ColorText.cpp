#include "apps/chartutil/terminal/ColorText.h"

#include "VelmBase/FormatString.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/Picture.h"
#include "apps/chartutil/terminal/Console.h"

#include <charconv>
#include <optional>
#include <vector>

namespace {

// "#RRGGBB" or "R,G,B".
std::optional<RGBColor> ParseColor(const std::string& text) {
    const auto number = [](const std::string& digits, int base, int& value) {
        const char* const end = digits.data() + digits.size();
        const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
        return error == std::errc() && stop == end && digits[0] != '-';
    };
    int packed = 0;
    if (text.size() == 7 && text[0] == '#' && number(text.substr(1), 16, packed))
        return RGBColor(packed >> 16, packed >> 8, packed);
    const FormatString items(FromUtf8(text), L',');
    int components[3] = {};
    if (items.NumItems() != 3) return std::nullopt;
    for (int i = 0; i < 3; ++i) {
        const std::string item = ToUtf8(TrimmedW(items.Item(i)));
        if (item.empty() || !number(item, 10, components[i]) || components[i] > 255) return std::nullopt;
    }
    return RGBColor(components[0], components[1], components[2]);
}

} // namespace

RGBColor RequireColor(const std::string& text) {
    const std::optional<RGBColor> color = ParseColor(text);
    if (!color)
        throw CommandError(ExitCode::WRONG_USE, "'" + text +
                                                    "' is no colour; write it as '#RRGGBB' or as R,G,B with "
                                                    "numbers from 0 to 255");
    return *color;
}

std::string OnColor(const std::string& text, const RGBColor& color) {
    if (!OutputIsTerminal()) return text;
    const RGBColor ink = ReadableOn(color);
    const auto codes = [](const RGBColor& c) {
        return std::to_string(c.Red()) + ';' + std::to_string(c.Green()) + ';' + std::to_string(c.Blue());
    };
    return Colored(" " + text + " ", ("38;2;" + codes(ink) + ";48;2;" + codes(color)).c_str());
}

DXFColorTable OpenColorTable(const std::string& path, bool& complete) {
    FileObject file;
    if (!file.Open(FromUtf8(path), 0))
        throw CommandError(ExitCode::IO_ERROR,
                           path + ": cannot be read as a settings file; check the name, the permissions and "
                                  "that no section header is empty");
    DXFColorTable table;
    std::vector<std::wstring> remarks;
    complete = table.FileOpen(file, &remarks);
    if (!complete && !file.GetSection(L"ColorTable"))
        throw CommandError(ExitCode::CHECK_FAILED,
                           path + ": no colour table: " + ToUtf8(remarks.at(0)) +
                               "; 'chartutil colors import' makes a table from a .cpt file");
    for (const std::wstring& remark : remarks) PrintNote(path + ": " + ToUtf8(remark));
    if (remarks.size() == ColorTable::MAX_REMARKS) PrintNote(path + ": and perhaps more");
    return table;
}
