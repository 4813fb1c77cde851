// SPDX-License-Identifier: MIT
// How large a dialog with a list opens.

#include "Framework/windows/ListCtrl.h"
#include "tests/Framework/TestDialog.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <windows.h>

namespace {

struct Opened {
    int height = 0;      // of the dialog
    int visibleRows = 0; // that are whole
};

Opened OpenWithRows(int rows) {
    TestDialog dialog({{DialogItem::LIST_VIEW, LIST, L"Rows"}});
    CListCtrl list;
    dialog.onExchange = [&](CDataExchange& exchange) { DDX_Control(&exchange, LIST, list); };
    dialog.onInit = [&] {
        list.InsertColumn(0, L"A", 70);
        for (int row = 0; row < rows; ++row) list.InsertItem(row, L"text", -1);
    };
    Opened opened;
    DialogDriver driver;
    driver.Then([&](OpenDialog& open) {
        RECT area{};
        GetWindowRect(GetActiveWindow(), &area);
        opened.height = area.bottom - area.top;
        opened.visibleRows = ListView_GetCountPerPage(static_cast<HWND>(list.NativeHandle()));
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    return opened;
}

} // namespace

TEST(DialogLayout, ListShowsADozenRowsWhateverItHas) {
    const EventLoop loop;
    const Opened full = OpenWithRows(100);
    EXPECT_EQ(12, full.visibleRows);
    for (const int rows : {0, 1, 5}) EXPECT_EQ(full.height, OpenWithRows(rows).height) << rows;
}
