// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"
#include "Framework/windows/qt/private/QtWindow.h"

#include <QAbstractTableModel>
#include <QTreeView>
#include <functional>
#include <memory>

/// The rows of a list.
class RowModel final : public QAbstractTableModel {
public:
    struct Row {
        std::vector<QString> texts;
        int image = -1;
    };

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void InsertColumn(int column, const QString& heading);
    void SetImages(const CImageList& images);
    void Insert(int row, const QString& text, int image);
    void SetText(int row, int column, const QString& text);
    void Remove(int first, int count);
    void RemoveAll();
    const std::vector<Row>& Rows() const { return m_rows; }

    /// Between false and true the views are told nothing, and then that all is new.
    void SetTelling(bool isTelling);
    bool IsTelling() const { return m_isTelling; }

private:
    std::vector<QString> m_headings;
    std::vector<Row> m_rows;
    CImageList m_images;
    bool m_isTelling = true;
};

class QtListView final : public QtWindow<NativeListView, QTreeView> {
public:
    explicit QtListView(QTreeView* view);

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

private:
    // Has rows changed while nobody is told of the selection. That it is lost by it is told afterwards, when
    // the list can be used again.
    void Change(bool losesSelection, const std::function<void()>& change);

    RowModel* const m_model;                                               // the view's
    const std::shared_ptr<bool> m_isQuiet = std::make_shared<bool>(false); // also when the view outlives this
    bool m_losesSelection = false;
};
