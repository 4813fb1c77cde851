// SPDX-License-Identifier: MIT
// The coast line of a chart and the style of its title: in sections of a settings file,
// and each in one line.
#include <UtilityDLL/presentation/LineInfo.h>
#include <UtilityDLL/presentation/TextInfo.h>
#include <UtilityDLL/settings/IniFile.h>

#include <iostream>

int main() {
    LineInfo coast; // solid, black, 0.1 wide
    coast.SetWidth(0.25f);
    coast.SetStyle(LineInfo::DASHED);

    TextInfo title; // Arial 2.5, regular, black
    title.SetSize(5);
    title.SetStyle(TextInfo::BOLD | TextInfo::ITALIC);
    title.SetJustification(TextInfo::MIDDLE_CENTER);

    IniFile file;
    coast.Write(file[L"Coast Line"]);
    title.Write(file[L"Chart Title"]);

    const Section& line = file[L"Coast Line"];
    for (int i = 0; i < line.NumKeys(); ++i) {
        std::wstring value;
        line[i] >> value;
        std::wcout << line[i].GetName().String() << L" = " << value << L'\n';
    }

    LineInfo again;
    again.Read(line);
    std::wcout << (again == coast ? L"as it was written\n" : L"something was lost\n");

    std::wcout << title.ToString() << L'\n';
    TextInfo same;
    same.FromString(title.ToString());
    std::wcout << same.Font() << L' ' << same.Size()
               << (same == title ? L", the same\n" : L", another\n");
}
