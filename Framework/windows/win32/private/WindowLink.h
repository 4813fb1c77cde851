// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeWindow.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>
#include <windows.h>

/// Has a window of this library's woken out of its thread's event loop; false when the system refuses.
/// `thread` is the window's.
bool WakeWindow(HWND window, DWORD thread);

/// Whether a message is that.
bool IsWake(HWND window, UINT message, WPARAM wParam);

/// A system window's link to the window of the framework that it is made for. It lasts as long as either, and
/// takes what the control tells its parent, whichever window that is by now: hosts place controls into
/// windows of their own.
class WindowLink final : public std::enable_shared_from_this<WindowLink> {
public:
    /// `owner` may be null, for one that is set later.
    static std::shared_ptr<WindowLink> Make(HWND window, NativeWindowOwner* owner);

    /// That of a window of this thread; null without one.
    static std::shared_ptr<WindowLink> Of(HWND window);

    explicit WindowLink(HWND window, NativeWindowOwner* owner);

    /// Null when the window is gone.
    HWND Handle() const { return m_window; }
    void SetOwner(NativeWindowOwner* owner) { m_owner = owner; }
    bool HasOwner() const { return m_owner != nullptr; }
    bool IsLeft() const { return m_isLeft; }

    /// Lets the owner go without a word, and destroys the window. While it or a part of it has its owner at
    /// work, the system still uses it: it is then hidden, and destroyed out of the event loop when the owner
    /// has returned.
    void Leave();

    /// Destroys a window that was left, unless its owner is still at work.
    void DestroyIfLeft();

    /// Calls for the owner, which may delete its window by what it does then.
    template <typename Call> void ForOwner(const Call& call) {
        if (!m_owner) return;
        const std::shared_ptr<WindowLink> self = shared_from_this();
        ++m_depth;
        call(*m_owner);
        if (--m_depth == 0 && s_left > 0) WakeLeft();
    }

    void Tell(UINT code) {
        ForOwner([=](NativeWindowOwner& owner) { owner.OnCommand(code); });
    }

    bool Wake() { return WakeWindow(m_window, m_thread); }

    /// What is done about a message, before the system does; nothing for one that is left to it. Both may be
    /// called when the window of the framework has gone.
    using Answer = std::function<std::optional<LRESULT>(UINT message, WPARAM wParam, LPARAM lParam)>;

    void SetOnMessage(Answer answer) { m_onMessage = std::move(answer); } ///< that comes to it
    void SetOnTold(Answer answer) { m_onTold = std::move(answer); }       ///< that it sends to its parent

    /// Holds on to what the window needs until it is gone.
    void Keep(std::shared_ptr<void> needed) { m_needed.push_back(std::move(needed)); }

    /// Has `call` called when this is left or the window is destroyed, unless nobody holds it any more.
    void CallWhenGone(const std::shared_ptr<std::function<void()>>& call) {
        std::erase_if(m_whenGone, [](const auto& before) { return before.expired(); });
        m_whenGone.push_back(call);
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR data);
    static LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR data);
    static void CountControls(HWND parent, bool isMore);
    LRESULT Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void FollowParent();
    void CallThoseWhoWait();
    bool IsAtWork() const;
    void WakeLeft() const;

    HWND m_window;
    HWND m_parent = nullptr; // whose messages are looked at
    const DWORD m_thread = GetCurrentThreadId();
    NativeWindowOwner* m_owner;                // null when nobody is told
    int m_depth = 0;                           // calls that the owner has not returned from
    bool m_isLeft = false;                     // the window waits for its end
    inline static std::atomic<int> s_left = 0; // such windows
    Answer m_onMessage;
    Answer m_onTold;
    std::vector<std::shared_ptr<void>> m_needed;
    std::vector<std::weak_ptr<std::function<void()>>> m_whenGone;
};
