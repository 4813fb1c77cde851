// SPDX-License-Identifier: MIT
#include "tests/pictures/Camera.h"

#include "Framework/windows/Wnd.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QTranslator>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

QPalette DarkPalette() {
    QPalette palette(QColor(48, 48, 50));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::AlternateBase, QColor(40, 40, 42));
    palette.setColor(QPalette::Highlight, QColor(42, 106, 170));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(64, 64, 66));
    palette.setColor(QPalette::ToolTipText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
    return palette;
}

} // namespace

struct Camera::Native {
    std::string prefix, suffix;
    QTranslator texts{nullptr}; // of the buttons of messages

    // With what stands over it in windows of its own: hints at fields.
    void Take(QWidget& window, const std::string& name) const {
        QRect all = window.geometry();
        std::vector<QWidget*> over;
        for (QWidget* const widget : window.findChildren<QWidget*>())
            if (widget->isWindow() && widget->isVisible()) over.push_back(widget);
        for (const QWidget* const widget : over) all |= widget->geometry();
        QPixmap picture(all.size() * window.devicePixelRatio());
        picture.setDevicePixelRatio(window.devicePixelRatio());
        picture.fill(window.palette().color(QPalette::Mid));
        QPainter painter(&picture);
        painter.drawPixmap(window.pos() - all.topLeft(), window.grab());
        for (QWidget* const widget : over) painter.drawPixmap(widget->pos() - all.topLeft(), widget->grab());
        painter.end();
        const std::string file = prefix + name + suffix + ".png";
        if (!picture.toImage()
                 .convertToFormat(QImage::Format_RGB888)
                 .save(QString::fromStdString(file), "PNG", 0))
            ADD_FAILURE() << file << " cannot be written";
    }
};

Camera::Camera(std::string prefix, std::string suffix, const std::string& theme)
    : m_native(new Native{std::move(prefix), std::move(suffix)}) {
    if (m_native->texts.load(QLocale(qEnvironmentVariable("UTILITYDLL_LANGUAGE")), "qtbase", "_",
                             QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&m_native->texts);
    QApplication::setStyle("Fusion");
    QApplication::setPalette(theme == "dark" ? DarkPalette() : QApplication::style()->standardPalette());
}

Camera::~Camera() = default;

void Camera::TakeDialog(const std::string& name) const {
    QApplication::processEvents(); // what the last key changed is laid out
    m_native->Take(*QApplication::activeModalWidget(), name);
}

void Camera::TakeControls(const std::string& name, const std::vector<CWnd*>& controls) const {
    QWidget window;
    QVBoxLayout column(&window);
    for (const CWnd* const control : controls) {
        auto* const widget = static_cast<QWidget*>(control->NativeHandle());
        column.addWidget(widget);
        widget->show();
    }
    window.show();
    QApplication::processEvents();
    m_native->Take(window, name);
}
