// SPDX-License-Identifier: MIT
#include "Framework/windows/Wnd.h"

#include "Framework/windows/private/MessageQueue.h"
#include "Framework/windows/private/NativeWindow.h"

#pragma push_macro("PostMessage")
#undef PostMessage

MessageTarget::MessageTarget() : m_queue(std::make_unique<MessageQueue>()) {}
MessageTarget::~MessageTarget() = default;

bool MessageTarget::Post(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_queue->Post({message, wParam, lParam});
}

// A window with what the backend made for it. Handling a message may destroy it, and so nothing of it is used
// afterwards.
struct CWnd::Native final : NativeWindowOwner {
    CWnd& owner;
    MessageQueue& queue;
    std::unique_ptr<NativeWindow> window;

    explicit Native(CWnd& wnd) : owner(wnd), queue(*wnd.m_target->m_queue) {}

    void OnWake() override {
        if (const auto next = queue.Take()) (void)OnMessage(next->message, next->wParam, next->lParam);
    }

    void OnCommand(UINT code) override {
        try {
            owner.OnTold(code);
        } catch (...) { // event loops cannot let one through
        }
    }

    void OnDrawItem(tagDRAWITEMSTRUCT& item) override {
        try {
            owner.OnDraw(item);
        } catch (...) {
        }
    }

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        try {
            return owner.WindowProc(message, wParam, lParam);
        } catch (...) {
            return 0;
        }
    }

    void OnDestroyed() override { queue.Close(); }
};

CWnd::CWnd() : m_target(std::make_shared<MessageTarget>()) { m_target->m_window = this; }

CWnd::~CWnd() {
    m_target->m_window = nullptr;
    DestroyWindow();
}

ErrorString CWnd::Create() { return CreateBy(&MakeNativeWindow); }

ErrorString CWnd::CreateBy(const Make& make) {
    if (NativeHandle()) return {};
    DestroyWindow(); // what is left of one that others destroyed
    auto native = std::make_unique<Native>(*this);
    ErrorString made = make(*native, native->window);
    if (!made) return made;
    m_native = std::move(native);
    m_target->m_queue->Open(*m_native->window);
    return made;
}

std::unique_ptr<NativeWindow> CWnd::Release() {
    m_target->m_queue->Close();
    auto window = m_native ? std::move(m_native->window) : nullptr;
    m_native.reset();
    return window;
}

void CWnd::DestroyWindow() {
    m_target->m_queue->Close();
    m_native.reset();
}

NativeWindow* CWnd::Window() const { return m_native ? m_native->window.get() : nullptr; }

void* CWnd::NativeHandle() const { return m_native ? m_native->window->Handle() : nullptr; }

CString CWnd::GetWindowTextW() const { return m_native ? m_native->window->Text() : std::wstring(); }

void CWnd::SetWindowTextW(const CString& text) {
    if (m_native) m_native->window->SetText(text.String());
}

bool CWnd::IsWindowEnabled() const { return m_native && m_native->window->IsEnabled(); }

void CWnd::EnableWindow(bool enable) {
    if (m_native) m_native->window->Enable(enable);
}

void CWnd::SetFocus() {
    if (m_native) m_native->window->Focus();
}

void CWnd::Invalidate() {
    if (m_native) m_native->window->Invalidate();
}

const AFX_MSGMAP* CWnd::GetThisMessageMap() {
    static constexpr AFX_MSGMAP_ENTRY none = {};
    static constexpr AFX_MSGMAP map = {nullptr, &none};
    return &map;
}

bool CWnd::OnCmdMsg(UINT message, UINT code, UINT id) {
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->base ? map->base() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->message != 0; ++entry) {
            if (entry->message != message || entry->code != code || entry->id != id) continue;
            (this->*entry->handler)(); // may delete this
            return true;
        }
    }
    return false;
}

void CWnd::OnTold(UINT) {}

void CWnd::OnDraw(tagDRAWITEMSTRUCT&) {}

bool CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_target->Post(message, wParam, lParam);
}

LRESULT CWnd::WindowProc(UINT, WPARAM, LPARAM) { return 0; }

#pragma pop_macro("PostMessage")
