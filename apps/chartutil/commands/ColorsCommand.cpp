// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/HSVColor.h"
#include "VelmBase/Math.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/OutputOptions.h"
#include "apps/chartutil/commands/colors/ColorTablePicture.h"
#include "apps/chartutil/commands/colors/PalettePicture.h"
#include "apps/chartutil/drawing/LabColor.h"
#include "apps/chartutil/files/ColorTableFile.h"
#include "apps/chartutil/files/CptFile.h"
#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/HexText.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/ValueNames.h"
#include "apps/chartutil/work/LongWork.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>

namespace {

// With all the digits that the value has.
std::string ValueText(double value) { return GeneralText(value, std::max(15, GetDoublePrecision(value))); }

// JSON has no number for what is not finite.
Json ValueJson(double value) { return std::isfinite(value) ? Json(value) : Json(ValueText(value)); }

// A double would show digits that the float does not have.
Json FloatJson(float value) { return RoundedToDigits(static_cast<double>(value), 7); }

Json ColorJson(const RGBColor& color) {
    return {{"hex", HexText(color)},
            {"rgb", {color.Red(), color.Green(), color.Blue()}},
            {"reference", static_cast<unsigned long>(color)}};
}

// --- nearest ---

struct NearestOptions {
    std::string color;
    bool isPerceptual = false;
    bool json = false;
};

// The index that looks most like the colour; of several the one that DXFColor takes, or else the lowest.
DXFColor NearestToTheEye(const RGBColor& color) {
    DXFColor nearest(color);
    double least = ColorDifference(color, nearest);
    for (int index = 0; index < 256; ++index) {
        const double difference = ColorDifference(color, DXFColor(index));
        if (difference >= least) continue;
        nearest = DXFColor(index);
        least = difference;
    }
    return nearest;
}

const char* InWords(double difference) {
    if (difference < 0.05) return "not at all";
    if (difference < 1) return "less than is seen";
    if (difference < 3) return "seen side by side";
    if (difference < 10) return "seen at a glance";
    return "another colour to the eye";
}

void Run(const NearestOptions& options) {
    const RGBColor color = RequireColor(options.color);
    const DXFColor nearest = options.isPerceptual ? NearestToTheEye(color) : DXFColor(color);
    const RGBColor palette(nearest);
    const double difference = ColorDifference(color, palette);
    const HSVColor hsv(color);
    if (options.json) {
        PrintJson({{"color", ColorJson(color)},
                   {"hsv", {FloatJson(hsv.Hue()), FloatJson(hsv.Saturation()), FloatJson(hsv.Value())}},
                   {"index", nearest.Index()},
                   {"palette", ColorJson(palette)},
                   {"difference", RoundedToDigits(difference, 6)}});
        return;
    }
    char line[100];
    std::snprintf(line, sizeof line,
                  hsv.Hue() < 0 ? "grey, value %.3g" : "hue %.4g, saturation %.3g, value %.3g",
                  static_cast<double>(hsv.Hue() < 0 ? hsv.Value() : hsv.Hue()),
                  static_cast<double>(hsv.Saturation()), static_cast<double>(hsv.Value()));
    std::cout << "colour   " << OnColor(HexText(color), color) << "  " << Components(color) << "  reference "
              << static_cast<unsigned long>(color) << "\n         " << line << "\nindex    "
              << nearest.Index() << "\npalette  " << OnColor(HexText(palette), palette) << "  "
              << Components(palette) << "  reference " << static_cast<unsigned long>(palette)
              << "\ndiffers  by " << DecimalText(difference, 1) << ", " << InWords(difference) << '\n';
}

// --- palette ---

struct PaletteOptions {
    PictureTarget picture;
    bool json = false;

    bool IsLong() const { return picture.IsAsked(); }
};

void Run(const PaletteOptions& options) {
    if (options.picture.IsAsked()) {
        RequirePicture(options.picture);
        SavePicture(PalettePicture(), options.picture);
    }
    if (options.json) {
        Json colors = Json::array();
        for (int index = 0; index < 256; ++index) {
            Json entry = {{"index", index}};
            entry.update(ColorJson(DXFColor(index)));
            colors.push_back(entry);
        }
        PrintJson({{"palette", colors}});
        return;
    }
    for (int index = 0; index < 256; ++index) {
        const RGBColor color{DXFColor(index)};
        const std::string cell = Padded(std::to_string(index), 3, Align::RIGHT) + ' ' + HexText(color);
        std::cout << OnColor(cell, color) << (index % 8 == 7 ? "\n" : "  ");
    }
}

// --- table ---

struct TableOptions {
    UserText file;
    PictureTarget picture;
    bool dxf = false;
    bool json = false;

    bool IsLong() const { return picture.IsAsked() || IsMuchWork(file); }
};

void PrintTable(const DXFColorTable& table, bool dxf) {
    const auto line = [dxf](const std::string& from, const RGBColor& color, int index) {
        std::cout << Padded(from, 20, Align::RIGHT) << "  " << OnColor(HexText(color), color) << "  ";
        if (dxf)
            std::cout << Padded(Components(color), 13) << "DXF " << index << '\n';
        else
            std::cout << Components(color) << '\n';
    };
    const RGBColor below(table.DefaultColor());
    line("below", below, DXFColor(below).Index());
    for (int i = 0; i < table.NumEntries(); ++i) {
        StopIfInterrupted();
        line("from " + ValueText(table.EntryValue(i)), RGBColor(table.EntryColor(i)),
             dxf ? table.EntryDxfColor(i).Index() : 0);
    }
}

Json TableJson(const DXFColorTable& table, const TableOptions& options, bool complete) {
    Json bands = Json::array();
    for (int i = 0; i < table.NumEntries(); ++i) {
        StopIfInterrupted();
        Json band = {{"from", ValueJson(table.EntryValue(i))}};
        band.update(ColorJson(RGBColor(table.EntryColor(i))));
        if (options.dxf) band["dxf"] = table.EntryDxfColor(i).Index();
        bands.push_back(band);
    }
    const RGBColor below(table.DefaultColor());
    Json document = {{"file", options.file.Utf8()},
                     {"complete", complete},
                     {"below", ColorJson(below)},
                     {"bands", std::move(bands)}};
    if (options.dxf) document["below"]["dxf"] = DXFColor(below).Index();
    return document;
}

void Run(const TableOptions& options) {
    if (options.picture.IsAsked()) RequirePicture(options.picture);
    bool complete = true;
    DXFColorTable table = OpenColorTable(options.file, complete);
    // Merging makes no sense of the entries as the file has them, so it is left to --dxf.
    if (options.dxf) table.Unique();
    if (options.picture.IsAsked())
        SavePicture(ColorTablePicture(table, FileNameOf(InputName(options.file)), options.dxf),
                    options.picture);
    if (options.json)
        PrintJson(TableJson(table, options, complete));
    else
        PrintTable(table, options.dxf);
    RequireComplete(complete, options.file);
}

// --- import ---

struct ImportOptions {
    UserText from, to;
    bool isForced = false;
    int step = 16;

    bool IsLong() const { return IsMuchWork(from); }
};

void Run(const ImportOptions& options) {
    std::error_code ignored; // a file that is not there yet is another one
    if (std::filesystem::equivalent(NativePath(options.from), NativePath(options.to), ignored))
        throw CommandError(ExitCode::WRONG_USE,
                           options.to.Utf8() +
                               ": is the file to be read; name another one for the colour table");
    RequireReplaceable(options.to, FileKind::COLOR_TABLE, options.isForced);
    const CptTable table = ReadCptFile(options.from, options.step);
    for (const std::string& remark : table.remarks) PrintNote(InputName(options.from) + ": " + remark);
    SaveColorTable(table.colors, options.to);
    PrintDone(OutputName(options.to) + ": " + std::to_string(table.colors.NumEntries()) + " bands from " +
              ValueText(table.colors.EntryValue(0)) + " on");
}

// --- the command line ---

void AddJson(CLI::App& command, bool& json) { command.add_flag("--json", json, "Print a JSON document"); }

void AddPicture(CLI::App& command, PictureTarget& picture) {
    AddPicture(command, "--picture", picture, "Also draw it into this file");
}

void AddNearest(CLI::App& colors) {
    const auto [command, options] = AddCommand<NearestOptions>(
        colors, "nearest", "The DXF colour nearest to a colour", Run,
        R"(Drawings rely on the index that is found by hue, brightness and saturation. How much its colour
differs to the eye is told by CIEDE2000, in which 1 is just seen and 100 is black beside white.

Examples:
  chartutil colors nearest '#FF8000'
  chartutil colors nearest '#D2B48C' --perceptual
  chartutil colors nearest 255,128,0 --json)");
    command.add_option("COLOUR", options.color, "'#RRGGBB', or R,G,B with numbers from 0 to 255")->required();
    command.add_flag("--perceptual", options.isPerceptual, "The index whose colour differs least to the eye");
    AddJson(command, options.json);
}

void AddPalette(CLI::App& colors) {
    const auto [command, options] =
        AddCommand<PaletteOptions>(colors, "palette", "The 256 colours of the DXF palette", Run, R"(Examples:
  chartutil colors palette
  chartutil colors palette --picture palette.svg)");
    AddPicture(command, options.picture);
    AddJson(command, options.json);
}

void AddTable(CLI::App& colors) {
    const auto [command, options] = AddCommand<TableOptions>(
        colors, "table", "The bands of a colour table", Run,
        R"(What is odd in the file goes to standard error; the exit code is 1 when not all of it could be
read.

Examples:
  chartutil colors table depths.col
  chartutil colors table depths.col --dxf --picture depths.png)");
    command.add_option("FILE", options.file, "The colour table, a .col file; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_flag("--dxf", options.dxf,
                     "With the DXF index of each band; equal neighbours become one band");
    AddPicture(command, options.picture);
    AddJson(command, options.json);
}

void AddImport(CLI::App& colors) {
    const auto [command, options] = AddCommand<ImportOptions>(
        colors, "import", "Make a colour table from a .cpt colour palette table", Run,
        R"(The background colour (B) becomes the default colour and the foreground colour (F) a band above
the last one; the colour for missing values (N) has no place in a table. A table of values from 0
to 1 or -1 to 1 that names a RANGE is stretched to it.

Examples:
  chartutil colors import bathy.cpt bathy.col
  chartutil colors import --step 4 bathy.cpt fine.col)");
    command.add_option("FROM", options.from, "The .cpt file, regular or by category; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_option("TO", options.to, "The colour table to write, a .col file; '-' is standard output")
        ->type_name(kFileValue)
        ->required();
    AddForce(command, options.isForced);
    command
        .add_option("--step", options.step,
                    "Where colours change gradually: the most by which neighbouring bands differ in red, "
                    "green or blue")
        ->check(CLI::Range(1, 255))
        ->capture_default_str();
}

} // namespace

void AddColorsCommand(CLI::App& program) {
    CLI::App& colors = *program.add_subcommand("colors", "Colours, the DXF palette and colour tables");
    colors.require_subcommand(1);
    AddNearest(colors);
    AddPalette(colors);
    AddTable(colors);
    AddImport(colors);
}
