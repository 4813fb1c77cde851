// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <utility>

/// An immutable value that copies share, in the space of one pointer: a settings file repeats its key names
/// in every section, and most comments are empty. The default value costs nothing. Copies may live in
/// different threads.
template <typename T> class SharedValue {
public:
    SharedValue() = default;
    explicit SharedValue(T value) : m_body(new Body{std::move(value)}) {}
    SharedValue(const SharedValue& other) noexcept : m_body(other.m_body) {
        if (m_body) m_body->owners.fetch_add(1, std::memory_order_relaxed);
    }
    SharedValue(SharedValue&& other) noexcept : m_body(std::exchange(other.m_body, nullptr)) {}
    SharedValue& operator=(SharedValue other) noexcept {
        std::swap(m_body, other.m_body);
        return *this;
    }
    ~SharedValue() {
        if (m_body && m_body->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) delete m_body;
    }

    /// The value; T() where none was given.
    const T& Get() const {
        static const T none{};
        return m_body ? m_body->value : none;
    }

    /// Whether both are one value in memory, or none.
    bool SharesWith(const SharedValue& other) const { return m_body == other.m_body; }

private:
    struct Body {
        T value;
        std::atomic<unsigned int> owners{1};
    };
    Body* m_body = nullptr;
};
