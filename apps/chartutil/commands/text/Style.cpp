#include "apps/chartutil/commands/text/Style.h"

#include "apps/chartutil/commands/style/Names.h"
#include "apps/chartutil/commands/text/FontInUse.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <cmath>

namespace {

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

template <typename Style> void ApplyTo(Style& style, const StyleOptions& options) {
    if (!options.line.Empty()) style.FromString(options.line.Wide());
    SetFields(options, style);
}

} // namespace

void Apply(const StyleOptions& options, TextInfo& style) { ApplyTo(style, options); }

void Apply(const StyleOptions& options, DepthLabelInfo& style) { ApplyTo(style, options); }

float RequireLength(const std::string& text, const char* what) {
    constexpr double kLongest = 1e6;
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
    const bool isSmall = std::abs(style.Size()) < 1;
    throw CommandError(ExitCode::CHECK_FAILED, what + "at a size of " + LengthText(style.Size()) + " it is " +
                                                   (isSmall ? "less than a thousandth high" : "too high") +
                                                   "; measure at a " + (isSmall ? "larger" : "smaller") +
                                                   " size and multiply");
}
