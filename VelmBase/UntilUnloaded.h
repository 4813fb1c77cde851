// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <memory>
#include <new>

/// Whether this process is ending, and does not only unload a library and go on. To be asked while objects of
/// a library are destroyed. Linux does not tell one from the other: true there.
VELMBASE_API bool IsProcessEnding();

/// A static object of a library, destroyed when the library is unloaded. When the process ends it is left as
/// it is: there may be threads at work that use it, or that have been stopped with a lock in their hands.
template <typename T> class UntilUnloaded {
public:
    UntilUnloaded() { new (m_place) T; } ///< makes the object
    ~UntilUnloaded() {
        if (!IsProcessEnding()) std::destroy_at(&operator*());
    }
    UntilUnloaded(const UntilUnloaded&) = delete;
    UntilUnloaded& operator=(const UntilUnloaded&) = delete;

    /// The object.
    /// @{
    T& operator*() { return *std::launder(reinterpret_cast<T*>(m_place)); }
    T* operator->() { return &operator*(); }
    /// @}

private:
    alignas(T) unsigned char m_place[sizeof(T)];
};
