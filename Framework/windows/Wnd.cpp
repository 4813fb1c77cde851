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

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        try {
            return owner.WindowProc(message, wParam, lParam);
        } catch (...) {
            return 0;
        }
    }

    void OnDestroyed() override { queue.Close(); }
};

CWnd::CWnd() : m_target(std::make_shared<MessageTarget>()) {}

CWnd::~CWnd() { DestroyWindow(); }

ErrorString CWnd::Create() {
    if (NativeHandle()) return {};
    DestroyWindow(); // what is left of one that others destroyed
    auto native = std::make_unique<Native>(*this);
    ErrorString made = MakeNativeWindow(*native, native->window);
    if (!made) return made;
    m_native = std::move(native);
    m_target->m_queue->Open(*m_native->window);
    return made;
}

void CWnd::DestroyWindow() {
    m_target->m_queue->Close();
    m_native.reset();
}

void* CWnd::NativeHandle() const { return m_native ? m_native->window->Handle() : nullptr; }

bool CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_target->Post(message, wParam, lParam);
}

LRESULT CWnd::WindowProc(UINT, WPARAM, LPARAM) { return 0; }

#pragma pop_macro("PostMessage")
