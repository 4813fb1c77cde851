// SPDX-License-Identifier: MIT
#include "VelmBase/Module.h"

#include "VelmBase/WideString.h"

#include <cstdlib>
#include <dlfcn.h>
#include <memory>

void* ModuleAt(const void* address) {
    Dl_info library;
    return dladdr(address, &library) != 0 ? library.dli_fbase : nullptr;
}

std::wstring ModulePath(void* module) {
    Dl_info library;
    if (!module || dladdr(module, &library) == 0) return {};
    // A search path may be relative, and the current folder changes.
    const std::unique_ptr<char, void (*)(void*)> full(
        library.dli_fname[0] == '/' ? nullptr : realpath(library.dli_fname, nullptr), &std::free);
    return FromUtf8(full ? full.get() : library.dli_fname);
}
