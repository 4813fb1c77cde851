// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"
#include "Framework/windows/qt/private/QtWindow.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>

class QtButton final : public QtWindow<NativeButton, QAbstractButton> {
public:
    QtButton(QAbstractButton* button, NativeWindowOwner* owner, bool isPart);

    bool IsChecked() const override { return Get() && Get()->isChecked(); }
    void SetChecked(bool isChecked) override {
        if (Get()) Get()->setChecked(isChecked);
    }
    void SetSwatch(COLORREF color) override;

private:
    QString TextOf(const QAbstractButton& button) const override { return button.text(); }
    void SetTextOf(QAbstractButton& button, const QString& text) override { button.setText(text); }
};

class QtEdit final : public QtWindow<NativeEdit, QLineEdit> {
public:
    explicit QtEdit(QLineEdit* edit);

    void Enable(bool enable) override;
    void FocusAndSelect() override;
    void ShowHint(const std::wstring& text) override;

private:
    QWidget& Field() const; // with its arrows
    QString TextOf(const QLineEdit& edit) const override { return edit.text(); }
    void SetTextOf(QLineEdit& edit, const QString& text) override { edit.setText(text); }
};

/// An edit field with arrows, which do nothing but tell.
class SpinEdit final : public QAbstractSpinBox {
public:
    explicit SpinEdit(QWidget* parent) : QAbstractSpinBox(parent) {}

    QLineEdit* Edit() const { return lineEdit(); }
    int Delta() const { return m_delta; }
    void SetLink(WidgetLink* arrows) { m_arrows = arrows; }

    void stepBy(int steps) override {
        m_delta = steps;
        if (m_arrows) m_arrows->Tell(UDN_DELTAPOS);
    }
    QValidator::State validate(QString&, int&) const override { return QValidator::Acceptable; }

protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

private:
    QPointer<WidgetLink> m_arrows;
    int m_delta = 0;
};

class QtSpin final : public QtWindow<NativeSpin, SpinEdit> {
public:
    explicit QtSpin(SpinEdit* edit) : QtWindow(edit, nullptr, true) { edit->SetLink(&Link()); }
    int Delta() const override { return Get() ? Get()->Delta() : 0; }
};

class QtComboBox final : public QtWindow<NativeComboBox, QComboBox> {
public:
    QtComboBox(QComboBox* box, NativeWindowOwner* owner, bool isSorted, bool isPart);

    int Add(const std::wstring& text) override;
    int Count() const override { return Get() ? Get()->count() : 0; }
    std::wstring TextAt(int position) const override;
    int Selected() const override { return Get() ? Get()->currentIndex() : -1; }
    void Select(int position) override {
        if (Get()) Get()->setCurrentIndex(position);
    }

private:
    QString TextOf(const QComboBox& box) const override { return box.currentText(); }
    const bool m_isSorted;
};

/// A push button that its owner draws.
std::unique_ptr<NativeWindow> MakeDrawn(NativeWindowOwner& owner, const std::wstring& caption,
                                        QWidget* parent, const struct PaintContexts& contexts);
