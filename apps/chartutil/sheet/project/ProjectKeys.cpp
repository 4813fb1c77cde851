// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/ProjectKeys.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

using Kind = ProjectKey::Kind;
constexpr double kAny = std::numeric_limits<double>::infinity();

constexpr ProjectKey Text(const wchar_t* name, const char* what, const char* otherwise = "",
                          const char* form = "") {
    return {.name = name, .kind = Kind::TEXT, .what = what, .otherwise = otherwise, .unit = form};
}
constexpr ProjectKey Path(const wchar_t* name, const char* what, const char* otherwise) {
    return {.name = name, .kind = Kind::PATH, .what = what, .otherwise = otherwise};
}
constexpr ProjectKey Number(const wchar_t* name, const char* what, const char* value, const char* unit,
                            double lowest = -kAny, double highest = kAny, const char* otherwise = "") {
    return {.name = name,
            .kind = Kind::NUMBER,
            .what = what,
            .value = value,
            .otherwise = otherwise,
            .unit = unit,
            .lowest = lowest,
            .highest = highest};
}
constexpr ProjectKey Whole(const wchar_t* name, const char* what, const char* value, double lowest,
                           double highest = kAny) {
    return {.name = name,
            .kind = Kind::WHOLE,
            .what = what,
            .value = value,
            .lowest = lowest,
            .highest = highest};
}
constexpr ProjectKey Switch(const wchar_t* name, const char* what, const char* value) {
    return {.name = name, .kind = Kind::SWITCH, .what = what, .value = value, .lowest = 0, .highest = 1};
}
constexpr ProjectKey Color(const wchar_t* name, const char* what) {
    return {.name = name, .kind = Kind::COLOR, .what = what, .value = "0", .otherwise = "black"};
}
// A colour by its number in the palette.
constexpr ProjectKey Index(const wchar_t* name, const wchar_t* newer) {
    return {.name = name,
            .kind = Kind::WHOLE,
            .what = "colour by its index of DXF",
            .value = "0",
            .lowest = 0,
            .highest = 255,
            .newer = newer};
}
constexpr ProjectKey Name(const wchar_t* name, const char* what, const char* value, const char* choices) {
    return {.name = name, .kind = Kind::NAME, .what = what, .value = value, .choices = choices};
}
constexpr ProjectKey Record(const wchar_t* name, const char* what, const char* value) {
    return {.name = name, .kind = Kind::RECORD, .what = what, .value = value};
}
constexpr ProjectKey Group(const wchar_t* name, const ProjectSection& group, const char* what) {
    return {.name = name, .kind = Kind::GROUP, .what = what, .group = &group};
}
constexpr ProjectKey Unused(ProjectKey key) {
    key.isUsed = false;
    return key;
}

constexpr ProjectKey kLineKeys[] = {
    Number(L"LineWidth", "0.05 mm at least, whatever is written", "0.1", "mm", 0),
    Name(L"LineStyle", "how it is dashed", "Solid Line", "Solid Line, Dashed, Dot, Dash dot"),
    Color(L"LineTrueColor", "its colour"),
    Index(L"LineColor", L"LineTrueColor"),
    Switch(L"Enable", "whether it is drawn", "1"),
};
constexpr ProjectSection kLine = {L"A line", "how a line is drawn", kLineKeys};

constexpr ProjectKey kTextKeys[] = {
    {.name = L"Font",
     .kind = Kind::TEXT,
     .what = "the face; `chartutil fonts` lists what is installed",
     .value = "Arial"},
    Number(L"Size", "height of the text", "2.5", "mm", 0),
    Whole(L"Style", "1 bold, 2 italic, 4 underlined, or a sum of them", "0", 0, 7),
    Color(L"TrueColor", "its colour"),
    Index(L"Color", L"TrueColor"),
    Unused(Whole(L"Justification", "", "0", 0, 11)),
    Unused(Number(L"Rotation", "", "0", "degrees")),
    Unused(Number(L"RectWidth", "", "0", "mm")),
    Unused(Switch(L"MultiLine", "", "0")),
    Unused(Whole(L"Annotation", "", "0", 0, 3)),
};
constexpr ProjectSection kText = {L"A text", "how texts are written", kTextKeys};

constexpr ProjectKey kPanelKeys[] = {
    Number(L"PosX", "place on the paper, from its left side", "0", "mm"),
    Number(L"PosY", "place on the paper, from its lower side", "0", "mm"),
    Number(L"Width", "above 0; larger where what stands in the panel is", "0", "mm", -kAny, kAny,
           "to be written"),
    Number(L"Height", "above 0; larger where what stands in the panel is", "0", "mm", -kAny, kAny,
           "to be written"),
    Whole(L"Justification",
          "the point of the panel that stands at its place: 0 the lower left corner, on anticlockwise by "
          "corners and middles of sides to 7, the middle of the left side; 8 the centre",
          "0", 0, 8),
    Number(L"Inset", "from the panel's sides to what stands in it", "4", "mm", 0, 100),
    Record(L"Frame", "the line round it: width in mm, colour by its index of DXF, style, true colour, 0/1",
           "0.1,0,Solid Line,0,1"),
    Group(L"Text.", kText, "what is no heading"),
    Group(L"Heading.", kText, "the heading; as Text where nothing is written"),
    Group(L"Subheading.", kText, "what stands below the heading; as Text where nothing is written"),
    Unused(Switch(L"LockPosSize", "", "0")),
};
constexpr ProjectSection kPanel = {
    L"A panel", "a part of the layout, beside the map or on it; its place is a point of [Paper Grid]",
    kPanelKeys};

constexpr ProjectKey kOnlyPanel[] = {Group(L"", kPanel, "")};
constexpr ProjectKey kOnlyLine[] = {Group(L"", kLine, "")};
constexpr ProjectKey kOnlyText[] = {Group(L"", kText, "")};

constexpr ProjectKey kSheet[] = {
    Text(L"Title", "the chart's name; %plot name% in the title block"),
    Text(L"Paper", "size of the paper; it goes before the two below", "PaperWidth and PaperHeight",
         "A0 to A5, with landscape or portrait behind it"),
    Number(L"PaperWidth", "from left to right", "594", "mm", 50, 5000),
    Number(L"PaperHeight", "from below to above", "841", "mm", 50, 5000),
    Number(L"Margin", "from the paper's sides to the border with its labels", "12", "mm", 0, 1000),
    Number(L"Scale", "1 to this, from 1 on; 0 for the largest round one at which all soundings fit", "0", "",
           0, 1e9),
    Number(L"CentreX", "middle of the map, in the chart's coordinates; it counts with CentreY", "", "m", -1e9,
           1e9, "the soundings' middle"),
    Number(L"CentreY", "middle of the map northwards; it counts with CentreX", "", "m", -1e9, 1e9,
           "the soundings' middle"),
};

constexpr ProjectKey kSoundings[] = {
    Path(L"File", "a table (CSV, or XYZ with blanks) or a layer of points: GeoPackage, GeoJSON, S-57, Shape",
         "to be written"),
    Text(L"Layer", "of a file with several", "SOUNDG, or the first with points", "name"),
    Text(L"X", "the column of eastings or longitudes in a table", "that with a usual name",
         "name, or number from 1"),
    Text(L"Y", "the column of northings or latitudes", "that with a usual name", "name, or number from 1"),
    Text(L"Depth", "the column, or the attribute of a layer", "that with a usual name, or a point's height",
         "name, or number from 1"),
    Name(L"Positive", "where numbers above 0 are", "Down", "Down, Up"),
    Name(L"Unit", "of the depths in the file", "m", "mm, cm, m, inches, feet"),
    Text(L"CoordinateSystem", "of the chart, in metres", "none: no graticule", "EPSG:n, or what PROJ reads"),
    Text(L"FileCoordinateSystem", "of the file", "what the file says, or the chart's",
         "EPSG:n, or what PROJ reads"),
    Record(L"Label", "text and layout of the depths; `chartutil style line` explains it",
           "Arial,2.5,0,0,0,0,0,0,0,0,2,0,0,1,1,0,0"),
    Number(L"Gap", "between two depths, at least", "0.6", "mm", 0, 100),
    Number(L"ContourGap", "from a depth to a contour, at least", "0.2", "mm", 0, 100),
    Number(L"ShoalSquare",
           "sides of the squares about a depth of which it has to be the shoalest to interrupt a contour",
           "5", "text sizes", 0, 1000),
};

constexpr ProjectKey kSurface[] = {
    Path(L"ColorTable", "tints of the depths; `chartutil colors import` makes a table of a palette",
         "none: no tints"),
    Number(L"CellSize", "of the surface's cells; larger where there would be more than 5 million", "0.8",
           "mm", 0.05, 100),
    Number(L"Reach", "from a sounding to where nothing is known", "8", "mm", 0, 1000),
    Number(L"Smoothing", "how far the surface is smoothed, to the safe side; 0 for not at all", "1.3", "mm",
           0, 100),
};

// "Illumunation" is how all settings of the suite have it.
constexpr ProjectKey kSun[] = {
    Switch(L"SunIllumunationEnable", "whether the surface is shaded", "0"),
    Number(L"SunIllumunationAzimuth", "where the light is from, clockwise from north", "290", "degrees"),
    Number(L"SunIllumunationElevation", "the light's height above the horizon", "30", "degrees"),
    Number(L"SunIllumunationContrast", "0 for none", "1", ""),
    Number(L"Exaggeration", "of heights, for the light alone", "40", "times", 0, 10000),
};

constexpr ProjectKey kContours[] = {
    Path(L"Levels",
         "level, line and annotation of each contour; `chartutil contours` makes them, `chartutil edit` "
         "changes them",
         "none: no contours"),
    Switch(L"EnableContouring", "0 for no contours", "1"),
    Whole(L"SmoothingWindow", "points to either side of which each point becomes the mean; 0 for none", "0",
          0, 8),
    Whole(L"SmoothingPasses", "how often", "1", 0, 20),
    Number(L"ContourLabelSpacing", "one label on each such length of a line", "20", "m", 0),
    Number(L"SuppressionLength", "shorter contours are left out; 0 for none", "0", "m", 0),
    Name(L"LabelOrientation",
         "where the labels' tops are: HighToLow towards shallower water, LowToHigh towards deeper",
         "OptimumTextAngle", "OptimumTextAngle, LowToHigh, HighToLow"),
    {.name = L"LabelSpacing",
     .kind = Kind::NUMBER,
     .what = "the same in older files",
     .unit = "m",
     .lowest = 0,
     .newer = L"ContourLabelSpacing"},
};

constexpr ProjectKey kContourLabels[] = {
    Group(L"", kText, ""),
    Number(L"LabelGap", "from the line's ends to the number", "0.6", "mm", 0, 100),
};

constexpr ProjectKey kBorder[] = {
    Group(L"", kLine, "the colour of all, and the width of the innermost; LineStyle does not count"),
    Number(L"Room", "from the margin to the map, for the border and its labels", "14", "mm", 0, 100),
    Number(L"TickWidth", "width of the band with ticks", "1", "mm", 0, 20),
    Number(L"BarWidth", "width of the band with bars", "0.8", "mm", 0, 20),
    Number(L"OuterLineGap", "from the bars to the middle of the outer line", "0.9", "mm", 0, 20),
    Number(L"OuterLineWidth", "width of the outer line", "0.6", "mm", 0, 20),
    Number(L"LabelGap", "from the outer line to the labels", "0.8", "mm", 0, 20),
    Number(L"TickSpacing", "ticks are no closer", "2", "mm", 0.5, 1000),
    Number(L"BarLength", "bars are no shorter", "15", "mm", 1, 1000),
    Number(L"LabelSpacing", "labels are no closer", "25", "mm", 1, 1000),
};

constexpr ProjectKey kGraticule[] = {
    Number(L"LonInterval", "from meridian to meridian, above 0", "0.000555556", "degrees", -kAny, kAny,
           "two seconds"),
    Number(L"LatInterval", "from parallel to parallel, above 0", "0.000555556", "degrees", -kAny, kAny,
           "two seconds"),
    Whole(L"LatLonStyle", "0 degrees and minutes, 1 seconds as well, 2 degrees with decimals", "0", 0, 2),
    Whole(L"LatLonDecimals", "of the last part, at most", "2", 0, 9),
    Switch(L"DegMinSecSymbols", "signs behind degrees, minutes and seconds", "0"),
    Switch(L"TrailingHemisphereIndicator", "the hemisphere's letter stands behind", "0"),
    Whole(L"GridStyle", "0 in the border alone, 1 lines, 2 ticks, 3 crosses", "1", 0, 3),
    Color(L"GridTrueColor", "colour of lines, ticks and crosses"),
    Index(L"GridColor", L"GridTrueColor"),
    Number(L"MarkSize", "length of a tick, width of a cross", "4", "mm", 0, 1000),
};

constexpr ProjectKey kGraticuleLabels[] = {
    Group(L"", kText, ""),
    Group(L"Degrees.", kText, "whole degrees; as the other labels where nothing is written"),
};

constexpr ProjectKey kMapGrid[] = {
    Number(L"XInterval", "from line to line eastwards, above 0", "50", "m"),
    Number(L"YInterval", "from line to line northwards, above 0", "50", "m"),
    Whole(L"XMinorTicks", "parts of an interval eastwards, with small ticks between them", "0", 0),
    Whole(L"YMinorTicks", "parts of an interval northwards", "0", 0),
    {.name = L"GridStyle",
     .kind = Kind::NAMES,
     .what = "what is drawn; POINTS are crosses where lines meet, LONG_NORTHTICK doubles what points north",
     .value = "X_TICKS,Y_TICKS,X_MINORTICKS,Y_MINORTICKS,LONG_NORTHTICK",
     .choices = "POINTS, X_LINES, Y_LINES, X_TICKS, Y_TICKS, X_MINORTICKS, Y_MINORTICKS, LONG_NORTHTICK"},
    Number(L"TickSize", "length of a tick, width of a cross", "2.5", "mm", 0),
    Number(L"MinorTickSize", "length of a small tick", "1", "mm", 0),
    {.name = L"EastingMark",
     .kind = Kind::TEXT,
     .what = "behind the eastings, in double quotes",
     .value = "\"\"",
     .otherwise = "nothing"},
    {.name = L"NorthingMark",
     .kind = Kind::TEXT,
     .what = "behind the northings, in double quotes",
     .value = "\"\"",
     .otherwise = "nothing"},
    Number(L"LabelGap", "from a tick's end to its label", "0.7", "mm", 0, 100),
};

constexpr ProjectKey kTitleBlock[] = {
    Path(L"Layout", "the block's lines, with keywords as %scale%", "none: nothing is drawn"),
    Group(L"", kPanel, "its first line is the heading, those up to an empty one are subheadings"),
};

constexpr ProjectKey kPaperGrid[] = {
    Number(L"XStep", "places of panels are multiples of it from the left; 0 for any place", "1", "mm", 0),
    Number(L"YStep", "the same for heights", "1", "mm", 0),
    Switch(L"SnapOn", "0 for any place", "1"),
    Unused(Switch(L"Visible", "", "1")),
    Unused(Number(L"OringinX", "", "0", "mm")), // so spelled in all settings of the suite
    Unused(Number(L"OringinY", "", "0", "mm")),
};

constexpr ProjectKey kDxf[] = {
    Whole(L"DXFColorMode", "1 for one colour in all lines, 0 for each its own", "0", 0, 1),
    Color(L"DXFLineTrueColor", "colour of all lines"),
    Index(L"DXFLineColor", L"DXFLineTrueColor"),
    Number(L"DXFLineWidth", "width of all lines; 0 for each its own", "0", "mm", 0),
};

constexpr ProjectSection kSections[] = {
    {L"Sheet", "the paper, and what of the world is on it", kSheet},
    {L"Soundings", "where the depths are from, and how they are written", kSoundings},
    {L"Surface", "the surface through the soundings, and its tints", kSurface},
    {L"Sun Illumination", "the light on the surface", kSun},
    {L"Survey Limit", "the line where the surface ends; not drawn without the section", kOnlyLine},
    {L"Contours", "lines of equal depth", kContours},
    {L"Contour Labels", "the depths on contours", kContourLabels},
    {L"Border",
     "the frame of the map; with a graticule also ticks, bars and labels of longitudes and latitudes",
     kBorder},
    {L"Graticule", "longitudes and latitudes; not drawn without the section, nor without a CoordinateSystem",
     kGraticule},
    {L"Graticule Line", "the graticule's lines; their colour is GridTrueColor of [Graticule]", kOnlyLine},
    {L"Graticule Labels", "longitudes and latitudes in the border", kGraticuleLabels},
    {L"Map Grid", "eastings and northings; not drawn without the section", kMapGrid},
    {L"Map Grid Line", "the map grid's lines, ticks and crosses; none with Enable = 0", kOnlyLine},
    {L"Map Grid Labels", "eastings and northings within the map", kOnlyText},
    {L"Title Block", "a panel with the chart's name and more; not drawn without the section", kTitleBlock},
    {L"Legend", "a panel with what tints, lines and numbers mean; not drawn without the section", kOnlyPanel},
    {L"Scale Bar", "a panel with the scale in miles and metres; not drawn without the section", kOnlyPanel},
    {L"North Arrow", "a panel that shows where north is; not drawn without the section", kOnlyPanel},
    {L"Paper Grid", "the grid on the paper in which panels stand", kPaperGrid},
    {L"DXF", "lines in drawings of that format", kDxf},
    {L"Keywords",
     "names with their texts, for the title block: any. Values without are those of scale, sounding count, "
     "coordinate system, horizontal datum, projection, plot name and plot project",
     {},
     true},
};
constexpr const ProjectSection* kGroups[] = {&kPanel, &kLine, &kText};

const ProjectSection* FindSection(std::wstring_view name) {
    const auto* const found = std::ranges::find_if(
        kSections, [&](const ProjectSection& section) { return icompareW(section.name, name); });
    return found == std::end(kSections) ? nullptr : found;
}

void AddKeys(const ProjectSection& section, const std::wstring& before, std::vector<NamedProjectKey>& keys) {
    for (const ProjectKey& key : section.keys)
        if (key.group)
            AddKeys(*key.group, before + key.name, keys);
        else
            keys.push_back({before + key.name, &key});
}

std::string BoundText(double bound) {
    constexpr double kLarge = 1e9; // which nobody counts the zeros of
    return std::fabs(bound) == kLarge ? (bound < 0 ? "-1e9" : "1e9") : DecimalText(bound);
}

std::string RangeOf(const ProjectKey& key) {
    const bool hasLowest = std::isfinite(key.lowest), hasHighest = std::isfinite(key.highest);
    if (!hasLowest) return {};
    return hasHighest ? BoundText(key.lowest) + " to " + BoundText(key.highest)
                      : "at least " + BoundText(key.lowest);
}

// Names with commas between them, each between quotes.
std::string ListOf(const std::vector<std::string>& names, const std::string& quote) {
    std::string list;
    for (const std::string& name : names)
        list.append(list.empty() ? "" : ", ").append(quote).append(name).append(quote);
    return list;
}

// What may be written, in few words; empty for any text. Choices stand between quotes.
std::string FormOf(const ProjectKey& key, const std::string& quote) {
    std::string choices = ListOf(ChoicesOf(key), quote);
    switch (key.kind) {
    case Kind::SWITCH:
        return "0/1";
    case Kind::COLOR:
        return "colour";
    case Kind::PATH:
        return "path";
    case Kind::NAME:
        return choices;
    case Kind::NAMES:
        return choices + ", with commas between them";
    case Kind::RECORD:
        return "in one line";
    default: {
        const std::string unit = key.unit, range = RangeOf(key);
        return unit + (unit.empty() || range.empty() ? "" : ", ") + range;
    }
    }
}

std::string DefaultOf(const ProjectKey& key, const std::string& quote) {
    const std::string value = key.value, otherwise = key.otherwise;
    if (value.empty()) return key.otherwise;
    return quote + value + quote + (otherwise.empty() ? "" : " (" + otherwise + ")");
}

std::string Joined(const std::string& first, const std::string& between, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : between) + second;
}

std::string WhatOf(const ProjectKey& key) {
    return Joined(key.what, "; ", key.newer ? ToUtf8(key.newer) + " goes before it" : "");
}

// Without the signs round what is typed.
std::string Plain(std::string text) {
    std::ranges::replace(text, '`', '\'');
    return text;
}

// "a line" of "A line".
std::string InSentence(const ProjectSection& group) {
    std::string name = ToUtf8(group.name);
    name.front() = 'a';
    return name;
}

// Names of keys that a sheet does not look at, which are told of together.
std::string UnusedOf(const ProjectSection& section, const std::string& quote) {
    std::vector<std::string> names;
    for (const ProjectKey& key : section.keys)
        if (!key.isUsed) names.push_back(ToUtf8(key.name));
    return ListOf(names, quote);
}
// What holds for all of them.
constexpr const char* kRules =
    R"(Each section may be missing, and each key: the default is taken then. What is not drawn without its section
says so. A number beyond its range, and a key that is not known, is told of and the default taken. Where a
range is missing, any number is. Names of sections and keys count in any letter case.

Lengths are in millimetres of the paper where the unit is mm, and in the world where it is m. 0/1 is no or
yes. A path counts from the project's folder. A colour is a colour reference, red + 256 × green +
65536 × blue, and its index of DXF one of the 256 of that format's palette: `chartutil colors nearest`
tells both.
)";

constexpr const char* kUnused = "as other programs of the suite write them; a sheet does not look at them";

void AddText(const ProjectSection& section, std::string& text) {
    const auto add = [&](const std::string& name, const std::string& what) {
        text += "  " + name + " :: " + what + '\n';
    };
    for (const ProjectKey& key : section.keys) {
        const std::string name = ToUtf8(key.name), form = FormOf(key, "");
        if (key.group)
            add(name.empty() ? InSentence(*key.group) : name + "*",
                Joined("the keys of " + InSentence(*key.group) + " (see below)", ": ", WhatOf(key)));
        else if (key.isUsed)
            add(name, Joined(Plain(WhatOf(key)) + (form.empty() ? "" : " (" + form + ')'), "; default ",
                             DefaultOf(key, "")));
    }
    if (const std::string names = UnusedOf(section, ""); !names.empty()) add(names, kUnused);
}

// "A sentence." of "a sentence".
std::string Sentence(std::string text) {
    if (text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    return text + '.';
}

std::string LinkTo(const ProjectSection& group) {
    std::string anchor = InSentence(group);
    std::ranges::replace(anchor, ' ', '-');
    return '[' + InSentence(group) + "](#" + anchor + ')';
}

void AddMarkdown(const ProjectSection& section, const std::string& heading, std::string& text) {
    const auto groupText = [](const ProjectKey& key) {
        return Joined("the keys of " + LinkTo(*key.group), ": ", WhatOf(key));
    };
    text += "\n## " + heading + "\n\n" + Sentence(section.what);
    std::string rows;
    for (const ProjectKey& key : section.keys) {
        const std::string name = ToUtf8(key.name);
        if (!key.isUsed) continue;
        if (name.empty())
            text += " It has " + groupText(key) + '.';
        else
            rows += "| `" + name + (key.group ? "*" : "") + "` | " +
                    (key.group ? groupText(key) : WhatOf(key)) + " | " + FormOf(key, "`") + " | " +
                    DefaultOf(key, "`") + " |\n";
    }
    text += '\n';
    if (!rows.empty()) text += "\n| key | what | unit, range | default |\n|---|---|---|---|\n" + rows;
    if (const std::string names = UnusedOf(section, "`"); !names.empty())
        text += '\n' + names + ": " + kUnused + ".\n";
}

} // namespace

std::span<const ProjectSection> ProjectSections() { return kSections; }

bool HasAnyKeys(std::wstring_view section) {
    const ProjectSection* const found = FindSection(section);
    return found && found->hasAnyKeys;
}

std::vector<NamedProjectKey> KeysOf(std::wstring_view section) {
    std::vector<NamedProjectKey> keys;
    if (const ProjectSection* const found = FindSection(section)) AddKeys(*found, L"", keys);
    return keys;
}

const ProjectKey* FindProjectKey(std::wstring_view section, std::wstring_view key) {
    for (const NamedProjectKey& known : KeysOf(section))
        if (icompareW(known.name, key)) return known.key;
    return nullptr;
}

std::vector<std::string> ChoicesOf(const ProjectKey& key) {
    constexpr std::string_view kBetween = ", ";
    std::vector<std::string> choices;
    for (std::string_view rest = key.choices; !rest.empty();) {
        const std::size_t end = std::min(rest.find(kBetween), rest.size());
        choices.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + kBetween.size(), rest.size()));
    }
    return choices;
}

std::string FaultOf(const ProjectKey& key, const std::wstring& value) {
    if (key.kind != Kind::NUMBER && key.kind != Kind::WHOLE && key.kind != Kind::SWITCH &&
        key.kind != Kind::COLOR)
        return {};
    double number = 0;
    if (!ParseNumber(ToUtf8(value), number)) return "is no number";
    if (number < key.lowest || number > key.highest)
        return (std::isfinite(key.highest) ? "is not from " : "is not ") + RangeOf(key);
    return key.kind != Kind::NUMBER && number != std::floor(number) ? "is no whole number" : "";
}

std::string RemarkOn(std::wstring_view section, std::wstring_view name) {
    const ProjectKey* const key = FindProjectKey(section, name);
    if (!key) return {};
    const bool isClear = key->kind == Kind::PATH || key->kind == Kind::RECORD || key->kind == Kind::COLOR;
    const std::string form = isClear ? "" : FormOf(*key, "");
    return Plain(WhatOf(*key)) + (form.empty() ? "" : " (" + form + ')');
}

std::string ProjectKeysText() {
    std::string text = Plain(kRules) + '\n';
    for (const ProjectSection& section : kSections) {
        text += InBrackets(section.name) + ": " + section.what + '\n';
        AddText(section, text);
    }
    for (const ProjectSection* const group : kGroups) {
        text += ToUtf8(group->name) + ": " + group->what + '\n';
        AddText(*group, text);
    }
    return text;
}

std::string ProjectKeysMarkdown() {
    std::string text = R"(# The keys of project.ini

<!-- Made of the table that the program reads by, in apps/chartutil/sheet/project/ProjectKeys.cpp; the test of that
name renews this page. -->

What a chart shows and how stands in the file `project.ini` of its [project folder](chart-sheets.md). `chartutil help project`
tells the same as this page, and `chartutil check` what is wrong in a project.

)" + std::string(kRules);
    for (const ProjectSection& section : kSections)
        AddMarkdown(section, '`' + InBrackets(section.name) + '`', text);
    for (const ProjectSection* const group : kGroups) AddMarkdown(*group, ToUtf8(group->name), text);
    return text;
}
