// SPDX-License-Identifier: MIT
// A font file: opened as a face, and measured with characters of all kinds. The first byte chooses the face
// of the file, the second the characters.

#include "Framework/device/freetype/module/private/OutlineFace.h"
#include "fuzz/Require.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    FaceFile file;
    file.index = (data[0] & 3) | (data[0] >> 2 & 3) << 16;
    if ((data[0] & 0x80) != 0) file.variations = "wght=650";
    const auto face = OutlineFace::Open({reinterpret_cast<const char*>(data) + 2, size - 2}, file);
    if (!face) return 0;
    const OUTLINETEXTMETRICW& metrics = face->Metrics();
    Require(metrics.otmEMSquare > 0, "an em has a size");
    Require(metrics.otmTextMetrics.tmHeight > 0, "a cell has a height");
    std::wstring text = L"A\u00E9\n\u6D77e\u0301 \u0644\u0627 \u0915\u094D\u0937 \U0001F6A2";
    text += static_cast<wchar_t>(data[1] * 0x1101);
    const TextAdvance once = face->Advance(text);
    Require(std::isfinite(once.units) && once.units >= 0, "a width is a number, not below 0");
    const TextAdvance again = face->Advance(text);
    Require(once.units == again.units && once.characters == again.characters,
            "the same text is as wide again");
    return 0;
}
