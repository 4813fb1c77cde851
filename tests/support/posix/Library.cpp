// SPDX-License-Identifier: MIT
#include "tests/support/Library.h"

#include <dlfcn.h>

void* LoadSharedLibrary(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }

void* FunctionOf(void* library, const char* name) { return dlsym(library, name); }

void UnloadSharedLibrary(void* library) { dlclose(library); }

bool IsLoaded(const char* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (library) dlclose(library);
    return library != nullptr;
}
