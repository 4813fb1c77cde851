// SPDX-License-Identifier: MIT
#include "Framework/windows/qt/private/Dialog.h"

#include "Framework/windows/qt/private/Application.h"
#include "Framework/windows/qt/private/Controls.h"
#include "Framework/windows/qt/private/ListView.h"
#include "Framework/windows/qt/private/QtWindow.h"

#include <QCheckBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <map>

namespace {

using Controls = std::map<unsigned, std::unique_ptr<NativeWindow>>;

// Names a field, and stands for it under the mouse as it does for the keyboard.
class FieldLabel final : public QLabel {
public:
    FieldLabel(const QString& text, QWidget& field, QWidget* parent) : QLabel(text, parent) {
        setBuddy(&field);
    }

protected:
    void mousePressEvent(QMouseEvent*) override {
        if (!buddy()->isEnabled()) return;
        buddy()->setFocus(Qt::MouseFocusReason);
        if (auto* const box = qobject_cast<QCheckBox*>(buddy())) box->click();
    }
};

// Wants to be as large as its columns, with all of what the last one says, and a dozen rows.
class List final : public QTreeView {
public:
    explicit List(QWidget* parent) : QTreeView(parent) {}

    QSize sizeHint() const override {
        constexpr int kRows = 12;
        const int rowHeight = std::max({sizeHintForRow(0), fontMetrics().height(), iconSize().height()});
        const int frame = 2 * frameWidth();
        const int last = header()->count() - 1; // takes what room is left
        const int more = last < 0 ? 0 : std::max(0, sizeHintForColumn(last) - columnWidth(last));
        return {header()->length() + more + verticalScrollBar()->sizeHint().width() + frame,
                header()->sizeHint().height() + kRows * rowHeight + frame};
    }
};

// Makes what stands in a dialog.
class Builder {
public:
    Builder(QWidget& dialog, Controls& controls) : m_dialog(dialog), m_controls(controls) {}

    void Fill(QBoxLayout& layout, const std::vector<DialogItem>& items) {
        for (const DialogItem& item : items) {
            switch (item.kind) {
            case DialogItem::COLUMN:
            case DialogItem::ROW: {
                auto* const inner = item.kind == DialogItem::COLUMN
                                        ? static_cast<QBoxLayout*>(new QVBoxLayout)
                                        : new QHBoxLayout;
                layout.addLayout(inner, HasList(item) ? 1 : 0);
                Fill(*inner, item.items);
                break;
            }
            case DialogItem::FORM:
                layout.addLayout(Form(item.items));
                break;
            case DialogItem::GROUP: {
                auto* const group = new QGroupBox(TextOf(item), &m_dialog);
                layout.addWidget(group);
                Fill(*new QVBoxLayout(group), item.items);
                break;
            }
            case DialogItem::SPACE:
                layout.addStretch(1);
                break;
            default:
                layout.addWidget(Make(item), HasList(item) ? 1 : 0);
            }
        }
    }

private:
    static QString TextOf(const DialogItem& item) { return QString::fromStdWString(item.text); }

    // What holds a list takes what room is left.
    static bool HasList(const DialogItem& item) {
        return item.kind == DialogItem::LIST_VIEW || std::ranges::any_of(item.items, &HasList);
    }

    QLayout* Form(const std::vector<DialogItem>& items) {
        auto* const form = new QFormLayout;
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
            QWidget* const field = Make(items[i + 1]);
            form->addRow(new FieldLabel(TextOf(items[i]), *field, &m_dialog), field);
        }
        return form;
    }

    QWidget* Make(const DialogItem& item) {
        QWidget* const widget = MakeControl(item);
        widget->setDisabled(item.isDisabled);
        return widget;
    }

    QWidget* MakeControl(const DialogItem& item) {
        std::unique_ptr<NativeWindow>& native = m_controls[item.id];
        switch (item.kind) {
        case DialogItem::EDIT: {
            auto* const edit = new QLineEdit(&m_dialog);
            native = std::make_unique<QtEdit>(edit);
            return edit;
        }
        case DialogItem::SPIN_EDIT: {
            auto* const edit = new SpinEdit(&m_dialog);
            native = std::make_unique<QtEdit>(edit->Edit());
            m_controls[item.id + 1] = std::make_unique<QtSpin>(edit);
            return edit;
        }
        case DialogItem::CHECK_BOX: {
            auto* const box = new QCheckBox(TextOf(item), &m_dialog);
            native = std::make_unique<QtButton>(box, nullptr, true);
            return box;
        }
        case DialogItem::DROP_DOWN_LIST: {
            auto* const box = new QComboBox(&m_dialog);
            native = std::make_unique<QtComboBox>(box, nullptr, false, true);
            return box;
        }
        case DialogItem::LIST_VIEW: {
            auto* const view = new List(&m_dialog);
            view->setAccessibleName(TextOf(item));
            native = std::make_unique<QtListView>(view);
            return view;
        }
        default: {
            auto* const button = new QPushButton(TextOf(item), &m_dialog);
            button->setAutoDefault(true); // Enter presses the one that has the keyboard
            button->setDefault(item.kind == DialogItem::DEFAULT_BUTTON);
            native = std::make_unique<QtButton>(button, nullptr, true);
            return button;
        }
        }
    }

    QWidget& m_dialog;
    Controls& m_controls;
};

class DialogWidget final : public QDialog {
public:
    explicit DialogWidget(QWidget* parent) : QDialog(parent) {
        setAttribute(Qt::WA_QuitOnClose, false); // whether a host goes on without windows is its own matter
    }
    void SetLink(WidgetLink& link) { m_link = &link; }

    // Escape, and closing the window.
    void reject() override {
        if (m_link) m_link->Tell(IDCANCEL);
    }

    // What is in the field with the keyboard can be typed over at once, as one that Tab goes to.
    void setVisible(bool isVisible) override {
        if (isVisible && !focusWidget()) FocusFirst();
        QDialog::setVisible(isVisible);
    }

private:
    void FocusFirst() {
        for (QWidget* widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain())
            if ((widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled()) return widget->setFocus();
    }

    QPointer<WidgetLink> m_link;
};

// What a run of a dialog needs to its end, though a handler may delete the dialog in the middle of it.
struct Course {
    ApplicationForDialog application;
    bool hasEnded = false;
    int result = IDCANCEL; // also when others close it
};

// Before the widget, for the application has to go behind it.
struct CourseOfDialog {
    const std::shared_ptr<Course> course;
};

class QtDialog final : private CourseOfDialog, public QtWindow<NativeDialog, DialogWidget> {
public:
    QtDialog(std::shared_ptr<Course> made, NativeWindowOwner& owner, QWidget* parent)
        : CourseOfDialog{std::move(made)}, QtWindow(new DialogWidget(parent), &owner) {
        Get()->SetLink(Link());
    }

    void Fill(const DialogItem& content) {
        auto* const layout = new QVBoxLayout(Get());
        Builder(*Get(), m_controls).Fill(*layout, content.items);
    }

    std::unique_ptr<NativeWindow> Take(unsigned id) override {
        const auto found = m_controls.find(id);
        return found == m_controls.end() ? nullptr : std::move(found->second);
    }

    int Run() override {
        const std::shared_ptr<Course> ours = course; // nothing of this is used afterwards
        if (Get() && !ours->hasEnded) Get()->exec();
        return ours->result;
    }

    void End(int result) override {
        course->hasEnded = true;
        course->result = result;
        if (Get()) Get()->done(result);
    }

private:
    Controls m_controls; // those that nobody has taken
};

} // namespace

ErrorString MakeQtDialog(NativeWindowOwner& owner, const std::wstring& caption, const DialogItem& content,
                         NativeWindow* parent, std::unique_ptr<NativeDialog>& dialog) {
    auto course = std::make_shared<Course>();
    if (!course->application.IsThere()) return course->application.IsThere();
    auto* const over = parent ? static_cast<QWidget*>(parent->Handle()) : nullptr;
    auto made = std::make_unique<QtDialog>(std::move(course), owner, over);
    made->SetText(caption);
    made->Fill(content);
    dialog = std::move(made);
    return {};
}
