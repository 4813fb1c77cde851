// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(Chartutil, ExplainsItselfAndItsExitCodes) {
    const ProgramResult result = RunChartutil({"--help"});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_THAT(result.output, HasSubstr("Exit codes: 0 success, 1 a check failed, 2 wrong use, 3 input"));
    EXPECT_EQ("", result.error);
}

TEST(Chartutil, TellsItsVersionAndThoseOfItsLibraries) {
    const ProgramResult result = RunChartutil({"--version"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("", result.error);
    EXPECT_THAT(result.output, StartsWith("chartutil " PROJECT_VERSION "\nIts libraries,"));
    for (const char* const library :
         {"VelmBaseR      ", "Framework      ", "VersionControlR", "VelmConfigureR ", "UtilityDLL     "})
        EXPECT_THAT(result.output,
                    HasSubstr(std::string("\n  ") + library + "  " PROJECT_VERSION "  matches\n"));
}

// A command that words a fault of its own makes its reader learn it anew.
TEST(Chartutil, TheSameFaultHasTheSameWordsInEveryCommand) {
    const TemporaryFolder folder;
    const auto file = [&](const wchar_t* name, const char* bytes) {
        WriteBytes(folder.File(name), bytes);
        return ToUtf8(folder.File(name));
    };
    const std::string broken = file(L"broken.ini", "[A]\nk=1\n[]\n");
    const std::string twice = file(L"twice.ini", "[A]\n[a]\n");
    const std::string other = file(L"other.ini", "[Other]\nk=1\n");
    const std::string layout = file(L"layout.txt", "text\n");
    const std::string table = file(L"t.col", "[ColorTable]\nEntry(0)=1,0,0,0\n");
    const std::string palette = file(L"t.cpt", "0 red 1 red\n");
    const std::string points = file(L"t.csv", "x,y\n1,2\n");
    const std::string missing = ToUtf8(folder.File(L"missing"));
    const std::string path = ToUtf8(WidePath(folder.Path()));
    const std::string out = ToUtf8(folder.File(L"none/out.svg"));
    struct Fault {
        int exitCode;
        std::string words;
        std::vector<std::vector<std::string>> commands;
    };
    const std::vector<std::vector<std::string>> readers = {
        {"settings", "show"}, {"crc", "print"},     {"colors", "table"},   {"transform", "--rotate", "1"},
        {"keywords", "list"}, {"contours", "list"}, {"contours", "check"}, {"settings", "seal"}};
    const auto each = [](const std::vector<std::vector<std::string>>& commands, const std::string& argument) {
        std::vector<std::vector<std::string>> all = commands;
        for (std::vector<std::string>& command : all) command.push_back(argument);
        return all;
    };
    const auto with = [](std::vector<std::vector<std::string>> commands,
                         std::vector<std::vector<std::string>> more) {
        commands.insert(commands.end(), more.begin(), more.end());
        return commands;
    };
    for (const Fault& fault :
         {Fault{3, missing + ": no such file; check the path",
                with(each(readers, missing), {{"style", "show", missing, "A"},
                                              {"colors", "import", missing, out},
                                              {"contours", "from-table", out, missing},
                                              {"keywords", "fill", layout, "--project", missing}})},
          Fault{3, path + ": is a folder; name a file in it",
                with(each(readers, path), {{"edit", path},
                                           {"style", "show", path, "A"},
                                           {"colors", "import", path, out},
                                           {"keywords", "fill", layout, "--project", path}})},
          Fault{3,
                broken + ":3: a section has no name; write one between \"[\" and \"]\"",
                {{"settings", "show", broken},
                 {"style", "show", broken, "A"},
                 {"colors", "table", broken},
                 {"contours", "list", broken},
                 {"contours", "check", broken},
                 {"edit", broken},
                 {"keywords", "fill", layout, "--project", broken}}},
          Fault{3,
                twice + ":2: the section [a] is there already (letter case does not count); rename or remove "
                        "one of the two",
                {{"settings", "show", twice},
                 {"style", "show", twice, "A"},
                 {"contours", "list", twice},
                 {"edit", twice},
                 {"keywords", "fill", layout, "--project", twice}}},
          Fault{1,
                other + ": there is no section [No]; 'chartutil settings show' lists them",
                {{"settings", "show", other, "No"},
                 {"settings", "get", other, "No", "k"},
                 {"style", "show", other, "No"},
                 {"keywords", "fill", layout, "--project", other, "--section", "No"}}},
          Fault{3,
                out + ": there is no folder " + ToUtf8(folder.File(L"none")) + "; make it, or check the path",
                {{"settings", "set", out, "A", "k", "v", "--create"},
                 {"colors", "palette", "--picture", out},
                 {"text", "measure", "Bay", "--picture", out},
                 {"text", "sounding", "12.3", "--picture", out},
                 {"text", "justifications", "--picture", out},
                 {"colors", "import", palette, out},
                 {"transform", points, "--rotate", "1", "-o", out},
                 {"keywords", "fill", layout, "-o", out},
                 {"contours", "from-table", out, table}}}}) {
        for (const std::vector<std::string>& command : fault.commands) {
            SCOPED_TRACE(::testing::PrintToString(command));
            const ProgramResult result = RunChartutil(command);
            EXPECT_EQ(fault.exitCode, result.exitCode);
            EXPECT_EQ("chartutil: " + fault.words + "\n", result.error);
        }
    }
}

TEST(Chartutil, RefusesWrongUse) {
    const std::vector<std::string> wrong[] = {
        {},   {"no-such-command"}, {"--no-such-option"},
        {""}, {"\xC3\xBC"},        {"settings", "--no\nsuch \"option\\"}};
    for (const std::vector<std::string>& arguments : wrong) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const ProgramResult result = RunChartutil(arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_NE("", result.error);
    }
}

TEST(Chartutil, SuggestsTheCommandThatIsMeant) {
    struct Row {
        std::vector<std::string> arguments;
        const char* words;
    };
    const Row rows[] = {
        {{"setings", "show", "a.ini"}, "There is no command \"setings\"; did you mean \"settings\"?\n"},
        {{"--quiet", "colours"}, "There is no command \"colours\"; did you mean \"colors\"?\n"},
        {{"settings", "shwo", "a.ini"},
         "There is no command \"shwo\" in 'settings'; did you mean \"show\"?\n"},
        {{"frobnicate"}, "There is no command \"frobnicate\"\n"},
        {{"settings"}, "Name a command in 'settings': show, get, "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments));
        const ProgramResult result = RunChartutil(row.arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, StartsWith(row.words));
    }
}
