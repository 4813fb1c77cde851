// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/ProgressBar.h"

#include <gmock/gmock.h>
#include <sstream>

using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

// A terminal, and a clock that goes when the test says so.
class Progress : public testing::Test {
protected:
    ProgressBar Bar() {
        return {&m_shown, [this] { return m_now; }};
    }
    std::string Shown() {
        const std::string shown = m_shown.str();
        m_shown.str({});
        return shown;
    }

    std::chrono::steady_clock::time_point m_now;
    std::ostringstream m_shown;
};

} // namespace

TEST_F(Progress, WorkThatIsSoonDoneHasNoBar) {
    {
        ProgressBar bar = Bar();
        bar.Show("file", 0.1);
        m_now += 299ms;
        bar.Show("file", 0.99);
    }
    EXPECT_EQ("", Shown());
}

TEST_F(Progress, LongWorkHasABarThatMovesTenTimesASecondAndGoesAtTheEnd) {
    {
        ProgressBar bar = Bar();
        m_now += 300ms;
        bar.Show("file", 0.25);
        EXPECT_EQ("\r\x1b[Kfile [##########..............................]  25%", Shown());
        m_now += 99ms;
        bar.Show("file", 0.5);
        EXPECT_EQ("", Shown());
        m_now += 1ms;
        bar.Show("file", 0.5);
        EXPECT_EQ("\r\x1b[Kfile [####################....................]  50%", Shown());
        m_now += 100ms;
        bar.Show("file", 2); // a file that grew meanwhile
        EXPECT_EQ("\r\x1b[Kfile [########################################] 100%", Shown());
    }
    EXPECT_EQ("\r\x1b[K", Shown());
}

TEST_F(Progress, ABarThatWasTakenAwayComesBackForTheNextPart) {
    ProgressBar bar = Bar();
    bar.Hide();
    EXPECT_EQ("", Shown()); // there was none
    m_now += 300ms;
    bar.Show("a", 0);
    bar.Hide();
    EXPECT_THAT(Shown(), testing::EndsWith("%\r\x1b[K"));
    bar.Hide();
    EXPECT_EQ("", Shown());
    m_now += 100ms;
    bar.Show("b", 1);
    EXPECT_THAT(Shown(), HasSubstr("b ["));
}

TEST_F(Progress, ItsLabelHasNoControls) {
    ProgressBar bar = Bar();
    m_now += 1s;
    bar.Show("a\x1b[31m\x7f\xC2\x9F", 0.5);
    EXPECT_THAT(m_shown.str(), HasSubstr("a\\x1B[31m\\x7F\\x9F ["));
}

TEST_F(Progress, WorkOfUnknownLengthHasItsNameAlone) {
    ProgressBar bar = Bar();
    m_now += 1s;
    bar.Show("file", -1);
    EXPECT_EQ("\r\x1b[Kfile ...", Shown());
}

TEST_F(Progress, NoTerminalNoBar) {
    ProgressBar bar(nullptr, [this] { return m_now; });
    m_now += 1s;
    bar.Show("file", 0.5);
    bar.Hide();
    EXPECT_FALSE(bar.HasTerminal());
    EXPECT_TRUE(Bar().HasTerminal());
}
