// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/private/DeviceContext.h"

#include "VelmBase/WideString.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

namespace {

constexpr SIZE kMillimetres = {508, 286};
constexpr SIZE kPixels = {1920, 1080};
constexpr double kPixelsPerInch = 96;

// Logical units an inch, by mode. MM_ISOTROPIC and MM_ANISOTROPIC begin as MM_LOMETRIC.
constexpr double kUnitsPerInch[] = {0, kPixelsPerInch, 254, 2540, 100, 1000, 1440, 254, 254};

bool HasFreeExtents(int mode) { return mode == MM_ISOTROPIC || mode == MM_ANISOTROPIC; }

void SetMode(DeviceContext& context, int mode) {
    context.mode = mode;
    if (mode == MM_TEXT) {
        context.windowExtent = context.viewportExtent = {1, 1};
        return;
    }
    const double unitsPerMillimetre = kUnitsPerInch[mode] / 25.4;
    context.windowExtent = {static_cast<LONG>(std::lround(kMillimetres.cx * unitsPerMillimetre)),
                            static_cast<LONG>(std::lround(kMillimetres.cy * unitsPerMillimetre))};
    context.viewportExtent = {kPixels.cx, -kPixels.cy};
}

// One unit is the same length in both directions: of the viewport the direction that would stretch is cut.
void MakeIsotropic(DeviceContext& context) {
    const SIZE& window = context.windowExtent;
    SIZE& viewport = context.viewportExtent;
    const double x = std::abs(double(kMillimetres.cx) / kPixels.cx * viewport.cx / window.cx);
    const double y = std::abs(double(kMillimetres.cy) / kPixels.cy * viewport.cy / window.cy);
    const auto cut = [](LONG& extent, double ratio) {
        const auto less = static_cast<LONG>(std::floor(extent * ratio + 0.5));
        extent = less != 0 ? less : extent < 0 ? -1 : 1;
    };
    if (x > y)
        cut(viewport.cx, y / x);
    else if (y > x)
        cut(viewport.cy, x / y);
}

BOOL SetExtent(HDC dc, SIZE DeviceContext::*which, int x, int y, SIZE* old) {
    bool isTaken = true;
    const bool found = DeviceContexts().Access(dc, [&](DeviceContext& context) {
        if (old) *old = context.*which;
        if (!HasFreeExtents(context.mode)) return;
        isTaken = x != 0 && y != 0;
        if (!isTaken) return;
        context.*which = {x, y};
        if (context.mode == MM_ISOTROPIC) MakeIsotropic(context);
    });
    return found && isTaken;
}

ObjectKind KindOfStock(int index) {
    if (index <= NULL_BRUSH || index == DC_BRUSH) return ObjectKind::BRUSH;
    if (index <= NULL_PEN || index == DC_PEN) return ObjectKind::PEN;
    return ObjectKind::FONT;
}

// Their handles have a tag of their own, and their index for a number.
constexpr std::uintptr_t kStockTag = 2;
using StockObjects = std::array<std::optional<DeviceObject>, DC_PEN + 1>;

const StockObjects& AllStockObjects() {
    static const auto& objects = *[] {
        auto typeface = std::make_shared<Typeface>();
        typeface->family = L"System";
        auto font = std::make_shared<Font>();
        font->typeface = std::move(typeface);
        auto* const made = new StockObjects; // never destroyed, as the tables
        for (int i = 0; i <= DC_PEN; ++i) {
            if (i == NULL_PEN + 1 || i == DEFAULT_PALETTE) continue;
            DeviceObject& object = (*made)[static_cast<std::size_t>(i)].emplace();
            object.kind = KindOfStock(i);
            if (object.kind == ObjectKind::FONT) object.font = font;
        }
        return made;
    }();
    return objects;
}

bool GoesWithoutSelection(const DeviceObject& object) { return object.isDeleted && object.selections == 0; }

void Deselect(HGDIOBJ handle) {
    if (StockObject(handle)) return;
    DeviceObjects().Remove(handle, [](DeviceObject& object) {
        --object.selections;
        return GoesWithoutSelection(object);
    });
}

} // namespace

const DeviceObject* StockObject(HGDIOBJ handle) {
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    const std::uintptr_t index = number >> 2;
    if ((number & 3) != kStockTag || index > DC_PEN) return nullptr;
    const std::optional<DeviceObject>& object = AllStockObjects()[index];
    return object ? &*object : nullptr;
}

HandleTable<DeviceObject>& DeviceObjects() {
    static auto& table = *new HandleTable<DeviceObject>(0);
    return table;
}

HandleTable<DeviceContext>& DeviceContexts() {
    static auto& table = *new HandleTable<DeviceContext>(1);
    return table;
}

PixelSize SizeOfPixel(const DeviceContext& context) {
    const SIZE& window = context.windowExtent;
    const SIZE& viewport = context.viewportExtent;
    if (HasFreeExtents(context.mode))
        return {std::abs(double(window.cx) / viewport.cx), std::abs(double(window.cy) / viewport.cy)};
    const double size = kUnitsPerInch[context.mode] / kPixelsPerInch;
    return {size, size};
}

std::shared_ptr<const Font> SelectedFont(HDC dc, PixelSize& pixel) {
    std::shared_ptr<const Font> font;
    DeviceContexts().Access(dc, [&](const DeviceContext& context) {
        font = context.font;
        pixel = SizeOfPixel(context);
    });
    return font;
}

HDC CreateDCW(const wchar_t* driver, const wchar_t*, const wchar_t*, const void*) {
    if (!driver || !icompareW(driver, L"DISPLAY")) return nullptr;
    DeviceContext context;
    context.selected[static_cast<int>(ObjectKind::BRUSH)] = GetStockObject(WHITE_BRUSH);
    context.selected[static_cast<int>(ObjectKind::PEN)] = GetStockObject(BLACK_PEN);
    const HGDIOBJ font = GetStockObject(SYSTEM_FONT);
    context.selected[static_cast<int>(ObjectKind::FONT)] = font;
    context.font = StockObject(font)->font;
    return static_cast<HDC>(DeviceContexts().Add(std::move(context)));
}

BOOL DeleteDC(HDC dc) {
    return DeviceContexts().Remove(dc, [](const DeviceContext& context) {
        for (const HGDIOBJ object : context.selected) Deselect(object);
        return true;
    });
}

int SetMapMode(HDC dc, int mode) {
    int old = 0;
    if (mode < MM_TEXT || mode > MM_ANISOTROPIC) return old;
    DeviceContexts().Access(dc, [&](DeviceContext& context) {
        old = context.mode;
        if (mode != old) SetMode(context, mode);
    });
    return old;
}

int GetMapMode(HDC dc) {
    int mode = 0;
    DeviceContexts().Access(dc, [&](const DeviceContext& context) { mode = context.mode; });
    return mode;
}

BOOL SetWindowExtEx(HDC dc, int x, int y, SIZE* old) {
    return SetExtent(dc, &DeviceContext::windowExtent, x, y, old);
}

BOOL SetViewportExtEx(HDC dc, int x, int y, SIZE* old) {
    return SetExtent(dc, &DeviceContext::viewportExtent, x, y, old);
}

int GetDeviceCaps(HDC dc, int index) {
    if (GetMapMode(dc) == 0) return 0;
    switch (index) {
    case HORZSIZE:
        return kMillimetres.cx;
    case VERTSIZE:
        return kMillimetres.cy;
    case HORZRES:
        return kPixels.cx;
    case VERTRES:
        return kPixels.cy;
    case LOGPIXELSX:
    case LOGPIXELSY:
        return static_cast<int>(kPixelsPerInch);
    default:
        return 0;
    }
}

HGDIOBJ GetStockObject(int index) {
    const std::uintptr_t number = std::uintptr_t{static_cast<unsigned>(index)} << 2 | kStockTag;
    const auto handle = reinterpret_cast<HGDIOBJ>(number); // NOLINT(performance-no-int-to-ptr): no address
    return StockObject(handle) ? handle : nullptr;
}

DWORD GetObjectType(HGDIOBJ object) {
    constexpr DWORD types[] = {OBJ_BRUSH, OBJ_PEN, OBJ_FONT};
    static_assert(std::size(types) == static_cast<std::size_t>(ObjectKind::COUNT));
    if (const DeviceObject* const stock = StockObject(object)) return types[static_cast<int>(stock->kind)];
    DWORD type = 0;
    if (DeviceObjects().Access(
            object, [&](const DeviceObject& found) { type = types[static_cast<int>(found.kind)]; }))
        return type;
    return GetMapMode(static_cast<HDC>(object)) == 0 ? 0 : OBJ_DC;
}

BOOL DeleteObject(HGDIOBJ handle) {
    if (StockObject(handle)) return 1;
    bool isTaken = false;
    DeviceObjects().Remove(handle, [&](DeviceObject& object) {
        isTaken = object.isDeleted = true;
        return GoesWithoutSelection(object);
    });
    return isTaken || DeleteDC(static_cast<HDC>(handle));
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ handle) {
    HGDIOBJ old = nullptr;
    DeviceContexts().Access(dc, [&](DeviceContext& context) {
        ObjectKind kind = {};
        std::shared_ptr<const Font> font;
        const auto take = [&](const DeviceObject& object) {
            kind = object.kind;
            font = object.font;
        };
        const DeviceObject* const stock = StockObject(handle);
        if (stock) take(*stock);
        const auto select = [&](DeviceObject& object) {
            ++object.selections;
            take(object);
        };
        if (!stock && !DeviceObjects().Access(handle, select)) return;
        old = std::exchange(context.selected[static_cast<int>(kind)], handle);
        if (kind == ObjectKind::FONT) context.font.swap(font);
        Deselect(old);
    });
    return old;
}
