// SPDX-License-Identifier: MIT
// What the command says before any window is made; what its window does is in EditCommand_DialogTest.

#include "tests/support/Program.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(EditCommand, HelpTellsWhatBecomesOfTheFile) {
    const ProgramResult result = RunChartutil({"edit", "--help"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.output, AllOf(HasSubstr("chartutil edit [OPTIONS] [FILE]"), HasSubstr("not there yet"),
                                     HasSubstr("Cancel"), HasSubstr("exit code"), HasSubstr("display")));
}

TEST(EditCommand, FileThatCannotBeEditedIsToldBeforeAWindowIsMade) {
    const TemporaryFolder folder;
    const auto path = [&](const wchar_t* name) { return ToUtf8(folder.File(name)); };
    const auto add = [&](const wchar_t* name, const char* content) {
        WriteBytes(folder.File(name), content);
        return path(name);
    };
    struct Row {
        std::string path;
        int exitCode;
        const char* message;
    };
    for (const Row& row :
         {Row{path(L"."), 3, ": is a folder; name a file in it\n"},
          Row{path(L"none/new.cdf"), 3,
              ": the folder of this file is not there; make it, or check the path\n"},
          Row{"", 3, ": no such file; check the path\n"},
          Row{add(L"empty.cdf", ""), 1,
              ": there is no section [Contour(0)] with keys, so no contour; 'chartutil contours range' makes "
              "a "
              "file with some\n"},
          Row{add(L"other.cdf", "\x89HDF\r\n\x1A\n"), 1, ": there is no section [Contour(0)] with keys"},
          Row{add(L"bad.cdf", "[Contour(0)]\nLevel=1\n[]\n"), 3, ":3: a section has no name"}}) {
        const std::size_t files = folder.NumFiles();
        const ProgramResult result = RunChartutil({"edit", row.path});
        EXPECT_EQ(row.exitCode, result.exitCode) << row.path;
        EXPECT_THAT(result.error, StartsWith("chartutil: " + row.path + row.message));
        EXPECT_EQ("", result.output);
        EXPECT_EQ(files, folder.NumFiles());
    }
}

TEST(EditCommand, TakesOneFile) {
    EXPECT_EQ(2, RunChartutil({"edit", "a.cdf", "b.cdf"}).exitCode);
    EXPECT_EQ(2, RunChartutil({"edit", "--json", "a.cdf"}).exitCode);
}
