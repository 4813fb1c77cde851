// SPDX-License-Identifier: MIT
#include "Framework/windows/ColorDialog.h"

#include "Framework/windows/ColorWell.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <memory>

namespace {

using ColorDialogTest = DialogTest;

} // namespace

TEST_F(ColorDialogTest, ReturnsWhatWasChosen) {
    for (const DWORD flags : {DWORD{0}, DWORD{CC_FULLOPEN}, DWORD{CC_FULLOPEN | CC_RGBINIT}}) {
        CColorDialog dialog(0x112233, flags);
        EXPECT_EQ(0x112233U, dialog.GetColor());
        m_driver.Then([](OpenDialog& open) {
            open.EnterColor(0x0180FE);
            open.Accept();
        });
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(0x0180FEU, dialog.GetColor());
    }
}

TEST_F(ColorDialogTest, BeginsWithItsColour) {
    CColorDialog dialog(0x112233);
    m_driver.Then([](OpenDialog& open) { open.Accept(); });
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(0x112233U, dialog.GetColor());
}

TEST_F(ColorDialogTest, CancelLeavesTheColour) {
    CColorDialog dialog(0x112233);
    m_driver.Then([](OpenDialog& open) {
        open.EnterColor(0x0180FE);
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_EQ(0x112233U, dialog.GetColor());
}

TEST_F(ColorDialogTest, ItsParentMayGoWhileItIsOpen) {
    auto parent = std::make_unique<CButton>();
    ASSERT_TRUE(parent->Create(L"Parent"));
    CColorDialog dialog(0x112233, 0, parent.get());
    m_driver.Then([&](OpenDialog&) { parent.reset(); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_EQ(0x112233U, dialog.GetColor());
}

TEST_F(ColorDialogTest, AWellOpensItByAClick) {
    TestDialog dialog({Form({Label(L"&Color:"), {DialogItem::COLOR_WELL, COLOR, L"Click to Change"}})});
    CColorWell well;
    well.SetColor(0xABCDEF); // also without a window
    dialog.onInit = [&] { dialog.Attach(COLOR, well); };
    m_driver
        .Then([&](OpenDialog& open) {
            open.Click(L"Color");
            EXPECT_EQ(0x0180FEU, well.GetColor());
            open.Click(L"Color");
            EXPECT_EQ(0x0180FEU, well.GetColor());
            open.Key("Escape");
        })
        .Then([](OpenDialog& open) {
            open.EnterColor(0x0180FE);
            open.Accept();
        })
        .Then([](OpenDialog& open) {
            open.EnterColor(0);
            open.Key("Escape");
        });
    dialog.DoModal();
    EXPECT_EQ(0x0180FEU, well.GetColor());
}

TEST_F(ColorDialogTest, AWellMayGoWhileItIsOpen) {
    auto dialog = std::make_unique<TestDialog>(
        std::vector{Form({Label(L"Color:"), {DialogItem::COLOR_WELL, COLOR, L"Click to Change"}})});
    auto well = std::make_unique<CColorWell>();
    dialog->onInit = [&] { dialog->Attach(COLOR, *well); };
    m_driver.Then([](OpenDialog& open) { open.Click(L"Color"); }).Then([&](OpenDialog& open) {
        open.EnterColor(0x0180FE);
        well.reset();
        dialog.reset();
        open.Accept();
    });
    EXPECT_EQ(IDCANCEL, dialog->DoModal());
    m_loop.RunWhatWaits();
}
