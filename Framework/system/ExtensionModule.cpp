// SPDX-License-Identifier: MIT
#include "Framework/system/ExtensionModule.h"

#include "VelmBase/UntilUnloaded.h"

#include <mutex>

namespace {

// There before any library's code runs, whatever the order in which the libraries are made ready.
constinit CDynLinkLibrary* g_first = nullptr;

// Libraries are unloaded until the process has ended.
std::mutex& Guard() {
    static UntilUnloaded<std::mutex> guard;
    return *guard;
}

} // namespace

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, void* module) {
    if (state.bInitialized) return true;
    if (!module) return false;
    state = {true, module};
    return true;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state) {
    if (!state.bInitialized) return;
    CDynLinkLibrary::Remove(state.hModule);
    state = {};
}

CDynLinkLibrary::CDynLinkLibrary(const AFX_EXTENSION_MODULE& state) : m_module(state.hModule) {
    const std::lock_guard lock(Guard());
    m_next = g_first;
    g_first = this;
}

std::vector<void*> CDynLinkLibrary::Modules() {
    const std::lock_guard lock(Guard());
    std::vector<void*> modules;
    for (const CDynLinkLibrary* library = g_first; library; library = library->m_next)
        modules.push_back(library->m_module);
    return modules;
}

void CDynLinkLibrary::Remove(const void* module) {
    const std::lock_guard lock(Guard());
    for (CDynLinkLibrary** place = &g_first; *place;) {
        CDynLinkLibrary* const library = *place;
        if (library->m_module != module) {
            place = &library->m_next;
            continue;
        }
        *place = library->m_next;
        delete library;
    }
}
