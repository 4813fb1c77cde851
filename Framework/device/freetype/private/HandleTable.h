// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <utility>
#include <vector>

/// Values that stand behind handles. A handle is a number that is never given twice, so one that was deleted,
/// or that another table gave, stands for nothing. Any thread may call.
template <typename T> class HandleTable {
public:
    /// `tag` (0 to 3) tells the handles of one table from those of another.
    explicit HandleTable(unsigned tag) : m_tag(tag) {}

    /// Null when there are a million already.
    void* Add(T value) {
        const std::lock_guard lock(m_guard);
        std::size_t index = m_slots.size();
        if (!m_free.empty()) {
            index = m_free.back();
            m_free.pop_back();
        } else if (index >> kIndexBits == 0) {
            m_slots.emplace_back();
            m_free.reserve(m_slots.capacity()); // so that no removal needs memory
        } else {
            return nullptr;
        }
        Slot& slot = m_slots[index];
        slot.handle = ((++m_lastSerial << kIndexBits | index) << kTagBits) | m_tag;
        slot.value = std::move(value);
        return reinterpret_cast<void*>(slot.handle); // NOLINT(performance-no-int-to-ptr): no address
    }

    /// Calls `use` with the value, which no other call reaches meanwhile. False when there is none.
    template <typename Use> bool Access(void* handle, const Use& use) {
        const std::lock_guard lock(m_guard);
        Slot* const slot = Find(handle);
        if (slot) use(slot->value);
        return slot != nullptr;
    }

    /// Takes the value away when `mayGo` says so of it. False when there is none, or it may not.
    template <typename MayGo> bool Remove(void* handle, const MayGo& mayGo) {
        T value; // goes when others may call again
        const std::lock_guard lock(m_guard);
        Slot* const slot = Find(handle);
        if (!slot || !mayGo(slot->value)) return false;
        value = std::move(slot->value); // what is left is reached by nobody
        slot->handle = 0;
        m_free.push_back(static_cast<std::uint32_t>(slot - m_slots.data()));
        return true;
    }

private:
    static_assert(sizeof(void*) == 8, "with fewer bits the serial numbers would come round");
    static constexpr unsigned kTagBits = 2;
    static constexpr unsigned kIndexBits = 20;

    struct Slot {
        std::uintptr_t handle = 0; // none
        T value;
    };

    Slot* Find(void* handle) {
        const auto number = reinterpret_cast<std::uintptr_t>(handle);
        const std::size_t index = number >> kTagBits & ((std::size_t{1} << kIndexBits) - 1);
        if (number == 0 || index >= m_slots.size() || m_slots[index].handle != number) return nullptr;
        return &m_slots[index];
    }

    std::uintptr_t m_tag;
    std::uintptr_t m_lastSerial = 0;
    std::vector<Slot> m_slots;
    std::vector<std::uint32_t> m_free;
    std::mutex m_guard;
};
