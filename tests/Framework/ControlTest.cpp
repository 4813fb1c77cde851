// SPDX-License-Identifier: MIT
#include "Framework/windows/Control.h"

#include "Framework/windows/Button.h"
#include "Framework/windows/ComboBox.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"
#include "tests/support/RecordingWindow.h"

#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>

using ::testing::ElementsAre;

namespace {

// A button that is told of its own clicks.
struct ReflectingButton : CButton {
    std::function<void()> onClicked;

    const AFX_MSGMAP* GetMessageMap() const override {
        static const AFX_MSGMAP_ENTRY entries[] = {
            {WM_REFLECTED_COMMAND, BN_CLICKED, 0, Handler(&ReflectingButton::Clicked)}, {}};
        static const AFX_MSGMAP map = {&CButton::GetThisMessageMap, entries};
        return &map;
    }

private:
    void Clicked() {
        const auto call = onClicked; // it may delete this button
        if (call) call();
    }
};

// A host's window with a handler for one control.
struct Host : CWnd {
    int clicks = 0;

    const AFX_MSGMAP* GetMessageMap() const override {
        static const AFX_MSGMAP_ENTRY entries[] = {{WM_COMMAND, BN_CLICKED, 5, Handler(&Host::Clicked)}, {}};
        static const AFX_MSGMAP map = {&CWnd::GetThisMessageMap, entries};
        return &map;
    }

private:
    void Clicked() { ++clicks; }
};

class Control : public DialogTest {
protected:
    // A dialog with the button, which is clicked once.
    void Click(CButton& button) {
        TestDialog dialog({Button(PRESS, L"Press")});
        dialog.onPress = [&] { ++m_toldToDialog; };
        dialog.onInit = [&] { dialog.Attach(PRESS, button); };
        m_driver.Then([&](OpenDialog& open) {
            open.Click(L"Press");
            dialog.EndDialog(IDOK);
        });
        dialog.DoModal();
    }

    int m_toldToDialog = 0;
};

} // namespace

TEST_F(Control, IsToldItselfFirstAndThenNobodyElse) {
    ReflectingButton button;
    int clicks = 0;
    button.onClicked = [&] { ++clicks; };
    Click(button);
    EXPECT_EQ(1, clicks);
    EXPECT_EQ(0, m_toldToDialog);
    CButton plain;
    Click(plain);
    EXPECT_EQ(1, m_toldToDialog);
}

TEST_F(Control, MayDeleteItselfWhenItIsTold) {
    auto button = std::make_unique<ReflectingButton>();
    button->onClicked = [&] { button.reset(); };
    Click(*button);
    EXPECT_EQ(nullptr, button);
    EXPECT_EQ(0, m_toldToDialog);
}

TEST_F(Control, AnExceptionOfItsHandlerEndsThere) {
    ReflectingButton button;
    int clicks = 0;
    button.onClicked = [&] {
        ++clicks;
        throw std::runtime_error("of a handler");
    };
    Click(button);
    EXPECT_EQ(1, clicks);
    EXPECT_EQ(0, m_toldToDialog);
}

TEST_F(Control, StandsAloneOrInAWindowOfTheHost) {
    CButton alone;
    EXPECT_EQ(nullptr, alone.GetParent());
    ASSERT_TRUE(alone.Create(L"&Alone"));
    EXPECT_NE(nullptr, alone.NativeHandle());
    EXPECT_EQ(nullptr, alone.GetParent());
    EXPECT_EQ(0U, alone.GetDlgCtrlID());
    EXPECT_EQ(L"&Alone", alone.GetWindowTextW().String());

    Host host;
    ASSERT_TRUE(host.CWnd::Create());
    CButton child;
    ASSERT_TRUE(child.Create(L"Child", &host, 5));
    EXPECT_EQ(&host, child.GetParent());
    EXPECT_EQ(5U, child.GetDlgCtrlID());
    void* const handle = child.NativeHandle();
    EXPECT_TRUE(child.Create(L"Again", nullptr, 6)); // it is there already
    EXPECT_EQ(handle, child.NativeHandle());
}

TEST_F(Control, GoesWithItsParentsWindow) {
    auto host = std::make_unique<Host>();
    ASSERT_TRUE(host->CWnd::Create());
    CButton button;
    CComboBox box;
    ASSERT_TRUE(button.Create(L"Child", host.get(), 5));
    ASSERT_TRUE(box.Create(0, host.get(), 6));
    host->DestroyWindow();
    EXPECT_EQ(nullptr, button.NativeHandle());
    EXPECT_EQ(nullptr, box.NativeHandle());
    EXPECT_EQ(-1, box.AddString(L"nowhere"));
    EXPECT_EQ(L"", button.GetWindowTextW().String());
    EXPECT_EQ(host.get(), button.GetParent());
    host.reset();
    EXPECT_EQ(nullptr, button.GetParent());
    ASSERT_TRUE(button.Create(L"Alone")); // once more
    EXPECT_EQ(nullptr, button.GetParent());
}

TEST_F(Control, IsEnabledWhileItHasAWindow) {
    CButton button;
    ASSERT_TRUE(button.Create(L"Button"));
    EXPECT_TRUE(button.IsWindowEnabled());
    button.EnableWindow(false);
    EXPECT_FALSE(button.IsWindowEnabled());
    button.EnableWindow();
    EXPECT_TRUE(button.IsWindowEnabled());
    button.DestroyWindow();
    EXPECT_FALSE(button.IsWindowEnabled());
    button.EnableWindow();
    button.SetFocus();
    button.Invalidate();
}

TEST_F(Control, ChecksAreOfCheckBoxesAlone) {
    TestDialog dialog({{DialogItem::CHECK_BOX, CHECK, L"Check"}, Button(PRESS, L"Press")});
    CButton box, press, none;
    dialog.onInit = [&] {
        dialog.Attach(CHECK, box);
        dialog.Attach(PRESS, press);
    };
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_FALSE(box.GetCheck());
        box.SetCheck(true);
        EXPECT_TRUE(open.IsChecked(L"Check"));
        open.Click(L"Check");
        EXPECT_FALSE(box.GetCheck());
        press.SetCheck(true);
        EXPECT_FALSE(press.GetCheck());
        none.SetCheck(true);
        EXPECT_FALSE(none.GetCheck());
        dialog.EndDialog(IDOK);
    });
    dialog.DoModal();
}
