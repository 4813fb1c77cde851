// SPDX-License-Identifier: MIT
#include "tests/support/NoThreads.h"

#include <cstddef>
#include <pthread.h>

namespace {

std::size_t usualStack = 0;

std::size_t StackOfNewThreads() {
    pthread_attr_t attributes;
    std::size_t size = 0;
    pthread_getattr_default_np(&attributes);
    pthread_attr_getstacksize(&attributes, &size);
    pthread_attr_destroy(&attributes);
    return size;
}

void SetStackOfNewThreads(std::size_t size) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, size);
    pthread_setattr_default_np(&attributes);
    pthread_attr_destroy(&attributes);
}

} // namespace

// No address space has room for such a stack.
NoThreads::NoThreads() {
    usualStack = StackOfNewThreads();
    SetStackOfNewThreads(std::size_t{1} << 60);
}

NoThreads::~NoThreads() { SetStackOfNewThreads(usualStack); }
