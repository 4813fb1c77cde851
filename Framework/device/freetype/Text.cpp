// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/private/DeviceContext.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>

namespace {

// The cell of a font whose height was left to the system, in pixels.
constexpr double kDefaultHeight = 16;

template <typename Integer> Integer Rounded(double value) {
    using Limits = std::numeric_limits<Integer>;
    const double rounded = std::round(value);
    if (!(rounded > double(Limits::min()))) return Limits::min();
    return rounded < double(Limits::max()) ? static_cast<Integer>(rounded) : Limits::max();
}

// Turns font units into a context's logical units.
class Scale {
public:
    Scale(const Font& font, const OUTLINETEXTMETRICW& face, PixelSize pixel)
        : m_pixel(font.typeface->isEmboldened ? pixel.x : 0) {
        m_y = font.height < 0
                  ? -double(font.height) / face.otmEMSquare
                  : (font.height > 0 ? font.height : kDefaultHeight * pixel.y) / face.otmTextMetrics.tmHeight;
        m_x = font.width != 0 && face.otmTextMetrics.tmAveCharWidth > 0
                  ? std::abs(double(font.width)) / face.otmTextMetrics.tmAveCharWidth
                  : m_y;
    }

    LONG X(double units) const { return Rounded<LONG>(units * m_x); }
    LONG Y(double units) const { return Rounded<LONG>(units * m_y); }
    UINT Unsigned(UINT units) const { return Rounded<UINT>(units * m_y); }
    POINT Of(POINT point) const { return {X(point.x), Y(point.y)}; }

    /// What characters take that get a pixel more when they are emboldened.
    LONG Width(double units, std::size_t characters) const {
        return Rounded<LONG>(units * m_x + double(characters) * m_pixel);
    }

private:
    double m_x;
    double m_y;
    double m_pixel;
};

TEXTMETRICW Scaled(const TEXTMETRICW& face, const Font& font, const Scale& scale) {
    TEXTMETRICW text = face;
    text.tmHeight = scale.Y(face.tmHeight);
    text.tmAscent = scale.Y(face.tmAscent);
    text.tmDescent = text.tmHeight - text.tmAscent;
    text.tmInternalLeading = scale.Y(face.tmInternalLeading);
    text.tmExternalLeading = scale.Y(face.tmExternalLeading);
    text.tmAveCharWidth = scale.Width(face.tmAveCharWidth, 1);
    text.tmMaxCharWidth = scale.Width(face.tmMaxCharWidth, 1);
    if (font.typeface->isEmboldened) text.tmWeight = FW_BOLD;
    if (font.typeface->isSlanted) text.tmItalic = 255;
    text.tmUnderlined = font.isUnderlined ? 255 : 0;
    text.tmStruckOut = font.isStruckOut ? 255 : 0;
    return text;
}

OUTLINETEXTMETRICW Scaled(const OUTLINETEXTMETRICW& face, const Font& font, const Scale& scale) {
    OUTLINETEXTMETRICW all = face;
    all.otmSize = sizeof all;
    all.otmTextMetrics = Scaled(face.otmTextMetrics, font, scale);
    constexpr UINT kItalic = 0x01;
    constexpr UINT kBold = 0x20;
    if (font.typeface->isSlanted) all.otmfsSelection |= kItalic;
    if (font.typeface->isEmboldened) all.otmfsSelection |= kBold;
    for (const auto length :
         {&OUTLINETEXTMETRICW::otmAscent, &OUTLINETEXTMETRICW::otmDescent, &OUTLINETEXTMETRICW::otmMacAscent,
          &OUTLINETEXTMETRICW::otmMacDescent, &OUTLINETEXTMETRICW::otmsStrikeoutPosition,
          &OUTLINETEXTMETRICW::otmsUnderscoreSize, &OUTLINETEXTMETRICW::otmsUnderscorePosition})
        all.*length = scale.Y(face.*length);
    for (const auto length : {&OUTLINETEXTMETRICW::otmLineGap, &OUTLINETEXTMETRICW::otmsCapEmHeight,
                              &OUTLINETEXTMETRICW::otmsXHeight, &OUTLINETEXTMETRICW::otmMacLineGap,
                              &OUTLINETEXTMETRICW::otmsStrikeoutSize})
        all.*length = scale.Unsigned(face.*length);
    for (const auto point :
         {&OUTLINETEXTMETRICW::otmptSubscriptSize, &OUTLINETEXTMETRICW::otmptSubscriptOffset,
          &OUTLINETEXTMETRICW::otmptSuperscriptSize, &OUTLINETEXTMETRICW::otmptSuperscriptOffset})
        all.*point = scale.Of(face.*point);
    const RECT& box = face.otmrcFontBox;
    all.otmrcFontBox = {scale.X(box.left), scale.Y(box.top), scale.X(box.right), scale.Y(box.bottom)};
    return all;
}

} // namespace

HFONT CreateFontW(int height, int width, int, int, int weight, DWORD italic, DWORD underline, DWORD strikeOut,
                  DWORD, DWORD, DWORD, DWORD, DWORD, const wchar_t* face) {
    auto font = std::make_shared<Font>();
    font->height = height;
    font->width = width;
    font->isUnderlined = underline != 0;
    font->isStruckOut = strikeOut != 0;
    font->typeface = Fonts().find(face ? face : L"", weight > kHeaviestRegular, italic != 0);
    DeviceObject object;
    object.kind = ObjectKind::FONT;
    object.font = std::move(font);
    return static_cast<HFONT>(DeviceObjects().Add(std::move(object)));
}

UINT GetOutlineTextMetricsW(HDC dc, UINT size, OUTLINETEXTMETRICW* metrics) {
    PixelSize pixel = {};
    const std::shared_ptr<const Font> font = SelectedFont(dc, pixel);
    if (!font || !font->typeface->face) return 0;
    if (!metrics) return sizeof *metrics;
    const OUTLINETEXTMETRICW& face = font->typeface->face->Metrics();
    const OUTLINETEXTMETRICW all = Scaled(face, *font, Scale(*font, face, pixel));
    const auto written = std::min<std::size_t>(size, sizeof all);
    std::copy_n(reinterpret_cast<const std::byte*>(&all), written, reinterpret_cast<std::byte*>(metrics));
    return static_cast<UINT>(written);
}

BOOL GetTextExtentPoint32W(HDC dc, const wchar_t* text, int length, SIZE* extent) {
    PixelSize pixel = {};
    const std::shared_ptr<const Font> font = SelectedFont(dc, pixel);
    if (!font || length < 0 || (!text && length > 0) || !extent) return 0;
    const PaintTarget* const target = TargetOf(dc);
    if (!font->typeface->face && !target) return 0;
    *extent = {};
    if (length == 0) return 1;
    if (target) { // which writes in no other font either
        *extent = target->Extent({text, static_cast<std::size_t>(length)});
        return 1;
    }
    const Face& face = *font->typeface->face;
    const Scale scale(*font, face.Metrics(), pixel);
    const TextAdvance advance = face.Advance({text, static_cast<std::size_t>(length)});
    extent->cx = scale.Width(advance.units, advance.characters);
    extent->cy = scale.Y(face.Metrics().otmTextMetrics.tmHeight);
    return 1;
}

int GetTextFaceW(HDC dc, int count, wchar_t* face) {
    PixelSize pixel = {};
    const std::shared_ptr<const Font> font = SelectedFont(dc, pixel);
    if (!font || font->typeface->family.empty()) return 0;
    const std::wstring& family = font->typeface->family;
    if (!face) return static_cast<int>(family.size()) + 1;
    if (count <= 0) return 0;
    const auto copied = family.copy(face, static_cast<std::size_t>(count) - 1);
    face[copied] = 0;
    return static_cast<int>(copied) + 1;
}

int EnumFontFamiliesExW(HDC dc, const LOGFONTW* wanted, FONTENUMPROCW callback, LPARAM parameter, DWORD) {
    if (GetMapMode(dc) == 0 || !callback) return 0;
    std::wstring_view name;
    if (wanted) {
        name = {wanted->lfFaceName, LF_FACESIZE};
        name = name.substr(0, name.find(L'\0'));
    }
    std::vector<ListedFont> fonts = Fonts().list();
    if (name.empty())
        fonts.erase(std::unique(fonts.begin(), fonts.end(),
                                [](const auto& a, const auto& b) { return a.family == b.family; }),
                    fonts.end());
    else
        std::erase_if(fonts, [&](const ListedFont& font) {
            return !icompareW(std::wstring_view(font.family).substr(0, LF_FACESIZE - 1), name);
        });
    int result = 1;
    for (const ListedFont& font : fonts) {
        LOGFONTW logical = {};
        logical.lfWeight = font.weight;
        logical.lfItalic = font.isItalic ? 255 : 0;
        logical.lfPitchAndFamily = font.isMonospaced ? FIXED_PITCH : VARIABLE_PITCH;
        font.family.copy(logical.lfFaceName, LF_FACESIZE - 1);
        TEXTMETRICW metrics = {};
        metrics.tmWeight = logical.lfWeight;
        metrics.tmItalic = logical.lfItalic;
        metrics.tmPitchAndFamily = static_cast<BYTE>((font.isMonospaced ? 0 : TMPF_FIXED_PITCH) |
                                                     (font.hasOutlines ? TMPF_VECTOR | TMPF_TRUETYPE : 0));
        result =
            callback(&logical, &metrics, font.hasOutlines ? TRUETYPE_FONTTYPE : RASTER_FONTTYPE, parameter);
        if (result == 0) break;
    }
    return result;
}
