// SPDX-License-Identifier: MIT
// Controls that a host has placed into a window of its own, on a display of its own.

#include "Framework/windows/Button.h"
#include "Framework/windows/ComboBox.h"
#include "tests/support/EventLoop.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>
#include <windows.h>

namespace {

using ::testing::ElementsAre;

std::vector<std::string> s_told; // in that order

class HostWindow {
public:
    HostWindow()
        : m_handle(CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                   nullptr, nullptr, nullptr, nullptr)) {
        SetWindowLongPtrW(m_handle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
        s_told.clear();
    }
    ~HostWindow() { DestroyWindow(m_handle); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND Place(const CWnd& control, LONG_PTR number) const {
        const auto handle = static_cast<HWND>(control.NativeHandle());
        SetWindowLongPtrW(handle, GWLP_ID, number);
        SetParent(handle, m_handle);
        SetWindowPos(handle, HWND_BOTTOM, 10, 10, 200, 100, SWP_SHOWWINDOW);
        return handle;
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_COMMAND && (HIWORD(wParam) == CBN_SELCHANGE || LOWORD(wParam) == 7))
            s_told.push_back("host " + std::to_string(LOWORD(wParam)));
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND m_handle;
};

struct Choice : CComboBox {
    void OnChosen() { s_told.push_back("class " + std::to_string(GetCurSel())); }
    const AFX_MSGMAP* GetMessageMap() const override {
        static const AFX_MSGMAP_ENTRY entries[] = {
            {WM_REFLECTED_COMMAND, CBN_SELCHANGE, 0, Handler(&Choice::OnChosen)}, {}};
        static const AFX_MSGMAP map = {&CComboBox::GetThisMessageMap, entries};
        return &map;
    }
};

struct Press : CButton {
    void OnPressed() { s_told.emplace_back("class"); }
    const AFX_MSGMAP* GetMessageMap() const override {
        static const AFX_MSGMAP_ENTRY entries[] = {
            {WM_REFLECTED_COMMAND, BN_CLICKED, 0, Handler(&Press::OnPressed)}, {}};
        static const AFX_MSGMAP map = {&CButton::GetThisMessageMap, entries};
        return &map;
    }
};

} // namespace

TEST(Control_HostWindow, AChoiceIsToldToTheClassAndThenToTheHost) {
    const EventLoop loop;
    const HostWindow host;
    Choice choice;
    ASSERT_TRUE(choice.Create());
    for (const wchar_t* const text : {L"a", L"b", L"c"}) choice.AddString(text);
    const HWND box = host.Place(choice, 6);
    SendMessageW(box, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_THAT(s_told, ElementsAre("class 0", "host 6"));

    // As well when it is moved to another window.
    {
        const HostWindow other;
        other.Place(choice, 9);
        SendMessageW(box, WM_KEYDOWN, VK_DOWN, 0);
        EXPECT_THAT(s_told, ElementsAre("class 1", "host 9"));
    }
    EXPECT_EQ(nullptr, choice.NativeHandle()); // it went with that window
}

TEST(Control_HostWindow, AClickIsToldToTheClassAndThenToTheHost) {
    const EventLoop loop;
    const HostWindow host;
    Press press;
    ASSERT_TRUE(press.Create(L"Press"));
    SendMessageW(host.Place(press, 7), BM_CLICK, 0, 0);
    EXPECT_THAT(s_told, ElementsAre("class", "host 7"));
}

TEST(Control_HostWindow, AChoiceBeforeAHostHasItIsToldToTheClass) {
    const EventLoop loop;
    s_told.clear();
    Choice choice;
    ASSERT_TRUE(choice.Create());
    choice.AddString(L"a");
    SendMessageW(static_cast<HWND>(choice.NativeHandle()), WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_THAT(s_told, ElementsAre("class 0"));
}

TEST(Control_HostWindow, NothingStaysOfAListThatHadAHost) {
    const EventLoop loop;
    const HostWindow host;
    HWND before = nullptr;
    {
        CComboBox box;
        ASSERT_TRUE(box.Create());
        before = GetAncestor(static_cast<HWND>(box.NativeHandle()), GA_PARENT);
        ASSERT_TRUE(IsWindow(before));
        host.Place(box, 6);
        EXPECT_TRUE(IsWindow(before)); // the list still tells it
    }
    EXPECT_FALSE(IsWindow(before));
}
