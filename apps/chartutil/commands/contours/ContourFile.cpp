#include "apps/chartutil/commands/contours/ContourFile.h"

#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/terminal/Errors.h"

ContourDefinitionList OpenContours(const UserText& file) {
    ContourDefinitionList list;
    if (!list.Load(file.Wide().c_str())) {
        OpenSettings(file); // says what is wrong with the file, which the list does not
        throw CommandError(ExitCode::CHECK_FAILED,
                           file.Utf8() + ": there is no section [Contour(0)] with keys, so no contour; "
                                         "'chartutil contours range' makes a file with some");
    }
    return list;
}
