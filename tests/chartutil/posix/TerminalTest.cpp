// What chartutil shows on a terminal: colours and a progress bar, but nothing by which a file could steer it.

#include "tests/support/Program.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {
// What chartutil shows on a terminal.
std::string OnTerminal(const std::vector<std::string>& arguments) {
    const std::string program = ChartutilPath();
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child < 0) {
        ADD_FAILURE() << "no terminal can be made: " << std::strerror(errno);
        return {};
    }
    if (child == 0) {
        std::vector<char*> words = {const_cast<char*>(program.c_str())};
        for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        execv(program.c_str(), words.data());
        _exit(127);
    }
    std::string shown;
    char bytes[4096];
    for (ssize_t got; (got = read(terminal, bytes, sizeof bytes)) > 0;)
        shown.append(bytes, static_cast<std::size_t>(got));
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    return shown;
}
} // namespace
TEST(Terminal, ShowsNoControlsOfRecordsAndTables) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.ini", "[a]\nFont=A\x1b[31m\nSize=1\nStyle=0\nJustification=0\nColor=1\n");
    WriteBytes(folder.Path() / "a.col", "[ColorTable]\nEntry(0)=\x1b[31mred,1,2,3\n");
    WriteBytes(folder.Path() / "a.cdf", "[Contour(0)]\nLevel=1\nColor=0\nL\x1b[31m=2\n");
    WriteBytes(folder.Path() / "good\x1b[31m.cdf", "[Contour(0)]\nLevel=1\nColor=0\n");
    WriteBytes(folder.Path() / "none\x1b[31m.txt", "no names\n");
    WriteBytes(folder.Path() / "a.cpt", "0 red 1 blue\n");
    WriteBytes(folder.Path() / "a.txt", "%n\x1b[31m%\n");
    const auto path = [&](const wchar_t* name) { return ToUtf8(folder.File(name)); };
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"style", "show", path(L"a.ini"), "a"},
             {"style", "line", "A\x1b[31m,1,0,0,0"},
             {"colors", "table", path(L"a.col")},
             {"contours", "check", path(L"a.cdf")},
             {"contours", "check", path(L"good\x1b[31m.cdf")},
             {"keywords", "list", path(L"none\x1b[31m.txt")},
             {"colors", "import", path(L"a.cpt"), path(L"b\x1b[31m.col")},
             {"keywords", "list", path(L"a.txt")},
             {"keywords", "fill", path(L"a.txt")},
             {"settings", "show", path(L"a.ini"), "a", "b\x1b[31m"},
             {"settings", "show", path(L"a.ini"), "a", "Font", "more\x1b[31m"}}) {
        const std::string shown = OnTerminal(arguments);
        EXPECT_THAT(shown, HasSubstr("\\x1B[31m")) << ::testing::PrintToString(arguments);
        // What a file has in the text must not be passed through; the last line of a fill is the text itself.
        if (arguments[1] != "fill") {
            EXPECT_THAT(shown, Not(HasSubstr("\x1b[31m"))) << ::testing::PrintToString(arguments);
        }
    }
}

TEST(Terminal, ShowsColoursAndNoControlsOfAFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.ini", "[a\x1b[31m]\nk\x07=v\x1b[2J ;c\x9b\n");
    const std::string path = ToUtf8(folder.File(L"a.ini"));
    EXPECT_EQ("\x1b[1m[a\\x1B[31m]\x1b[0m\r\nk\\x07 = v\\x1B[2J \x1b[2m;c\\x9B\x1b[0m\r\n",
              OnTerminal({"settings", "show", path}));
    EXPECT_THAT(OnTerminal({"settings", "check", path}), HasSubstr("\x1b[33mno seal\x1b[0m"));
    EXPECT_THAT(OnTerminal({"settings", "show", path + "\x1b[31m"}), Not(HasSubstr("\x1b")));
}
TEST(Terminal, ALongFileHasAProgressBarThatGoesAtTheEnd) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "big\x1b[31m", "x");
    std::filesystem::resize_file(folder.Path() / "big\x1b[31m",
                                 std::uintmax_t{2} << 30); // sparse; long enough to be waited for
    const std::string shown = OnTerminal({"crc", "print", ToUtf8(folder.File(L"big\x1b[31m"))});
    EXPECT_THAT(shown, AllOf(HasSubstr("[####"), HasSubstr("%"), HasSubstr("\r\x1b[K")));
    EXPECT_THAT(shown, Not(HasSubstr("\x1b[31m")));
}
