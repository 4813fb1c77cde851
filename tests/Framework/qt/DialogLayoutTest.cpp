// SPDX-License-Identifier: MIT
// How a dialog looks when it opens: what its list shows, and what a user can type over.

#include "Framework/windows/Dialog.h"
#include "Framework/windows/ListCtrl.h"
#include "Framework/windows/WindowTypes.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTreeView>
#include <gmock/gmock.h>

namespace {

constexpr UINT kList = 100, kFirst = 101, kSecond = 102;

constexpr wchar_t kWide[] = L"a wider text";

class ListDialog final : public CDialog {
public:
    ListDialog() : CDialog(L"List", {DialogItem::COLUMN, 0, {}, {{DialogItem::LIST_VIEW, kList, L"Rows"}}}) {}

private:
    void OnInitDialog() override {
        CDialog::OnInitDialog();
        for (const wchar_t* const heading : {L"A", L"B", L"A wide heading", L"D"})
            m_list.InsertColumn(m_columns++, heading, 70);
        for (int row = 0; row < 100; ++row) m_list.InsertItem(row, L"text", -1);
        m_list.SetItemText(0, 3, kWide);
    }
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, kList, m_list); }

    CListCtrl m_list;
    int m_columns = 0;
};

class FieldsDialog final : public CDialog {
public:
    explicit FieldsDialog(UINT focused)
        : CDialog(L"Fields", {DialogItem::COLUMN,
                              0,
                              {},
                              {{DialogItem::FORM,
                                0,
                                {},
                                {{DialogItem::LABEL, 0, L"First"},
                                 {DialogItem::EDIT, kFirst},
                                 {DialogItem::LABEL, 0, L"Second"},
                                 {DialogItem::EDIT, kSecond}}}}}),
          m_focused(focused) {}

private:
    void OnInitDialog() override {
        CDialog::OnInitDialog();
        for (const UINT id : {kFirst, kSecond}) GetDlgItem(id)->SetWindowTextW(L"5.00");
        if (m_focused != 0) GetDlgItem(m_focused)->SetFocus();
    }

    UINT m_focused;
};

} // namespace

TEST(DialogLayout, ListShowsItsColumnsAndADozenRows) {
    const EventLoop loop;
    DialogDriver driver;
    driver.Then([](OpenDialog& dialog) {
        const auto& list = *QApplication::activeModalWidget()->findChild<QTreeView*>();
        EXPECT_FALSE(list.horizontalScrollBar()->isVisible());
        EXPECT_GE(list.viewport()->width(), list.header()->length());
        EXPECT_GT(list.columnWidth(3), list.fontMetrics().horizontalAdvance(QString::fromWCharArray(kWide)));
        EXPECT_TRUE(list.verticalScrollBar()->isVisible());
        EXPECT_EQ(list.viewport()->height() / list.sizeHintForRow(0), 12);
        dialog.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, ListDialog().DoModal());
}

TEST(DialogLayout, TextOfTheFieldWithTheKeyboardCanBeTypedOver) {
    for (const UINT focused : {0U, kSecond}) {
        const EventLoop loop;
        DialogDriver driver;
        driver.Then([&](OpenDialog& dialog) {
            dialog.Type(L"7");
            EXPECT_EQ(focused == 0 ? L"7" : L"5.00", dialog.Text(L"First"));
            EXPECT_EQ(focused == 0 ? L"5.00" : L"7", dialog.Text(L"Second"));
            dialog.Key("Tab");
            dialog.Type(L"8");
            EXPECT_EQ(focused == 0 ? L"8" : L"7", dialog.Text(L"Second"));
            dialog.Key("Escape");
        });
        EXPECT_EQ(IDCANCEL, FieldsDialog(focused).DoModal());
    }
}
