// SPDX-License-Identifier: MIT
// The header of Windows after the library's: it makes macros of names that the library has as well.

#include "tests/support/EventLoop.h"
#include "tests/support/RecordingWindow.h"

#include <windows.h>

#include <gtest/gtest.h>

#ifndef PostMessage
#error "nothing is tested: the header of Windows makes no macro of this name"
#endif

TEST(Wnd_HostHeaders, NamesAreTheSystemsAndTheLibrarys) {
    EventLoop loop;
    RecordingWindow window;
    EXPECT_TRUE(window.Create());
    EXPECT_TRUE(window.PostMessage(WM_USER + 1005, 1, 2)); // either of the next two
    EXPECT_TRUE(window.PostMessageA(WM_USER + 1005, 1, 2));
    EXPECT_TRUE(window.PostMessageW(WM_USER + 1005, 1, 2));
    EXPECT_TRUE(PostMessage(static_cast<HWND>(window.NativeHandle()), WM_USER, 5, 6));
    EXPECT_TRUE(loop.RunUntil([&] { return window.Count() >= 4; }));
    EXPECT_EQ(4, window.Count());
}
