// SPDX-License-Identifier: MIT
#include "Framework/windows/ListCtrl.h"

#include "Framework/windows/private/NativeControls.h"

#include <algorithm>

namespace {

bool HasRow(const NativeListView& list, int row) { return row >= 0 && row < list.Count(); }

} // namespace

NativeListView* CListCtrl::List() const { return dynamic_cast<NativeListView*>(Window()); }

void CListCtrl::InsertColumn(int column, const CString& heading, int width) {
    if (auto* const list = List()) list->InsertColumn(column, heading.String(), width);
}

void CListCtrl::SetImageList(const CImageList& images) {
    if (auto* const list = List()) list->SetImages(images);
}

void CListCtrl::InsertItem(int row, const CString& text, int image) {
    if (auto* const list = List()) list->InsertRow(std::clamp(row, 0, list->Count()), text.String(), image);
}

void CListCtrl::SetItemText(int row, int column, const CString& text) {
    if (auto* const list = List(); list && HasRow(*list, row)) list->SetTextAt(row, column, text.String());
}

CString CListCtrl::GetItemText(int row, int column) const {
    const auto* const list = List();
    return list && HasRow(*list, row) ? list->TextAt(row, column) : std::wstring();
}

int CListCtrl::GetItemImage(int row) const {
    const auto* const list = List();
    return list && HasRow(*list, row) ? list->ImageAt(row) : -1;
}

int CListCtrl::GetItemCount() const {
    const auto* const list = List();
    return list ? list->Count() : 0;
}

void CListCtrl::DeleteItems(int first, int count) {
    auto* const list = List();
    if (list && HasRow(*list, first) && count > 0 && count <= list->Count() - first)
        list->Remove(first, count);
}

void CListCtrl::DeleteAllItems() {
    if (auto* const list = List()) list->RemoveAll();
}

void CListCtrl::SetRedraw(bool redraw) {
    if (auto* const list = List()) list->SetRedraw(redraw);
}

std::vector<int> CListCtrl::GetSelectedItems() const {
    const auto* const list = List();
    return list ? list->Selected() : std::vector<int>();
}

void CListCtrl::SelectOnly(int row) {
    if (auto* const list = List(); list && (row == -1 || HasRow(*list, row))) list->SelectOnly(row);
}
