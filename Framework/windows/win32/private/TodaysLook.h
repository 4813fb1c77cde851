// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/WindowTypes.h"

/// While it lives, controls that this thread makes are those of today's Windows: a program without a manifest
/// of its own would get those of the first ones.
class TodaysLook {
public:
    TodaysLook();
    ~TodaysLook();
    TodaysLook(const TodaysLook&) = delete;
    TodaysLook& operator=(const TodaysLook&) = delete;

private:
    ULONG_PTR m_cookie = 0;
    bool m_isActive = false;
};

/// The library that this is in.
HINSTANCE ThisLibrary();
