// SPDX-License-Identifier: MIT
// What a text covers on a chart before it is drawn, and how a depth label is laid out.
#include <UtilityDLL/text/TextRectComp.h>

#include <cmath>
#include <iostream>

int main() {
    TextInfo style;
    style.SetFont(L"Liberation Sans");
    style.SetSize(2.5f); // millimetres, say; the rectangle is in the same unit
    style.SetJustification(TextInfo::MIDDLE_CENTER);

    TextRectComp measure;
    const auto tenths = [](double length) { return std::round(length * 10) / 10; };
    const TextRectComp::Rectangle covered = measure(style, L"Pensacola Bay");
    if (covered.Height() == 0) return 1; // nothing to measure with
    std::wcout << tenths(covered.Width()) << L" x " << tenths(covered.Height())
               << L" mm, from " << tenths(covered.Corner(0).X()) << L", "
               << tenths(covered.Corner(0).Y()) << L'\n';

    style.SetMultiLine(true);
    style.SetRectWidth(18); // wrapped into this width
    measure(style, L"Pensacola Bay");
    for (int i = 0; i < measure.GetNumberOfSubStrings(); ++i)
        std::wcout << i << L": " << measure.GetSubString(i) << L'\n';

    DepthLabelInfo label(style);
    label.SetPrecision(1);
    label.SetPresentation(DepthLabelInfo::LOWERED_DECIMALS);
    const auto [whole, decimals] = measure(label, 12.34);
    std::wcout << whole.second << L" and, lower and smaller, " << decimals.second
               << L'\n';
}
