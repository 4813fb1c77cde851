// SPDX-License-Identifier: MIT
// Takes the scale of a chart from a settings file, and makes the file when there is
// none.
#include <UtilityDLL/settings/IniFile.h>

#include <iostream>
#include <utility>

int main() {
    IniFile file;
    IniFile::Fault fault; // says why a file could not be read, and where
    const ErrorString opened = file.Open(L"chart.ini", fault);
    const bool isNew = fault.error == std::errc::no_such_file_or_directory;
    if (!opened && !isNew) {
        std::wcout << opened.Text() << L'\n';
        return 1;
    }
    Section& sheet = file[L"Chart Sheet"]; // added when it is not there yet
    if (!isNew && sheet.IsModified()) std::wcout << L"chart.ini was edited by hand\n";

    int scale = 25000; // stays when the key is missing
    std::as_const(sheet)[L"Scale"] >> scale;
    std::wcout << L"drawn at 1 : " << scale << L'\n';

    sheet[L"Scale"] << scale;
    sheet[L"Scale"].SetComments(L"1 to this");
    sheet.AddChecksum(); // the seal, by which an edit is noticed
    if (!file.Save(L"chart.ini")) {
        std::wcout << L"chart.ini was not saved, and is as it was\n";
        return 1;
    }
}
