// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/LineInfo.h"
#include "UtilityDLL/presentation/PanelInfo.h"
#include "UtilityDLL/presentation/TextInfo.h"
#include "UtilityDLL/settings/IniFile.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

ProgramResult Style(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "style");
    return RunChartutil(arguments);
}

// A layout with a text style, a section of several records, and one without any.
class Layout {
public:
    Layout() {
        IniFile file;
        TextInfo text;
        text.SetStyle(TextInfo::STYLE(3));
        text.SetJustification(TextInfo::MIDDLE_CENTER);
        text.SetColor(0x0080FF);
        text.Write(file[L"Title"]);
        LineInfo line;
        line.SetStyle(LineInfo::DASHED);
        line.Write(file[L"Panels"]);
        file[L"Panels"].RemoveKey(L"Enable");
        file[L"Panels"][L"LineWidth"] << L"abc";
        PanelInfo panel;
        panel.width = 12.5f;
        panel.Write(L"Legend", file[L"Panels"]);
        file[L"Other"][L"Author"] << L"N. N.";
        EXPECT_TRUE(file.Save(m_folder.File(L"layout.ini")));
    }
    std::string Path() const { return ToUtf8(m_folder.File(L"layout.ini")); }

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST(StyleShow, TellsTheFieldsOfARecord) {
    const Layout layout;
    const ProgramResult result = Style({"show", layout.Path(), "title"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("TextInfo\n"
              "  Font           Arial\n"
              "  Size           2.500000\n"
              "  Style          3         bold italic\n"
              "  Justification  8         middle centre\n"
              "  Color          30        palette #FF7F00\n"
              "  Rotation       0.000000\n"
              "  RectWidth      0.000000\n"
              "  MultiLine      0\n"
              "  Annotation     0\n"
              "  TrueColor      33023     #FF8000\n"
              "  in one line: Arial,2.5,3,8,30,0,0,0,0,33023\n",
              result.output);
}

TEST(StyleShow, TellsWhatIsMissingOrReadOtherwiseAndFindsPrefixes) {
    const Layout layout;
    const ProgramResult result = Style({"show", layout.Path(), "Panels"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_THAT(result.output,
                AllOf(HasSubstr("LineInfo\n"), HasSubstr("given as \"abc\""),
                      HasSubstr("Enable         1         not given"),
                      HasSubstr("PanelInfo with the prefix Legend\n"),
                      HasSubstr("Legend.Width          12.500000\n"), Not(HasSubstr("TextInfo"))));
}

TEST(StyleShow, Json) {
    const Layout layout;
    const json document = json::parse(Style({"show", layout.Path(), "Panels", "--json"}).output);
    ASSERT_EQ(2u, document["records"].size());
    EXPECT_EQ("LineInfo", document["records"][0]["record"]);
    EXPECT_EQ("0,0,Dashed,0,1", document["records"][0]["line"]);
    EXPECT_EQ("Legend", document["records"][1]["prefix"]);
    EXPECT_TRUE(document["records"][0]["fields"][4]["given"].is_null());
}

TEST(StyleShow, FaultsSayWhatToDo) {
    const Layout layout;
    struct Row {
        const char* section;
        const char* message;
    };
    for (const Row& row :
         {Row{"Nowhere", "there is no section [Nowhere]"}, Row{"Other", "keys of no record"}}) {
        const ProgramResult result = Style({"show", layout.Path(), row.section});
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.error, AllOf(HasSubstr("layout.ini"), HasSubstr(row.message)));
    }
    const ProgramResult missing = Style({"show", layout.Path() + ".no", "Title"});
    EXPECT_EQ(3, missing.exitCode);
    EXPECT_THAT(missing.error, HasSubstr("no such file"));
}

TEST(StyleLine, GuessesTheRecord) {
    struct Row {
        const char* line;
        const char* record;
    };
    for (const Row& row :
         {Row{"Arial,2.5,0,0,0,0,0,0,0,0", "TextInfo"}, Row{"", "TextInfo"}, Row{"Arial", "TextInfo"},
          Row{"Arial,2.5,0,0,0,0,0,0,0,0,2,0,0,1,1,0,0", "DepthLabelInfo"},
          Row{"a,1,0,0,5,0,0,0,0,3,1,2,0,0", "DepthLabelInfo"}, Row{"0.5,1,dash dot", "LineInfo"},
          Row{"2,1,3", "DXFInfo"}, Row{"2,1,3,255", "DXFInfo"}}) {
        const json document = json::parse(Style({"line", row.line, "--json"}).output);
        EXPECT_EQ(row.record, document["record"]) << row.line;
    }
    EXPECT_EQ("LineInfo", json::parse(Style({"line", "--as", "line", "2,1,3", "--json"}).output)["record"]);
    EXPECT_EQ(2, Style({"line", "--as", "circle", "2,1,3"}).exitCode);
}

TEST(StyleLine, TellsWhatEachItemBecomes) {
    const ProgramResult result = Style({"line", "Times,3,8,11,1,450"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("TextInfo\n"
              "  Font           Times\n"
              "  Size           3\n"
              "  Style          0      regular, given as \"8\"\n"
              "  Justification  0      bottom left, given as \"11\"\n"
              "  Color          10     palette #FF0000, given as \"1\"\n"
              "  Rotation       90     given as \"450\"\n"
              "  RectWidth      0      not given\n"
              "  MultiLine      0      not given\n"
              "  Annotation     0      not given\n"
              "  TrueColor      255    #FF0000, not given\n"
              "  in one line: Times,3,0,0,10,90,0,0,0,255\n",
              result.output);
}

TEST(StyleLine, PictureNamesWhatTheLineIsMadeOf) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"line.svg");
    struct Row {
        const char* line;
        std::vector<const char*> texts;
    };
    for (const Row& row :
         {Row{"0.5,5,Dashed,16711680,1", {"Dashed", "0.5 mm", "#0000FF", "170, #0000FF, differs by 0.0"}},
          Row{"0.18,5,dash DOT,255,0", {"Dash dot", "0.18 mm", "#FF0000", "0: on a chart it is not drawn"}},
          Row{"20,1,1", {"20 mm, drawn 5 mm", "#FF0000", "1: all lines of a drawing"}},
          Row{"0,5,7", {"0: each line of a drawing keeps its own", "7: each line"}}}) {
        const ProgramResult result = Style({"line", row.line, "--picture", ToUtf8(path)});
        EXPECT_EQ(0, result.exitCode) << result.error;
        EXPECT_THAT(result.output, HasSubstr("in one line: "));
        const std::string svg = ReadBytes(path);
        for (const char* text : row.texts) EXPECT_THAT(svg, HasSubstr(std::string(">") + text)) << row.line;
    }
    EXPECT_THAT(ReadBytes(path), Not(HasSubstr("stroke-dasharray")));
    Style({"line", "0.5,1,Dash dot,0", "--picture", ToUtf8(path)});
    EXPECT_THAT(ReadBytes(path), HasSubstr("stroke-dasharray=\"3 1 0.3 1\""));
}

TEST(StyleLine, TextsHaveTheirPicturesElsewhere) {
    const TemporaryFolder folder;
    for (const char* line : {"Arial,2.5,0,0,0,0,0,0,0,0", "a,1,0,0,5,0,0,0,0,3,1,2,0,0"}) {
        const ProgramResult result = Style({"line", line, "--picture", ToUtf8(folder.File(L"text.svg"))});
        EXPECT_EQ(2, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("chartutil text "));
    }
    EXPECT_EQ(0u, folder.NumFiles());
}

TEST(StyleLine, OldDepthLabelsHaveNoTrueColour) {
    const json document = json::parse(Style({"line", "a,1,0,0,5,0,0,0,0,3,1,2,0,0", "--json"}).output);
    const json& fields = document["fields"];
    ASSERT_EQ(17u, fields.size());
    EXPECT_TRUE(fields[9]["given"].is_null());
    EXPECT_EQ("#0000FF", fields[9]["note"]);
    EXPECT_EQ("Precision", fields[10]["name"]);
    EXPECT_EQ("3", fields[10]["given"]);
    EXPECT_EQ("0", fields[14]["value"]);
    EXPECT_TRUE(fields[15]["given"].is_null());
}

TEST(StyleLine, HostileLinesAreRecordsToo) {
    for (const std::string& line :
         {std::string(50'000, ','), std::string(50'000, '9'), std::string("\xFF\xFE,\x01")}) {
        const ProgramResult result = Style({"line", line});
        EXPECT_EQ(0, result.exitCode) << result.error;
        EXPECT_THAT(result.output, HasSubstr("in one line: "));
    }
}

TEST(Style, HelpShowsExamples) {
    for (const char* command : {"show", "line"})
        EXPECT_THAT(Style({command, "--help"}).output, HasSubstr("Examples:")) << command;
    EXPECT_EQ(2, Style({}).exitCode);
}

TEST(StyleLine, OnlyColoursHaveANoteOfAColour) {
    const json document =
        json::parse(Style({"line", "Arial,2.5,0,0,0,0,0,0,0,0,2,0,0,1,1,0,0", "--json"}).output);
    const json& field = document["fields"][13];
    ASSERT_EQ("UseTextColor", field["name"]);
    EXPECT_FALSE(field.contains("note")) << field["note"];
}

TEST(StyleShow, APrefixIsOneWhateverItsLetterCase) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"l.ini"),
               "[S]\nLegend.Width=1\nLegend.Height=2\nlegend.LockPosSize=1\nLEGEND.Justification=3\n");
    const json document = json::parse(Style({"show", ToUtf8(folder.File(L"l.ini")), "S", "--json"}).output);
    EXPECT_EQ(1u, document["records"].size());
}

TEST(StyleShow, TheOlderKeyOfTheLabelSpacingCounts) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"c.ini"),
               "[C]\nSmoothingWindow=2\nLabelSpacing=35\nSuppressionLength=1\nSmoothingPasses=1\n");
    const json document = json::parse(Style({"show", ToUtf8(folder.File(L"c.ini")), "C", "--json"}).output);
    const json& field = document["records"][0]["fields"][1];
    EXPECT_EQ("ContourLabelSpacing", field["name"]);
    EXPECT_EQ("35", field["given"]);
}
