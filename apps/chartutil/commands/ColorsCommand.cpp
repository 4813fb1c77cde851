#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/colors/HSVColor.h"
#include "VelmBase/Math.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/colors/ColorPictures.h"
#include "apps/chartutil/drawing/Picture.h"
#include "apps/chartutil/files/ColorTableFile.h"
#include "apps/chartutil/files/CptFile.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>

namespace {

using Json = nlohmann::ordered_json;

std::string ValueText(double value, int digits) { return ToUtf8(NumberText::FromGeneral(value, digits)); }

// With all the digits that the value has.
std::string ValueText(double value) { return ValueText(value, std::max(15, GetDoublePrecision(value))); }

// JSON has no number for what is not finite.
Json ValueJson(double value) { return std::isfinite(value) ? Json(value) : Json(ValueText(value)); }

Json ColorJson(const RGBColor& color) {
    return {{"hex", HexText(color)},
            {"rgb", {color.Red(), color.Green(), color.Blue()}},
            {"reference", static_cast<unsigned long>(color)}};
}

// --- nearest ---

void Nearest(const std::string& text, bool json) {
    const RGBColor color = RequireColor(text);
    const DXFColor nearest(color);
    const RGBColor palette(nearest);
    const HSVColor hsv(color);
    if (json) {
        PrintJson({{"color", ColorJson(color)},
                   {"hsv", {hsv.Hue(), hsv.Saturation(), hsv.Value()}},
                   {"index", nearest.Index()},
                   {"palette", ColorJson(palette)}});
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
              << Components(palette) << "  reference " << static_cast<unsigned long>(palette) << '\n';
}

// --- palette ---

void Palette(const std::string& picture, bool json) {
    if (!picture.empty()) PalettePicture().Save(picture);
    if (json) {
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
        char cell[32];
        std::snprintf(cell, sizeof cell, "%3d %s", index, HexText(color).c_str());
        std::cout << OnColor(cell, color) << (index % 8 == 7 ? "\n" : "  ");
    }
}

// --- table ---

void Table(const std::string& path, const std::string& picture, bool dxf, bool json) {
    if (!picture.empty()) Picture::CheckEnding(picture);
    bool complete = true;
    DXFColorTable table = OpenColorTable(path, complete);
    // Merging makes no sense of the entries as the file has them, so it is left to --dxf.
    if (dxf) table.Unique();
    if (!picture.empty()) TablePicture(table, path.substr(path.find_last_of("/\\") + 1), dxf).Save(picture);

    Json bands = Json::array();
    for (int i = 0; i < table.NumEntries(); ++i) {
        const RGBColor color(table.EntryColor(i));
        Json band = {{"from", ValueJson(table.EntryValue(i))}};
        band.update(ColorJson(color));
        if (dxf) band["dxf"] = table.EntryDxfColor(i).Index();
        bands.push_back(band);
    }
    const RGBColor below(table.DefaultColor());
    if (json) {
        Json document = {
            {"file", path}, {"complete", complete}, {"below", ColorJson(below)}, {"bands", bands}};
        if (dxf) document["below"]["dxf"] = DXFColor(below).Index();
        PrintJson(document);
    } else {
        const auto line = [dxf](const std::string& from, const RGBColor& color, int index) {
            const std::string components = Components(color);
            std::cout << std::string(from.size() < 20 ? 20 - from.size() : 0, ' ') << from << "  "
                      << OnColor(HexText(color), color) << "  " << components;
            if (dxf) std::cout << std::string(13 - components.size(), ' ') << "DXF " << index;
            std::cout << '\n';
        };
        line("below", below, DXFColor(below).Index());
        for (int i = 0; i < table.NumEntries(); ++i)
            line("from " + ValueText(table.EntryValue(i)), RGBColor(table.EntryColor(i)),
                 dxf ? table.EntryDxfColor(i).Index() : 0);
    }
    if (!complete)
        throw CommandError(ExitCode::CHECK_FAILED,
                           path + ": not all of the table could be read; mend what is named above");
}

// --- import ---

void Import(const std::string& from, const std::string& to, int step) {
    std::error_code ignored; // a file that is not there yet is another one
    if (std::filesystem::equivalent(NativePath(from), NativePath(to), ignored))
        throw CommandError(ExitCode::WRONG_USE,
                           to + ": is the file to be read; name another one for the colour table");
    const CptTable table = ReadCptFile(from, step);
    const std::string place = from + ": ";
    for (const std::string& remark : table.remarks) PrintNote(place + remark);
    FileObject file;
    table.colors.FileSave(file);
    if (!file.Save(FromUtf8(to), 0))
        throw CommandError(ExitCode::IO_ERROR,
                           to + ": cannot be written; check that the folder exists and takes new files");
    std::cout << Printable(to) << ": " << table.colors.NumEntries() << " bands from "
              << ValueText(table.colors.EntryValue(0)) << " on\n";
}

} // namespace

void AddColorsCommand(CLI::App& program) {
    CLI::App* colors = program.add_subcommand("colors", "Colours, the DXF palette and colour tables");
    colors->require_subcommand(1);
    struct Options {
        std::string color, file, target, picture;
        bool json = false;
        bool dxf = false;
        int step = 16;
    };
    const auto options = std::make_shared<Options>();
    const auto addJson = [&](CLI::App* command) {
        command->add_flag("--json", options->json, "Print a JSON document");
    };
    const auto addPicture = [&](CLI::App* command) {
        command->add_option("--picture", options->picture, "Also draw it into this .svg or .png file");
    };

    CLI::App* nearest = colors->add_subcommand("nearest", "The DXF colour nearest to a colour");
    nearest->add_option("COLOUR", options->color, "'#RRGGBB', or R,G,B with numbers from 0 to 255")
        ->required();
    addJson(nearest);
    nearest->footer(
        "Examples:\n  chartutil colors nearest '#FF8000'\n  chartutil colors nearest 255,128,0 --json");
    nearest->callback([options] { Nearest(options->color, options->json); });

    CLI::App* palette = colors->add_subcommand("palette", "The 256 colours of the DXF palette");
    addPicture(palette);
    addJson(palette);
    palette->footer(
        "Examples:\n  chartutil colors palette\n  chartutil colors palette --picture palette.svg");
    palette->callback([options] { Palette(options->picture, options->json); });

    CLI::App* table = colors->add_subcommand("table", "The bands of a colour table");
    table->add_option("FILE", options->file, "The colour table, a .col file")->required();
    table->add_flag("--dxf", options->dxf,
                    "With the DXF index of each band; equal neighbours become one band");
    addPicture(table);
    addJson(table);
    table->footer("What is odd in the file is told on standard error; the exit code is 1 when not all of it\n"
                  "could be read.\n\nExamples:\n  chartutil colors table depths.col\n"
                  "  chartutil colors table depths.col --dxf --picture depths.png");
    table->callback([options] { Table(options->file, options->picture, options->dxf, options->json); });

    CLI::App* import =
        colors->add_subcommand("import", "Make a colour table from a .cpt colour palette table");
    import->add_option("FROM", options->file, "The .cpt file, regular or by category")->required();
    import->add_option("TO", options->target, "The colour table to write, a .col file")->required();
    import
        ->add_option("--step", options->step,
                     "Where colours change gradually: the most by which neighbouring bands differ in red,\n"
                     "green or blue")
        ->check(CLI::Range(1, 255))
        ->capture_default_str();
    import->footer(
        "The background colour (B) becomes the default colour and the foreground colour (F) a band "
        "above\nthe last one; the colour for missing values (N) has no place in a table. A table of "
        "values from 0\nto 1 or -1 to 1 that names a RANGE is stretched to it.\n\nExamples:\n"
        "  chartutil colors import bathy.cpt bathy.col\n"
        "  chartutil colors import --step 4 bathy.cpt fine.col");
    import->callback([options] { Import(options->file, options->target, options->step);
});
}
