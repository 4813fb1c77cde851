// SPDX-License-Identifier: MIT
// Two settings files: what differs, and one merged into the other. And what an edit would change.

#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;
using Arguments = std::vector<std::string>;

namespace {

class SettingsCommand_Compare : public ::testing::Test {
protected:
    std::string File(const wchar_t* name, std::string_view bytes) const {
        WriteBytes(m_folder.File(name), bytes);
        return ToUtf8(m_folder.File(name));
    }
    std::string Bytes(const wchar_t* name) const { return ReadBytes(m_folder.Path() / name); }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(SettingsCommand_Compare, FilesOfTheSameSettingsDoNotDiffer) {
    const std::string a = File(L"a.ini", "[A]\r\nx = 1 ;one\r\ny=2\r\n[B]\r\n");
    const std::string b = File(L"b.ini", "# by hand\n[b]\n\n[a]\nY = 2\n   X = 1\n;note\n");
    const ProgramResult same = RunChartutil({"settings", "diff", a, b});
    EXPECT_EQ(0, same.exitCode);
    EXPECT_EQ("", same.output);
    EXPECT_EQ("", same.error);
    EXPECT_EQ(Json::array(),
              Json::parse(RunChartutil({"settings", "diff", a, b, "--json"}).output)["differences"]);
    EXPECT_EQ(1, RunChartutil({"settings", "diff", a, b, "--comments"}).exitCode);
}

TEST_F(SettingsCommand_Compare, DiffTellsSectionsKeysAndValues) {
    const std::string a =
        File(L"a.ini", "[A]\nx = 1\ny = 2\ny = 3\n[Gone]\nk = v\n[C]\nk = 1 ;old\n;a line\n");
    const std::string b =
        File(L"b.ini", "[New]\nn = 1\n[A]\nx = 10\ny = 2\nz = 4\n[C]\nk = 1 ;new\n;a line\n;more\n");
    const std::string head = "--- " + a + "\n+++ " + b + "\n";
    const ProgramResult result = RunChartutil({"settings", "diff", a, b});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ(head + " [A]\n-x = 1\n+x = 10\n-y = 3\n+z = 4\n-[Gone]\n-k = v\n+[New]\n+n = 1\n",
              result.output);
    EXPECT_EQ("", result.error);

    const ProgramResult comments = RunChartutil({"settings", "diff", a, b, "--comments"});
    EXPECT_THAT(comments.output, HasSubstr(" [C]\n-k = 1 ;old\n+k = 1 ;new\n+;more\n"));

    const Json document = Json::parse(RunChartutil({"settings", "diff", a, b, "--json"}).output);
    EXPECT_EQ(a, document["before"]);
    EXPECT_EQ(b, document["after"]);
    EXPECT_EQ(Json::parse(R"([
        {"section": "A", "key": "x", "before": {"value": "1"}, "after": {"value": "10"}},
        {"section": "A", "key": "y", "before": {"value": "3"}, "after": null},
        {"section": "A", "key": "z", "before": null, "after": {"value": "4"}},
        {"section": "Gone", "isThere": {"before": true, "after": false}},
        {"section": "Gone", "key": "k", "before": {"value": "v"}, "after": null},
        {"section": "New", "isThere": {"before": false, "after": true}},
        {"section": "New", "key": "n", "before": null, "after": {"value": "1"}}])"),
              document["differences"]);
}

TEST_F(SettingsCommand_Compare, TheHelpOfDiffHasItsOwnExitCodes) {
    const ProgramResult result = RunChartutil({"settings", "diff", "--help"});
    EXPECT_THAT(result.output,
                AllOf(HasSubstr("  chartutil settings diff "), HasSubstr("0 no difference, 1 a ")));
}

TEST_F(SettingsCommand_Compare, TroubleIsNoDifference) {
    const std::string good = File(L"good.ini", "[A]\n");
    const std::string text = File(L"text.txt", "a letter\n");
    const std::string missing = ToUtf8(m_folder.File(L"missing.ini"));
    EXPECT_EQ(3, RunChartutil({"settings", "diff", good, text}).exitCode);
    EXPECT_EQ(3, RunChartutil({"settings", "diff", missing, good}).exitCode);
    EXPECT_EQ(2, RunChartutil({"settings", "diff", good}).exitCode);
    EXPECT_EQ(2, RunChartutil({"settings", "diff", "-", "-"}, "[A]\n").exitCode);
    EXPECT_EQ(0, RunChartutil({"settings", "diff", good, "-"}, "[a]\n").exitCode);
}

TEST_F(SettingsCommand_Compare, MergeSetsWhatTheOtherFileHasAndKeepsTheRest) {
    const std::string base = File(L"base.ini", "# mine\n[A]\nx = 1   ; one\ny=2\n\n[B]\nk = v\n");
    const std::string changes =
        File(L"changes.ini",
             "[a]\nX = 10 ; ten\nx = 11\nY = 2\nz = 3 ; new\n# left = out\n$CHECKSUM$ = 1\n[Empty]\n");
    const ProgramResult result = RunChartutil({"settings", "merge", base, changes});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ(base + ": 1 key set, 1 key and 1 section added, 1 key as they were\n", result.output);
    EXPECT_EQ("", result.error);
    EXPECT_EQ("# mine\n[A]\nx = 10   ; one\ny=2\nz=3 ; new\n\n[B]\nk = v\n\n[Empty]\n", Bytes(L"base.ini"));

    const ProgramResult again = RunChartutil({"settings", "merge", base, changes});
    EXPECT_THAT(again.output, HasSubstr("0 keys set, 0 keys and 0 sections added, 3 keys as they were"));
}

TEST_F(SettingsCommand_Compare, MergeSealsTheSectionsThatItChanges) {
    const std::string base = File(L"base.ini", "[A]\nx = 1\n[B]\nk = v\n");
    const std::string changes = File(L"changes.ini", "[A]\nx = 2\n[B]\nk = v\n");
    EXPECT_EQ(0, RunChartutil({"settings", "merge", base, changes, "--seal"}).exitCode);
    EXPECT_EQ(0, RunChartutil({"settings", "check", base, "--section", "A"}).exitCode);
    EXPECT_EQ(1, RunChartutil({"settings", "check", base, "--section", "B"}).exitCode);
}

TEST_F(SettingsCommand_Compare, MergeTakesOneFileFromStandardInput) {
    const std::string file = File(L"file.ini", "[A]\nx = 2\n");
    EXPECT_EQ("[A]\nx = 2\n", RunChartutil({"settings", "merge", "-", file}, "[A]\nx = 1\n").output);
    EXPECT_EQ(0, RunChartutil({"settings", "merge", file, "-"}, "[A]\nx = 3\n").exitCode);
    EXPECT_EQ("[A]\nx = 3\n", Bytes(L"file.ini"));
    EXPECT_EQ(2, RunChartutil({"settings", "merge", "-", "-"}, "[A]\nx = 3\n").exitCode);
}

TEST_F(SettingsCommand_Compare, ADryRunPrintsTheChangeAndWritesNothing) {
    constexpr char kBytes[] = "1\n2\n[A]\r\nx = \xFC\r\ny = 2\r\n";
    const std::string file = File(L"file.ini", kBytes);
    const std::string changes = File(L"changes.ini", "[A]\nx = 2\n");
    const std::string head = "--- " + file + "\n+++ " + file + "\n";
    struct Row {
        Arguments command;
        const char* diff;
    };
    const Row rows[] = {
        {{"set", file, "A", "x", "2"}, "@@ -1,5 +1,5 @@\n 1\n 2\n [A]\n-x = \u00FC\n+x = 2\n y = 2\n"},
        {{"merge", file, changes}, "@@ -1,5 +1,5 @@\n 1\n 2\n [A]\n-x = \u00FC\n+x = 2\n y = 2\n"},
        {{"remove", file, "A", "y"}, "@@ -2,4 +2,3 @@\n 2\n [A]\n x = \u00FC\n-y = 2\n"},
        {{"rename", file, "A", "B"}, "@@ -1,5 +1,5 @@\n 1\n 2\n-[A]\n+[B]\n x = \u00FC\n y = 2\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.command));
        Arguments all = {"settings"};
        all.insert(all.end(), row.command.begin(), row.command.end());
        all.push_back("--dry-run");
        const ProgramResult result = RunChartutil(all);
        EXPECT_EQ(0, result.exitCode);
        EXPECT_EQ(head + row.diff, result.output);
        EXPECT_EQ("", result.error);
        EXPECT_EQ(kBytes, Bytes(L"file.ini"));
    }
    EXPECT_THAT(RunChartutil({"settings", "seal", file, "--dry-run"}).output,
                AllOf(HasSubstr("\n y = 2\n+$CHECKSUM$ = "), Not(HasSubstr("sealed"))));
    EXPECT_EQ(kBytes, Bytes(L"file.ini"));

    const ProgramResult same = RunChartutil({"settings", "set", file, "A", "y", "2", "--dry-run"});
    EXPECT_EQ(0, same.exitCode);
    EXPECT_EQ("", same.output);
    EXPECT_THAT(same.error, HasSubstr("nothing would change"));
}

TEST_F(SettingsCommand_Compare, ADryRunMakesNoFile) {
    const std::string file = ToUtf8(m_folder.File(L"new.ini"));
    EXPECT_EQ(3, RunChartutil({"settings", "set", file, "A", "x", "2", "--dry-run"}).exitCode);
    EXPECT_THAT(RunChartutil({"settings", "set", file, "A", "x", "2", "--dry-run", "--create"}).output,
                HasSubstr("@@ -0,0 +1,2 @@\n+[A]\n+x = 2\n"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "new.ini"));
}
