// SPDX-License-Identifier: MIT
#include "UtilityDLL/module/UtilityDLL.h"

#include "Framework/system/ExtensionModule.h"
#include "UtilityDLL/module/private/Attach.h"
#include "VelmBase/LibraryVersion.h"
#include "VelmBase/ResourceModule.h"
#include "VelmBase/WideString.h"
#include "VersionControl/VersionControl.h"

namespace {

enum class StartUp { NOT_YET, WRONG_VERSION, NOT_REGISTERED, DONE };

constinit StartUp g_startUp = StartUp::NOT_YET;
constinit AFX_EXTENSION_MODULE g_record;

StartUp DoSteps(void* instance) {
    if (!CheckDllVersion(LIBRARY_VERSION, "UtilityDLL/UtilityDLL", __DATE__ " " __TIME__))
        return StartUp::WRONG_VERSION;
    if (!AfxInitExtensionModule(g_record, instance)) return StartUp::NOT_REGISTERED;
    new CDynLinkLibrary(g_record);
    VELMSUITE::LoadDLLResourceDLL(instance, g_record.hModule);
    return StartUp::DONE;
}

ErrorString WrongVersion() {
    std::string others;
    for (const CheckedLibrary& library : CheckLibraries(LIBRARY_VERSION))
        if (!library.matches)
            others += (others.empty() ? "" : ", ") + library.name + " is " + VersionText(library.version);
    if (others.empty()) others = "VersionControlR refuses it";
    return ErrorString(L"the libraries of the suite do not match: UtilityDLL is ")
           << FromUtf8(VersionText(LIBRARY_VERSION)) << L", " << FromUtf8(others)
           << L"; install all of them from one package, and see that no library path leads to others";
}

} // namespace

bool AttachModule(void* instance) {
    g_startUp = DoSteps(instance);
    return g_startUp == StartUp::DONE;
}

void DetachModule() { AfxTermExtensionModule(g_record); }

ErrorString UtilityDLLStartUp() {
    switch (g_startUp) {
    case StartUp::DONE:
        return {};
    case StartUp::WRONG_VERSION:
        return WrongVersion();
    case StartUp::NOT_REGISTERED:
        return L"UtilityDLL cannot register with the framework; install it anew";
    case StartUp::NOT_YET:
        break;
    }
    return L"UtilityDLL has not started up yet; call it when the program has begun";
}
