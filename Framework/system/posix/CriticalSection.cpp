// SPDX-License-Identifier: MIT
#include "Framework/system/CriticalSection.h"

#include <cerrno>
#include <memory>
#include <semaphore.h>
#include <system_error>

namespace {

sem_t* Semaphore(void* lock) { return static_cast<sem_t*>(lock); }

} // namespace

CCriticalSection::CCriticalSection() {
    auto semaphore = std::make_unique<sem_t>();
    if (sem_init(semaphore.get(), 0, 1) != 0) throw std::system_error(errno, std::system_category());
    m_lock = semaphore.release();
}

CCriticalSection::~CCriticalSection() {
    sem_destroy(Semaphore(m_lock));
    delete Semaphore(m_lock);
}

void CCriticalSection::Lock() {
    while (sem_wait(Semaphore(m_lock)) != 0 && errno == EINTR) {
    }
}

void CCriticalSection::Unlock() { sem_post(Semaphore(m_lock)); }
