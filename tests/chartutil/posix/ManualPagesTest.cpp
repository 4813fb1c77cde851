// SPDX-License-Identifier: MIT
// The manual pages as the programs see them that people read them with.

#include "apps/chartutil/commands/help/ManualPages.h"
#include "apps/chartutil/Program.h"
#include "apps/chartutil/commands/help/Topics.h"
#include "apps/chartutil/help/ManualPage.h"
#include "apps/chartutil/help/OptionText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "tests/support/Environment.h"
#include "tests/support/PrintedText.h"
#include "tests/support/Program.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <gmock/gmock.h>

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

constexpr char kMan[] = "/usr/bin/man";
constexpr char kMandoc[] = "/usr/bin/mandoc";
constexpr char kDate[] = "2026-02-28";

bool IsThere(const char* program) { return std::filesystem::exists(program); }

class ManualPagesOf : public ::testing::Test {
protected:
    ManualPagesOf() {
        Describe(m_program, {});
        m_pages = ManualPages(m_program, kDate);
    }

    const std::string& Text(const std::string& path) const {
        const auto found = std::ranges::find(m_pages, path, &NamedText::path);
        static const std::string none;
        EXPECT_NE(m_pages.end(), found) << path;
        return found == m_pages.end() ? none : found->text;
    }

    CLI::App m_program{"", "chartutil"};
    std::vector<NamedText> m_pages;
};

// The page as man shows it on a terminal of that many columns, without looks.
std::string Shown(const std::string& page, const wchar_t* columns) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"page.1"), page);
    SetEnvironment(L"MANWIDTH", columns);
    SetEnvironment(L"MANOPT", L"");
    SetEnvironment(L"LC_ALL", L"C.UTF-8");
    const ProgramResult result =
        RunProgramAt(kMan, {"-P", "cat", "--warnings", "-l", ToUtf8(folder.File(L"page.1"))});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("", result.error);
    return result.output;
}

// Leaves out what it is looked for in, which is a whole page.
MATCHER_P(Shows, text, "") {
    (void)result_listener;
    return arg.find(text) != std::string::npos;
}

} // namespace

TEST_F(ManualPagesOf, TheProgramAreOneForEachCommandAndTopic) {
    std::vector<std::string> paths;
    for (const NamedText& page : m_pages) paths.push_back(page.path);
    EXPECT_EQ(1 + CommandsOf(m_program).size() + Topics().size(), paths.size());
    for (const CLI::App* const command : CommandsOf(m_program))
        EXPECT_THAT(paths, Contains("man/man1/chartutil-" + command->get_name() + ".1"));
    for (const char* const path : {"man/man1/chartutil.1", "man/man5/chartutil-project.5",
                                   "man/man5/chartutil-settings-files.5", "man/man7/chartutil-files.7"})
        EXPECT_THAT(paths, Contains(path));
}

TEST_F(ManualPagesOf, ACommandHaveTheUsualSections) {
    for (const NamedText& page : m_pages) {
        SCOPED_TRACE(page.path);
        std::size_t last = 0;
        const bool isOfCommand = page.path.ends_with(".1");
        for (const char* const heading :
             {"NAME", "SYNOPSIS", "DESCRIPTION", "EXAMPLES", "EXIT STATUS", "ENVIRONMENT", "SEE ALSO"}) {
            const bool isOfAll = heading == std::string("NAME") || heading == std::string("DESCRIPTION") ||
                                 heading == std::string("SEE ALSO");
            if (!isOfCommand && !isOfAll) continue;
            const std::size_t place = page.text.find(std::string("\n.SH ") + heading + "\n");
            EXPECT_NE(std::string::npos, place) << heading;
            EXPECT_LT(last, place) << heading;
            EXPECT_NE(".SH", page.text.substr(page.text.find('\n', place + 1) + 1, 3))
                << heading << " is empty";
            last = place;
        }
    }
}

TEST_F(ManualPagesOf, ACommandSayWhatItsHelpSays) {
    if (!IsThere(kMan)) GTEST_SKIP() << "man is not installed (Debian: man-db)";
    for (const CLI::App* const command : CommandsOf(m_program)) {
        const std::string shown =
            WithoutBlanks(Shown(Text("man/man1/chartutil-" + command->get_name() + ".1"), L"80"));
        std::vector<const CLI::App*> parts = CommandsOf(*command);
        parts.push_back(command);
        for (const CLI::App* const part : parts) {
            SCOPED_TRACE(FullName(*part));
            if (CommandsOf(*part).empty()) {
                EXPECT_THAT(shown, Shows(WithoutBlanks(Usage(*part))));
            }
            EXPECT_THAT(shown, Shows(WithoutBlanks(part->get_description())));
            for (const std::vector<OptionText>& options : {ArgumentsOf(*part), OptionsOf(*part)})
                for (const OptionText& option : options)
                    EXPECT_THAT(shown, Shows(WithoutBlanks(option.Term() + option.about)));
            for (const Block& block : ReadProse(part->get_footer())) {
                const bool isHeading = block.text.starts_with("Example") && block.text.ends_with(':');
                if (isHeading) continue;
                EXPECT_THAT(shown, Shows(WithoutBlanks(block.term + block.text)));
            }
        }
    }
}

TEST_F(ManualPagesOf, TheProgramFitIntoEightyColumns) {
    if (!IsThere(kMan)) GTEST_SKIP() << "man is not installed (Debian: man-db)";
    for (const NamedText& page : m_pages) {
        SCOPED_TRACE(page.path);
        const std::string shown = Shown(page.text, L"80"); // which fails for a warning, too
        EXPECT_THAT(shown, HasSubstr("NAME"));
        EXPECT_THAT(shown, Not(HasSubstr("\xE2\x80\x90"))) << "a hyphen that is no minus cannot be copied";
        for (const std::string& line : LinesOf(shown)) EXPECT_LE(TextWidth(line), 80U) << line;
    }
}

TEST_F(ManualPagesOf, TheProgramHaveNothingThatMandocFinds) {
    if (!IsThere(kMandoc)) GTEST_SKIP() << "mandoc is not installed (Debian: mandoc)";
    for (const NamedText& page : m_pages) {
        const ProgramResult result = RunProgramAt(kMandoc, {"-T", "lint", "-W", "warning"}, page.text);
        EXPECT_EQ(0, result.exitCode) << page.path;
        EXPECT_EQ("", result.output + result.error) << page.path;
    }
}

// What roff would take for its own, wherever a text may have it.
TEST(ManualPages, ShowEveryCharacterAsItIs) {
    const std::string hostile =
        "'b\\fB.x\\n(ab --o-p \"q\" `r` ^s~ %t% \xC3\xBC\xCE\xA9\xF0\x9F\x97\xBA # $1";
    for (const char* const begin : {"", ".", "'", "\\", ".\\\" ", "-"}) {
        const std::string text = std::string(begin) + hostile;
        ManualPage page("name", 1, text, "program 1", kDate);
        page.AddHeading(text);
        page.AddProse({{Block::Kind::PARAGRAPH, "", text},
                       {Block::Kind::LINES, "", text + "\n" + text},
                       {Block::Kind::ITEM, text, text}});
        page.AddSubheading(text);
        page.AddUsage(text, text);
        OptionText option;
        option.names = {text};
        option.value = option.about = text;
        page.AddOption(option);
        if (IsThere(kMandoc)) {
            const ProgramResult lint = RunProgramAt(kMandoc, {"-T", "lint", "-W", "warning"}, page.Text());
            EXPECT_EQ("", lint.output);
        }
        if (!IsThere(kMan)) GTEST_SKIP() << "man is not installed (Debian: man-db)";
        const std::string shown = WithoutBlanks(Shown(page.Text(), L"300"));
        std::size_t count = 0;
        const std::string wanted = WithoutBlanks(text);
        for (std::size_t i = shown.find(wanted); i != std::string::npos; i = shown.find(wanted, i + 1))
            ++count;
        EXPECT_EQ(13U, count) << text << '\n' << Shown(page.Text(), L"300");
    }
}

TEST(ManualPages, AreTheSameOnAnyDay) {
    const auto date = [](const wchar_t* seconds) {
        SetEnvironment(L"SOURCE_DATE_EPOCH", seconds);
        const TemporaryFolder folder;
        EXPECT_EQ(0, RunChartutil({"help", "--install", ToUtf8(WidePath(folder.Path()))}).exitCode);
        const std::string page = ReadBytes(folder.File(L"man/man1/chartutil.1"));
        const std::string title = ".TH CHARTUTIL 1 \"";
        const std::size_t start = page.find(title) + title.size();
        EXPECT_NE(std::string::npos, page.find(title));
        return page.substr(start, page.find('"', start) - start);
    };
    EXPECT_EQ("", date(L""));
    EXPECT_EQ("1970-01-01", date(L"0"));
    EXPECT_EQ("2024-02-29", date(L"1709251199"));
    EXPECT_EQ("2024-03-01", date(L"1709251200"));
    EXPECT_EQ("9999-12-31", date(L"253402300799"));
    for (const wchar_t* const none : {L"253402300800", L"-1", L"1x", L"99999999999999999999"})
        EXPECT_EQ("", date(none));
    SetEnvironment(L"SOURCE_DATE_EPOCH", L"");
}
