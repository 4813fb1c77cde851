// SPDX-License-Identifier: MIT
// Takes the pictures of the dialogs and controls: DialogPictures PREFIX SUFFIX light|dark. The language is
// that of UTILITYDLL_LANGUAGE, the scale that of the display; tools/dialog-pictures.sh goes through them.

#include "UtilityDLL/colors/ColorButton.h"
#include "UtilityDLL/contours/ContourEditor.h"
#include "UtilityDLL/text/FontCombo.h"
#include "VelmBase/WideString.h"
#include "tests/pictures/Camera.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

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
    camera.TakeControls("controls", {&color, &faces});
}

} // namespace

// Run as a test, since the driver's faults are those of tests.
TEST(DialogPictures, AreTaken) {
    const std::vector<std::string> arguments = ::testing::internal::GetArgvs();
    ASSERT_EQ(4U, arguments.size()) << "usage: DialogPictures PREFIX SUFFIX light|dark";
    const EventLoop loop;
    const Camera camera(arguments[1], arguments[2], arguments[3]);
    TakeDialogs(camera);
    TakeControls(camera);
}
