// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/ProjectKeys.h"

#include "UtilityDLL/GTL/UnitType.h"
#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "apps/chartutil/sheet/project/Project.h"
#include "apps/chartutil/sheet/project/ProjectFile.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "tests/support/Program.h"

#include <cmath>
#include <cstdlib>
#include <gmock/gmock.h>
#include <set>
#include <sstream>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

using Kind = ProjectKey::Kind;

// What a project of these settings takes for each key, and what is reported of it.
struct ReadSettings {
    explicit ReadSettings(const std::string& settings) {
        WriteBytes(folder.Path() / "project.ini", settings);
        PlotErrorReporter::Get().Clear();
        ProjectFile reader(UserText(folder.Path().string()));
        (void)ReadProject(reader);
        taken = reader.Taken();
        for (const std::wstring& context : PlotErrorReporter::Get().GetContexts())
            for (const ErrorString& error : PlotErrorReporter::Get()[context])
                reports.push_back(ToUtf8(error.Text()));
    }

    std::string Value(const wchar_t* section, const std::wstring& key) const {
        return ToUtf8(taken.at(section).at(key));
    }
    // What is said of a key.
    std::vector<std::string> Of(const wchar_t* section, const std::wstring& key) const {
        std::vector<std::string> said;
        for (const std::string& report : reports)
            if (report.find("[" + ToUtf8(section) + "] " + ToUtf8(key) + ": ") != std::string::npos)
                said.push_back(report);
        return said;
    }

    TemporaryFolder folder;
    ProjectFile::Sections taken;
    std::vector<std::string> reports;
};

// Each section with nothing in it.
std::string EmptySections() {
    std::string settings;
    for (const ProjectSection& section : ProjectSections()) settings += '[' + ToUtf8(section.name) + "]\n";
    return settings;
}

std::string Setting(const wchar_t* section, const std::wstring& key, const std::string& value) {
    return '[' + ToUtf8(section) + "]\n" + ToUtf8(key) + " = " + value + '\n';
}

bool IsSameValue(const std::string& a, const std::string& b) {
    double first = 0, second = 0;
    if (!ParseNumber(a, first) || !ParseNumber(b, second)) return a == b;
    return std::fabs(first - second) <= 1e-6 * std::max(std::fabs(first), std::fabs(second));
}

TEST(ProjectKeys, AreTheKeysThatTheProgramReads) {
    std::set<std::wstring> inTable, read;
    for (const ProjectSection& section : ProjectSections())
        for (const auto& [key, row] : KeysOf(section.name))
            EXPECT_TRUE(inTable.insert(section.name + (L'/' + key)).second)
                << ToUtf8(key) << " is there twice";
    for (const auto& [section, keys] : ReadSettings("").taken)
        for (const auto& [key, value] : keys) read.insert(section + L'/' + key);
    EXPECT_EQ(inTable, read);
}

TEST(ProjectKeys, SectionsAreThoseThatTheProgramReads) {
    std::set<std::wstring> inTable, read;
    for (const ProjectSection& section : ProjectSections()) inTable.insert(section.name);
    for (const auto& [section, keys] : ReadSettings("").taken) read.insert(section);
    EXPECT_EQ(inTable, read);
}

TEST(ProjectKeys, ValuesAreThoseOfAnEmptyProject) {
    for (const std::string& settings : {std::string(), EmptySections()}) {
        const ReadSettings empty(settings);
        for (const ProjectSection& section : ProjectSections())
            for (const auto& [key, row] : KeysOf(section.name))
                EXPECT_PRED2(IsSameValue, row->value, empty.Value(section.name, key))
                    << ToUtf8(section.name) << ' ' << ToUtf8(key);
    }
}

// Just within each end of a range and just beyond it.
TEST(ProjectKeys, RangesAreThoseOfTheProgram) {
    int ends = 0;
    const auto check = [&](const wchar_t* section, const std::wstring& key, const ProjectKey& row, double end,
                           double outwards) {
        SCOPED_TRACE(ToUtf8(section) + ' ' + ToUtf8(key));
        ++ends;
        const std::string within = DecimalText(end);
        const ReadSettings inside(Setting(section, key, within));
        EXPECT_THAT(inside.Of(section, key), Not(Contains(HasSubstr("' is "))));
        EXPECT_PRED2(IsSameValue, within, inside.Value(section, key));

        const double step = row.kind == Kind::NUMBER ? 1e-6 * std::max(1.0, std::fabs(end)) : 1;
        const std::string beyond = DecimalText(end + outwards * step);
        const ReadSettings outside(Setting(section, key, beyond));
        EXPECT_THAT(outside.Of(section, key),
                    Contains(AllOf(HasSubstr("'" + beyond + "' is not "), HasSubstr(" is taken"))));
        EXPECT_PRED2(IsSameValue, row.value, outside.Value(section, key));
    };
    for (const ProjectSection& section : ProjectSections())
        for (const auto& [key, row] : KeysOf(section.name)) {
            if (row->newer) continue; // as what goes before it
            if (std::isfinite(row->lowest)) check(section.name, key, *row, row->lowest, -1);
            if (std::isfinite(row->highest)) check(section.name, key, *row, row->highest, 1);
        }
    EXPECT_GT(ends, 100);
}

TEST(ProjectKeys, NumbersAreNothingElse) {
    for (const ProjectSection& section : ProjectSections())
        for (const auto& [key, row] : KeysOf(section.name)) {
            if (row->kind != Kind::NUMBER && row->kind != Kind::WHOLE && row->kind != Kind::SWITCH &&
                row->kind != Kind::COLOR)
                continue;
            SCOPED_TRACE(ToUtf8(section.name) + ' ' + ToUtf8(key));
            const ReadSettings text(Setting(section.name, key, "wide"));
            EXPECT_THAT(text.Of(section.name, key), Contains(HasSubstr("'wide' is no number; ")));
            EXPECT_PRED2(IsSameValue, row->value, text.Value(section.name, key));
            if (row->kind == Kind::NUMBER) continue;
            EXPECT_THAT(ReadSettings(Setting(section.name, key, "0.5")).Of(section.name, key),
                        Contains(HasSubstr("'0.5' is no whole number; ")));
        }
}

TEST(ProjectKeys, ChoicesAreThoseOfTheProgram) {
    for (const ProjectSection& section : ProjectSections())
        for (const auto& [key, row] : KeysOf(section.name)) {
            SCOPED_TRACE(ToUtf8(section.name) + ' ' + ToUtf8(key));
            if (row->kind != Kind::NAME && row->kind != Kind::NAMES) {
                EXPECT_THAT(ChoicesOf(*row), IsEmpty());
                continue;
            }
            EXPECT_THAT(ChoicesOf(*row), Not(IsEmpty()));
            for (const std::string& choice : ChoicesOf(*row)) {
                const ReadSettings chosen(Setting(section.name, key, choice));
                EXPECT_THAT(chosen.Of(section.name, key), IsEmpty());
                EXPECT_EQ(choice, chosen.Value(section.name, key));
            }
            const ReadSettings other(Setting(section.name, key, "Sideways"));
            EXPECT_THAT(other.Of(section.name, key), Contains(HasSubstr("'Sideways' ")));
        }
}

TEST(ProjectKeys, UnitsAreInTheOrderOfTheLibrary) {
    const std::vector<std::string> units = ChoicesOf(*FindProjectKey(L"Soundings", L"Unit"));
    for (std::size_t i = 0; i < units.size(); ++i)
        EXPECT_EQ(units[i], ToUtf8(UnitType(static_cast<UnitType::U_TYPE>(i)).AsString()));
}

// An older key is read where the newer one is missing, and goes behind it.
TEST(ProjectKeys, NewerKeysGoBeforeOlderOnes) {
    int count = 0;
    for (const ProjectSection& section : ProjectSections())
        for (const auto& [key, row] : KeysOf(section.name)) {
            if (!row->newer) continue;
            ++count;
            SCOPED_TRACE(ToUtf8(section.name) + ' ' + ToUtf8(key));
            const std::wstring newer =
                key.substr(0, key.size() - std::wstring(row->name).size()) + row->newer;
            const ReadSettings older(Setting(section.name, key, "5"));
            const std::string byOlder = older.Value(section.name, newer);
            EXPECT_THAT(older.Of(section.name, key), IsEmpty());
            EXPECT_FALSE(IsSameValue(FindProjectKey(section.name, newer)->value, byOlder));
            const ReadSettings both(Setting(section.name, key, "5") + ToUtf8(newer) + " = 77\n");
            EXPECT_PRED2(IsSameValue, "77", both.Value(section.name, newer));
        }
    EXPECT_GT(count, 20);
}

TEST(ProjectKeys, AreNotFoundWhereTheyAreNot) {
    EXPECT_EQ(nullptr, FindProjectKey(L"Sheet", L"Reach"));
    EXPECT_EQ(nullptr, FindProjectKey(L"Sheets", L"Title"));
    EXPECT_EQ(nullptr, FindProjectKey(L"Title Block", L"Heading."));
    EXPECT_NE(nullptr, FindProjectKey(L"title block", L"heading.font"));
    EXPECT_EQ("", RemarkOn(L"Keywords", L"survey"));
    EXPECT_EQ("between two depths, at least (mm, 0 to 100)", RemarkOn(L"Soundings", L"Gap"));
}

TEST(ProjectKeys, NameCommandsThatThereAre) {
    const std::string text = ProjectKeysMarkdown();
    std::set<std::string> commands;
    constexpr std::string_view kBegin = "`chartutil ";
    for (std::size_t at = 0; (at = text.find(kBegin, at)) != std::string::npos; ++at)
        commands.insert(text.substr(at + kBegin.size(), text.find('`', at + 1) - at - kBegin.size()));
    EXPECT_GT(commands.size(), 5u);
    for (const std::string& command : commands) {
        if (command.starts_with("help ")) continue; // a topic, which is another test's
        std::istringstream words(command);
        std::vector<std::string> arguments;
        for (std::string word; words >> word;) arguments.push_back(word);
        arguments.emplace_back("--help");
        const ProgramResult result = RunChartutil(arguments);
        EXPECT_EQ(0, result.exitCode) << command;
        EXPECT_THAT(result.output, HasSubstr("chartutil " + command)) << command;
    }
}

TEST(ProjectKeys, TextHasALineForEachSectionAndKey) {
    const std::string text = ProjectKeysText();
    EXPECT_THAT(text, AllOf(HasSubstr("\n[Surface]: the surface through the soundings, and its tints\n"),
                            HasSubstr("\n  CellSize :: of the surface's cells"), HasSubstr("\nA line: "),
                            HasSubstr(" (mm, 0.05 to 100); default 0.8\n")));
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_EQ(line.starts_with("  "), line.find(" :: ") != std::string::npos) << line;
        EXPECT_EQ(std::string::npos, line.find('`')) << line;
    }
    for (const ProjectSection& section : ProjectSections())
        EXPECT_THAT(text, HasSubstr('[' + ToUtf8(section.name) + "]: "));
}

// The manual's page is kept, so that it can be read where it lies.
TEST(ProjectKeys, AreThoseOfTheManual) {
    const std::filesystem::path page = std::filesystem::path(PROJECT_DATA_FOLDER) / "../docs/project-keys.md";
    if (std::getenv("RENEW_PROJECT_KEYS")) WriteBytes(page, ProjectKeysMarkdown());
    EXPECT_EQ(ReadBytes(page), ProjectKeysMarkdown())
        << "docs/project-keys.md is not what the table says. This renews it:\n"
           "  RENEW_PROJECT_KEYS=1 ctest --test-dir build/release -R ProjectKeysTest";
}

} // namespace
