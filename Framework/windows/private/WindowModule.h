#pragma once

#include "Framework/windows/private/NativeWindow.h"

// The border to the module FrameworkWindows, which holds a backend that this library must not link. It is
// loaded when the first window is made.

/// What the module offers, under the name kWindowModuleName.
struct WindowModule {
    /// The version that it was built with. Stays the first field: it is compared before anything else is
    /// used.
    const char* version;

    MakeNativeWindowFunction* makeWindow;
};
inline constexpr char kWindowModuleName[] = "FrameworkWindowsModule";
