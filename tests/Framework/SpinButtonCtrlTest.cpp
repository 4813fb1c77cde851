// SPDX-License-Identifier: MIT
#include "Framework/windows/SpinButtonCtrl.h"

#include "Framework/windows/Edit.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <gmock/gmock.h>
#include <memory>

using ::testing::ElementsAre;

namespace {

class SpinButtonCtrlTest : public DialogTest {
protected:
    static std::vector<DialogItem> Items() {
        return {Form(
            {Label(L"Width:"), {DialogItem::SPIN_EDIT, WIDTH}, Label(L"Name:"), {DialogItem::EDIT, FIELD}})};
    }
};

} // namespace

TEST_F(SpinButtonCtrlTest, TellsStepsAndLeavesTheTextToTheDialog) {
    TestDialog dialog(Items());
    CSpinButtonCtrl arrows;
    EXPECT_EQ(0, arrows.GetDelta());
    std::vector<int> steps;
    dialog.onInit = [&] {
        dialog.Attach(WIDTH_ARROWS, arrows);
        dialog.GetDlgItem(WIDTH)->SetWindowTextW(L"0.5");
    };
    dialog.onStep = [&] { steps.push_back(arrows.GetDelta()); };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Width");
        open.Key("Up");
        open.Key("Down");
        open.Key("Down");
        EXPECT_EQ(L"0.5", open.Text(L"Width"));
        open.Focus(L"Name");
        open.Key("Up"); // of another field
        open.Key("Escape");
    });
    dialog.DoModal();
    EXPECT_THAT(steps, ElementsAre(1, -1, -1));
    EXPECT_EQ(0, arrows.GetDelta());
}

TEST_F(SpinButtonCtrlTest, TheFieldTakesAnyText) {
    TestDialog dialog(Items());
    m_driver.Then([&](OpenDialog& open) {
        for (const wchar_t* const text : {L"1,5", L"letters", L"-", L""}) {
            open.SetText(L"Width", text);
            open.Key("Tab");
            EXPECT_EQ(text, dialog.GetDlgItem(WIDTH)->GetWindowTextW().String());
        }
        open.Key("Escape");
    });
    dialog.DoModal();
}

TEST_F(SpinButtonCtrlTest, WhoIsToldMayDeleteTheDialog) {
    auto dialog = std::make_unique<TestDialog>(Items());
    dialog->onStep = [&] { dialog.reset(); };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Width");
        open.Key("Up");
    });
    EXPECT_EQ(IDCANCEL, dialog->DoModal());
    m_loop.RunWhatWaits();
}
