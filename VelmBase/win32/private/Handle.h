// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>
#include <utility>
#include <windows.h>

// Open files of the system, for the sources of FILES.
namespace FILES {

/// The reason that the system gives by one of its numbers, where std::errc has it too so that they are equal.
inline std::error_code ErrorOf(DWORD number) {
    switch (number) {
    case ERROR_USER_MAPPED_FILE:
        return std::make_error_code(std::errc::device_or_resource_busy);
    case ERROR_INVALID_NAME:
        return std::make_error_code(std::errc::invalid_argument);
    case ERROR_CANT_RESOLVE_FILENAME:
        return std::make_error_code(std::errc::too_many_symbolic_link_levels);
    default:
        return {static_cast<int>(number), std::system_category()};
    }
}

/// Why the system call before has failed.
inline std::error_code LastError() { return ErrorOf(GetLastError()); }

class Handle {
public:
    explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) : m_handle(handle) {}
    ~Handle() {
        if (IsOpen()) CloseHandle(m_handle);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle(Handle&& other) noexcept : m_handle(other.Release()) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }

    HANDLE Get() const { return m_handle; }
    HANDLE Release() { return std::exchange(m_handle, INVALID_HANDLE_VALUE); }
    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }

private:
    HANDLE m_handle;
};

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The path as the file functions take it at any length: absolute, and with the prefix that lifts the limit
/// of 260 characters where it is needed. Empty when it names nothing; one with a NUL character would name
/// another file than its text says.
std::wstring NativePath(const std::wstring& path);

Handle OpenNative(const std::wstring& native, DWORD access, DWORD share, DWORD creation, DWORD attributes,
                  SECURITY_ATTRIBUTES* security = nullptr);

/// Why `native` could not be opened as a file, by the number that the system gave for it.
std::error_code ReasonNotOpened(const std::wstring& native, DWORD number);

bool SizeOf(HANDLE file, std::uint64_t& size);

/// As much of `count` bytes as one call reads or writes.
DWORD BlockOf(std::size_t count);

} // namespace FILES
