// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/private/ContextRegistry.h"

#include <algorithm>
#include <utility>

namespace UTL {

namespace {

constexpr std::size_t kFewestBuckets = 16; // a power of two

} // namespace

void ContextRegistry::Subscription::Release(Subscription* subscription) noexcept {
    while (subscription && --subscription->numOwners == 0)
        delete std::exchange(subscription, subscription->continuation);
}

ContextRegistry::Context::~Context() {
    for (Subscription* const subscription : m_list) Subscription::Release(subscription);
}

void ContextRegistry::Context::MakeRoomFor(std::size_t count) {
    const std::size_t size = m_list.size() + count;
    if (size > m_list.capacity()) m_list.reserve(std::max(size, 2 * m_list.capacity()));
}

void ContextRegistry::Context::Append(Subscription& subscription) noexcept {
    subscription.context = this;
    subscription.place = static_cast<std::uint32_t>(m_list.size());
    ++subscription.numOwners;
    m_list.push_back(&subscription);
}

void ContextRegistry::Context::Vacate(std::size_t place) noexcept {
    Subscription::Release(std::exchange(m_list[place], nullptr));
    ++m_numVacant;
    if (m_numVacant > m_list.size() / 4 * 3) CloseUp();
}

void ContextRegistry::Context::CloseUp() noexcept {
    const auto begin = m_list.begin();
    for (Walk* walk = m_walks; walk; walk = walk->m_outer) {
        const auto reached = begin + static_cast<std::ptrdiff_t>(walk->m_next);
        walk->m_next -= static_cast<std::size_t>(std::count(begin, reached, nullptr));
    }
    m_list.erase(std::remove(begin, m_list.end(), nullptr), m_list.end());
    m_numVacant = 0;
    for (std::size_t place = 0; place < m_list.size(); ++place)
        m_list[place]->place = static_cast<std::uint32_t>(place);
    if (m_list.empty()) m_list = {}; // a context may stay for long without a subscriber
}

ContextRegistry::Walk::Walk(Context& context)
    : m_context(context), m_next(context.m_list.size()), m_outer(context.m_walks) {
    m_context.m_walks = this;
}

ContextRegistry::Walk::~Walk() {
    m_context.m_walks = m_outer;
    if (m_context.m_isDetached && !m_outer) delete &m_context;
}

ContextRegistry::ContextRegistry(const ContextRegistry& other) : ContextRegistry() {
    for (const Context* context : other.m_contexts)
        for (; context; context = context->m_nextInBucket) {
            Context& copy = At(context->m_name);
            for (const Subscription* const subscription : context->m_list)
                if (subscription) Subscribe(subscription->subscriber, copy);
        }
}

ContextRegistry::~ContextRegistry() {
    for (Context* context : m_contexts)
        while (context) {
            Context* const removed = std::exchange(context, context->m_nextInBucket);
            for (Subscription* const subscription : removed->m_list)
                if (subscription) subscription->subscriber = nullptr;
            removed->m_isDetached = true;
            if (!removed->m_walks) delete removed;
        }
}

ContextRegistry::Context* ContextRegistry::Find(std::wstring_view name, std::uint64_t hash) const {
    if (m_contexts.empty()) return nullptr;
    Context* context = m_contexts[hash & (m_contexts.size() - 1)];
    while (context && !(context->m_hash == hash && context->IsNamed(name))) context = context->m_nextInBucket;
    return context;
}

ContextRegistry::Context& ContextRegistry::At(std::wstring_view name) {
    if (m_latest && m_latest->IsNamed(name)) return *m_latest;
    const std::uint64_t hash = m_hash(name);
    if (Context* const context = Find(name, hash)) return *(m_latest = context);
    MakeRoomForContext();
    auto* const context = new Context(name, hash);
    context->m_nextInBucket = std::exchange(BucketOf(hash), context);
    ++m_numContexts;
    return *(m_latest = context);
}

void ContextRegistry::MakeRoomForContext() {
    if (m_numContexts < m_contexts.size()) return;
    std::vector<Context*> old(std::max(kFewestBuckets, 2 * m_contexts.size()));
    m_contexts.swap(old);
    for (Context* context : old)
        while (context) {
            Context*& bucket = BucketOf(context->m_hash);
            Context* const moved = std::exchange(context, context->m_nextInBucket);
            moved->m_nextInBucket = std::exchange(bucket, moved);
        }
}

void ContextRegistry::Detach(Context& context) noexcept {
    Context** link = &BucketOf(context.m_hash);
    while (*link != &context) link = &(*link)->m_nextInBucket;
    *link = context.m_nextInBucket;
    --m_numContexts;
    if (m_latest == &context) m_latest = nullptr;
    context.m_isDetached = true;
    if (!context.m_walks) delete &context;
}

ContextRegistry::Subscription* ContextRegistry::FirstOf(const Subscriber* subscriber) const {
    if (m_subscribers.empty()) return nullptr;
    Subscription* first = m_subscribers[BucketOf(subscriber)];
    while (first && first->subscriber != subscriber) first = first->nextInBucket;
    return first;
}

ContextRegistry::Subscription* ContextRegistry::Find(const Subscriber* subscriber,
                                                     const Context& context) const {
    Subscription* subscription = FirstOf(subscriber);
    for (std::size_t i = 0; subscription && i < kMany; ++i, subscription = subscription->next)
        if (subscription->context == &context) return subscription;
    if (!subscription) return nullptr;
    const ByContext& byContext = m_many.find(subscriber)->second;
    const auto found = byContext.find(&context);
    return found != byContext.end() ? found->second : nullptr;
}

void ContextRegistry::MakeRoomForSubscriber() {
    if (m_numSubscribers < m_subscribers.size()) return;
    std::vector<Subscription*> old(std::max(kFewestBuckets, 2 * (m_subscribers.size() + 1)) - 1);
    m_subscribers.swap(old);
    for (Subscription* first : old)
        while (first) {
            Subscription*& bucket = m_subscribers[BucketOf(first->subscriber)];
            Subscription* const moved = std::exchange(first, first->nextInBucket);
            moved->nextInBucket = std::exchange(bucket, moved);
        }
}

// Makes sure that it is found, once it is linked, among however many of its subscriber.
void ContextRegistry::Index(Subscription& subscription) {
    Subscription* const first = FirstOf(subscription.subscriber);
    std::size_t count = 0;
    for (const Subscription* other = first; other && count < kMany; other = other->next) ++count;
    auto many = m_many.empty() ? m_many.end() : m_many.find(subscription.subscriber);
    if (many == m_many.end()) {
        if (count < kMany) return;
        ByContext byContext;
        for (Subscription* other = first; other; other = other->next)
            byContext.emplace(other->context, other);
        many = m_many.emplace(subscription.subscriber, std::move(byContext)).first;
    }
    many->second.emplace(subscription.context, &subscription);
}

void ContextRegistry::Link(Subscription& subscription) noexcept {
    if (Subscription* const first = FirstOf(subscription.subscriber)) {
        subscription.previous = first;
        subscription.next = std::exchange(first->next, &subscription);
        if (subscription.next) subscription.next->previous = &subscription;
    } else {
        Subscription*& bucket = m_subscribers[BucketOf(subscription.subscriber)];
        subscription.nextInBucket = std::exchange(bucket, &subscription);
        ++m_numSubscribers;
    }
}

void ContextRegistry::Unlink(const Subscription& subscription) noexcept {
    Subscription* const next = subscription.next;
    if (next) next->previous = subscription.previous;
    if (subscription.previous) {
        subscription.previous->next = next;
        return;
    }
    Subscription** link = &m_subscribers[BucketOf(subscription.subscriber)];
    while (*link != &subscription) link = &(*link)->nextInBucket;
    if (next) {
        next->nextInBucket = subscription.nextInBucket;
        *link = next;
    } else {
        *link = subscription.nextInBucket;
        --m_numSubscribers;
    }
}

// It stays in its list.
void ContextRegistry::Forget(Subscription& subscription) noexcept {
    Unlink(subscription);
    const Subscriber* const subscriber = std::exchange(subscription.subscriber, nullptr);
    if (m_many.empty()) return;
    const auto many = m_many.find(subscriber);
    if (many == m_many.end()) return;
    many->second.erase(subscription.context);
    if (many->second.empty()) m_many.erase(many);
}

void ContextRegistry::End(Subscription& subscription) noexcept {
    Forget(subscription);
    subscription.context->Vacate(subscription.place);
}

void ContextRegistry::Subscribe(Subscriber* subscriber, Context& context) {
    if (!subscriber || Find(subscriber, context)) return;
    context.MakeRoomFor(1);
    MakeRoomForSubscriber();
    auto subscription = std::make_unique<Subscription>(Subscription{subscriber, &context});
    Index(*subscription);
    Link(*subscription);
    context.Append(*subscription.release());
}

void ContextRegistry::UnSubscribe(const Subscriber* subscriber, Context& context) noexcept {
    if (Subscription* const subscription = Find(subscriber, context)) End(*subscription);
}

void ContextRegistry::UnSubscribe(const Subscriber* subscriber) noexcept {
    Subscription* subscription = FirstOf(subscriber);
    while (subscription) End(*std::exchange(subscription, subscription->next));
}

void ContextRegistry::Move(Context& from, Context& to) {
    to.MakeRoomFor(from.m_list.size()); // from here on nothing fails
    const bool isShared = !to.m_list.empty();
    for (std::size_t i = from.m_list.size(); i-- > 0;) {
        Subscription* const moved = from.m_list[i];
        if (!moved) continue;
        if (Subscription* const other = isShared ? Find(moved->subscriber, to) : nullptr) {
            Forget(*moved);
            moved->continuation = other;
            ++other->numOwners;
            continue;
        }
        if (const auto many = m_many.find(moved->subscriber); many != m_many.end()) {
            auto entry = many->second.extract(&from);
            entry.key() = &to;
            many->second.insert(std::move(entry));
        }
        to.Append(*moved);
    }
    Detach(from);
}

void ContextRegistry::Remove(std::wstring_view name) noexcept {
    Context* const context = Find(name, m_hash(name));
    if (!context) return;
    for (Subscription* const subscription : context->m_list)
        if (subscription) Forget(*subscription);
    Detach(*context);
}

} // namespace UTL
