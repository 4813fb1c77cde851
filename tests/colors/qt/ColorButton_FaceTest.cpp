// SPDX-License-Identifier: MIT
// The button as the user sees and uses it: its pixels, mouse and keyboard, screen readers.

#include "UtilityDLL/colors/ColorButton.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QBackingStore>
#include <QColorDialog>
#include <QDialog>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace {

constexpr COLORREF kColor = 0x00EFCDAB;
constexpr COLORREF kOther = 0x00563412;

QColor Color(COLORREF color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
            static_cast<int>(color >> 16 & 0xFF)};
}

QColor Inverse(COLORREF color) {
    const QColor shown = Color(color);
    return {255 - shown.red(), 255 - shown.green(), 255 - shown.blue()};
}

QWidget& Widget(const CWnd& window) { return *static_cast<QWidget*>(window.NativeHandle()); }

// Without a window manager nobody else makes it active.
bool IsActive(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

// Hands requests on as they are, or with another rectangle or action.
class WatchedButton : public ColorButton {
public:
    int requests = 0;
    UINT lastAction = 0;
    UINT lastState = 0;
    std::optional<RECT> rectangle;
    std::optional<UINT> action;

    void DrawItem(LPDRAWITEMSTRUCT item) override {
        ++requests;
        lastAction = item->itemAction;
        lastState = item->itemState;
        DRAWITEMSTRUCT request = *item;
        if (rectangle) request.rcItem = *rectangle;
        if (action) request.itemAction = *action;
        ColorButton::DrawItem(&request);
    }
};

QImage Grab(const CWnd& window) {
    return Widget(window).grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// What was drawn last, without having anything drawn.
QColor OnScreen(const CWnd& window, const QPoint& place) {
    QPaintDevice* const drawn = Widget(window).window()->backingStore()->paintDevice();
    const auto* const picture = drawn->devType() == QInternal::Image ? static_cast<QImage*>(drawn) : nullptr;
    if (!picture) {
        ADD_FAILURE() << "the platform draws on no picture";
        return {};
    }
    return picture->pixelColor((QPointF(place) * picture->devicePixelRatio()).toPoint());
}

// Qt's own drawing of what the button has to be, on what was there before.
QImage Expected(const QWidget& widget, QImage picture, const QRect& face, COLORREF color,
                const QString& caption) {
    QPainter painter(&picture);
    painter.setFont(widget.font());
    painter.fillRect(face, Inverse(color));
    if (const QRect inside = face.adjusted(1, 1, -1, -1); inside.isValid())
        painter.fillRect(inside, Color(color));
    const QFontMetrics metrics(widget.font(), &picture);
    const int width = caption.isEmpty() ? 0 : metrics.horizontalAdvance(caption);
    const int height = caption.isEmpty() ? 0 : metrics.height();
    const QRect text(face.left() + face.width() / 2 - width / 2, face.top() + face.height() / 2 - height / 2,
                     width, height);
    painter.fillRect(text, Color(color));
    painter.setPen(Inverse(color));
    painter.drawText(text.left(), text.top() + metrics.ascent(), caption);
    return picture;
}

struct Shown {
    EventLoop loop;
    WatchedButton button;

    explicit Shown(const std::wstring& caption = L"Pen", QSize size = {120, 40}) {
        EXPECT_TRUE(button.Create(caption.c_str()));
        Widget(button).setFixedSize(size);
        EXPECT_TRUE(IsActive(Widget(button)));
        loop.RunWhatWaits();
    }
};

} // namespace

TEST(ColorButton_Face, HasTheColorFrameAndCaptionTheInverse) {
    const QString captions[] = {"Pen", "", "g", QString("Colour of the land above the datum, ").repeated(4)};
    const QSize sizes[] = {{120, 40}, {121, 41}, {120, 41}, {121, 40}, {60, 7}, {20, 20}};
    const COLORREF colors[] = {0x000000, 0xFFFFFF, 0x808080, kColor, kOther, 0x0000FF};
    Shown shown;
    for (const QString& caption : captions)
        for (const QSize size : sizes)
            for (const COLORREF color : colors) {
                SCOPED_TRACE(::testing::Message() << caption.toStdString() << ' ' << size.width() << " x "
                                                  << size.height() << ' ' << std::hex << color);
                shown.button.SetWindowTextW(caption.toStdWString().c_str());
                shown.button.SetColor(color);
                Widget(shown.button).setFixedSize(size);
                const QImage face = Grab(shown.button);
                ASSERT_EQ(face.size(), size * face.devicePixelRatio());
                QImage blank(face.size(), face.format());
                blank.setDevicePixelRatio(face.devicePixelRatio());
                blank.fill(Qt::magenta);
                EXPECT_EQ(Expected(Widget(shown.button), blank, QRect(QPoint(), size), color, caption), face);
            }
}

TEST(ColorButton_Face, WhiteHasBlackAndMiddleGreyTheGreyBeside) {
    Shown shown(L"");
    struct Row {
        COLORREF color, inverse;
    };
    for (const Row& row : {Row{0xFFFFFF, 0x000000}, Row{0x808080, 0x7F7F7F}, Row{0x000000, 0xFFFFFF},
                           Row{0x332211, 0xCCDDEE}, Row{0xAB332211, 0xCCDDEE}}) {
        shown.button.SetColor(row.color);
        const QImage face = Grab(shown.button);
        const int right = face.width() - 1;
        const int bottom = face.height() - 1;
        for (const QPoint frame : {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom),
                                   QPoint(right / 2, 0), QPoint(0, bottom / 2)})
            EXPECT_EQ(Color(row.inverse), face.pixelColor(frame));
        const int wide = static_cast<int>(std::ceil(face.devicePixelRatio()));
        for (const QPoint inside :
             {QPoint(wide, wide), QPoint(right - wide, bottom - wide), QPoint(right / 2, bottom / 2)})
            EXPECT_EQ(Color(row.color), face.pixelColor(inside));
    }
}

TEST(ColorButton_Face, IsWhereTheRequestSays) {
    struct Row {
        RECT rectangle;
        const char* what;
    };
    Shown shown(L"Pen", {160, 80});
    shown.button.SetColor(kColor);
    for (const Row& row : {Row{{10, 20, 130, 60}, "not at the origin"}, Row{{7, 9, 100, 70}, "odd lengths"},
                           Row{{60, 30, 60, 30}, "empty"}, Row{{60, 30, 50, 20}, "upside down"},
                           Row{{60, 30, 61, 31}, "a pixel"}, Row{{60, 30, 62, 32}, "frame only"},
                           Row{{60, 30, 63, 33}, "a pixel in a frame"}, Row{{60, 10, 61, 70}, "a line"},
                           Row{{-30, -20, 90, 50}, "beyond the top left"}}) {
        SCOPED_TRACE(row.what);
        const RECT& rectangle = row.rectangle;
        const bool isEmpty = rectangle.right <= rectangle.left || rectangle.bottom <= rectangle.top;
        shown.button.SetWindowTextW(L"Pen");
        shown.button.action = ODA_FOCUS; // what is there where nothing is drawn
        const QImage before = Grab(shown.button);
        shown.button.action.reset();
        shown.button.rectangle = rectangle;
        if (isEmpty) shown.button.SetWindowTextW(L""); // which would stand there
        const QRect face(QPoint(rectangle.left, rectangle.top),
                         QPoint(rectangle.right - 1, rectangle.bottom - 1));
        const QImage expected =
            isEmpty ? before : Expected(Widget(shown.button), before, face, kColor, "Pen");
        EXPECT_EQ(expected, Grab(shown.button));
    }
}

TEST(ColorButton_Face, FocusAndSelectionAloneDrawNothing) {
    Shown shown;
    shown.button.SetColor(kColor);
    shown.button.action = 0;
    const QImage nothing = Grab(shown.button);
    for (const UINT action : {ODA_FOCUS, ODA_SELECT, ODA_FOCUS | ODA_SELECT}) {
        shown.button.action = action;
        EXPECT_EQ(nothing, Grab(shown.button));
    }
    for (const UINT action : {ODA_DRAWENTIRE, ODA_DRAWENTIRE | ODA_FOCUS, ODA_DRAWENTIRE | ODA_SELECT}) {
        shown.button.action = action;
        EXPECT_NE(nothing, Grab(shown.button));
    }
}

TEST(ColorButton_Face, IsTheSameWhatsoeverItsState) {
    Shown shown;
    shown.button.SetColor(kColor);
    shown.button.SetFocus();
    const QImage focused = Grab(shown.button);
    EXPECT_NE(0U, shown.button.lastState & ODS_FOCUS);
    EXPECT_EQ(0U, shown.button.lastState & ODS_DISABLED);
    shown.button.EnableWindow(false);
    const QImage disabled = Grab(shown.button);
    EXPECT_NE(0U, shown.button.lastState & ODS_DISABLED);
    EXPECT_EQ(focused, disabled);
}

TEST(ColorButton_Face, AmpersandsOfTheCaptionAreDrawn) {
    Shown shown(L"&Pen && ink");
    const QImage face = Grab(shown.button);
    QImage blank(face.size(), face.format());
    blank.setDevicePixelRatio(face.devicePixelRatio());
    EXPECT_EQ(Expected(Widget(shown.button), blank, QRect(0, 0, 120, 40), 0, "&Pen && ink"), face);
}

TEST(ColorButton_Face, OldFaceStaysUntilItIsDrawnAnew) {
    Shown shown(L"");
    const QPoint middle(60, 20);
    ASSERT_EQ(Color(0), OnScreen(shown.button, middle));
    const int requests = shown.button.requests;
    shown.button.SetColor(kColor);
    shown.loop.RunWhatWaits();
    EXPECT_EQ(requests, shown.button.requests);
    EXPECT_EQ(Color(0), OnScreen(shown.button, middle));

    shown.button.Invalidate();
    EXPECT_TRUE(shown.loop.RunUntil([&] { return shown.button.requests > requests; }));
    shown.loop.RunWhatWaits();
    EXPECT_EQ(Color(kColor), OnScreen(shown.button, middle));
}

TEST(ColorButton_Face, ShowsTheColorThatWasChosenAndNotOneThatWasCancelled) {
    Shown shown(L"");
    for (const bool isTaken : {false, true}) {
        SCOPED_TRACE(isTaken);
        DialogDriver driver;
        driver.Then([&](OpenDialog& dialog) {
            dialog.EnterColor(kColor);
            dialog.Key(isTaken ? "Enter" : "Escape");
        });
        shown.button.ForceColorChange();
        shown.loop.RunWhatWaits();
        const COLORREF color = isTaken ? kColor : 0;
        EXPECT_EQ(color, shown.button.GetColor());
        EXPECT_EQ(Color(color), OnScreen(shown.button, {60, 20}));
        EXPECT_EQ(Inverse(color), OnScreen(shown.button, {0, 0}));
        EXPECT_EQ(Inverse(color), OnScreen(shown.button, {119, 39}));
    }
}

TEST(ColorButton_Face, MouseAndKeyboardOpenTheDialogWithTheColor) {
    Shown shown(L"&Pen");
    shown.button.SetColor(kColor);
    QWidget& widget = Widget(shown.button);
    const std::function<void()> ways[] = {
        [&] { QTest::mouseClick(&widget, Qt::LeftButton); },
        [&] { QTest::keyClick(&widget, Qt::Key_Space); },
        [&] { QTest::keyClick(widget.window(), Qt::Key_P, Qt::AltModifier); },
        [&] { shown.button.ForceColorChange(); },
    };
    int opened = 0;
    for (const auto& way : ways) {
        SCOPED_TRACE(opened);
        DialogDriver driver;
        driver.Then([&](OpenDialog& dialog) {
            ++opened;
            auto* const shownDialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
            if (!shownDialog) return;
            EXPECT_EQ(Color(kColor), shownDialog->currentColor());
            ASSERT_TRUE(shownDialog->parentWidget());
            EXPECT_EQ(widget.window(), shownDialog->parentWidget()->window());
            dialog.Key("Escape");
        });
        ASSERT_TRUE(IsActive(widget));
        widget.setFocus();
        const int before = opened;
        way();
        shown.loop.RunUntil([&] { return opened > before; }); // a letter presses for a moment first
    }
    EXPECT_EQ(static_cast<int>(std::size(ways)), opened);
    EXPECT_EQ(kColor, shown.button.GetColor());
}

// A dialog would find no script, and so fail the test.
TEST(ColorButton_Face, DisabledButtonIsNotClicked) {
    Shown shown(L"&Pen");
    DialogDriver driver;
    shown.button.EnableWindow(false);
    QTest::mouseClick(&Widget(shown.button), Qt::LeftButton);
    QTest::keyClick(&Widget(shown.button), Qt::Key_Space);
    QTest::keyClick(&Widget(shown.button), Qt::Key_P, Qt::AltModifier);
    shown.loop.RunWhatWaits();
    EXPECT_FALSE(qobject_cast<QAbstractButton*>(&Widget(shown.button))->isDown()); // nor a moment later
}

TEST(ColorButton_Face, ScreenReadersGetAButtonWithItsCaption) {
    Shown shown(L"&Pen");
    QAccessibleInterface* const button = QAccessible::queryAccessibleInterface(&Widget(shown.button));
    ASSERT_TRUE(button);
    EXPECT_EQ(QAccessible::Button, button->role());
    EXPECT_EQ("Pen", button->text(QAccessible::Name));
    EXPECT_TRUE(button->state().focusable);
    shown.button.EnableWindow(false);
    EXPECT_TRUE(button->state().disabled);
}

TEST(ColorButton_Face, TabReachesIt) {
    EventLoop loop;
    QWidget host;
    ColorButton first;
    ColorButton second;
    auto* const rows = new QVBoxLayout(&host);
    for (ColorButton* const button : {&first, &second}) {
        ASSERT_TRUE(button->Create(L"Pen"));
        rows->addWidget(&Widget(*button));
    }
    ASSERT_TRUE(IsActive(host));
    first.SetFocus();
    QTest::keyClick(&Widget(first), Qt::Key_Tab);
    EXPECT_TRUE(Widget(second).hasFocus());
}

// As that of a host's own buttons; but in the host's fields Enter is for another button than this.
TEST(ColorButton_Face, EnterIsForItWhileItHasTheKeyboard) {
    EventLoop loop;
    QDialog host;
    auto* const rows = new QVBoxLayout(&host);
    ColorButton button;
    QLineEdit edit;
    ASSERT_TRUE(button.Create(L"Pen"));
    rows->addWidget(&Widget(button));
    rows->addWidget(&edit);
    ASSERT_TRUE(IsActive(host));
    edit.setFocus();
    {
        const DialogDriver none; // a dialog would find no script
        QTest::keyClick(&edit, Qt::Key_Return);
    }
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        DialogDriver driver;
        driver.Then([](OpenDialog& dialog) { dialog.Key("Escape"); });
        button.SetFocus();
        QTest::keyClick(&Widget(button), key);
    }
    EXPECT_TRUE(host.isVisible());
}

TEST(ColorButton_Face, HasRoomForItsCaptionInALayout) {
    EventLoop loop;
    ColorButton button;
    ASSERT_TRUE(button.Create(L"Colour of the land"));
    const QFontMetrics metrics(Widget(button).font());
    EXPECT_LT(metrics.horizontalAdvance("Colour of the land"), Widget(button).sizeHint().width());
    EXPECT_LT(metrics.height(), Widget(button).sizeHint().height());
}

TEST(ColorButton_Face, HostsSlotIsCalledWhenTheUserHasChosen) {
    Shown shown;
    std::vector<unsigned long> colors;
    auto* const native = qobject_cast<QAbstractButton*>(&Widget(shown.button));
    ASSERT_TRUE(native);
    QObject::connect(native, &QAbstractButton::clicked, [&] { colors.push_back(shown.button.GetColor()); });
    DialogDriver driver;
    driver.Then([&](OpenDialog& dialog) {
        EXPECT_TRUE(colors.empty());
        dialog.EnterColor(kColor);
        dialog.Accept();
    });
    QTest::mouseClick(native, Qt::LeftButton);
    EXPECT_EQ(std::vector<unsigned long>{kColor}, colors);
}

TEST(ColorButton_Face, HostMayGoWhileTheUserChooses) {
    EventLoop loop;
    QPointer<QWidget> host = new QWidget;
    ColorButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    (new QVBoxLayout(host))->addWidget(&Widget(button));
    ASSERT_TRUE(IsActive(*host));
    DialogDriver driver;
    driver.Then([&](OpenDialog& dialog) {
        dialog.EnterColor(kColor);
        delete host;
    });
    QTest::mouseClick(&Widget(button), Qt::LeftButton);
    EXPECT_FALSE(host);
    EXPECT_EQ(nullptr, button.NativeHandle());
    EXPECT_EQ(0U, button.GetColor());
}

TEST(ColorButton_Face, ButtonMayGoWhileTheUserChooses) {
    EventLoop loop;
    for (const bool isClicked : {false, true}) {
        SCOPED_TRACE(isClicked);
        auto button = std::make_unique<ColorButton>();
        ASSERT_TRUE(button->Create(L"Pen"));
        const QPointer<QWidget> widget = &Widget(*button);
        ASSERT_TRUE(IsActive(*widget));
        DialogDriver driver;
        driver.Then([&](OpenDialog& dialog) {
            dialog.EnterColor(kColor);
            button.reset();
            if (isClicked) dialog.Accept(); // the widget goes a little later, the dialog with it
        });
        if (isClicked)
            QTest::mouseClick(widget, Qt::LeftButton);
        else
            button->ForceColorChange();
        EXPECT_FALSE(button);
        loop.RunWhatWaits();
        EXPECT_FALSE(widget);
    }
}
