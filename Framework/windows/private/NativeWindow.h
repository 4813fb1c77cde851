// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Messages.h"
#include "VelmBase/ErrorString.h"

#include <memory>
#include <string>

// The border between the windows of the framework and a platform's backend. Everything that can be decided
// once stands above it; a backend makes the system's window, wakes it and passes on what happens to it.

struct tagDRAWITEMSTRUCT;

/// What a backend tells the window that it works for, always in the thread of that window's event loop. Any
/// of these may destroy the native window in the meantime.
class NativeWindowOwner {
public:
    /// Once for each NativeWindow::Wake().
    virtual void OnWake() = 0;

    /// A message that somebody posted or sent to the system's window itself.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// What the user did to it (BN_CLICKED); of a dialog IDCANCEL, for Escape and closing.
    virtual void OnCommand(UINT code) = 0;

    /// A request to draw it; of a button that draws itself.
    virtual void OnDrawItem(tagDRAWITEMSTRUCT& item) = 0;

    /// The system's window is gone, and it was not the NativeWindow's destructor that destroyed it.
    virtual void OnDestroyed() = 0;

protected:
    ~NativeWindowOwner() = default;
};

/// What other threads may do to a window.
class Wakeable {
public:
    /// Has NativeWindowOwner::OnWake() called out of the event loop. From any thread, without waiting; false
    /// when the system refuses.
    virtual bool Wake() = 0;

protected:
    ~Wakeable() = default;
};

/// What a backend makes of a window. Its destructor destroys the system's window; nothing is told to the
/// owner from then on.
class NativeWindow : public Wakeable {
public:
    virtual ~NativeWindow() = default;

    /// For whom it works from now on.
    virtual void SetOwner(NativeWindowOwner& owner) = 0;

    /// See CWnd::NativeHandle(); null after OnDestroyed().
    virtual void* Handle() const = 0;

    // See CWnd; what is empty or nothing happens after OnDestroyed().
    virtual std::wstring Text() const = 0;
    virtual void SetText(const std::wstring& text) = 0;
    virtual bool IsEnabled() const = 0;
    virtual void Enable(bool enable) = 0;
    virtual void Focus() = 0;
    virtual void Invalidate() = 0;
};

/// Makes a window, hidden. On failure the text says what is missing and `window` is left alone.
using MakeNativeWindowFunction = ErrorString(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window);
MakeNativeWindowFunction MakeNativeWindow;
