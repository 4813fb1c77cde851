// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/module/private/FaceMetrics.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <freetype/ftadvanc.h>
#include <freetype/tttables.h>

namespace {

template <typename Table> const Table* TableOf(FT_Face face, FT_Sfnt_Tag tag) {
    return static_cast<const Table*>(FT_Get_Sfnt_Table(face, tag));
}

struct Cell {
    int ascent;
    int descent;
    int Height() const { return ascent + descent; }
};

Cell CellOf(FT_Face face, const TT_OS2* os2, const TT_HoriHeader* header) {
    const Cell none = {0, 0};
    for (const Cell cell : {os2 ? Cell{os2->usWinAscent, os2->usWinDescent} : none,
                            header ? Cell{header->Ascender, -header->Descender} : none,
                            os2 ? Cell{os2->sTypoAscender, -os2->sTypoDescender} : none,
                            Cell{face->ascender, -face->descender}, // of fonts that have other tables
                            Cell{static_cast<int>(std::clamp(face->bbox.yMax, -0xFFFFl, 0xFFFFl)),
                                 static_cast<int>(-std::clamp(face->bbox.yMin, -0xFFFFl, 0xFFFFl))}})
        if (cell.Height() > 0) return cell;
    return {face->units_per_EM, 0};
}

int WidthOf(FT_Face face, FT_ULong character) {
    FT_Fixed advance = 0;
    const FT_UInt glyph = FT_Get_Char_Index(face, character);
    if (glyph == 0 || FT_Get_Advance(face, glyph, FT_LOAD_NO_SCALE, &advance) != 0) return 0;
    return static_cast<int>(std::clamp(advance, 0l, 0xFFFFl));
}

// Of a design for text; 0 where the font does not say.
int FamilyOf(const TT_OS2* os2, bool isMonospaced) {
    constexpr int kScript = 3, kDecorative = 4, kLastSerif = 10, kLastSans = 15;
    const int kind = os2 ? os2->panose[0] : 0;
    if (kind == kScript) return FF_SCRIPT;
    if (kind == kDecorative) return FF_DECORATIVE;
    if (isMonospaced) return FF_MODERN;
    const int serif = os2 ? os2->panose[1] : 0;
    return serif < 2 ? 0 : serif <= kLastSerif ? FF_ROMAN : serif <= kLastSans ? FF_SWISS : 0;
}

int WeightOf(FT_Face face, const TT_OS2* os2) {
    // Old fonts have a class from 1 to 9.
    if (os2 && os2->usWeightClass > 0 && os2->usWeightClass <= 1000)
        return os2->usWeightClass < 10 ? os2->usWeightClass * 100 : os2->usWeightClass;
    return (face->style_flags & FT_STYLE_FLAG_BOLD) != 0 ? FW_BOLD : FW_NORMAL;
}

TEXTMETRICW TextMetricsOf(FT_Face face, const TT_OS2* os2, const TT_HoriHeader* header) {
    TEXTMETRICW text = {};
    const Cell cell = CellOf(face, os2, header);
    text.tmAscent = cell.ascent;
    text.tmDescent = cell.descent;
    text.tmHeight = cell.Height();
    text.tmInternalLeading = text.tmHeight - face->units_per_EM;
    if (header)
        text.tmExternalLeading =
            std::max(0, header->Line_Gap - (cell.Height() - (header->Ascender - header->Descender)));
    text.tmAveCharWidth = os2 && os2->xAvgCharWidth > 0 ? os2->xAvgCharWidth : WidthOf(face, 'x');
    const FT_Pos widest = face->bbox.xMax - face->bbox.xMin;
    text.tmMaxCharWidth = static_cast<LONG>(std::clamp<FT_Pos>(widest, 0, 0x1FFFF));
    text.tmWeight = WeightOf(face, os2);
    text.tmItalic = (face->style_flags & FT_STYLE_FLAG_ITALIC) != 0 ? 255 : 0;
    text.tmDigitizedAspectX = text.tmDigitizedAspectY = 96;
    text.tmFirstChar = os2 ? os2->usFirstCharIndex : 0x20;
    text.tmLastChar = os2 ? os2->usLastCharIndex : 0xFFFD;
    text.tmBreakChar = text.tmFirstChar <= 1     ? static_cast<char16_t>(text.tmFirstChar + 2)
                       : text.tmFirstChar > 0xFF ? u' '
                                                 : text.tmFirstChar;
    text.tmDefaultChar = static_cast<char16_t>(text.tmBreakChar - 1);
    const bool isMonospaced = FT_IS_FIXED_WIDTH(face);
    text.tmPitchAndFamily = static_cast<BYTE>((isMonospaced ? 0 : TMPF_FIXED_PITCH) | TMPF_VECTOR |
                                              TMPF_TRUETYPE | FamilyOf(os2, isMonospaced));
    return text;
}

} // namespace

OUTLINETEXTMETRICW MetricsOf(FT_Face face) {
    const auto* const os2 = TableOf<TT_OS2>(face, FT_SFNT_OS2);
    const auto* const header = TableOf<TT_HoriHeader>(face, FT_SFNT_HHEA);
    const auto* const post = TableOf<TT_Postscript>(face, FT_SFNT_POST);
    OUTLINETEXTMETRICW all = {};
    all.otmSize = sizeof all;
    all.otmTextMetrics = TextMetricsOf(face, os2, header);
    all.otmEMSquare = face->units_per_EM;
    const auto edge = [](FT_Pos at) { return static_cast<LONG>(std::clamp<FT_Pos>(at, -0xFFFF, 0xFFFF)); };
    all.otmrcFontBox = {edge(face->bbox.xMin), edge(face->bbox.yMax), edge(face->bbox.xMax),
                        edge(face->bbox.yMin)};
    all.otmsCharSlopeRise = 1;
    if (os2) {
        static_assert(sizeof all.otmPanoseNumber == sizeof os2->panose);
        std::memcpy(&all.otmPanoseNumber, os2->panose, sizeof os2->panose);
        all.otmfsSelection = os2->fsSelection;
        all.otmfsType = os2->fsType;
        all.otmAscent = os2->sTypoAscender;
        all.otmDescent = os2->sTypoDescender;
        all.otmLineGap = static_cast<UINT>(std::max<int>(0, os2->sTypoLineGap));
        all.otmsCapEmHeight = static_cast<UINT>(std::max<int>(0, os2->sCapHeight));
        all.otmsXHeight = static_cast<UINT>(std::max<int>(0, os2->sxHeight));
        all.otmptSubscriptSize = {os2->ySubscriptXSize, os2->ySubscriptYSize};
        all.otmptSubscriptOffset = {os2->ySubscriptXOffset, os2->ySubscriptYOffset};
        all.otmptSuperscriptSize = {os2->ySuperscriptXSize, os2->ySuperscriptYSize};
        all.otmptSuperscriptOffset = {os2->ySuperscriptXOffset, os2->ySuperscriptYOffset};
        all.otmsStrikeoutSize = static_cast<UINT>(std::max<int>(0, os2->yStrikeoutSize));
        all.otmsStrikeoutPosition = os2->yStrikeoutPosition;
    } else {
        all.otmAscent = face->ascender;
        all.otmDescent = face->descender;
    }
    if (header) {
        all.otmsCharSlopeRise = header->caret_Slope_Rise;
        all.otmsCharSlopeRun = header->caret_Slope_Run;
        all.otmMacAscent = header->Ascender;
        all.otmMacDescent = header->Descender;
        all.otmMacLineGap = static_cast<UINT>(std::max<int>(0, header->Line_Gap));
    }
    if (post) {
        all.otmItalicAngle = static_cast<int>(std::lround(double(post->italicAngle) / 65536 * 10));
        all.otmsUnderscoreSize = post->underlineThickness;
        all.otmsUnderscorePosition = post->underlinePosition;
    }
    return all;
}
