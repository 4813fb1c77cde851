// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/contours/ContourDialog.h"

#include "UtilityDLL/contours/ContourEditor.h"

ErrorString ShowContourDialog(const std::wstring& path) {
    CContourEditor editor(path);
    ErrorString whyNot;
    const int result = editor.DoModal(&whyNot);
    if (!whyNot) return L"the editor cannot be shown: " + std::wstring(whyNot.Text());
    if (result == IDOK && !editor.HasSaved())
        return L"nothing was saved, for the reason that the dialog gave; a file there is as it was";
    return {};
}
