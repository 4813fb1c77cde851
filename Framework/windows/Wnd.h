#pragma once

#include "Framework/Export.h"
#include "Framework/windows/Messages.h"
#include "VelmBase/ErrorString.h"

#include <memory>
#include <mutex>

// A host may have included the header of Windows, which makes this name one of its own.
#pragma push_macro("PostMessage")
#undef PostMessage

class CWnd;
class NativeWindow;

/// Where messages for a window are left. It outlives the window, so that a thread which knows no more of the
/// window than this can never touch one that is gone.
class FRAMEWORK_API MessageTarget {
public:
    /// Leaves a message for the window, from any thread, and does not wait: the window gets it in its own
    /// thread, out of the host's event loop. False when there is no window (not created yet, or destroyed):
    /// nobody gets it.
    bool Post(UINT message, WPARAM wParam, LPARAM lParam);

private:
    friend CWnd;
    std::mutex m_guard;
    NativeWindow* m_window = nullptr; // null while there is none
};

/// A window that receives messages. It is made, used and destroyed by the thread of the user interface; only
/// posting is for every thread.
class FRAMEWORK_API CWnd {
public:
    CWnd();

    /// Destroys the window as well; messages that wait for it are dropped.
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// Makes the window, hidden. On failure the text says what is missing; this is then a window without
    /// messages, as before.
    ErrorString Create();

    /// Destroys the window; nothing happens when there is none.
    void DestroyWindow();

    /// The system's own window: a QWidget* on Linux, an HWND on Windows. Null when there is none.
    void* NativeHandle() const;

    /// As MessageTarget::Post().
    bool PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    bool PostMessageW(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return m_target->Post(message, wParam, lParam);
    }

    /// For threads that may outlive this window.
    const std::shared_ptr<MessageTarget>& Target() const { return m_target; }

protected:
    /// Called for each message that was posted, in the thread of the user interface. Returns 0 here.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

private:
    std::shared_ptr<MessageTarget> m_target;
    std::unique_ptr<NativeWindow> m_window;
};

#pragma pop_macro("PostMessage")
