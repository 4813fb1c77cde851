// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/ColorTableFile.h"

#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

#include <vector>

DXFColorTable OpenColorTable(const UserText& path, bool& complete) {
    const FileObject file = OpenFileObject(path);
    DXFColorTable table;
    std::vector<std::wstring> remarks;
    complete = table.FileOpen(file, &remarks);
    if (!complete && !file.GetSection(L"ColorTable"))
        throw CommandError(ExitCode::CHECK_FAILED,
                           InputName(path) + ": no colour table: " + ToUtf8(remarks.at(0)) +
                               "; 'chartutil colors import' makes a table from a .cpt file");
    const std::string place = InputName(path) + ": ";
    for (const std::wstring& remark : remarks) PrintNote(place + ToUtf8(remark));
    if (remarks.size() == ColorTable::MAX_REMARKS) PrintNote(place + "and perhaps more");
    return table;
}

void RequireComplete(bool complete, const UserText& path) {
    if (!complete)
        throw CommandError(ExitCode::CHECK_FAILED,
                           InputName(path) +
                               ": not all of the table could be read; mend what is named above");
}

void SaveColorTable(const ColorTable& table, const UserText& path) {
    FileObject file;
    table.FileSave(file);
    const Progress progress(path.Utf8());
    WriteFile(path, [&](const FILES::ContentSink& sink) { return file.Write(sink); });
}
