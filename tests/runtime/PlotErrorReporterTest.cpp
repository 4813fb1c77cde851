// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/PlotErrorReporter.h"

#include "tests/support/Random.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Names = std::vector<std::wstring>;

class PlotErrorReporterTest : public ::testing::Test {
protected:
    PlotErrorReporterTest() { m_reporter.Clear(); }
    ~PlotErrorReporterTest() override { m_reporter.Clear(); }

    PlotErrorReporter& m_reporter = PlotErrorReporter::Get();
};

TEST(PlotErrorReporter, IsFreshWhenTheProcessBegins) { // runs before those of the fixture
    EXPECT_EQ(Names(), PlotErrorReporter::Get().GetContexts());
    EXPECT_TRUE(PlotErrorReporter::Get().NoErrors(L"Plot"));
    EXPECT_TRUE(PlotErrorReporter::Get().NoErrors(L""));
    EXPECT_EQ(&PlotErrorReporter::Get(), &PlotErrorReporter::Get());
    static_assert(!std::is_default_constructible_v<PlotErrorReporter>);
}

TEST_F(PlotErrorReporterTest, OpeningAContextCountsAsReporting) {
    EXPECT_TRUE(m_reporter[L"Plot"].empty());
    EXPECT_FALSE(m_reporter.NoErrors(L"Plot"));
    EXPECT_EQ(Names{L"Plot"}, m_reporter.GetContexts());
    EXPECT_TRUE(m_reporter.NoErrors(L"plot"));
    EXPECT_TRUE(m_reporter.NoErrors(L"Plot "));
}

TEST_F(PlotErrorReporterTest, AskingOpensNoContext) {
    EXPECT_TRUE(m_reporter.NoErrors(L"Plot"));
    m_reporter.Clear(L"Plot");
    EXPECT_EQ(Names(), m_reporter.GetContexts());
}

TEST_F(PlotErrorReporterTest, KeepsTheErrorsOfEachContextInOrder) {
    m_reporter[L"Plot"].push_back(ErrorString(L"no file"));
    m_reporter[L"Layer"].push_back(ErrorString(L"no colour"));
    m_reporter[L"Plot"].push_back(ErrorString(L"no scale"));
    ASSERT_EQ(2u, m_reporter[L"Plot"].size());
    EXPECT_EQ(L"no file", m_reporter[L"Plot"][0].Text());
    EXPECT_EQ(L"no scale", m_reporter[L"Plot"][1].Text());
    ASSERT_EQ(1u, m_reporter[L"Layer"].size());
    EXPECT_EQ(L"no colour", m_reporter[L"Layer"][0].Text());
}

TEST_F(PlotErrorReporterTest, ListsContextsByTheirCodeUnits) {
    struct Row {
        Names given, listed;
    };
    for (const Row& row :
         {Row{{L"b", L"B", L"a"}, {L"B", L"a", L"b"}},
          Row{{L"ab", L"a", L"", L"abc"}, {L"", L"a", L"ab", L"abc"}},
          Row{{L"\xE9", L"z", L"\x20AC"}, {L"z", L"\xE9", L"\x20AC"}},
          // a surrogate pair begins with a unit between D800 and DBFF
          Row{{L"\uFF21", L"\U0001F30A", L"\uD7A3"}, {L"\uD7A3", L"\U0001F30A", L"\uFF21"}},
          Row{{L"x\uE000", L"x\U0010FFFD", L"x\U00010000"}, {L"x\U00010000", L"x\U0010FFFD", L"x\uE000"}},
          Row{{L"\U00010001", L"\U00010000z", L"\U00010000"}, {L"\U00010000", L"\U00010000z", L"\U00010001"}},
          Row{{std::wstring(L"a\0b", 3), L"a", L"a\x01"}, {L"a", std::wstring(L"a\0b", 3), L"a\x01"}}}) {
        m_reporter.Clear();
        for (const std::wstring& name : row.given) m_reporter[name];
        EXPECT_EQ(row.listed, m_reporter.GetContexts());
    }
}

TEST_F(PlotErrorReporterTest, OrderIsThatOfTheUtf16Form) {
    Random random(83);
    const auto utf16 = [](const std::wstring& name) {
        std::u16string units;
        for (const wchar_t c : name) {
            const auto code = static_cast<unsigned long>(c);
            if (code < 0x10000) {
                units += static_cast<char16_t>(code);
            } else {
                units += static_cast<char16_t>(0xD800 + (code - 0x10000) / 0x400);
                units += static_cast<char16_t>(0xDC00 + (code - 0x10000) % 0x400);
            }
        }
        return units;
    };
    const std::vector<std::wstring> characters = {L"a",      L"B",          L"\xE9",       L"\uD7FF",
                                                  L"\uE000", L"\U00010000", L"\U0001F30A", L"\U0010FFFF"};
    std::vector<std::u16string> expected;
    for (int i = 0; i < 3000; ++i) {
        std::wstring name;
        for (unsigned n = random.Below(6); n > 0; --n) name += random.OneOf(characters);
        m_reporter[name];
        expected.push_back(utf16(name));
    }
    std::sort(expected.begin(), expected.end());
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    std::vector<std::u16string> listed;
    for (const std::wstring& name : m_reporter.GetContexts()) listed.push_back(utf16(name));
    EXPECT_EQ(expected, listed);
    EXPECT_GT(listed.size(), 1000u);
}

TEST_F(PlotErrorReporterTest, ClearRemovesTheContext) {
    m_reporter[L"Plot"].push_back(ErrorString(L"no file"));
    m_reporter[L"Layer"];
    m_reporter.Clear(L"Plot");
    EXPECT_TRUE(m_reporter.NoErrors(L"Plot"));
    EXPECT_FALSE(m_reporter.NoErrors(L"Layer"));
    EXPECT_TRUE(m_reporter[L"Plot"].empty());
    m_reporter.Clear();
    EXPECT_EQ(Names(), m_reporter.GetContexts());
    EXPECT_TRUE(m_reporter.NoErrors(L"Layer"));
}

TEST_F(PlotErrorReporterTest, ErrorsStayWhereTheyAreWhileOtherContextsComeAndGo) {
    std::vector<ErrorString>& errors = m_reporter[L"context 500"];
    errors.push_back(ErrorString(L"first"));
    for (int i = 0; i < 1000; ++i) m_reporter[L"context " + std::to_wstring(i)];
    for (int i = 0; i < 500; ++i) m_reporter.Clear(L"context " + std::to_wstring(i));
    errors.push_back(ErrorString(L"second"));
    EXPECT_EQ(&errors, &m_reporter[L"context 500"]);
    ASSERT_EQ(2u, m_reporter[L"context 500"].size());
    EXPECT_EQ(L"second", m_reporter[L"context 500"][1].Text());
}

TEST_F(PlotErrorReporterTest, TakesTheTextOfItsOwnErrorsForAName) {
    m_reporter[L"Plot"].push_back(ErrorString(L"Plot"));
    EXPECT_FALSE(m_reporter.NoErrors(m_reporter[L"Plot"][0].Text()));
    m_reporter.Clear(m_reporter[L"Plot"][0].Text());
    EXPECT_TRUE(m_reporter.NoErrors(L"Plot"));
}

TEST_F(PlotErrorReporterTest, CopiesAreIndependent) {
    m_reporter[L"Plot"].push_back(ErrorString(L"no file"));
    PlotErrorReporter copy(m_reporter);
    copy[L"Plot"].push_back(ErrorString(L"no scale"));
    copy[L"Layer"];
    EXPECT_EQ(1u, m_reporter[L"Plot"].size());
    EXPECT_TRUE(m_reporter.NoErrors(L"Layer"));
    m_reporter.Clear();
    EXPECT_EQ((Names{L"Layer", L"Plot"}), copy.GetContexts());
    m_reporter = copy;
    EXPECT_EQ((Names{L"Layer", L"Plot"}), m_reporter.GetContexts());
    EXPECT_EQ(L"no scale", m_reporter[L"Plot"][1].Text());
    m_reporter = *&m_reporter;
    EXPECT_EQ(2u, m_reporter[L"Plot"].size());
}

} // namespace
