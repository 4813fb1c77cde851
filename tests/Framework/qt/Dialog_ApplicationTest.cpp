// SPDX-License-Identifier: MIT
// Dialogs of hosts that have no QApplication, or no display, or one whose last window a dialog is.

#include "Framework/windows/ColorDialog.h"
#include "Framework/windows/FileDialog.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/Environment.h"
#include "tests/support/EventLoop.h"

#include <QApplication>
#include <QWidget>
#include <clocale>
#include <gmock/gmock.h>
#include <memory>
#include <thread>

using ::testing::HasSubstr;

namespace {

// Called for each application that is made.
std::function<void()> whenMade;
void CallWhenMade() {
    if (whenMade) whenMade();
}

class Dialog_Application : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        { const EventLoop folders; } // Qt's, which are then the test's own
        qAddPreRoutine(&CallWhenMade);
    }
    void TearDown() override {
        whenMade = nullptr;
        SetEnvironment(L"QT_QPA_PLATFORM", L"offscreen");
        EXPECT_EQ(nullptr, qApp);
    }

    // In the application that the next dialog makes.
    void Then(const DialogDriver::Script& script) {
        whenMade = [this, script] {
            ++m_made;
            m_driver = std::make_unique<DialogDriver>();
            m_driver->Then([this, script](OpenDialog& open) {
                script(open);
                m_driver.reset();
            });
        };
    }

    int m_made = 0;
    std::unique_ptr<DialogDriver> m_driver;
};

} // namespace

TEST_F(Dialog_Application, IsMadeForTheTimeOfADialog) {
    TestDialog dialog({Form({Label(L"Name:"), {DialogItem::EDIT, FIELD}})});
    for (int i = 1; i <= 3; ++i) {
        Then([&](OpenDialog& open) {
            EXPECT_NE(nullptr, qApp);
            open.SetText(L"Name", L"text");
            open.Key("Enter");
        });
        ErrorString whyNot;
        EXPECT_EQ(IDOK, dialog.DoModal(&whyNot));
        EXPECT_TRUE(whyNot);
        EXPECT_EQ(nullptr, qApp);
        EXPECT_EQ(i, m_made);
    }
}

TEST_F(Dialog_Application, IsMadeForOthersToo) {
    Then([](OpenDialog& open) { open.Click(L"Yes"); });
    EXPECT_EQ(IDYES, TestDialog().MessageBoxW(L"Sure?", L"Question", MB_YESNO | MB_ICONQUESTION));
    Then([](OpenDialog& open) { open.Accept(); });
    EXPECT_EQ(IDOK, CColorDialog().DoModal());
    Then([](OpenDialog& open) {
        open.EnterFile(L"/name");
        open.Accept();
    });
    EXPECT_EQ(IDOK, CFileDialog(false, {}, {}, 0, {}).DoModal());
    EXPECT_EQ(3, m_made);
}

TEST_F(Dialog_Application, IsOneForADialogAndThoseOverIt) {
    TestDialog dialog;
    int answer = 0;
    Then([&](OpenDialog& open) {
        m_driver->Then([](OpenDialog& question) { question.Click(L"No"); });
        answer = dialog.MessageBoxW(L"Sure?", L"Question", MB_YESNO);
        EXPECT_NE(nullptr, qApp);
        open.Click(L"OK");
    });
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(IDNO, answer);
    EXPECT_EQ(1, m_made);
}

TEST_F(Dialog_Application, LastsAsLongAsADialogThatIsDeletedMeanwhile) {
    auto dialog = std::make_unique<TestDialog>(std::vector{Button(PRESS, L"Press")});
    dialog->onPress = [&] {
        dialog.reset();
        EXPECT_NE(nullptr, qApp);
    };
    Then([](OpenDialog& open) { open.Click(L"Press"); });
    EXPECT_EQ(IDCANCEL, dialog->DoModal());
}

TEST_F(Dialog_Application, GoesWithABeginningThatFails) {
    TestDialog dialog;
    dialog.onInit = [] { throw std::runtime_error("at the beginning"); };
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
}

TEST_F(Dialog_Application, LeavesTheLocaleOfTheProcess) {
    SetEnvironment(L"LC_ALL", L"C.UTF-8");
    ASSERT_STREQ("C", std::setlocale(LC_ALL, "C"));
    TestDialog dialog;
    Then([](OpenDialog& open) {
        EXPECT_STREQ("C.UTF-8", std::setlocale(LC_CTYPE, nullptr)); // which Qt needs for what is typed
        EXPECT_STREQ("C", std::setlocale(LC_NUMERIC, nullptr));
        open.Click(L"OK");
    });
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_STREQ("C", std::setlocale(LC_ALL, nullptr));
    SetEnvironment(L"LC_ALL", L"");
}

TEST_F(Dialog_Application, WithoutADisplayThereIsAMessageAndNoDialog) {
    SetEnvironment(L"DISPLAY", L"");
    SetEnvironment(L"WAYLAND_DISPLAY", L"");
    SetEnvironment(L"XDG_SESSION_TYPE", L"");
    for (const wchar_t* const platform :
         {L"", L"xcb", L"wayland", L"wayland;xcb", L"xcb:option=1", L"nonsense", L";"}) {
        SetEnvironment(L"QT_QPA_PLATFORM", platform);
        ErrorString whyNot;
        EXPECT_EQ(-1, TestDialog().DoModal(&whyNot));
        EXPECT_THAT(ToUtf8(whyNot.Text()), HasSubstr("there is no display")) << ToUtf8(platform);
        EXPECT_EQ(-1, TestDialog().DoModal());
        EXPECT_EQ(IDNO, TestDialog().MessageBoxW(L"Sure?", L"Question", MB_YESNO));
        EXPECT_EQ(IDCANCEL, CColorDialog().DoModal());
        EXPECT_EQ(IDCANCEL, CFileDialog(true, {}, {}, 0, {}).DoModal());
    }
    SetEnvironment(L"QT_QPA_PLATFORM", L"nonsense;offscreen:option=1"); // the first that there is
    Then([](OpenDialog& open) { open.Click(L"OK"); });
    EXPECT_EQ(IDOK, TestDialog().DoModal());
}

TEST_F(Dialog_Application, OneWithoutWidgetsIsOfNoUse) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    ErrorString whyNot;
    EXPECT_EQ(-1, TestDialog().DoModal(&whyNot));
    EXPECT_THAT(ToUtf8(whyNot.Text()), HasSubstr("no QApplication"));
    EXPECT_EQ(IDCANCEL, CColorDialog().DoModal());
}

TEST_F(Dialog_Application, HasTheProgramsName) {
    Then([](OpenDialog& open) {
        EXPECT_EQ("Dialog_ApplicationTest", QCoreApplication::applicationName().toStdString());
        EXPECT_EQ("Dialog_ApplicationTest", QGuiApplication::desktopFileName().toStdString());
        open.Click(L"OK");
    });
    EXPECT_EQ(IDOK, TestDialog().DoModal());
}

TEST_F(Dialog_Application, OfAHostDoesNotEndWithTheLastDialog) {
    EventLoop loop;
    int closed = 0;
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, qApp, [&] { ++closed; });
    DialogDriver driver;
    driver.Then([](OpenDialog& open) { open.Click(L"OK"); })
        .Then([](OpenDialog& open) { open.Click(L"OK"); })
        .Then([](OpenDialog& open) { open.Accept(); })
        .Then([](OpenDialog& open) { open.Key("Escape"); });
    TestDialog dialog;
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(IDOK, dialog.MessageBoxW(L"text", L"caption", MB_OK));
    EXPECT_EQ(IDOK, CColorDialog().DoModal());
    EXPECT_EQ(IDCANCEL, CFileDialog(true, {}, {}, 0, {}).DoModal());
    loop.RunWhatWaits();
    EXPECT_EQ(0, closed);
}

TEST_F(Dialog_Application, OfAHostMayCloseOrDeleteTheDialogsWidget) {
    EventLoop loop;
    bool mayClose = false;
    int asked = 0;
    const std::vector<std::function<void(QWidget&)>> ends = {
        [&](QWidget& widget) {
            widget.close(); // as the window's own button
            EXPECT_EQ(1, asked);
            EXPECT_TRUE(widget.isVisible());
            mayClose = true;
            widget.close();
        },
        [](QWidget& widget) { widget.hide(); },
        [](QWidget& widget) { delete &widget; },
    };
    for (std::size_t i = 0; i < ends.size(); ++i) {
        SCOPED_TRACE(i);
        TestDialog dialog({Button(PRESS, L"Press")});
        dialog.onCancel = [&] {
            ++asked;
            return mayClose;
        };
        DialogDriver driver;
        driver.Then([&](OpenDialog&) { ends[i](*static_cast<QWidget*>(dialog.NativeHandle())); });
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
        EXPECT_EQ(nullptr, dialog.NativeHandle());
        loop.RunWhatWaits();
    }
}

TEST_F(DialogTest, OtherThreadsThanTheApplicationsShowNone) {
    TestDialog dialog;
    ErrorString whyNot;
    int result = 0;
    std::thread([&] { result = dialog.DoModal(&whyNot); }).join();
    EXPECT_EQ(-1, result);
    EXPECT_FALSE(whyNot);
    EXPECT_FALSE(whyNot.Text().empty());
}
