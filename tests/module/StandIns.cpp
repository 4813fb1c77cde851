// SPDX-License-Identifier: MIT
// Stands in for the libraries that the module's start-up calls: each call is a line on standard output, and
// the one that the environment variable FAILING_STEP names fails.

#include "Framework/system/ExtensionModule.h"
#include "VelmBase/LibraryVersion.h"
#include "VelmBase/ResourceModule.h"
#include "VelmBase/WideString.h"
#include "VersionControl/VersionControl.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

bool Succeeds(std::string_view step) {
    const char* const failing = std::getenv("FAILING_STEP");
    return !failing || failing != step;
}

void* g_instance = nullptr;

const char* Name(const void* handle) {
    if (!handle) return "none";
    return handle == g_instance ? "the module" : "something else";
}

CDynLinkLibrary* g_library = nullptr; // owned by the framework

} // namespace

bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildStamp) {
    std::printf("CheckDllVersion(0x%08X, %s, %s)\n", version, sourceFile, buildStamp);
    return Succeeds("CheckDllVersion");
}

std::vector<CheckedLibrary> CheckLibraries(std::uint32_t version) {
    return {{"Good", version, true}, {"Odd", 0x05000015, false}, {"Old", 0x04090000, false}};
}

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, void* module) {
    g_instance = module;
    std::printf("AfxInitExtensionModule(%s, %s)\n", state.bInitialized ? "a used record" : "a new record",
                Name(module));
    if (!Succeeds("AfxInitExtensionModule")) return false;
    state = {true, module};
    return true;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state) {
    std::printf("AfxTermExtensionModule(%s)\n", Name(state.hModule));
    std::fflush(stdout);
    CDynLinkLibrary::Remove(state.hModule);
    state = {};
}

CDynLinkLibrary::CDynLinkLibrary(const AFX_EXTENSION_MODULE& state)
    : m_module(state.hModule), m_next(nullptr) {
    g_library = this;
    std::printf("CDynLinkLibrary(%s)\n", Name(state.hModule));
}

void CDynLinkLibrary::Remove(const void* /*module*/) {
    delete g_library;
    g_library = nullptr;
}

void VELMSUITE::LoadDLLResourceDLL(void* instance, void* module) {
    std::printf("LoadDLLResourceDLL(%s, %s)\n", Name(instance), Name(module));
}
