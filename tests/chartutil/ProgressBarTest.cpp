#include "apps/chartutil/terminal/ProgressBar.h"

#include <gmock/gmock.h>
#include <sstream>

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

namespace {

// A terminal, and a clock that goes when the test says so.
class Progress : public testing::Test {
protected:
    ProgressBar Bar(std::string_view label, std::uint64_t total) {
        return {label, total, &m_shown, [this] { return m_now; }};
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
        ProgressBar bar = Bar("file", 100);
        bar.Show(10);
        m_now += 299ms;
        bar.Show(99);
    }
    EXPECT_EQ("", Shown());
}

TEST_F(Progress, LongWorkHasABarThatMovesTenTimesASecondAndGoesAtTheEnd) {
    {
        ProgressBar bar = Bar("file", 1000);
        m_now += 300ms;
        bar.Show(250);
        EXPECT_EQ("\rfile [##########..............................]  25%", Shown());
        m_now += 99ms;
        bar.Show(500);
        EXPECT_EQ("", Shown());
        m_now += 1ms;
        bar.Show(500);
        EXPECT_EQ("\rfile [####################....................]  50%", Shown());
        m_now += 100ms;
        bar.Show(2000); // a file that grew meanwhile
        EXPECT_EQ("\rfile [########################################] 100%", Shown());
    }
    EXPECT_EQ("\r\x1b[K", Shown());
}

TEST_F(Progress, ItsLabelHasNoControls) {
    ProgressBar bar = Bar("a\x1b[31m\x7f\xC2\x9F", 2);
    m_now += 1s;
    bar.Show(1);
    EXPECT_THAT(m_shown.str(), HasSubstr("a\\x1B[31m\\x7F\\x9F ["));
}

TEST_F(Progress, WorkOfUnknownLengthHasNone) {
    {
        ProgressBar bar = Bar("file", 0);
        m_now += 1s;
        bar.Show(1);
    }
    EXPECT_EQ("", Shown());
}

TEST_F(Progress, NoTerminalNoBar) {
    ProgressBar bar("file", 2, nullptr, [this] { return m_now; });
    m_now += 1s;
    bar.Show(1);
}
