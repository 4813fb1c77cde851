// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <memory>
#include <string>

namespace UTL {

class ContextRegistry;

/// Somebody who wants to hear of changes in contexts; see Observer.
///
/// It has no data of its own, and one that never subscribes costs nothing but a look-up at its end. Making,
/// copying and assigning one do nothing: a copy is subscribed nowhere, and an object that is assigned to
/// stays subscribed where it was.
class UTILITYDLL_API Subscriber {
public:
    Subscriber() noexcept = default; ///< subscribed nowhere

    /// Subscriptions are not copied.
    /// @{
    Subscriber(const Subscriber&) noexcept = default;
    Subscriber& operator=(const Subscriber&) noexcept = default;
    /// @}

    /// Takes the object out of every context of Observer::Get(), which never calls it again. To be run in the
    /// thread of the observer. At the end of the process it may come before or after the end of the observer.
    virtual ~Subscriber();

    /// What happened in a context that the object is subscribed to. 29 (Observer::RENAMED) is fixed; other
    /// codes are agreed between hosts. Everything may be done meanwhile; see Observer.
    virtual void OnNotify(int code) = 0;
};

/// Through it the parts of an application tell each other that something has changed in a context: any name,
/// for example that of a document. Names match exactly, letter case included.
///
/// Get() is the one of the process. Only its first use is guarded; every other call belongs to one thread,
/// the user interface's as a rule, or is serialised by the host.
///
/// Subscribers are not owned. A null pointer is no subscriber: it is passed over. Any member may be called
/// from inside OnNotify, also for the context that is being notified, and any subscriber may be destroyed
/// there, the one that is called included. A notification calls each who was subscribed when it began, and
/// nobody twice; it leaves out who is unsubscribed, cleared or destroyed before its turn. Who subscribes
/// meanwhile, or once more, hears from the next one on. A rename meanwhile unsubscribes nobody: the rest is
/// called all the same. An exception from OnNotify comes out of the call and keeps it from the rest; nothing
/// else is changed by it.
///
/// A context is remembered once it was named to Subscribe(), UnSubscribe(), Notify() or RenameSubscribers(),
/// until it is cleared or renamed. Subscribing and unsubscribing take the same few steps however many
/// subscribers and contexts there are. Texts that the object itself returned may be given to any member.
/// Where memory runs out, std::bad_alloc is thrown and nobody was called or (un)subscribed.
class UTILITYDLL_API Observer {
public:
    /// The code that subscribers of a renamed context get.
    static constexpr int RENAMED = 29;

    /// Made on first use, emptied at the end of the process, or when the library is unloaded. What static
    /// objects ask of it after that is done by an empty one.
    static Observer& Get();

    /// A registry of its own with the same subscribers and names. Destroyed subscribers leave Get() alone,
    /// not copies: take them out of these before.
    Observer(const Observer& other);
    /// `other` is then empty.
    Observer(Observer&& other) noexcept;

    /// The contexts and subscriptions so far end as by Clear().
    /// @{
    Observer& operator=(const Observer& other);
    Observer& operator=(Observer&& other) noexcept;
    /// @}

    ~Observer();

    /// The context that was notified last, or the new name of the one that was renamed after that; empty at
    /// first.
    const std::wstring& GetCurrentContext() const noexcept { return m_currentContext; }
    /// The old name of the context that was renamed last; empty at first.
    const std::wstring& GetPreviousContext() const noexcept { return m_previousContext; }

    /// Puts `s` before all subscribers of the context. One who is there already keeps its place.
    void Subscribe(Subscriber* s, const std::wstring& context);

    /// Takes `s` out of the context, or out of all of them.
    /// @{
    void UnSubscribe(Subscriber* s, const std::wstring& context);
    void UnSubscribe(Subscriber* s) noexcept;
    /// @}

    /// Makes the context the current one and calls OnNotify(code) of its subscribers, the latest first.
    void Notify(const std::wstring& context, int code);

    /// Puts the subscribers of the old context, the first one first and therefore in reversed order, before
    /// all those of the new one, where who is there already keeps its place; removes the old context; makes
    /// the names the previous and the current one; then calls OnNotify(RENAMED) of all subscribers of the new
    /// context, the first one first. A context that is renamed to its own name stays as it is, and its
    /// subscribers are called.
    void RenameSubscribers(const std::wstring& oldContext, const std::wstring& newContext);

    /// Removes all contexts, or the one of that name, with their subscriptions. Nobody is called, and the
    /// current and the previous name stay.
    /// @{
    void Clear() noexcept;
    void Clear(const std::wstring& context) noexcept;
    /// @}

private:
    Observer() noexcept;

    ContextRegistry& Contexts();

    std::unique_ptr<ContextRegistry> m_contexts; // null while nobody needs it
    std::wstring m_currentContext;
    std::wstring m_previousContext;
};

} // namespace UTL
