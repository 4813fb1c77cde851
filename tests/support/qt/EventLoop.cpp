// SPDX-License-Identifier: MIT
#include "tests/support/EventLoop.h"

#include "tests/support/TestFiles.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace {

// Qt would make one for the user, and leave it, as it does with what its dialogs remember.
void MakeFolders() {
    static const TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
    qputenv("XDG_RUNTIME_DIR", folder.Path().c_str());
    qputenv("XDG_CONFIG_HOME", folder.Path().c_str());
}

} // namespace

EventLoop::EventLoop() {
    MakeFolders();
    static int argc = 1; // for as long as the application is there
    static char name[] = "test";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
}

EventLoop::~EventLoop() { delete qApp; }

bool EventLoop::RunUntil(const std::function<bool()>& isDone) {
    QEventLoop loop;
    QElapsedTimer time;
    time.start();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone() || time.hasExpired(120'000)) loop.quit();
    });
    look.start(1);
    if (!isDone()) loop.exec();
    return isDone();
}

void EventLoop::RunWhatWaits() {
    // One round leaves what its own events post to the next.
    for (int round = 0; round < 50; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}
