// SPDX-License-Identifier: MIT
// Loads the module that the first argument names, says how its start-up ended, runs a thread, and unloads it.

#include "VelmBase/ErrorString.h"
#include "VelmBase/WideString.h"
#include "tests/support/Library.h"

#include <cstdio>
#include <thread>

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    void* const module = LoadSharedLibrary(argv[1]);
    if (!module) {
        std::printf("not loaded\n");
        return 0;
    }
    using StartUp = ErrorString();
    auto* const startUp = reinterpret_cast<StartUp*>(FunctionOf(module, "_Z17UtilityDLLStartUpv"));
    if (!startUp) return 3;
    {
        const ErrorString result = startUp();
        std::printf("loaded: %s\n", result ? "well" : ToUtf8(result.Text()).c_str());
        std::thread([] { std::printf("a thread\n"); }).join();
        std::fflush(stdout);
    }
    UnloadSharedLibrary(module);
    std::printf("unloaded\n");
    return 0;
}
