// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"

#include <cstdint>

// The part of Windows' device interface that the framework stands on, under the names, with the values and
// the layouts that the header of Windows gives them: the same source serves hosts on both platforms. Here it
// is made with fontconfig, FreeType and HarfBuzz, and needs no display: a device context stands for one of 96
// pixels an inch, and nothing that is measured is rounded to its pixels. Any thread may call.
//
// What a font measures is in its file, which is read into memory when the first font of its face is made.
// After that neither the file nor the list of what is installed is looked at again for that face, at any size
// and for any text, except for characters that it lacks: the first of these has the faces looked up that help
// out, and each of them is read when a character needs it.
//
// The last 64 faces are kept, with at most 64 MB of font files, and of each the widths that were asked for:
// some KB, 4.3 MB if it was asked for every character of Unicode. A face that was displaced stays in memory
// until its last font is deleted, so the faces of all fonts that exist come on top of the 64 MB. Fonts of the
// same face share one, the faces of a collection have the whole file each.
//
// A file above 64 MB, one that is damaged, and a program without the module FrameworkFonts have no outlines
// to measure; nor has a file that cannot be read, which is tried again for the next font, or the next
// character of another face's text.

using BOOL = int;
using BYTE = std::uint8_t;
using LONG = std::int32_t;
using UINT = unsigned int;
using DWORD = unsigned long;
using LPARAM = std::intptr_t;
using COLORREF = std::uint32_t; ///< red in the lowest byte, then green and blue

/// Numbers, not addresses: one that stands for nothing, or no more, is refused.
using HGDIOBJ = void*;
using HDC = struct HDC__*;
using HFONT = struct HFONT__*;
using HBRUSH = struct HBRUSH__*;

struct SIZE {
    LONG cx;
    LONG cy;
};
struct POINT {
    LONG x;
    LONG y;
};
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

/// Lengths are in logical units.
struct TEXTMETRICW {
    LONG tmHeight; ///< ascent and descent
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading; ///< of the height what is above the em
    LONG tmExternalLeading; ///< what the font wants between two lines
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    char16_t tmFirstChar;
    char16_t tmLastChar;
    char16_t tmDefaultChar;
    char16_t tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};

struct PANOSE {
    BYTE bFamilyType;
    BYTE bSerifStyle;
    BYTE bWeight;
    BYTE bProportion;
    BYTE bContrast;
    BYTE bStrokeVariation;
    BYTE bArmStyle;
    BYTE bLetterform;
    BYTE bMidline;
    BYTE bXHeight;
};

/// Lengths are in logical units, y up from the base line; a descent is negative.
struct OUTLINETEXTMETRICW {
    UINT otmSize; ///< 232 bytes: the names that Windows has behind the structure are not there
    TEXTMETRICW otmTextMetrics;
    BYTE otmFiller;
    PANOSE otmPanoseNumber;
    UINT otmfsSelection;
    UINT otmfsType;
    int otmsCharSlopeRise;
    int otmsCharSlopeRun;
    int otmItalicAngle; ///< tenths of a degree
    UINT otmEMSquare;   ///< font units
    int otmAscent;      ///< the typographic one
    int otmDescent;     ///< the typographic one
    UINT otmLineGap;
    UINT otmsCapEmHeight;
    UINT otmsXHeight;
    RECT otmrcFontBox;
    int otmMacAscent;
    int otmMacDescent;
    UINT otmMacLineGap;
    UINT otmusMinimumPPEM;
    POINT otmptSubscriptSize;
    POINT otmptSubscriptOffset;
    POINT otmptSuperscriptSize;
    POINT otmptSuperscriptOffset;
    UINT otmsStrikeoutSize;
    int otmsStrikeoutPosition;
    int otmsUnderscoreSize;
    int otmsUnderscorePosition;
    char* otmpFamilyName; ///< this and the other names are null
    char* otmpFaceName;
    char* otmpStyleName;
    char* otmpFullName;
};
static_assert(sizeof(OUTLINETEXTMETRICW) == 232);

inline constexpr int LF_FACESIZE = 32;
struct LOGFONTW {
    LONG lfHeight; ///< of the cell (ascent and descent) when positive, of the em when negative, in logical
                   ///< units
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    wchar_t lfFaceName[LF_FACESIZE];
};

// Map modes: what a logical unit is. In all but the first, y is up.
inline constexpr int MM_TEXT = 1;        ///< a pixel, y down
inline constexpr int MM_LOMETRIC = 2;    ///< 0.1 mm
inline constexpr int MM_HIMETRIC = 3;    ///< 0.01 mm
inline constexpr int MM_LOENGLISH = 4;   ///< 0.01 inch
inline constexpr int MM_HIENGLISH = 5;   ///< 0.001 inch
inline constexpr int MM_TWIPS = 6;       ///< 1/1440 inch
inline constexpr int MM_ISOTROPIC = 7;   ///< what the extents say, the same length in x and y
inline constexpr int MM_ANISOTROPIC = 8; ///< what the extents say

inline constexpr int HORZSIZE = 4; ///< millimetres
inline constexpr int VERTSIZE = 6;
inline constexpr int HORZRES = 8; ///< pixels
inline constexpr int VERTRES = 10;
inline constexpr int LOGPIXELSX = 88; ///< pixels an inch
inline constexpr int LOGPIXELSY = 90;

inline constexpr int FW_NORMAL = 400;
inline constexpr int FW_BOLD = 700;
inline constexpr int DEFAULT_CHARSET = 1;
inline constexpr int OUT_TT_ONLY_PRECIS = 7;
inline constexpr int CLIP_LH_ANGLES = 16;
inline constexpr int PROOF_QUALITY = 2;

// What EnumFontFamiliesExW says a font is: with neither bit, outlines that are not counted as TrueType.
inline constexpr int RASTER_FONTTYPE = 1;
inline constexpr int DEVICE_FONTTYPE = 2;
inline constexpr int TRUETYPE_FONTTYPE = 4;

// lfPitchAndFamily, and tmPitchAndFamily, in which TMPF_FIXED_PITCH means the opposite of its name.
inline constexpr int FIXED_PITCH = 1;
inline constexpr int VARIABLE_PITCH = 2;
inline constexpr int TMPF_FIXED_PITCH = 1; ///< the font is NOT of fixed pitch
inline constexpr int TMPF_VECTOR = 2;
inline constexpr int TMPF_TRUETYPE = 4;
inline constexpr int FF_ROMAN = 0x10;
inline constexpr int FF_SWISS = 0x20;
inline constexpr int FF_MODERN = 0x30;
inline constexpr int FF_SCRIPT = 0x40;
inline constexpr int FF_DECORATIVE = 0x50;

// Stock objects: brushes to NULL_BRUSH, pens to NULL_PEN, fonts.
inline constexpr int WHITE_BRUSH = 0;
inline constexpr int NULL_BRUSH = 5;
inline constexpr int BLACK_PEN = 7;
inline constexpr int NULL_PEN = 8;
inline constexpr int SYSTEM_FONT = 13;
inline constexpr int DEFAULT_PALETTE = 15; ///< there is none
inline constexpr int DEFAULT_GUI_FONT = 17;
inline constexpr int DC_BRUSH = 18;
inline constexpr int DC_PEN = 19;

// What GetObjectType returns.
inline constexpr int OBJ_PEN = 1;
inline constexpr int OBJ_BRUSH = 2;
inline constexpr int OBJ_DC = 3;
inline constexpr int OBJ_FONT = 6;

/// Null unless the driver is "DISPLAY" in any letter case, and when there are a million contexts.
FRAMEWORK_API HDC CreateDCW(const wchar_t* driver, const wchar_t* device, const wchar_t* output,
                            const void* initData);
FRAMEWORK_API BOOL DeleteDC(HDC dc);

/// Both return the mode before, 0 on failure. The modes are those that are named above.
FRAMEWORK_API int SetMapMode(HDC dc, int mode);
FRAMEWORK_API int GetMapMode(HDC dc);

/// They count in MM_ISOTROPIC and MM_ANISOTROPIC, where 0 is refused; in other modes they change nothing. In
/// MM_ISOTROPIC the viewport is cut so that a unit is as long in x as in y. `old` may be null.
FRAMEWORK_API BOOL SetWindowExtEx(HDC dc, int x, int y, SIZE* old);
FRAMEWORK_API BOOL SetViewportExtEx(HDC dc, int x, int y, SIZE* old);
FRAMEWORK_API int GetDeviceCaps(HDC dc, int index);

/// `height` in logical units: of the cell (ascent and descent) when positive, of the em when negative; 0 is a
/// cell of 16 pixels. `width` is the average width of a character, 0 that of the face's design. A weight
/// above 550 asks for a bold face. Of the rest only italic, underline, strikeOut and the face's name count:
/// letter case and blanks of that do not, and the first 31 characters of a longer one find it too. Null when
/// there are a million objects.
FRAMEWORK_API HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight,
                                DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet,
                                DWORD outPrecision, DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily,
                                const wchar_t* face);
/// One colour. Null when there are a million objects.
FRAMEWORK_API HBRUSH CreateSolidBrush(COLORREF color);

/// Null for what is none. The fonts among them have no outlines.
FRAMEWORK_API HGDIOBJ GetStockObject(int index);

/// OBJ_FONT and the like; 0 for a handle that stands for nothing.
FRAMEWORK_API DWORD GetObjectType(HGDIOBJ object);

/// False for a handle that stands for nothing. What is selected goes with the last of its selections; stock
/// objects stay.
FRAMEWORK_API BOOL DeleteObject(HGDIOBJ object);

/// The object of its kind that was selected before; null when one of the two is none.
FRAMEWORK_API HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);

// Drawing, in pixels, on a context that a window gives for a request to draw; on others all of it fails.
// Stock objects draw nothing.

/// Fills the rectangle, without its right and bottom edge, or its outermost pixels. 0 on failure.
FRAMEWORK_API int FillRect(HDC dc, const RECT* rectangle, HBRUSH brush);
FRAMEWORK_API int FrameRect(HDC dc, const RECT* rectangle, HBRUSH brush);

/// The colours of text, which is black on white at first. Both return the one before, CLR_INVALID on failure.
FRAMEWORK_API COLORREF SetTextColor(HDC dc, COLORREF color);
FRAMEWORK_API COLORREF SetBkColor(HDC dc, COLORREF color);
inline constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;

/// A line of text in the window's font, from its top left corner on.
FRAMEWORK_API BOOL TextOutW(HDC dc, int x, int y, const wchar_t* text, int length);

/// The bytes that were written; with a null pointer, those that there are. 0 for a font without outlines.
FRAMEWORK_API UINT GetOutlineTextMetricsW(HDC dc, UINT size, OUTLINETEXTMETRICW* metrics);

/// The sum of the advances, without kerning, and the height of the font's cell, in logical units; of a text
/// of no characters both are 0. False, and `extent` is as it was, for a font without outlines.
///
/// A character above U+FFFF may come in one piece or as its two surrogates. Letters of scripts that join,
/// stack or reorder and marks are shaped; a character that the face lacks has the width that it has in the
/// first installed face with it, at the same size of the em; what no face has, controls and surrogates
/// without a partner have the width of the face's sign for missing characters. A font that is made bold for
/// want of a bold face adds a pixel to each character, one that is slanted keeps its widths.
FRAMEWORK_API BOOL GetTextExtentPoint32W(HDC dc, const wchar_t* text, int length, SIZE* extent);

/// The family that the selected font was found in: another than was asked for where that is missing. Returns
/// the characters that were written with the final 0, or with a null pointer, those that there are.
FRAMEWORK_API int GetTextFaceW(HDC dc, int count, wchar_t* face);

/// Gets a font, its measures, its type (RASTER_FONTTYPE for bitmaps, TRUETYPE_FONTTYPE for all outlines) and
/// the caller's own parameter. Enumerating ends when it returns 0.
using FONTENUMPROCW = int (*)(const LOGFONTW* font, const TEXTMETRICW* metrics, DWORD type, LPARAM parameter);

/// Calls back for each installed family, with its most regular style, in the order of their names; with a
/// name in `wanted`, for each style of that family (letter case does not count), upright ones first, of these
/// the nearest to regular. The rest of `wanted` does not count; with a null pointer all families are meant.
///
/// A family has one entry, with character set 0, where Windows has one for each character set. No font file
/// is opened: of the measures only weight, slant, pitch and type are set, the lengths are 0. Of a name of
/// LF_FACESIZE or more characters lfFaceName holds the first LF_FACESIZE - 1, by which CreateFontW finds it
/// again.
///
/// Returns what was returned last; 1 when there is nothing to call back for, 0 for what is no context.
FRAMEWORK_API int EnumFontFamiliesExW(HDC dc, const LOGFONTW* wanted, FONTENUMPROCW callback,
                                      LPARAM parameter, DWORD flags);
