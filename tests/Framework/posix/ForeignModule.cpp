// SPDX-License-Identifier: MIT
// A module for windows that was built with another version, whose functions must not be called.

#include "Framework/windows/private/WindowModule.h"

extern "C" __attribute__((visibility("default"))) const WindowModule FrameworkWindowsModule;
const WindowModule FrameworkWindowsModule = {"4.9.0.1", nullptr, nullptr};
