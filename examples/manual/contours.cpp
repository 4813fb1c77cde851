// SPDX-License-Identifier: MIT
// The levels of a chart: every two metres, thicker and labelled every ten, in a contour
// definition file.
#include <UtilityDLL/contours/ContourDefinitionList.h>

#include <cmath>
#include <fstream>
#include <iostream>

int main() {
    ContourDefinitionList contours;
    if (!contours.Generate(0, 20, 2)) return 1;
    for (int i = 0; i < contours.NumContours(); ++i) {
        ContourDefinitionList::ContourDefInfo contour = contours[i];
        contour.annotate = std::fmod(contour.level, 10) == 0;
        contour.lineWidth = contour.annotate ? 0.2f : 0.1f;
        contours.Set(i, contour);
    }
    std::wcout << contours.NumContours() << L" contours, 10 m at position "
               << contours.Find(10) << L'\n';

    std::error_code error; // says why it could not be saved
    if (!contours.Save(L"levels.cdf", error)) return 1;
    std::ofstream("levels.cdf", std::ios::app)
        << "[Contour(11)]\nLevel = deep\n"; // somebody by hand

    ContourDefinitionList read;
    std::vector<std::wstring> remarks; // what is odd in a file
    if (!read.Load(L"levels.cdf", &remarks)) return 1;
    std::wcout << read.NumContours() << L" contours\n";
    for (const std::wstring& remark : remarks) std::wcout << remark << L'\n';
}
