// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/PictureModule.h"

#include <QBuffer>
#include <QByteArray>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>

#include <cmath>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace {

constexpr double kPixelsPerMm = 4;
constexpr double kMmPerInch = 25.4;

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
class Application {
public:
    Application() {
        if (!QCoreApplication::instance()) m_application.emplace(m_count, m_arguments);
    }

private:
    int m_count = 3;
    char m_name[10] = "chartutil";
    char m_option[10] = "-platform";
    char m_platform[10] = "offscreen";
    char* m_arguments[4] = {m_name, m_option, m_platform, nullptr};
    std::optional<QGuiApplication> m_application;
};

// The one thread that uses Qt, for one caller at a time, which stays until the process ends. What Qt keeps
// for a thread is deleted when that ends; a worker that ends while the process does would have that race with
// the end of Qt itself.
class DrawingThread {
public:
    // Null when the system has no thread left.
    static DrawingThread* Get() {
        static DrawingThread* thread = nullptr;
        try {
            if (!thread) thread = new DrawingThread;
        } catch (const std::system_error&) {
        }
        return thread;
    }

    // Does the work there, and returns or throws what it does.
    void Do(const std::function<void()>& work) {
        std::unique_lock lock(m_guard);
        m_work = &work;
        m_changed.notify_all();
        m_changed.wait(lock, [&] { return !m_work; });
        if (m_failure) std::rethrow_exception(std::exchange(m_failure, nullptr));
    }

private:
    DrawingThread() {
        std::thread([this] { Serve(); }).detach();
    }

    void Serve() {
        std::optional<Application> application;
        std::unique_lock lock(m_guard);
        while (true) {
            m_changed.wait(lock, [&] { return m_work != nullptr; });
            try {
                if (!application) application.emplace();
                (*m_work)();
            } catch (...) {
                m_failure = std::current_exception();
            }
            m_work = nullptr;
            m_changed.notify_all();
        }
    }

    std::mutex m_guard;
    std::condition_variable m_changed;
    const std::function<void()>* m_work = nullptr; // null while there is none
    std::exception_ptr m_failure;
};

QColor ColorOf(const RGBColor& color) { return {color.Red(), color.Green(), color.Blue()}; }

QPolygonF PointsOf(const std::vector<Surface::Point>& points) {
    QPolygonF polygon;
    for (const Surface::Point& point : points) polygon << QPointF(point.x, point.y);
    return polygon;
}

// Draws each kind of shape, in millimetres.
struct Brush {
    QPainter& painter;

    void operator()(const Surface::FilledRectangle& shape) const {
        painter.setRenderHint(QPainter::Antialiasing, false); // which would leave seams between neighbours
        painter.fillRect(QRectF(shape.x, shape.y, shape.width, shape.height), ColorOf(shape.fill));
    }
    void operator()(const Surface::FilledPolygon& shape) const {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ColorOf(shape.fill));
        QPainterPath path; // which fills by the even-odd rule
        for (const std::vector<Surface::Point>& ring : shape.rings) {
            path.addPolygon(PointsOf(ring));
            path.closeSubpath();
        }
        painter.drawPath(path);
    }
    void operator()(const Surface::Stroke& shape) const {
        QPen pen(ColorOf(shape.pen.color), shape.pen.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
        if (!shape.pen.dashes.empty()) {
            QList<qreal> dashes; // which Qt counts in widths of the pen
            for (const double dash : shape.pen.dashes) dashes << dash / shape.pen.width;
            pen.setDashPattern(dashes);
        }
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        if (shape.isClosed)
            painter.drawPolygon(PointsOf(shape.points));
        else
            painter.drawPolyline(PointsOf(shape.points));
    }
    void operator()(const Surface::Image& shape) const {
        const QImage image = QImage::fromData(QByteArray::fromStdString(shape.png), "PNG");
        painter.drawImage(QRectF(shape.x, shape.y, shape.width, shape.height), image);
    }
    void operator()(const Surface::Layer&) const {} // a page has none
    void operator()(const Surface::Label& shape) const {
        constexpr int kDesignSize = 100; // sizes of fonts are whole numbers here; the painter scales them
        static const QStringList families =
            QString::fromLatin1(kFontFamilies.data(), kFontFamilies.size()).split(", ");
        QFont font(families);
        if (!shape.font.family.empty())
            font.setFamilies(QStringList{QString::fromStdString(shape.font.family)} + families);
        font.setPixelSize(kDesignSize);
        font.setBold(shape.font.bold);
        font.setItalic(shape.font.italic);
        font.setUnderline(shape.font.underline);
        font.setKerning(false);
        font.setHintingPreference(QFont::PreferNoHinting);
        const QString text = QString::fromStdString(shape.text);
        const double advance = QFontMetricsF(font, painter.device()).horizontalAdvance(text);
        const double scale = shape.font.size / kDesignSize;
        // Where another font stands in, the text still keeps to the room that was measured for it.
        const bool isStretched = advance > 0 && (shape.isFitted || advance * scale > shape.width);
        const double squeeze = isStretched ? shape.width / (advance * scale) : 1;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(shape.x, shape.y);
        painter.rotate(-shape.rotation);
        painter.scale(scale * squeeze, scale);
        painter.setFont(font);
        painter.setPen(ColorOf(shape.color));
        painter.drawText(QPointF(-advance * static_cast<int>(shape.anchor) / 2, 0), text);
        painter.restore();
    }
};

void Draw(const Surface& surface, QPainter& painter, double dotsPerMm, const ShowDrawn& show) {
    painter.scale(dotsPerMm, dotsPerMm);
    std::size_t done = 0;
    for (const Surface::Shape& shape : surface.Shapes()) {
        std::visit(Brush{painter}, shape);
        show(++done);
    }
}

QByteArray Png(const Surface& surface, const ShowDrawn& show) {
    const auto pixels = [](double mm) { return static_cast<int>(std::lround(mm * kPixelsPerMm)); };
    QImage image(pixels(surface.Width()), pixels(surface.Height()), QImage::Format_RGB32);
    if (image.isNull()) return {};
    image.fill(Qt::white);
    QPainter painter(&image);
    Draw(surface, painter, kPixelsPerMm, show);
    painter.end();
    image.setDotsPerMeterX(static_cast<int>(kPixelsPerMm * 1000));
    image.setDotsPerMeterY(static_cast<int>(kPixelsPerMm * 1000));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? buffer.data() : QByteArray();
}

// The day of its making is the only part of Qt's PDF files that differs from call to call.
void LevelDate(QByteArray& pdf) {
    constexpr char kName[] = "/CreationDate (D:";
    constexpr char kEpoch[] = "19700101000000";
    const qsizetype place = pdf.indexOf(kName);
    if (place < 0) return;
    // With its length and what follows of the time zone kept, since the file counts its bytes.
    const qsizetype begin = place + static_cast<qsizetype>(sizeof kName) - 1;
    pdf.replace(begin, static_cast<qsizetype>(sizeof kEpoch) - 1, kEpoch);
}

// The file has the size in whole points, which a page's true size replaces at the same length.
void SetPageSize(QByteArray& pdf, double widthPoints, double heightPoints) {
    constexpr char kName[] = "/MediaBox [0 0 ";
    const qsizetype begin = pdf.indexOf(kName) + static_cast<qsizetype>(sizeof kName) - 1;
    const qsizetype length = pdf.indexOf(']', begin) - begin;
    const QByteArray size =
        QByteArray::number(widthPoints, 'f', 6) + ' ' + QByteArray::number(heightPoints, 'f', 6);
    if (length >= size.size()) pdf.replace(begin, length, size.leftJustified(length));
}

QByteArray Pdf(const Surface& surface, const ShowDrawn& show) {
    constexpr double kPointsPerMm = 72 / kMmPerInch;
    constexpr int kDotsPerInch = 1200;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    // Pages are counted in whole points here: the drawing stands at the lower side of the next larger one.
    const double width = surface.Width() * kPointsPerMm, height = surface.Height() * kPointsPerMm;
    const QSize points(static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height)));
    writer.setPageSize(QPageSize(points, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    writer.setResolution(kDotsPerInch);
    QPainter painter;
    if (!painter.begin(&writer)) return {};
    painter.translate(0, (points.height() - height) / 72 * kDotsPerInch);
    Draw(surface, painter, kDotsPerInch / kMmPerInch, show);
    painter.end();
    QByteArray pdf = buffer.data();
    LevelDate(pdf);
    SetPageSize(pdf, width, height);
    return pdf;
}

} // namespace

extern "C" [[gnu::visibility("default")]] RenderPictureFunction RenderPicture;

bool RenderPicture(const Surface& surface, PictureFormat format, const ShowDrawn& show, std::string& file) {
    const Silence silence;
    DrawingThread* const thread = DrawingThread::Get();
    if (!thread) return false;
    QByteArray picture;
    thread->Do([&] { picture = format == PictureFormat::PNG ? Png(surface, show) : Pdf(surface, show); });
    if (picture.isEmpty()) return false;
    file = picture.toStdString();
    return true;
}
