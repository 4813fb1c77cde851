// SPDX-License-Identifier: MIT
#pragma once

/// The system gives this process no thread as long as one of these is there.
class NoThreads {
public:
    NoThreads();
    ~NoThreads();
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
};
