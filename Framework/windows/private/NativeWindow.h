#pragma once

#include "Framework/windows/Messages.h"
#include "VelmBase/ErrorString.h"

#include <memory>

// The border between the windows of the framework and a platform's backend. Everything that can be decided
// once stands above it; a backend makes the system's window, wakes it and passes on what happens to it.

/// What a backend tells the window that it works for, always in the thread of that window's event loop. Any
/// of these may destroy the native window in the meantime.
class NativeWindowOwner {
public:
    /// Once for each NativeWindow::Wake().
    virtual void OnWake() = 0;

    /// A message that somebody posted or sent to the system's window itself.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// The system's window is gone, and it was not the NativeWindow's destructor that destroyed it.
    virtual void OnDestroyed() = 0;

protected:
    ~NativeWindowOwner() = default;
};

/// What a backend makes of a window. Its destructor destroys the system's window; nothing is told to the
/// owner from then on.
class NativeWindow {
public:
    virtual ~NativeWindow() = default;

    /// See CWnd::NativeHandle(); null after OnDestroyed().
    virtual void* Handle() const = 0;

    /// Has OnWake() called out of the event loop. From any thread, without waiting; false when the system
    /// refuses.
    virtual bool Wake() = 0;
};

/// Makes a window, hidden. On failure the text says what is missing and `window` is left alone.
using MakeNativeWindowFunction = ErrorString(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window);
MakeNativeWindowFunction MakeNativeWindow;
