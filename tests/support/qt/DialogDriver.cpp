// SPDX-License-Identifier: MIT
#include "tests/support/DialogDriver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

// Without its mnemonic and a colon at its end.
std::wstring Plain(QString text) {
    text.replace("&&", "\1").remove('&').replace("\1", "&");
    if (text.endsWith(':')) text.chop(1);
    return text.toStdWString();
}

// What a user calls a control.
std::wstring NameOf(const QWidget& widget) {
    for (const QLabel* const label : widget.window()->findChildren<QLabel*>())
        if (label->buddy() == &widget) return Plain(label->text());
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
        return Plain(button->text());
    const QAccessibleInterface* const accessible =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
    return accessible ? Plain(accessible->text(QAccessible::Name)) : std::wstring();
}

class QtDialog final : public OpenDialog {
public:
    explicit QtDialog(QDialog& dialog) : m_dialog(dialog) {}

    std::wstring Title() const override { return m_dialog.windowTitle().toStdWString(); }

    std::wstring Message() const override {
        const auto* const box = qobject_cast<const QMessageBox*>(&m_dialog);
        return box ? box->text().toStdWString() : std::wstring();
    }

    void Key(const std::string& key) override {
        WaitForActivation(); // again, behind a dialog that it opened
        const QKeyCombination keys = QKeySequence(QString::fromStdString(key))[0];
        const QPointer<QDialog> open(&m_dialog);
        QTest::keyClick(Receiver(), keys.key(), keys.keyboardModifiers());
        WaitForPressedButtons(open);
    }

    void Type(const std::wstring& text) override {
        QTest::keyClicks(Receiver(), QString::fromStdWString(text));
    }

    void Click(const std::wstring& control) override {
        QWidget* const widget = Find(control);
        if (!widget) return;
        const bool isBox = qobject_cast<QCheckBox*>(widget) != nullptr; // wider than what is seen of it
        QTest::mouseClick(widget, Qt::LeftButton, {}, isBox ? QPoint(4, widget->height() / 2) : QPoint());
    }

    void Focus(const std::wstring& control) override {
        if (QWidget* const widget = Find(control)) widget->setFocus();
    }

    bool HasFocus(const std::wstring& control) const override {
        const QWidget* const widget = Find(control);
        return widget && (widget->hasFocus() || (widget->focusProxy() && widget->focusProxy()->hasFocus()));
    }

    bool IsEnabled(const std::wstring& control) const override {
        const QWidget* const widget = Find(control);
        return widget && widget->isEnabled();
    }

    bool IsChecked(const std::wstring& control) const override {
        const auto* const button = qobject_cast<const QAbstractButton*>(Find(control));
        return button && button->isChecked();
    }

    std::wstring Text(const std::wstring& control) const override {
        const QWidget* const widget = Find(control);
        if (const auto* const box = qobject_cast<const QComboBox*>(widget))
            return box->currentText().toStdWString();
        const QLineEdit* const edit = EditOf(widget);
        return edit ? edit->text().toStdWString() : std::wstring();
    }

    void SetText(const std::wstring& control, const std::wstring& text) override {
        QLineEdit* const edit = EditOf(Find(control));
        ASSERT_TRUE(edit) << "no field: " << ::testing::PrintToString(control);
        edit->setFocus();
        edit->selectAll();
        if (text.empty())
            QTest::keyClick(edit, Qt::Key_Delete);
        else
            QTest::keyClicks(edit, QString::fromStdWString(text));
    }

    void Choose(const std::wstring& control, int position) override {
        auto* const box = qobject_cast<QComboBox*>(Find(control));
        ASSERT_TRUE(box) << "no choice: " << ::testing::PrintToString(control);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < position; ++i) QTest::keyClick(box, Qt::Key_Down);
    }

    std::wstring Hint() const override {
        for (const QLabel* const hint : m_dialog.findChildren<QLabel*>("hint"))
            if (hint->isVisible()) return hint->text().toStdWString();
        return {};
    }

    std::vector<std::wstring> Columns() const override {
        std::vector<std::wstring> columns;
        const QAbstractItemModel& model = *List().model();
        for (int i = 0; i < model.columnCount(); ++i)
            columns.push_back(model.headerData(i, Qt::Horizontal).toString().toStdWString());
        return columns;
    }

    std::vector<std::vector<std::wstring>> Rows() const override {
        std::vector<std::vector<std::wstring>> rows;
        const QAbstractItemModel& model = *List().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            rows.emplace_back();
            for (int i = 0; i < model.columnCount(); ++i)
                rows.back().push_back(model.index(row, i).data().toString().toStdWString());
        }
        return rows;
    }

    std::vector<int> SelectedRows() const override {
        std::set<int> rows;
        for (const QModelIndex& index : List().selectionModel()->selectedIndexes()) rows.insert(index.row());
        return {rows.begin(), rows.end()};
    }

    void ClickRow(int row, const std::string& held) override {
        const Qt::KeyboardModifiers modifiers = held == "Ctrl"    ? Qt::ControlModifier
                                                : held == "Shift" ? Qt::ShiftModifier
                                                                  : Qt::NoModifier;
        QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers, Place(row).center());
    }

    void DoubleClickRow(int row) override {
        ClickRow(row, {});
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, Place(row).center());
    }

    std::uint32_t SwatchOfRow(int row) const override {
        const QColor color = Picture().pixelColor(MiddleOfSwatch(row));
        return static_cast<std::uint32_t>(color.red() | color.green() << 8 | color.blue() << 16);
    }

    std::pair<int, int> SwatchSizeOfRow(int row) const override {
        const QPoint middle = MiddleOfSwatch(row);
        const QImage picture = Picture();
        const auto extent = [&](QPoint step) {
            int count = -1; // the middle is counted twice
            for (const QPoint direction : {step, -step})
                for (QPoint at = middle;
                     picture.valid(at) && picture.pixelColor(at) == picture.pixelColor(middle);
                     at += direction)
                    ++count;
            return static_cast<int>(count / picture.devicePixelRatio());
        };
        return {extent({1, 0}), extent({0, 1})};
    }

    std::vector<std::wstring> Groups() const override {
        std::vector<std::wstring> groups;
        for (const QGroupBox* const group : m_dialog.findChildren<QGroupBox*>())
            groups.push_back(Plain(group->title()));
        return groups;
    }

    void Accept() override { m_dialog.accept(); }

    void EnterFile(const std::wstring& path) override {
        auto* const edit = m_dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_TRUE(edit) << "no file dialog";
        edit->setText(QString::fromStdWString(path));
    }

    void EnterColor(std::uint32_t color) override {
        auto* const dialog = qobject_cast<QColorDialog*>(&m_dialog);
        ASSERT_TRUE(dialog) << "no colour dialog";
        dialog->setCurrentColor(QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                                       static_cast<int>(color >> 16 & 0xFF)));
    }

    std::wstring Folder() const override {
        const auto* const dialog = qobject_cast<QFileDialog*>(&m_dialog);
        return dialog ? dialog->directory().absolutePath().toStdWString() : std::wstring();
    }

    std::vector<std::wstring> Filters() const override {
        std::vector<std::wstring> filters;
        if (const auto* const dialog = qobject_cast<QFileDialog*>(&m_dialog))
            for (const QString& filter : dialog->nameFilters()) filters.push_back(filter.toStdWString());
        return filters;
    }

    bool IsQuestion() const override {
        const auto* const box = qobject_cast<QMessageBox*>(&m_dialog);
        return box && box->icon() == QMessageBox::Question;
    }

    std::vector<std::wstring> Buttons() const override {
        std::vector<std::wstring> buttons;
        for (const QWidget* widget = m_dialog.nextInFocusChain(); widget != &m_dialog;
             widget = widget->nextInFocusChain())
            if (const auto* const button = qobject_cast<const QPushButton*>(widget))
                buttons.push_back(Plain(button->text()));
        return buttons;
    }

    int ColumnWidth(int column) const override { return List().columnWidth(column); }

    bool IsRowVisible(int row) const override {
        const QTreeView& list = List();
        return list.viewport()->rect().contains(list.visualRect(list.model()->index(row, 0)).center());
    }

private:
    QImage Picture() const { return List().viewport()->grab().toImage(); }

    QPoint MiddleOfSwatch(int row) const {
        const QRect place = Place(row);
        const QPoint middle(place.left() + 3 + List().iconSize().width() / 2, place.center().y());
        return middle * List().devicePixelRatioF();
    }

    // QTest takes one over an active parent for active.
    void WaitForActivation() const {
        const QPointer<QDialog> dialog(&m_dialog);
        if (!dialog->isActiveWindow()) dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog || dialog->isActiveWindow(); }));
    }

    // A button that is pressed by its letter clicks when it has been seen to be down for a moment.
    static void WaitForPressedButtons(const QPointer<QDialog>& dialog) {
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const auto isDown = [](const QAbstractButton* button) {
                return button->isDown() && !qobject_cast<const QToolButton*>(button); // which can stay so
            };
            return !dialog || std::ranges::none_of(dialog->findChildren<QAbstractButton*>(), isDown);
        }));
    }

    QWidget* Receiver() const {
        QWidget* const focus = m_dialog.focusWidget();
        return focus ? focus : &m_dialog;
    }

    QWidget* Find(const std::wstring& name) const {
        for (QWidget* const widget : m_dialog.findChildren<QWidget*>())
            if (!qobject_cast<QLabel*>(widget) && widget->isVisible() &&
                widget->focusPolicy() != Qt::NoFocus && NameOf(*widget) == name)
                return widget;
        ADD_FAILURE() << "no control " << ::testing::PrintToString(name) << " in "
                      << ::testing::PrintToString(Title());
        return nullptr;
    }

    static QLineEdit* EditOf(QWidget* widget) {
        if (!widget) return nullptr;
        auto* const edit = qobject_cast<QLineEdit*>(widget);
        return edit ? edit : widget->findChild<QLineEdit*>();
    }
    static const QLineEdit* EditOf(const QWidget* widget) { return EditOf(const_cast<QWidget*>(widget)); }

    QTreeView& List() const {
        auto* const list = m_dialog.findChild<QTreeView*>();
        if (!list) throw std::logic_error("the dialog has no list");
        return *list;
    }

    QRect Place(int row) const {
        const QModelIndex index = List().model()->index(row, 0);
        List().scrollTo(index);
        return List().visualRect(index);
    }

    QDialog& m_dialog;
};

} // namespace

struct DialogDriver::Native final : QObject {
    std::deque<Script> scripts;

    Native() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override {
        auto* const dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(object) : nullptr;
        if (dialog) QTimer::singleShot(0, dialog, [this, dialog] { Run(*dialog); });
        return false;
    }

    void Run(QDialog& dialog) {
        const QPointer<QDialog> open(&dialog);
        dialog.activateWindow();
        // QTest takes one over an active parent for active.
        EXPECT_TRUE(QTest::qWaitFor([&] { return !open || dialog.isActiveWindow(); }));
        if (scripts.empty()) {
            ADD_FAILURE() << "nobody waits for the dialog " << dialog.windowTitle().toStdString();
        } else {
            const Script script = std::move(scripts.front());
            scripts.pop_front();
            QtDialog driven(dialog);
            try {
                script(driven);
            } catch (const std::exception& fault) {
                ADD_FAILURE() << fault.what();
            }
            if (!open || !open->isVisible()) return;
            ADD_FAILURE() << "still open: " << dialog.windowTitle().toStdString();
        }
        dialog.done(QDialog::Rejected);
    }
};

DialogDriver::DialogDriver() : m_native(std::make_unique<Native>()) {}

DialogDriver::~DialogDriver() { EXPECT_EQ(0U, m_native->scripts.size()) << "dialogs that did not open"; }

DialogDriver& DialogDriver::Then(Script script) {
    m_native->scripts.push_back(std::move(script));
    return *this;
}
