// SPDX-License-Identifier: MIT
// What the commands on texts say where fontconfig knows no font, a damaged one or an odd one, of arguments
// that are no UTF-8 and of input without end.

#include "tests/Framework/posix/DeviceTestFont.h"
#include "tests/support/Program.h"
#include "tests/text/posix/OnlyFont.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using ::testing::HasSubstr;

namespace {

class NoFonts {
public:
    NoFonts() {
        WriteBytes(m_folder.Path() / "fonts.conf", "<?xml version=\"1.0\"?><fontconfig></fontconfig>");
        setenv("FONTCONFIG_FILE", (m_folder.Path() / "fonts.conf").c_str(), 1);
    }
    ~NoFonts() { unsetenv("FONTCONFIG_FILE"); }
    NoFonts(const NoFonts&) = delete;
    NoFonts& operator=(const NoFonts&) = delete;

private:
    TemporaryFolder m_folder;
};

// One font, of which fontconfig remembers what it was before its file was damaged.
class DamagedFont {
public:
    DamagedFont() {
        const std::filesystem::path fonts = m_folder.Path() / "fonts";
        const std::filesystem::path file = fonts / "font.ttf";
        std::filesystem::create_directories(fonts);
        std::filesystem::copy_file("/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf", file);
        WriteBytes(m_folder.Path() / "fonts.conf",
                   "<?xml version=\"1.0\"?><fontconfig><dir>" + fonts.string() + "</dir><cachedir>" +
                       (m_folder.Path() / "cache").string() + "</cachedir></fontconfig>");
        setenv("FONTCONFIG_FILE", (m_folder.Path() / "fonts.conf").c_str(), 1);
        EXPECT_EQ(0, RunChartutil({"fonts"}).exitCode);
        std::fstream(file, std::ios::in | std::ios::out | std::ios::binary) << std::string(50'000, '\0');
    }
    ~DamagedFont() { unsetenv("FONTCONFIG_FILE"); }
    DamagedFont(const DamagedFont&) = delete;
    DamagedFont& operator=(const DamagedFont&) = delete;

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST(TextCommandFonts, MachineWithoutFontsMeasuresNothingAndSaysSo) {
    const NoFonts noFonts;
    const TemporaryFolder folder;
    const std::string picture = ToUtf8(folder.File(L"t.svg"));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"text", "measure", "x", "--picture", picture},
          {"text", "sounding", "12.3", "--picture", picture},
          {"text", "measure", "a b", "--width", "1"}}) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const ProgramResult result = RunChartutil(arguments);
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.output,
                    HasSubstr("face            none, since no font with outlines is installed"));
        EXPECT_THAT(result.error,
                    HasSubstr("the text cannot be measured: no font with outlines is installed"));
    }
    const ProgramResult sheet = RunChartutil({"text", "justifications", "--picture", picture});
    EXPECT_EQ(1, sheet.exitCode);
    EXPECT_EQ("chartutil: the text cannot be measured: no font with outlines is installed; install one, such "
              "as Liberation Sans\n",
              sheet.error);
    EXPECT_EQ(0u, folder.NumFiles());
    const ProgramResult fonts = RunChartutil({"fonts"});
    EXPECT_EQ(1, fonts.exitCode);
    EXPECT_EQ("chartutil: no font is installed\n", fonts.error);
    const ProgramResult match = RunChartutil({"fonts", "--match", "Arial", "--json"});
    EXPECT_EQ(1, match.exitCode);
    EXPECT_TRUE(nlohmann::json::parse(match.output)["family"].is_null());
}

TEST(TextCommandFonts, FontWhoseFileIsDamagedIsInstalledButCannotBeRead) {
    const DamagedFont damaged;
    const ProgramResult fonts = RunChartutil({"fonts"});
    EXPECT_THAT(fonts.output, HasSubstr("Liberation Sans"));
    const ProgramResult text = RunChartutil({"text", "measure", "x", "--font", "Arial"});
    EXPECT_EQ(1, text.exitCode);
    EXPECT_THAT(text.output,
                HasSubstr("face            none, since the file of Liberation Sans cannot be used\n"));
    EXPECT_EQ("chartutil: the text cannot be measured: the file of the font Liberation Sans is damaged, too "
              "large or not to be read; install the font again\n",
              text.error);
    const ProgramResult match = RunChartutil({"fonts", "--match", "Arial"});
    EXPECT_EQ(1, match.exitCode);
    EXPECT_EQ("none, since the file of Liberation Sans cannot be used\n", match.output);
}

TEST(TextCommandFonts, FontWithoutRoomForLettersIsToldApartFromSizes) {
    TestFont made;
    made.typoDescent = -1500; // in a cell of 1000
    const OnlyFont only("deep.ttf", made.Bytes());
    for (const char* const size : {"0.5", "2.5", "20"}) {
        const ProgramResult text = RunChartutil({"text", "measure", "A", "--size", size});
        EXPECT_EQ(1, text.exitCode);
        EXPECT_THAT(text.error,
                    HasSubstr("chartutil: the text cannot be measured: the descent and leading of the "
                              "font Test leave no height to its letters; choose another font\n"))
            << size;
    }
}

TEST(TextCommandFonts, ArgumentsThatAreNoUtf8) {
    const ProgramResult text = RunChartutil({"text", "measure", "A\xFFz", "--font", "\xFE", "--json"});
    EXPECT_EQ(0, text.exitCode) << text.error;
    EXPECT_EQ("A\uFFFDz", nlohmann::json::parse(text.output)["text"]);
    EXPECT_EQ(2, RunChartutil({"text", "sounding", "1\xFF"}).exitCode);
    EXPECT_EQ(1, RunChartutil({"fonts", "\xFF"}).exitCode);
}

TEST(TextCommandInput, InputWithoutEndIsRefused) {
    const TemporaryFolder folder;
    EXPECT_EQ(2, RunWithFiles(ChartutilPath(), {"text", "measure", "-"}, L"/dev/zero", folder.File(L"output"),
                              folder.File(L"error")));
    EXPECT_THAT(ReadBytes(folder.File(L"error")), HasSubstr("standard input: is too large"));
}
