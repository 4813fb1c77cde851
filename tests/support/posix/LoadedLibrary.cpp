#include "tests/support/LoadedLibrary.h"

#include <dlfcn.h>

LoadedLibrary::LoadedLibrary(const std::string& path)
    : m_handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {}

LoadedLibrary::~LoadedLibrary() {
    if (m_handle) dlclose(m_handle);
}

void* LoadedLibrary::Function(const char* name) const { return dlsym(m_handle, name); }
