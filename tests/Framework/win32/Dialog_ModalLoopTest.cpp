// SPDX-License-Identifier: MIT
// What a dialog does with the windows and the messages of a program that has its own.

#include "Framework/windows/ColorDialog.h"
#include "tests/Framework/TestDialog.h"

#include <memory>
#include <windows.h>

namespace {

/// A window of a host's own, in the middle of the screen.
class HostWindow {
public:
    HostWindow()
        : m_handle(CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 600,
                                   400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {
        SetActiveWindow(m_handle);
    }
    ~HostWindow() { DestroyWindow(m_handle); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND Handle() const { return m_handle; }
    bool IsEnabled() const { return IsWindowEnabled(m_handle) != 0; }

private:
    const HWND m_handle;
};

HWND WindowOf(const CWnd& window) { return static_cast<HWND>(window.NativeHandle()); }

using Dialog_ModalLoop = DialogTest;

} // namespace

TEST_F(Dialog_ModalLoop, DisablesTheHostsWindowAndGivesItTheKeyboardBack) {
    const HostWindow host;
    TestDialog dialog;
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_FALSE(host.IsEnabled());
        EXPECT_EQ(host.Handle(), GetWindow(WindowOf(dialog), GW_OWNER));
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_TRUE(host.IsEnabled());
    EXPECT_EQ(host.Handle(), GetActiveWindow());
}

TEST_F(Dialog_ModalLoop, LeavesDisabledWindowsDisabled) {
    const HostWindow host;
    const HostWindow other;
    EnableWindow(other.Handle(), FALSE);
    TestDialog dialog;
    m_driver.Then([&](OpenDialog& open) { open.Key("Escape"); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_TRUE(host.IsEnabled());
    EXPECT_FALSE(other.IsEnabled());
}

TEST_F(Dialog_ModalLoop, DisablesEveryOtherWindowForTheSystemsDialogsToo) {
    const HostWindow host;
    const HostWindow other;
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_FALSE(host.IsEnabled());
        EXPECT_FALSE(other.IsEnabled());
        open.Accept();
    });
    EXPECT_EQ(IDOK, CColorDialog().DoModal());
    EXPECT_TRUE(host.IsEnabled());
    EXPECT_TRUE(other.IsEnabled());
}

TEST_F(Dialog_ModalLoop, HandsOnThatTheProgramIsToEnd) {
    TestDialog dialog;
    dialog.onInit = [] { PostQuitMessage(7); };
    EXPECT_EQ(IDCANCEL, dialog.DoModal()); // before anybody could use it
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(7u, message.wParam);
}

TEST_F(Dialog_ModalLoop, HandlesTheHostsMessages) {
    static int timers;
    timers = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) { ++timers; });
    TestDialog dialog;
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_TRUE(m_loop.RunUntil([] { return timers > 2; }));
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    KillTimer(nullptr, timer);
}

TEST_F(Dialog_ModalLoop, LeavesNoWindowOfADialogThatAHandlerDeletes) {
    auto dialog = std::make_unique<TestDialog>(std::vector<DialogItem>{Button(PRESS, L"Press")});
    HWND window = nullptr;
    dialog->onPress = [&] {
        window = WindowOf(*dialog);
        dialog.reset();
        EXPECT_TRUE(IsWindow(window)); // the system is still at work in it
        EXPECT_FALSE(IsWindowVisible(window));
    };
    m_driver.Then([](OpenDialog& open) { open.Click(L"Press"); });
    EXPECT_EQ(IDCANCEL, dialog->DoModal());
    ASSERT_NE(nullptr, window);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Dialog_ModalLoop, IsOnTheScreenWhereverItsHostIs) {
    const HostWindow host;
    SetWindowPos(host.Handle(), nullptr, 20'000, -5'000, 600, 400, SWP_NOZORDER);
    TestDialog dialog;
    m_driver.Then([&](OpenDialog& open) {
        RECT place = {};
        GetWindowRect(WindowOf(dialog), &place);
        const POINT corners[] = {{place.left, place.top}, {place.right - 1, place.bottom - 1}};
        for (const POINT& corner : corners) EXPECT_TRUE(MonitorFromPoint(corner, MONITOR_DEFAULTTONULL));
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}
