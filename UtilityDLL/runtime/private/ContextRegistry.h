// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/runtime/private/ContextHash.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace UTL {

class Subscriber;

/// Who is subscribed to which context. Each call takes a time that does not depend on how many subscribers a
/// context or contexts a subscriber has, but for those that name them all.
///
/// Everything may be called while contexts are walked; the registry may be destroyed then, too.
class ContextRegistry {
public:
    class Context;
    class Walk;

    ContextRegistry() = default;
    ContextRegistry(const ContextRegistry& other);
    ContextRegistry& operator=(const ContextRegistry&) = delete;
    /// Ends all subscriptions.
    ~ContextRegistry();

    /// The context of that name, which is made where there is none.
    Context& At(std::wstring_view name);

    /// Puts the subscriber before all others of the context, unless it is among them.
    void Subscribe(Subscriber* subscriber, Context& context);
    void UnSubscribe(const Subscriber* subscriber, Context& context) noexcept;
    void UnSubscribe(const Subscriber* subscriber) noexcept;

    /// Puts the subscribers of `from`, the first one first, before all others of `to` unless they are among
    /// them, and removes `from`, which is another context. Walks through `from` go on.
    void Move(Context& from, Context& to);

    /// Removes the context of that name, if there is one, and ends its subscriptions.
    void Remove(std::wstring_view name) noexcept;

private:
    struct Subscription;

    using ByContext = std::unordered_map<const Context*, Subscription*>;

    // Fewer subscriptions of one subscriber are searched one by one.
    static constexpr std::size_t kMany = 16;

    Context*& BucketOf(std::uint64_t hash) { return m_contexts[hash & (m_contexts.size() - 1)]; }
    Context* Find(std::wstring_view name, std::uint64_t hash) const;
    void MakeRoomForContext();
    void Detach(Context& context) noexcept;

    // Objects that were made in a row stand in a row here as well. Whatever steps there are between
    // addresses, of powers of two above all, they are not those of the table.
    std::size_t BucketOf(const Subscriber* subscriber) const {
        return (reinterpret_cast<std::uintptr_t>(subscriber) / sizeof(void*)) % m_subscribers.size();
    }
    Subscription* FirstOf(const Subscriber* subscriber) const;
    Subscription* Find(const Subscriber* subscriber, const Context& context) const;
    void MakeRoomForSubscriber();
    void Index(Subscription& subscription);
    void Link(Subscription& subscription) noexcept;
    void Unlink(const Subscription& subscription) noexcept;
    void Forget(Subscription& subscription) noexcept;
    void End(Subscription& subscription) noexcept;

    ContextHash m_hash;
    std::vector<Context*> m_contexts; // chains; as many as a power of two
    std::size_t m_numContexts = 0;
    Context* m_latest = nullptr;              // that was asked for: often it is the same again
    std::vector<Subscription*> m_subscribers; // chains of each one's first; one less than a power of two
    std::size_t m_numSubscribers = 0;
    std::unordered_map<const Subscriber*, ByContext> m_many; // those who have, or had, more than kMany
};

/// A subscriber's place in a context. The lists that it stands in own it.
struct ContextRegistry::Subscription {
    Subscriber* subscriber; // null when it has ended
    Context* context;
    Subscription* previous = nullptr; // of the same subscriber
    Subscription* next = nullptr;
    Subscription* nextInBucket = nullptr; // of a subscriber's first
    Subscription* continuation = nullptr; // owned; the same subscriber's in the context that took this one in
    std::uint32_t place = 0;              // in the list of its context
    std::uint32_t numOwners = 0;

    // Who is to be called now.
    Subscriber* Current() const {
        if (subscriber) return subscriber;
        const Subscription* last = this;
        while (last->continuation) last = last->continuation;
        return last->subscriber;
    }
    static void Release(Subscription* subscription) noexcept;
};

class ContextRegistry::Context {
public:
    Context(std::wstring_view name, std::uint64_t hash) : m_name(name), m_hash(hash) {}
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context();

private:
    friend class ContextRegistry;
    friend class Walk;

    // By bytes, which is quicker than by characters where no order is asked for.
    bool IsNamed(std::wstring_view name) const {
        return name.size() == m_name.size() &&
               std::memcmp(name.data(), m_name.data(), name.size() * sizeof(wchar_t)) == 0;
    }
    void MakeRoomFor(std::size_t count);
    void Append(Subscription& subscription) noexcept;
    void Vacate(std::size_t place) noexcept;
    void CloseUp() noexcept;

    std::wstring m_name;
    std::uint64_t m_hash;
    Context* m_nextInBucket = nullptr;
    std::vector<Subscription*> m_list; // the latest last; null where one has left
    std::size_t m_numVacant = 0;
    Walk* m_walks = nullptr;
    bool m_isDetached = false; // from its registry: the last walk deletes it
};

/// Goes through the subscribers that a context has at the beginning, the latest first, and passes over those
/// that are unsubscribed meanwhile.
class ContextRegistry::Walk {
public:
    explicit Walk(Context& context);
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk();

    /// Null at the end.
    Subscriber* Next() {
        while (m_next > 0) {
            const Subscription* const subscription = m_context.m_list[--m_next];
            Subscriber* const subscriber = subscription ? subscription->Current() : nullptr;
            if (subscriber) return subscriber;
        }
        return nullptr;
    }

private:
    friend class Context;

    Context& m_context;
    std::size_t m_next; // the place behind the one that comes next
    Walk* m_outer;      // a walk of the same context that this one interrupts
};

} // namespace UTL
