// SPDX-License-Identifier: MIT
// The driver of dialogs with those that are the system's own, so that a fault is the driver's.

#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <windows.h>
// after it
#include <commdlg.h>

using ::testing::ElementsAre;

namespace {

constexpr int kField = 100, kCheck = 101, kAsk = 102;

struct Seen {
    std::wstring text;
    bool isChecked = false;
    int answer = 0;
};

HWND MakeControl(HWND dialog, const wchar_t* className, const wchar_t* text, DWORD style, int id, int y) {
    return CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, 10, y, 150, 20, dialog,
                           // NOLINTNEXTLINE(performance-no-int-to-ptr): the number of a control
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

INT_PTR CALLBACK Answer(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const seen = reinterpret_cast<Seen*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        SetWindowTextW(dialog, L"Test");
        MakeControl(dialog, L"Static", L"&Name:", 0, -1, 10);
        MakeControl(dialog, L"Edit", L"", WS_TABSTOP, kField, 30);
        MakeControl(dialog, L"Button", L"&Check", WS_TABSTOP | BS_AUTOCHECKBOX, kCheck, 60);
        MakeControl(dialog, L"Button", L"&Ask", WS_TABSTOP, kAsk, 90);
        MakeControl(dialog, L"Button", L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK, 120);
        return TRUE;
    }
    if (message != WM_COMMAND) return FALSE;
    if (LOWORD(wParam) == kAsk) seen->answer = MessageBoxW(dialog, L"Sure?", L"Question", MB_YESNO);
    if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
        std::array<wchar_t, 50> text = {};
        GetDlgItemTextW(dialog, kField, text.data(), static_cast<int>(text.size()));
        seen->text = text.data();
        seen->isChecked = IsDlgButtonChecked(dialog, kCheck) == BST_CHECKED;
        EndDialog(dialog, LOWORD(wParam));
    }
    return TRUE;
}

INT_PTR Show(Seen& seen) {
    struct {
        DLGTEMPLATE head = {WS_POPUP | WS_CAPTION | WS_SYSMENU, 0, 0, 20, 20, 120, 100};
        std::array<WORD, 3> menuClassAndTitle = {};
    } content;
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), &content.head, nullptr, &Answer,
                                   reinterpret_cast<LPARAM>(&seen));
}

class DialogDriverTest : public ::testing::Test {
protected:
    EventLoop m_loop;
};

} // namespace

TEST_F(DialogDriverTest, KeysAndClicksAreAsAUserMakesThem) {
    DialogDriver driver;
    Seen seen;
    driver.Then([](OpenDialog& open) {
        EXPECT_EQ(L"Test", open.Title());
        EXPECT_THAT(open.Buttons(), ElementsAre(L"Ask", L"OK"));
        open.Type(L"a\u03A9");
        EXPECT_EQ(L"a\u03A9", open.Text(L"Name"));
        open.Key("Tab");
        EXPECT_TRUE(open.HasFocus(L"Check"));
        open.Key("Space");
        EXPECT_TRUE(open.IsChecked(L"Check"));
        open.Click(L"Check");
        open.Click(L"Check");
        EXPECT_TRUE(open.IsChecked(L"Check"));
        open.Key("Alt+C");
        EXPECT_FALSE(open.IsChecked(L"Check"));
        open.Key("Alt+N");
        EXPECT_TRUE(open.HasFocus(L"Name"));
        open.SetText(L"Name", L"other");
        open.Click(L"Check");
        open.Key("Enter");
    });
    EXPECT_EQ(IDOK, Show(seen));
    EXPECT_EQ(L"other", seen.text);
    EXPECT_TRUE(seen.isChecked);
}

TEST_F(DialogDriverTest, AScriptGoesOnWhenWhatItOpenedIsClosed) {
    DialogDriver driver;
    Seen seen;
    driver
        .Then([&](OpenDialog& open) {
            open.Click(L"Ask");
            EXPECT_EQ(IDNO, seen.answer);
            open.Key("Alt+A");
            EXPECT_EQ(IDYES, seen.answer);
            open.Key("Escape");
        })
        .Then([&](OpenDialog& question) {
            EXPECT_EQ(L"Question", question.Title());
            EXPECT_EQ(L"Sure?", question.Message());
            EXPECT_FALSE(question.IsQuestion());
            question.Click(L"No");
        })
        .Then([](OpenDialog& question) { question.Key("Enter"); });
    EXPECT_EQ(IDCANCEL, Show(seen));
}

TEST_F(DialogDriverTest, FillsInTheSystemsDialogs) {
    DialogDriver driver;
    driver.Then([](OpenDialog& open) {
        open.EnterColor(0x0180FE);
        open.Accept();
    });
    std::array<COLORREF, 16> colors = {};
    CHOOSECOLORW color = {};
    color.lStructSize = sizeof(color);
    color.lpCustColors = colors.data();
    color.Flags = CC_FULLOPEN;
    EXPECT_TRUE(ChooseColorW(&color));
    EXPECT_EQ(0x0180FEU, color.rgbResult);

    driver.Then([](OpenDialog& open) {
        EXPECT_THAT(open.Filters(), ElementsAre(L"All"));
        open.EnterFile(L"name");
        open.Accept();
    });
    std::array<wchar_t, 300> path = {};
    OPENFILENAMEW file = {};
    file.lStructSize = sizeof(file);
    file.lpstrFile = path.data();
    file.nMaxFile = static_cast<DWORD>(path.size());
    file.lpstrFilter = L"All\0*.*\0";
    file.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR;
    EXPECT_TRUE(GetSaveFileNameW(&file));
    EXPECT_THAT(std::wstring(path.data()), ::testing::EndsWith(L"\\name"));
}

TEST_F(DialogDriverTest, ADialogThatNobodyWaitsForFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(
        {
            DialogDriver driver;
            Seen seen;
            Show(seen);
        },
        "nobody waits for the dialog L\"Test\"");
}

TEST_F(DialogDriverTest, ADialogThatIsLeftOpenFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(
        {
            DialogDriver driver;
            driver.Then([](OpenDialog& open) { open.Type(L"a"); });
            Seen seen;
            Show(seen);
        },
        "still open: L\"Test\"");
}

TEST_F(DialogDriverTest, AScriptThatNobodyNeedsFailsTheTest) {
    EXPECT_NONFATAL_FAILURE({ DialogDriver().Then([](OpenDialog&) {}); }, "dialogs that did not open");
}

TEST_F(DialogDriverTest, AControlThatThereIsNotFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(
        {
            DialogDriver driver;
            driver.Then([](OpenDialog& open) {
                open.Click(L"Other");
                open.Key("Escape");
            });
            Seen seen;
            Show(seen);
        },
        "no control L\"Other\"");
}
