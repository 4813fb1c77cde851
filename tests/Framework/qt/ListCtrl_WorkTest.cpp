// SPDX-License-Identifier: MIT
// How much a list does for what changes: views do work for each signal of their model.

#include "Framework/windows/ListCtrl.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QScrollBar>
#include <QTreeView>

namespace {

class ListCtrl_Work : public DialogTest {
protected:
    struct Signals {
        int resets = 0, insertions = 0, removals = 0, changes = 0, layouts = 0;
        bool operator==(const Signals&) const = default;
    };

    // What the model signals while `change` is done to a list of ten thousand rows.
    Signals During(const std::function<void()>& change) {
        Signals count;
        m_driver.Then([&](OpenDialog&) {
            m_dialog.Attach(LIST, m_list);
            Fill();
            const auto& model = *View().model();
            const QObject here;
            const auto counting = [](int& number) { return [&number] { ++number; }; };
            QObject::connect(&model, &QAbstractItemModel::modelReset, &here, counting(count.resets));
            QObject::connect(&model, &QAbstractItemModel::rowsInserted, &here, counting(count.insertions));
            QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &here, counting(count.removals));
            QObject::connect(&model, &QAbstractItemModel::dataChanged, &here, counting(count.changes));
            QObject::connect(&model, &QAbstractItemModel::layoutChanged, &here, counting(count.layouts));
            change();
            m_dialog.EndDialog(IDOK);
        });
        m_dialog.DoModal();
        return count;
    }

    void Fill() {
        m_list.InsertColumn(0, L"Level", 123);
        m_list.SetRedraw(false);
        m_list.DeleteAllItems();
        for (int i = 0; i < 10'000; ++i) m_list.InsertItem(i, std::to_wstring(i));
        m_list.SetRedraw(true);
    }

    QTreeView& View() { return *dynamic_cast<QTreeView*>(static_cast<QWidget*>(m_list.NativeHandle())); }

    TestDialog m_dialog{{{DialogItem::LIST_VIEW, LIST, L"Contours"}}};
    CListCtrl m_list;
};

} // namespace

TEST_F(ListCtrl_Work, FillingIsOneReset) {
    EXPECT_EQ((Signals{1, 0, 0, 0, 0}), During([&] { Fill(); }));
}

TEST_F(ListCtrl_Work, OneRowIsOneRow) {
    EXPECT_EQ((Signals{0, 1, 0, 0, 0}), During([&] { m_list.InsertItem(5'000, L"new"); }));
    EXPECT_EQ((Signals{0, 0, 1, 0, 0}), During([&] { m_list.DeleteItem(5'000); }));
    EXPECT_EQ((Signals{0, 0, 0, 1, 0}), During([&] { m_list.SetItemText(5'000, 0, L"other"); }));
    EXPECT_EQ(Signals{}, During([&] { m_list.SelectOnly(9'999); }));
}

TEST_F(ListCtrl_Work, FillingKeepsThePlaceAndTheColumns) {
    During([&] {
        m_list.InsertColumn(1, L"Width", 70); // the last one takes what room is left
        m_list.SelectOnly(5'000);
        const int scrolled = View().verticalScrollBar()->value();
        EXPECT_GT(scrolled, 1'000);
        View().setColumnWidth(0, 222); // as the user did
        m_list.SetRedraw(false);
        m_list.DeleteItem(5'000);
        m_list.SetRedraw(true);
        EXPECT_EQ(scrolled, View().verticalScrollBar()->value());
        EXPECT_EQ(222, View().columnWidth(0));
    });
}
