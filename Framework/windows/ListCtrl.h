// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Control.h"
#include "Framework/windows/ImageList.h"

#include <vector>

class NativeListView;

/// A list of rows with columns, of which any number can be selected. Rows and columns count from 0; those
/// that there are not have empty texts and cannot be changed. Tells LVN_ITEMCHANGED when the selection
/// changes, by the program as well, and NM_DBLCLK for a double click on a row. That selected rows were
/// deleted is told once they are.
class FRAMEWORK_API CListCtrl : public CControl {
public:
    /// Inserts before the column of that number, at the end for one beyond. `width` in pixels; a column is at
    /// least as wide as its heading.
    void InsertColumn(int column, const CString& heading, int width);

    /// Copies the pictures that rows show from now on.
    void SetImageList(const CImageList& images);

    /// Inserts before the row of that number, at the end for one beyond. A picture of -1 is none.
    void InsertItem(int row, const CString& text, int image = -1);

    /// The text of a row in a column.
    /// @{
    void SetItemText(int row, int column, const CString& text);
    CString GetItemText(int row, int column) const;
    /// @}

    int GetItemImage(int row) const;                  ///< the picture's position; -1 for none
    int GetItemCount() const;                         ///< how many rows there are
    void DeleteItem(int row) { DeleteItems(row, 1); } ///< deletes one row

    /// Deletes `count` rows from that one on, in the time of one. Nothing happens when there are not so many.
    void DeleteItems(int first, int count);
    void DeleteAllItems(); ///< the columns stay

    /// Between false and true, nothing is drawn and nobody is told: filling a long list takes no longer than
    /// it must. No row is selected any more then; that is told at the end, if one was. The list stays
    /// scrolled to where it was.
    void SetRedraw(bool redraw);

    /// The selected rows, ascending.
    std::vector<int> GetSelectedItems() const;

    /// Selects this row and no other, gives it the keyboard's mark, and makes it visible. With -1 none is
    /// selected.
    void SelectOnly(int row);

private:
    NativeListView* List() const; // null without a window
};
