// SPDX-License-Identifier: MIT
// A program that is not linked with the suite: LoadOften COUNT LIBRARY [KEPT] loads and unloads the library
// COUNT times, and calls its function Use() where it has one. It prints for each thing of the system how much
// the process has of it after the first ten times, and in the end. The library KEPT stays loaded all the
// while.

#include "tests/support/Library.h"
#include "tests/support/Resources.h"
#include "tests/support/win32/GuiResources.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <windows.h>

#include <psapi.h>

namespace {

[[noreturn]] void Fail(const char* fault) {
    std::fprintf(stderr, "%s, error %lu\n", fault, GetLastError());
    std::exit(1);
}

std::size_t NumModules() {
    DWORD bytes = 0;
    HMODULE first = nullptr;
    EnumProcessModules(GetCurrentProcess(), &first, sizeof first, &bytes);
    return bytes / sizeof first;
}

// In the framework's list, where that is loaded.
std::size_t NumExtensionModules() {
    using Function = std::vector<void*>();
    const HMODULE framework = GetModuleHandleW(L"Framework.dll");
    if (!framework) return 0;
    auto* const modules =
        reinterpret_cast<Function*>(FunctionOf(framework, "_ZN15CDynLinkLibrary7ModulesEv"));
    if (!modules) Fail("the framework has no list");
    return modules().size();
}

std::size_t PrivateBytes() {
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (const char* place = nullptr; VirtualQuery(place, &region, sizeof region) != 0;
         place = static_cast<const char*>(region.BaseAddress) + region.RegionSize)
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    return bytes;
}

struct InUse {
    std::size_t modules = NumModules(), extensions = NumExtensionModules();
    Resources system = ResourcesInUse();
    GuiResources windows = GuiResourcesInUse();
    std::size_t bytes = PrivateBytes();
};

void UseAndUnload(void* library, bool isFrameworkKept) {
    const HMODULE framework = GetModuleHandleW(L"Framework.dll");
    constexpr int kSize = 100;
    wchar_t className[kSize] = L"";
    using Function = bool(wchar_t*, int);
    auto* const use = reinterpret_cast<Function*>(FunctionOf(library, "Use"));
    if (use && !use(className, kSize)) Fail("something did not work");
    UnloadSharedLibrary(library);
    WNDCLASSW windowClass;
    if (use && !isFrameworkKept && GetClassInfoW(framework, className, &windowClass))
        Fail("the class of the windows is still there");
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) Fail("LoadOften COUNT LIBRARY [KEPT]");
    const int count = std::atoi(argv[1]);
    const bool isFrameworkKept = argc > 3;
    if (isFrameworkKept && !LoadSharedLibrary(argv[3])) Fail("what is to be kept cannot be loaded");
    // Under Wine windows need a desktop that is on the display of this program.
    SetThreadDesktop(CreateDesktopW(L"LoadOften", nullptr, nullptr, 0, GENERIC_ALL, nullptr));
    // Wine's own leave handles behind whenever they are unloaded.
    for (const char* const library : {"winmm.dll", "comdlg32.dll"}) LoadSharedLibrary(library);
    std::size_t loads = 0, firstLoads = 0;
    InUse first;
    for (int i = 1; i <= count; ++i) {
        if (void* const library = LoadSharedLibrary(argv[2])) {
            ++loads;
            UseAndUnload(library, isFrameworkKept);
        } else if (GetLastError() != ERROR_DLL_INIT_FAILED)
            Fail("the library cannot be loaded");
        if (IsLoaded(argv[2])) Fail("the library is still there");
        if (i != 10) continue;
        first = {};
        firstLoads = loads;
    }
    const InUse last;
    const auto print = [](const char* name, std::size_t before, std::size_t after) {
        std::printf("%s %zu %zu\n", name, before, after);
    };
    print("loads", firstLoads, loads);
    print("modules", first.modules, last.modules);
    print("extensions", first.extensions, last.extensions);
    print("threads", first.system.threads, last.system.threads);
    print("handles", first.system.handles, last.system.handles);
    print("gdi", first.windows.gdi, last.windows.gdi);
    print("user", first.windows.user, last.windows.user);
    print("heap", first.system.heap, last.system.heap);
    print("private", first.bytes, last.bytes);
    return 0;
}
