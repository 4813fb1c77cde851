// SPDX-License-Identifier: MIT
// What windows of each kind leave behind in the system: nothing, however often they are opened.

#include "UtilityDLL/colors/ColorButton.h"
#include "UtilityDLL/contours/ContourEditor.h"
#include "UtilityDLL/text/FontCombo.h"

#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"
#include "tests/support/TestFiles.h"
#include "tests/support/win32/GuiResources.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include <windows.h>

void PrintTo(const GuiResources& resources, std::ostream* out) {
    *out << resources.gdi << " GDI objects, " << resources.user << " windows";
}

namespace {

// A thousand take Wine minutes, for each kind.
int NumOpenings() {
    const char* const number = std::getenv("DIALOG_OPENINGS");
    return number ? std::atoi(number) : 30;
}

class DialogResources : public ::testing::Test {
protected:
    // What is kept for the next time (fonts of the system's dialogs, for one) is there after a few.
    static void ExpectNothingLeft(const std::function<void()>& open) {
        constexpr int kFew = 3;
        for (int i = 0; i < kFew; ++i) open();
        const GuiResources before = GuiResourcesInUse();
        for (int i = NumOpenings(); i > 0; --i) open();
        EXPECT_EQ(before, GuiResourcesInUse());
    }

    // Opened by that button of the editor, or of the properties of a contour within it.
    void ExpectNothingLeftOf(const wchar_t* button) {
        m_driver.Then([=, this](OpenDialog& dialog) {
            ExpectNothingLeft([&] {
                m_driver.Then([](OpenDialog& opened) { opened.Key("Escape"); });
                dialog.Click(button);
            });
            dialog.Key("Escape");
        });
    }

    std::wstring File() {
        ContourDefinitionList list;
        for (int i = 0; i < 20; ++i)
            list.Add({.level = static_cast<double>(i), .trueColor = static_cast<std::uint32_t>(i)});
        std::wstring path = m_folder.File(L"chart.cdf");
        EXPECT_TRUE(list.Save(path.c_str()));
        return path;
    }

    EventLoop m_loop;
    TemporaryFolder m_folder;
    DialogDriver m_driver;
};

} // namespace

TEST_F(DialogResources, NoneAreLeftByTheEditor) {
    const std::wstring path = File();
    ExpectNothingLeft([&] {
        m_driver.Then([](OpenDialog& editor) { editor.Key("Escape"); });
        DLG::EditContourList(path);
    });
}

TEST_F(DialogResources, NorByThePropertiesOfAContour) {
    ExpectNothingLeftOf(L"Add");
    DLG::EditContourList(File());
}

TEST_F(DialogResources, NorByTheRange) {
    ExpectNothingLeftOf(L"Range");
    DLG::EditContourList(File());
}

TEST_F(DialogResources, NorByAFieldsHint) {
    m_driver.Then([this](OpenDialog& editor) {
        ExpectNothingLeft([&] {
            m_driver.Then([](OpenDialog& contour) {
                contour.SetText(L"Level", L"x");
                contour.Key("Enter");
                EXPECT_NE(L"", contour.Hint());
                contour.Key("Escape");
            });
            editor.Click(L"Add");
        });
        editor.Key("Escape");
    });
    DLG::EditContourList(File());
}

TEST_F(DialogResources, NorByTheSystemsDialogs) {
    ExpectNothingLeftOf(L"Color Table"); // a file
    DLG::EditContourList(File());

    m_driver.Then([this](OpenDialog& editor) {
        ExpectNothingLeftOf(L"Color");
        editor.Click(L"Add");
        editor.Key("Escape");
    });
    DLG::EditContourList(File());
}

TEST_F(DialogResources, NorByAMessage) {
    m_driver.Then([this](OpenDialog& editor) {
        ExpectNothingLeft([&] {
            m_driver
                .Then([](OpenDialog& contour) { // a level that is there
                    contour.SetText(L"Level", L"1");
                    contour.Key("Enter");
                })
                .Then([](OpenDialog& message) { message.Key("Enter"); });
            editor.Click(L"Add");
        });
        editor.Key("Escape");
    });
    DLG::EditContourList(File());
}

TEST_F(DialogResources, NorByControlsOfAHost) {
    ExpectNothingLeft([&] {
        ColorButton button;
        ASSERT_TRUE(button.Create(L"Water"));
        button.SetColor(0xB0751B);
        FontCombo fonts;
        ASSERT_TRUE(fonts.Create());
        m_loop.RunWhatWaits();
    });
}

TEST_F(DialogResources, WhatIsLeftIsFound) {
    const auto makeWindow = [](DWORD style, HWND parent) {
        return CreateWindowExW(0, L"Static", L"", style, 0, 0, 9, 9, parent, nullptr, nullptr, nullptr);
    };
    const HWND first = makeWindow(WS_POPUP, nullptr); // with it the system makes one for the keyboard
    const GuiResources before = GuiResourcesInUse();
    const HPEN pen = CreatePen(PS_SOLID, 1, 0);
    EXPECT_EQ(before.gdi + 1, GuiResourcesInUse().gdi);
    DeleteObject(pen);
    const HWND window = makeWindow(WS_POPUP, nullptr);
    EXPECT_NE(nullptr, makeWindow(WS_CHILD, window));
    EXPECT_EQ(before.user + 2, GuiResourcesInUse().user);
    DestroyWindow(window);
    EXPECT_EQ(before, GuiResourcesInUse());
    DestroyWindow(first);
}
