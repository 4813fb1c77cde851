// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/system/posix/LoadModule.h"

/// LoadModule() for one of the program's own modules ("chartutil_pictures.so"), in the folder where they lie.
void* LoadProgramModule(const char* module, const char* name, const ModulePackages& packages,
                        std::string& whyNot);
