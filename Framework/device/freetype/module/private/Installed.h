// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/freetype/module/private/FaceFile.h"
#include "Framework/device/freetype/private/FontModule.h"

#include <fontconfig/fontconfig.h>
#include <memory>

// What fontconfig knows of the fonts that are installed. The user's language does not count: the same fonts
// are found under any. Any thread may call.

/// A font that was found for a family and style.
struct InstalledFont {
    std::wstring family;
    FaceFile file;
    int weight = FW_NORMAL;
    bool isItalic = false;
    bool hasOutlines = false;
};

/// The best font for a family and style. Letter case and blanks of the name do not count. A name of
/// LF_FACESIZE or more characters that is no family stands for its first LF_FACESIZE - 1, and these for a
/// family that begins with them. A font without outlines is found only when its family has no other, or
/// nothing has. Nothing at all is found where no font is installed.
InstalledFont FindInstalled(std::wstring_view family, bool isBold, bool isItalic);

std::vector<ListedFont> ListInstalled();

/// The fonts that help out where one lacks characters, in the order in which they are asked.
class InstalledFallbacks {
public:
    explicit InstalledFallbacks(const InstalledFont& font);

    /// The first with outlines that has the character. False when there is none.
    bool Find(char32_t character, InstalledFont& font) const;

private:
    std::unique_ptr<FcFontSet, void (*)(FcFontSet*)> m_fonts;
};
