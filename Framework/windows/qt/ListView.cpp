// SPDX-License-Identifier: MIT
#include "Framework/windows/qt/private/ListView.h"

#include "Framework/windows/qt/private/Swatch.h"

#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <utility>

int RowModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int RowModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
    const auto position = static_cast<std::size_t>(index.row());
    if (position >= m_rows.size()) return {}; // views may ask for what there was before SetTelling(false)
    const Row& row = m_rows[position];
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::DisplayRole && column < row.texts.size()) return row.texts[column];
    if (role != Qt::DecorationRole || column != 0 || row.image < 0 || row.image >= m_images.GetImageCount())
        return {};
    const auto& view = *static_cast<const QWidget*>(QObject::parent());
    return Swatch(m_images.ColorAt(row.image), m_images.Width(), m_images.Height(), view.devicePixelRatioF());
}

QVariant RowModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return m_headings[static_cast<std::size_t>(section)];
}

void RowModel::InsertColumn(int column, const QString& heading) {
    beginInsertColumns({}, column, column);
    m_headings.insert(m_headings.begin() + column, heading);
    const auto place = static_cast<std::size_t>(column);
    for (Row& row : m_rows)
        if (row.texts.size() > place) row.texts.insert(row.texts.begin() + column, QString());
    endInsertColumns();
}

void RowModel::SetImages(const CImageList& images) {
    m_images = images;
    if (m_isTelling && !m_rows.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, 0));
}

void RowModel::Insert(int row, const QString& text, int image) {
    if (m_isTelling) beginInsertRows({}, row, row);
    m_rows.insert(m_rows.begin() + row, {{text}, image});
    if (m_isTelling) endInsertRows();
}

void RowModel::SetText(int row, int column, const QString& text) {
    if (column < 0 || column >= columnCount()) return;
    std::vector<QString>& texts = m_rows[static_cast<std::size_t>(row)].texts;
    if (texts.size() <= static_cast<std::size_t>(column)) texts.resize(static_cast<std::size_t>(column) + 1);
    texts[static_cast<std::size_t>(column)] = text;
    if (m_isTelling) emit dataChanged(index(row, column), index(row, column));
}

void RowModel::Remove(int first, int count) {
    if (m_isTelling) beginRemoveRows({}, first, first + count - 1);
    m_rows.erase(m_rows.begin() + first, m_rows.begin() + first + count);
    if (m_isTelling) endRemoveRows();
}

void RowModel::RemoveAll() {
    if (m_isTelling) beginResetModel();
    m_rows.clear();
    if (m_isTelling) endResetModel();
}

void RowModel::SetTelling(bool isTelling) {
    if (isTelling == m_isTelling) return;
    m_isTelling = isTelling;
    if (isTelling)
        endResetModel();
    else
        beginResetModel();
}

QtListView::QtListView(QTreeView* view) : QtWindow(view, nullptr, true), m_model(new RowModel) {
    m_model->setParent(view);
    view->setModel(m_model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true); // ten thousand rows are then as fast as ten
    view->setAllColumnsShowFocus(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    const auto tell = [link = &Link(), isQuiet = m_isQuiet] {
        if (!*isQuiet) link->Tell(LVN_ITEMCHANGED);
    };
    QObject::connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, &Link(), tell);
    QObject::connect(view, &QAbstractItemView::doubleClicked, &Link(), Teller(NM_DBLCLK));
}

void QtListView::InsertColumn(int column, const std::wstring& heading, int width) {
    if (!Get()) return;
    const int position = std::clamp(column, 0, m_model->columnCount());
    m_model->InsertColumn(position, QString::fromStdWString(heading));
    const QHeaderView& header = *Get()->header();
    Get()->setColumnWidth(position, std::max(width, header.sectionSizeHint(position)));
}

void QtListView::SetImages(const CImageList& images) {
    if (!Get()) return;
    m_model->SetImages(images);
    Get()->setIconSize({images.Width(), images.Height()});
}

void QtListView::InsertRow(int row, const std::wstring& text, int image) {
    if (Get()) m_model->Insert(row, QString::fromStdWString(text), image);
}

void QtListView::SetTextAt(int row, int column, const std::wstring& text) {
    if (Get()) m_model->SetText(row, column, QString::fromStdWString(text));
}

std::wstring QtListView::TextAt(int row, int column) const {
    if (!Get() || column < 0) return {};
    const std::vector<QString>& texts = m_model->Rows()[static_cast<std::size_t>(row)].texts;
    const auto position = static_cast<std::size_t>(column);
    return position < texts.size() ? texts[position].toStdWString() : std::wstring();
}

int QtListView::ImageAt(int row) const {
    return Get() ? m_model->Rows()[static_cast<std::size_t>(row)].image : -1;
}

int QtListView::Count() const { return Get() ? m_model->rowCount() : 0; }

void QtListView::Remove(int first, int count) {
    if (!Get()) return;
    const bool areSelected =
        std::ranges::any_of(Selected(), [=](int row) { return row >= first && row - first < count; });
    Change(areSelected, [&] { m_model->Remove(first, count); });
}

void QtListView::RemoveAll() {
    if (Get()) Change(Get()->selectionModel()->hasSelection(), [&] { m_model->RemoveAll(); });
}

void QtListView::SetRedraw(bool redraw) {
    if (!Get() || redraw == m_model->IsTelling()) return;
    QItemSelectionModel& selection = *Get()->selectionModel();
    Change(selection.hasSelection(), [&] {
        const int scrolled = Get()->verticalScrollBar()->value();
        if (!redraw) selection.clear(); // it would stand for what is no more
        m_model->SetTelling(redraw);
        if (!redraw) return;
        Get()->doItemsLayout();
        Get()->verticalScrollBar()->setValue(scrolled);
    });
}

void QtListView::Change(bool losesSelection, const std::function<void()>& change) {
    *m_isQuiet = true;
    m_losesSelection = m_losesSelection || losesSelection;
    change();
    if (!m_model->IsTelling()) return;
    *m_isQuiet = false;
    if (std::exchange(m_losesSelection, false)) Link().Tell(LVN_ITEMCHANGED);
}

std::vector<int> QtListView::Selected() const {
    std::vector<int> rows;
    if (!Get()) return rows;
    for (const QModelIndex& index : Get()->selectionModel()->selectedRows()) rows.push_back(index.row());
    std::ranges::sort(rows);
    return rows;
}

void QtListView::SelectOnly(int row) {
    if (!Get()) return;
    if (row < 0) {
        Get()->selectionModel()->clear();
        return;
    }
    const QModelIndex index = m_model->index(row, 0);
    Get()->scrollTo(index); // first: whoever is told of the selection may delete this
    Get()->selectionModel()->setCurrentIndex(index,
                                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}
