// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/TodaysLook.h"

#include "VelmBase/Module.h"
#include "VelmBase/UntilUnloaded.h"

#include <iterator>

namespace {

// The library's own manifest is its resource of this number.
constexpr WORD kManifest = 2;

struct Context {
    HANDLE handle;

    Context() {
        ACTCTXW description = {};
        description.cbSize = sizeof description;
        description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        description.hModule = ThisLibrary();
        description.lpResourceName = MAKEINTRESOURCEW(kManifest);
        // The system reads its resource by the file's name.
        wchar_t path[32768];
        GetModuleFileNameW(description.hModule, path, static_cast<DWORD>(std::size(path)));
        description.lpSource = path;
        handle = CreateActCtxW(&description);
    }
    ~Context() {
        if (handle != INVALID_HANDLE_VALUE) ReleaseActCtx(handle);
    }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
};

} // namespace

HINSTANCE ThisLibrary() {
    return static_cast<HINSTANCE>(ModuleAt(reinterpret_cast<const void*>(&ThisLibrary)));
}

TodaysLook::TodaysLook() {
    static UntilUnloaded<Context> context;
    m_isActive = context->handle != INVALID_HANDLE_VALUE && ActivateActCtx(context->handle, &m_cookie);
}

TodaysLook::~TodaysLook() {
    if (m_isActive) DeactivateActCtx(0, m_cookie);
}
