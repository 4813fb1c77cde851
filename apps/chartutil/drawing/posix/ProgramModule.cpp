// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/posix/ProgramModule.h"

namespace fs = std::filesystem;

void* LoadProgramModule(const char* module, const char* name, const ModulePackages& packages,
                        std::string& whyNot) {
    // From where the program lies, so that a package can be moved.
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    return LoadModule((folder / MODULES_FROM_PROGRAM / module).lexically_normal(), name, packages, whyNot);
}
