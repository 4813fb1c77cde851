// SPDX-License-Identifier: MIT
#include "VelmBase/Module.h"

#include <windows.h>

void* ModuleAt(const void* address) {
    if (!address) return nullptr; // which would mean the program
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(address), &module);
    return module;
}

std::wstring ModulePath(void* module) {
    if (!module) return {}; // which would mean the program
    constexpr std::size_t kLongestPath = 32768;
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(static_cast<HMODULE>(module), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        if (path.size() >= kLongestPath) return {};
        path.resize(path.size() * 2);
    }
}
