#pragma once

#include <termios.h>
#include <unistd.h>

/// For a process whose standard input is a terminal of its own. That drops what it has not shown yet when
/// Ctrl-C is typed, after it has told the program, which may have written its last words by then.
inline void KeepOutputAtCtrlC() {
    termios modes = {};
    tcgetattr(STDIN_FILENO, &modes);
    modes.c_lflag |= NOFLSH;
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}
