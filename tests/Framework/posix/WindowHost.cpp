// SPDX-License-Identifier: MIT
// A host that makes a window, or says why not. It finds the libraries in the folder lib beside itself.

#include "Framework/windows/Wnd.h"
#include "VelmBase/WideString.h"

#include <iostream>

int main() {
    CWnd window;
    const ErrorString made = window.Create();
    std::cout << (made ? "made" : ToUtf8(made.Text()));
    const bool isLeftAlone = !window.NativeHandle() && !window.PostMessage(2029);
    return made || isLeftAlone ? 0 : 1;
}
