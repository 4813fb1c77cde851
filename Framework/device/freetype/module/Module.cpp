// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/module/private/FaceStore.h"
#include "Framework/device/freetype/private/FontModule.h"

namespace {

std::shared_ptr<const Typeface> Find(std::wstring_view family, bool isBold, bool isItalic) {
    return FaceStore::Get().Find(family, isBold, isItalic);
}

} // namespace

// Under the name kFontModuleName.
extern "C" __attribute__((visibility("default"))) const FontModule FrameworkFontsModule;
const FontModule FrameworkFontsModule = {FRAMEWORK_VERSION, &Find, &ListInstalled};
