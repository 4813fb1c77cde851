// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/IniFile.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Json = nlohmann::json;
using Arguments = std::vector<std::string>;

namespace {

constexpr char kChart[] =
    "[Chart]\r\nScale = 25000\r\nTitle = Etang \xE9, 30\xB0N ;a \xFCmlaut\r\n;note\r\n\r\n"
    "[Tides]\r\nOffset = 0.35\r\nOffset = 0.36\r\n\r\n";

class SettingsCommand : public ::testing::Test {
protected:
    SettingsCommand() { WriteBytes(Native(), kChart); }

    std::string Path() const { return ToUtf8(m_folder.File(L"chart.ini")); }
    std::filesystem::path Native() const { return m_folder.Path() / "chart.ini"; }
    std::string Bytes() const { return ReadBytes(Native()); }

    // settings NAME FILE ARGUMENT...
    ProgramResult Run(const std::string& name, const Arguments& arguments = {}) const {
        Arguments all = {"settings", name, Path()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return RunChartutil(all);
    }

    // The same where it must succeed; gives what it printed.
    std::string Output(const std::string& name, const Arguments& arguments = {}) const {
        const ProgramResult result = Run(name, arguments);
        EXPECT_EQ(0, result.exitCode) << result.error;
        return result.output;
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(SettingsCommand, HelpShowsExamplesAndExitCodes) {
    for (const char* name : {"show", "get", "set", "remove", "rename", "merge", "check", "seal"}) {
        SCOPED_TRACE(name);
        const ProgramResult result = RunChartutil({"settings", name, "--help"});
        EXPECT_EQ(0, result.exitCode);
        EXPECT_THAT(result.output, AllOf(HasSubstr(std::string("  chartutil settings ") + name),
                                         HasSubstr("Exit codes: 0 success, 1 ")));
    }
}

TEST_F(SettingsCommand, ShowPrintsTheFileAsUtf8WithoutColoursOrCarriageReturns) {
    EXPECT_EQ("[Chart]\n"
              "Scale = 25000\n"
              "Title = Etang \u00E9, 30\u00B0N ;a \u00FCmlaut\n"
              ";note\n"
              "\n"
              "[Tides]\n"
              "Offset = 0.35\n"
              "Offset = 0.36\n",
              Output("show"));
    EXPECT_EQ("[Tides]\nOffset = 0.35\nOffset = 0.36\n", Output("show", {"TIDES"}));
    EXPECT_EQ(kChart, Bytes());
}

TEST_F(SettingsCommand, ShowGivesJson) {
    const Json document = Json::parse(Output("show", {"--json"}));
    EXPECT_EQ(Path(), document["file"]);
    ASSERT_EQ(2u, document["sections"].size());
    EXPECT_EQ(Json::parse(R"({"name": "Chart", "seal": "unsealed", "keys": [
        {"name": "Scale", "value": "25000", "comment": ""},
        {"name": "Title", "value": "Etang é, 30°N", "comment": "a ümlaut"},
        {"name": "", "value": "", "comment": "note"}]})"),
              document["sections"][0]);
}

TEST_F(SettingsCommand, GetPrintsTheFirstKeyOfThatNameWhateverItsCase) {
    EXPECT_EQ("0.35\n", Output("get", {"tides", "OFFSET"}));
    EXPECT_EQ("a \u00FCmlaut\n", Output("get", {"Chart", "Title", "--comment"}));
    EXPECT_EQ(Json::parse(R"({"section": "Chart", "name": "Scale", "value": "25000", "comment": ""})"), [&] {
        Json document = Json::parse(Output("get", {"chart", "scale", "--json"}));
        document.erase("file");
        return document;
    }());
}

TEST_F(SettingsCommand, WhatIsNotThereIsAFailedCheck) {
    const std::pair<const char*, Arguments> cases[] = {
        {"show", {"Nowhere"}},
        {"get", {"Nowhere", "Scale"}},
        {"get", {"Chart", "Nothing"}},
        {"get", {"Chart", ""}}, // the nameless key of a comment line is no key to ask for
        {"remove", {"Nowhere"}},
        {"remove", {"Chart", "Nothing"}},
        {"rename", {"Nowhere", "New"}},
        {"rename", {"Chart", "New", "--key", "Nothing"}},
        {"check", {"--section", "Nowhere"}},
        {"seal", {"--section", "Nowhere"}},
    };
    for (const auto& [name, arguments] : cases) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const ProgramResult result = Run(name, arguments);
        EXPECT_EQ(1, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, AllOf(HasSubstr(Path()), HasSubstr("there is no ")));
        EXPECT_EQ(kChart, Bytes());
    }
}

TEST_F(SettingsCommand, SetChangesTheFirstKeyAndKeepsItsNameAndComment) {
    EXPECT_THAT(Output("set", {"CHART", "title", "Neu \u00DF = 1"}),
                HasSubstr("[Chart] Title = Neu \u00DF = 1 (was "));
    EXPECT_EQ("[Chart]\r\nScale = 25000\r\nTitle = Neu \xDF = 1 ;a \xFCmlaut\r\n;note\r\n\r\n"
              "[Tides]\r\nOffset = 0.35\r\nOffset = 0.36\r\n\r\n",
              Bytes());
}

TEST_F(SettingsCommand, SetAddsWhatIsMissing) {
    EXPECT_THAT(Output("set", {"Chart", "Width", "841", "--comment", " mm"}), HasSubstr("(new key)"));
    EXPECT_THAT(Output("set", {"New [one", "Key", "-5"}), HasSubstr("(new section)"));
    EXPECT_EQ("[Chart]\r\nScale = 25000\r\nTitle = Etang \xE9, 30\xB0N ;a \xFCmlaut\r\n"
              "Width = 841 ; mm\r\n;note\r\n\r\n"
              "[Tides]\r\nOffset = 0.35\r\nOffset = 0.36\r\n\r\n"
              "[New [one]\r\nKey = -5\r\n",
              Bytes());
}

TEST_F(SettingsCommand, SetTakesAnyTextThatALineCarries) {
    const char* const values[] = {"",           "-5",    "a=b",      "{}", "[x]",
                                  "\"quoted\"", "check", "settings", "%%", "$HOME `x` 'y' \\",
                                  "100%PATH%",  "\u00FF"};
    for (const char* value : values) {
        SCOPED_TRACE(value);
        Output("set", {"Chart", "Scale", value});
        EXPECT_EQ(std::string(value) + "\n", Output("get", {"Chart", "Scale"}));
    }
    Output("set", {"Chart", "Scale", "--", "--json"});
    EXPECT_EQ("--json\n", Output("get", {"Chart", "Scale"}));
}

TEST_F(SettingsCommand, SetRefusesWhatALineCannotCarry) {
    struct Row {
        Arguments arguments;
        const char* reason;
    };
    const Row rows[] = {
        {{"Chart", "Scale", "1;2"}, "the value has a \";\""},
        {{"Chart", "Scale", "1\n2"}, "the value has a line break"},
        {{"Chart", "Scale", "1\r2"}, "the value has a line break"},
        {{"Chart", "Scale", " 1"}, "the value begins or ends with a blank"},
        {{"Chart", "Scale", "1\t"}, "the value begins or ends with a blank"},
        {{"Chart", "Scale", "\u03A9"}, "the value has the character U+03A9"},
        {{"Chart", "Scale", "\U0001D11E"}, "the value has the character U+1D11E"},
        {{"Chart", "a=b", "1"}, "the key name has a \"=\""},
        {{"Chart", "a;b", "1"}, "the key name has a \";\""},
        {{"Chart", "a\nb", "1"}, "the key name has a line break"},
        {{"Chart", " a", "1"}, "the key name begins or ends with a blank"},
        {{"Chart", "", "1"}, "the key name is empty"},
        {{"Chart", "[a", "b]"}, "the key name begins with \"[\""},
        {{"a]b", "a", "1"}, "the section name has a \"]\""},
        {{"a\nb", "a", "1"}, "the section name has a line break"},
        {{"\u0100", "a", "1"}, "the section name has the character U+0100"},
        {{"", "a", "1"}, "the section name is empty"},
        {{"Chart", "Scale", "1", "--comment", "a\nb"}, "the comment has a line break"},
        {{"Chart", "Scale", "1", "--comment", "a "}, "the comment ends with a blank"},
        {{"Chart", "Scale", "1", "--comment", "\u0100"}, "the comment has the character U+0100"},
        {{"Chart", "$Checksum$", "1"}, "holds the seal of its section"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.reason);
        const ProgramResult result = Run("set", row.arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, HasSubstr(row.reason));
        EXPECT_EQ(kChart, Bytes());
    }
}

TEST_F(SettingsCommand, SetMakesAFileOnlyWhenAsked) {
    std::filesystem::remove(Native());
    const ProgramResult result = Run("set", {"A", "k", "v"});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error, AllOf(HasSubstr(Path()), HasSubstr("no such file")));
    EXPECT_FALSE(std::filesystem::exists(Native()));

    Output("set", {"A", "k", "v", "--create"});
    EXPECT_EQ("[A]\r\nk = v\r\n", Bytes());
    Output("set", {"A", "k", "w", "--create"});
    EXPECT_EQ("[A]\r\nk = w\r\n", Bytes());
}

TEST_F(SettingsCommand, SetWithCreateKeepsTheOtherContentOfAFileThatIsThere) {
    Output("set", {"A", "k", "v", "--create"});
    EXPECT_EQ(std::string(kChart) + "[A]\r\nk = v\r\n", Bytes());
}

TEST_F(SettingsCommand, RemoveTakesAKeyOrASection) {
    Output("remove", {"Tides", "Offset"});
    EXPECT_EQ("0.36\n", Output("get", {"Tides", "Offset"}));
    Output("remove", {"tides"});
    EXPECT_THAT(Bytes(), AllOf(StartsWith("[Chart]"), Not(HasSubstr("Tides"))));

    const std::string before = Bytes();
    const ProgramResult last = Run("remove", {"Chart"});
    EXPECT_EQ(2, last.exitCode);
    EXPECT_THAT(last.error, HasSubstr("is the only section"));
    EXPECT_EQ(before, Bytes());
}

TEST_F(SettingsCommand, RenameKeepsThePlace) {
    Output("rename", {"Chart", "Sheet"});
    Output("rename", {"Sheet", "Name", "--key", "Title"});
    EXPECT_EQ("[Sheet]\r\nScale = 25000\r\nName = Etang \xE9, 30\xB0N ;a \xFCmlaut\r\n;note\r\n\r\n"
              "[Tides]\r\nOffset = 0.35\r\nOffset = 0.36\r\n\r\n",
              Bytes());
}

TEST_F(SettingsCommand, RenameRefusesTakenAndImpossibleNames) {
    struct Row {
        Arguments arguments;
        int exitCode;
        const char* reason;
    };
    const Row rows[] = {
        {{"Chart", "tides"}, 1, "is taken"},
        {{"Chart", "CHART"}, 1, "is taken"}, // names match whatever their case
        {{"Chart", "a]b"}, 2, "the section name has a \"]\""},
        {{"Chart", "title", "--key", "Scale"}, 1, "is taken"},
        {{"Chart", "a=b", "--key", "Scale"}, 2, "the key name has a \"=\""},
        {{"Chart", "$CHECKSUM$", "--key", "Scale"}, 2, "holds the seal"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments));
        const ProgramResult result = Run("rename", row.arguments);
        EXPECT_EQ(row.exitCode, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr(row.reason));
        EXPECT_EQ(kChart, Bytes());
    }
}

TEST_F(SettingsCommand, CheckTellsForEachSectionWhetherItWasEdited) {
    EXPECT_EQ(1, Run("check").exitCode); // without seals
    EXPECT_EQ(0, Run("check", {"--ignore-unsealed"}).exitCode);

    Output("seal");
    EXPECT_THAT(Output("check"), AllOf(HasSubstr("Chart  intact"), HasSubstr("Tides  intact")));

    std::string bytes = Bytes();
    bytes.replace(bytes.find("0.35"), 4, "0.53");
    WriteBytes(Native(), bytes);
    const ProgramResult edited = Run("check");
    EXPECT_EQ(1, edited.exitCode);
    EXPECT_THAT(edited.output, AllOf(HasSubstr("Chart  intact\n"), HasSubstr("Tides  EDITED BY HAND"),
                                     HasSubstr("1 of 2 sections")));
    EXPECT_EQ(0, Run("check", {"--section", "chart"}).exitCode);
    EXPECT_EQ(1, Run("check", {"-s", "Chart", "-s", "Tides", "--ignore-unsealed"}).exitCode);
    EXPECT_EQ(bytes, Bytes());

    const ProgramResult json = Run("check", {"--json"});
    EXPECT_EQ(1, json.exitCode);
    const Json document = Json::parse(json.output);
    EXPECT_EQ(2, document["sections"]);
    EXPECT_EQ(1, document["failed"]);
    EXPECT_EQ(Json::parse(R"([{"name": "Chart", "state": "intact"}, {"name": "Tides", "state": "edited"}])"),
              document["files"][0]["sections"]);
}

TEST_F(SettingsCommand, SealsAreThoseOfTheLibraryAndComeOnce) {
    Output("seal");
    IniFile file;
    ASSERT_TRUE(file.Open(m_folder.File(L"chart.ini")));
    for (int i = 0; i < file.NumSections(); ++i) EXPECT_FALSE(file[i].IsModified());

    // A file whose seals all fit is left alone, whatever its spacing.
    std::string bytes = Bytes();
    bytes.replace(bytes.find("Scale = "), 8, "Scale=");
    WriteBytes(Native(), bytes);
    EXPECT_THAT(Output("seal"), HasSubstr("was sealed"));
    EXPECT_EQ(bytes, Bytes());
}

TEST_F(SettingsCommand, SealCoversWhatTheFileKeeps) {
    WriteBytes(Native(), "[A]\n= a value without a name ;and a comment\nk = v\n");
    Output("seal");
    EXPECT_THAT(Output("check"), HasSubstr("intact"));
    EXPECT_THAT(Bytes(), StartsWith("[A]\n= a value without a name ;and a comment\nk = v\n$CHECKSUM$ = "));
}

TEST_F(SettingsCommand, SealsOnlyTheSectionsThatAreNamed) {
    const Json document = Json::parse(Output("seal", {"--section", "tides", "--json"}));
    ASSERT_EQ(1u, document["files"][0]["sections"].size());
    EXPECT_EQ("unsealed", document["files"][0]["sections"][0]["before"]);
    IniFile file;
    ASSERT_TRUE(file.Open(m_folder.File(L"chart.ini")));
    EXPECT_EQ(file[L"Tides"].ComputeChecksum(), document["files"][0]["sections"][0]["checksum"]);
    EXPECT_FALSE(file[L"Chart"].HasKey(L"$CHECKSUM$"));
}

TEST_F(SettingsCommand, AChangeTellsThatTheSealBrokeOrRenewsIt) {
    Output("seal");
    const ProgramResult set = Run("set", {"Chart", "Scale", "1"});
    EXPECT_EQ(0, set.exitCode);
    EXPECT_THAT(set.error, HasSubstr("the seal of [Chart] does not fit"));
    EXPECT_EQ(1, Run("check").exitCode);

    const ProgramResult comment = Run("set", {"Tides", "Offset", "0.35", "--comment", "new"});
    EXPECT_EQ("", comment.error); // comments are not sealed

    EXPECT_EQ("", Run("set", {"Chart", "Scale", "2", "--seal", "--accept-edits"}).error);
    EXPECT_EQ(0, Run("check").exitCode);
    EXPECT_EQ("", Run("rename", {"Chart", "S", "--key", "Scale", "--seal"}).error);
    EXPECT_EQ(0, Run("check").exitCode);
    EXPECT_EQ("", Run("remove", {"Chart", "S", "--seal"}).error);
    EXPECT_EQ(0, Run("check").exitCode);
}

TEST_F(SettingsCommand, ErrorsNameTheFileTheLineAndWhatToDo) {
    struct Row {
        const char* bytes;
        const char* place;
        const char* reason;
    };
    const Row rows[] = {
        {"[A]\nk=1\n\n[]\n[B]\n", ":4: ", "a section has no name"},
        {"first\r\n[Depth]\r\n[B]\r\n;\r\n[DEPTH]\r\n", ":5: ", "the section [DEPTH] is there already"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.reason);
        WriteBytes(Native(), row.bytes);
        for (const char* name : {"show", "check", "seal"}) {
            const ProgramResult result = Run(name);
            EXPECT_EQ(3, result.exitCode);
            EXPECT_EQ("", result.output);
            EXPECT_THAT(result.error, HasSubstr(Path() + row.place + row.reason));
        }
        EXPECT_EQ(row.bytes, Bytes());
    }
}

TEST_F(SettingsCommand, FilesThatCannotBeReadAreInputErrors) {
    const std::string folder = ToUtf8(WidePath(m_folder.Path()));
    const ProgramResult isFolder = RunChartutil({"settings", "show", folder});
    EXPECT_EQ(3, isFolder.exitCode);
    EXPECT_THAT(isFolder.error, HasSubstr(folder + ": is a folder"));
    const ProgramResult missing = RunChartutil({"settings", "check", folder + "/none.ini"});
    EXPECT_EQ(3, missing.exitCode);
    EXPECT_THAT(missing.error, HasSubstr("none.ini: no such file"));
}

TEST_F(SettingsCommand, AFileWithoutASectionFailsItsCheck) {
    WriteBytes(Native(), "no section here\n");
    EXPECT_EQ(1, Run("check").exitCode);
    EXPECT_EQ(1, Run("seal").exitCode);
    EXPECT_EQ("no section here\n", Bytes());
}

TEST_F(SettingsCommand, WrongUseIsToldApart) {
    const Arguments wrong[] = {{"settings"},
                               {"settings", "show"},
                               {"settings", "get", Path(), "Chart"},
                               {"settings", "set", Path(), "Chart", "Scale"},
                               {"settings", "show", Path(), "Chart", "more"},
                               {"settings", "seal", Path(), "--no-such-option"}};
    for (const Arguments& arguments : wrong) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const ProgramResult result = RunChartutil(arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_NE("", result.error);
    }
}

TEST_F(SettingsCommand, EveryOtherByteOfAForeignFileStays) {
    const std::string before =
        "# written by hand\nfirst = 1\n\n[Chart]\n  Scale\t=1   ; one\n= lost\n\n\n# end";
    struct Row {
        const char* command;
        Arguments arguments;
        std::string_view old, now;
    };
    const Row rows[] = {
        {"set", {"Chart", "Scale", "20000"}, "=1 ", "=20000 "},
        {"set", {"chart", "scale", "1"}, "", ""},
        {"set", {"Chart", "Scale", "1", "--comment", " two"}, "; one", "; two"},
        {"set", {"Chart", "Width", "2"}, "; one\n", "; one\n  Width\t=2\n"},
        {"rename", {"Chart", "Sheet"}, "[Chart]", "[Sheet]"},
        {"rename", {"Chart", "S", "--key", "Scale"}, "Scale", "S"},
        {"remove", {"Chart", "Scale"}, "  Scale\t=1   ; one\n", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments));
        WriteBytes(Native(), before);
        const ProgramResult result = Run(row.command, row.arguments);
        EXPECT_EQ(0, result.exitCode);
        EXPECT_EQ("", result.error);
        std::string after = before;
        EXPECT_EQ(after.replace(after.find(row.old), row.old.size(), row.now), Bytes());
    }
}

TEST(SampleProject, OneSectionWasEditedByHand) {
    const ProgramResult result =
        RunChartutil({"settings", "check", "--json", PROJECT_DATA_FOLDER "/sample-project.ini"});
    EXPECT_EQ(1, result.exitCode);
    const Json document = Json::parse(result.output);
    EXPECT_GE(document["sections"], 8);
    EXPECT_EQ(1, document["failed"]);
    for (const Json& section : document["files"][0]["sections"])
        EXPECT_EQ(section["name"] == "Tides" ? "edited" : "intact", section["state"]) << section;
}

TEST_F(SettingsCommand, AnEmptyKeyNameStandsForNoKeyAndNotForTheSection) {
    const std::pair<const char*, Arguments> cases[] = {
        {"remove", {"Tides", ""}},
        {"rename", {"Tides", "Shift", "--key", ""}},
    };
    for (const auto& [name, arguments] : cases) {
        SCOPED_TRACE(name);
        const ProgramResult result = Run(name, arguments);
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("there is no key \"\" in [Tides]"));
        EXPECT_EQ(kChart, Bytes());
    }
}

TEST_F(SettingsCommand, ARenamedSectionIsSealedWhenAsked) {
    EXPECT_EQ(0, Run("rename", {"Tides", "Gauges", "--seal"}).exitCode);
    EXPECT_EQ(0, Run("check", {"--section", "Gauges"}).exitCode);
    EXPECT_THAT(Bytes(), HasSubstr("$CHECKSUM$"));
}

TEST_F(SettingsCommand, OneBadFileDoesNotKeepTheOthersFromBeingDone) {
    const std::string bad = ToUtf8(m_folder.File(L"bad.ini"));
    WriteBytes(m_folder.Path() / "bad.ini", "[]\n");
    for (const char* name : {"seal", "check"}) {
        SCOPED_TRACE(name);
        const ProgramResult result = RunChartutil({"settings", name, "--json", bad, Path()});
        EXPECT_EQ(3, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr(bad + ":1: "));
        EXPECT_THAT(result.output, HasSubstr("\"Tides\""));
    }
}

TEST_F(SettingsCommand, GetTakesATextForWhatIsNotThere) {
    EXPECT_EQ("none\n", Output("get", {"Chart", "Author", "--default", "none"}));
    EXPECT_EQ("none\n", Output("get", {"Nowhere", "Author", "--default", "none"}));
    EXPECT_EQ("\n", Output("get", {"Chart", "Author", "--default", ""}));
    EXPECT_EQ("25000\n", Output("get", {"Chart", "Scale", "--default", "none"}));
    EXPECT_EQ("\n",
              Output("get", {"Chart", "Scale", "--default", "none", "--comment"})); // is there, and empty
    const Json document = Json::parse(Output("get", {"Chart", "Author", "--default", "none", "--json"}));
    EXPECT_EQ("Author", document["name"]);
    EXPECT_EQ("none", document["value"]);
    EXPECT_EQ("Chart", document["section"]);
    EXPECT_EQ("Nowhere",
              Json::parse(Output("get", {"Nowhere", "k", "--default", "none", "--json"}))["section"]);
    std::filesystem::remove(Native());
    EXPECT_EQ(3, Run("get", {"Chart", "Author", "--default", "none"}).exitCode);
}

TEST_F(SettingsCommand, GetPrintsEachKeyOfANameWhenAsked) {
    EXPECT_EQ("0.35\n0.36\n", Output("get", {"Tides", "offset", "--all"}));
    EXPECT_EQ("25000\n", Output("get", {"Chart", "Scale", "--all"}));
    EXPECT_EQ("none\n", Output("get", {"Tides", "Author", "--all", "--default", "none"}));
    EXPECT_EQ(1, Run("get", {"Tides", "Author", "--all"}).exitCode);
    const Json document = Json::parse(Output("get", {"tides", "offset", "--all", "--json"}));
    ASSERT_EQ(2u, document.size());
    EXPECT_EQ("Tides", document[1]["section"]);
    EXPECT_EQ("0.36", document[1]["value"]);
}

TEST_F(SettingsCommand, ANearNameIsSuggested) {
    struct Row {
        Arguments arguments;
        const char* meant;
    };
    const Row rows[] = {
        {{"get", "Tdies", "Offset"}, "there is no section [Tdies]; did you mean [Tides]?"},
        {{"get", "Tides", "ofset"}, "there is no key \"ofset\" in [Tides]; did you mean \"Offset\"?"},
        {{"remove", "Tidess"}, "did you mean [Tides]?"},
        {{"rename", "Tides", "Shift", "--key", "Offst"}, "did you mean \"Offset\"?"},
        {{"seal", "--section", "Charts"}, "did you mean [Chart]?"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments));
        const ProgramResult result =
            Run(row.arguments.front(), {row.arguments.begin() + 1, row.arguments.end()});
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr(row.meant));
    }
    EXPECT_THAT(Run("get", {"Gauges", "Offset"}).error, Not(HasSubstr("did you mean")));
}

TEST_F(SettingsCommand, SealingOverAnEditNeedsToBeAccepted) {
    Output("seal");
    std::string edited = Bytes();
    edited.replace(edited.find("25000"), 5, "99999");
    const Arguments commands[] = {
        {"seal"},
        {"seal", "--dry-run"},
        {"seal", "--section", "Chart"},
        {"set", "Chart", "Scale", "1", "--seal"},
        {"set", "Chart", "Width", "1", "--seal"},
        {"remove", "Chart", "Scale", "--seal"},
        {"rename", "Chart", "Sheet", "--seal"},
        {"rename", "Chart", "S", "--key", "Scale", "--seal"},
        {"merge", PROJECT_DATA_FOLDER "/sample-project.ini", "--seal"},
    };
    edited.insert(edited.find("[Tides]"), "[Chart Sheet]\r\nScale = 1\r\n$CHECKSUM$ = 1\r\n");
    for (const Arguments& command : commands) {
        SCOPED_TRACE(::testing::PrintToString(command));
        WriteBytes(Native(), edited);
        const Arguments arguments(command.begin() + 1, command.end());
        const ProgramResult refused = Run(command.front(), arguments);
        EXPECT_EQ(1, refused.exitCode);
        EXPECT_EQ("", refused.output);
        EXPECT_THAT(refused.error,
                    AllOf(HasSubstr("edited since it was sealed: [Chart"), HasSubstr("--accept-edits")));
        EXPECT_EQ(edited, Bytes());

        Arguments accepting = arguments;
        accepting.emplace_back("--accept-edits");
        EXPECT_EQ(0, Run(command.front(), accepting).exitCode);
    }
    WriteBytes(Native(), edited);
    EXPECT_THAT(Run("seal").error, HasSubstr("[Chart], [Chart Sheet]"));
    EXPECT_EQ(0, Run("seal", {"--section", "Tides"}).exitCode);
    EXPECT_EQ(0, Run("set", {"Tides", "Offset", "1", "--seal"}).exitCode);
    EXPECT_THAT(Output("seal", {"--accept-edits"}), HasSubstr("sealed anew, it had been edited"));
    Output("check");
}

TEST_F(SettingsCommand, QuietLeavesErrorsAndResults) {
    for (const Arguments& set : {Arguments{"--quiet", "settings", "set", Path(), "Chart", "Scale", "1"},
                                 Arguments{"settings", "--quiet", "set", Path(), "Chart", "Scale", "2"},
                                 Arguments{"settings", "set", Path(), "Chart", "Scale", "3", "--quiet"}}) {
        SCOPED_TRACE(::testing::PrintToString(set));
        const ProgramResult result = RunChartutil(set);
        EXPECT_EQ(0, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_EQ("", result.error);
    }
    EXPECT_EQ("3\n", Output("get", {"Chart", "Scale", "--quiet"}));
    EXPECT_EQ("", Output("seal", {"--quiet"}));
    EXPECT_EQ("", Run("set", {"Chart", "Scale", "4", "--quiet"}).error) << "a note";
    const ProgramResult failed = Run("check", {"--quiet"});
    EXPECT_THAT(failed.output, HasSubstr("EDITED BY HAND"));
    EXPECT_THAT(Run("get", {"Chart", "No", "--quiet"}).error, HasSubstr("there is no key"));
    Output("set", {"Chart", "Scale", "--", "--quiet"});
    EXPECT_EQ("--quiet\n", Output("get", {"Chart", "Scale"}));
}
