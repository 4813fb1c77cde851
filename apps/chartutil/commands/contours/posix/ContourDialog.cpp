#include "apps/chartutil/commands/contours/ContourDialog.h"

#include "UtilityDLL/contours/ContourEditor.h"

ErrorString ShowContourDialog(const std::wstring& path) {
    CContourEditor editor(path);
    ErrorString whyNot;
    editor.DoModal(&whyNot);
    return whyNot;
}
