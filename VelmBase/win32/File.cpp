// SPDX-License-Identifier: MIT
#include "VelmBase/File.h"

#include "VelmBase/win32/private/Handle.h"

#include <algorithm>
#include <fcntl.h>
#include <io.h>

namespace FILES {

std::wstring NativePath(const std::wstring& path) {
    if (path.empty() || path.find(L'\0') != std::wstring::npos) return {};
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    if (full.size() >= size) return {}; // the current folder has changed meanwhile
    // The temporary file's name is longer than the file's.
    constexpr std::size_t kRoomForTemporary = 16;
    if (full.size() + kRoomForTemporary < MAX_PATH || full.starts_with(LR"(\\?\)") ||
        full.starts_with(LR"(\\.\)"))
        return full;
    return full.starts_with(LR"(\\)") ? LR"(\\?\UNC\)" + full.substr(2) : LR"(\\?\)" + full;
}

Handle OpenNative(const std::wstring& native, DWORD access, DWORD share, DWORD creation, DWORD attributes,
                  SECURITY_ATTRIBUTES* security) {
    return Handle(CreateFileW(native.c_str(), access, share, security, creation, attributes, nullptr));
}

std::error_code ReasonNotOpened(const std::wstring& native, DWORD number) {
    const DWORD attributes = GetFileAttributesW(native.c_str());
    const bool isFolder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
    return isFolder ? std::make_error_code(std::errc::is_a_directory) : ErrorOf(number);
}

bool SizeOf(HANDLE file, std::uint64_t& size) {
    LARGE_INTEGER value{};
    if (!GetFileSizeEx(file, &value)) return false;
    size = static_cast<std::uint64_t>(value.QuadPart);
    return true;
}

DWORD BlockOf(std::size_t count) {
    constexpr std::size_t kLargest = 1u << 30;
    return static_cast<DWORD>(std::min(count, kLargest));
}

namespace {

std::error_code OpenRegular(const std::wstring& path, DWORD access, DWORD creation, Handle& file) {
    const std::wstring native = NativePath(path);
    if (native.empty()) return std::make_error_code(std::errc::invalid_argument);
    file = OpenNative(native, access, kShareAll, creation, FILE_ATTRIBUTE_NORMAL);
    if (!file.IsOpen()) return ReasonNotOpened(native, GetLastError());
    const bool isRegular = GetFileType(file.Get()) == FILE_TYPE_DISK;
    return isRegular ? std::error_code() : std::make_error_code(std::errc::invalid_argument);
}

} // namespace

Reader::Reader(const std::wstring& path) {
    Handle file;
    m_error = OpenRegular(path, GENERIC_READ, OPEN_EXISTING, file);
    if (!m_error && !SizeOf(file.Get(), m_size)) m_error = LastError();
    if (m_error) return;
    m_handle = reinterpret_cast<std::intptr_t>(file.Release());
}

Reader::~Reader() {
    if (IsOpen()) CloseHandle(reinterpret_cast<HANDLE>(m_handle));
}

std::size_t Reader::Read(void* buffer, std::size_t count) {
    DWORD got = 0;
    const bool read = ReadFile(reinterpret_cast<HANDLE>(m_handle), buffer, BlockOf(count), &got, nullptr);
    if (!read && !m_error) m_error = LastError();
    return read ? got : 0;
}

std::FILE* OpenStream(const std::wstring& path, const wchar_t* mode) {
    const std::wstring_view letters = mode ? mode : L"";
    if (letters.empty()) return nullptr;
    const bool both = letters.find(L'+') != std::wstring_view::npos;
    const bool reads = letters[0] == L'r' || both;
    const bool writes = letters[0] != L'r' || both;
    std::wstring streamMode(1, letters[0]);
    if (letters[0] != L'r' && letters[0] != L'w' && letters[0] != L'a') return nullptr;
    if (both) streamMode += L'+';
    streamMode += L'b';

    const bool isNew = letters.find(L'x') != std::wstring_view::npos;
    const DWORD creation = letters[0] == L'r'            ? OPEN_EXISTING
                           : letters[0] == L'w' && isNew ? CREATE_NEW
                                                         : OPEN_ALWAYS;
    Handle file;
    if (OpenRegular(path, (reads ? GENERIC_READ : 0u) | (writes ? GENERIC_WRITE : 0u), creation, file))
        return nullptr;
    // Emptied here: CREATE_ALWAYS refuses a hidden file and changes the attributes of the others.
    if (letters[0] == L'w' && !SetEndOfFile(file.Get())) return nullptr;
    const int flags =
        _O_BINARY | (writes ? both ? _O_RDWR : _O_WRONLY : _O_RDONLY) | (letters[0] == L'a' ? _O_APPEND : 0);
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file.Get()), flags);
    if (descriptor == -1) return nullptr;
    file.Release();
    std::FILE* const stream = _wfdopen(descriptor, streamMode.c_str());
    if (!stream) _close(descriptor);
    return stream;
}

std::int64_t Position(std::FILE* stream) { return _ftelli64(stream); }

bool SeekTo(std::FILE* stream, std::int64_t offset, int origin) {
    return _fseeki64(stream, offset, origin) == 0;
}

bool ModificationTime(const std::wstring& path, std::uint32_t& seconds) {
    const Handle file = OpenNative(NativePath(path), FILE_READ_ATTRIBUTES, kShareAll, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS);
    FILETIME time{};
    if (!file.IsOpen() || !GetFileTime(file.Get(), nullptr, nullptr, &time)) return false;
    // From tenths of a microsecond since 1601, rounded down.
    constexpr std::int64_t kTicks = 10'000'000;
    constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
    const std::uint64_t ticks = static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    seconds = static_cast<std::uint32_t>(static_cast<std::int64_t>(ticks) / kTicks - kSecondsTo1970);
    return true;
}

} // namespace FILES
