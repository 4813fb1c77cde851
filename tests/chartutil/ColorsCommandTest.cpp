// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/DXFColor.h"
#include "VelmBase/ColorTable.h"
#include "VelmBase/FileObject.h"
#include "apps/chartutil/drawing/LabColor.h"
#include "apps/chartutil/terminal/HexText.h"
#include "tests/support/Program.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

ProgramResult Colors(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "colors");
    return RunChartutil(arguments);
}

// A folder with one input file.
class InputFile {
public:
    InputFile(std::wstring_view name, std::string_view content) : m_path(m_folder.File(name)) {
        WriteBytes(m_path, content);
    }
    std::string Path() const { return ToUtf8(m_path); }
    std::wstring Beside(std::wstring_view name) const { return m_folder.File(name); }
    std::string BesideUtf8(std::wstring_view name) const { return ToUtf8(Beside(name)); }

private:
    TemporaryFolder m_folder;
    std::wstring m_path;
};

// The table that the import of a .cpt file with this content makes.
ColorTable Imported(const std::string& cpt, const std::vector<std::string>& options = {}) {
    const InputFile input(L"in.cpt", cpt);
    std::vector<std::string> arguments = {"import", input.Path(), input.BesideUtf8(L"out.col")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramResult result = Colors(arguments);
    EXPECT_EQ(0, result.exitCode) << result.error;
    FileObject file;
    ColorTable table;
    EXPECT_TRUE(file.Open(input.Beside(L"out.col"), 0));
    EXPECT_TRUE(table.FileOpen(file));
    return table;
}

std::vector<std::pair<double, unsigned long>> Entries(const ColorTable& table) {
    std::vector<std::pair<double, unsigned long>> entries;
    for (int i = 0; i < table.NumEntries(); ++i)
        entries.emplace_back(table.EntryValue(i), table.EntryColor(i));
    return entries;
}

constexpr char kTable[] = "[ColorTable]\r\nDefaultColor=255,255,255\r\nEntry(0)=0,255,0,0\r\n"
                          "Entry(1)=10,255,0,0\r\nEntry(2)=20.5,0,0,255\r\n";

} // namespace

TEST(ColorsNearest, PrintsIndexAndPaletteColour) {
    const ProgramResult result = Colors({"nearest", "#FF8000"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.output, AllOf(HasSubstr("index    30\n"), HasSubstr("#FF7F00  255,127,0")));
    EXPECT_EQ(result.output, Colors({"nearest", "255,128,0"}).output);
    EXPECT_EQ(result.output, Colors({"nearest", " 255 , 128 , 0"}).output);
}

TEST(ColorsNearest, Json) {
    const json document = json::parse(Colors({"nearest", "#ff0000", "--json"}).output);
    EXPECT_EQ(10, document["index"]);
    EXPECT_EQ(255, document["color"]["reference"]);
    EXPECT_EQ("#FF0000", document["palette"]["hex"]);
}

TEST(ColorsNearest, TellsHowMuchItDiffersToTheEye) {
    struct Row {
        const char *color, *line;
    };
    for (const Row& row :
         {Row{"#FF0000", "differs  by 0.0, not at all\n"},
          Row{"#FF8000", "differs  by 0.3, less than is seen\n"},
          Row{"#FFFFFF", "differs  by 100.0, another colour to the eye\n"}}) // white is 7, which is black
        EXPECT_THAT(Colors({"nearest", row.color}).output, HasSubstr(row.line)) << row.color;
    EXPECT_EQ(100, json::parse(Colors({"nearest", "#FFFFFF", "--json"}).output)["difference"]);
}

TEST(ColorsNearest, PerceptualIsNoFurtherThanAnyIndex) {
    std::vector<LabColor> palette;
    for (int index = 0; index < 256; ++index) palette.emplace_back(RGBColor(DXFColor(index)));
    for (const RGBColor& color : {RGBColor(152, 179, 226), RGBColor(245, 253, 254), RGBColor(210, 180, 140),
                                  RGBColor(255, 255, 255), RGBColor(1, 1, 1), RGBColor(17, 99, 201)}) {
        const json document =
            json::parse(Colors({"nearest", HexText(color), "--perceptual", "--json"}).output);
        const double difference = document["difference"];
        const auto nearest = palette[document["index"].get<std::size_t>()];
        EXPECT_NEAR(difference, ColorDifference(LabColor(color), nearest), 1e-3) << HexText(color);
        for (const LabColor& other : palette)
            EXPECT_LE(difference, ColorDifference(LabColor(color), other) + 1e-3) << HexText(color);
    }
}

TEST(ColorsNearest, PerceptualKeepsTheDrawingsIndexWhereThatLooksTheSame) {
    struct Row {
        const char* color;
        int index;
    };
    for (const Row& row : {Row{"#FF0000", 10}, Row{"#000000", 0}, Row{"#FFFFFF", 255}, Row{"#A50800", 12}})
        EXPECT_EQ(row.index,
                  json::parse(Colors({"nearest", row.color, "--perceptual", "--json"}).output)["index"])
            << row.color;
}

TEST(ColorsNearest, WhatIsNoColourIsWrongUse) {
    for (const char* text : {"", "red", "#12345", "#1234567", "#-12345", "#GGGGGG", "1,2", "1,2,3,4",
                             "1,2,256", "1,2,-3", "1,2,x", "1,,2", "1.5,2,3", "99999999999,0,0"}) {
        const ProgramResult result = Colors({"nearest", text});
        EXPECT_EQ(2, result.exitCode) << text;
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, HasSubstr("#RRGGBB")) << text;
    }
}

TEST(ColorsPalette, LineForEveryEightColours) {
    const ProgramResult result = Colors({"palette"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.output,
                AllOf(HasSubstr("  0 #000000"), HasSubstr(" 11 #FF827F"), HasSubstr("255 #FFFFFF\n")));
    EXPECT_EQ(32, std::count(result.output.begin(), result.output.end(), '\n'));
    const json document = json::parse(Colors({"palette", "--json"}).output);
    ASSERT_EQ(256u, document["palette"].size());
    EXPECT_EQ("#A50800", document["palette"][12]["hex"]);
}

TEST(ColorsPalette, PictureShowsEveryNumberOnce) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"palette.SVG");
    const ProgramResult result = Colors({"palette", "--picture", ToUtf8(path)});
    EXPECT_EQ(0, result.exitCode) << result.error;
    const std::string svg = ReadBytes(path);
    for (int index = 0; index < 256; ++index) {
        const std::string label = ">" + std::to_string(index) + "</text>";
        const std::size_t found = svg.find(label);
        EXPECT_NE(std::string::npos, found) << index;
        EXPECT_EQ(std::string::npos, svg.find(label, found + 1)) << index;
    }
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(ColorsPalette, PictureAsPngWhereTheProgramCanMakeIt) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"palette.png");
    const ProgramResult result = Colors({"palette", "--picture", ToUtf8(path)});
    if (result.exitCode == 0) {
        EXPECT_THAT(ReadBytes(path), StartsWith("\x89PNG\r\n\x1A\n"));
        EXPECT_EQ("", result.error);
    } else {
        EXPECT_EQ(2, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("makes no PNG; name the picture .svg"));
        EXPECT_EQ(0u, folder.NumFiles());
    }
}

TEST(ColorsPalette, PicturesThatCannotBeMadeSaySo) {
    const TemporaryFolder folder;
    for (const wchar_t* name : {L"palette.jpg", L"palette", L"svg", L"a.svg.", L""}) {
        const ProgramResult result = Colors({"palette", "--picture=" + ToUtf8(folder.File(name))});
        EXPECT_EQ(2, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("has to end in .svg, .png, .pdf or .dxf"));
    }
    const ProgramResult result = Colors({"palette", "--picture", ToUtf8(folder.File(L"no/folder.svg"))});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error, AllOf(HasSubstr("folder.svg"), HasSubstr("there is no folder")));
    EXPECT_EQ(0u, folder.NumFiles());
}

TEST(ColorsTable, ListsBandsWithTheirValues) {
    const InputFile input(L"t.col", kTable);
    const ProgramResult result = Colors({"table", input.Path()});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("               below  #FFFFFF  255,255,255\n"
              "              from 0  #FF0000  255,0,0\n"
              "             from 10  #FF0000  255,0,0\n"
              "           from 20.5  #0000FF  0,0,255\n",
              result.output);
    EXPECT_EQ("", result.error);
}

TEST(ColorsTable, DxfShowsIndicesAndMergesEqualNeighbours) {
    const InputFile input(L"t.col", kTable);
    const json document = json::parse(Colors({"table", input.Path(), "--dxf", "--json"}).output);
    EXPECT_EQ(true, document["complete"]);
    EXPECT_EQ(7, document["below"]["dxf"]);
    ASSERT_EQ(2u, document["bands"].size());
    EXPECT_EQ(10, document["bands"][0]["dxf"]);
    EXPECT_EQ(20.5, document["bands"][1]["from"]);
    EXPECT_EQ(170, document["bands"][1]["dxf"]);
    EXPECT_THAT(Colors({"table", input.Path(), "--dxf"}).output, HasSubstr("DXF 170\n"));
}

TEST(ColorsTable, TheSampleTablesColoursAreNearlyThoseOfThePalette) {
    const json document =
        json::parse(Colors({"table", PROJECT_DATA_FOLDER "/sea-floor.col", "--dxf", "--json"}).output);
    std::vector<json> bands = document["bands"];
    EXPECT_EQ(5u, bands.size());
    bands.push_back(document["below"]);
    for (const json& band : bands) {
        const RGBColor color(band["reference"].get<unsigned long>()), dxf(DXFColor(band["dxf"].get<int>()));
        EXPECT_LT(ColorDifference(color, dxf), 3) << band;
    }
}

TEST(ColorsTable, PictureHasABandForEachEntry) {
    const InputFile input(L"dep & ths.col", kTable);
    const std::wstring picture = input.Beside(L"t.svg");
    ASSERT_EQ(0, Colors({"table", input.Path(), "--dxf", "--picture", ToUtf8(picture)}).exitCode);
    const std::string svg = ReadBytes(picture);
    EXPECT_THAT(svg,
                AllOf(HasSubstr("dep &amp; ths.col"), HasSubstr(">20.5</text>"), HasSubstr(">170</text>"),
                      HasSubstr(">below</text>"), HasSubstr("fill=\"#0000FF\"")));
}

TEST(ColorsTable, EmptyAndHugeTablesHavePicturesToo) {
    std::string huge = "[ColorTable]\n";
    for (int i = 0; i < 12'000; ++i)
        huge += "Entry(" + std::to_string(i) + ")=" + std::to_string(i) + ",1,2,3\n";
    for (const std::string& content : {std::string("[ColorTable]\nDefaultColor=1,2,3\n"), huge}) {
        const InputFile input(L"t.col", content);
        const ProgramResult result = Colors({"table", input.Path(), "--picture", input.BesideUtf8(L"t.svg")});
        EXPECT_EQ(0, result.exitCode) << result.error;
        EXPECT_THAT(ReadBytes(input.Beside(L"t.svg")), HasSubstr("</svg>"));
    }
}

TEST(ColorsTable, FaultsAreNamedAndTheRestIsShown) {
    const InputFile input(L"t.col", "[ColorTable]\nEntry(0)=5,1,2,3\nEntry(1)=abc,1,2,3\nEntry(2)=7\n"
                                    "Entry(3)=4,1,2,3\nEntry(4)=5,9,9,9\n");
    const ProgramResult result = Colors({"table", input.Path()});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_THAT(result.output, AllOf(HasSubstr("from 4 "), HasSubstr("from 5 ")));
    EXPECT_THAT(result.error, AllOf(HasSubstr("Entry(1): \"abc\" is not a number"), HasSubstr("Entry(2)"),
                                    HasSubstr("Entry(3): the value is below"), HasSubstr("5 is there twice"),
                                    HasSubstr("t.col: ")));
}

TEST(ColorsTable, FilesWithoutATableSaySo) {
    for (const char* content : {"", "[Other]\na=1\n", "no settings file"}) {
        const InputFile input(L"t.col", content);
        const ProgramResult result = Colors({"table", input.Path()});
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.error, AllOf(HasSubstr("t.col"), HasSubstr("no section [ColorTable]")));
    }
    const InputFile input(L"t.col", "");
    const ProgramResult result = Colors({"table", input.BesideUtf8(L"missing.col")});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error, AllOf(HasSubstr("missing.col"), HasSubstr("no such file")));
}

TEST(ColorsImport, SlicesOfOneColourBecomeBands) {
    const ColorTable table =
        Imported("# a comment\n\n-10 0/0/255 -5 0/0/255\r\n-5 0/128/0 0 0/128/0 ; label\n"
                 "0\tred\t2.5\tred L\nB 1/2/3\nF white\nN gray\n");
    EXPECT_THAT(Entries(table), ElementsAre(std::pair(-10.0, 0xFF0000ul), std::pair(-5.0, 0x008000ul),
                                            std::pair(0.0, 0x0000FFul), std::pair(2.5, 0xFFFFFFul)));
    EXPECT_EQ(0x030201ul, table.DefaultColor());
}

TEST(ColorsImport, GradualSlicesAreCutIntoBands) {
    EXPECT_THAT(Entries(Imported("0 0/0/0 8 100/0/0\n", {"--step", "50"})),
                ElementsAre(std::pair(0.0, 25ul), std::pair(4.0, 75ul)));
    const ColorTable fine = Imported("0 black 1 white\n", {"--step", "1"});
    EXPECT_EQ(255, fine.NumEntries());
    const ColorTable usual = Imported("0 black 1 white\n");
    for (int i = 1; i < usual.NumEntries(); ++i)
        EXPECT_LE((usual.EntryColor(i) & 0xFF) - (usual.EntryColor(i - 1) & 0xFF), 16u);
}

TEST(ColorsImport, ColoursInTheirManyForms) {
    struct Row {
        const char* color;
        unsigned long expected;
    };
    for (const Row& row : {Row{"1/2/3", 0x030201}, Row{"#FF8000", 0x0080FF}, Row{"77", 0x4D4D4D},
                           Row{"Red", 0x0000FF}, Row{"gray95", 0xF2F2F2}, Row{"240-1-1", 0xFF0000},
                           Row{"0-0-1", 0xFFFFFF}, Row{"mediumaquamarine", 0xAACD66}}) {
        const std::string color = row.color;
        EXPECT_THAT(Entries(Imported("5 " + color + " 6 " + color + "\n")),
                    ElementsAre(std::pair(5.0, row.expected)))
            << color;
        EXPECT_THAT(Entries(Imported("5 " + color + "\n")), ElementsAre(std::pair(5.0, row.expected)))
            << color;
    }
    EXPECT_THAT(Entries(Imported("1 10 20 30 2 10 20 30\n")), ElementsAre(std::pair(1.0, 0x1E140Aul)));
    EXPECT_THAT(Entries(Imported("# COLOR_MODEL = HSV\n1 120 1 1 2 120 1 1\n")),
                ElementsAre(std::pair(1.0, 0x00FF00ul)));
}

TEST(ColorsImport, HuesAreWalkedThrough) {
    // From red over green to blue: green lies in the middle.
    const ColorTable table = Imported("# COLOR_MODEL = hsv\n0 0-1-1 1 240-1-1\n", {"--step", "20"});
    EXPECT_GT(table.NumEntries(), 40);
    EXPECT_GT(table.EntryColor(table.NumEntries() / 2) >> 8 & 0xFF, 200u);
}

TEST(ColorsImport, SharesAreStretchedToTheRange) {
    EXPECT_THAT(Entries(Imported("# RANGE = -8000/0\n0 1/1/1 0.25 1/1/1\n0.25 2/2/2 1 2/2/2\n")),
                ElementsAre(std::pair(-8000.0, 0x010101ul), std::pair(-6000.0, 0x020202ul)));
    EXPECT_THAT(
        Entries(Imported("# RANGE=-100/10\n-1 1/1/1 -0.5 1/1/1\n-0.5 2/2/2 0.5 2/2/2\n0.5 3/3/3 1 3/3/3\n")),
        ElementsAre(std::pair(-100.0, 0x010101ul), std::pair(-50.0, 0x020202ul), std::pair(5.0, 0x030303ul)));
    EXPECT_THAT(Entries(Imported("# RANGE = -100/10\n0 1/1/1 7 1/1/1\n")), // no shares
                ElementsAre(std::pair(0.0, 0x010101ul)));
}

TEST(ColorsImport, FaultsNameTheLineAndWriteNothing) {
    struct Row {
        const char* content;
        const char* message;
    };
    for (const Row& row :
         {Row{"", "has no colours"}, Row{"# nothing\nB red\n", "has no colours"},
          Row{"0 red 1 red\nx red 2 red\n", "line 2: 'x' is not a number"},
          Row{"0 nocolour 1 red\n", "line 1: 'nocolour' is no colour"},
          Row{"0 1/2/256 1 red\n", "is no colour"}, Row{"0 #-12345 1 red\n", "is no colour"},
          Row{"0 1/2 1 red\n", "is no colour"}, Row{"0 361-1-1\n", "is no colour"},
          Row{"0 red 0 red\n", "above the first"},
          Row{"0 red 5 red\n4 red 6 red\n", "line 2: the value 4 is below"}, Row{"1 2 3\n", "a slice is"},
          Row{"0 red 1 red\nB\n", "line 2: a colour has to follow"}, Row{"# COLOR_MODEL = CMYK\n", "line 1"},
          Row{"# RANGE = 5/1\n0 red\n", "RANGE"}, Row{"nan red\n", "is not a number"}}) {
        SCOPED_TRACE(row.content);
        const InputFile input(L"in.cpt", row.content);
        const ProgramResult result = Colors({"import", input.Path(), input.BesideUtf8(L"out.col")});
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.error, AllOf(HasSubstr("in.cpt"), HasSubstr(row.message)));
        EXPECT_FALSE(std::filesystem::exists(NativePath(input.Beside(L"out.col"))));
    }
    const InputFile input(L"in.cpt", "0 red 1 red\n");
    EXPECT_EQ(3, Colors({"import", input.BesideUtf8(L"no.cpt"), input.BesideUtf8(L"out.col")}).exitCode);
    EXPECT_EQ(3, Colors({"import", input.Path(), input.BesideUtf8(L"no/out.col")}).exitCode);
    EXPECT_EQ(2, Colors({"import", input.Path(), input.BesideUtf8(L"out.col"), "--step", "0"}).exitCode);
}

TEST(ColorsImport, TakesEveryTableInCommonUse) {
    const std::filesystem::path shipped = "/usr/share/gmt/cpt";
    if (!std::filesystem::exists(shipped)) GTEST_SKIP() << "gmt-common is not installed";
    const TemporaryFolder folder;
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(shipped)) {
        if (entry.path().extension() != ".cpt") continue;
        const std::string path = entry.path().string();
        const ProgramResult result = Colors({"import", path, ToUtf8(folder.File(L"out.col"))});
        EXPECT_EQ(0, result.exitCode) << result.error;
        FileObject file;
        ColorTable table;
        EXPECT_TRUE(file.Open(folder.File(L"out.col"), 0));
        std::vector<std::wstring> remarks;
        EXPECT_TRUE(table.FileOpen(file, &remarks)) << path;
        EXPECT_THAT(remarks, testing::IsEmpty()) << path;
        EXPECT_GE(table.NumEntries(), 2) << path;
        ++count;
    }
    EXPECT_GT(count, 40);
}

TEST(ColorsImport, SeaFloorTableHasItsDepthsAndColours) {
    const std::string path = "/usr/share/gmt/cpt/gmt/bathy.cpt";
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "gmt-common is not installed";
    const ColorTable table = Imported(ReadBytes(std::filesystem::path(path)), {"--step", "255"});
    EXPECT_THAT(Entries(table), ElementsAre(std::pair(-8000.0, 0x281410ul), std::pair(-7000.0, 0x5D3223ul),
                                            std::pair(-6000.0, 0x85502Eul), std::pair(-4000.0, 0xBA7D3Full),
                                            std::pair(-3500.0, 0xBFB257ul), std::pair(-2500.0, 0xCDD07Aul),
                                            std::pair(-1000.0, 0xF7E9C1ul), std::pair(0.0, 0xFFFFF5ul)));
}

TEST(Colors, HelpShowsExamples) {
    for (const char* command : {"nearest", "palette", "table", "import"}) {
        const ProgramResult result = Colors({command, "--help"});
        EXPECT_EQ(0, result.exitCode);
        EXPECT_THAT(result.output, HasSubstr("Examples:")) << command;
    }
    EXPECT_EQ(2, Colors({}).exitCode);
    EXPECT_EQ(2, Colors({"unknown"}).exitCode);
}

TEST(ColorsTable, JsonNamesValuesThatAreNoNumbers) {
    const InputFile input(L"t.col", "[ColorTable]\nEntry(0)=-inf,1,2,3\nEntry(1)=nan,4,5,6\n");
    const json document = json::parse(Colors({"table", input.Path(), "--json"}).output);
    EXPECT_EQ("-inf", document["bands"][0]["from"]);
    EXPECT_EQ("nan", document["bands"][1]["from"]);
}

TEST(ColorsTable, ValuesThatDifferAreShownDifferently) {
    const InputFile input(L"t.col", "[ColorTable]\nEntry(0)=1,1,2,3\nEntry(1)=1.00000000001,4,5,6\n");
    EXPECT_THAT(Colors({"table", input.Path()}).output, HasSubstr("from 1.00000000001"));
}

TEST(ColorsImport, CommentsInWordsAreNoDirectives) {
    for (const char* comment :
         {"# RANGE of depths is given in metres", "# COLOR_MODEL is explained below", "# RANGE limited"}) {
        const InputFile input(L"c.cpt", std::string(comment) + "\n0 red 1 red\n");
        EXPECT_EQ(0, Colors({"import", input.Path(), input.Path() + ".col"}).exitCode) << comment;
    }
}

TEST(ColorsImport, ValuesOverTheWholeRangeStayFinite) {
    const InputFile input(L"c.cpt", "-1e308 red 1e308 blue\n");
    ASSERT_EQ(0, Colors({"import", input.Path(), input.Path() + ".col"}).exitCode);
    EXPECT_THAT(ReadBytes(input.Beside(L"c.cpt.col")), AllOf(HasSubstr("-1e+308"), Not(HasSubstr("inf"))));
}

TEST(ColorsImport, TableMayNotTakeThePlaceOfItsSource) {
    const InputFile input(L"c.cpt", "0 red 1 red\n");
    EXPECT_NE(0, Colors({"import", input.Path(), input.Path()}).exitCode);
    EXPECT_EQ("0 red 1 red\n", ReadBytes(input.Beside(L"c.cpt")));
}

TEST(ColorsImport, TableMayNotTakeThePlaceOfItsSourceByAnotherPath) {
    const InputFile input(L"c.cpt", "0 red 1 red\n");
    std::filesystem::create_directory(NativePath(input.Beside(L"sub")));
    for (const wchar_t* path : {L"./c.cpt", L"sub/../c.cpt"}) {
        const ProgramResult result = Colors({"import", input.Path(), input.BesideUtf8(path)});
        EXPECT_EQ(2, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("is the file to be read"));
        EXPECT_EQ("0 red 1 red\n", ReadBytes(input.Beside(L"c.cpt")));
    }
}

TEST(ColorsImport, TheForegroundColourOfCategoriesHasNoBand) {
    EXPECT_THAT(Entries(Imported("1 red\n2 blue\nF white\n")),
                ElementsAre(std::pair(1.0, 0x0000FFul), std::pair(2.0, 0xFF0000ul)));
}

TEST(ColorsImport, TablesAreNotFannedOutWithoutEnd) {
    std::string cpt;
    for (int i = 0; i < 20000; ++i) cpt += std::to_string(i) + " 0 " + std::to_string(i + 1) + " 255\n";
    const InputFile input(L"c.cpt", cpt);
    const ProgramResult result = Colors({"import", "--step", "16", input.Path(), input.Path() + ".col"});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_THAT(result.error, HasSubstr("--step"));
}

TEST(ColorsImport, DirectivesNeedNoEqualsSign) {
    const ColorTable stretched = Imported("# RANGE -8000/0\n0 red 1 red\n");
    EXPECT_EQ(-8000.0, stretched.EntryValue(0));
    const ColorTable hsv = Imported("# COLOR_MODEL HSV\n0 120 1 1 1 120 1 1\n");
    EXPECT_EQ(0x00FF00ul, hsv.EntryColor(0));
}
