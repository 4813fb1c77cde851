// SPDX-License-Identifier: MIT
#include "Framework/windows/qt/private/Toolkit.h"

#include "Framework/windows/qt/private/Application.h"
#include "Framework/windows/qt/private/Controls.h"
#include "Framework/windows/qt/private/Dialog.h"
#include "Framework/windows/qt/private/Swatch.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>

namespace {

QWidget* WidgetOf(NativeWindow* window) { return window ? static_cast<QWidget*>(window->Handle()) : nullptr; }

QString FilterOf(const std::pair<std::wstring, std::wstring>& filter) {
    const QString name = QString::fromStdWString(filter.first);
    const QString pattern = '(' + QString::fromStdWString(filter.second).replace(';', ' ') + ')';
    return name.endsWith(pattern) ? name : name + ' ' + pattern;
}

/// A dialog of Qt's while it is open. Its parent may go in the meantime, and takes it along.
template <typename Dialog> class Shown {
public:
    explicit Shown(NativeWindow* parent) : m_dialog(new Dialog(WidgetOf(parent))) {
        m_dialog->setAttribute(Qt::WA_QuitOnClose, false);
    }
    ~Shown() { delete m_dialog.data(); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

    Dialog* operator->() const { return m_dialog.data(); }

    /// What the dialog ended with; 0 when it went with its parent.
    int Run() const {
        const int result = m_dialog->exec();
        return m_dialog ? result : 0;
    }

private:
    const QPointer<Dialog> m_dialog;
};

class Toolkit final : public NativeToolkit {
public:
    explicit Toolkit(const PaintContexts& contexts) : m_contexts(contexts) {}

    ErrorString MakeDrawnButton(NativeWindowOwner& owner, const std::wstring& caption, NativeWindow* parent,
                                std::unique_ptr<NativeWindow>& button) override {
        ErrorString ready = IsReadyForWindows();
        if (ready) button = MakeDrawn(owner, caption, WidgetOf(parent), m_contexts);
        return ready;
    }

    ErrorString MakeComboBox(NativeWindowOwner& owner, bool isSorted, NativeWindow* parent,
                             std::unique_ptr<NativeWindow>& box) override {
        ErrorString ready = IsReadyForWindows();
        if (ready)
            box = std::make_unique<QtComboBox>(new QComboBox(WidgetOf(parent)), &owner, isSorted, false);
        return ready;
    }

    ErrorString MakeDialog(NativeWindowOwner& owner, const std::wstring& caption, const DialogItem& content,
                           NativeWindow* parent, std::unique_ptr<NativeDialog>& dialog) override {
        return MakeQtDialog(owner, caption, content, parent, dialog);
    }

    bool AskForFile(FileRequest& request, NativeWindow* parent) override {
        const ApplicationForDialog application;
        if (!application.IsThere()) return false;
        const Shown<QFileDialog> dialog(parent);
        dialog->setAcceptMode(request.isToOpen ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
        dialog->setFileMode(request.isToOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
        dialog->setOption(QFileDialog::DontConfirmOverwrite, (request.flags & OFN_OVERWRITEPROMPT) == 0);
        dialog->setDefaultSuffix(QString::fromStdWString(request.extension));
        QStringList filters;
        for (const auto& filter : request.filters) filters.append(FilterOf(filter));
        dialog->setNameFilters(filters);
        if (!request.folder.empty()) dialog->setDirectory(QString::fromStdWString(request.folder));
        if (!request.path.empty()) dialog->selectFile(QString::fromStdWString(request.path));
        if (dialog.Run() != QDialog::Accepted || dialog->selectedFiles().isEmpty()) return false;
        request.path = dialog->selectedFiles().constFirst().toStdWString();
        return true;
    }

    bool AskForColor(COLORREF& color, bool, NativeWindow* parent) override { // Qt's is always fully open
        const ApplicationForDialog application;
        if (!application.IsThere()) return false;
        const Shown<QColorDialog> dialog(parent);
        dialog->setCurrentColor(ColorOf(color));
        if (dialog.Run() != QDialog::Accepted) return false;
        color = ReferenceOf(dialog->selectedColor());
        return true;
    }

    int ShowMessage(const std::wstring& text, const std::wstring& caption, UINT type,
                    NativeWindow* parent) override {
        const ApplicationForDialog application;
        if (!application.IsThere()) return IDNO;
        const bool isQuestion = (type & MB_YESNO) != 0;
        const Shown<QMessageBox> box(parent);
        box->setTextFormat(Qt::PlainText);
        box->setText(QString::fromStdWString(text));
        box->setWindowTitle(QString::fromStdWString(caption));
        box->setIcon((type & MB_ICONQUESTION) != 0 ? QMessageBox::Question
                     : (type & MB_ICONERROR) != 0  ? QMessageBox::Critical
                                                   : QMessageBox::NoIcon);
        box->setStandardButtons(isQuestion ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
        box->setDefaultButton(isQuestion ? QMessageBox::Yes : QMessageBox::Ok);
        const int answer = box.Run();
        return !isQuestion ? IDOK : answer == QMessageBox::Yes ? IDYES : IDNO;
    }

private:
    const PaintContexts m_contexts;
};

} // namespace

NativeToolkit& MakeToolkit(const PaintContexts& contexts) {
    static Toolkit toolkit(contexts);
    return toolkit;
}
