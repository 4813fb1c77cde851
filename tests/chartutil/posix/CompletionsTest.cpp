// SPDX-License-Identifier: MIT
// The shells themselves are asked what they would complete.

#include "apps/chartutil/help/Completions.h"
#include "apps/chartutil/Program.h"
#include "apps/chartutil/help/OptionText.h"
#include "tests/support/PrintedText.h"
#include "tests/support/Program.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <gmock/gmock.h>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

namespace {

using Strings = std::vector<std::string>;

const CLI::App& Program() {
    static CLI::App program("", "chartutil");
    static const bool isDescribed = (Describe(program, {}), true);
    (void)isDescribed;
    return program;
}

std::string PathOf(const char* shell) {
    for (const char* const folder : {"/bin/", "/usr/bin/"})
        if (std::filesystem::exists(std::string(folder) + shell)) return std::string(folder) + shell;
    return {};
}

Strings Names(const std::vector<const CLI::App*>& commands) {
    Strings names;
    for (const CLI::App* const command : commands) names.push_back(command->get_name());
    return names;
}

// Runs what `script` says, with a file and a folder in the current folder. Nothing may go to standard error.
Strings RunShell(const char* shell, const Strings& options, const std::string& completion,
                 const std::string& script) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"completion"), completion);
    WriteBytes(folder.File(L"a chart.ini"), "");
    std::filesystem::create_directory(folder.Path() / "a folder");
    WriteBytes(folder.File(L"script"), "cd '" + ToUtf8(WidePath(folder.Path())) + "'\n" + script);
    Strings arguments = options;
    arguments.push_back(ToUtf8(folder.File(L"script")));
    const ProgramResult result = RunProgramAt(PathOf(shell), arguments);
    EXPECT_EQ("", result.error);
    return LinesOf(result.output);
}

// What bash offers behind these words, of which the last is being typed. What it is told to offer by itself
// is
// "<default>", for files, or "<dirnames>".
Strings Bash(const Strings& words) {
    std::string script = "compopt() { echo \"<$2>\"; }\n. ./completion\nCOMP_WORDS=(";
    for (const std::string& word : words) script += " '" + word + "'";
    script += ")\nCOMP_CWORD=" + std::to_string(words.size() - 1) +
              "\n_chartutil\n((${#COMPREPLY[@]})) && printf '%s\\n' \"${COMPREPLY[@]}\"\nexit 0\n";
    return RunShell("bash", {"--norc", "--noprofile"}, BashCompletion(Program()), script);
}

// The same of fish, for a line, with the descriptions.
Strings Fish(const std::string& line) {
    return RunShell("fish", {"--no-config"}, FishCompletion(Program()),
                    ". ./completion\ncomplete -C '" + line + "'\n");
}

// The same of zsh, which completes at a terminal only, and so gets one. Descriptions are left out.
Strings Zsh(const std::string& line) {
    const std::string script = R"(mv completion _chartutil
cat > setup <<'END'
PS1=
fpath=($PWD $fpath)
autoload -Uz compinit && compinit -u -D
bindkey '^I' complete-word
compadd() {
    [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]] && { builtin compadd "$@"; return }
    local -a found
    builtin compadd -O found "$@"
    (( $#found )) && print -rl -- $found >> found
    builtin compadd "$@"
}
comppostfuncs=(leave)
leave() { exit }
END
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell '. ./setup'
zpty -w -n shell ')" + line + R"('$'\t'
while zpty -r shell output; do :; done
[[ -e found ]] && sort -u found
exit 0
)";
    return RunShell("zsh", {"-f"}, ZshCompletion(Program()), script);
}

// Of a shell that may not be there.
class CompletionBy : public ::testing::Test {
protected:
    explicit CompletionBy(const char* shell) : m_shell(shell) {}
    void SetUp() override {
        if (PathOf(m_shell).empty()) GTEST_SKIP() << m_shell << " is not installed";
    }

private:
    const char* m_shell;
};
struct CompletionByBash : CompletionBy {
    CompletionByBash() : CompletionBy("bash") {}
};
struct CompletionByFish : CompletionBy {
    CompletionByFish() : CompletionBy("fish") {}
};
struct CompletionByZsh : CompletionBy {
    CompletionByZsh() : CompletionBy("zsh") {}
};

} // namespace

TEST_F(CompletionByBash, OffersCommands) {
    EXPECT_EQ(Names(CommandsOf(Program())), Bash({"chartutil", ""}));
    EXPECT_THAT(Bash({"chartutil", "se"}), ElementsAre("settings"));
    EXPECT_THAT(Bash({"chartutil", "--quiet", "settings", "s"}), ElementsAre("show", "set", "seal"));
    EXPECT_THAT(Bash({"chartutil", "nothing", ""}), IsEmpty());
}

TEST_F(CompletionByBash, OffersOptions) {
    EXPECT_THAT(Bash({"chartutil", "settings", "get", "--"}),
                UnorderedElementsAre("--help", "--encoding", "--comment", "--all", "--default", "--json",
                                     "--quiet", "--no-color"));
    EXPECT_THAT(Bash({"chartutil", "settings", "get", "f", "s", "k", "--d"}), ElementsAre("--default"));
    EXPECT_THAT(Bash({"chartutil", "--v"}), ElementsAre("--version"));
    EXPECT_THAT(Bash({"chartutil", "crc", "seal", "--v"}), IsEmpty());
}

TEST_F(CompletionByBash, OffersValuesOfAClosedSet) {
    const Strings command = {"chartutil", "settings", "get"};
    const auto behind = [&](const Strings& words) {
        Strings all = command;
        all.insert(all.end(), words.begin(), words.end());
        return Bash(all);
    };
    EXPECT_THAT(behind({"--encoding", ""}), ElementsAre("latin-1", "utf-8"));
    EXPECT_THAT(behind({"--encoding", "u"}), ElementsAre("utf-8"));
    EXPECT_THAT(behind({"--encoding", "="}),
                ElementsAre("latin-1", "utf-8")); // "--encoding=" as bash divides it
    EXPECT_THAT(behind({"--encoding", "=", "l"}), ElementsAre("latin-1"));
    EXPECT_THAT(behind({"--encoding", "=", "utf-8", "--j"}), ElementsAre("--json"));
    EXPECT_THAT(behind({"--default", ""}), IsEmpty());
    EXPECT_THAT(Bash({"chartutil", "help", "exit"}), ElementsAre("exit-codes"));
}

TEST_F(CompletionByBash, LeavesFilesAndFoldersToTheShell) {
    EXPECT_THAT(Bash({"chartutil", "settings", "get", "a"}), ElementsAre("<default>"));
    EXPECT_THAT(Bash({"chartutil", "settings", "get", "f.ini", "a"}), IsEmpty());
    EXPECT_THAT(Bash({"chartutil", "settings", "get", "--encoding", "utf-8", "a"}), ElementsAre("<default>"));
    EXPECT_THAT(Bash({"chartutil", "crc", "seal", "a", "b", "c"}), ElementsAre("<default>"));
    EXPECT_THAT(Bash({"chartutil", "sheet", "a"}), ElementsAre("<dirnames>"));
    EXPECT_THAT(Bash({"chartutil", "sheet", "a", "-o", ""}), ElementsAre("<default>"));
    EXPECT_THAT(Bash({"chartutil", "keywords", "list", "--data", ""}), ElementsAre("<dirnames>"));
}

// As the package for completion does it, from the folder that the file is installed in.
TEST_F(CompletionByBash, IsLoadedWhenItIsNeeded) {
    const std::string package = "/usr/share/bash-completion/bash_completion";
    if (!std::filesystem::exists(package)) GTEST_SKIP() << "bash-completion is not installed";
    const std::string script = "mkdir -p share/bash-completion/completions\n"
                               "mv completion share/bash-completion/completions/chartutil\n"
                               "export XDG_DATA_HOME=$PWD/share BASH_COMPLETION_USER_DIR=\n"
                               ". " +
                               package + "\n_completion_loader chartutil\ncomplete -p chartutil\n";
    EXPECT_THAT(RunShell("bash", {"--norc", "--noprofile"}, BashCompletion(Program()), script),
                ElementsAre("complete -F _chartutil chartutil"));
}

TEST_F(CompletionByFish, OffersCommandsWithTheirDescriptions) {
    EXPECT_THAT(Fish("chartutil se"),
                ElementsAre("settings\tShow, change, compare, check and seal settings files"));
    EXPECT_THAT(Fish("chartutil --quiet settings ge"), ElementsAre("get\tPrint the value of a key"));
    EXPECT_THAT(Fish("chartutil settings get sett"), IsEmpty());
    EXPECT_EQ(CommandsOf(Program()).size(), Fish("chartutil ").size());
}

TEST_F(CompletionByFish, OffersOptions) {
    EXPECT_THAT(Fish("chartutil settings set f --c"),
                UnorderedElementsAre("--comment\tThe comment of the key\'s line",
                                     "--create\tMake the file if there is none"));
    EXPECT_THAT(Fish("chartutil settings get --qui"),
                ElementsAre("--quiet\tPrint errors and results, and nothing else"));
    EXPECT_THAT(Fish("chartutil settings get --versi"), IsEmpty());
}

TEST_F(CompletionByFish, OffersValuesOfAClosedSet) {
    EXPECT_THAT(
        Fish("chartutil settings get --encoding u"),
        ElementsAre("utf-8\tWhat the file\'s bytes are: latin-1, as the suite\'s own files, or utf-8"));
    EXPECT_THAT(Fish("chartutil contours range --line-type=das"),
                ElementsAre(::testing::StartsWith("--line-type=dashed")));
    EXPECT_THAT(Fish("chartutil help exit"), ElementsAre("exit-codes"));
    EXPECT_THAT(Fish("chartutil settings get --default a"), IsEmpty());
}

TEST_F(CompletionByFish, OffersFilesAndFolders) {
    EXPECT_THAT(Fish("chartutil settings show a"), UnorderedElementsAre("a chart.ini", "a folder/"));
    EXPECT_THAT(Fish("chartutil sheet a"), ElementsAre("a folder/\tDirectory"));
    EXPECT_THAT(Fish("chartutil sheet p -o a"), UnorderedElementsAre("a chart.ini", "a folder/"));
    EXPECT_THAT(Fish("chartutil keywords list x --data a"), ElementsAre("a folder/\tDirectory"));
    EXPECT_THAT(Fish("chartutil colors nearest a"), IsEmpty());
}

TEST_F(CompletionByZsh, IsUnderstoodWhole) {
    EXPECT_THAT(RunShell("zsh", {"-f", "-n"}, "", ZshCompletion(Program())), IsEmpty());
}

TEST_F(CompletionByZsh, OffersCommands) {
    EXPECT_THAT(Zsh("chartutil se"), ElementsAre("settings"));
    EXPECT_THAT(Zsh("chartutil settings s"), ElementsAre("seal", "set", "show"));
    EXPECT_THAT(Zsh("chartutil nothing "), IsEmpty());
}

TEST_F(CompletionByZsh, OffersOptions) {
    EXPECT_THAT(Zsh("chartutil settings get --"), ElementsAre("--all", "--comment", "--default", "--encoding",
                                                              "--help", "--json", "--no-color", "--quiet"));
    EXPECT_THAT(Zsh("chartutil settings get --json --"), Not(Contains("--json"))); // not twice
}

TEST_F(CompletionByZsh, OffersValuesOfAClosedSet) {
    EXPECT_THAT(Zsh("chartutil settings get --encoding "), ElementsAre("latin-1", "utf-8"));
    EXPECT_THAT(Zsh("chartutil contours range --line-type=d"), ElementsAre("dashed", "dotted"));
    EXPECT_THAT(Zsh("chartutil help exit"), ElementsAre("exit-codes"));
}

TEST_F(CompletionByZsh, OffersFilesAndFolders) {
    EXPECT_THAT(Zsh("chartutil settings show a"), ElementsAre("a\\ chart.ini", "a\\ folder"));
    EXPECT_THAT(Zsh("chartutil settings get f.ini a"), IsEmpty());
    EXPECT_THAT(Zsh("chartutil sheet a"), ElementsAre("a\\ folder"));
    EXPECT_THAT(Zsh("chartutil text measure x --picture=a"), ElementsAre("a\\ chart.ini", "a\\ folder"));
}
