// SPDX-License-Identifier: MIT
// A library of a host that uses the suite: whoever loads and unloads it, loads and unloads the suite with it.

#include "Framework/windows/Dialog.h"
#include "UtilityDLL/colors/ColorButton.h"
#include "UtilityDLL/settings/IniFile.h"
#include "UtilityDLL/text/FontCombo.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"

#include <thread>

#include <windows.h>

namespace {

// A dialog with a control of each kind, which closes when it has opened.
class Dialog : public CDialog {
public:
    Dialog()
        : CDialog(L"Dialog", {DialogItem::COLUMN,
                              0,
                              {},
                              {{DialogItem::EDIT, 100},
                               {DialogItem::CHECK_BOX, 101, L"Check"},
                               {DialogItem::DROP_DOWN_LIST, 102},
                               {DialogItem::LIST_VIEW, 103, L"List"},
                               {DialogItem::COLOR_WELL, 104},
                               {DialogItem::DEFAULT_BUTTON, IDOK, L"OK"}}}) {}

protected:
    void OnInitDialog() override {
        CDialog::OnInitDialog();
        EndDialog(IDOK);
    }
};

bool ShowsControls() {
    ColorButton color;
    FontCombo fonts;
    return color.Create(L"Water") && fonts.Create() && Dialog().DoModal() == IDOK;
}

bool MeasuresText() {
    bool isMeasured = false;
    // What a thread has measured with stays, and the libraries with it, until the thread ends.
    std::thread([&] {
        TextInfo info;
        info.FromString(L"Arial,4");
        TextRectComp measure;
        measure(info, L"12.3");
        isMeasured = measure.GetTextHeight() > 0 && TextHeightFactComp::Get()(info) > 0;
    }).join();
    return isMeasured;
}

} // namespace

/// False when something did not work. The name of the class of its windows goes to `className`.
extern "C" __declspec(dllexport) bool Use(wchar_t* className, int size) {
    IniFile file;
    if (file.Open(L"not there.ini").Text().empty()) return false; // a text of the library
    CWnd window;
    return window.Create() && GetClassNameW(static_cast<HWND>(window.NativeHandle()), className, size) > 0 &&
           ShowsControls() && MeasuresText();
}
