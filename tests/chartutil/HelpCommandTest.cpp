// SPDX-License-Identifier: MIT
// Help is asked of the whole command line: whatever command is added, it is held to the same.

#include "apps/chartutil/Program.h"
#include "apps/chartutil/commands/help/Topics.h"
#include "apps/chartutil/help/HelpFormatter.h"
#include "apps/chartutil/help/OptionText.h"
#include "apps/chartutil/help/Prose.h"
#include "apps/chartutil/terminal/Columns.h"
#include "tests/support/Environment.h"
#include "tests/support/PrintedText.h"
#include "tests/support/Program.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <gmock/gmock.h>
#include <set>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsSubsetOf;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

namespace {

class Help : public ::testing::Test {
protected:
    Help() {
        Describe(m_program, {});
        Collect(m_program);
    }

    CLI::App m_program{"", "chartutil"};
    std::vector<const CLI::App*> m_commands; // all, and the program itself

private:
    void Collect(const CLI::App& command) {
        m_commands.push_back(&command);
        for (const CLI::App* const part : CommandsOf(command)) Collect(*part);
    }
};

// The words by which the program is asked for the command.
std::vector<std::string> Words(const CLI::App& command) {
    std::vector<std::string> words = CLI::detail::split(FullName(command), ' ');
    words.erase(words.begin());
    return words;
}

std::vector<OptionText> AllOptionsOf(const CLI::App& command) {
    std::vector<OptionText> all = ArgumentsOf(command);
    for (const OptionText& option : OptionsOf(command)) all.push_back(option);
    return all;
}

void ExpectToFit(const std::string& text) {
    for (const std::string& line : LinesOf(text)) {
        EXPECT_LE(TextWidth(line), 80U) << line;
        EXPECT_FALSE(line.ends_with(' ')) << '"' << line << '"';
    }
}

} // namespace

TEST_F(Help, KnowsTheWholeTree) {
    EXPECT_GT(m_commands.size(), 35U);
    EXPECT_THAT(std::vector<std::string>({"chartutil settings get", "chartutil sheet", "chartutil help"}),
                IsSubsetOf([&] {
                    std::vector<std::string> names;
                    for (const CLI::App* const command : m_commands) names.push_back(FullName(*command));
                    return names;
                }()));
}

TEST_F(Help, OfEveryCommandFitsIntoEightyColumns) {
    for (const CLI::App* const command : m_commands) {
        SCOPED_TRACE(FullName(*command));
        ExpectToFit(HelpOf(*command));
    }
}

TEST_F(Help, OfEveryTopicFitsIntoEightyColumns) {
    for (const Topic& topic : Topics()) {
        SCOPED_TRACE(topic.name);
        ExpectToFit(ProseText(ReadProse(topic.text())));
    }
}

TEST_F(Help, SaysAllThatTheSourcesSay) {
    for (const CLI::App* const command : m_commands) {
        SCOPED_TRACE(FullName(*command));
        const std::string help = WithoutBlanks(HelpOf(*command));
        EXPECT_THAT(help, HasSubstr(WithoutBlanks(Usage(*command))));
        for (const OptionText& option : AllOptionsOf(*command))
            EXPECT_THAT(help, HasSubstr(WithoutBlanks(option.Term() + option.about)));
        for (const CLI::App* const part : CommandsOf(*command))
            EXPECT_THAT(help, HasSubstr(WithoutBlanks(part->get_name() + part->get_description())));
        for (const std::string& text : {command->get_description(), command->get_footer()})
            for (const Block& block : ReadProse(text))
                EXPECT_THAT(help, HasSubstr(WithoutBlanks(block.term + block.text)));
        EXPECT_THAT(HelpOf(*command), HasSubstr("\nExit codes: 0 "));
    }
}

TEST_F(Help, KeepsExamplesInLinesThatManualPagesHaveRoomFor) {
    constexpr std::size_t kRoom = 71; // of 80 columns, of which man leaves two free and indents by seven
    std::vector<std::string> texts;
    for (const CLI::App* const command : m_commands)
        texts.insert(texts.end(), {command->get_description(), command->get_footer()});
    for (const Topic& topic : Topics()) texts.push_back(topic.text());
    for (const std::string& text : texts) {
        for (const Block& block : ReadProse(text)) {
            if (block.kind != Block::Kind::LINES) continue;
            for (const std::string& line : LinesOf(block.text)) EXPECT_LE(TextWidth(line), kRoom) << line;
        }
    }
}

TEST_F(Help, ExplainsEveryOptionInWords) {
    for (const CLI::App* const command : m_commands) {
        for (const OptionText& option : AllOptionsOf(*command)) {
            SCOPED_TRACE(FullName(*command) + ' ' + option.Term());
            EXPECT_NE("", option.about);
            EXPECT_THAT(option.Term(), Not(AllOf(HasSubstr("{"), HasSubstr("TEXT:"))));
        }
    }
}

TEST_F(Help, NamesEachValueOfAClosedSet) {
    std::set<std::string> names;
    for (const CLI::App* const command : m_commands) {
        for (const OptionText& option : AllOptionsOf(*command)) {
            if (!option.choices.empty()) names.insert(option.names.back());
            const bool isLong = option.choices.size() > 6;     // an example of them is enough
            const bool isTold = option.names.back() == "--to"; // with --from
            if (isLong || isTold) continue;
            for (const std::string& choice : option.choices) EXPECT_THAT(option.about, HasSubstr(choice));
        }
    }
    EXPECT_THAT(names, UnorderedElementsAre("--encoding", "--as", "--format", "--line-type", "--from", "--to",
                                            "--justification", "--presentation", "--placement", "SUBJECT"));
}

TEST_F(Help, KnowsWhichValuesAreFilesAndFolders) {
    std::set<std::string> files, folders;
    for (const CLI::App* const command : m_commands) {
        for (const OptionText& option : AllOptionsOf(*command)) {
            if (option.takesFile) files.insert(option.names.back());
            if (option.takesFolder) folders.insert(option.names.back());
        }
    }
    EXPECT_THAT(files, UnorderedElementsAre("FILE", "BASE", "CHANGES", "BEFORE", "AFTER", "FROM", "TO",
                                            "INPUT", "LAYOUT", "TABLE", "--picture", "--output", "--input",
                                            "--project", "--soundings"));
    EXPECT_THAT(folders, UnorderedElementsAre("PROJECT", "FOLDER", "--data", "--install"));
}

TEST_F(Help, OfACommandIsTheSameInBothWays) {
    for (const CLI::App* const command : m_commands) {
        SCOPED_TRACE(FullName(*command));
        std::vector<std::string> asOption = Words(*command);
        asOption.emplace_back("--help");
        std::vector<std::string> asCommand = Words(*command);
        asCommand.insert(asCommand.begin(), "help");
        const ProgramResult option = RunChartutil(asOption);
        const ProgramResult help = RunChartutil(asCommand);
        EXPECT_EQ(0, help.exitCode);
        EXPECT_EQ("", help.error);
        EXPECT_EQ(HelpOf(*command), help.output);
        EXPECT_EQ(help.output, option.output);
    }
}

TEST_F(Help, ListsCommandsAndTopics) {
    const std::string list = RunChartutil({"help"}).output;
    EXPECT_THAT(list, StartsWith("Survey charts from soundings"));
    for (const CLI::App* const command : CommandsOf(m_program))
        EXPECT_THAT(list, HasSubstr("\n  " + command->get_name() + "  "));
    for (const Topic& topic : Topics()) EXPECT_THAT(list, HasSubstr(std::string("\n  ") + topic.name + "  "));
    EXPECT_LT(list.find("chartutil init"), list.find("chartutil sheet"));
    EXPECT_LT(list.find("chartutil sheet"), list.find("Usage:"));
}

TEST_F(Help, ExplainsTopics) {
    for (const Topic& topic : Topics()) {
        SCOPED_TRACE(topic.name);
        const ProgramResult help = RunChartutil({"help", topic.name});
        EXPECT_EQ(0, help.exitCode);
        EXPECT_EQ("", help.error);
        EXPECT_EQ(ProseText(ReadProse(topic.text())), help.output);
    }
    EXPECT_THAT(RunChartutil({"help", "exit-codes"}).output, HasSubstr("\n  2  Wrong use:"));
    EXPECT_THAT(RunChartutil({"help", "environment"}).output, HasSubstr("\n  UTILITYDLL_DATA  "));
    EXPECT_THAT(RunChartutil({"help", "project"}).output, HasSubstr("\n[Sheet]: "));
}

TEST_F(Help, HasNoTopicOfACommandsName) {
    for (const Topic& topic : Topics())
        for (const CLI::App* const command : CommandsOf(m_program))
            EXPECT_NE(topic.name, command->get_name());
}

TEST_F(Help, SuggestsWhatIsMeant) {
    struct Row {
        std::vector<std::string> words;
        const char* error;
    };
    for (const Row& row :
         {Row{{"exit-code"},
              "chartutil: there is no command or topic \"exit-code\"; did you mean \"exit-codes\"?\n"},
          Row{{"setings"},
              "chartutil: there is no command or topic \"setings\"; did you mean \"settings\"?\n"},
          Row{{"settings", "gte"},
              "chartutil: there is no command \"gte\" in 'settings'; did you mean \"get\"?\n"},
          Row{{"frobnicate"},
              "chartutil: there is no command or topic \"frobnicate\"; 'chartutil help' lists all\n"},
          Row{{"sheet", "x"},
              "chartutil: there is no command \"x\" in 'sheet'; 'chartutil help' lists all\n"},
          Row{{"files", "x"},
              "chartutil: there is no command \"x\" in 'files'; 'chartutil help' lists all\n"}}) {
        SCOPED_TRACE(::testing::PrintToString(row.words));
        std::vector<std::string> words = row.words;
        words.insert(words.begin(), "help");
        const ProgramResult result = RunChartutil(words);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_EQ(row.error, result.error);
    }
}

TEST_F(Help, MakesOnlyTheCommandThatIsNamed) {
    CLI::App sheet{"", "chartutil"}, help{"", "chartutil"};
    Describe(sheet, {"--quiet", "sheet", "settings"});
    EXPECT_EQ(1U, CommandsOf(sheet).size());
    Describe(help, {"help", "sheet"});
    EXPECT_EQ(CommandsOf(m_program).size(), CommandsOf(help).size());
}

// What the topics say of several commands at once.
TEST(HelpTopics, SayWhatCodeSeveralFilesGive) {
    const TemporaryFolder folder;
    const auto file = [&](const wchar_t* name, const char* bytes) {
        WriteBytes(folder.File(name), bytes);
        return ToUtf8(folder.File(name));
    };
    const std::string unsealed = file(L"unsealed.ini", "[A]\nk=1\n");
    const std::string missing = ToUtf8(folder.File(L"missing.ini"));
    const ProgramResult both = RunChartutil({"settings", "check", missing, unsealed});
    EXPECT_EQ(3, both.exitCode);
    EXPECT_THAT(both.error, HasSubstr(missing));
    EXPECT_THAT(both.output, HasSubstr(unsealed));
    EXPECT_EQ(1, RunChartutil({"settings", "check", unsealed}).exitCode);
}

TEST(HelpTopics, SayThatAFileMayHaveTheNameOfAStream) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"-"), "[A]\nk=1\n");
    const std::string file = ToUtf8(WidePath(folder.Path())) + "/./-";
    EXPECT_EQ("1\n", RunChartutil({"settings", "get", file, "A", "k"}).output);
}

TEST(HelpTopics, SayThatHelpIsTheSameOnANarrowTerminal) {
    const std::string wide = RunChartutil({"help"}).output;
    SetEnvironment(L"COLUMNS", L"40");
    EXPECT_EQ(wide, RunChartutil({"help"}).output);
    SetEnvironment(L"COLUMNS", L"");
}

TEST(HelpInstall, WritesManualPagesAndCompletions) {
    const TemporaryFolder folder;
    const auto generic = [](std::string path) {
        std::ranges::replace(path, '\\', '/');
        return path;
    };
    const std::string share = generic(ToUtf8(folder.File(L"a/share")));
    const ProgramResult result = RunChartutil({"help", "--install", share});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("", result.error);
    std::set<std::string> told, there;
    for (const std::string& line : LinesOf(result.output)) told.insert(generic(line));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(NativePath(folder.File(L"a"))))
        if (entry.is_regular_file()) there.insert(generic(ToUtf8(WidePath(entry.path()))));
    EXPECT_EQ(there, told);
    for (const char* const name :
         {"/man/man1/chartutil.1", "/man/man1/chartutil-settings.1", "/man/man5/chartutil-project.5",
          "/man/man7/chartutil-exit-codes.7", "/bash-completion/completions/chartutil",
          "/zsh/vendor-completions/_chartutil", "/fish/vendor_completions.d/chartutil.fish"})
        EXPECT_EQ(1U, there.count(share + name)) << name;
    EXPECT_EQ("", RunChartutil({"help", "--install", share, "--quiet"}).output); // over those that are there
}

TEST(HelpInstall, SaysWhatIsInTheWay) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"man"), "");
    const ProgramResult result = RunChartutil({"help", "--install", ToUtf8(WidePath(folder.Path()))});
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error, HasSubstr("/man/man1/chartutil.1: "));
    EXPECT_EQ(1U, folder.NumFiles());
    EXPECT_EQ(2, RunChartutil({"help", "--install", ""}).exitCode);
    EXPECT_EQ(2, RunChartutil({"help", "sheet", "--install", "x"}).exitCode);
}
