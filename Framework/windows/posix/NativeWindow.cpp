// SPDX-License-Identifier: MIT
#include "Framework/windows/private/NativeWindow.h"

#include "Framework/system/posix/LoadModule.h"
#include "Framework/windows/private/NativeControls.h"
#include "Framework/windows/private/WindowModule.h"
#include "VelmBase/WideString.h"

#include <climits>
#include <mutex>
#include <string_view>

namespace {

// The folder that this library was loaded from, so that a package can be moved. Its name may have been given
// in relation to the folder that was the current one at that time, which only the loader remembers.
std::filesystem::path LibraryFolder() {
    Dl_info library;
    if (dladdr(reinterpret_cast<const void*>(&MakeNativeWindow), &library) == 0) return {};
    char folder[PATH_MAX] = "";
    if (void* const handle = dlopen(library.dli_fname, RTLD_NOW | RTLD_NOLOAD)) {
        dlinfo(handle, RTLD_DI_ORIGIN, folder);
        dlclose(handle);
    }
    return folder;
}

const WindowModule* LoadWindowModule(std::string& whyNot) {
    const std::filesystem::path path = LibraryFolder() / "utilitydll/FrameworkWindows.so";
    const auto* const module = static_cast<const WindowModule*>(
        LoadModule(path, kWindowModuleName, {"utilitydll-gui", "libqt6widgets6", "qt6-base-dev"}, whyNot));
    if (!module || module->version == std::string_view(FRAMEWORK_VERSION)) return module;
    whyNot = "cannot use " + path.string() + ", which has the version " + module->version +
             " and not this library's, " FRAMEWORK_VERSION;
    return nullptr;
}

// Null when it cannot be used.
const WindowModule* Module(ErrorString& whyNot) {
    static std::mutex guard;
    static const WindowModule* module =
        nullptr; // a failure is not kept: a package may be installed meanwhile
    const std::lock_guard lock(guard);
    std::string reason;
    if (!module) module = LoadWindowModule(reason);
    if (!module) whyNot = L"Windows cannot be made: this program " + FromUtf8(reason);
    return module;
}

} // namespace

ErrorString MakeNativeWindow(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
    ErrorString whyNot;
    const WindowModule* const module = Module(whyNot);
    return module ? module->makeWindow(owner, window) : whyNot;
}

ErrorString OpenToolkit(NativeToolkit*& toolkit) {
    ErrorString whyNot;
    if (const WindowModule* const module = Module(whyNot))
        toolkit = &module->toolkit({&OpenPaintTarget, &DeleteDC});
    return whyNot;
}
