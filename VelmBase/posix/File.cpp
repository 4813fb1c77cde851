// SPDX-License-Identifier: MIT
#include "VelmBase/File.h"

#include "VelmBase/WideString.h"
#include "VelmBase/posix/private/Descriptor.h"

#include <fcntl.h>

namespace FILES {

namespace {

// A path with a NUL character would name another file than its text says.
bool IsNameable(const std::wstring& path) { return !path.empty() && path.find(L'\0') == std::wstring::npos; }

// O_NONBLOCK keeps a pipe without a partner from blocking; it means nothing for a regular file.
std::error_code OpenRegular(const std::wstring& path, int flags, Descriptor& file, struct stat& status) {
    if (!IsNameable(path)) return std::make_error_code(std::errc::invalid_argument);
    const std::string name = ToUtf8(path);
    file = Descriptor(Retry([&] { return open(name.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666); }));
    if (!file.IsOpen()) // a socket, a pipe that nobody reads
        return errno == ENXIO ? std::make_error_code(std::errc::invalid_argument) : LastError();
    const std::error_code error = Status(file.Get(), status);
    return error ? error : KindError(status.st_mode);
}

} // namespace

Reader::Reader(const std::wstring& path) {
    struct stat status {};
    Descriptor file;
    m_error = OpenRegular(path, O_RDONLY, file, status);
    if (m_error) return;
    m_size = static_cast<std::uint64_t>(status.st_size);
    m_handle = file.Release();
}

Reader::~Reader() {
    if (IsOpen()) close(static_cast<int>(m_handle));
}

std::size_t Reader::Read(void* buffer, std::size_t count) {
    const ssize_t got = Retry([&] { return read(static_cast<int>(m_handle), buffer, count); });
    if (got < 0 && !m_error) m_error = LastError();
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

std::FILE* OpenStream(const std::wstring& path, const wchar_t* mode) {
    const std::wstring_view letters = mode ? mode : L"";
    if (letters.empty()) return nullptr;
    const bool both = letters.find(L'+') != std::wstring_view::npos;
    int flags = 0;
    std::string streamMode;
    switch (letters[0]) {
    case L'r':
        flags = both ? O_RDWR : O_RDONLY;
        streamMode = "r";
        break;
    case L'w':
        flags = (both ? O_RDWR : O_WRONLY) | O_CREAT |
                (letters.find(L'x') != std::wstring_view::npos ? O_EXCL : O_TRUNC);
        streamMode = "w";
        break;
    case L'a':
        flags = (both ? O_RDWR : O_WRONLY) | O_CREAT | O_APPEND;
        streamMode = "a";
        break;
    default:
        return nullptr;
    }
    if (both) streamMode += '+';
    struct stat status {};
    Descriptor file;
    if (OpenRegular(path, flags, file, status)) return nullptr;
    std::FILE* stream = fdopen(file.Get(), streamMode.c_str());
    if (stream) file.Release();
    return stream;
}

std::int64_t Position(std::FILE* stream) { return ftello(stream); }

bool SeekTo(std::FILE* stream, std::int64_t offset, int origin) {
    return fseeko(stream, offset, origin) == 0;
}

bool ModificationTime(const std::wstring& path, std::uint32_t& seconds) {
    struct stat status {};
    if (!IsNameable(path) || stat(ToUtf8(path).c_str(), &status) != 0) return false;
    seconds = static_cast<std::uint32_t>(status.st_mtime);
    return true;
}

} // namespace FILES
