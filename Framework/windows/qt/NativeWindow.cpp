// SPDX-License-Identifier: MIT
#include "Framework/windows/private/NativeWindow.h"

#include "Framework/windows/private/WindowModule.h"
#include "Framework/windows/qt/private/QtWindow.h"
#include "Framework/windows/qt/private/Toolkit.h"

#include <QApplication>
#include <QThread>

namespace {

void DeleteWidgets() {
    while (!WidgetLink::All().empty()) delete &(*WidgetLink::All().begin())->Widget();
}

// Qt forgets its routines when it has called them: the next QApplication needs them again.
void DeleteWidgetsWith(const QApplication* application) {
    static QPointer<const QApplication> known;
    if (known == application) return;
    known = application;
    qAddPostRoutine(&DeleteWidgets);
}

ErrorString MakeWindow(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
    ErrorString ready = IsReadyForWindows();
    if (ready) window = std::make_unique<QtWindow<NativeWindow>>(new QWidget, &owner);
    return ready;
}

} // namespace

ErrorString IsReadyForWindows() {
    const auto* const application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!application || QCoreApplication::closingDown())
        return L"Windows cannot be made: there is no QApplication";
    if (QThread::currentThread() != application->thread())
        return L"Windows can be made by the thread of the QApplication only";
    DeleteWidgetsWith(application);
    return {};
}

extern "C" __attribute__((visibility("default"))) const WindowModule FrameworkWindowsModule;
const WindowModule FrameworkWindowsModule = {FRAMEWORK_VERSION, &MakeWindow, &MakeToolkit};
