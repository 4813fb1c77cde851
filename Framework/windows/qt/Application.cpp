// SPDX-License-Identifier: MIT
#include "Framework/windows/qt/private/Application.h"

#include "Framework/windows/qt/private/Toolkit.h"

#include <QDir>
#include <QLibrary>
#include <QLibraryInfo>
#include <QLocale>
#include <algorithm>
#include <clocale>
#include <memory>

namespace {

// Qt ends the process where it finds no display, so that has to be known before.

// The connection is kept until Qt has its own: a server may begin anew when its last client leaves it.
bool IsXThere(std::shared_ptr<void>& display) {
    QLibrary library("xcb", 1);
    const auto connect = reinterpret_cast<void* (*)(const char*, int*)>(library.resolve("xcb_connect"));
    const auto hasError = reinterpret_cast<int (*)(void*)>(library.resolve("xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<void (*)(void*)>(library.resolve("xcb_disconnect"));
    if (!connect || !hasError || !disconnect) return false;
    display = {connect(nullptr, nullptr), disconnect};
    return hasError(display.get()) == 0;
}

bool IsWaylandThere() {
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET")) return true; // asking would use it up
    // Wayland's library complains on its own where it has no folder to look in.
    const bool isPath = qEnvironmentVariable("WAYLAND_DISPLAY").startsWith('/');
    if (!isPath && qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) return false;
    QLibrary library("wayland-client", 0);
    const auto connect = reinterpret_cast<void* (*)(const char*)>(library.resolve("wl_display_connect"));
    const auto disconnect = reinterpret_cast<void (*)(void*)>(library.resolve("wl_display_disconnect"));
    if (!connect || !disconnect) return false;
    void* const connection = connect(nullptr);
    if (connection) disconnect(connection);
    return connection != nullptr;
}

// Whether Qt has a plugin of that name ("xcb", "offscreen"), with all the libraries that it needs.
bool IsPluginThere(const QString& platform) {
    QStringList folders = {QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms"};
    folders +=
        qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
    for (const QString& folder :
         qEnvironmentVariable("QT_PLUGIN_PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts))
        folders.append(folder + "/platforms");
    return std::ranges::any_of(folders, [&](const QString& folder) {
        const QStringList files =
            QDir(folder).entryList({"libq" + platform + ".so", "libq" + platform + "-*.so"});
        return std::ranges::any_of(
            files, [&](const QString& file) { return QLibrary(QDir(folder).filePath(file)).load(); });
    });
}

bool IsPlatformThere(const QString& platform, std::shared_ptr<void>& display) {
    if (!IsPluginThere(platform)) return false;
    if (platform == "xcb") return IsXThere(display);
    return !platform.startsWith("wayland") || IsWaylandThere();
}

// What `display` gets lasts until Qt has connected.
bool IsDisplayThere(std::shared_ptr<void>& display) {
    QStringList platforms =
        qEnvironmentVariable("QT_QPA_PLATFORM").split(';', Qt::SkipEmptyParts); // with options
    if (platforms.isEmpty()) platforms = {"wayland", "xcb"};
    return std::ranges::any_of(platforms, [&](const QString& platform) {
        return IsPlatformThere(platform.section(':', 0, 0), display);
    });
}

// The one that the library's own texts are in.
QLocale UserLanguage() {
    const QString set = qEnvironmentVariable("UTILITYDLL_LANGUAGE");
    return set.isEmpty() ? QLocale::system() : QLocale(set);
}

} // namespace

ApplicationForDialog::ApplicationForDialog() {
    if (!QCoreApplication::instance()) {
        std::shared_ptr<void> display;
        if (!IsDisplayThere(display)) {
            m_isThere =
                L"Windows cannot be made: there is no display. Start the program in a graphical session, or "
                L"give it the display by the environment variable DISPLAY or WAYLAND_DISPLAY";
            return;
        }
        m_locale = std::setlocale(LC_ALL, nullptr);
        m_application.emplace(m_count, m_arguments);
        std::setlocale(LC_ALL, m_locale.c_str()); // Qt takes the user's, the first time
        std::setlocale(LC_CTYPE, "");             // which it needs for letters that are typed with dead keys
        // Desktops find the program's icon by it.
        QGuiApplication::setDesktopFileName(QCoreApplication::applicationName());
        if (m_texts.load(UserLanguage(), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            QCoreApplication::installTranslator(&m_texts);
    }
    m_isThere = IsReadyForWindows();
}

ApplicationForDialog::~ApplicationForDialog() {
    if (!m_application) return;
    m_application.reset();
    std::setlocale(LC_ALL, m_locale.c_str());
}
