// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <cstddef>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

// Open files of the system, for the sources of FILES.
namespace FILES {

/// Does a system call that a signal interrupted again.
template <typename Call> auto Retry(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

/// Why the system call before has failed.
inline std::error_code LastError() { return {errno, std::system_category()}; }

/// The same for a call that is 0 when it succeeds, and is done here.
template <typename Call> std::error_code ErrorOf(Call call) {
    return Retry(call) == 0 ? std::error_code() : LastError();
}

class Descriptor {
public:
    explicit Descriptor(int fd = -1) : m_fd(fd) {}
    ~Descriptor() {
        if (m_fd != -1) close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_fd, other.m_fd);
        return *this;
    }

    int Get() const { return m_fd; }
    int Release() { return std::exchange(m_fd, -1); }
    bool IsOpen() const { return m_fd != -1; }

private:
    int m_fd;
};

inline std::error_code Status(int fd, struct stat& status) {
    return ErrorOf([&] { return fstat(fd, &status); });
}

/// Why what has this mode cannot be read and written as a file; no error for a regular file.
inline std::error_code KindError(mode_t mode) {
    if (S_ISREG(mode)) return {};
    return std::make_error_code(S_ISDIR(mode) ? std::errc::is_a_directory : std::errc::invalid_argument);
}

} // namespace FILES
