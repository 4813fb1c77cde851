// SPDX-License-Identifier: MIT
// What dialogs look like, and what screen readers say.

#include "Framework/windows/Button.h"
#include "Framework/windows/ColorWell.h"
#include "Framework/windows/Edit.h"
#include "Framework/windows/ListCtrl.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/Environment.h"
#include "tests/support/EventLoop.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QToolTip>
#include <QTreeView>
#include <cmath>
#include <gmock/gmock.h>

namespace {

QWidget& WidgetOf(const CWnd& window) { return *static_cast<QWidget*>(window.NativeHandle()); }

// By the formula of the guidelines for web content: 21 for black on white.
double Contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double c) {
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const double low = std::min(luminance(a), luminance(b)), high = std::max(luminance(a), luminance(b));
    return (high + 0.05) / (low + 0.05);
}

int CountOf(const QImage& picture, const QColor& color) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) == color ? 1 : 0;
    return count;
}

// What a screen reader calls a control: its name, or else that of the label that belongs to it.
std::string SpokenName(QWidget& widget) {
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&widget);
    if (!accessible) return "(nothing)";
    for (const auto& [other, relation] : accessible->relations(QAccessible::Label))
        return other->text(QAccessible::Name).toStdString();
    return accessible->text(QAccessible::Name).toStdString();
}

std::vector<DialogItem> AllControls() {
    return {Form({Label(L"&Level:"),
                  {DialogItem::EDIT, FIELD},
                  Label(L"&Width:"),
                  {DialogItem::SPIN_EDIT, WIDTH},
                  Label(L"&Style:"),
                  {DialogItem::DROP_DOWN_LIST, CHOICE},
                  Label(L"S&how:"),
                  {DialogItem::CHECK_BOX, CHECK},
                  Label(L"&Color:"),
                  {DialogItem::COLOR_WELL, COLOR, L"Click to Change"}}),
            Button(PRESS, L"&Press"),
            {DialogItem::LIST_VIEW, LIST, L"Contours"}};
}

class Dialog_Look : public ::testing::Test {
protected:
    // What `look` does is done while the dialog is open.
    void Show(const std::function<void(OpenDialog&)>& look) {
        DialogDriver driver;
        driver.Then([&](OpenDialog& open) {
            look(open);
            m_dialog.EndDialog(IDOK);
        });
        EXPECT_EQ(IDOK, m_dialog.DoModal());
    }

    QWidget& Widget(UINT id) { return WidgetOf(*m_dialog.GetDlgItem(id)); }

    TestDialog m_dialog{AllControls()};
};

} // namespace

TEST_F(Dialog_Look, EveryControlHasANameForScreenReaders) {
    const EventLoop loop;
    Show([&](OpenDialog&) {
        EXPECT_EQ("Level:", SpokenName(Widget(FIELD)));
        EXPECT_EQ("Width:", SpokenName(Widget(WIDTH_ARROWS))); // the whole field, which has the keyboard
        EXPECT_EQ("Style:", SpokenName(Widget(CHOICE)));
        EXPECT_EQ("Show:", SpokenName(Widget(CHECK)));
        EXPECT_EQ("Color:", SpokenName(Widget(COLOR)));
        EXPECT_EQ("Press", SpokenName(Widget(PRESS)));
        EXPECT_EQ("Contours", SpokenName(Widget(LIST)));
        EXPECT_EQ("OK", SpokenName(Widget(IDOK)));
    });
}

TEST_F(Dialog_Look, AHintIsTheDescriptionOfItsFieldWhileItIsShown) {
    const EventLoop loop;
    Show([&](OpenDialog& open) {
        for (const UINT id : {UINT{FIELD}, UINT{WIDTH}}) {
            auto& edit = dynamic_cast<CEdit&>(*m_dialog.GetDlgItem(id));
            edit.FocusAndSelect();
            edit.ShowBalloonTip(L"no number");
            QWidget& spoken = *QApplication::focusWidget(); // what screen readers follow
            EXPECT_EQ(
                "no number",
                QAccessible::queryAccessibleInterface(&spoken)->text(QAccessible::Description).toStdString());
            open.Key("Tab");
            EXPECT_EQ(
                "",
                QAccessible::queryAccessibleInterface(&spoken)->text(QAccessible::Description).toStdString());
        }
    });
}

TEST_F(Dialog_Look, AHintStaysAtItsFieldAndOnTheScreen) {
    const EventLoop loop;
    Show([&](OpenDialog&) {
        auto& edit = dynamic_cast<CEdit&>(*m_dialog.GetDlgItem(FIELD));
        edit.FocusAndSelect();
        edit.ShowBalloonTip(L"a hint that says at some length what is wrong with what was typed");
        QWidget& window = WidgetOf(m_dialog);
        auto& hint = *window.findChild<QLabel*>("hint");
        for (const QPoint place : {QPoint(0, 0), QPoint(100, 50), QPoint(5'000, 300), QPoint(20, 5'000)}) {
            window.move(place);
            QCoreApplication::processEvents();
            EXPECT_TRUE(hint.isVisible());
            const QRect screen = hint.screen()->availableGeometry();
            EXPECT_TRUE(screen.contains(QRect(hint.pos(), hint.size())) || !screen.contains(window.pos()))
                << place.x() << ' ' << place.y() << ": " << hint.x() << ' ' << hint.y();
        }
        window.move(100, 50);
        QCoreApplication::processEvents();
        const QWidget& field = Widget(FIELD);
        EXPECT_EQ(field.mapToGlobal(QPoint(0, 0)).x(), hint.x());
        EXPECT_GE(hint.y(), field.mapToGlobal(QPoint(0, field.height())).y());
    });
}

TEST_F(Dialog_Look, TextsAreReadableInLightAndDark) {
    const EventLoop loop;
    QPalette dark(QColor(0x2D2D2D));
    dark.setColor(QPalette::Base, QColor(0x1E1E1E));
    for (const QPalette& palette : {QApplication::palette(), dark}) {
        QApplication::setPalette(palette);
        Show([&](OpenDialog&) {
            auto& edit = dynamic_cast<CEdit&>(*m_dialog.GetDlgItem(FIELD));
            edit.FocusAndSelect();
            edit.ShowBalloonTip(L"no number");
            const auto& hint = *WidgetOf(m_dialog).findChild<QLabel*>("hint");
            const auto contrastOf = [](const QWidget& widget) {
                return Contrast(widget.palette().color(widget.foregroundRole()),
                                widget.palette().color(widget.backgroundRole()));
            };
            EXPECT_GE(contrastOf(hint), 4.5);
            EXPECT_GE(contrastOf(Widget(PRESS)), 4.5);
            EXPECT_GE(contrastOf(Widget(FIELD)), 4.5);
        });
    }
}

TEST_F(Dialog_Look, SwatchesAreSharpAtAnyScale) {
    for (const int scale : {1, 2}) {
        SetEnvironment(L"QT_SCALE_FACTOR", std::to_wstring(scale));
        const EventLoop loop;
        m_dialog.onInit = [&] {
            auto& list = dynamic_cast<CListCtrl&>(*m_dialog.GetDlgItem(LIST));
            CImageList images(16, 16);
            list.InsertColumn(0, L"Level", 70);
            list.InsertItem(0, L"row", images.Add(0xFE8001));
            list.SetImageList(images);
            dynamic_cast<CColorWell&>(*m_dialog.GetDlgItem(COLOR)).SetColor(0xFE8001);
        };
        Show([&](OpenDialog& open) {
            open.Focus(L"OK"); // the list would mark its row
            const QColor color(0x01, 0x80, 0xFE);
            auto& list = dynamic_cast<QTreeView&>(Widget(LIST));
            EXPECT_EQ(256 * scale * scale, CountOf(list.viewport()->grab().toImage(), color));
            const QSize well = dynamic_cast<QPushButton&>(Widget(COLOR)).iconSize() * scale;
            EXPECT_EQ(well.width() * well.height(), CountOf(Widget(COLOR).grab().toImage(), color));
        });
        SetEnvironment(L"QT_SCALE_FACTOR", L"");
    }
}

TEST_F(Dialog_Look, MessagesHaveTheirIconAndAreShownAsTheyAre) {
    const EventLoop loop;
    struct Row {
        UINT type;
        QMessageBox::Icon icon;
        const char* standard;
    };
    for (const Row& row :
         {Row{MB_OK, QMessageBox::NoIcon, "OK"}, Row{MB_OK | MB_ICONERROR, QMessageBox::Critical, "OK"},
          Row{MB_YESNO | MB_ICONQUESTION, QMessageBox::Question, "Yes"},
          Row{MB_YESNO | MB_ICONERROR, QMessageBox::Critical, "Yes"}}) {
        DialogDriver driver;
        driver.Then([&](OpenDialog& open) {
            const auto& box = *qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            EXPECT_EQ(row.icon, box.icon());
            EXPECT_EQ(Qt::PlainText, box.textFormat());
            EXPECT_EQ(row.standard, box.defaultButton()->text().remove('&').toStdString());
            open.Key("Escape");
        });
        m_dialog.MessageBoxW(L"text", L"caption", row.type);
    }
}

TEST_F(Dialog_Look, MessagesHaveLinesAndTabs) {
    const EventLoop loop;
    const auto sizeOf = [&](const wchar_t* text) {
        QSize size;
        DialogDriver driver;
        driver.Then([&](OpenDialog& open) {
            const QWidget& box = *QApplication::activeModalWidget();
            size = box.findChild<QLabel*>("qt_msgbox_label")->sizeHint();
            open.Key("Escape");
        });
        m_dialog.MessageBoxW(text, L"caption", MB_OK);
        return size;
    };
    const QSize plain = sizeOf(L"text"), tab = sizeOf(L"\ttext"), space = sizeOf(L" text"),
                lines = sizeOf(L"text\n\ttext");
    EXPECT_GT(tab.width(), space.width() + 20);
    EXPECT_EQ(tab.width(), lines.width());
    EXPECT_GT(lines.height(), plain.height());
    EXPECT_GT(sizeOf(L"a&b").width(), sizeOf(L"ab").width()); // an ampersand is one
    EXPECT_GT(sizeOf(L"<b>a</b>").width(), 2 * sizeOf(L"a").width());
}
