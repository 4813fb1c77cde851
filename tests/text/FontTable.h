// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/DC.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// What this platform measures of fonts and texts. The same source makes the rows on both: FontTable prints
/// them, and FontTableTest compares what was printed on Linux with what Windows measures.
namespace FONT_TABLE {

/// Lengths in 0.01 mm; those of the rectangle in the unit of the size, which is 10 mm.
struct Measured {
    OUTLINETEXTMETRICW font = {};
    CSize extent;
    float factor = 0;
    TextRectComp::Rectangle rectangle;
    double lineHeight = 0;
};

/// Unsigned lengths come as negative ones from Wine where y goes up: what counts is the magnitude.
template <auto... Members> double OfFont(const Measured& measured) {
    const auto value = (measured.font.*....*Members);
    return std::is_unsigned_v<decltype(value)> ? std::abs(static_cast<int>(value)) : static_cast<int>(value);
}

template <auto Member> double OfCell(const Measured& measured) {
    return OfFont<&OUTLINETEXTMETRICW::otmTextMetrics, Member>(measured);
}

enum class Kind {
    SAME,    ///< no length: the same on both
    LENGTH,  ///< a length of the font
    HEIGHT,  ///< the font's ascent and descent together
    EXTENT,  ///< the width of the text
    DERIVED, ///< what TextHeightFactComp and TextRectComp make of these
};

struct Column {
    const char* name;
    Kind kind;
    double (*value)(const Measured& measured);
};

inline const std::vector<Column>& Columns() {
    using Cell = TEXTMETRICW;
    using Outline = OUTLINETEXTMETRICW;
    static const std::vector<Column> columns = {
        {"height", Kind::HEIGHT, OfCell<&Cell::tmHeight>},
        {"ascent", Kind::LENGTH, OfCell<&Cell::tmAscent>},
        {"descent", Kind::LENGTH, OfCell<&Cell::tmDescent>},
        {"internal leading", Kind::LENGTH, OfCell<&Cell::tmInternalLeading>},
        {"external leading", Kind::LENGTH, OfCell<&Cell::tmExternalLeading>},
        {"average width", Kind::LENGTH, OfCell<&Cell::tmAveCharWidth>},
        {"greatest width", Kind::LENGTH, OfCell<&Cell::tmMaxCharWidth>},
        {"weight", Kind::SAME, OfCell<&Cell::tmWeight>},
        {"overhang", Kind::SAME, OfCell<&Cell::tmOverhang>},
        {"first character", Kind::SAME, OfCell<&Cell::tmFirstChar>},
        {"last character", Kind::SAME, OfCell<&Cell::tmLastChar>},
        {"default character", Kind::SAME, OfCell<&Cell::tmDefaultChar>},
        {"break character", Kind::SAME, OfCell<&Cell::tmBreakChar>},
        {"italic", Kind::SAME, OfCell<&Cell::tmItalic>},
        {"pitch and family", Kind::SAME, OfCell<&Cell::tmPitchAndFamily>},
        {"character set", Kind::SAME, OfCell<&Cell::tmCharSet>},
        {"selection", Kind::SAME, OfFont<&Outline::otmfsSelection>},
        {"permissions", Kind::SAME, OfFont<&Outline::otmfsType>},
        {"slope rise", Kind::SAME, OfFont<&Outline::otmsCharSlopeRise>},
        {"slope run", Kind::SAME, OfFont<&Outline::otmsCharSlopeRun>},
        {"em square", Kind::SAME, OfFont<&Outline::otmEMSquare>},
        {"outline ascent", Kind::LENGTH, OfFont<&Outline::otmAscent>},
        {"outline descent", Kind::LENGTH, OfFont<&Outline::otmDescent>},
        {"outline line gap", Kind::LENGTH, OfFont<&Outline::otmLineGap>},
        {"capital height", Kind::LENGTH, OfFont<&Outline::otmsCapEmHeight>},
        {"x height", Kind::LENGTH, OfFont<&Outline::otmsXHeight>},
        {"box left", Kind::LENGTH, OfFont<&Outline::otmrcFontBox, &RECT::left>},
        {"box top", Kind::LENGTH, OfFont<&Outline::otmrcFontBox, &RECT::top>},
        {"box right", Kind::LENGTH, OfFont<&Outline::otmrcFontBox, &RECT::right>},
        {"box bottom", Kind::LENGTH, OfFont<&Outline::otmrcFontBox, &RECT::bottom>},
        {"mac ascent", Kind::LENGTH, OfFont<&Outline::otmMacAscent>},
        {"mac descent", Kind::LENGTH, OfFont<&Outline::otmMacDescent>},
        {"mac line gap", Kind::LENGTH, OfFont<&Outline::otmMacLineGap>},
        {"subscript height", Kind::LENGTH, OfFont<&Outline::otmptSubscriptSize, &POINT::y>},
        {"subscript offset", Kind::LENGTH, OfFont<&Outline::otmptSubscriptOffset, &POINT::y>},
        {"superscript height", Kind::LENGTH, OfFont<&Outline::otmptSuperscriptSize, &POINT::y>},
        {"superscript offset", Kind::LENGTH, OfFont<&Outline::otmptSuperscriptOffset, &POINT::y>},
        {"strike-out size", Kind::LENGTH, OfFont<&Outline::otmsStrikeoutSize>},
        {"strike-out position", Kind::LENGTH, OfFont<&Outline::otmsStrikeoutPosition>},
        {"underscore size", Kind::LENGTH, OfFont<&Outline::otmsUnderscoreSize>},
        {"underscore position", Kind::LENGTH, OfFont<&Outline::otmsUnderscorePosition>},
        {"extent x", Kind::EXTENT, [](const Measured& m) { return double(m.extent.cx); }},
        {"extent y", Kind::HEIGHT, [](const Measured& m) { return double(m.extent.cy); }},
        {"factor", Kind::DERIVED, [](const Measured& m) { return double(m.factor); }},
        {"rectangle width", Kind::DERIVED, [](const Measured& m) { return m.rectangle.Width(); }},
        {"rectangle height", Kind::DERIVED, [](const Measured& m) { return m.rectangle.Height(); }},
        {"line height", Kind::DERIVED, [](const Measured& m) { return m.lineHeight; }},
    };
    return columns;
}

struct Text {
    const char* name;
    std::wstring text;
};

/// Texts that the face has itself and that need no shaping: for what it lacks each platform has its own way.
inline std::vector<Text> TextsOf(std::wstring_view face) {
    if (face == L"Droid Sans Fallback") return {{"Chinese", L"\u6C34\u6DF1\u56FE"}};
    return {
        {"digit", L"1"},
        {"letter", L"M"},
        {"label", L"Sounding 123.4"},
        {"kerned", L"AVATAR To"},
        {"Greek", L"\u0392\u03AC\u03B8\u03BF\u03C2"},
        {"Cyrillic", L"\u0413\u043B\u0443\u0431\u0438\u043D\u0430"},
        {"controls", L"a\tb\r\n\u0001"},
    };
}

/// A row, with what it is about; the face's name says the style as well.
struct Row {
    std::string face;
    int size = 0;
    Text text;
    Measured measured;

    std::string Name() const { return face + "," + std::to_string(size) + "," + text.name; }
};

/// Adds the rows of a face in a style: the font has a cell of the size, and is not the one that the
/// rectangle is measured with, which is higher. All are zero where the system takes another family.
inline void AddRows(std::vector<Row>& rows, const wchar_t* face, TextInfo::STYLE style, int size) {
    const bool isBold = (style & TextInfo::BOLD) != 0;
    const bool isItalic = (style & TextInfo::ITALIC) != 0;
    const std::string name = ToUtf8(face) + (isBold ? " bold" : "") + (isItalic ? " italic" : "");
    CDC device;
    device.CreateDCW(L"DISPLAY", nullptr, nullptr);
    device.SetMapMode(MM_HIMETRIC);
    CFont font;
    font.CreateFontW(size * 1000, 0, 0, 0, isBold ? FW_BOLD : FW_NORMAL, isItalic, false, false, 0,
                     OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY, 0, face);
    CGdiObject* const before = CDC::SelectGdiObject(device.m_hDC, font.m_hObject);
    const bool isThere = device.GetTextFaceW() == face;
    TextInfo info;
    info.SetFont(face);
    info.SetStyle(style);
    info.SetSize(static_cast<float>(size));
    for (const Text& text : TextsOf(face)) {
        Row row{name, size, text, {}};
        if (isThere) {
            device.GetOutlineTextMetricsW(sizeof row.measured.font, &row.measured.font);
            row.measured.extent = device.GetTextExtent(text.text);
            TextRectComp rectangle;
            row.measured.rectangle = rectangle(info, text.text);
            row.measured.lineHeight = rectangle.GetTextHeight();
            row.measured.factor = TextHeightFactComp::Get()(info);
        }
        rows.push_back(row);
    }
    if (before) CDC::SelectGdiObject(device.m_hDC, before->m_hObject);
}

/// Each face at every size from 1 to 100, and in the other styles at some.
inline std::vector<Row> Rows() {
    std::vector<Row> rows;
    for (const wchar_t* const face : {L"Liberation Sans", L"Liberation Serif", L"Liberation Mono",
                                      L"DejaVu Sans", L"DejaVu Sans Mono", L"Droid Sans Fallback"}) {
        for (int size = 1; size <= 100; ++size) AddRows(rows, face, TextInfo::REGULAR, size);
        for (const TextInfo::STYLE style :
             {TextInfo::BOLD, TextInfo::ITALIC, TextInfo::BOLD | TextInfo::ITALIC})
            for (const int size : {1, 2, 3, 5, 10, 20, 50, 100}) AddRows(rows, face, style, size);
    }
    return rows;
}

} // namespace FONT_TABLE
