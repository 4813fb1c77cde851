#include "Framework/windows/qt/private/Application.h"

#include "Framework/windows/qt/private/Toolkit.h"

#include <QDir>
#include <QLibrary>
#include <QLibraryInfo>

namespace {

// Qt ends the process where it finds no display, so that has to be known before.
bool IsXThere() {
    QLibrary library("xcb", 1);
    const auto connect = reinterpret_cast<void* (*)(const char*, int*)>(library.resolve("xcb_connect"));
    const auto hasError = reinterpret_cast<int (*)(void*)>(library.resolve("xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<void (*)(void*)>(library.resolve("xcb_disconnect"));
    if (!connect || !hasError || !disconnect) return false;
    void* const connection = connect(nullptr, nullptr);
    const bool isThere = hasError(connection) == 0;
    disconnect(connection);
    return isThere;
}

bool IsWaylandThere() {
    const QString plugins = QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms";
    if (QDir(plugins).entryList({"libqwayland-*"}).isEmpty()) return false;
    const QByteArray name = qgetenv("WAYLAND_DISPLAY");
    return !name.isEmpty() && QFileInfo::exists(QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(name));
}

bool IsDisplayThere() {
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || IsWaylandThere() || IsXThere();
}

} // namespace

ApplicationForDialog::ApplicationForDialog() {
    if (!QCoreApplication::instance()) {
        if (!IsDisplayThere()) {
            m_isThere =
                L"Windows cannot be made: there is no display. Start the program in a graphical session, or "
                L"give it the display by the environment variable DISPLAY or WAYLAND_DISPLAY";
            return;
        }
        m_application.emplace(m_count, m_arguments);
    }
    m_isThere = IsReadyForWindows();
}
