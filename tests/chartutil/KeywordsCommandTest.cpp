// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

namespace {

ProgramResult Keywords(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "keywords");
    return RunChartutil(arguments);
}

// A folder with a layout in it.
class LayoutFile {
public:
    explicit LayoutFile(std::string_view content, std::wstring_view name = L"layout.txt")
        : m_path(m_folder.File(name)) {
        WriteBytes(m_path, content);
    }
    std::string Path() const { return ToUtf8(m_path); }
    std::string Folder() const { return ToUtf8(WidePath(m_folder.Path())); }
    std::string Add(std::wstring_view name, std::string_view content) const {
        WriteBytes(m_folder.File(name), content);
        return ToUtf8(m_folder.File(name));
    }
    std::string Beside(std::wstring_view name) const { return ToUtf8(m_folder.File(name)); }

private:
    TemporaryFolder m_folder;
    std::wstring m_path;
};

std::string BytesOf(const std::string& path) { return ReadBytes(NativePath(FromUtf8(path))); }

} // namespace

TEST(KeywordsList, PrintsNamesCountsKindsLinesAndChoices) {
    const LayoutFile layout("%plot name% of %project client%\nno\n%plot name% %mine%\n100%%\n");
    layout.Add(L"Keywords", "[project client]\r\nA\r\nB\r\n");
    const ProgramResult result = Keywords({"list", layout.Path(), "--data", layout.Folder()});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("count  keyword         kind                  lines\n"
              "    2  plot name       predefined for plots  1,3\n"
              "    1  project client  predefined            1  (2 choices)\n"
              "    1  mine            own                   3\n",
              result.output);
    EXPECT_EQ("", result.error);
}

TEST(KeywordsList, Json) {
    const LayoutFile layout("%plot name% %project client%\n%project client%%\xC3\xBC%");
    layout.Add(L"Keywords", "[project client]\r\nA\r\nB\r\n");
    const json document =
        json::parse(Keywords({"list", layout.Path(), "--json", "--data", layout.Folder()}).output);
    ASSERT_EQ(3u, document["keywords"].size());
    const json& client = document["keywords"][1];
    EXPECT_EQ("project client", client["name"]);
    EXPECT_EQ(2, client["count"]);
    EXPECT_EQ(true, client["predefined"]);
    EXPECT_EQ(json({1, 2}), client["lines"]);
    EXPECT_EQ(json({"A", "B"}), client["choices"]);
    EXPECT_EQ("\xC3\xBC", document["keywords"][2]["name"]);
    EXPECT_EQ(false, document["keywords"][2]["predefined"]);
}

TEST(KeywordsList, ALayoutWithoutKeywordsSaysSo) {
    const LayoutFile layout("100%% of nothing\n");
    const ProgramResult result = Keywords({"list", layout.Path()});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.output, HasSubstr("no keywords"));
}

TEST(KeywordsList, TellsOfANameThatBeginsOnAnEarlierLine) {
    const LayoutFile layout("50% done\n%project name%\n");
    const ProgramResult result = Keywords({"list", layout.Path()});
    EXPECT_THAT(result.output, HasSubstr(" doneproject name  own"));
    EXPECT_THAT(result.error, HasSubstr("earlier line"));
}

TEST(KeywordsFill, TheUserCountsMoreThanTheProjectAndThatMoreThanWhatIsKnown) {
    const LayoutFile layout("%plot name%|%plot project%|%project name%|%a%|%a%\r\nend%", L"Sheet 1.txt");
    const std::string project =
        layout.Add(L"Bay.ini", "[Keywords]\r\nproject name = From project\r\na = 1\r\na = 2\r\n;note\r\n");
    ProgramResult result = Keywords({"fill", layout.Path(), "--project", project});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("Sheet 1|Bay|From project|1|1\r\nend%", result.output);
    result = Keywords({"fill", layout.Path(), "--project", project, "--value", "project name=A=B", "--value",
                       "plot name="});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("|Bay|A=B|1|1\r\nend%", result.output);
}

TEST(KeywordsFill, KnowsDateAndTime) {
    const LayoutFile layout("%current date% %current time%");
    const ProgramResult result = Keywords({"fill", layout.Path()});
    EXPECT_EQ(0, result.exitCode);
    // GoogleTest's own expressions have no repetition counts on every platform.
    EXPECT_THAT(result.output, MatchesRegex("20..-..-.. ..:.."));
}

TEST(KeywordsFill, AnUnknownKeywordStaysAndIsNamedWithItsLine) {
    const LayoutFile layout("%plot name%\n\n%who% %who%\n");
    const ProgramResult result = Keywords({"fill", layout.Path()});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("layout\n\n%who% %who%\n", result.output);
    EXPECT_THAT(result.error,
                HasSubstr("layout.txt:3: no value for the keyword 'who'; give one with --value 'who=...'"));
}

TEST(KeywordsFill, ANameThatBeginsOnAnEarlierLineStays) {
    const LayoutFile layout("%ab\n%cd%\n%cd%\n");
    const ProgramResult result = Keywords({"fill", layout.Path(), "--value", "abcd=x", "--value", "cd=y"});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("%ab\n%cd%\ny\n", result.output);
    EXPECT_THAT(result.error, HasSubstr("layout.txt:2: the keyword 'abcd' begins on an earlier line"));
}

TEST(KeywordsFill, FilledTextIsNotFilledAgain) {
    const LayoutFile layout("%a%%b%");
    EXPECT_EQ("%b%x", Keywords({"fill", layout.Path(), "--value", "a=%b%", "--value", "b=x"}).output);
}

TEST(KeywordsFill, NotesValuesThatAreNoChoiceOrForNoKeyword) {
    const LayoutFile layout("%project client%");
    layout.Add(L"Keywords", "[project client]\r\nA\r\nB\r\n");
    ProgramResult result = Keywords(
        {"fill", layout.Path(), "--data", layout.Folder(), "--value", "project client=C", "--value", "x=1"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("C", result.output);
    EXPECT_THAT(result.error, AllOf(HasSubstr("'C' is none of the choices for 'project client'"),
                                    HasSubstr("there is no keyword 'x'")));
    result = Keywords({"fill", layout.Path(), "--data", layout.Folder(), "--value", "project client=B"});
    EXPECT_EQ("", result.error);
}

TEST(KeywordsFill, KeepsEveryByteOfALayoutThatIsOneByteACharacter) {
    const LayoutFile layout("[T]\r\nText = K\xFCste %n%\r\n");
    ProgramResult result =
        Keywords({"fill", layout.Path(), "--value", "n=\xC3\xB6", "-o", layout.Beside(L"out.ini")});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("", result.output);
    EXPECT_EQ("[T]\r\nText = K\xFCste \xF6\r\n", BytesOf(layout.Beside(L"out.ini")));
    // A letter that no such file can hold.
    result = Keywords({"fill", layout.Path(), "--value", "n=\xCE\xA9"});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("", result.output);
    EXPECT_THAT(result.error, HasSubstr(":2: the value of 'n'"));
}

TEST(KeywordsFill, AnAsciiLayoutIsUtf8UnlessToldOtherwise) {
    const LayoutFile layout("%n%");
    EXPECT_EQ("\xC3\xB6", Keywords({"fill", layout.Path(), "--value", "n=\xC3\xB6"}).output);
    EXPECT_EQ("\xF6", Keywords({"fill", layout.Path(), "--latin-1", "--value", "n=\xC3\xB6"}).output);
}

TEST(KeywordsFill, WrongUseAndUnreadableFilesHaveTheirCodes) {
    const LayoutFile layout("%n%");
    const std::string broken = layout.Add(L"broken.ini", "[]\r\n");
    const std::string other = layout.Add(L"other.ini", "[Other]\r\nn = 7\r\n");
    struct Row {
        std::vector<std::string> arguments;
        int exitCode;
        const char* message;
    };
    for (const Row& row :
         {Row{{"fill", layout.Path(), "--value", "n"}, 2, "--value 'NAME=VALUE'"},
          Row{{"fill", layout.Path(), "--value", "=n"}, 2, "--value 'NAME=VALUE'"},
          Row{{"fill", layout.Beside(L"none")}, 3, "no such file"},
          Row{{"fill", layout.Folder()}, 3, "is a folder"},
          Row{{"list", layout.Beside(L"none")}, 3, "no such file"},
          Row{{"fill", layout.Path(), "--project", layout.Beside(L"none")}, 3, "no such file"},
          Row{{"fill", layout.Path(), "--project", broken}, 3, "broken.ini:1: "},
          Row{{"fill", layout.Path(), "--project", other}, 1, "no section [Keywords]"},
          Row{{"fill", layout.Path(), "--value", "n=1", "-o", layout.Beside(L"no/where")},
              3,
              "there is no folder"},
          Row{{"fill"}, 2, "LAYOUT"}, Row{{}, 2, "list, fill"}}) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const ProgramResult result = Keywords(row.arguments);
        EXPECT_EQ(row.exitCode, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
    EXPECT_EQ("7", Keywords({"fill", layout.Path(), "--project", other, "--section", "Other"}).output);
}

TEST(KeywordsHelp, HasExamples) {
    for (const char* command : {"list", "fill"})
        EXPECT_THAT(Keywords({command, "--help"}).output, HasSubstr("Examples:\n  chartutil keywords "))
            << command;
}

TEST(KeywordsSample, TheSampleLayoutIsFilledFromTheSampleProject) {
    const std::string data = PROJECT_DATA_FOLDER;
    const ProgramResult result =
        Keywords({"fill", data + "/pensacola/title-block.txt", "--project", data + "/pensacola/project.ini"});
    EXPECT_EQ(1, result.exitCode); // the scale and the number of soundings are known to a sheet alone
    EXPECT_THAT(result.error, AllOf(HasSubstr("'scale'"), HasSubstr("'sounding count'")));
    EXPECT_THAT(result.output, AllOf(HasSubstr("Pensacola Bay\n"), HasSubstr("Mean lower low water"),
                                     Not(HasSubstr("%project"))));
}

TEST(KeywordsList, AVeryLongNameDoesNotMakeEveryLineLong) {
    std::string text = '%' + std::string(100000, 'n') + "%\n";
    for (int i = 0; i < 300; ++i) text += "%k" + std::to_string(i) + "%\n";
    const LayoutFile layout(text);
    EXPECT_LT(Keywords({"list", layout.Path()}).output.size(), 10 * text.size());
}

TEST(KeywordsFill, AProjectOfManyKeywordsIsReadInProportion) {
    // A search for each of these among all before it would take longer than a test may.
    constexpr int kKeys = 300000;
    const LayoutFile layout("%key 299999%");
    std::string project = "[Keywords]\r\n";
    for (int i = 0; i < kKeys; ++i) project += "key " + std::to_string(i) + " = v\r\n";
    EXPECT_EQ("v", Keywords({"fill", layout.Path(), "--project", layout.Add(L"p.ini", project)}).output);
}

TEST(KeywordsFill, ALayoutInUtf16IsRefusedRatherThanLeftUnfilled) {
    for (const std::string_view mark : {"\xFF\xFE", "\xFE\xFF"}) {
        const LayoutFile layout(std::string(mark) + std::string("%\0a\0%\0", 6));
        const ProgramResult result = Keywords({"fill", layout.Path(), "--value", "a=b"});
        EXPECT_EQ(3, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("UTF-16"));
    }
}
