// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/private/FontModule.h"

#include "VelmBase/Module.h"
#include "VelmBase/WideString.h"

#include <dlfcn.h>

namespace {

std::shared_ptr<const Typeface> FindNone(std::wstring_view, bool, bool) {
    return std::make_shared<Typeface>();
}
std::vector<ListedFont> ListNone() { return {}; }

const FontModule kNoFonts = {FRAMEWORK_VERSION, &FindNone, &ListNone};

// It lies in the folder utilitydll beside this library, so that a package can be moved.
const FontModule& Load() {
    std::wstring path = ModulePath(ModuleAt(&kNoFonts));
    path.resize(path.rfind(L'/') + 1);
    path += L"utilitydll/FrameworkFonts.so";
    void* const library = dlopen(ToUtf8(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    const auto* const module =
        library ? static_cast<const FontModule*>(dlsym(library, kFontModuleName)) : nullptr;
    return module && std::string_view(module->version) == FRAMEWORK_VERSION ? *module : kNoFonts;
}

} // namespace

const FontModule& Fonts() {
    static const FontModule& module = Load();
    return module;
}
