#include "apps/chartutil/files/ColorTableFile.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"

#include <vector>

DXFColorTable OpenColorTable(const std::string& path, bool& complete) {
    FileObject file;
    if (!file.Open(FromUtf8(path), 0))
        throw CommandError(ExitCode::IO_ERROR,
                           path + ": cannot be read as a settings file; check the name, the permissions and "
                                  "that no section header is empty");
    DXFColorTable table;
    std::vector<std::wstring> remarks;
    complete = table.FileOpen(file, &remarks);
    if (!complete && !file.GetSection(L"ColorTable"))
        throw CommandError(ExitCode::CHECK_FAILED,
                           path + ": no colour table: " + ToUtf8(remarks.at(0)) +
                               "; 'chartutil colors import' makes a table from a .cpt file");
    for (const std::wstring& remark : remarks) PrintNote(path + ": " + ToUtf8(remark));
    if (remarks.size() == ColorTable::MAX_REMARKS) PrintNote(path + ": and perhaps more");
    return table;
}
