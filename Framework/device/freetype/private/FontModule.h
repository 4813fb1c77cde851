// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The border to the module FrameworkFonts, which links fontconfig, FreeType and HarfBuzz. It is loaded for
// the first font, since these libraries would otherwise cost each program of the suite a millisecond of its
// start.

/// A weight above this asks for a bold face, and is one.
inline constexpr int kHeaviestRegular = 550;

/// What a text takes on its line.
struct TextAdvance {
    double units = 0; ///< font units, not negative
    std::size_t characters =
        0; ///< those that take room, which get a pixel more each when they are emboldened
};

/// A face with outlines. Any thread may call.
class Face {
public:
    Face() = default;
    virtual ~Face() = default;
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    /// All lengths in font units; heights and the em square are positive.
    virtual const OUTLINETEXTMETRICW& Metrics() const = 0;

    virtual TextAdvance Advance(std::wstring_view text) const = 0;
};

/// What was found for a family and style that were asked for.
struct Typeface {
    std::wstring family;              ///< another than was asked for where that is missing
    bool isEmboldened = false;        ///< bold was asked for, and the face is not
    bool isSlanted = false;           ///< italic was asked for, and the face is not
    std::shared_ptr<const Face> face; ///< null when there are no outlines
};

/// A style of an installed family.
struct ListedFont {
    std::wstring family;
    int weight = FW_NORMAL;
    bool isItalic = false;
    bool isMonospaced = false;
    bool hasOutlines = true;
};

/// What the module offers, under the name kFontModuleName.
struct FontModule {
    /// The version that it was built with. Stays the first field: it is compared before anything else is
    /// used.
    const char* version;

    /// Never null. Any thread may call.
    std::shared_ptr<const Typeface> (*find)(std::wstring_view family, bool isBold, bool isItalic);

    /// What is installed: by family without letter case, of one family upright ones first, of these the
    /// nearest to regular.
    std::vector<ListedFont> (*list)();
};
inline constexpr char kFontModuleName[] = "FrameworkFontsModule";

/// The module; without it, one that has no fonts.
const FontModule& Fonts();
