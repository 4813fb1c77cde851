// SPDX-License-Identifier: MIT
// The button without a look at its pixels, which ColorButton_FaceTest has.

#include "UtilityDLL/colors/ColorButton.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace {

constexpr COLORREF kColor = 0x00EFCDAB;
constexpr COLORREF kOther = 0x00563412;

void Choose(OpenDialog& dialog, COLORREF color) {
    dialog.EnterColor(color);
    dialog.Accept();
}

void Cancel(OpenDialog& dialog) {
    dialog.EnterColor(kOther);
    dialog.Key("Escape");
}

// A host's own button, that wants to know when the user chose.
class HostsButton : public ColorButton {
public:
    std::vector<unsigned long> colors;

    const AFX_MSGMAP* GetMessageMap() const override {
        static const AFX_MSGMAP_ENTRY entries[] = {
            {WM_REFLECTED_COMMAND, BN_CLICKED, 0, Handler(&HostsButton::OnClickedHere)}, {}};
        static const AFX_MSGMAP map = {&ColorButton::GetThisMessageMap, entries};
        return &map;
    }

    void Click() { OnCmdMsg(WM_REFLECTED_COMMAND, BN_CLICKED, 0); }

private:
    void OnClickedHere() {
        OnClicked();
        colors.push_back(GetColor());
    }
};

// What a click on the button calls.
class ClickedButton : public ColorButton {
public:
    bool Click() { return OnCmdMsg(WM_REFLECTED_COMMAND, BN_CLICKED, 0); }
};

} // namespace

TEST(ColorButton, IsBlackAtFirst) { EXPECT_EQ(0U, ColorButton().GetColor()); }

TEST(ColorButton, KeepsTheColorThatItIsGiven) {
    ColorButton button;
    for (const unsigned long color : {0xFFFFFFUL, 0x000000UL, 0x0000FFUL, 0xFF0000UL, 0x563412UL}) {
        button.SetColor(color);
        EXPECT_EQ(color, button.GetColor());
    }
}

TEST(ColorButton, KeepsThirtyTwoBitsOfTheColor) {
    ColorButton button;
    button.SetColor(0xFF563412);
    EXPECT_EQ(0xFF563412UL, button.GetColor());
    button.SetColor(static_cast<unsigned long>(0x7'0056'3412ULL)); // a number of 64 bits on Linux
    EXPECT_EQ(0x563412UL, button.GetColor());
}

TEST(ColorButton, ColorIsKeptWithoutAWindowAndThroughIt) {
    EventLoop loop;
    ColorButton button;
    button.SetColor(kColor);
    ASSERT_TRUE(button.Create(L"Pen"));
    EXPECT_EQ(kColor, button.GetColor());
    button.DestroyWindow();
    EXPECT_EQ(kColor, button.GetColor());
}

TEST(ColorButton, TakesTheColorThatTheUserChooses) {
    EventLoop loop;
    ClickedButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    DialogDriver driver;
    driver.Then([](OpenDialog& dialog) { Choose(dialog, kColor); });
    EXPECT_TRUE(button.Click());
    EXPECT_EQ(kColor, button.GetColor());
}

TEST(ColorButton, KeepsItsColorWhenTheUserCancels) {
    EventLoop loop;
    ClickedButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    button.SetColor(kColor);
    DialogDriver driver;
    driver.Then(Cancel);
    EXPECT_TRUE(button.Click());
    EXPECT_EQ(kColor, button.GetColor());
}

TEST(ColorButton, DialogBeginsWithItsColor) {
    EventLoop loop;
    ColorButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    for (const COLORREF color : {COLORREF{0xFFFFFF}, COLORREF{0}, kColor, kOther}) {
        button.SetColor(color);
        DialogDriver driver;
        driver.Then([](OpenDialog& dialog) { dialog.Accept(); });
        button.ForceColorChange();
        EXPECT_EQ(color, button.GetColor());
    }
}

TEST(ColorButton, ChosenColorHasTwentyFourBits) {
    EventLoop loop;
    ColorButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    button.SetColor(0xAB000000 | kColor);
    DialogDriver driver;
    driver.Then(Cancel).Then([](OpenDialog& dialog) { dialog.Accept(); });
    button.ForceColorChange();
    EXPECT_EQ(0xAB000000 | kColor, button.GetColor());
    button.ForceColorChange();
    EXPECT_EQ(kColor, button.GetColor());
}

TEST(ColorButton, ForcingTheChangeDoesWhatAClickDoes) {
    EventLoop loop;
    ColorButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    DialogDriver driver;
    driver.Then([](OpenDialog& dialog) { Choose(dialog, kColor); }).Then(Cancel);
    button.ForceColorChange();
    EXPECT_EQ(kColor, button.GetColor());
    button.ForceColorChange();
    EXPECT_EQ(kColor, button.GetColor());
}

TEST(ColorButton, ChangeCanBeForcedWithoutItsWindowAndWhereTheUserCannotClick) {
    EventLoop loop;
    ColorButton button;
    DialogDriver driver;
    driver.Then([](OpenDialog& dialog) { Choose(dialog, kColor); });
    button.ForceColorChange();
    EXPECT_EQ(kColor, button.GetColor());

    ASSERT_TRUE(button.Create(L"Pen"));
    button.EnableWindow(false);
    driver.Then([](OpenDialog& dialog) { Choose(dialog, kOther); });
    button.ForceColorChange();
    EXPECT_EQ(kOther, button.GetColor());
}

TEST(ColorButton, HostsClassHearsOfTheClickAndCanPassItOn) {
    EventLoop loop;
    HostsButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    DialogDriver driver;
    driver.Then([](OpenDialog& dialog) { Choose(dialog, kColor); });
    button.Click();
    EXPECT_EQ(std::vector<unsigned long>{kColor}, button.colors);
}

TEST(ColorButton, NothingIsDrawnWithoutARequest) {
    ColorButton button;
    button.DrawItem(nullptr);
    DRAWITEMSTRUCT item = {};
    item.itemAction = ODA_DRAWENTIRE; // on no context
    item.rcItem = {0, 0, 20, 10};
    button.DrawItem(&item);
    EXPECT_EQ(0U, button.GetColor());
}

TEST(ColorButton, WindowMayGoWhileTheUserChooses) {
    EventLoop loop;
    ColorButton button;
    ASSERT_TRUE(button.Create(L"Pen"));
    DialogDriver driver;
    driver.Then([&](OpenDialog& dialog) {
        dialog.EnterColor(kOther);
        button.DestroyWindow();
    });
    button.ForceColorChange();
    EXPECT_EQ(0U, button.GetColor());
    EXPECT_EQ(nullptr, button.NativeHandle());
}
