// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/win32/private/WindowLink.h"

#include <string>

/// The text of a window, whatever its length.
std::wstring TextOfWindow(HWND window);

/// Gives it the keyboard, at once or, in a dialog that is not shown yet, when that is.
void FocusWindow(HWND window);

/// Enables or disables it. In a dialog of the framework the keyboard goes to the next control before: the
/// system would take it away from all of them.
void EnablePart(HWND window, bool enable);

/// A control or a dialog on the system's own window. `Native` is its interface.
template <typename Native> class Win32Window : public Native {
public:
    /// Takes the window, which is destroyed with this unless it is a part of a dialog. `owner` may be null.
    Win32Window(HWND window, NativeWindowOwner* owner, bool isPart = false)
        : m_link(WindowLink::Make(window, owner)), m_isPart(isPart) {}
    ~Win32Window() override {
        if (m_isPart)
            m_link->SetOwner(nullptr);
        else
            m_link->Leave();
    }
    Win32Window(const Win32Window&) = delete;
    Win32Window& operator=(const Win32Window&) = delete;

    void SetOwner(NativeWindowOwner& owner) override {
        if (m_link->Handle()) m_link->SetOwner(&owner);
    }
    void* Handle() const override { return Get(); }

    std::wstring Text() const override { return TextOfWindow(Get()); }
    void SetText(const std::wstring& text) override {
        if (Get()) SetWindowTextW(Get(), text.c_str());
    }
    bool IsEnabled() const override { return Get() && IsWindowEnabled(Get()) != 0; }
    void Enable(bool enable) override { EnablePart(Get(), enable); }
    void Focus() override {
        if (Get()) FocusWindow(Get());
    }
    void Invalidate() override {
        if (Get()) InvalidateRect(Get(), nullptr, TRUE);
    }

    // Called between MessageQueue::Open() and Close() only, and so while the window is there.
    bool Wake() override { return m_link->Wake(); }

protected:
    HWND Get() const { return m_link->Handle(); } ///< null when it is gone
    WindowLink& Link() const { return *m_link; }

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return Get() ? SendMessageW(Get(), message, wParam, lParam) : 0;
    }

private:
    const std::shared_ptr<WindowLink> m_link;
    const bool m_isPart;
};
