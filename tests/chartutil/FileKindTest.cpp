// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/FileKind.h"

#include "apps/chartutil/terminal/Errors.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;
using namespace std::string_literals;

namespace {

const std::string kPng = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR"s;
const std::string kPdf = "%PDF-1.4\n";
const std::string kSvg = "<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"/>\n";
const std::string kDxf = "  0\r\nSECTION\r\n  2\r\nHEADER\r\n";
const std::string kUtf16 = "\xFF\xFE[\0a\0]\0"s;
const std::string kUtf16WithoutMark = "[\0a\0]\0\n\0b\0=\0"s;
const std::string kBinary = "abc\0def"s;
const std::string kSettings = "; of the plotter\r\n[General]\r\nName = 1\r\n";
const std::string kContours = "[CONTOUR(0)]\nLevel = 1\n";
const std::string kColors = "[ColorTable]\nEntry(0)=0,255,0,0\n";
const std::string kProse =
    "Dear diary,\ntoday we sounded the bay.\nIt rained, of course, and the gauge stood still.\n";
const std::string kTable = "x,y\n1,2\n";

std::string Utf8(std::wstring_view path) { return ToUtf8(path); }

} // namespace

TEST(FileKind, ContentOfAnotherKindIsNamed) {
    struct Row {
        FileKind kind;
        std::string content;
        std::string mismatch;
    };
    for (const Row& row : {
             Row{FileKind::SETTINGS, kPng, "a PNG picture, no settings file"},
             Row{FileKind::SETTINGS, "\xFF\xD8\xFF\xE0", "a JPEG picture, no settings file"},
             Row{FileKind::SETTINGS, kUtf16, "a text in UTF-16, no settings file"},
             Row{FileKind::SETTINGS, kUtf16WithoutMark, "a text in UTF-16, no settings file"},
             Row{FileKind::SETTINGS, kBinary, "a binary file, no settings file"},
             Row{FileKind::SETTINGS, "\x01\x02\x03", "a binary file, no settings file"},
             Row{FileKind::SETTINGS, kTable, "a table, no settings file"},
             Row{FileKind::SETTINGS, kProse, "a text without sections, no settings file"},
             Row{FileKind::SETTINGS, "<!DOCTYPE html>\n", "an XML file, no settings file"},
             Row{FileKind::SVG, "<!DOCTYPE html>\n<html><svg/></html>\n", "an XML file, no SVG picture"},
             Row{FileKind::CONTOURS, kSettings, "a settings file, no contour definition file"},
             Row{FileKind::CONTOURS, kColors, "a colour table, no contour definition file"},
             Row{FileKind::COLOR_TABLE, kContours, "a contour definition file, no colour table"},
             Row{FileKind::COLOR_TABLE, "0 red 1 blue\n", "a text without sections, no colour table"},
             Row{FileKind::TABLE, kSettings, "a settings file, no table"},
             Row{FileKind::TABLE, "first = 1\n" + kSettings, "a settings file, no table"},
             Row{FileKind::TABLE, kSvg, "an SVG picture, no table"},
             Row{FileKind::TABLE, kProse, "a text without sections, no table"},
             Row{FileKind::TABLE, "12 apostles\n7 seas\n", "a text without sections, no table"},
             Row{FileKind::TABLE, "x,y\n1,2\nand so on\n", "a text without sections, no table"},
             Row{FileKind::TABLE, "a|\"b\n1|2\n", "a text without sections, no table"},
             Row{FileKind::TEXT, kPdf, "a PDF file, no plain text"},
             Row{FileKind::TEXT, kSvg, "an SVG picture, no plain text"},
             Row{FileKind::TEXT, kSettings, "a settings file, no plain text"},
             Row{FileKind::XML, kSettings, "a settings file, no XML file"},
             Row{FileKind::SVG, kSettings, "a settings file, no SVG picture"},
             Row{FileKind::SVG, kDxf, "a DXF drawing, no SVG picture"},
             Row{FileKind::PNG, kSvg, "an SVG picture, no PNG picture"},
             Row{FileKind::PDF, kPng, "a PNG picture, no PDF file"},
             Row{FileKind::DXF, kTable, "a table, no DXF drawing"},
         })
        EXPECT_EQ(row.mismatch, MismatchOf(row.content, row.kind)) << row.content;
}

TEST(FileKind, WhatIsOfTheKindOrMayBeIsTaken) {
    struct Row {
        FileKind kind;
        std::string content;
    };
    for (const Row& row : {
             Row{FileKind::SETTINGS, kSettings},
             Row{FileKind::SETTINGS, kContours},
             Row{FileKind::SETTINGS, kColors},
             Row{FileKind::SETTINGS, "[a]\n"},
             Row{FileKind::SETTINGS, "key = 1\n\n[a]\n"},         // as files of other programs begin
             Row{FileKind::SETTINGS, "\xEF\xBB\xBF[a]\nb = 1\n"}, // with the mark of UTF-8
             Row{FileKind::SETTINGS, "[a]\nb = \x80\xFF\x85\x1B\x07\x01\n"}, // one byte a character
             Row{FileKind::CONTOURS, kContours},
             Row{FileKind::COLOR_TABLE, kColors},
             Row{FileKind::TABLE, kTable},
             Row{FileKind::TABLE, "[east],[north]\n1,2\n"},
             Row{FileKind::TABLE, "name;depth\n\"Bay; inner\";7\n"},
             Row{FileKind::TABLE, "x\ty"},
             Row{FileKind::TABLE, "x y z\n1  2 -3.5e1\n4\t5 6\n"},
             Row{FileKind::TABLE, "1\n2\n"},
             Row{FileKind::TABLE, "x,y\n" + std::string(70'000, '1') + ",2"}, // the second line goes on
             Row{FileKind::TEXT, kTable},
             Row{FileKind::TEXT, kProse},
             Row{FileKind::XML, kSvg},
             Row{FileKind::SVG, kSvg},
             Row{FileKind::SVG, "<!-- by hand -->\n<svg/>"},
             Row{FileKind::PNG, kPng},
             Row{FileKind::PDF, kPdf},
             Row{FileKind::DXF, kDxf},
             Row{FileKind::DXF, "999\nmade by hand\n"},
         })
        EXPECT_EQ("", MismatchOf(row.content, row.kind)) << row.content;
}

TEST(FileKind, AnEmptyFileIsOfEveryKind) {
    for (const char* content : {"", "\r\n", "# to be done\n; later\n"})
        for (const FileKind kind :
             {FileKind::SETTINGS, FileKind::CONTOURS, FileKind::COLOR_TABLE, FileKind::TABLE, FileKind::TEXT,
              FileKind::SVG, FileKind::XML, FileKind::PNG, FileKind::PDF, FileKind::DXF})
            EXPECT_EQ("", MismatchOf(content, kind)) << content;
}

TEST(FileKind, ATextIsFilledInsideItsOwnKind) {
    EXPECT_EQ(FileKind::TEXT, KindOfText("Bay of %name%\n"));
    EXPECT_EQ(FileKind::TEXT, KindOfText(kTable));
    EXPECT_EQ(FileKind::TEXT, KindOfText(""));
    EXPECT_EQ(FileKind::SETTINGS, KindOfText(kSettings));
    EXPECT_EQ(FileKind::SETTINGS, KindOfText(kContours));
    EXPECT_EQ(FileKind::SVG, KindOfText(kSvg));
    EXPECT_EQ(FileKind::XML, KindOfText("<!DOCTYPE html>\n"));
    EXPECT_EQ(FileKind::DXF, KindOfText(kDxf));
}

TEST(RequireReplaceable, LooksAtTheFileThatIsThere) {
    const TemporaryFolder folder;
    const UserText missing = Utf8(folder.File(L"new.cdf"));
    const UserText picture = Utf8(folder.File(L"old.png"));
    WriteBytes(folder.File(L"old.png"), kPng);
    EXPECT_NO_THROW(RequireReplaceable(missing, FileKind::CONTOURS, false));
    EXPECT_NO_THROW(RequireReplaceable(picture, FileKind::PNG, false));
    EXPECT_NO_THROW(RequireReplaceable(picture, FileKind::CONTOURS, true));
    EXPECT_NO_THROW(RequireReplaceable(Utf8(WidePath(folder.Path())), FileKind::CONTOURS, false));
    try {
        RequireReplaceable(picture, FileKind::CONTOURS, false);
        ADD_FAILURE();
    } catch (const CommandError& error) {
        EXPECT_EQ(ExitCode::WRONG_USE, error.Code());
        EXPECT_EQ(picture.Utf8() +
                      ": is a PNG picture, no contour definition file; nothing was written; --force "
                      "replaces it all the same",
                  error.what());
    }
}

// Each command that writes a file, pointed at a file of another kind.
TEST(Chartutil, KeepsAFileOfAnotherKindUnlessForced) {
    const TemporaryFolder folder;
    const auto path = [&](std::wstring_view name) { return Utf8(folder.File(name)); };
    WriteBytes(folder.File(L"in.cpt"), "0 red 10 red\n");
    WriteBytes(folder.File(L"in.col"), kColors);
    WriteBytes(folder.File(L"in.csv"), kTable);
    WriteBytes(folder.File(L"in.txt"), "%name%\n");
    const std::string target = path(L"target");
    struct Row {
        std::vector<std::string> arguments;
        std::string old;
        std::string begin; // of what --force puts there
    };
    const std::vector<Row> rows = {
        {{"contours", "range", target, "--from", "0", "--to", "1", "--step", "1"}, kSettings, "[Contour(0)]"},
        {{"contours", "from-table", target, path(L"in.col")}, kPng, "[Contour(0)]"},
        {{"contours", "list", path(L"in.cdf"), "--format", "svg", "--picture", target}, kSettings, "<?xml"},
        {{"contours", "check", path(L"in.cdf"), "--format", "svg", "--picture", target}, kSettings, "<?xml"},
        {{"colors", "import", path(L"in.cpt"), target}, kContours, "[ColorTable]"},
        {{"colors", "palette", "--format", "svg", "--picture", target}, kDxf, "<?xml"},
        {{"colors", "table", path(L"in.col"), "--format", "svg", "--picture", target}, kColors, "<?xml"},
        {{"transform", path(L"in.csv"), "--translate", "1,1", "-o", target}, kSettings, "x,y\n2,3"},
        {{"units", "convert", "--from", "m", "--to", "mm", "--column", "x", "--input", path(L"in.csv"), "-o",
          target},
         kPdf,
         "x,y\n1000,2"},
        {{"keywords", "fill", path(L"in.txt"), "--value", "name=Bay", "-o", target}, kSettings, "Bay\n"},
        {{"style", "line", "0.5,5,Dashed,255,1", "--format", "svg", "--picture", target}, kTable, "<?xml"},
        {{"text", "measure", "Bay", "--format", "svg", "--picture", target}, kContours, "<?xml"},
        {{"text", "sounding", "7", "--format", "svg", "--picture", target}, kTable, "<?xml"},
        {{"text", "justifications", "--format", "svg", "--picture", target}, kTable, "<?xml"},
    };
    WriteBytes(folder.File(L"in.cdf"), kContours);
    for (Row row : rows) {
        SCOPED_TRACE(row.arguments[0] + ' ' + row.arguments[1]);
        WriteBytes(NativePath(FromUtf8(target)), row.old);
        const ProgramResult kept = RunChartutil(row.arguments);
        EXPECT_EQ(2, kept.exitCode);
        EXPECT_THAT(kept.error, HasSubstr("nothing was written; --force replaces it all the same"));
        EXPECT_EQ(row.old, ReadBytes(FromUtf8(target)));
        row.arguments.emplace_back("--force");
        const ProgramResult forced = RunChartutil(row.arguments);
        EXPECT_NE(2, forced.exitCode) << forced.error;
        EXPECT_THAT(ReadBytes(FromUtf8(target)), StartsWith(row.begin));
    }
}
