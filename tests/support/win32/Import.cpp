// SPDX-License-Identifier: MIT
#include "tests/support/win32/Import.h"

#include <cstring>

#include <windows.h>

namespace {

template <typename T> T* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
}

// Where the library keeps the address of the system's function that it imports; null when it does not.
ULONG_PTR* ImportedFunction(HMODULE library, const char* name) {
    const auto* const headers = At<IMAGE_NT_HEADERS>(library, At<IMAGE_DOS_HEADER>(library, 0)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* dll = At<IMAGE_IMPORT_DESCRIPTOR>(library, imports.VirtualAddress); dll->Name; ++dll) {
        auto* address = At<IMAGE_THUNK_DATA>(library, dll->FirstThunk);
        for (auto* known = At<IMAGE_THUNK_DATA>(library, dll->OriginalFirstThunk); known->u1.AddressOfData;
             ++known, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(known->u1.Ordinal)) continue;
            const auto* const import =
                At<IMAGE_IMPORT_BY_NAME>(library, static_cast<DWORD>(known->u1.AddressOfData));
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), name) == 0)
                return &address->u1.Function;
        }
    }
    return nullptr;
}

} // namespace

ULONG_PTR ReplaceImport(const char* name, ULONG_PTR function, const wchar_t* library) {
    ULONG_PTR* const place = ImportedFunction(GetModuleHandleW(library), name);
    if (!place) return 0;
    DWORD protection;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection);
    const ULONG_PTR before = *place;
    *place = function;
    VirtualProtect(place, sizeof *place, protection, &protection);
    return before;
}
