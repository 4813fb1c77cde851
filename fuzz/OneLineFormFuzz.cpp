// SPDX-License-Identifier: MIT
// The one-line forms of text styles, depth labels, lines and DXF lines: a line is read without fail, and a
// record's own line gives the record again, within the stated losses. The first byte chooses the record; a
// byte of the rest is a character.

#include "UtilityDLL/presentation/DXFInfo.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

// Losses: an infinite size is "inf", which is no number, and a colour reference above 2147483647, which a
// negative item gives, is read as that. From the second line on nothing changes any more.
template <typename Record> void CheckLine(const std::wstring& line) {
    Record first;
    first.FromString(line);
    Record second;
    second.FromString(first.ToString());
    Record third;
    third.FromString(second.ToString());
    Require(third.ToString() == second.ToString());
    const bool mayLose = line.find(L'-') != std::wstring::npos ||
                         first.ToString().find(L"inf") != std::wstring::npos ||
                         first.ToString().find(L"nan") != std::wstring::npos;
    Require(mayLose || second.ToString() == first.ToString());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::wstring line(data + 1, data + size);
    switch (data[0] % 4) {
    case 0:
        CheckLine<TextInfo>(line);
        break;
    case 1:
        CheckLine<DepthLabelInfo>(line);
        break;
    case 2:
        CheckLine<LineInfo>(line);
        break;
    case 3:
        CheckLine<DXFInfo>(line);
        break;
    }
    return 0;
}
