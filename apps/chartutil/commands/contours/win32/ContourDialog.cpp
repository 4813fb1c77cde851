#include "apps/chartutil/commands/contours/ContourDialog.h"

ErrorString ShowContourDialog(const std::wstring&) {
    return L"this program was built without dialogs; 'chartutil contours' lists, makes and checks contour "
           L"definition files";
}
