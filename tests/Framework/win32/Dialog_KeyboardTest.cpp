// SPDX-License-Identifier: MIT
// Who has the keyboard and the mouse where the system's own controls would lose it.

#include "Framework/windows/Button.h"
#include "Framework/windows/ColorDialog.h"
#include "Framework/windows/Edit.h"
#include "Framework/windows/ListCtrl.h"
#include "Framework/windows/SpinButtonCtrl.h"
#include "tests/Framework/TestDialog.h"

#include <gmock/gmock.h>
#include <memory>
#include <windows.h>

using ::testing::ElementsAre;

namespace {

using Dialog_Keyboard = DialogTest;

HWND WindowOf(const CWnd& window) { return static_cast<HWND>(window.NativeHandle()); }

/// A window of a host's own with a field, which has the keyboard.
class HostWithField {
public:
    HostWithField()
        : m_window(CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 600,
                                   400, nullptr, nullptr, nullptr, nullptr)),
          m_field(CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, m_window, nullptr,
                                  nullptr, nullptr)) {
        SetActiveWindow(m_window);
        ::SetFocus(m_field);
    }
    ~HostWithField() { DestroyWindow(m_window); }
    HostWithField(const HostWithField&) = delete;
    HostWithField& operator=(const HostWithField&) = delete;

    HWND Window() const { return m_window; }
    HWND Field() const { return m_field; }

private:
    const HWND m_window;
    const HWND m_field;
};

/// A button of a host's that counts how often it is pressed.
class CountingButton : public CButton {
public:
    int clicks = 0;

    const AFX_MSGMAP* GetMessageMap() const override {
        static const AFX_MSGMAP_ENTRY entries[] = {
            {WM_REFLECTED_COMMAND, BN_CLICKED, 0, Handler(&CountingButton::OnClicked)}, {}};
        static const AFX_MSGMAP map = {&CButton::GetThisMessageMap, entries};
        return &map;
    }

private:
    void OnClicked() { ++clicks; }
};

} // namespace

TEST_F(Dialog_Keyboard, AListGoesToTheRowThatBeginsWithWhatIsTyped) {
    TestDialog dialog({{DialogItem::LIST_VIEW, LIST, L"Rows"}});
    CListCtrl list;
    dialog.onInit = [&] {
        dialog.Attach(LIST, list);
        list.InsertColumn(0, L"Name", 100);
        for (const wchar_t* const name : {L"Anchor", L"Buoy", L"Cable", L"beacon"})
            list.InsertItem(list.GetItemCount(), name);
        list.SelectOnly(1);
    };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Rows");
        open.Type(L"c");
        EXPECT_THAT(open.SelectedRows(), ElementsAre(2));
        open.Key("Escape");
    });
    dialog.DoModal();
}

TEST_F(Dialog_Keyboard, AListStaysWhereNoRowBeginsWithWhatIsTyped) {
    TestDialog dialog({{DialogItem::LIST_VIEW, LIST, L"Rows"}});
    CListCtrl list;
    dialog.onInit = [&] {
        dialog.Attach(LIST, list);
        list.InsertColumn(0, L"Name", 100);
        for (const wchar_t* const name : {L"Anchor", L"Buoy"}) list.InsertItem(list.GetItemCount(), name);
        list.SelectOnly(1);
    };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Rows");
        open.Type(L"x");
        EXPECT_THAT(open.SelectedRows(), ElementsAre(1));
        open.Key("Escape");
    });
    dialog.DoModal();
}

TEST_F(Dialog_Keyboard, AButtonThatIsDisabledHandsOnTheKeyboard) {
    TestDialog dialog({Button(PRESS, L"Press")});
    dialog.onPress = [&] { dialog.GetDlgItem(PRESS)->EnableWindow(false); };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Press");
        open.Key("Space");
        EXPECT_TRUE(open.HasFocus(L"OK"));
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(Dialog_Keyboard, EscapeClosesWithoutTheClassThatStoodForCancel) {
    TestDialog dialog;
    auto cancel = std::make_unique<CButton>();
    dialog.onInit = [&] {
        dialog.Attach(IDCANCEL, *cancel);
        cancel.reset();
    };
    m_driver.Then([&](OpenDialog& open) { open.Key("Escape"); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(Dialog_Keyboard, EnterPressesTheButtonThatAHandlerGaveTheKeyboard) {
    TestDialog dialog({Form({Label(L"Name:"), {DialogItem::EDIT, FIELD}}), Button(PRESS, L"Press")});
    int presses = 0;
    dialog.onFieldChange = [&] { dialog.GetDlgItem(PRESS)->SetFocus(); };
    dialog.onPress = [&] { ++presses; };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Name");
        open.Type(L"a");
        open.Key("Enter");
        EXPECT_EQ(1, presses);
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(Dialog_Keyboard, ArrowsGoOnSteppingWhileTheMouseIsHeldDown) {
    TestDialog dialog({Form({Label(L"Width:"), {DialogItem::SPIN_EDIT, WIDTH}})});
    int steps = 0;
    dialog.onStep = [&] { ++steps; };
    m_driver.Then([&](OpenDialog& open) {
        const HWND arrows = WindowOf(*dialog.GetDlgItem(WIDTH_ARROWS));
        POINT up = {3, 3};
        ClientToScreen(arrows, &up);
        SetCursorPos(up.x, up.y);
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        EXPECT_TRUE(m_loop.RunUntil([&] { return steps > 3; }));
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        open.Key("Escape");
    });
    dialog.DoModal();
}

TEST_F(Dialog_Keyboard, DisabledArrowsTakeTheirFieldAlong) {
    TestDialog dialog({Form({Label(L"Width:"), {DialogItem::SPIN_EDIT, WIDTH}})});
    dialog.onInit = [&] { dialog.GetDlgItem(WIDTH_ARROWS)->EnableWindow(false); };
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_FALSE(dialog.GetDlgItem(WIDTH)->IsWindowEnabled());
        dialog.GetDlgItem(WIDTH_ARROWS)->EnableWindow();
        EXPECT_TRUE(dialog.GetDlgItem(WIDTH)->IsWindowEnabled());
        open.Key("Escape");
    });
    dialog.DoModal();
}

TEST_F(Dialog_Keyboard, ADoubleClickOnADrawnButtonIsTwoClicks) {
    const HostWithField host;
    CountingButton button;
    ASSERT_TRUE(button.Create(L"Count"));
    const HWND window = WindowOf(button);
    SetParent(window, host.Window());
    for (const UINT down : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
        SendMessageW(window, down, MK_LBUTTON, MAKELPARAM(5, 5));
        SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    }
    EXPECT_EQ(2, button.clicks);
}

TEST_F(Dialog_Keyboard, GoesBackToTheHostsControlThatHadIt) {
    const HostWithField host;
    TestDialog dialog;
    m_driver.Then([&](OpenDialog& open) { open.Key("Escape"); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_EQ(host.Field(), GetFocus());
    m_driver.Then([&](OpenDialog& open) { open.Accept(); });
    EXPECT_EQ(IDOK, CColorDialog().DoModal());
    EXPECT_EQ(host.Field(), GetFocus());
}
