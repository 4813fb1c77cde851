// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/contours/ContourFile.h"

#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Errors.h"

ContourDefinitionList ReadContours(const UserText& file, std::vector<std::wstring>* remarks) {
    ContourDefinitionList list;
    if (const std::string content = ReadFile(file); !list.ReadText(content, remarks))
        (void)SettingsOf(content, file); // says what is wrong with the file, which the list does not
    return list;
}

ContourDefinitionList OpenContours(const UserText& file) {
    ContourDefinitionList list = ReadContours(file);
    if (list.NumContours() == 0)
        throw CommandError(ExitCode::CHECK_FAILED,
                           InputName(file) + ": there is no section [Contour(0)] with keys, so no contour; "
                                             "'chartutil contours range' makes a file with some");
    return list;
}
