// SPDX-License-Identifier: MIT
#include "Framework/system/NamedMutex.h"

#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace {

// What all mutexes of one name share.
struct Shared {
    std::mutex guard;
    std::thread::id owner;
    int depth = 0; // how often the owner has it; 0 while it is free
};

struct Names {
    std::mutex guard;
    std::map<std::wstring, std::weak_ptr<Shared>> byName;
};

// Never destroyed: a worker may give back the last mutex while the process ends.
Names& AllNames() {
    static Names& names = *new Names;
    return names;
}

} // namespace

struct CNamedMutex::Native {
    std::wstring name;
    std::shared_ptr<Shared> shared;
};

CNamedMutex::CNamedMutex(const std::wstring& name, NAMING naming) : m_native(std::make_unique<Native>()) {
    m_native->name = name;
    m_native->shared = std::make_shared<Shared>();
    Names& names = AllNames();
    const std::lock_guard lock(names.guard);
    const auto [known, isNew] = names.byName.try_emplace(name, m_native->shared);
    if (!isNew && naming == SHARED) m_native->shared = known->second.lock();
}

CNamedMutex::~CNamedMutex() {
    Names& names = AllNames();
    const std::lock_guard lock(names.guard);
    m_native->shared.reset(); // under the lock, so that every name in the table has its mutex
    const auto known = names.byName.find(m_native->name);
    if (known != names.byName.end() && known->second.expired()) names.byName.erase(known);
}

bool CNamedMutex::TryLock() {
    Shared& shared = *m_native->shared;
    const std::lock_guard lock(shared.guard);
    if (shared.depth > 0 && shared.owner != std::this_thread::get_id()) return false;
    shared.owner = std::this_thread::get_id();
    ++shared.depth;
    return true;
}

void CNamedMutex::Unlock() {
    Shared& shared = *m_native->shared;
    const std::lock_guard lock(shared.guard);
    if (shared.depth > 0 && shared.owner == std::this_thread::get_id()) --shared.depth;
}
