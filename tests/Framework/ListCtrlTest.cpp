// SPDX-License-Identifier: MIT
#include "Framework/windows/ListCtrl.h"

#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <gmock/gmock.h>
#include <memory>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Row = std::vector<std::wstring>;

class ListCtrlTest : public DialogTest {
protected:
    ListCtrlTest() {
        m_dialog->onInit = [this] {
            m_dialog->Attach(LIST, m_list);
            m_list.InsertColumn(0, L"Level", 70);
            m_list.InsertColumn(1, L"Width", 70);
            for (int i = 0; i < 4; ++i) {
                m_list.InsertItem(i, L"row " + std::to_wstring(i));
                m_list.SetItemText(i, 1, std::to_wstring(i));
            }
        };
        m_dialog->onListChange = [this] {
            ++m_changes;
            m_selected = m_list.GetSelectedItems();
        };
    }

    // What `use` does is done while the dialog is open.
    void Show(const std::function<void(OpenDialog&)>& use) {
        m_driver.Then([&](OpenDialog& open) {
            use(open);
            if (m_dialog) m_dialog->EndDialog(IDOK);
        });
        m_dialog->DoModal();
    }

    int m_changes = 0;           // how often it was told that the selection changed
    std::vector<int> m_selected; // as it was seen then
    CListCtrl m_list;
    std::unique_ptr<TestDialog> m_dialog =
        std::make_unique<TestDialog>(std::vector<DialogItem>{{DialogItem::LIST_VIEW, LIST, L"Contours"}});
};

} // namespace

TEST_F(ListCtrlTest, ShowsItsRowsAndColumns) {
    Show([&](OpenDialog& open) {
        EXPECT_THAT(open.Columns(), ElementsAre(L"Level", L"Width"));
        EXPECT_THAT(open.Rows(), ElementsAre(Row{L"row 0", L"0"}, Row{L"row 1", L"1"}, Row{L"row 2", L"2"},
                                             Row{L"row 3", L"3"}));
        EXPECT_EQ(4, m_list.GetItemCount());
        m_list.InsertItem(1, L"new", 7);
        EXPECT_EQ((Row{L"new", L""}), open.Rows()[1]);
        EXPECT_EQ(7, m_list.GetItemImage(1));
        EXPECT_EQ(-1, m_list.GetItemImage(0));
        m_list.SetItemText(1, 0, L"newer");
        m_list.SetItemText(1, 0, m_list.GetItemText(1, 0)); // its own
        EXPECT_EQ(L"newer", m_list.GetItemText(1, 0).String());
        m_list.DeleteItem(0);
        EXPECT_EQ((Row{L"newer", L""}), open.Rows()[0]);
        m_list.InsertColumn(1, L"Middle", 70);
        EXPECT_THAT(open.Columns(), ElementsAre(L"Level", L"Middle", L"Width"));
        EXPECT_EQ((Row{L"row 1", L"", L"1"}), open.Rows()[1]);
        m_list.DeleteAllItems();
        EXPECT_THAT(open.Rows(), IsEmpty());
        EXPECT_EQ(0, m_list.GetItemCount());
    });
    EXPECT_EQ(0, m_list.GetItemCount()); // without a window
    m_list.InsertItem(0, L"nowhere");
    m_list.SelectOnly(0);
    EXPECT_THAT(m_list.GetSelectedItems(), IsEmpty());
}

TEST_F(ListCtrlTest, NumbersThatThereAreNotDoNothing) {
    Show([&](OpenDialog& open) {
        const std::vector<Row> before = open.Rows();
        for (const int none : {-1, 4, 1'000'000, -2'147'483'647}) {
            m_list.SetItemText(none, 0, L"x");
            m_list.SetItemText(0, none == 4 ? 2 : none, L"x");
            m_list.DeleteItem(none);
            m_list.DeleteItems(1, none);
            EXPECT_EQ(L"", m_list.GetItemText(none, 0).String());
            EXPECT_EQ(L"", m_list.GetItemText(0, none).String());
            EXPECT_EQ(-1, m_list.GetItemImage(none));
            if (none != -1) m_list.SelectOnly(none);
            EXPECT_THAT(m_list.GetSelectedItems(), IsEmpty());
        }
        EXPECT_EQ(before, open.Rows());
        m_list.InsertItem(-5, L"first");
        m_list.InsertItem(1'000, L"last", 1'000'000); // a picture that there is not
        EXPECT_EQ(L"first", open.Rows().front().front());
        EXPECT_EQ(L"last", open.Rows().back().front());
        m_list.InsertColumn(-1, L"before all", -5);
        m_list.InsertColumn(1'000, L"behind all", 0);
        EXPECT_THAT(open.Columns(), ElementsAre(L"before all", L"Level", L"Width", L"behind all"));
    });
}

TEST_F(ListCtrlTest, TheUserSelectsAnyNumberOfRows) {
    Show([&](OpenDialog& open) {
        open.ClickRow(1);
        EXPECT_THAT(m_selected, ElementsAre(1));
        open.ClickRow(3, "Ctrl");
        EXPECT_THAT(m_selected, ElementsAre(1, 3));
        open.ClickRow(0, "Ctrl");
        EXPECT_THAT(m_selected, ElementsAre(0, 1, 3)); // ascending
        open.ClickRow(2);
        EXPECT_THAT(m_selected, ElementsAre(2));
        open.ClickRow(0, "Shift");
        EXPECT_THAT(m_selected, ElementsAre(0, 1, 2));
        open.Key("Ctrl+A");
        EXPECT_THAT(m_selected, ElementsAre(0, 1, 2, 3));
        EXPECT_EQ(6, m_changes);
    });
}

TEST_F(ListCtrlTest, SelectOnlySelectsOneAndPutsTheKeyboardsMarkThere) {
    Show([&](OpenDialog& open) {
        open.Focus(L"Contours");
        open.Key("Ctrl+A");
        m_list.SelectOnly(2);
        EXPECT_THAT(open.SelectedRows(), ElementsAre(2));
        EXPECT_THAT(m_selected, ElementsAre(2));
        open.Key("Down");
        EXPECT_THAT(open.SelectedRows(), ElementsAre(3));
        m_list.SelectOnly(-1);
        EXPECT_THAT(open.SelectedRows(), IsEmpty());
        EXPECT_THAT(m_selected, IsEmpty());
    });
}

TEST_F(ListCtrlTest, ASelectionThatGoesWithItsRowsIsToldAfterwards) {
    const std::vector<std::function<void()>> removals = {
        [&] { m_list.DeleteItem(1); },
        [&] { m_list.DeleteAllItems(); },
        [&] {
            m_list.SetRedraw(false);
            for (int i = 3; i >= 0; --i) m_list.DeleteItem(i);
            EXPECT_EQ(0, m_changes);
            EXPECT_THAT(m_list.GetSelectedItems(), IsEmpty());
            m_list.SetRedraw(true);
        },
    };
    for (std::size_t i = 0; i < removals.size(); ++i) {
        SCOPED_TRACE(i);
        Show([&](OpenDialog& open) {
            int countThen = -1;
            m_list.SelectOnly(1);
            m_changes = 0;
            m_dialog->onListChange = [&] {
                ++m_changes;
                countThen = m_list.GetItemCount();
                m_list.DeleteItem(0); // may be done then
            };
            ASSERT_THAT(open.SelectedRows(), ElementsAre(1));
            removals[i]();
            EXPECT_EQ(1, m_changes);
            EXPECT_EQ(std::max(countThen - 1, 0), m_list.GetItemCount());
            m_dialog->onListChange = nullptr;
        });
    }
}

TEST_F(ListCtrlTest, RowsThatComeAndGoLeaveTheSelectionOfOthers) {
    Show([&](OpenDialog& open) {
        m_list.SelectOnly(2);
        m_changes = 0;
        m_list.DeleteItem(0);
        m_list.InsertItem(3, L"new");
        EXPECT_EQ(0, m_changes);
        EXPECT_THAT(open.SelectedRows(), ElementsAre(1));
        EXPECT_EQ(L"row 2", m_list.GetItemText(1, 0).String());
    });
}

TEST_F(ListCtrlTest, FillingItAnewTellsNobody) {
    Show([&](OpenDialog& open) {
        m_list.SetRedraw(false);
        m_list.SetRedraw(false); // again
        m_list.DeleteAllItems();
        for (int i = 0; i < 10'000; ++i) {
            m_list.InsertItem(i, std::to_wstring(i));
            m_list.SetItemText(i, 1, L"width");
        }
        m_list.SetRedraw(true);
        m_list.SetRedraw(true);
        EXPECT_EQ(10'000U, open.Rows().size());
        EXPECT_EQ(0, m_changes);
        m_list.SelectOnly(9'999);
        EXPECT_THAT(m_selected, ElementsAre(9'999));
        EXPECT_EQ(1, m_changes);
    });
}

TEST_F(ListCtrlTest, ShowsSwatches) {
    CImageList images(16, 16);
    const int red = images.Add(0x0000FF), blue = images.Add(0xFF0000);
    Show([&](OpenDialog& open) {
        open.Focus(L"OK"); // the list would mark its row
        m_list.SetImageList(images);
        m_list.InsertItem(0, L"red", red);
        m_list.InsertItem(1, L"blue", blue);
        EXPECT_EQ(0x0000FFU, open.SwatchOfRow(0));
        EXPECT_EQ(0xFF0000U, open.SwatchOfRow(1));
        m_list.SelectOnly(1); // which does not tint it
        EXPECT_EQ(0xFF0000U, open.SwatchOfRow(1));
        CImageList others(16, 16);
        others.Add(0x00FF00);
        m_list.SetImageList(others);
        EXPECT_EQ(0x00FF00U, open.SwatchOfRow(0));
    });
}

TEST_F(ListCtrlTest, ADoubleClickOnARowIsTold) {
    int doubleClicks = 0;
    m_dialog->onDoubleClick = [&] {
        EXPECT_THAT(m_list.GetSelectedItems(), ElementsAre(2));
        ++doubleClicks;
    };
    Show([&](OpenDialog& open) {
        open.DoubleClickRow(2);
        EXPECT_EQ(1, doubleClicks);
    });
}

TEST_F(ListCtrlTest, HandlersMayDeleteTheDialog) {
    m_dialog->onDoubleClick = [&] { m_dialog.reset(); };
    Show([&](OpenDialog& open) { open.DoubleClickRow(1); });
    m_loop.RunWhatWaits();
    EXPECT_EQ(nullptr, m_list.NativeHandle());
}

TEST_F(ListCtrlTest, WhoIsToldOfTheSelectionMayDeleteTheDialog) {
    m_dialog->onListChange = [&] { m_dialog.reset(); };
    Show([&](OpenDialog&) { m_list.SelectOnly(3); });
    m_loop.RunWhatWaits();
}

TEST_F(ListCtrlTest, EnterAndEscapeAreTheDialogs) {
    m_driver.Then([&](OpenDialog& open) {
        open.ClickRow(1);
        open.Key("Enter");
    });
    EXPECT_EQ(IDOK, m_dialog->DoModal());
    m_driver.Then([&](OpenDialog& open) {
        open.ClickRow(1);
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, m_dialog->DoModal());
}
