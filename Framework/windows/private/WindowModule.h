// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/private/PaintTarget.h"
#include "Framework/windows/private/NativeWindow.h"

// The border to the module FrameworkWindows, which holds a backend that this library must not link. It is
// loaded when the first window is made.

class NativeToolkit;

/// What the module needs of the library, which it does not link: see PaintTarget.h.
struct PaintContexts {
    HDC (*open)(PaintTarget& target);
    BOOL (*close)(HDC dc);
};

/// What the module offers, under the name kWindowModuleName.
struct WindowModule {
    /// The version that it was built with. Stays the first field: it is compared before anything else is
    /// used.
    const char* version;

    MakeNativeWindowFunction* makeWindow;

    /// The toolkit, which lasts as long as the process. The first call's contexts are used.
    NativeToolkit& (*toolkit)(const PaintContexts& contexts);
};
inline constexpr char kWindowModuleName[] = "FrameworkWindowsModule";
