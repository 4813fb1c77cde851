// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/OutputOptions.h"
#include "apps/chartutil/commands/style/Names.h"
#include "apps/chartutil/commands/text/Texts.h"

namespace {

// For options of which an empty text, as an unset variable of a script gives it, would make nothing.
CLI::Validator IsFilled() {
    return {[](const std::string& text) {
                return std::string(text.empty() ? "is empty; give it a value or leave it out" : "");
            },
            ""};
}

// The heading that the options which are added from here on stand under.
void Begin(CLI::App& command, const char* group) { command.option_defaults()->group(group); }
constexpr char kStyle[] = "Style", kOther[] = "Options";

void AddStyle(CLI::App& command, StyleOptions& options, const char* line) {
    Begin(command, kStyle);
    command
        .add_option("--style", options.line,
                    std::string("A style in one line, such as '") + line + "'; the other options go over it")
        ->type_name("LINE")
        ->check(IsFilled());
    AddOptional(command, "--font", options.font, "The font's face; Arial without this and --style")
        ->type_name("FACE");
    command
        .add_option("--size", options.size,
                    "The text's height, in the plot's unit; 2.5 without this and --style")
        ->type_name("NUMBER")
        ->check(IsFilled());
    command.add_flag("--bold", options.isBold, "Bold");
    command.add_flag("--italic", options.isItalic, "Italic");
    command.add_flag("--underline", options.isUnderlined, "Underlined");
    Begin(command, kOther);
}

void AddPlacing(CLI::App& command, StyleOptions& options) {
    Begin(command, kStyle);
    command.add_option("--rotation", options.rotation, "The text's direction, in degrees clockwise")
        ->type_name("NUMBER")
        ->check(IsFilled());
    command
        .add_option("--justification", options.justification,
                    "What stands on the insertion point: bottom-left, middle-centre, baseline-right "
                    "and so on; bottom-left without this and --style")
        ->type_name("NAME")
        ->check(OfferedNames(TypedNames(kJustifications)))
        ->check(IsFilled());
    Begin(command, kOther);
}

void AddOutput(CLI::App& command, PictureTarget& picture, bool& json) {
    AddPicture(command, "--picture", picture, "Draw it into this file")->check(IsFilled());
    command.add_flag("--json", json, "Print a JSON document");
}

void AddMeasure(CLI::App& text) {
    const auto [command, options] = AddCommand<MeasureText>(
        text, "measure", "The rectangle that a text covers about its insertion point", Run,
        R"(Lengths are in the unit of --size, and coordinates those of a plot, with y up and (0, 0) at the
insertion point. The rectangle of a baseline justification stands on the baseline. The height
factor makes what is visible above the descent as high as --size says.

Multi-line text is broken at its line breaks, and at blanks so that its lines fit --width.

Examples:
  chartutil text measure 'Sounding 123.4' --font 'Liberation Sans' \
      --size 3 --justification middle-centre
  chartutil text measure Bay --style 'Arial,5,1,8,0,30' --picture b.svg
  chartutil text measure --width 60 --json - < notice.txt)");
    command.add_option("TEXT", options.text, "The text; '-' is standard input, of up to 16 MB")->required();
    AddStyle(command, options, "Arial,2.5,0,0,0,0,0,0,0,0");
    AddPlacing(command, options);
    command.add_flag("--multi-line", options.isMultiLine, "Break the text into lines");
    command.add_option("--width", options.width, "Wrap multi-line text into this width; 0 does not wrap")
        ->type_name("NUMBER")
        ->check(IsFilled());
    AddOutput(command, options.picture, options.json);
}

void AddSounding(CLI::App& text) {
    const auto [command, options] = AddCommand<MeasureSounding>(
        text, "sounding", "How a depth is written: its two parts and their rectangles", Run,
        R"(Lengths are in the unit of --size, and coordinates those of a plot, with y up and (0, 0) at the
position of the depth.

Examples:
  chartutil text sounding 12.34 --presentation lowered-decimals
  chartutil text sounding 12.34 -1.25 --each --picture depths.png
  chartutil text sounding 7 --json \
      --style 'Arial,2.5,0,8,0,0,0,0,0,0,1,2,1,1,1,0,0')");
    AllowPointAfterMinus(
        command, *command.add_option("DEPTH", options.values, "Depths, with a decimal point")->required());
    AddStyle(command, options, "Arial,2.5,0,0,0,0,0,0,0,0,2,0,0,1,1,0,0");
    AddPlacing(command, options);
    command.add_option("--precision", options.precision, "Decimal places; 2 without this and --style")
        ->check(CLI::Range(0, 300));
    CLI::Option* const presentation = command.add_option("--presentation", options.presentation,
                                                         "How decimals look: " + ListOfNames(kPresentations));
    CLI::Option* const placement = command.add_option(
        "--placement", options.placement, "What stands on the position: " + ListOfNames(kPlacements));
    presentation->check(OfferedNames(TypedNames(kPresentations)));
    placement->check(OfferedNames(TypedNames(kPlacements)));
    for (CLI::Option* const option : {presentation, placement}) option->type_name("NAME")->check(IsFilled());
    command.add_flag("--no-decimal-zeros", options.hasNoDecimalZeros,
                     "Leave out decimals that are all zeros");
    command.add_flag("--invert-sign", options.isSignInverted, "Depths are signed the other way");
    command.add_flag("--underline-drying", options.isDryingUnderlined, "Underline drying heights");
    command.add_flag("--each", options.isEach, "Every presentation with every placement")
        ->excludes(presentation)
        ->excludes(placement);
    AddOutput(command, options.picture, options.json);
}

void AddJustifications(CLI::App& text) {
    const auto [command, options] = AddCommand<DrawJustifications>(
        text, "justifications", "Draw a text at every justification, in its rectangles", Run,
        R"(Examples:
  chartutil text justifications --picture sheet.svg --font Arial
  chartutil text justifications --picture sheet.png --rotations 0,45,90 \
      --sample 'Liberation Serif=Depth' --sample 'DejaVu Sans=)"
        "\u0412\u0430\u0439'");
    AddPicture(command, "--picture", options.picture, "The file to draw into")->required()->check(IsFilled());
    AddStyle(command, options, "Arial,2.5,0,0,0,0,0,0,0,0");
    command.add_option("--sample", options.samples, "A face and a text in it; can be given again for others")
        ->type_name("FACE=TEXT")
        ->allow_extra_args(false);
    command.add_option("--rotations", options.rotations, "The text's directions, in degrees clockwise")
        ->type_name("NUMBERS")
        ->capture_default_str();
}

} // namespace

void AddTextCommand(CLI::App& program) {
    CLI::App& text = *program.add_subcommand("text", "What texts and depth labels cover on a chart");
    text.require_subcommand(1);
    AddMeasure(text);
    AddSounding(text);
    AddJustifications(text);
}
