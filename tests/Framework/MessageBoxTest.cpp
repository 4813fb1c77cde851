// SPDX-License-Identifier: MIT
// CDialog::MessageBoxW().

#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

namespace {

using MessageBoxTest = DialogTest;

} // namespace

TEST_F(MessageBoxTest, ReturnsTheButtonThatClosedIt) {
    struct Row {
        UINT type;
        std::function<void(OpenDialog&)> close;
        int answer;
    };
    const auto click = [](const wchar_t* button) { return [=](OpenDialog& box) { box.Click(button); }; };
    const auto key = [](const char* keys) { return [=](OpenDialog& box) { box.Key(keys); }; };
    for (const Row& row : {Row{MB_OK, click(L"OK"), IDOK}, Row{MB_OK | MB_ICONERROR, key("Enter"), IDOK},
                           Row{MB_OK | MB_ICONERROR, key("Escape"), IDOK},
                           Row{MB_YESNO | MB_ICONQUESTION, click(L"Yes"), IDYES},
                           Row{MB_YESNO | MB_ICONQUESTION, click(L"No"), IDNO},
                           Row{MB_YESNO, key("Alt+Y"), IDYES}, Row{MB_YESNO, key("Alt+N"), IDNO},
                           Row{MB_YESNO, key("Enter"), IDYES}, // the first one is the default
                           Row{MB_YESNO, key("Escape"), IDNO}}) {
        TestDialog dialog({Button(PRESS, L"Press")});
        int answer = 0;
        dialog.onPress = [&] { answer = dialog.MessageBoxW(L"Save changes?", L"Contours", row.type); };
        m_driver
            .Then([](OpenDialog& open) {
                open.Click(L"Press");
                open.Key("Escape");
            })
            .Then([&](OpenDialog& box) {
                EXPECT_EQ(L"Contours", box.Title());
                EXPECT_EQ(L"Save changes?", box.Message());
                row.close(box);
            });
        dialog.DoModal();
        EXPECT_EQ(row.answer, answer);
    }
}

TEST_F(MessageBoxTest, TextsAreAsTheyAre) {
    TestDialog dialog;
    for (const wchar_t* const text : {L"Failed.\nReason:\n\tThe depth\n\tis there",
                                      L"<b>bold</b> & <i>more</i>", L"a && b", L"", L"\u03A9"}) {
        m_driver.Then([&](OpenDialog& box) {
            EXPECT_EQ(text, box.Message());
            EXPECT_EQ(L"a & b", box.Title());
            box.Click(L"OK");
        });
        EXPECT_EQ(IDOK, dialog.MessageBoxW(text, L"a & b", MB_OK)); // over no dialog
    }
}
