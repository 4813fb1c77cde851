// SPDX-License-Identifier: MIT
// The keywords of a title block, and the title block with their values.
#include <UtilityDLL/keywords/Keywords.h>
#include <UtilityDLL/keywords/Placeholders.h>

#include <iostream>

int main() {
    const std::wstring layout = L"%title%\nScale 1 : %scale%\n%title%, sheet 1";
    CKeywords keywords;
    keywords.AddKeywordsInString(layout);
    for (int i = 0; i < keywords.GetSize(); ++i)
        std::wcout << keywords.GetKeyword(i)->name << L": "
                   << keywords.GetKeyword(i)->refCount << L'\n';

    keywords.GetKeyword(L"title")->value = L"Pensacola Bay";
    keywords.GetKeyword(L"scale")->value = L"25000";

    std::wstring text;
    std::size_t end = 0;
    for (Placeholders found(layout); found.Next(); end = found.End()) {
        text.append(layout, end, found.Begin() - end);
        text += keywords.GetKeywordConst(std::wstring(found.Name()))->value;
    }
    std::wcout << text.append(layout, end) << L'\n';
}
