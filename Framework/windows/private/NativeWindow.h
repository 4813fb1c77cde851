#pragma once

#include "Framework/windows/Messages.h"

/// What a backend makes of a window.
class NativeWindow {
public:
    virtual ~NativeWindow() = default;

    /// See CWnd::NativeHandle().
    virtual void* Handle() const = 0;

    /// See MessageTarget::Post(); the window is there as long as the call takes.
    virtual bool Post(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};
