// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"

#include <cmath>
#include <cstdio>
#include <gmock/gmock.h>
#include <sstream>

using testing::HasSubstr;

namespace {

ProgramResult Transform(std::vector<std::string> arguments, std::string_view input = {}) {
    arguments.insert(arguments.begin(), {"transform"});
    return RunChartutil(arguments, input);
}

// What comes out of a table on standard input.
std::string Transformed(std::vector<std::string> arguments, std::string_view input) {
    arguments.insert(arguments.begin(), "-");
    const ProgramResult result = Transform(arguments, input);
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("", result.error);
    return result.output;
}

TEST(TransformCommand, TranslatesAndRotatesClockwise) {
    EXPECT_EQ("x,y\n11,-18\n", Transformed({"--translate", "10,-20"}, "x,y\n1,2\n"));
    EXPECT_EQ("x,y\n9.5,2\n", Transformed({"--translate=-.5,0"}, "x,y\n10,2\n"));
    EXPECT_EQ("x,y\n2.000,-1.000\n", Transformed({"--rotate", "90", "--decimals", "3"}, "x,y\n1,2\n"));
    EXPECT_EQ("x,y\n10.0,19.0\n", Transformed({"--rotate", "90,10,20", "--decimals", "1"}, "x,y\n11,20\n"));
}

TEST(TransformCommand, KeepsTheDecimalsOfPointsAndSteps) {
    struct Row {
        std::vector<std::string> steps;
        const char *point, *moved;
    };
    for (const Row& row :
         {Row{{"--translate", "0.1,0"}, "0.20,3\n", "0.30,3\n"},
          Row{{"--translate", "0.125,1"}, "1,1\n", "1.125,2\n"}, Row{{"--rotate", "90"}, "1,0\n", "0,-1\n"},
          Row{{"--rotate", "-90"}, "1,0\n", "0,1\n"}, Row{{"--rotate", "180"}, "1.5,0\n", "-1.5,0.0\n"},
          Row{{"--rotate", "360"}, "500123.45,3370000.1\n", "500123.45,3370000.10\n"},
          Row{{"--rotate", "90,0.5,0"}, "1,0\n", "0.5,-0.5\n"},
          Row{{"--rotate", "30"}, "1,2.5\n", "2.116,1.665\n"}, // a hundredth of the last decimal
          Row{{"--rotate", "45", "--rotate", "45"}, "1,0\n", "0.00,-1.00\n"},
          Row{{"--translate", "0.5,0", "--rotate", "90"}, "1,0\n", "0.0,-1.5\n"},
          Row{{"--rotate", "90", "--translate", "0.5,0"}, "1,0\n", "0.5,-1\n"}}) {
        std::vector<std::string> arguments = {"--no-header"};
        arguments.insert(arguments.end(), row.steps.begin(), row.steps.end());
        EXPECT_EQ(row.moved, Transformed(arguments, row.point)) << testing::PrintToString(row.steps);
    }
}

TEST(TransformCommand, TurningBackGivesThePointsBack) {
    std::string points;
    for (int i = 0; i < 400; ++i)
        points += std::to_string(497000 + i * 37) + ".2" + std::to_string(i % 10) + ',' +
                  std::to_string(3380000 - i * 91) + ".75\n";
    for (const char* angle : {"30", "123.456", "90", "0.001"}) {
        const std::string turned = Transformed({"--no-header", "--rotate", angle}, points);
        EXPECT_EQ(
            points,
            Transformed({"--no-header", "--rotate", std::string("-") + angle, "--decimals", "2"}, turned));
    }
}

TEST(TransformCommand, DoesStepsInTheOrderGiven) {
    EXPECT_EQ("x,y\n0.0,-1.0\n",
              Transformed({"--translate", "1,0", "--rotate", "90", "--decimals", "1"}, "x,y\n1e-9,0\n"));
    EXPECT_EQ("x,y\n1.0,0.0\n",
              Transformed({"--rotate", "90", "--translate", "1,0", "--decimals", "1"}, "x,y\n0,-1e-9\n"));
    EXPECT_EQ("x,y\n4,6\n", Transformed({"--translate", "1,2", "--translate", "3,4"}, "x,y\n0,0\n"));
}

TEST(TransformCommand, KeepsEverythingElseByteForByte) {
    EXPECT_EQ(
        "\xEF\xBB\xBFname;x; y ;\"note; here\"\r\n a ;2;1;\"two\nlines\"\r\n\r\n\"b\";3;5;\xFF\n;0;0",
        Transformed({"--x", "x", "--y", "y", "--separator", ";", "--translate", "1,-1"},
                    "\xEF\xBB\xBFname;x; y ;\"note; here\"\r\n a ;1;2;\"two\nlines\"\r\n\r\n\"b\"; \"2\" "
                    ";+6;\xFF\n;-1;1"));
    EXPECT_EQ("", Transformed({"--translate", "1,1"}, ""));
    EXPECT_EQ("x\ty\n1\t1\n", Transformed({"--separator", "tab", "--translate", "1,1"}, "x\ty\n0\t0\n"));
}

TEST(TransformCommand, FindsColumnsByNameAndByNumber) {
    EXPECT_EQ("a,b,c\n0,2,1\n",
              Transformed({"--x", "c", "--y", "2", "--translate", "1,2"}, "a,b,c\n0,0,0\n"));
    EXPECT_EQ("2,0\n4,2\n", Transformed({"--no-header", "--translate", "1,-1"}, "1,1\n3,3\n"));
}

TEST(TransformCommand, NamesLineAndColumnOfWhatIsWrong) {
    struct Row {
        const char *input, *message;
        int exitCode;
    };
    for (const Row& row :
         {Row{"x,y\n1,2\n3,abc\n", "standard input, line 3: 'abc' in column 2 is no number", 3},
          Row{"x,y\n\n1,\n", "line 3: '' in column 2 is no number", 3},
          Row{"x,y\n1,0x10\n", "line 2: '0x10' in column 2", 3}, Row{"x,y\nnan,1\n", "'nan' in column 1", 3},
          Row{"x,y\n1e999,1\n", "'1e999' in column 1", 3},
          Row{"x,y\n1\n", "line 2: has no column 2, only 1", 3},
          Row{"x,\"y\nz\"\n1,2\n3,\n", "line 4: '' in column 2", 3}, // a quoted line break counts as a line
          Row{"x,y\n1.7e308,1\n", "line 2: the result in column 1 is too large", 3},
          Row{"1,2\n3,4\n", "line 1: has to name the columns, but column 1 is a number; say --no-header",
              2}}) {
        const ProgramResult result = Transform({"-", "--translate", "1e308,0"}, row.input);
        EXPECT_EQ(row.exitCode, result.exitCode) << row.input;
        EXPECT_THAT(result.error, HasSubstr(row.message)) << row.input;
    }
}

TEST(TransformCommand, RefusesWrongUse) {
    struct Row {
        std::vector<std::string> arguments;
        const char* message;
    };
    for (const Row& row :
         {Row{{"-"}, "nothing to do"}, Row{{"-", "--translate", "1"}, "'1' is not DX,DY"},
          Row{{"-", "--translate", "1,2,3"}, "is not DX,DY"},
          Row{{"-", "--translate", "1,x"}, "is not DX,DY"},
          Row{{"-", "--rotate", "1,2"}, "'1,2' is not DEGREES or DEGREES,X,Y"},
          Row{{"-", "--rotate", "inf"}, "'inf' is not DEGREES"},
          Row{{"-", "--rotate", ""}, "'' is not DEGREES"},
          Row{{"-", "--rotate", "1", "--x", "nix"}, "no column 'nix'"},
          Row{{"-", "--rotate", "1", "--y", "0"}, "no column '0'"},
          Row{{"-", "--rotate", "1", "--separator", ""}, "is no separator"},
          Row{{"-", "--rotate", "1", "--decimals", "99"}, "--decimals"}, Row{{"--rotate", "1"}, "INPUT"}}) {
        const ProgramResult result = Transform(row.arguments, "x,y\n1,2\n");
        EXPECT_EQ(2, result.exitCode) << testing::PrintToString(row.arguments);
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
}

TEST(TransformCommand, WritesItsOutputFileWholeOrNotAtAll) {
    const TemporaryFolder folder;
    const std::wstring input = folder.File(L"in.csv"), output = folder.File(L"\u00FC.csv");
    WriteBytes(input, "x,y\n1,2\n");
    WriteBytes(output, "x,y\n0,0\n");
    EXPECT_EQ(0, Transform({ToUtf8(input), "--translate", "1,1", "-o", ToUtf8(output)}).exitCode);
    EXPECT_EQ("x,y\n2,3\n", ReadBytes(output));

    WriteBytes(input, "x,y\n1,2\n3,bad\n");
    const ProgramResult failed = Transform({ToUtf8(input), "--translate", "1,1", "-o", ToUtf8(output)});
    EXPECT_EQ(3, failed.exitCode);
    EXPECT_THAT(failed.error, HasSubstr(ToUtf8(input) + ", line 3: 'bad' in column 2"));
    EXPECT_EQ("x,y\n2,3\n", ReadBytes(output));

    // In place: the old table is read until the new one is complete.
    EXPECT_EQ(0, Transform({ToUtf8(output), "--translate", "1,1", "-o", ToUtf8(output)}).exitCode);
    EXPECT_EQ("x,y\n3,4\n", ReadBytes(output));
    EXPECT_EQ(2u, folder.NumFiles()); // nothing temporary is left
}

TEST(TransformCommand, TellsWhatCannotBeReadOrWritten) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"in.csv"), "x,y\n1,2\n");
    const std::string path = ToUtf8(folder.File(L"")), input = ToUtf8(folder.File(L"in.csv"));
    const std::string missing = ToUtf8(folder.File(L"missing.csv"));
    struct Row {
        std::string input, output, message;
    };
    for (const Row& row : {Row{missing, "", missing + ": no such file"},
                           Row{path, "", path + ": is a folder"}, Row{input, path, "is no regular file"},
                           Row{input, missing + "/no/folder.csv", "there is no folder"}}) {
        std::vector<std::string> arguments = {row.input, "--rotate", "1"};
        if (!row.output.empty()) arguments.insert(arguments.end(), {"--output", row.output});
        const ProgramResult result = Transform(arguments);
        EXPECT_EQ(3, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr(row.message));
    }
}

TEST(TransformCommand, GivesUpOnAnEndlessLine) {
    const ProgramResult result = Transform({"-", "--rotate", "1"}, "x,\"y\n" + std::string(3000000, 'a'));
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error,
                HasSubstr("line 1: longer than a megabyte; check for a quote that is not closed"));
}

// Lines that run across the blocks in which a table is read, at every position.
TEST(TransformCommand, ReadsLinesOfAnyLengthInAnyNumber) {
    std::string input = "x,note,y\n", expected = input;
    for (int i = 0; i < 3000; ++i) {
        const std::string note(static_cast<std::size_t>(i * 37 % 1009), 'n');
        input += std::to_string(i) + ',' + note + ',' + std::to_string(-i) + '\n';
        expected += std::to_string(i + 5) + ',' + note + ',' + std::to_string(-i + 7) + '\n';
    }
    EXPECT_EQ(expected, Transformed({"--x", "x", "--y", "y", "--translate", "5,7"}, input));
}

TEST(TransformCommand, TurnsTheSampleSoundings) {
    const std::string path = PROJECT_DATA_FOLDER "/pensacola/soundings.csv";
    const ProgramResult result = Transform({path, "--x", "easting_m", "--y", "northing_m", "--rotate",
                                            "30,500000,3370000", "--translate", "100,-50"});
    ASSERT_EQ(0, result.exitCode) << result.error;
    std::istringstream before(ReadBytes(path)), after(result.output);
    std::string line, turned;
    std::getline(before, line);
    std::getline(after, turned);
    EXPECT_EQ(line, turned);
    const double sine = 0.5, cosine = std::sqrt(3.0) / 2;
    int points = 0;
    while (std::getline(before, line) && std::getline(after, turned)) {
        double x = 0, y = 0, toX = 0, toY = 0;
        char rest[100] = {}, toRest[100] = {};
        ASSERT_EQ(3, std::sscanf(line.c_str(), "%lf,%lf,%99s", &x, &y, rest));
        ASSERT_EQ(3, std::sscanf(turned.c_str(), "%lf,%lf,%99s", &toX, &toY, toRest));
        const double dx = x - 500000, dy = y - 3370000;
        ASSERT_NEAR(500000 + 100 + dx * cosine + dy * sine, toX, 0.51e-4);
        ASSERT_NEAR(3370000 - 50 + dy * cosine - dx * sine, toY, 0.51e-4);
        ASSERT_STREQ(rest, toRest);
        ++points;
    }
    EXPECT_EQ(2500, points);
}

} // namespace

TEST(TransformCommand, AQuoteWithinAFieldIsACharacterLikeAnyOther) {
    const ProgramResult result =
        Transform({"-", "--translate", "1,1"}, "x,y,note\n1,2,6\" pipe\n3,4,ok\n5,6,ok\n");
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("x,y,note\n2,3,6\" pipe\n4,5,ok\n6,7,ok\n", result.output);
}

TEST(TransformCommand, AQuoteThatIsNotClosedIsTold) {
    const ProgramResult result = Transform({"-", "--translate", "1,1"}, "x,y,note\n1,2,\"open\n3,4,ok\n");
    EXPECT_EQ(3, result.exitCode);
    EXPECT_THAT(result.error, HasSubstr("line 2: has a quote that is not closed"));
}

TEST(TransformCommand, LeavesOtherFilesBesideItsOutputAlone) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"t.csv.saving"), "x,y\n1,2\n");
    const ProgramResult result = Transform(
        {ToUtf8(folder.File(L"t.csv.saving")), "--translate", "1,1", "-o", ToUtf8(folder.File(L"t.csv"))});
    EXPECT_EQ(0, result.exitCode) << result.error;
    EXPECT_EQ("x,y\n2,3\n", ReadBytes(folder.File(L"t.csv")));
    EXPECT_EQ("x,y\n1,2\n", ReadBytes(folder.File(L"t.csv.saving")));
}

TEST(TransformCommand, NumbersHaveAnExponentFromTenToTheSixteenthOn) {
    EXPECT_EQ("x,y\n9999999999999998,1e+16\n",
              Transformed({"--translate", "0,0"}, "x,y\n9999999999999998,1e16\n"));
    EXPECT_EQ("x,y\n0.0000001,0.000000099\n", Transformed({"--translate", "0,0"}, "x,y\n1e-7,9.9e-8\n"));
}

TEST(TransformCommand, RefusesOneColumnForXAndY) {
    EXPECT_EQ(2, Transform({"-", "--translate", "1,1", "--x", "1", "--y", "x"}, "x,y\n1,2\n").exitCode);
}

TEST(TransformCommand, RefusesASeparatorThatNumbersContain) {
    for (const char* s : {".", "-", "5", "e"})
        EXPECT_EQ(2, Transform({"-", "--no-header", "--translate", "0.5,0", "--separator", s}, "").exitCode)
            << s;
}

TEST(TransformCommand, AQuoteBehindAQuotedFieldOpensNoOther) {
    EXPECT_EQ("x,y,note\n2,3,\"5\" \"6\n4,5,ok\n6,7,4\" pipe\n8,9,ok\n",
              Transformed({"--translate", "1,1"}, "x,y,note\n1,2,\"5\" \"6\n3,4,ok\n5,6,4\" pipe\n7,8,ok\n"));
}

TEST(TransformCommand, ReadsQuotedNamesOfColumns) {
    EXPECT_EQ("\xEF\xBB\xBF\"a\nb\",x,y\n0,2,3\n", Transformed({"--x", "x", "--y", "y", "--translate", "1,1"},
                                                               "\xEF\xBB\xBF\"a\nb\",x,y\n0,1,2\n"));
    EXPECT_EQ("\"x \"\"m\"\"\",y\n2,3\n",
              Transformed({"--x", "x \"m\"", "--y", "y", "--translate", "1,1"}, "\"x \"\"m\"\"\",y\n1,2\n"));
    EXPECT_EQ("\xEF\xBB\xBF"
              "2,3\n",
              Transformed({"--no-header", "--translate", "1,1"}, "\xEF\xBB\xBF"
                                                                 "1,2\n"));
}
