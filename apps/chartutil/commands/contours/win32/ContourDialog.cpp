#include "apps/chartutil/commands/contours/ContourDialog.h"

ErrorString ShowContourDialog(const std::wstring&) {
    return L"the editor cannot be shown: this program was built without dialogs; 'chartutil contours' lists, "
           L"makes and checks contour definition files";
}
