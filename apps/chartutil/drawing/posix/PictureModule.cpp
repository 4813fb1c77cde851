#include "apps/chartutil/drawing/PictureModule.h"

#include "Framework/system/posix/LoadModule.h"

namespace fs = std::filesystem;

RenderPictureFunction* LoadPictureModule(std::string& whyNot) {
    // From where the program lies, so that a package can be moved.
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    void* const render =
        LoadModule((folder / PICTURE_MODULE).lexically_normal(), kRenderPictureName, "libqt6gui6", whyNot);
    return reinterpret_cast<RenderPictureFunction*>(render);
}
