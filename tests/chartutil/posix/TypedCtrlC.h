// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Program.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <vector>

/// Becomes chartutil, with signals as a shell starts a program.
[[noreturn]] inline void BecomeChartutil(const std::vector<std::string>& arguments,
                                         const std::string& program, bool ignoresInterrupt = false) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
    if (ignoresInterrupt) std::signal(SIGINT, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execv(program.c_str(), words.data());
    _exit(127);
}

/// For a process whose standard input is a terminal of its own. That drops what it has not shown yet when
/// Ctrl-C is typed, after it has told the program, which may have written its last words by then.
inline void KeepOutputAtCtrlC() {
    termios modes = {};
    tcgetattr(STDIN_FILENO, &modes);
    modes.c_lflag |= NOFLSH;
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}

/// chartutil on a terminal of its own until it shows `until`; then somebody types Ctrl-C. `input` is a file
/// that it reads instead of the terminal, if given.
struct TypedCtrlC {
    std::string shown;
    int signal = 0;

    TypedCtrlC(const std::vector<std::string>& arguments, std::string_view until,
               const std::string& input = {}) {
        const std::string program = ChartutilPath();
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            setenv("TERM", "xterm", 1); // one that shows a bar
            KeepOutputAtCtrlC();
            if (!input.empty()) dup2(open(input.c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
            BecomeChartutil(arguments, program);
        }
        char bytes[4096];
        bool wasTyped = false;
        for (ssize_t got; (got = read(terminal, bytes, sizeof bytes)) > 0;) {
            shown.append(bytes, static_cast<std::size_t>(got));
            if (wasTyped || shown.find(until) == std::string::npos) continue;
            wasTyped = true;
            EXPECT_EQ(1, write(terminal, "\x03", 1));
        }
        close(terminal);
        int status = 0;
        waitpid(child, &status, 0);
        signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
};
