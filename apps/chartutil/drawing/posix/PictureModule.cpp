#include "apps/chartutil/drawing/PictureModule.h"

#include <dlfcn.h>
#include <filesystem>

namespace fs = std::filesystem;

RenderPictureFunction* LoadPictureModule(std::string& whyNot) {
    // From where the program lies, so that a package can be moved.
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    const std::string module = (folder / PICTURE_MODULE).lexically_normal().string();
    if (!fs::exists(module, error)) {
        whyNot =
            "has no " + module + " (a build makes it where the Debian package qt6-base-dev is installed)";
        return nullptr;
    }
    void* const handle = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const render = handle ? dlsym(handle, kRenderPictureName) : nullptr;
    if (!render)
        whyNot = "cannot load " + module + " (" + dlerror() + "; it needs the Debian package libqt6gui6)";
    return reinterpret_cast<RenderPictureFunction*>(render);
}
