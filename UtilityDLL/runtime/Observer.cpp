// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/Observer.h"

#include "UtilityDLL/runtime/private/ContextRegistry.h"

#include <cstddef>
#include <new>
#include <utility>

namespace UTL {

namespace {

void Call(ContextRegistry::Context& context, int code) {
    ContextRegistry::Walk walk(context);
    while (Subscriber* const subscriber = walk.Next()) subscriber->OnNotify(code);
}

} // namespace

// Exported, for hosts that bind a reference to it.
constexpr int Observer::RENAMED; // NOLINT(readability-redundant-declaration)

Subscriber::~Subscriber() { Observer::Get().UnSubscribe(this); }

// Statics of hosts may be destroyed after this one, and then take themselves out. So what ends with the
// process is what the observer holds, and never the observer.
Observer& Observer::Get() {
    struct Contents {
        Contents() { new (Place()) Observer; }
        ~Contents() { Instance() = Observer(); }
        Contents(const Contents&) = delete;
        Contents& operator=(const Contents&) = delete;

        static void* Place() {
            alignas(Observer) static std::byte place[sizeof(Observer)];
            return place;
        }
        static Observer& Instance() { return *std::launder(static_cast<Observer*>(Place())); }
    };
    static const Contents contents;
    return Contents::Instance();
}

Observer::Observer() noexcept = default;
Observer::Observer(const Observer& other)
    : m_contexts(other.m_contexts ? std::make_unique<ContextRegistry>(*other.m_contexts) : nullptr),
      m_currentContext(other.m_currentContext), m_previousContext(other.m_previousContext) {}
Observer::Observer(Observer&& other) noexcept
    : m_contexts(std::move(other.m_contexts)), m_currentContext(std::exchange(other.m_currentContext, {})),
      m_previousContext(std::exchange(other.m_previousContext, {})) {}
Observer& Observer::operator=(const Observer& other) {
    if (this != &other) *this = Observer(other);
    return *this;
}
Observer& Observer::operator=(Observer&& other) noexcept {
    Observer taken(std::move(other)); // before anything ends, since `other` may be this one
    m_contexts.swap(taken.m_contexts);
    m_currentContext.swap(taken.m_currentContext);
    m_previousContext.swap(taken.m_previousContext);
    return *this;
}
Observer::~Observer() = default;

void Observer::Subscribe(Subscriber* s, const std::wstring& context) {
    Contexts().Subscribe(s, Contexts().At(context));
}

void Observer::UnSubscribe(Subscriber* s, const std::wstring& context) {
    Contexts().UnSubscribe(s, Contexts().At(context));
}

void Observer::UnSubscribe(Subscriber* s) noexcept {
    if (m_contexts) m_contexts->UnSubscribe(s);
}

void Observer::Notify(const std::wstring& context, int code) {
    ContextRegistry::Context& notified = Contexts().At(context);
    m_currentContext = context;
    Call(notified, code);
}

void Observer::RenameSubscribers(const std::wstring& oldContext, const std::wstring& newContext) {
    std::wstring oldName = oldContext; // they may be the names that are set here
    std::wstring newName = newContext;
    ContextRegistry::Context& from = Contexts().At(oldName);
    ContextRegistry::Context& to = Contexts().At(newName);
    if (&from != &to) Contexts().Move(from, to);
    m_previousContext = std::move(oldName);
    m_currentContext = std::move(newName);
    Call(to, RENAMED);
}

void Observer::Clear() noexcept { m_contexts.reset(); }

void Observer::Clear(const std::wstring& context) noexcept {
    if (m_contexts) m_contexts->Remove(context);
}

ContextRegistry& Observer::Contexts() {
    if (!m_contexts) m_contexts = std::make_unique<ContextRegistry>();
    return *m_contexts;
}

} // namespace UTL
