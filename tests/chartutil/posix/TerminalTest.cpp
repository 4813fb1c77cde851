// SPDX-License-Identifier: MIT
// What chartutil shows on a terminal: colours and a progress bar, but nothing by which a file could steer it.

#include "tests/support/Program.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <pty.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

// What chartutil shows on a terminal that can do all; up to `until`, where that is given, and no further.
// `variable` is one more of its environment, "NAME=VALUE".
std::string OnTerminal(const std::vector<std::string>& arguments, std::string_view until = {},
                       const char* variable = "TERM=xterm") {
    const std::string program = ChartutilPath();
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child < 0) {
        ADD_FAILURE() << "no terminal can be made: " << std::strerror(errno);
        return {};
    }
    if (child == 0) {
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
        putenv(const_cast<char*>(variable));
        std::vector<char*> words = {const_cast<char*>(program.c_str())};
        for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        execv(program.c_str(), words.data());
        _exit(127);
    }
    std::string shown;
    char bytes[4096];
    bool isEnough = false;
    for (ssize_t got; !isEnough && (got = read(terminal, bytes, sizeof bytes)) > 0;) {
        shown.append(bytes, static_cast<std::size_t>(got));
        isEnough = !until.empty() && shown.find(until) != std::string::npos;
    }
    if (isEnough) kill(child, SIGKILL);
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(isEnough || WIFEXITED(status));
    return shown;
}

// The length of a colour of the program's own that `text` begins with; 0 when it begins with something else.
std::size_t OwnColor(std::string_view text) {
    for (const char* look : {"0", "1", "2", "31", "32", "33", "38;2;"}) {
        const std::string begin = std::string("\x1b[") + look;
        if (!text.starts_with(begin)) continue;
        const bool isMixed = begin.back() == ';'; // numbers follow
        const std::size_t end = isMixed ? text.find_first_not_of("0123456789;", begin.size()) : begin.size();
        if (end < text.size() && text[end] == 'm') return end + 1;
    }
    return 0;
}

// The first byte that steers a terminal, as "\x07", apart from line breaks and the program's own colours.
std::string FirstControl(const std::string& shown) {
    std::string text;
    for (std::size_t i = 0; i < shown.size();) {
        if (const std::size_t length = OwnColor(std::string_view(shown).substr(i)); length > 0) {
            i += length;
            continue;
        }
        if (shown[i] == '\n') // the terminal adds carriage returns of its own
            text.resize(text.find_last_not_of('\r') + 1);
        text += shown[i++];
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto before = static_cast<unsigned char>(i > 0 ? text[i - 1] : ' ');
        const bool isHigh = byte >= 0x80 && byte < 0xA0 && (before < 0x80 || before == 0xC2);
        if ((byte >= 0x20 && byte != 0x7F && !isHigh) || byte == '\n' || byte == '\t') continue;
        char name[8];
        std::snprintf(name, sizeof name, "\\x%02X", byte);
        return name;
    }
    return {};
}

} // namespace

TEST(Terminal, NoCommandShowsControlsOfAFileOrAnArgument) {
    const std::string h = "\x07\x1bP\x7f\xC2\x9F"; // bell, escape, delete and a control above U+007F
    const std::string latin = "\x07\x1bP\x7f\x9F"; // the same where a byte is a character
    const TemporaryFolder folder;
    const std::string at = ToUtf8(WidePath(folder.Path())) + "/";
    const auto file = [&](const std::string& name, const std::string& bytes) {
        WriteBytes(FromUtf8(at + name), bytes);
        return at + name;
    };
    const std::string ini =
        file("a" + h + ".ini", "[a" + latin + "]\nk" + latin + "=v" + latin + ";c" + latin + "\n[b]\nk=v" +
                                   latin + ";c" + latin + "\n[c]\n");
    const std::string style = file("s.ini", "[t]\nFont=A" + latin + "\nSize=1\nStyle=x" + latin +
                                                "\nJustification=0\nColor=1\n[p]\nL" + latin + ".Width=1\nL" +
                                                latin + ".Height=1\nL" + latin + ".PosX=1\n");
    const std::string twice = file("2.ini", "[a" + latin + "]\n[a" + latin + "]\n");
    const std::string sealed = file("s" + h, "\x00\x00\x00\x00");
    const std::string col = file("t" + h + ".col", "[ColorTable]\nEntry(0)=" + latin + ",1,2,3\n");
    const std::string goodCol = file("g.col", "[ColorTable]\nEntry(0)=1,1,2,3\n");
    const std::string cpt = file("c.cpt", "0 red 1 blue\n");
    const std::string badCpt = file("b.cpt", "0 " + h + " 1 blue\n");
    const std::string csv = file("c.csv", "x,y,n" + h + "\r\n1,2," + h + "\r\n3,4,\x9F\r\n");
    const std::string badCsv = file("b.csv", "x,y\n1," + h + "\n");
    const std::string layout = file("l" + h + ".txt", "%n" + h + "% text " + h + "\r\n");
    const std::string latinLayout = file("l2.txt", "%plot name% \xE9 " + latin + "\n");
    const std::string cdf = file("o" + h + ".cdf", "[Contour(0)]\nLevel=1\nColor=0\nL" + latin + "=2\n");
    const std::string none = at + "none" + h;
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"settings", "show", ini},
             {"settings", "show", ini, "--json"},
             {"settings", "show", ini, "no" + h},
             {"settings", "show", ini, "b", "more" + h},
             {"settings", "show", none},
             {"settings", "show", twice},
             {"settings", "get", ini, "b", "k"},
             {"settings", "get", ini, "b", "k", "--comment"},
             {"settings", "get", ini, "b", "k", "--json"},
             {"settings", "get", ini, "b", "no" + h},
             {"settings", "set", ini, "b", "k2", "v" + h},
             {"settings", "set", ini, "b", "k", "w"},
             {"settings", "set", at + "none/" + h, "b", "k", "w", "--create"},
             {"settings", "set", ini, "b", "k", "w\n", "--no" + h},
             {"settings", "check", ini, none},
             {"settings", "check", ini, none, "--json"},
             {"settings", "seal", ini, none},
             {"settings", "seal", ini, none, "--json"},
             {"settings", "rename", ini, "b", "b" + h},
             {"settings", "rename", ini, "c", "d", "--key", "no" + h},
             {"settings", "remove", ini, "b" + h},
             {"settings", "remove", ini, "a" + h, "k" + h},
             {"crc", "check", sealed, none},
             {"crc", "seal", sealed},
             {"crc", "print", sealed, "--json"},
             {"colors", "nearest", h},
             {"colors", "palette", "--picture", at + h},
             {"colors", "palette", "--picture", at + "none" + h + "/a.svg"},
             {"colors", "table", col},
             {"colors", "table", none},
             {"colors", "table", none, "--picture", h + ".svg"},
             {"colors", "import", cpt, at + "i" + h + ".col"},
             {"colors", "import", badCpt, at + "i.col"},
             {"style", "show", style, "t"},
             {"style", "show", style, "t", "--json"},
             {"style", "show", style, "p"},
             {"style", "show", style, h},
             {"style", "line", "A" + h + ",1,0,0,0"},
             {"style", "line", "A", "--as", h},
             {"units", "convert", "--from", h, "--to", "m", "1"},
             {"units", "convert", "--from", "m", "--to", "m", h},
             {"units", "convert", "--from", "m", "--to", "m", "--column", h, "--input", csv},
             {"units", "convert", "--from", "m", "--to", "m", "--column", "x", "--input", csv},
             {"transform", csv, "--translate", "1,1"},
             {"transform", badCsv, "--translate", "1,1"},
             {"transform", csv, "--translate", h},
             {"transform", none, "--translate", "1,1"},
             {"keywords", "list", layout},
             {"keywords", "list", layout, "--json"},
             {"keywords", "fill", layout},
             {"keywords", "fill", layout, "--value", "n" + h + "=" + h},
             {"keywords", "fill", layout, "--value", h},
             {"keywords", "fill", latinLayout},
             {"keywords", "fill", layout, "--project", ini, "--section", h},
             {"contours", "list", none},
             {"contours", "check", cdf},
             {"contours", "check", cdf, "--json"},
             {"contours", "range", at + "r.cdf", "--from", "0", "--to", "2", "--step", "1", "--color", h},
             {"contours", "from-table", at + "none/" + h, goodCol},
             {"contours", "from-table", at + "f.cdf", col}}) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const std::string shown = OnTerminal(arguments);
        EXPECT_EQ("", FirstControl(shown)) << shown;
        EXPECT_THAT(shown, AnyOf(HasSubstr("\\x7F"), HasSubstr("\\u007f"))); // it was shown, and spelt out
        EXPECT_THAT(shown, AnyOf(HasSubstr("\\x9F"), HasSubstr("\\u009f")));
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

TEST(Terminal, ALayoutOfOneByteACharacterIsReadable) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.txt", "K\xFCste\r\n");
    EXPECT_EQ("K\u00FCste\r\r\n", OnTerminal({"keywords", "fill", ToUtf8(folder.File(L"a.txt"))}));
}

TEST(Terminal, GetsNoBytesThatItCannotShow) {
    for (const char* format : {"png", "pdf"})
        EXPECT_THAT(OnTerminal({"colors", "palette", "--picture", "-", "--format", format}),
                    HasSubstr("standard output is a terminal, which shows no "));
    EXPECT_THAT(OnTerminal({"crc", "seal", "-"}), HasSubstr("standard output is a terminal"));
    EXPECT_THAT(OnTerminal({"colors", "palette", "--picture", "-"}), HasSubstr("</svg>"));
}

TEST(Terminal, ALongFileHasAProgressBar) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "big\x1b[31m", "x");
    // Sparse, and minutes of work: what the bar waits for is over long before, on any machine.
    std::filesystem::resize_file(folder.Path() / "big\x1b[31m", std::uintmax_t{256} << 30);
    const std::string shown = OnTerminal({"crc", "print", ToUtf8(folder.File(L"big\x1b[31m"))}, "%");
    EXPECT_THAT(shown, HasSubstr("big\\x1B[31m ["));
    EXPECT_THAT(shown, Not(HasSubstr("\x1b[31m")));
}

TEST(Terminal, ShowsNoColoursToWhoWantsNone) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.ini", "[a]\nk=v ;c\n");
    const std::string path = ToUtf8(folder.File(L"a.ini"));
    const std::vector<std::string> show = {"settings", "show", path};
    const std::string plain = "[a]\r\nk = v ;c\r\n";
    EXPECT_NE(plain, OnTerminal(show));
    EXPECT_EQ(plain, OnTerminal(show, {}, "NO_COLOR=1"));
    EXPECT_NE(plain, OnTerminal(show, {}, "NO_COLOR="));
    EXPECT_EQ(plain, OnTerminal(show, {}, "TERM=dumb"));
    EXPECT_EQ(plain, OnTerminal({"--no-color", "settings", "show", path}));
    EXPECT_EQ(plain, OnTerminal({"settings", "show", path, "--no-color"}));
    EXPECT_THAT(OnTerminal({"--no-color", "colors", "nearest", "#102030"}), Not(HasSubstr("\x1b")));
}

TEST(Terminal, ADumbOneAndAQuietUserGetNoProgressBar) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "big", "x");
    // Sparse, and work for longer than a bar waits, on any machine of today.
    std::filesystem::resize_file(folder.Path() / "big", std::uintmax_t{2} << 30);
    const std::string path = ToUtf8(folder.File(L"big"));
    for (const std::string& shown : {OnTerminal({"crc", "print", path}, {}, "TERM=dumb"),
                                     OnTerminal({"crc", "print", path, "--quiet"})}) {
        EXPECT_THAT(shown, HasSubstr("computed"));
        EXPECT_THAT(shown, Not(HasSubstr("\x1b[K"))); // by which a bar is drawn anew
    }
}
