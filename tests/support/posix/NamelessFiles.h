// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

// Files without a name, which not every file system has: included by one source of a program, this takes them
// from the program while there is an environment variable WITHOUT_NAMELESS_FILES.

extern "C" __attribute__((visibility("default"))) int openat(int folder, const char* name, int flags, ...) {
    const bool isNameless = (flags & O_TMPFILE) == O_TMPFILE;
    mode_t mode = 0;
    if (isNameless || (flags & O_CREAT)) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, mode_t);
        va_end(rest);
    }
    if (isNameless && std::getenv("WITHOUT_NAMELESS_FILES")) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return static_cast<int>(syscall(SYS_openat, folder, name, flags, mode));
}
