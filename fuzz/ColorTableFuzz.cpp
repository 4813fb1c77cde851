// SPDX-License-Identifier: MIT
// Colour tables: a "col" file is read without fail, its entries ascend, and a table that is saved is read
// back as it was. The input is the file's entries, a line each.

#include "UtilityDLL/colors/DXFColorTable.h"
#include "VelmBase/ColorTable.h"
#include "fuzz/Require.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text(data, data + size);
    FileObject file;
    file.SetItem(L"ColorTable", L"Units", L"m", true);
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        const std::wstring line = text.substr(begin, end - begin);
        const std::size_t equals = std::min(line.find(L'='), line.size());
        file.SetItem(L"ColorTable", line.substr(0, equals), line.substr(std::min(equals + 1, line.size())),
                     true);
        begin = end + 1;
    }

    DXFColorTable table;
    std::vector<std::wstring> remarks;
    const bool complete = table.FileOpen(file, &remarks);
    Require(complete || !remarks.empty());
    Require(remarks.size() <= ColorTable::MAX_REMARKS);
    bool hasNan = false;
    for (int i = 0; i < table.NumEntries(); ++i) {
        Require(table.EntryColor(i) <= 0xFFFFFF);
        hasNan = hasNan || std::isnan(table.EntryValue(i));
        if (i > 0) Require(!(table.EntryValue(i) < table.EntryValue(i - 1)));
    }

    FileObject saved;
    Require(table.FileSave(saved));
    DXFColorTable back;
    Require(back.FileOpen(saved));
    Require(back == table || hasNan);
    Require(back.NumEntries() == table.NumEntries());
    Require(back.DefaultColor() == table.DefaultColor());

    back.MakeDXFTable();
    Require(back.NumEntries() <= table.NumEntries());
    for (const double value : {0.0, 1.0, -1.0, HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        int expected = DXFColor(back.DefaultColor()).Index();
        for (int i = 0; i < back.NumEntries(); ++i)
            if (back.EntryValue(i) <= value) expected = back.EntryDxfColor(i).Index();
        Require(back[value].Index() == expected);
    }
    return 0;
}
