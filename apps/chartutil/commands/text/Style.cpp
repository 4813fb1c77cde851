// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/text/Style.h"

#include "UtilityDLL/text/TextHeightFactComp.h"
#include "VelmBase/FormatString.h"
#include "apps/chartutil/commands/style/Names.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/drawing/FontInUse.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kLongest = 1e6;

void SetFields(const StyleOptions& options, TextInfo& style) {
    if (options.font) style.SetFont(options.font->Wide());
    if (!options.size.empty()) style.SetSize(RequireLength(options.size, "text height"));
    const auto add = [&](bool isGiven, TextInfo::STYLE flag) {
        if (isGiven) style.SetStyle(style.Style() | flag);
    };
    add(options.isBold, TextInfo::BOLD);
    add(options.isItalic, TextInfo::ITALIC);
    add(options.isUnderlined, TextInfo::UNDERLINE);
    if (!options.rotation.empty()) style.SetRotation(RequireAngle(options.rotation));
    if (!options.justification.empty())
        style.SetJustification(
            TextInfo::JUSTIFICATION(RequireName(options.justification, kJustifications, "justification")));
}

// A record takes what is no number for 0, at which a text covers nothing and nobody knows why.
void RequireNumbers(const UserText& line, std::size_t numKnown) {
    constexpr int kSize = 1;
    constexpr int kWidth = 6;
    const FormatString items(line.Wide(), L',', 64);
    const int count = std::min(items.NumItems(), static_cast<int>(numKnown));
    for (int i = 1; i < count; ++i) {
        const std::string item = ToUtf8(items[i]);
        double number = 0;
        const bool isNumber = ParseNumber(item, number);
        if (isNumber && ((i != kSize && i != kWidth) || std::abs(number) <= kLongest)) continue;
        throw CommandError(ExitCode::WRONG_USE, "'" + line.Utf8() + "' is no style: its item " +
                                                    std::to_string(i + 1) + ", '" + item + "', is " +
                                                    (isNumber ? "above 1000000" : "no number"));
    }
}

template <typename Style> void ApplyTo(Style& style, const StyleOptions& options) {
    if (!options.line.Empty()) {
        RequireNumbers(options.line, Style::OneLineItems().size());
        style.FromString(options.line.Wide());
    }
    SetFields(options, style);
}

} // namespace

void Apply(const StyleOptions& options, TextInfo& style) { ApplyTo(style, options); }

void Apply(const StyleOptions& options, DepthLabelInfo& style) { ApplyTo(style, options); }

float RequireLength(const std::string& text, const char* what) {
    double length = 0;
    if (!ParseNumber(text, length) || length < 0 || length > kLongest)
        throw CommandError(ExitCode::WRONG_USE,
                           "'" + text + "' is no " + what + "; give a number from 0 to 1000000, such as 2.5");
    return static_cast<float>(length);
}

Angle RequireAngle(const std::string& text) {
    double degrees = 0;
    if (!ParseNumber(text, degrees))
        throw CommandError(ExitCode::WRONG_USE,
                           "'" + text + "' is no angle; give a number of degrees clockwise, such as 30");
    return degrees;
}

void ThrowNotMeasured(const TextInfo& style) {
    const std::string what = "the text cannot be measured: ";
    TextInfo regular = style; // of which the heights of all are taken
    regular.SetStyle(TextInfo::REGULAR);
    for (const FontInUse& font : {FindFont(style), FindFont(regular)}) {
        if (!font.unusable.empty())
            throw CommandError(ExitCode::CHECK_FAILED,
                               what + "the file of the font " + ToUtf8(font.unusable) +
                                   " is damaged, too large or not to be read; install the font again");
        if (font.family.empty())
            throw CommandError(
                ExitCode::CHECK_FAILED,
                what + "no font with outlines is installed; install one, such as Liberation Sans");
    }
    const float size = std::abs(style.Size());
    regular.SetSize(
        std::max(size, 1.0f)); // below, the pixels of a display alone can leave nothing of a letter
    TextHeightFactComp& factors = TextHeightFactComp::Get();
    if (factors.GetMetrics(regular).otmSize != 0 && factors(regular) <= 0)
        throw CommandError(ExitCode::CHECK_FAILED,
                           what + "the descent and leading of the font " + ToUtf8(FindFont(regular).family) +
                               " leave no height to its letters; choose another font");
    const bool isSmall = size < 1;
    throw CommandError(ExitCode::CHECK_FAILED, what + "at a size of " + LengthText(style.Size()) + " it is " +
                                                   (isSmall ? "less than a thousandth high" : "too high") +
                                                   "; measure at a " + (isSmall ? "larger" : "smaller") +
                                                   " size and multiply");
}
