#include "apps/chartutil/drawing/Png.h"

#include <QBuffer>
#include <QByteArray>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <memory>

namespace {

// What Qt has to say of the surroundings is not for whoever reads the command's messages.
class Silence {
public:
    Silence()
        : m_handler(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})) {}
    ~Silence() { qInstallMessageHandler(m_handler); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    QtMessageHandler m_handler;
};

// Texts need an application object; a command line has no screen for it. A program with windows has its own.
void NeedApplication() {
    if (QCoreApplication::instance()) return;
    static int count = 3;
    static char name[] = "chartutil";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* arguments[] = {name, option, platform, nullptr};
    static const auto application = std::make_unique<QGuiApplication>(count, arguments);
}

} // namespace

bool CanRenderPng() { return true; }

std::string RenderPng(const std::string& svg, int width, int height) {
    const Silence silence;
    NeedApplication();
    QSvgRenderer renderer(QByteArray::fromStdString(svg));
    QImage image(width, height, QImage::Format_RGB32);
    if (!renderer.isValid() || image.isNull()) return {};
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? buffer.data().toStdString() : std::string();
}
