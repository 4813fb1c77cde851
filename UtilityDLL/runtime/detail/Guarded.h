// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <utility>

/// A value that one thread sets while others ask for it.
template <typename T> class Guarded {
public:
    Guarded() = default;
    Guarded(const Guarded& other) : m_value(other.Get()) {}
    Guarded(Guarded&& other) noexcept : m_value(other.Take()) {}
    ~Guarded() = default;

    Guarded& operator=(const Guarded& other) { return *this = other.Get(); }
    Guarded& operator=(Guarded&& other) noexcept { return *this = other.Take(); }
    Guarded& operator=(const T& value) { // in the room of the old one, where there is enough
        const std::lock_guard lock(m_guard);
        m_value = value;
        return *this;
    }
    Guarded& operator=(T&& value) {
        const std::lock_guard lock(m_guard);
        std::swap(m_value, value); // the old one is let go outside the lock
        return *this;
    }
    Guarded& operator+=(const T& more) {
        const std::lock_guard lock(m_guard);
        m_value += more;
        return *this;
    }

    T Get() const {
        const std::lock_guard lock(m_guard);
        return m_value;
    }
    operator T() const { return Get(); }

private:
    T Take() {
        const std::lock_guard lock(m_guard);
        return std::move(m_value);
    }

    mutable std::mutex m_guard;
    T m_value{};
};
