// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/private/ContextHash.h"

#include <random>

ContextHash::ContextHash() {
    std::random_device device;
    for (std::uint64_t& secret : m_secret) secret = std::uint64_t{device()} << 32 | device();
}
