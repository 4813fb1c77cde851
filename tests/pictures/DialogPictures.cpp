// Takes the pictures of the dialogs and controls: DialogPictures FOLDER SUFFIX light|dark. The language is
// that of UTILITYDLL_LANGUAGE, the scale that of QT_SCALE_FACTOR; tools/dialog-pictures.sh goes through them.

#include "UtilityDLL/colors/ColorButton.h"
#include "UtilityDLL/contours/ContourEditor.h"
#include "UtilityDLL/text/FontCombo.h"
#include "VelmBase/WideString.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

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
#include <string>
#include <vector>

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

class Camera {
public:
    Camera(std::string folder, std::string suffix)
        : m_folder(std::move(folder)), m_suffix(std::move(suffix)) {}

    // With what stands over it in windows of its own: hints at fields.
    void Take(QWidget& window, const char* name) const {
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
        const std::string file = m_folder + "/" + name + m_suffix + ".png";
        if (!picture.toImage()
                 .convertToFormat(QImage::Format_RGB888)
                 .save(QString::fromStdString(file), "PNG", 0))
            ADD_FAILURE() << file << " cannot be written";
    }
    void TakeDialog(const char* name) const {
        QApplication::processEvents(); // what the last key changed is laid out
        Take(*QApplication::activeModalWidget(), name);
    }

private:
    std::string m_folder, m_suffix;
};

void TakeDialogs(const Camera& camera) {
    DialogDriver driver;
    driver.Then([&](OpenDialog& editor) {
        editor.ClickRow(2);
        camera.TakeDialog("contour-editor");
        editor.Key("Escape");
    });
    CContourEditor(FromUtf8(PROJECT_DATA_FOLDER "/pensacola/levels.cdf")).DoModal();

    driver.Then([&](OpenDialog& contour) {
        camera.TakeDialog("contour-properties");
        contour.Type(L"2,5");
        contour.Key("Enter");
        camera.TakeDialog("wrong-number");
        contour.Key("Escape");
    });
    CEditContourDlg({0.25F, 1, 5, 0xB0751B, true}).DoModal();

    driver.Then([&](OpenDialog& range) {
        camera.TakeDialog("contour-range");
        range.Key("Escape");
    });
    CContourGenerationDlg().DoModal();

    driver
        .Then([](OpenDialog& editor) {
            editor.Key("Enter");
            editor.Key("Escape");
        })
        .Then([&](OpenDialog& question) {
            camera.TakeDialog("question");
            question.Key("Escape");
        });
    CContourEditor({}).DoModal();
}

// The controls that a host places into its own window.
void TakeControls(const Camera& camera) {
    ColorButton color;
    FontCombo faces;
    ASSERT_TRUE(color.Create(L"Bottom"));
    color.SetColor(0x3C6E1E);
    ASSERT_TRUE(faces.Create(CBS_SORT));
    faces.FillCombo();
    faces.SetCurSel(0);
    QWidget window;
    QVBoxLayout column(&window);
    for (CWnd* const control : {static_cast<CWnd*>(&color), static_cast<CWnd*>(&faces)}) {
        auto* const widget = static_cast<QWidget*>(control->NativeHandle());
        column.addWidget(widget);
        widget->show();
    }
    window.show();
    QApplication::processEvents();
    camera.Take(window, "controls");
}

} // namespace

// Run as a test, since the driver's faults are those of tests.
TEST(DialogPictures, AreTaken) {
    const std::vector<std::string> arguments = ::testing::internal::GetArgvs();
    ASSERT_EQ(4U, arguments.size()) << "usage: DialogPictures FOLDER SUFFIX light|dark";
    const EventLoop loop;
    QTranslator texts; // of the buttons of messages
    if (texts.load(QLocale(qEnvironmentVariable("UTILITYDLL_LANGUAGE")), "qtbase", "_",
                   QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&texts);
    QApplication::setStyle("Fusion");
    QApplication::setPalette(arguments[3] == "dark" ? DarkPalette()
                                                    : QApplication::style()->standardPalette());
    const Camera camera(arguments[1], arguments[2]);
    TakeDialogs(camera);
    TakeControls(camera);
}
