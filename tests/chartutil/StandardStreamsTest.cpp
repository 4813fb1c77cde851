// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <algorithm>
#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr char kContours[] = "[Contour(0)]\r\nLevel     = 1.000000\r\nColor     = 0\r\nTrueColor = 0\r\n"
                             "LineType  = CONTINUOUS\r\nLineWidth = 0.000000\r\nAnnotate  = 0\r\n\r\n";
constexpr char kColors[] = "[ColorTable]\r\nDefaultColor=255,255,255\r\nEntry(0)=0,255,0,0\r\n";
constexpr char kCpt[] = "0 red 10 red\n";
constexpr char kSealed[] = "abc\xC2\x41\x24\x35";

} // namespace

// What "-" gives is what a file gives.
TEST(StandardInput, IsReadWhereACommandTakesAFile) {
    struct Row {
        std::vector<std::string> arguments; // with "FILE" in the place of the file
        std::string input;
    };
    for (const Row& row : {
             Row{{"contours", "list", "FILE"}, kContours},
             Row{{"contours", "check", "FILE"}, kContours},
             Row{{"contours", "check", "FILE"}, "[Contour(0)]\nLevel=x\n"},
             Row{{"contours", "from-table", "-", "FILE"}, kColors},
             Row{{"colors", "table", "FILE"}, kColors},
             Row{{"colors", "table", "FILE"}, "[Other]\na=1\n"},
             Row{{"colors", "import", "FILE", "-"}, kCpt},
             Row{{"keywords", "list", "FILE"}, "%name%\n"},
             Row{{"keywords", "fill", "FILE", "--value", "name=Bay"}, "%name%\n"},
             Row{{"style", "show", "FILE", "Line"}, "[Line]\nWidth=1\nLineStyle=2\nColor=3\n"},
             Row{{"transform", "FILE", "--translate", "1,1"}, "x,y\n1,2\n"},
             Row{{"crc", "check", "FILE"}, kSealed},
             Row{{"crc", "print", "FILE"}, "abcdef"},
         }) {
        SCOPED_TRACE(row.arguments[0] + ' ' + row.arguments[1]);
        const TemporaryFolder folder;
        WriteBytes(folder.File(L"file"), row.input);
        const std::string path = ToUtf8(folder.File(L"file"));
        const auto run = [&](const std::string& file) {
            std::vector<std::string> arguments = row.arguments;
            std::replace(arguments.begin(), arguments.end(), std::string("FILE"), file);
            return RunChartutil(arguments, file == "-" ? row.input : "");
        };
        const auto named = [&](std::string text) {
            for (std::size_t at; (at = text.find(path)) != std::string::npos;)
                text.replace(at, path.size(), "standard input");
            return text;
        };
        const ProgramResult ofFile = run(path);
        const ProgramResult ofInput = run("-");
        EXPECT_EQ(ofFile.exitCode, ofInput.exitCode);
        EXPECT_EQ(named(ofFile.output), ofInput.output);
        EXPECT_EQ(named(ofFile.error), ofInput.error);
        EXPECT_FALSE(ofInput.output.empty() && ofInput.error.empty());
    }
}

// Standard output gets the bytes of the file, and standard error what is printed beside it.
TEST(StandardOutput, GetsTheFileAndNothingElse) {
    struct Row {
        std::vector<std::string> arguments; // with "FILE" in the place of the file
        std::string input;
    };
    for (const Row& row : {
             Row{{"contours", "range", "FILE", "--from", "0", "--to", "4", "--step", "2"}, ""},
             Row{{"contours", "from-table", "FILE", "-"}, kColors},
             Row{{"colors", "import", "-", "FILE"}, kCpt},
             Row{{"colors", "palette", "--format", "svg", "--picture", "FILE"}, ""},
             Row{{"colors", "table", "-", "--format", "svg", "--picture", "FILE"}, kColors},
             Row{{"contours", "list", "-", "--format", "svg", "--picture", "FILE"}, kContours},
             Row{{"text", "measure", "-", "--format", "svg", "--picture", "FILE"}, "Bay"},
         }) {
        SCOPED_TRACE(row.arguments[0] + ' ' + row.arguments[1]);
        const TemporaryFolder folder;
        const auto run = [&](const std::string& file) {
            std::vector<std::string> arguments = row.arguments;
            std::replace(arguments.begin(), arguments.end(), std::string("FILE"), file);
            return RunChartutil(arguments, row.input);
        };
        const ProgramResult intoFile = run(ToUtf8(folder.File(L"file")));
        const ProgramResult intoOutput = run("-");
        EXPECT_EQ(0, intoOutput.exitCode) << intoOutput.error;
        EXPECT_EQ(ReadBytes(folder.File(L"file")), intoOutput.output);
        EXPECT_FALSE(intoOutput.output.empty());
        EXPECT_FALSE(intoFile.output.empty());
        EXPECT_FALSE(intoOutput.error.empty());
    }
}

TEST(StandardOutput, APictureIsSvgUnlessItsFormatIsSaid) {
    EXPECT_THAT(RunChartutil({"colors", "palette", "--picture", "-"}).output, HasSubstr("<svg"));
    const ProgramResult wrong = RunChartutil({"colors", "palette", "--picture", "-", "--format", "jpg"});
    EXPECT_EQ(2, wrong.exitCode);
    EXPECT_EQ("", wrong.output);
}

TEST(StandardStreams, EachTakesOneFile) {
    const ProgramResult output =
        RunChartutil({"contours", "range", "-", "--from", "0", "--to", "1", "--step", "1", "--picture", "-"});
    EXPECT_EQ(2, output.exitCode);
    EXPECT_EQ("", output.output);
    EXPECT_THAT(output.error, HasSubstr("two files cannot both be standard output"));
    const ProgramResult input = RunChartutil({"keywords", "fill", "-", "--project", "-"}, "%a%");
    EXPECT_EQ(2, input.exitCode);
    EXPECT_THAT(input.error, HasSubstr("two files cannot both be standard input"));
}

TEST(CrcSeal, PassesStandardInputOnWithItsChecksum) {
    const ProgramResult sealed = RunChartutil({"crc", "seal", "-"}, "abc");
    EXPECT_EQ(0, sealed.exitCode);
    EXPECT_EQ(kSealed, sealed.output);
    EXPECT_EQ("standard input: sealed, 352441C2\n", sealed.error);
    const ProgramResult again = RunChartutil({"crc", "seal", "-"}, sealed.output);
    EXPECT_EQ(kSealed, again.output);
    EXPECT_EQ("standard input: sealed already, left alone\n", again.error);
}
