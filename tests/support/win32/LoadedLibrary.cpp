#include "tests/support/LoadedLibrary.h"

#include "VelmBase/WideString.h"

#include <windows.h>

LoadedLibrary::LoadedLibrary(const std::string& path) : m_handle(LoadLibraryW(FromUtf8(path).c_str())) {}

LoadedLibrary::~LoadedLibrary() {
    if (m_handle) FreeLibrary(static_cast<HMODULE>(m_handle));
}

void* LoadedLibrary::Function(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(m_handle), name));
}
