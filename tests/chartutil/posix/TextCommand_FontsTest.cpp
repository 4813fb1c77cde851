// What the commands on texts say where fontconfig knows no font, and of arguments that are no UTF-8.

#include "tests/support/Program.h"

#include <cstdlib>
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

TEST(TextCommandFonts, ArgumentsThatAreNoUtf8) {
    const ProgramResult text = RunChartutil({"text", "measure", "A\xFFz", "--font", "\xFE", "--json"});
    EXPECT_EQ(0, text.exitCode) << text.error;
    EXPECT_EQ("A\uFFFDz", nlohmann::json::parse(text.output)["text"]);
    EXPECT_EQ(2, RunChartutil({"text", "sounding", "1\xFF"}).exitCode);
    EXPECT_EQ(1, RunChartutil({"fonts", "\xFF"}).exitCode);
}
