// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/CptFile.h"

#include "UtilityDLL/colors/HSVColor.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

namespace {

// What a colour table may become; beyond, a few lines would grow to gigabytes.
constexpr int kMostBands = 100'000;

using Words = std::vector<std::string_view>;

// Red, green and blue from 0 to 255, or hue in degrees, saturation and value from 0 to 1.
struct Color {
    std::array<double, 3> components{};
    bool isHsv = false;
};

struct NamedColor {
    std::string_view name;
    int red, green, blue;
};
constexpr NamedColor kNames[] = {
    {"black", 0, 0, 0},
    {"white", 255, 255, 255},
    {"red", 255, 0, 0},
    {"green", 0, 255, 0},
    {"blue", 0, 0, 255},
    {"yellow", 255, 255, 0},
    {"cyan", 0, 255, 255},
    {"magenta", 255, 0, 255},
    {"orange", 255, 165, 0},
    {"purple", 160, 32, 240},
    {"brown", 165, 42, 42},
    {"pink", 255, 192, 203},
    {"snow", 255, 250, 250},
    {"burlywood", 222, 184, 135},
    {"saddlebrown", 139, 69, 19},
    {"bisque2", 238, 213, 183},
    {"ivory2", 238, 238, 224},
    {"darkorange1", 255, 127, 0},
    {"darkorange3", 205, 102, 0},
    {"mediumseagreen", 60, 179, 113},
    {"mediumaquamarine", 102, 205, 170},
    {"lightgray", 211, 211, 211},
    {"darkgray", 169, 169, 169},
    {"gray", 190, 190, 190},
};

RGBColor Rgb(const Color& color) {
    const auto& [a, b, c] = color.components;
    if (!color.isHsv)
        return {static_cast<int>(std::lround(a)), static_cast<int>(std::lround(b)),
                static_cast<int>(std::lround(c))};
    // Without saturation the hue means nothing here, while an HSVColor would be black with one.
    const float hue = b > 0 ? static_cast<float>(a) : HSVColor::UNDEFINED_HUE;
    return HSVColor(hue, static_cast<float>(b), static_cast<float>(c));
}

std::optional<double> Number(std::string_view text) {
    double value = 0;
    return ParseNumber(text, value) ? std::optional(value) : std::nullopt;
}

Words Split(std::string_view text, std::string_view separators) {
    Words words;
    while (true) {
        const std::size_t begin = text.find_first_not_of(separators);
        if (begin == std::string_view::npos) return words;
        text.remove_prefix(begin);
        const std::size_t length = std::min(text.find_first_of(separators), text.size());
        words.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}

bool SameWord(std::string_view a, std::string_view b) { return icompareW(FromUtf8(a), FromUtf8(b)); }

std::optional<Color> FromComponents(const Words& words, bool isHsv) {
    if (words.size() != 3) return std::nullopt;
    Color color{{}, isHsv};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::optional<double> number = Number(words[i]);
        const double most = !isHsv ? 255 : i == 0 ? 360 : 1;
        if (!number || *number < 0 || *number > most) return std::nullopt;
        color.components[i] = *number;
    }
    return color;
}

std::optional<Color> ParseColor(std::string_view text) {
    if (text.find('/') != std::string_view::npos) return FromComponents(Split(text, "/"), false);
    const auto exactly = [](int red, int green, int blue) {
        return Color{{static_cast<double>(red), static_cast<double>(green), static_cast<double>(blue)},
                     false};
    };
    if (const std::optional<RGBColor> color = ParseHexColor(text))
        return exactly(color->Red(), color->Green(), color->Blue());
    if (const std::optional<double> grey = Number(text))
        return *grey >= 0 && *grey <= 255 ? std::optional(Color{{*grey, *grey, *grey}, false}) : std::nullopt;
    if (text[0] >= '0' && text[0] <= '9') return FromComponents(Split(text, "-"), true);
    for (const NamedColor& named : kNames)
        if (SameWord(text, named.name)) return exactly(named.red, named.green, named.blue);
    // gray0 to gray100 are hundredths of white.
    const std::optional<double> percent =
        text.size() > 4 && SameWord(text.substr(0, 4), "gray") ? Number(text.substr(4)) : std::nullopt;
    if (!percent || *percent < 0 || *percent > 100) return std::nullopt;
    const double grey = std::round(*percent * 2.55);
    return Color{{grey, grey, grey}, false};
}

struct Slice {
    double from = 0;
    double to = 0; // equal to `from` for a category
    Color low, high;
};

class Reader {
public:
    Reader(const UserText& path, int step) : m_path(path), m_name(InputName(path)), m_step(step) {}

    CptTable Read() {
        constexpr std::size_t kMost = 16 << 20;
        const std::string content = ReadFile(m_path, kMost);
        std::string_view rest = content;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            ++m_line;
            StopIfInterrupted();
            ReadLine(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
        if (m_slices.empty())
            throw CommandError(ExitCode::CHECK_FAILED,
                               m_name +
                                   ": has no colours; a .cpt file has lines such as '-10 0/0/255 0 white'");
        Stretch();
        return Table();
    }

private:
    [[noreturn]] void Fail(const std::string& what) const {
        throw CommandError(ExitCode::CHECK_FAILED, m_name + ": line " + std::to_string(m_line) + ": " + what);
    }

    void ReadLine(std::string_view line) {
        constexpr std::string_view kBlanks = " \t\r\f\v";
        if (Split(line, kBlanks).empty()) return;
        line.remove_prefix(line.find_first_not_of(kBlanks));
        if (line[0] == '#') {
            ReadComment(line);
            return;
        }
        const std::string_view data = line.substr(0, line.find(';')); // a label follows the semicolon
        Words words = Split(data, kBlanks);
        if (words.empty()) return;
        if (words[0].size() == 1 && std::string_view("BFN").find(words[0][0]) != std::string_view::npos) {
            ReadSpecial(words);
            return;
        }
        // A last letter asks for the annotation of a scale.
        if (words.size() > 2 && words.back().size() == 1 &&
            std::string_view("LUB").find(words.back()[0]) != std::string_view::npos)
            words.pop_back();
        ReadSlice(words);
    }

    void ReadComment(std::string_view line) {
        const Words words = Split(line, "# \t\r=");
        if (words.size() < 2) return;
        // Without an equals sign behind the name it may be a comment in plain words.
        const std::string_view rest = line.substr(line.find(words[0]) + words[0].size());
        const bool isSure = rest[rest.find_first_not_of(" \t")] == '=';
        if (!isSure && words.size() > 2) return;
        if (words[0] == "COLOR_MODEL") {
            const bool isHsv = SameWord(words[1], "hsv") || SameWord(words[1], "+hsv");
            const bool isRgb = SameWord(words[1], "rgb") || SameWord(words[1], "+rgb");
            if (isHsv || isRgb)
                m_isHsv = isHsv;
            else if (isSure)
                Fail("the colour model '" + std::string(words[1]) + "' is not known; RGB and HSV are");
        } else if (words[0] == "RANGE") {
            const Words ends = Split(words[1], "/");
            const std::optional<double> low = ends.size() == 2 ? Number(ends[0]) : std::nullopt;
            const std::optional<double> high = ends.size() == 2 ? Number(ends[1]) : std::nullopt;
            if (low && high && *low < *high && std::isfinite(*high - *low))
                m_range = {*low, *high};
            else if (isSure)
                Fail("RANGE has to be two rising numbers, as in -8000/0");
        }
    }

    Color ColorOf(const Words& words, std::size_t first, std::size_t count) const {
        const Words own(words.begin() + static_cast<std::ptrdiff_t>(first),
                        words.begin() + static_cast<std::ptrdiff_t>(first + count));
        const std::optional<Color> color = count == 3 ? FromComponents(own, m_isHsv) : ParseColor(own[0]);
        if (!color)
            Fail("'" + std::string(own[0]) +
                 "' is no colour that is known here; write it as R/G/B from 0 to 255");
        return *color;
    }

    double ValueOf(std::string_view word) const {
        const std::optional<double> value = Number(word);
        if (!value) Fail("'" + std::string(word) + "' is not a number");
        return *value;
    }

    void ReadSpecial(const Words& words) {
        if (words.size() != 2 && words.size() != 4) Fail("a colour has to follow the letter");
        const Color color = ColorOf(words, 1, words.size() - 1);
        if (words[0] == "B")
            m_background = color;
        else if (words[0] == "F")
            m_foreground = color;
        else
            m_remarks.push_back("line " + std::to_string(m_line) +
                                ": the colour for missing values has no place in a colour table");
    }

    void ReadSlice(const Words& words) {
        Slice slice;
        slice.from = ValueOf(words[0]);
        switch (words.size()) {
        case 2: // by category
            slice.to = slice.from;
            slice.low = slice.high = ColorOf(words, 1, 1);
            break;
        case 4:
            slice.to = ValueOf(words[2]);
            slice.low = ColorOf(words, 1, 1);
            slice.high = ColorOf(words, 3, 1);
            break;
        case 8:
            slice.to = ValueOf(words[4]);
            slice.low = ColorOf(words, 1, 3);
            slice.high = ColorOf(words, 5, 3);
            break;
        default:
            Fail("a slice is 'z0 colour z1 colour', a category 'z colour'");
        }
        if (words.size() > 2 && !(slice.from < slice.to)) Fail("the second value has to be above the first");
        if (!m_slices.empty() && slice.from < m_slices.back().to)
            Fail("the value " + std::string(words[0]) + " is below the end of the slice before");
        m_slices.push_back(slice);
    }

    void Stretch() {
        if (!m_range) return;
        const double first = m_slices.front().from;
        const double last = m_slices.back().to;
        const auto& [low, high] = *m_range;
        if (last != 1 || (first != 0 && first != -1)) return; // its values are no shares
        const auto stretched = [&, low = low, high = high](double share) {
            if (first == 0) return low + share * (high - low);
            // From -1 to 1: each side of 0 has its own length where the range holds 0.
            if (low < 0 && high > 0) return share < 0 ? share * -low : share * high;
            return low + (share + 1) / 2 * (high - low);
        };
        for (Slice& slice : m_slices) {
            slice.from = stretched(slice.from);
            slice.to = stretched(slice.to);
        }
    }

    CptTable Table() {
        CptTable table;
        table.remarks = std::move(m_remarks);
        for (const Slice& slice : m_slices) AddBands(slice, table.colors);
        if (m_background) table.colors.SetDefaultColor(Rgb(*m_background));
        // A category is its value alone; there is nothing above the last one.
        const bool isRegular = m_slices.back().from < m_slices.back().to;
        if (m_foreground && isRegular) table.colors.AddEntry(m_slices.back().to, Rgb(*m_foreground));
        return table;
    }

    void AddBands(const Slice& slice, ColorTable& table) const {
        const RGBColor low = Rgb(slice.low);
        const RGBColor high = Rgb(slice.high);
        const int difference =
            std::max({std::abs(low.Red() - high.Red()), std::abs(low.Green() - high.Green()),
                      std::abs(low.Blue() - high.Blue())});
        // Round the hues the change is greater than the distance of its ends: 255 for each sixth.
        const bool isHsv = slice.low.isHsv && slice.high.isHsv;
        const double turn = isHsv ? std::fabs(slice.low.components[0] - slice.high.components[0]) / 60 : 0;
        const double change = std::max(static_cast<double>(difference), turn * 255);
        const int bands = std::max(1, static_cast<int>(std::ceil(change / m_step)));
        if (table.NumEntries() + bands > kMostBands)
            throw CommandError(ExitCode::CHECK_FAILED, m_name + ": gives more than " +
                                                           std::to_string(kMostBands) +
                                                           " bands; take a larger --step or a shorter table");
        for (int band = 0; band < bands; ++band) {
            const double way = (slice.to - slice.from) * band;
            const double value = std::isfinite(way)
                                     ? slice.from + way / bands
                                     : std::lerp(slice.from, slice.to, static_cast<double>(band) / bands);
            table.AddEntry(value, Between(slice, (band + 0.5) / bands));
        }
    }

    static RGBColor Between(const Slice& slice, double share) {
        const bool isHsv = slice.low.isHsv && slice.high.isHsv;
        const auto components = [isHsv](const Color& color) {
            if (isHsv || !color.isHsv) return color.components;
            const RGBColor rgb = Rgb(color);
            return std::array<double, 3>{static_cast<double>(rgb.Red()), static_cast<double>(rgb.Green()),
                                         static_cast<double>(rgb.Blue())};
        };
        const auto low = components(slice.low);
        const auto high = components(slice.high);
        Color color{{}, isHsv};
        for (std::size_t i = 0; i < 3; ++i) color.components[i] = low[i] + (high[i] - low[i]) * share;
        return Rgb(color);
    }

    UserText m_path;
    std::string m_name;
    int m_step;
    int m_line = 0;
    bool m_isHsv = false;
    std::optional<std::pair<double, double>> m_range;
    std::optional<Color> m_background, m_foreground;
    std::vector<Slice> m_slices;
    std::vector<std::string> m_remarks;
};

} // namespace

CptTable ReadCptFile(const UserText& path, int step) { return Reader(path, step).Read(); }
