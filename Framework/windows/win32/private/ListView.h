// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"
#include "Framework/windows/win32/private/Win32Window.h"

#include <memory>

/// The rows are the library's own, and the system's control asks for those that it shows.
class Win32ListView final : public Win32Window<NativeListView> {
public:
    explicit Win32ListView(HWND list);

    void InsertColumn(int column, const std::wstring& heading, int width) override;
    void SetImages(const CImageList& images) override;
    void InsertRow(int row, const std::wstring& text, int image) override;
    void SetTextAt(int row, int column, const std::wstring& text) override;
    std::wstring TextAt(int row, int column) const override;
    int ImageAt(int row) const override;
    int Count() const override;
    void Remove(int first, int count) override;
    void RemoveAll() override;
    void SetRedraw(bool redraw) override;
    std::vector<int> Selected() const override;
    void SelectOnly(int row) override;

    struct Rows;

private:
    void Select(int row, bool isSelected) const;
    void ClearSelection() const;
    void ShowCount() const;
    int ColumnCount() const;
    void TellSelection();

    const std::shared_ptr<Rows> m_rows; // also when the control outlives this
};
