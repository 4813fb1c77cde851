#include "Framework/windows/Wnd.h"

#include "Framework/windows/private/NativeWindow.h"

#pragma push_macro("PostMessage")
#undef PostMessage

bool MessageTarget::Post(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::lock_guard lock(m_guard);
    return m_window && m_window->Post(message, wParam, lParam);
}

CWnd::CWnd() : m_target(std::make_shared<MessageTarget>()) {}

CWnd::~CWnd() { DestroyWindow(); }

void CWnd::DestroyWindow() {
    {
        const std::lock_guard lock(m_target->m_guard);
        m_target->m_window = nullptr;
    }
    m_window.reset();
}

void* CWnd::NativeHandle() const { return m_window ? m_window->Handle() : nullptr; }

bool CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_target->Post(message, wParam, lParam);
}

LRESULT CWnd::WindowProc(UINT, WPARAM, LPARAM) { return 0; }

#pragma pop_macro("PostMessage")
