// SPDX-License-Identifier: MIT
#pragma once

#include <dlfcn.h>
#include <filesystem>
#include <string>

/// The Debian packages that a module is in, and that it needs: to run, and to be built.
struct ModulePackages {
    const char* own;
    const char* run;
    const char* build;
};

/// Loads a module, which stays loaded, and returns what it exports under `name`. Null when that cannot be
/// done; `whyNot` then continues "this program": what it lacks, and which Debian package has it.
inline void* LoadModule(const std::filesystem::path& module, const char* name, const ModulePackages& packages,
                        std::string& whyNot) {
    std::error_code error;
    if (!std::filesystem::exists(module, error)) {
        whyNot = "has no " + module.string() + " (the Debian package " + packages.own +
                 " has it; a build makes it where " + packages.build + " is installed)";
        return nullptr;
    }
    void* const handle = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = handle ? dlsym(handle, name) : nullptr;
    if (!symbol)
        whyNot = "cannot load " + module.string() + " (" + dlerror() + "; it needs the Debian package " +
                 packages.run + ")";
    return symbol;
}
