// SPDX-License-Identifier: MIT
#include "UtilityDLL/module/private/Attach.h"
#include "VelmBase/Module.h"

namespace {

// Made and destroyed when the system has loaded the library and when it unloads it.
class LoadedModule {
public:
    LoadedModule() { AttachModule(ModuleAt(this)); }
    ~LoadedModule() { DetachModule(); }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
};

const LoadedModule module;

} // namespace
