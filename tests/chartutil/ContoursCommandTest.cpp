// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "tests/support/Program.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

ProgramResult Contours(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "contours");
    return RunChartutil(arguments);
}

class Folder {
public:
    std::string Path(std::wstring_view name) const { return ToUtf8(m_folder.File(name)); }
    std::string Add(std::wstring_view name, std::string_view content) const {
        WriteBytes(m_folder.File(name), content);
        return Path(name);
    }
    std::string Bytes(std::wstring_view name) const { return ReadBytes(NativePath(m_folder.File(name))); }
    ContourDefinitionList Load(std::wstring_view name) const {
        ContourDefinitionList list;
        list.Load(m_folder.File(name).c_str());
        return list;
    }
    std::size_t NumFiles() const { return m_folder.NumFiles(); }

private:
    TemporaryFolder m_folder;
};

constexpr char kTwo[] =
    "[Contour(0)]\r\nLevel=-2.5\r\nColor=10\r\nTrueColor=255\r\nLineType=DOTTED\r\nLineWidth=0.25\r\n"
    "Annotate=1\r\n[Contour(1)]\r\nLevel=10\r\nColor=170\r\nTrueColor=16711680\r\n"
    "LineType=CONTINUOUS\r\nLineWidth=1\r\nAnnotate=0\r\n";

} // namespace

TEST(ContoursList, PrintsATable) {
    const Folder folder;
    const ProgramResult result = Contours({"list", folder.Add(L"two.cdf", kTwo)});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("level  colour   DXF  line          width  label\n"
              " -2.5  #FF0000   10  dotted         0.25  yes\n"
              "   10  #0000FF  170  continuous        1\n",
              result.output);
}

TEST(ContoursList, Json) {
    const Folder folder;
    const json document = json::parse(Contours({"list", folder.Add(L"two.cdf", kTwo), "--json"}).output);
    ASSERT_EQ(2u, document["contours"].size());
    EXPECT_EQ((json{{"level", -2.5},
                    {"color", "#FF0000"},
                    {"trueColor", 255},
                    {"dxf", 10},
                    {"lineType", "dotted"},
                    {"lineWidth", 0.25},
                    {"annotate", true}}),
              document["contours"][0]);
}

TEST(ContoursList, DrawsALegend) {
    const Folder folder;
    const std::string file = folder.Add(L"two.cdf", kTwo);
    EXPECT_EQ(0, Contours({"list", file, "--picture", folder.Path(L"legend.svg")}).exitCode);
    const std::string svg = folder.Bytes(L"legend.svg");
    EXPECT_THAT(svg, AllOf(StartsWith("<?xml"), HasSubstr(">two.cdf</text>"), HasSubstr(">-2.5</text>"),
                           HasSubstr("stroke=\"#FF0000\""), HasSubstr("stroke-dasharray"),
                           HasSubstr("continuous, 1")));
    const ProgramResult result = Contours({"list", file, "--picture", folder.Path(L"legend.bmp")});
    EXPECT_EQ(2, result.exitCode);
    EXPECT_EQ("", result.output); // asked for before the work is done
}

TEST(ContoursList, FailsWithoutContours) {
    const Folder folder;
    struct Row {
        std::string path;
        int exitCode;
        const char* message;
    };
    for (const Row& row :
         {Row{folder.Path(L"none.cdf"), 3, "no such file"}, Row{folder.Path(L"."), 3, "is a folder"},
          Row{folder.Add(L"empty.cdf", ""), 1, "[Contour(0)]"},
          Row{folder.Add(L"bad.cdf", "[Contour(0)]\nLevel=1\n[]\n"), 3, "bad.cdf:3: "},
          Row{folder.Add(L"twice.cdf", "[Contour(0)]\nLevel=1\n[contour(0)]\n"), 3, "twice.cdf:3: "}}) {
        const ProgramResult result = Contours({"list", row.path});
        EXPECT_EQ(row.exitCode, result.exitCode) << row.path;
        EXPECT_THAT(result.error, AllOf(HasSubstr(row.path), HasSubstr(row.message)));
    }
}

TEST(ContoursRange, WritesTheMultiplesInOneStyle) {
    const Folder folder;
    const ProgramResult result =
        Contours({"range", folder.Path(L"out.cdf"), "--from", "-7", "--to", "21", "--step", "5", "--color",
                  "#0000FF", "--line-type", "dashed", "--width", "0.5", "--label-every", "2"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_THAT(result.output, HasSubstr("   20  #0000FF  170  dashed          0.5  yes\n"));
    const ContourDefinitionList list = folder.Load(L"out.cdf");
    ASSERT_EQ(6, list.NumContours());
    for (int i = 0; i < 6; ++i) {
        const double level = 5.0 * i - 5;
        EXPECT_EQ((ContourDefinitionList::ContourDefInfo{.lineWidth = 0.5f,
                                                         .lineType = 1,
                                                         .level = level,
                                                         .trueColor = 0xFF0000,
                                                         .annotate = i % 2 == 1}),
                  list[i])
            << i;
    }
    EXPECT_EQ(0, Contours({"check", folder.Path(L"out.cdf")}).exitCode);
}

TEST(ContoursRange, WhatGivesNoLevelsIsWrongUseAndWritesNothing) {
    const Folder folder;
    const std::string file = folder.Path(L"out.cdf");
    struct Row {
        std::vector<std::string> options;
        const char* message;
    };
    for (const Row& row :
         {Row{{"--from", "1", "--to", "1", "--step", "1"}, "--from has to be below --to"},
          Row{{"--from", "0", "--to", "nan", "--step", "1"}, "--from has to be below --to"},
          Row{{"--from", "0", "--to", "1", "--step", "0"}, "--step has to be above 0"},
          Row{{"--from", "0", "--to", "1", "--step", "-1"}, "--step has to be above 0"},
          Row{{"--from", "0", "--to", "1", "--step", "1e-300"}, "10000000 levels"},
          Row{{"--from", "0", "--to", "inf", "--step", "1"}, "10000000 levels"},
          Row{{"--from", "1", "--to", "1.5", "--step", "5"}, "no multiple"},
          Row{{"--from", "0", "--to", "1"}, "--step"},
          Row{{"--from", "0", "--to", "1", "--step", "1", "--color", "blue"}, "no colour"},
          Row{{"--from", "0", "--to", "1", "--step", "1", "--line-type", "wavy"}, "--line-type"},
          Row{{"--from", "0", "--to", "1", "--step", "1", "--width", "-1"}, "--width"}}) {
        SCOPED_TRACE(testing::PrintToString(row.options));
        std::vector<std::string> arguments = {"range", file};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const ProgramResult result = Contours(arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
    EXPECT_EQ(0u, folder.NumFiles());
    const ProgramResult result =
        Contours({"range", folder.Path(L"no/out.cdf"), "--from", "0", "--to", "1", "--step", "1"});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error, HasSubstr("there is no folder"));
}

TEST(ContoursFromTable, WritesAContourForEachEntry) {
    const Folder folder;
    const std::string table = folder.Add(L"depths.col", "[ColorTable]\r\nDefaultColor=255,255,255\r\n"
                                                        "Entry(0)=-5,255,0,0\r\nEntry(1)=2.5,0,0,255\r\n");
    EXPECT_EQ(0, Contours({"from-table", folder.Path(L"a.cdf"), table}).exitCode);
    ContourDefinitionList list = folder.Load(L"a.cdf");
    ASSERT_EQ(2, list.NumContours());
    EXPECT_EQ((ContourDefinitionList::ContourDefInfo{.level = -5, .trueColor = 0x0000FF}), list[0]);
    EXPECT_EQ((ContourDefinitionList::ContourDefInfo{.level = 2.5, .trueColor = 0xFF0000}), list[1]);
    EXPECT_EQ(0, Contours({"from-table", folder.Path(L"a.cdf"), table, "--invert"}).exitCode);
    list = folder.Load(L"a.cdf");
    EXPECT_EQ(0u, list[0].trueColor);
    EXPECT_EQ(0xFF0100FFu, list[1].trueColor); // the subtraction borrows
}

TEST(ContoursFromTable, FailsWithoutAWholeTable) {
    const Folder folder;
    const std::string out = folder.Path(L"out.cdf");
    const std::string empty = folder.Add(L"empty.col", "[ColorTable]\r\nDefaultColor=0,0,0\r\n");
    const std::string half =
        folder.Add(L"half.col", "[ColorTable]\r\nEntry(0)=1,0,0,0\r\nEntry(1)=x,0,0,0\r\n");
    const std::string other = folder.Add(L"other.col", "[Other]\r\n");
    EXPECT_EQ(1, Contours({"from-table", out, empty}).exitCode);
    EXPECT_EQ(1, Contours({"from-table", out, half}).exitCode);
    EXPECT_EQ(1, Contours({"from-table", out, other}).exitCode);
    EXPECT_EQ(3, Contours({"from-table", out, folder.Path(L"none.col")}).exitCode);
    EXPECT_EQ(0, folder.Load(L"out.cdf").NumContours());
}

TEST(ContoursCheck, TellsWhatIsOdd) {
    struct Row {
        const char* content;
        const char* finding; // null: nothing odd
    };
    for (const Row& row : {
             Row{kTwo, nullptr},
             Row{"[Contour(0)]\nLevel=1\nColor=10\n;a comment\n", nullptr},
             Row{"[Contour(0)]\nLevel=1\nColor=0\n[Contour(2)]\nLevel=2\nColor=0\n",
                 "[Contour(2)] is not read: there is no [Contour(1)]"},
             Row{"[Contour(0)]\nLevel=1\nColor=0\n[Contour(1)]\n",
                 "[Contour(1)] has no keys, so reading ends here"},
             Row{"", "[Contour(0)] is missing"},
             Row{"[Contour(0)]\nLevel=1\nColor=0\n[Other]\nLevel=1\n", "[Other] is no contour"},
             Row{"[Contour(0)]\nLevel=2\nColor=0\n[Contour(1)]\nLevel=1\nColor=0\n",
                 "[Contour(1)] has the level 1 below"},
             Row{"[Contour(0)]\nLevel=2\nColor=0\n[Contour(1)]\nLevel=2\nColor=0\n",
                 "has the level of the contour before, 2"},
             Row{"[Contour(0)]\nColor=0\n", "has no \"Level\""},
             Row{"[Contour(0)]\nLevel=deep\nColor=0\n", "has \"deep\" for \"Level\", which is read as 0"},
             Row{"[Contour(0)]\nLevel=1,5\nColor=0\n", "has \"1,5\" for \"Level\", which is read as 1"},
             Row{"[Contour(0)]\nLevel=1\nColor=0\nAnnotate=yes\n", "has \"yes\" for \"Annotate\""},
             Row{"[Contour(0)]\nLevel=1\nColor=0\nAnnotate=2\n",
                 "has \"2\" for \"Annotate\", which is read as 1"},
             Row{"[Contour(0)]\nLevel=1\nColor=0\nLineType=wavy\n",
                 "line type \"wavy\", which is read as continuous"},
             Row{"[Contour(0)]\nLevel=1\nColor=0\nLineWidth=-1\n", "\"LineWidth\" below 0"},
             Row{"[Contour(0)]\nLevel=1\nColor=300\n", "outside 0 to 255"},
             Row{"[Contour(0)]\nLevel=1\nColor=10\nTrueColor=65280\n", "nearest to its \"TrueColor\" is 90"},
             Row{"[Contour(0)]\nLevel=1\n", "has no colour"},
             Row{"[Contour(0)]\nLevel=1\nColor=0\nLable=1\n", "the key \"Lable\", which is not read"},
             Row{"[Contour(0)]\nLevel=1\nColor=0\nLEVEL=2\n", "the key \"LEVEL\" again"},
         }) {
        SCOPED_TRACE(row.content);
        const Folder folder;
        const ProgramResult result = Contours({"check", folder.Add(L"a.cdf", row.content)});
        EXPECT_EQ(row.finding ? 1 : 0, result.exitCode) << result.error;
        EXPECT_THAT(result.output, HasSubstr(row.finding ? row.finding : "nothing odd"));
        const json document = json::parse(Contours({"check", folder.Path(L"a.cdf"), "--json"}).output);
        EXPECT_EQ(row.finding ? 1u : 0u, document["findings"].size()) << document;
    }
}

TEST(ContoursCheck, AnUnreadableFileIsAnError) {
    const Folder folder;
    EXPECT_EQ(3, Contours({"check", folder.Path(L"none.cdf")}).exitCode);
    EXPECT_EQ(3, Contours({"check", folder.Add(L"bad.cdf", "[]\n")}).exitCode);
}

TEST(ContoursHelp, HasExamples) {
    for (const char* command : {"list", "range", "from-table", "check"})
        EXPECT_THAT(Contours({command, "--help"}).output, HasSubstr("Examples:\n  chartutil contours "))
            << command;
}

TEST(ContoursSample, TheSampleFileIsFlawless) {
    EXPECT_EQ(0, Contours({"check", std::string(PROJECT_DATA_FOLDER) + "/pensacola/levels.cdf"}).exitCode);
}

TEST(ContoursCheck, TellsOfNumbersThatAreReadInPart) {
    for (const char* keys : {"Level=1-2\nColor=0\n", "Level=1.2.3\nColor=0\n", "Level=1\nColor=10.7\n",
                             "Level=1\nTrueColor=255e3\n", "Level=1\nColor=0\nAnnotate=1.0\n"}) {
        const TemporaryFolder folder;
        WriteBytes(folder.File(L"a.cdf"), std::string("[Contour(0)]\n") + keys);
        EXPECT_EQ(1, Contours({"check", ToUtf8(folder.File(L"a.cdf"))}).exitCode) << keys;
    }
}

TEST(ContoursRange, RefusesWhatTheFileDoesNotKeep) {
    const TemporaryFolder folder;
    const std::string file = ToUtf8(folder.File(L"a.cdf"));
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
             {"--from", "0", "--to", "1e-6", "--step", "1e-7"},
             {"--from", "0", "--to", "1", "--step", "1", "--width", "nan"},
             {"--from", "0", "--to", "1", "--step", "1", "--width", "1e39"}}) {
        std::vector<std::string> a = {"range", file};
        a.insert(a.end(), options.begin(), options.end());
        EXPECT_EQ(2, Contours(a).exitCode) << ::testing::PrintToString(options);
    }
}
