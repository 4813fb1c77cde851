#include "Framework/device/Gdi.h"

#include "Framework/device/freetype/Face.h"
#include "Framework/device/freetype/FontList.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

enum class Kind { BRUSH, PEN, FONT, COUNT };

struct Object {
    Kind kind;
    int height = 0;
    BYTE italic = 0;
    int weight = FW_NORMAL;
    std::shared_ptr<Face> face; // of a font with outlines
    double scale = 0;           // logical units for a font unit
};

struct Context {
    int mode = MM_TEXT;
    SIZE windowExtent{1, 1};
    SIZE viewportExtent{1, 1};
    HGDIOBJ selected[static_cast<int>(Kind::COUNT)] = {};
};

// What handles stand for. A number is given once, so that one that was deleted never stands for another.
class Handles {
public:
    template <typename T> static void* Add(std::map<void*, std::shared_ptr<T>>& table, std::shared_ptr<T> t) {
        static std::uintptr_t next = 0x1000;
        next += 4;
        void* const handle = reinterpret_cast<void*>(next);
        table.emplace(handle, std::move(t));
        return handle;
    }
    template <typename T>
    static std::shared_ptr<T> Find(const std::map<void*, std::shared_ptr<T>>& table, void* handle) {
        const auto found = table.find(handle);
        return found == table.end() ? nullptr : found->second;
    }
};

std::mutex guard;
std::map<void*, std::shared_ptr<Object>> objects;
std::map<void*, std::shared_ptr<Context>> contexts;

LONG Round(double value) {
    return static_cast<LONG>(std::clamp(std::round(value), -2147483648.0, 2147483647.0));
}

std::shared_ptr<Object> SelectedFont(HDC dc) {
    const std::lock_guard lock(guard);
    const auto context = Handles::Find(contexts, dc);
    return context ? Handles::Find(objects, context->selected[static_cast<int>(Kind::FONT)]) : nullptr;
}

} // namespace

HDC CreateDCW(const wchar_t* driver, const wchar_t*, const wchar_t*, const void*) {
    if (!driver || std::wstring_view(driver) != L"DISPLAY") return nullptr;
    auto context = std::make_shared<Context>();
    context->selected[static_cast<int>(Kind::BRUSH)] = GetStockObject(WHITE_BRUSH);
    context->selected[static_cast<int>(Kind::PEN)] = GetStockObject(BLACK_PEN);
    context->selected[static_cast<int>(Kind::FONT)] = GetStockObject(SYSTEM_FONT);
    const std::lock_guard lock(guard);
    return static_cast<HDC>(Handles::Add(contexts, std::move(context)));
}

BOOL DeleteDC(HDC dc) {
    const std::lock_guard lock(guard);
    return contexts.erase(dc) != 0;
}

int SetMapMode(HDC dc, int mode) {
    const std::lock_guard lock(guard);
    const auto context = Handles::Find(contexts, dc);
    if (!context || (mode != MM_TEXT && mode != MM_HIMETRIC && mode != MM_ISOTROPIC)) return 0;
    return std::exchange(context->mode, mode);
}

int GetMapMode(HDC dc) {
    const std::lock_guard lock(guard);
    const auto context = Handles::Find(contexts, dc);
    return context ? context->mode : 0;
}

BOOL SetWindowExtEx(HDC dc, int x, int y, SIZE* old) {
    const std::lock_guard lock(guard);
    const auto context = Handles::Find(contexts, dc);
    if (!context) return 0;
    if (old) *old = context->windowExtent;
    if (context->mode == MM_ISOTROPIC) context->windowExtent = {x, y};
    return 1;
}

BOOL SetViewportExtEx(HDC dc, int x, int y, SIZE* old) {
    const std::lock_guard lock(guard);
    const auto context = Handles::Find(contexts, dc);
    if (!context) return 0;
    if (old) *old = context->viewportExtent;
    if (context->mode == MM_ISOTROPIC) context->viewportExtent = {x, y};
    return 1;
}

int GetDeviceCaps(HDC, int index) {
    switch (index) {
    case HORZSIZE:
        return 508;
    case VERTSIZE:
        return 286;
    case HORZRES:
        return 1920;
    case VERTRES:
        return 1080;
    case LOGPIXELSX:
    case LOGPIXELSY:
        return 96;
    default:
        return 0;
    }
}

HFONT CreateFontW(int height, int, int, int, int weight, DWORD italic, DWORD, DWORD, DWORD, DWORD, DWORD,
                  DWORD, DWORD, const wchar_t* face) {
    auto font = std::make_shared<Object>();
    font->kind = Kind::FONT;
    font->height = height;
    font->face = FindFace(face ? face : L"", weight > 550, italic != 0);
    if (font->face) {
        const FaceMetrics& metrics = font->face->Metrics();
        font->scale = height < 0 ? -double(height) / metrics.unitsPerEm
                                 : double(height) / (metrics.winAscent + metrics.winDescent);
    }
    const std::lock_guard lock(guard);
    return static_cast<HFONT>(Handles::Add(objects, std::move(font)));
}

HGDIOBJ GetStockObject(int index) {
    static const auto stock = [] {
        std::map<int, HGDIOBJ> made;
        const std::lock_guard lock(guard);
        for (int i = WHITE_BRUSH; i <= DEFAULT_GUI_FONT; ++i) {
            auto object = std::make_shared<Object>();
            object->kind = i <= NULL_BRUSH ? Kind::BRUSH : i < 10 ? Kind::PEN : Kind::FONT;
            made[i] = Handles::Add(objects, std::move(object));
        }
        return made;
    }();
    const auto found = stock.find(index);
    return found == stock.end() ? nullptr : found->second;
}

BOOL DeleteObject(HGDIOBJ object) {
    const std::lock_guard lock(guard);
    return objects.erase(object) != 0;
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
    const std::lock_guard lock(guard);
    const auto context = Handles::Find(contexts, dc);
    const auto found = Handles::Find(objects, object);
    return context && found ? std::exchange(context->selected[static_cast<int>(found->kind)], object)
                            : nullptr;
}

UINT GetOutlineTextMetricsW(HDC dc, UINT size, OUTLINETEXTMETRICW* metrics) {
    const auto font = SelectedFont(dc);
    if (!font || !font->face) return 0;
    if (!metrics) return sizeof *metrics;
    const FaceMetrics& face = font->face->Metrics();
    OUTLINETEXTMETRICW all = {};
    all.otmSize = sizeof all;
    TEXTMETRICW& text = all.otmTextMetrics;
    text.tmHeight = Round((face.winAscent + face.winDescent) * font->scale);
    text.tmAscent = Round(face.winAscent * font->scale);
    text.tmDescent = text.tmHeight - text.tmAscent;
    text.tmInternalLeading = text.tmHeight - Round(face.unitsPerEm * font->scale);
    text.tmExternalLeading = Round(face.externalLeading * font->scale);
    all.otmEMSquare = static_cast<UINT>(face.unitsPerEm);
    all.otmAscent = Round(face.typoAscent * font->scale);
    all.otmDescent = Round(face.typoDescent * font->scale);
    all.otmLineGap = static_cast<UINT>(Round(face.typoLineGap * font->scale));
    const auto written = std::min<std::size_t>(size, sizeof all);
    std::copy_n(reinterpret_cast<const std::byte*>(&all), written, reinterpret_cast<std::byte*>(metrics));
    return static_cast<UINT>(written);
}

BOOL GetTextExtentPoint32W(HDC dc, const wchar_t* text, int length, SIZE* extent) {
    const auto font = SelectedFont(dc);
    if (!font || !font->face || !text || length < 0 || !extent) return 0;
    const FaceMetrics& face = font->face->Metrics();
    extent->cx = Round(font->face->Advance({text, static_cast<std::size_t>(length)}) * font->scale);
    extent->cy = Round((face.winAscent + face.winDescent) * font->scale);
    return 1;
}

int GetTextFaceW(HDC dc, int count, wchar_t* face) {
    const auto font = SelectedFont(dc);
    if (!font || !font->face) return 0;
    const std::wstring family = FromUtf8(font->face->Family());
    if (!face) return static_cast<int>(family.size()) + 1;
    if (count <= 0) return 0;
    const auto copied = family.copy(face, static_cast<std::size_t>(count) - 1);
    face[copied] = 0;
    return static_cast<int>(copied) + 1;
}

int EnumFontFamiliesExW(HDC dc, const LOGFONTW* wanted, FONTENUMPROCW callback, LPARAM parameter, DWORD) {
    {
        const std::lock_guard lock(guard);
        if (!Handles::Find(contexts, dc) || !callback) return 0;
    }
    std::wstring_view name;
    if (wanted) {
        name = {wanted->lfFaceName, LF_FACESIZE};
        name = name.substr(0, name.find(L'\0'));
    }
    std::vector<ListedFont> fonts = ListFonts();
    if (name.empty())
        fonts.erase(
            std::unique(fonts.begin(), fonts.end(),
                        [](const ListedFont& a, const ListedFont& b) { return a.family == b.family; }),
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
