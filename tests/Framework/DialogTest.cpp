// SPDX-License-Identifier: MIT
#include "Framework/windows/Dialog.h"

#include "Framework/windows/Button.h"
#include "Framework/windows/ColorWell.h"
#include "Framework/windows/ComboBox.h"
#include "Framework/windows/Edit.h"
#include "Framework/windows/ListCtrl.h"
#include "Framework/windows/SpinButtonCtrl.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"
#include "tests/support/RecordingWindow.h"

#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(DialogTest, ReturnsWhatClosedIt) {
    struct Row {
        std::function<void(OpenDialog&)> close;
        int result;
    };
    for (const Row& row : {Row{[](OpenDialog& open) { open.Click(L"OK"); }, IDOK},
                           Row{[](OpenDialog& open) { open.Click(L"Cancel"); }, IDCANCEL},
                           Row{[](OpenDialog& open) { open.Key("Enter"); }, IDOK},
                           Row{[](OpenDialog& open) { open.Key("Escape"); }, IDCANCEL}}) {
        TestDialog dialog;
        EXPECT_EQ(nullptr, dialog.NativeHandle());
        m_driver.Then([&](OpenDialog& open) {
            EXPECT_EQ(L"Test", open.Title());
            EXPECT_NE(nullptr, dialog.NativeHandle());
            row.close(open);
        });
        ErrorString whyNot;
        EXPECT_EQ(row.result, dialog.DoModal(&whyNot));
        EXPECT_TRUE(whyNot);
        EXPECT_EQ(nullptr, dialog.NativeHandle());
    }
}

TEST_F(DialogTest, IsShownAsOftenAsOneWants) {
    TestDialog dialog({Form({Label(L"Name:"), {DialogItem::EDIT, FIELD}})});
    for (const wchar_t* const text : {L"one", L"two"}) {
        m_driver.Then([&](OpenDialog& open) {
            EXPECT_EQ(L"", open.Text(L"Name")); // a new one each time
            open.SetText(L"Name", text);
            EXPECT_EQ(text, dialog.GetDlgItem(FIELD)->GetWindowTextW().String());
            open.Click(L"OK");
        });
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(nullptr, dialog.GetDlgItem(FIELD));
    }
}

TEST_F(DialogTest, IsNotShownTwiceAtATime) {
    TestDialog dialog;
    m_driver.Then([&](OpenDialog& open) {
        ErrorString whyNot;
        EXPECT_EQ(-1, dialog.DoModal(&whyNot));
        EXPECT_EQ(L"The dialog is shown already", whyNot.Text());
        EXPECT_EQ(-1, dialog.DoModal());
        open.Click(L"OK");
    });
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST_F(DialogTest, ReplacesAWindowThatIsNoDialog) {
    TestDialog dialog;
    ASSERT_TRUE(static_cast<CWnd&>(dialog).Create());
    m_driver.Then([](OpenDialog& open) { open.Click(L"OK"); });
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST_F(DialogTest, HandlersAreFoundInTheClassBeforeItsBase) {
    struct Derived : TestDialog {
        Derived() : TestDialog({Button(PRESS, L"Press"), Button(CHECK, L"Base")}) {}
        int pressed = 0;
        void Pressed() { ++pressed; }
        const AFX_MSGMAP* GetMessageMap() const override {
            static const AFX_MSGMAP_ENTRY entries[] = {
                {WM_COMMAND, BN_CLICKED, PRESS, Handler(&Derived::Pressed)}, {}};
            static const AFX_MSGMAP map = {&TestDialog::GetThisMessageMap, entries};
            return &map;
        }
    };
    Derived dialog;
    dialog.onPress = [] { ADD_FAILURE() << "the derived class has an entry of its own"; };
    m_driver.Then([&](OpenDialog& open) {
        open.Click(L"Press");
        open.Click(L"Base"); // no entry: nothing happens
        EXPECT_EQ(1, dialog.pressed);
        open.Click(L"OK"); // the base's
    });
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST_F(DialogTest, OKAndCancelMayKeepItOpen) {
    TestDialog dialog;
    bool mayClose = false;
    int asked = 0;
    dialog.onOK = dialog.onCancel = [&] {
        ++asked;
        return mayClose;
    };
    m_driver.Then([&](OpenDialog& open) {
        open.Click(L"OK");
        open.Key("Escape");
        open.Click(L"Cancel");
        EXPECT_EQ(3, asked);
        mayClose = true;
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DialogTest, EnterPressesTheButtonWithTheKeyboardAndElseTheDefaultOne) {
    TestDialog dialog({Form({Label(L"Name:"), {DialogItem::EDIT, FIELD}}), Button(PRESS, L"&Add")});
    int pressed = 0;
    dialog.onPress = [&] { ++pressed; };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Add");
        open.Key("Enter");
        EXPECT_EQ(1, pressed);
        open.Focus(L"Name");
        open.Key("Enter");
    });
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(1, pressed);
}

TEST_F(DialogTest, TheFirstControlHasTheKeyboardAndTabGoesOnInOrder) {
    TestDialog dialog({{DialogItem::ROW,
                        0,
                        {},
                        {Form({Label(L"&Name:"),
                               {DialogItem::EDIT, FIELD},
                               Label(L"&Width:"),
                               {DialogItem::SPIN_EDIT, WIDTH},
                               Label(L"&Style:"),
                               {DialogItem::DROP_DOWN_LIST, CHOICE},
                               Label(L"S&how:"),
                               {DialogItem::CHECK_BOX, CHECK}}),
                         {DialogItem::GROUP, 0, L"Group", {Button(PRESS, L"&Press")}}}},
                       {DialogItem::LIST_VIEW, LIST, L"Rows"}});
    m_driver.Then([&](OpenDialog& open) {
        for (const wchar_t* const control :
             {L"Name", L"Width", L"Style", L"Show", L"Press", L"Rows", L"OK", L"Cancel", L"Name"}) {
            EXPECT_TRUE(open.HasFocus(control)) << ::testing::PrintToString(control);
            open.Key("Tab");
        }
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DialogTest, AltAndALetterReachAControl) {
    TestDialog dialog({Form({Label(L"&Name:"),
                             {DialogItem::EDIT, FIELD},
                             Label(L"&Width:"),
                             {DialogItem::SPIN_EDIT, WIDTH},
                             Label(L"S&how:"),
                             {DialogItem::CHECK_BOX, CHECK}}),
                       Button(PRESS, L"&Press")});
    int pressed = 0;
    dialog.onPress = [&] { ++pressed; };
    m_driver.Then([&](OpenDialog& open) {
        open.Key("Alt+W");
        EXPECT_TRUE(open.HasFocus(L"Width"));
        open.Key("Alt+N");
        EXPECT_TRUE(open.HasFocus(L"Name"));
        open.Key("Alt+H");
        EXPECT_TRUE(open.IsChecked(L"Show"));
        open.Key("Alt+P");
        EXPECT_EQ(1, pressed);
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DialogTest, AControlThatIsGivenTheKeyboardAtFirstHasIt) {
    TestDialog dialog({Form({Label(L"Name:"), {DialogItem::EDIT, FIELD}}), Button(PRESS, L"Press")});
    dialog.onInit = [&] { dialog.GetDlgItem(PRESS)->SetFocus(); };
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_TRUE(open.HasFocus(L"Press"));
        open.Key("Escape");
    });
    dialog.DoModal();
}

TEST_F(DialogTest, MayEndBeforeItIsShown) {
    TestDialog dialog;
    dialog.onInit = [&] { dialog.EndDialog(7); };
    EXPECT_EQ(7, dialog.DoModal());
    dialog.onInit = nullptr;
    m_driver.Then([](OpenDialog& open) { open.Click(L"OK"); });
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST_F(DialogTest, EndOfOneThatIsNotShownDoesNothing) {
    TestDialog dialog;
    dialog.EndDialog(IDOK);
    EXPECT_TRUE(dialog.UpdateData());
    m_driver.Then([](OpenDialog& open) { open.Key("Escape"); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DialogTest, MessagesComeWhileItIsShown) {
    RecordingWindow window;
    ASSERT_TRUE(window.Create());
    TestDialog dialog;
    window.onMessage = [&](const Received&) { dialog.EndDialog(5); };
    m_driver.Then([&](OpenDialog&) {
        EXPECT_TRUE(window.PostMessage(2029));
        EXPECT_TRUE(m_loop.RunUntil([&] { return window.Count() > 0; }));
    });
    EXPECT_EQ(5, dialog.DoModal());
}

TEST_F(DialogTest, OpensDialogsOverItself) {
    TestDialog outer({Button(PRESS, L"Press")});
    int inner = 0;
    outer.onPress = [&] {
        TestDialog dialog({}, &outer);
        inner = dialog.DoModal();
    };
    m_driver
        .Then([&](OpenDialog& open) {
            open.Click(L"Press");
            EXPECT_EQ(IDOK, inner);
            open.Click(L"Cancel");
        })
        .Then([](OpenDialog& open) { open.Click(L"OK"); });
    EXPECT_EQ(IDCANCEL, outer.DoModal());
}

TEST_F(DialogTest, AnExceptionOfAHandlerEndsThere) {
    TestDialog dialog({Button(PRESS, L"Press")});
    int pressed = 0;
    dialog.onPress = [&] {
        ++pressed;
        throw std::runtime_error("of a handler");
    };
    m_driver.Then([&](OpenDialog& open) {
        open.Click(L"Press");
        open.Click(L"Press");
        EXPECT_EQ(2, pressed);
        open.Click(L"OK");
    });
    EXPECT_EQ(IDOK, dialog.DoModal());
}

TEST_F(DialogTest, AnExceptionAtTheBeginningComesOutAndLeavesItClosed) {
    TestDialog dialog;
    dialog.onInit = [] { throw std::runtime_error("at the beginning"); };
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_EQ(nullptr, dialog.NativeHandle());
    EXPECT_EQ(nullptr, dialog.GetDlgItem(IDOK));
    dialog.onInit = nullptr;
    m_driver.Then([](OpenDialog& open) { open.Click(L"OK"); });
    EXPECT_EQ(IDOK, dialog.DoModal());
}

// Its end.

namespace {

// A dialog with a control of the class's own, which goes before the dialog does.
struct WithMember : TestDialog {
    using TestDialog::TestDialog;
    CButton member;
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, PRESS, member); }
};

} // namespace

TEST_F(DialogTest, AHandlerMayDeleteIt) {
    for (const bool byKey : {false, true}) {
        auto dialog = std::make_unique<WithMember>(std::vector{Button(PRESS, L"Press")});
        dialog->onPress = [&] { dialog.reset(); };
        m_driver.Then([&](OpenDialog& open) {
            if (byKey) {
                open.Focus(L"Press");
                open.Key("Space");
            } else {
                open.Click(L"Press");
            }
            EXPECT_EQ(nullptr, dialog);
        });
        EXPECT_EQ(IDCANCEL, dialog->DoModal());
        m_loop.RunWhatWaits();
    }
}

TEST_F(DialogTest, AHandlerMayEndAndDeleteIt) {
    auto dialog = std::make_unique<TestDialog>();
    dialog->onOK = [&] {
        dialog->EndDialog(9);
        dialog.reset();
        return false;
    };
    m_driver.Then([&](OpenDialog& open) { open.Click(L"OK"); });
    EXPECT_EQ(9, dialog->DoModal());
}

TEST_F(DialogTest, ItMayBeDeletedBeforeItIsShown) {
    auto dialog = std::make_unique<TestDialog>();
    dialog->onInit = [&] { dialog.reset(); };
    EXPECT_EQ(IDCANCEL, dialog->DoModal());
}

TEST_F(DialogTest, AHandlerMayDestroyItsWindow) {
    TestDialog dialog({Button(PRESS, L"Press")});
    dialog.onPress = [&] {
        dialog.DestroyWindow();
        dialog.EndDialog(IDOK);
        CButton other;
        dialog.Attach(PRESS, other);
        dialog.GetDlgItem(PRESS)->SetWindowTextW(L"gone");
    };
    m_driver.Then([&](OpenDialog& open) { open.Click(L"Press"); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_EQ(nullptr, dialog.GetDlgItem(PRESS));
}

TEST_F(DialogTest, MayEndOrGoWhileAnotherIsOpenOverIt) {
    for (const bool goes : {false, true}) {
        auto outer = std::make_unique<TestDialog>(std::vector{Button(PRESS, L"Press")});
        int answer = 0;
        outer->onPress = [&] { answer = outer->MessageBoxW(L"Sure?", L"Question", MB_YESNO); };
        m_driver.Then([&](OpenDialog& open) { open.Click(L"Press"); }).Then([&](OpenDialog& question) {
            if (goes)
                outer.reset();
            else
                outer->EndDialog(3);
            question.Click(L"Yes");
        });
        EXPECT_EQ(goes ? IDCANCEL : 3, outer->DoModal());
        EXPECT_EQ(IDYES, answer);
        m_loop.RunWhatWaits();
    }
}

TEST_F(DialogTest, OneThatIsOverItMayDeleteIt) {
    auto outer = std::make_unique<WithMember>(std::vector{Button(PRESS, L"Press")});
    int inner = 0;
    outer->onPress = [&] {
        TestDialog dialog({Button(PRESS, L"Press")}, outer.get());
        dialog.onPress = [&] { outer.reset(); };
        inner = dialog.DoModal();
    };
    m_driver.Then([&](OpenDialog& open) { open.Click(L"Press"); }).Then([](OpenDialog& open) {
        open.Click(L"Press");
        open.Click(L"OK");
    });
    EXPECT_EQ(IDCANCEL, outer->DoModal());
    EXPECT_EQ(IDOK, inner);
    m_loop.RunWhatWaits();
}

// Its controls.

TEST_F(DialogTest, HasAControlForEachNumber) {
    TestDialog dialog({Form({Label(L"Name:"), {DialogItem::EDIT, FIELD}}),
                       {DialogItem::SPIN_EDIT, WIDTH},
                       Button(PRESS, L"Press"),
                       {DialogItem::CHECK_BOX, CHECK, L"Check"},
                       {DialogItem::DROP_DOWN_LIST, CHOICE},
                       {DialogItem::LIST_VIEW, LIST, L"Rows"},
                       {DialogItem::COLOR_WELL, COLOR, L"Change"}});
    EXPECT_EQ(nullptr, dialog.GetDlgItem(FIELD));
    dialog.onInit = [&] {
        EXPECT_TRUE(dynamic_cast<CEdit*>(dialog.GetDlgItem(FIELD)));
        EXPECT_TRUE(dynamic_cast<CEdit*>(dialog.GetDlgItem(WIDTH)));
        EXPECT_TRUE(dynamic_cast<CSpinButtonCtrl*>(dialog.GetDlgItem(WIDTH_ARROWS)));
        EXPECT_TRUE(dynamic_cast<CButton*>(dialog.GetDlgItem(PRESS)));
        EXPECT_TRUE(dynamic_cast<CButton*>(dialog.GetDlgItem(CHECK)));
        EXPECT_TRUE(dynamic_cast<CComboBox*>(dialog.GetDlgItem(CHOICE)));
        EXPECT_TRUE(dynamic_cast<CListCtrl*>(dialog.GetDlgItem(LIST)));
        EXPECT_TRUE(dynamic_cast<CColorWell*>(dialog.GetDlgItem(COLOR)));
        EXPECT_TRUE(dynamic_cast<CButton*>(dialog.GetDlgItem(IDOK)));
        EXPECT_EQ(nullptr, dialog.GetDlgItem(0));
        EXPECT_EQ(nullptr, dialog.GetDlgItem(999));
        CControl& press = *dialog.GetDlgItem(PRESS);
        EXPECT_EQ(UINT{PRESS}, press.GetDlgCtrlID());
        EXPECT_EQ(&dialog, press.GetParent());
        EXPECT_EQ(L"Press", press.GetWindowTextW().String());
        dialog.EndDialog(IDOK);
    };
    dialog.DoModal();
}

TEST_F(DialogTest, ControlsAreDisabledAtFirstAndEnabledLater) {
    const auto disabled = [](DialogItem item) {
        item.isDisabled = true;
        return item;
    };
    TestDialog dialog(
        {disabled(Button(PRESS, L"Press")), Form({Label(L"Width:"), disabled({DialogItem::SPIN_EDIT, WIDTH}),
                                                  Label(L"Name:"), disabled({DialogItem::EDIT, FIELD})})});
    int pressed = 0;
    dialog.onPress = [&] { ++pressed; };
    m_driver.Then([&](OpenDialog& open) {
        for (const UINT id : {UINT{PRESS}, UINT{WIDTH}, UINT{FIELD}})
            EXPECT_FALSE(dialog.GetDlgItem(id)->IsWindowEnabled()) << id;
        open.Click(L"Press");
        EXPECT_EQ(0, pressed);
        for (const UINT id : {UINT{PRESS}, UINT{WIDTH}, UINT{FIELD}}) {
            dialog.GetDlgItem(id)->EnableWindow();
            EXPECT_TRUE(dialog.GetDlgItem(id)->IsWindowEnabled()) << id;
        }
        for (const wchar_t* const name : {L"Press", L"Width", L"Name"}) EXPECT_TRUE(open.IsEnabled(name));
        open.Click(L"Press");
        EXPECT_EQ(1, pressed);
        dialog.GetDlgItem(WIDTH)->EnableWindow(false);
        EXPECT_FALSE(open.IsEnabled(L"Width"));
        open.Key("Escape");
    });
    dialog.DoModal();
}

TEST_F(DialogTest, AMemberStandsForAControlWhileItIsShown) {
    TestDialog dialog({Button(PRESS, L"Press"), Button(CHECK, L"Check")});
    CButton member, second;
    int pressed = 0;
    dialog.onPress = [&] { ++pressed; };
    dialog.onExchange = [&](CDataExchange& exchange) { DDX_Control(&exchange, PRESS, member); };
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_EQ(&member, dialog.GetDlgItem(PRESS));
        EXPECT_EQ(&dialog, member.GetParent());
        EXPECT_EQ(L"Press", member.GetWindowTextW().String());
        EXPECT_TRUE(dialog.UpdateData()); // again
        EXPECT_EQ(&member, dialog.GetDlgItem(PRESS));
        dialog.Attach(PRESS, second); // another one
        EXPECT_EQ(&second, dialog.GetDlgItem(PRESS));
        EXPECT_EQ(nullptr, member.NativeHandle());
        open.Click(L"Press");
        EXPECT_EQ(1, pressed);
        dialog.Attach(CHECK, second); // for another one
        EXPECT_EQ(&second, dialog.GetDlgItem(CHECK));
        EXPECT_EQ(L"Check", second.GetWindowTextW().String());
        ASSERT_NE(nullptr, dialog.GetDlgItem(PRESS));
        EXPECT_NE(&second, dialog.GetDlgItem(PRESS));
        EXPECT_EQ(L"Press", dialog.GetDlgItem(PRESS)->GetWindowTextW().String());
        open.Click(L"Press");
        EXPECT_EQ(2, pressed);
        dialog.Attach(999, second); // for none
        EXPECT_EQ(&second, dialog.GetDlgItem(CHECK));
        dialog.Attach(PRESS, member);
        open.Key("Escape");
    });
    dialog.DoModal();
    EXPECT_EQ(nullptr, member.NativeHandle());
    EXPECT_EQ(nullptr, second.NativeHandle());
}

TEST_F(DialogTest, AMemberMayGoWhileItIsShown) {
    TestDialog dialog({Button(PRESS, L"Press")});
    auto member = std::make_unique<CButton>();
    int pressed = 0;
    dialog.onPress = [&] { ++pressed; };
    m_driver.Then([&](OpenDialog& open) {
        dialog.Attach(PRESS, *member);
        member.reset();
        EXPECT_EQ(nullptr, dialog.GetDlgItem(PRESS));
        open.Click(L"Press"); // nobody is told
        EXPECT_EQ(0, pressed);
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DialogTest, AMemberOfTwoDialogsIsTheLastOnes) {
    TestDialog outer({Button(PRESS, L"Outer")}), inner({Button(PRESS, L"Inner")});
    CButton member;
    outer.onExchange = inner.onExchange = nullptr;
    outer.onInit = [&] { outer.Attach(PRESS, member); };
    inner.onInit = [&] { inner.Attach(PRESS, member); };
    m_driver
        .Then([&](OpenDialog&) {
            inner.DoModal();
            EXPECT_EQ(nullptr, outer.GetDlgItem(PRESS));
            EXPECT_EQ(nullptr, member.NativeHandle());
        })
        .Then([&](OpenDialog& open) {
            EXPECT_EQ(L"Inner", member.GetWindowTextW().String());
            EXPECT_EQ(nullptr, outer.GetDlgItem(PRESS));
            outer.EndDialog(4);
            open.Click(L"OK");
        });
    EXPECT_EQ(4, outer.DoModal());
    EXPECT_EQ(nullptr, member.NativeHandle());
}

// Data exchange.

TEST_F(DialogTest, ExchangesDataWithItsControls) {
    TestDialog dialog({Form({Label(L"Name:"),
                             {DialogItem::EDIT, FIELD},
                             Label(L"Show:"),
                             {DialogItem::CHECK_BOX, CHECK},
                             Label(L"Style:"),
                             {DialogItem::DROP_DOWN_LIST, CHOICE}})});
    CString text = L"a & b";
    bool isChecked = true;
    int choice = 1;
    std::vector<bool> directions;
    dialog.onExchange = [&](CDataExchange& exchange) {
        directions.push_back(exchange.m_bSaveAndValidate);
        EXPECT_EQ(&dialog, exchange.m_pDlgWnd);
        auto* const box = dynamic_cast<CComboBox*>(dialog.GetDlgItem(CHOICE));
        if (box && box->GetCount() == 0)
            for (const wchar_t* const style : {L"one", L"two", L"three"}) box->AddString(style);
        DDX_Text(&exchange, FIELD, text);
        DDX_Check(&exchange, CHECK, isChecked);
        DDX_CBIndex(&exchange, CHOICE, choice);
    };
    m_driver
        .Then([&](OpenDialog& open) {
            EXPECT_EQ(L"a & b", open.Text(L"Name"));
            EXPECT_TRUE(open.IsChecked(L"Show"));
            EXPECT_EQ(L"two", open.Text(L"Style"));
            open.SetText(L"Name", L"c && d");
            open.Click(L"Show");
            open.Choose(L"Style", 2);
            EXPECT_EQ(L"a & b", text.String()); // not before OK
            open.Click(L"OK");
        })
        .Then([&](OpenDialog& open) {
            open.SetText(L"Name", L"e");
            open.Click(L"Cancel");
        });
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_THAT(directions, ElementsAre(false, true));
    EXPECT_EQ(L"c && d", text.String());
    EXPECT_FALSE(isChecked);
    EXPECT_EQ(2, choice);
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_EQ(L"c && d", text.String());
}

TEST_F(DialogTest, ExchangesNothingWithControlsThatThereAreNot) {
    TestDialog dialog({Button(PRESS, L"Press")});
    CString text = L"text";
    bool isChecked = true;
    int choice = 5;
    dialog.onExchange = [&](CDataExchange& exchange) {
        DDX_Text(&exchange, FIELD, text);
        DDX_Check(&exchange, CHECK, isChecked);
        DDX_CBIndex(&exchange, CHOICE, choice);
        DDX_CBIndex(&exchange, PRESS, choice); // of another kind
    };
    EXPECT_TRUE(dialog.UpdateData()); // not shown
    m_driver.Then([](OpenDialog& open) { open.Click(L"OK"); });
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(L"text", text.String());
    EXPECT_TRUE(isChecked);
    EXPECT_EQ(5, choice);
}

TEST_F(DialogTest, AFaultIsSaidAtItsFieldAndLeavesTheRestAlone) {
    TestDialog dialog({Form(
        {Label(L"First:"), {DialogItem::EDIT, FIELD}, Label(L"Second:"), {DialogItem::SPIN_EDIT, WIDTH}})});
    CString first, second;
    dialog.onExchange = [&](CDataExchange& exchange) {
        DDX_Text(&exchange, FIELD, first);
        if (exchange.m_bSaveAndValidate && first == L"bad") {
            exchange.Fail(FIELD, L"First is bad");
            EXPECT_TRUE(exchange.HasFailed());
            exchange.Fail(WIDTH, L"not said: only the first is");
        }
        DDX_Text(&exchange, WIDTH, second);
        if (!exchange.HasFailed() && second == L"worse") exchange.Fail(WIDTH, L"Second is worse");
    };
    m_driver.Then([&](OpenDialog& open) {
        EXPECT_EQ(L"", open.Hint());
        open.SetText(L"First", L"bad");
        open.SetText(L"Second", L"2");
        open.Click(L"OK");
        EXPECT_EQ(L"First is bad", open.Hint());
        EXPECT_TRUE(open.HasFocus(L"First"));
        EXPECT_TRUE(second.IsEmpty());
        open.Type(L"good"); // instead of what is selected
        EXPECT_EQ(L"good", open.Text(L"First"));
        EXPECT_EQ(L"", open.Hint());
        open.SetText(L"Second", L"worse");
        open.Click(L"OK");
        EXPECT_EQ(L"Second is worse", open.Hint());
        EXPECT_TRUE(open.HasFocus(L"Second"));
        open.Key("Tab");
        EXPECT_EQ(L"", open.Hint());
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}

TEST_F(DialogTest, AFaultOfWhatIsNoFieldKeepsItOpen) {
    TestDialog dialog({Button(PRESS, L"Press")});
    dialog.onExchange = [](CDataExchange& exchange) {
        if (!exchange.m_bSaveAndValidate) return;
        exchange.Fail(PRESS, L"said nowhere");
        exchange.Fail(999, L"nor this");
    };
    m_driver.Then([&](OpenDialog& open) {
        open.Click(L"OK");
        EXPECT_EQ(L"", open.Hint());
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}
