// SPDX-License-Identifier: MIT
#include "Framework/windows/Edit.h"

#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class EditTest : public DialogTest {
protected:
    EditTest() {
        m_dialog.onInit = [this] { m_dialog.Attach(FIELD, m_edit); };
    }

    void Show(const std::function<void(OpenDialog&)>& use) {
        m_driver.Then([&](OpenDialog& open) {
            use(open);
            m_dialog.EndDialog(IDOK);
        });
        m_dialog.DoModal();
    }

    TestDialog m_dialog{{Form({Label(L"&Name:"),
                               {DialogItem::EDIT, FIELD},
                               Label(L"&Other:"),
                               {DialogItem::EDIT, OTHER_FIELD},
                               Label(L"&Width:"),
                               {DialogItem::SPIN_EDIT, WIDTH}})}};
    CEdit m_edit;
};

} // namespace

TEST_F(EditTest, TellsEachChange) {
    std::vector<std::wstring> told;
    m_dialog.onFieldChange = [&] { told.push_back(m_edit.GetWindowTextW().String()); };
    Show([&](OpenDialog& open) {
        open.Type(L"ab");
        m_edit.SetWindowTextW(L"&c"); // no mnemonic in a content
        EXPECT_EQ(L"&c", open.Text(L"Name"));
        m_edit.SetWindowTextW(m_edit.GetWindowTextW()); // none
        EXPECT_THAT(told, ElementsAre(L"a", L"ab", L"&c"));
    });
}

TEST_F(EditTest, ItsWholeTextIsSelectedForWhatIsTypedNext) {
    Show([&](OpenDialog& open) {
        m_edit.SetWindowTextW(L"old");
        open.Focus(L"Other");
        m_edit.FocusAndSelect();
        EXPECT_TRUE(open.HasFocus(L"Name"));
        open.Type(L"n");
        EXPECT_EQ(L"n", open.Text(L"Name"));
    });
}

TEST_F(EditTest, AHintVanishesWhenTheTextChangesOrTheFieldIsLeft) {
    for (const UINT id : {UINT{FIELD}, UINT{WIDTH}}) {
        Show([&](OpenDialog& open) {
            auto& edit = dynamic_cast<CEdit&>(*m_dialog.GetDlgItem(id));
            const std::vector<std::function<void()>> changes = {
                [&] { open.Type(L"1"); },
                [&] { edit.SetWindowTextW(L"other"); },
                [&] { open.Key("Tab"); },
                [&] { m_dialog.GetDlgItem(OTHER_FIELD)->SetFocus(); },
            };
            for (const auto& change : changes) {
                edit.FocusAndSelect();
                EXPECT_EQ(L"", open.Hint());
                edit.ShowBalloonTip(L"<b>no & number</b>");
                EXPECT_EQ(L"<b>no & number</b>", open.Hint());
                change();
                EXPECT_EQ(L"", open.Hint());
            }
        });
    }
}

TEST_F(EditTest, ALaterHintTakesThePlaceOfTheOneBefore) {
    Show([&](OpenDialog& open) {
        m_edit.ShowBalloonTip(L"first");
        m_edit.ShowBalloonTip(L"second");
        EXPECT_EQ(L"second", open.Hint());
    });
}

TEST_F(EditTest, AHintMayBeLeftWhenTheDialogCloses) {
    Show([&](OpenDialog& open) {
        m_edit.ShowBalloonTip(L"left");
        EXPECT_EQ(L"left", open.Hint());
    });
    m_loop.RunWhatWaits();
}

TEST_F(EditTest, WithoutAWindowNothingHappens) {
    CEdit none;
    none.FocusAndSelect();
    none.ShowBalloonTip(L"nowhere");
    none.SetWindowTextW(L"nowhere");
    EXPECT_EQ(L"", none.GetWindowTextW().String());
}
