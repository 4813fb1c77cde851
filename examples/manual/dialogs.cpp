// SPDX-License-Identifier: MIT
// Opens the editor of contour definitions, in a host that has no window and no toolkit
// of its own.
#include <UtilityDLL/contours/ContourEditor.h>

#include <iostream>

int main() {
    CContourEditor editor(L"levels.cdf"); // made by OK when it is not there
    ErrorString whyNot;
    const int closedBy = editor.DoModal(&whyNot);
    if (closedBy == -1) {
        std::wcout << L"not shown: " << whyNot.Text() << L'\n';
        return 3;
    }
    if (closedBy == IDCANCEL) std::wcout << L"cancelled, nothing is saved\n";
    if (editor.HasSaved())
        std::wcout << editor.List().NumContours() << L" contours are saved\n";
}
