// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"
#include "Framework/Values.h"
#include "Framework/windows/MessageMap.h"
#include "VelmBase/ErrorString.h"

#include <functional>
#include <memory>

// A host may have included the header of Windows, or will: a macro there turns this name into one of the two
// that follow it below. Here it stands for itself.
#pragma push_macro("PostMessage")
#undef PostMessage

class CWnd;
class MessageQueue;
class NativeWindow;
class NativeWindowOwner;
struct tagDRAWITEMSTRUCT;

/// Where messages for a window are left. It outlives the window, so that a thread which knows no more of the
/// window than this can never touch one that is gone.
class FRAMEWORK_API MessageTarget {
public:
    MessageTarget(); ///< of no window; each CWnd makes its own
    ~MessageTarget();

    /// Leaves a message for the window, from any thread, and does not wait. The window gets it once, both
    /// parameters as they are, in its own thread, out of the host's event loop, and in the order in which
    /// messages were left. There may be any number of them.
    ///
    /// False when nobody will get it: there is no window (not created yet, or destroyed), or the system has
    /// no memory or no room in the thread's own queue.
    bool Post(UINT message, WPARAM wParam, LPARAM lParam);

private:
    friend CWnd;
    const std::unique_ptr<MessageQueue> m_queue;
    CWnd* m_window = nullptr; // null when it is gone; for the thread of the user interface alone
};

/// A window that receives messages. It is made, used and destroyed by the thread of the user interface; only
/// posting is for every thread.
///
/// That thread is on Linux the one that made the QApplication, on Windows any that runs an event loop, be it
/// the host's or that of a dialog. Messages come out of each event loop of the thread, also out of one that
/// runs inside WindowProc(). A host without an event loop has no use for windows.
///
/// While there is no window, what is about it does nothing and gives what is empty or false.
///
/// Linux needs a QApplication from Create() on, and the module utilitydll/FrameworkWindows.so, which is
/// looked for in the folder that this library was loaded from. Nothing else of the library needs Qt.
class FRAMEWORK_API CWnd {
public:
    CWnd(); ///< without a window: see Create()

    /// Destroys the window as well; messages that wait for it are dropped. A window may be deleted in its
    /// WindowProc() and in each handler, and may live longer than the QApplication.
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// Makes the window, hidden. Success, and nothing happens, when it is there already.
    ///
    /// On failure the text says what is missing: the module or a library that it needs, with the Debian
    /// package that has it; a module of this version; the QApplication; the right thread. This is then a
    /// window without messages, as before, and may be tried again.
    ErrorString Create();

    /// Destroys the window and drops the messages that wait for it; nothing happens when there is none.
    /// Create() may make another.
    void DestroyWindow();

    /// The system's own window: a QWidget* on Linux, an HWND on Windows. It stays this object's; a host may
    /// place it in its own windows. Null when there is none: not created, or destroyed by this, by the host,
    /// with the window it was placed in, or with the QApplication.
    void* NativeHandle() const;

    /// The caption of a dialog or button, the content of an edit field. In captions "&" is before the letter
    /// by which the keyboard reaches the control, and "&&" is an ampersand.
    /// @{
    CString GetWindowTextW() const;
    void SetWindowTextW(const CString& text);
    /// @}

    /// Whether the user can use it.
    /// @{
    bool IsWindowEnabled() const;
    void EnableWindow(bool enable = true);
    /// @}

    /// Gives it the keyboard.
    void SetFocus();

    /// Has it drawn anew, soon.
    void Invalidate();

    /// As MessageTarget::Post(); for threads that know that this object is there.
    /// @{
    bool PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    bool PostMessageW(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return m_target->Post(message, wParam, lParam);
    }
    bool PostMessageA(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return m_target->Post(message, wParam, lParam);
    }
    /// @}

    /// For threads that may outlive this window. The same for as long as this object lives, whether there is
    /// a window or not.
    const std::shared_ptr<MessageTarget>& Target() const { return m_target; }

    /// What the class does about what controls tell. A class with entries overrides it, and adds its own
    /// GetThisMessageMap().
    virtual const AFX_MSGMAP* GetMessageMap() const { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap(); ///< for maps of derived classes

protected:
    /// Called for each message that was posted, in the thread of the user interface. On Windows also for
    /// those from 1024 (WM_USER) to 49151 that somebody posts or sends to the HWND itself. Returns 0 here,
    /// and what it returns goes to those who sent.
    ///
    /// An exception that leaves it ends there, as event loops cannot let one through: the message counts as
    /// handled, the answer is 0, and the next message comes.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    /// Calls the first handler of the message map for that: of the class, then of its base. False when there
    /// is none. What comes out of the event loop calls it so that an exception ends there, as in
    /// WindowProc(). A handler may delete or destroy windows, its own one included.
    bool OnCmdMsg(UINT message, UINT code, UINT id);

    /// The window whose target that is; null for a null pointer, and when the window is gone. A handler that
    /// shows a dialog keeps its Target() and asks afterwards, for others may have deleted the window
    /// meanwhile.
    static CWnd* Of(const std::shared_ptr<MessageTarget>& target) {
        return target ? target->m_window : nullptr;
    }

    /// Has a backend make the window that this stands for from now on.
    using Make = std::function<ErrorString(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window)>;

    /// Makes the window by `make`. Success, and nothing happens, when there is one already.
    ErrorString CreateBy(const Make& make);

    /// Null when there is none.
    NativeWindow* Window() const;

private:
    struct Native;
    friend class CControl; // tells its parent
    friend class CDialog;  // makes its controls
    friend class CFileDialog;
    friend class CColorDialog;

    /// Hands over what it stood for, and has no window then.
    std::unique_ptr<NativeWindow> Release();

    /// What the user did to it.
    virtual void OnTold(UINT code);

    /// It is to draw itself.
    virtual void OnDraw(tagDRAWITEMSTRUCT& item);

    std::shared_ptr<MessageTarget> m_target;
    std::unique_ptr<Native> m_native; // null when there is no window
};

#pragma pop_macro("PostMessage")
