// SPDX-License-Identifier: MIT
// Files that are not the suite's own: of another kind, in UTF-8, or standard input.

#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;
using Arguments = std::vector<std::string>;

namespace {

constexpr char kHint[] = "looks like UTF-8";

class SettingsCommand_ForeignFiles : public ::testing::Test {
protected:
    // settings NAME FILE ARGUMENT...
    ProgramResult Run(const std::string& name, const Arguments& arguments = {},
                      const std::string& input = {}) const {
        Arguments all = {"settings", name, input.empty() ? Path() : "-"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return RunChartutil(all, input);
    }
    std::string Path() const { return ToUtf8(m_folder.File(L"foreign.ini")); }
    void Write(std::string_view bytes) const { WriteBytes(m_folder.File(L"foreign.ini"), bytes); }
    std::string Bytes() const { return ReadBytes(m_folder.Path() / "foreign.ini"); }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(SettingsCommand_ForeignFiles, AFileOfAnotherKindIsNamedAndKept) {
    struct Row {
        std::string_view bytes;
        const char* kind;
    };
    using namespace std::string_view_literals;
    const Row rows[] = {
        {"\x89PNG\r\n\x1A\n\0\0\0\rIHDR\n[A]\nk = v\n"sv, "is a PNG picture"},
        {"\xFF\xFE[\0A\0]\0\n\0k\0=\0v\0"sv, "is a text in UTF-16"},
        {"[A]\nk = v\0\n"sv, "is a binary file"},
        {"just a letter\nto somebody\n"sv, "is a text without sections"},
    };
    const std::pair<const char*, Arguments> commands[] = {
        {"show", {}},
        {"get", {"A", "k"}},
        {"get", {"A", "k", "--default", "x"}},
        {"check", {}},
        {"seal", {}},
        {"set", {"A", "k", "w"}},
        {"set", {"A", "k", "w", "--create"}},
        {"set", {"A", "k", "w", "--dry-run"}},
        {"remove", {"A", "k"}},
        {"rename", {"A", "B"}},
        {"merge", {PROJECT_DATA_FOLDER "/sample-project.ini"}},
    };
    for (const Row& row : rows) {
        Write(row.bytes);
        for (const auto& [name, arguments] : commands) {
            SCOPED_TRACE(std::string(row.kind) + ", " + name);
            const ProgramResult result = Run(name, arguments);
            EXPECT_EQ(1, result.exitCode);
            EXPECT_EQ("", result.output);
            EXPECT_THAT(result.error,
                        AllOf(HasSubstr(Path()), HasSubstr(row.kind), HasSubstr(", no settings file")));
            EXPECT_EQ(row.bytes, Bytes());
        }
    }
}

TEST_F(SettingsCommand_ForeignFiles, ForceChangesAFileOfAnotherKind) {
    Write("a letter\n");
    EXPECT_EQ(0, Run("set", {"A", "k", "v", "--force"}).exitCode);
    EXPECT_EQ("a letter\n\n[A]\nk = v\n", Bytes());
}

TEST_F(SettingsCommand_ForeignFiles, NothingAtAllIsASettingsFile) {
    Write("");
    const ProgramResult shown = Run("show");
    EXPECT_EQ(0, shown.exitCode);
    EXPECT_EQ("", shown.output);
    EXPECT_THAT(shown.error, HasSubstr("there is no section in it"));
    EXPECT_EQ(0, Run("set", {"A", "k", "v"}).exitCode);
    EXPECT_EQ("[A]\r\nk = v\r\n", Bytes());
}

TEST_F(SettingsCommand_ForeignFiles, Utf8IsTakenAndShownWhenAskedFor) {
    const Arguments utf8 = {"--encoding", "utf-8"};
    const auto with = [&](Arguments arguments) {
        arguments.insert(arguments.end(), utf8.begin(), utf8.end());
        return arguments;
    };
    Write("\xEF\xBB\xBF[B\u00E4r]\n\u00C4pfel = s\u00FC\u00DF ;\u03A9\n");
    const ProgramResult shown = Run("show", utf8);
    EXPECT_EQ("[B\u00E4r]\n\u00C4pfel = s\u00FC\u00DF ;\u03A9\n", shown.output);
    EXPECT_EQ("", shown.error);
    EXPECT_EQ("\u03A9\n", Run("get", with({"B\u00E4r", "\u00C4pfel", "--comment"})).output);
    EXPECT_EQ("s\u00FC\u00DF",
              Json::parse(Run("get", with({"B\u00E4r", "\u00C4pfel", "--json"})).output)["value"]);

    const ProgramResult set = Run("set", with({"B\u00E4r", "\u00C4pfel", "\u03A9mega"}));
    EXPECT_EQ(0, set.exitCode);
    EXPECT_EQ(Path() + ": [B\u00E4r] \u00C4pfel = \u03A9mega (was \"s\u00FC\u00DF\")\n", set.output);
    EXPECT_EQ("\xEF\xBB\xBF[B\u00E4r]\n\u00C4pfel = \u03A9mega ;\u03A9\n", Bytes());
    EXPECT_EQ(0, Run("seal", utf8).exitCode);
    EXPECT_EQ(0, Run("check", utf8).exitCode);
    EXPECT_EQ(2, Run("show", {"--encoding", "utf-16"}).exitCode);
}

TEST_F(SettingsCommand_ForeignFiles, WhatLooksLikeUtf8IsHintedAtWhereItMatters) {
    struct Row {
        std::string bytes;
        Arguments arguments;
        bool hint;
    };
    const std::string utf8 = "[A]\nk = \u00FC\nplain = 1\n";
    const Row rows[] = {
        {utf8, {"show"}, true},
        {utf8, {"get", "A", "k"}, true},
        {utf8, {"get", "A", "plain"}, false},
        {utf8, {"set", "A", "plain", "\u00FC"}, true},
        {utf8, {"set", "A", "plain", "\u03A9"}, true}, // is refused
        {utf8, {"get", "\u00C4", "k"}, true},          // is not there
        {utf8, {"set", "A", "plain", "2"}, false},
        {utf8, {"get", "A", "k", "--encoding", "utf-8"}, false},
        {"[A]\nk = \xFC\n", {"get", "A", "k"}, false}, // the format's own
        {"[A]\nk = 1\n", {"set", "A", "k", "\u00FC"}, false},
        {utf8, {"get", "A", "k", "--quiet"}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments));
        Write(row.bytes);
        const Arguments arguments(row.arguments.begin() + 1, row.arguments.end());
        const ProgramResult result = Run(row.arguments.front(), arguments);
        EXPECT_EQ(row.hint, result.error.find(kHint) != std::string::npos) << result.error;
        EXPECT_EQ(result.error.find(kHint), result.error.rfind(kHint)) << "is said once";
    }
}

TEST_F(SettingsCommand_ForeignFiles, ASectionBehindAByteOrderMarkIsNotAddedAgain) {
    const std::string bytes = "\xEF\xBB\xBF[First]\nk = 1\n[Other]\nk = 2\n";
    const Arguments commands[] = {
        {"set", "first", "k", "2"}, {"get", "First", "k"}, {"get", "First", "k", "--default", "x"},
        {"show", "First"},          {"remove", "First"},   {"rename", "Other", "First"}};
    for (const Arguments& command : commands) {
        SCOPED_TRACE(::testing::PrintToString(command));
        Write(bytes);
        const ProgramResult result = Run(command.front(), {command.begin() + 1, command.end()});
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.error, AllOf(HasSubstr("a byte order mark hides the section [First]"),
                                        HasSubstr("--encoding utf-8")));
        EXPECT_EQ(bytes, Bytes());
    }
    const ProgramResult shown = Run("show");
    EXPECT_EQ("[Other]\nk = 2\n", shown.output);
    EXPECT_THAT(shown.error, HasSubstr("hides the section [First]"));
    EXPECT_EQ("", Run("get", {"Other", "k"}).error);
}

TEST_F(SettingsCommand_ForeignFiles, StandardInputIsAFileToo) {
    const std::string bytes = "[A]\nk = v\n";
    EXPECT_EQ("v\n", Run("get", {"A", "k"}, bytes).output);
    EXPECT_EQ("[A]\nk = v\n", Run("show", {}, bytes).output);
    EXPECT_THAT(Run("check", {}, bytes).output, HasSubstr("standard input\n  A  no seal"));

    const ProgramResult set = Run("set", {"A", "k", "w"}, bytes);
    EXPECT_EQ("[A]\nk = w\n", set.output);
    EXPECT_EQ("standard input: [A] k = w (was \"v\")\n", set.error);
    EXPECT_EQ(bytes, Run("set", {"A", "k", "v"}, bytes).output) << "also where nothing changes";
    EXPECT_EQ("[B]\nk = v\n", Run("rename", {"A", "B"}, bytes).output);
    EXPECT_EQ("[A]\n", Run("remove", {"A", "k"}, bytes).output);
    EXPECT_THAT(Run("seal", {}, bytes).output, HasSubstr("[A]\nk = v\n$CHECKSUM$ = "));
    EXPECT_THAT(Run("set", {"A", "k", "w", "--dry-run"}, bytes).output, HasSubstr("-k = v\n+k = w\n"));

    const ProgramResult refused = Run("remove", {"B"}, bytes);
    EXPECT_EQ(1, refused.exitCode);
    EXPECT_EQ("", refused.output);
    EXPECT_THAT(refused.error, HasSubstr("standard input: there is no section [B]"));
}

TEST_F(SettingsCommand_ForeignFiles, AFileInUtf8GetsNoOtherBytes) {
    const std::string utf8 = "[A]\nk = \u00FC\nplain = 1\n";
    const std::string latin = ToUtf8(m_folder.File(L"latin.ini"));
    const std::string same = ToUtf8(m_folder.File(L"same.ini"));
    WriteBytes(m_folder.File(L"latin.ini"), "[A]\nplain = \xE9\n");
    WriteBytes(m_folder.File(L"same.ini"), "[A]\nplain = \u00E9\n");
    const Arguments refused[] = {{"set", "A", "plain", "\u00E9"},
                                 {"set", "A", "plain", "\u00E9", "--dry-run"},
                                 {"set", "A", "plain", "1", "--comment", "\u00E9"},
                                 {"set", "\u00C4", "plain", "1"},
                                 {"rename", "A", "\u00C4"},
                                 {"rename", "A", "\u00C4", "--key", "plain"},
                                 {"merge", latin}};
    Write(utf8);
    for (const Arguments& command : refused) {
        SCOPED_TRACE(::testing::PrintToString(command));
        const ProgramResult result = Run(command.front(), {command.begin() + 1, command.end()});
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, HasSubstr("nothing was written; give --encoding utf-8"));
        EXPECT_EQ(utf8, Bytes());
    }
    EXPECT_EQ(0, Run("merge", {same}).exitCode);
    EXPECT_EQ("[A]\nk = \u00FC\nplain = \u00E9\n", Bytes());
    EXPECT_EQ(0, Run("set", {"A", "k", "1"}).exitCode);
    EXPECT_EQ(0, Run("set", {"A", "plain", "\u00E9", "--force"}).exitCode);
    EXPECT_EQ("[A]\nk = 1\nplain = \xE9\n", Bytes());
}
