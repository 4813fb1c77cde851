// SPDX-License-Identifier: MIT
#include "Framework/windows/ComboBox.h"

#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <gmock/gmock.h>
#include <memory>

using ::testing::ElementsAre;

namespace {

class ComboBoxTest : public DialogTest {
protected:
    static std::vector<std::wstring> Texts(const CComboBox& box) {
        std::vector<std::wstring> texts;
        for (int i = 0; i < box.GetCount(); ++i) texts.push_back(box.GetLBText(i).String());
        return texts;
    }

    TestDialog m_dialog{{Form({Label(L"Style:"), {DialogItem::DROP_DOWN_LIST, CHOICE}})}};
    CComboBox m_box;
};

} // namespace

TEST_F(ComboBoxTest, KeepsTheOrderInWhichTextsWereAdded) {
    ASSERT_TRUE(m_box.Create());
    EXPECT_EQ(0, m_box.AddString(L"pear"));
    EXPECT_EQ(1, m_box.AddString(L"apple"));
    EXPECT_EQ(2, m_box.AddString(L"pear"));
    EXPECT_EQ(3, m_box.AddString(m_box.GetLBText(1)));
    EXPECT_EQ(4, m_box.AddString(L""));
    EXPECT_THAT(Texts(m_box), ElementsAre(L"pear", L"apple", L"pear", L"apple", L""));
}

TEST_F(ComboBoxTest, SortsThemWhenItWasMadeSo) {
    ASSERT_TRUE(m_box.Create(CBS_SORT));
    for (const wchar_t* const text : {L"pear", L"Apple", L"fig", L"apple", L"Zucchini", L"fig"})
        m_box.AddString(text);
    std::vector<std::wstring> texts = Texts(m_box);
    for (std::size_t i = 0; i < 2; ++i) // in whichever order these two
        EXPECT_THAT(texts[i], ::testing::AnyOf(L"apple", L"Apple"));
    texts.erase(texts.begin(), texts.begin() + 2);
    EXPECT_THAT(texts, ElementsAre(L"fig", L"fig", L"pear", L"Zucchini"));
    EXPECT_EQ(4, m_box.AddString(L"nut"));
    EXPECT_EQ(L"nut", m_box.GetLBText(4).String());
}

TEST_F(ComboBoxTest, NothingIsSelectedUntilSomebodyDoes) {
    ASSERT_TRUE(m_box.Create());
    EXPECT_EQ(-1, m_box.GetCurSel());
    m_box.AddString(L"one");
    m_box.AddString(L"two");
    EXPECT_EQ(-1, m_box.GetCurSel());
    m_box.SetCurSel(1);
    EXPECT_EQ(1, m_box.GetCurSel());
    EXPECT_EQ(L"two", m_box.GetWindowTextW().String());
    for (const int none : {2, -2, 1'000}) {
        m_box.SetCurSel(none);
        EXPECT_EQ(1, m_box.GetCurSel()) << none;
        EXPECT_EQ(L"", m_box.GetLBText(none).String());
    }
    m_box.SetCurSel(-1);
    EXPECT_EQ(-1, m_box.GetCurSel());
    EXPECT_EQ(L"", m_box.GetLBText(-1).String());
}

TEST_F(ComboBoxTest, ASelectionStaysWithItsText) {
    ASSERT_TRUE(m_box.Create(CBS_SORT));
    m_box.AddString(L"pear");
    m_box.SetCurSel(0);
    m_box.AddString(L"apple");
    EXPECT_EQ(1, m_box.GetCurSel());
}

TEST_F(ComboBoxTest, WithoutAWindowItIsEmpty) {
    EXPECT_EQ(-1, m_box.AddString(L"one"));
    EXPECT_EQ(0, m_box.GetCount());
    EXPECT_EQ(-1, m_box.GetCurSel());
    m_box.SetCurSel(0);
    EXPECT_EQ(L"", m_box.GetLBText(0).String());
    ASSERT_TRUE(m_box.Create());
    m_box.AddString(L"one");
    m_box.DestroyWindow();
    EXPECT_EQ(0, m_box.GetCount());
}

TEST_F(ComboBoxTest, TellsWhatTheUserSelectsAndNotWhatTheProgramDoes) {
    std::vector<int> told;
    m_dialog.onInit = [&] {
        m_dialog.Attach(CHOICE, m_box);
        for (const wchar_t* const text : {L"one", L"two", L"three"}) m_box.AddString(text);
        m_box.SetCurSel(0);
    };
    m_dialog.onChoice = [&] { told.push_back(m_box.GetCurSel()); };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Style");
        open.Key("Down");
        EXPECT_EQ(L"two", open.Text(L"Style"));
        open.Key("Down");
        m_box.SetCurSel(0);
        open.Key("Escape");
    });
    m_dialog.DoModal();
    EXPECT_THAT(told, ElementsAre(1, 2));
}

TEST_F(ComboBoxTest, WhoIsToldMayDeleteTheDialog) {
    auto dialog = std::make_unique<TestDialog>(
        std::vector{Form({Label(L"Style:"), {DialogItem::DROP_DOWN_LIST, CHOICE}})});
    dialog->onInit = [&] {
        dialog->Attach(CHOICE, m_box);
        m_box.AddString(L"one");
        m_box.AddString(L"two");
    };
    dialog->onChoice = [&] { dialog.reset(); };
    m_driver.Then([&](OpenDialog& open) {
        open.Focus(L"Style");
        open.Key("Down");
    });
    EXPECT_EQ(IDCANCEL, dialog->DoModal());
    m_loop.RunWhatWaits();
}
