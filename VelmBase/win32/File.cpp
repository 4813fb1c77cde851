#include "VelmBase/File.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <utility>
#include <vector>
#include <windows.h>

namespace {

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class Handle {
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    ~Handle() {
        if (IsOpen()) CloseHandle(m_handle);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle(Handle&& other) noexcept : m_handle(other.Release()) {}

    HANDLE Get() const { return m_handle; }
    HANDLE Release() { return std::exchange(m_handle, INVALID_HANDLE_VALUE); }
    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }

private:
    HANDLE m_handle;
};

// Tries again for about a second what another program may be in the way of: a virus scanner, an indexer, a
// backup, or somebody else who saves the same file.
class Patience {
public:
    bool Wait() const {
        if (GetTickCount64() - m_start >= kLimit) return false;
        Sleep(kPause);
        return true;
    }

private:
    static constexpr ULONGLONG kLimit = 1000; // milliseconds
    static constexpr DWORD kPause = 2;
    ULONGLONG m_start = GetTickCount64();
};

bool IsInTheWay(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED ||
           error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE;
}

// The path as the file functions take it at any length: absolute, and with the prefix that lifts the limit of
// 260 characters where it is needed. Empty when it names nothing; one with a NUL character would name another
// file than its text says.
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
                  SECURITY_ATTRIBUTES* security = nullptr) {
    return Handle(CreateFileW(native.c_str(), access, share, security, creation, attributes, nullptr));
}

// A folder is refused by CreateFile itself.
Handle OpenRegular(const std::wstring& path, DWORD access, DWORD creation) {
    const std::wstring native = NativePath(path);
    if (native.empty()) return Handle(INVALID_HANDLE_VALUE);
    Handle file = OpenNative(native, access, kShareAll, creation, FILE_ATTRIBUTE_NORMAL);
    if (file.IsOpen() && GetFileType(file.Get()) != FILE_TYPE_DISK) return Handle(INVALID_HANDLE_VALUE);
    return file;
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

bool WriteAll(HANDLE file, std::string_view content) {
    while (!content.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, content.data(), BlockOf(content.size()), &written, nullptr) || written == 0)
            return false;
        content.remove_prefix(written);
    }
    return true;
}

bool ReadAll(HANDLE file, std::string& content) {
    for (std::size_t done = 0; done < content.size();) {
        DWORD got = 0;
        if (!ReadFile(file, content.data() + done, BlockOf(content.size() - done), &got, nullptr) || got == 0)
            return false;
        done += got;
    }
    return true;
}

// Overwrites an existing file where it is. What fails half way is put back.
bool WriteInPlace(const std::wstring& native, const FILES::ContentComposer& compose) {
    if (!compose([](std::string_view) { return true; })) return false;
    const Handle file = OpenNative(native, GENERIC_READ | GENERIC_WRITE, kShareAll, OPEN_EXISTING, 0);
    std::uint64_t size = 0;
    if (!file.IsOpen() || !SizeOf(file.Get(), size)) return false;
    std::string old(static_cast<std::size_t>(size), '\0');
    if (!ReadAll(file.Get(), old)) return false;

    const auto put = [&](const FILES::ContentComposer& content) {
        const auto write = [&](std::string_view piece) { return WriteAll(file.Get(), piece); };
        return SetFilePointerEx(file.Get(), {}, nullptr, FILE_BEGIN) && content(write) &&
               SetEndOfFile(file.Get()) && FlushFileBuffers(file.Get());
    };
    const auto undo = [&] { return put([&](const FILES::ContentSink& sink) { return sink(old); }); };
    try {
        if (put(compose)) return true;
    } catch (...) {
        undo();
        throw;
    }
    undo();
    return false;
}

// The security descriptor with the access list of a file; empty on a file system without one.
std::vector<std::byte> AccessList(HANDLE file) {
    DWORD size = 0;
    GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> list(size);
    if (!GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, list.data(), size, &size)) list.clear();
    return list;
}

// Gives a file that was made with the entries of the list what else the list says.
bool SetAccessList(HANDLE file, std::vector<std::byte>& list) {
    if (list.empty()) return true;
    // Entries that were inherited from the folder stay marked as such.
    constexpr SECURITY_DESCRIPTOR_CONTROL kKeepInherited = SE_DACL_AUTO_INHERIT_REQ;
    SetSecurityDescriptorControl(list.data(), kKeepInherited, kKeepInherited);
    return SetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, list.data());
}

// The path of an open file behind all links.
std::wstring FinalPath(HANDLE file) {
    std::wstring path(GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), FILE_NAME_NORMALIZED);
    if (length >= path.size()) return {};
    path.resize(length);
    return path;
}

// What stands at a path, and what a file that takes its place has to keep.
struct Target {
    enum { NOTHING, WRITABLE_FILE, OTHER } kind = OTHER;
    std::wstring path; // behind links
    DWORD attributes = 0;
    DWORD numLinks = 0;
    std::vector<std::byte> accessList;
};

Target LookAt(const std::wstring& native) {
    Target target;
    target.path = native;
    const DWORD attributes = GetFileAttributesW(native.c_str());
    const bool isLink = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
    // Only looking is allowed, however others have opened the file.
    const Handle file = OpenNative(native, FILE_READ_ATTRIBUTES | READ_CONTROL, kShareAll, OPEN_EXISTING, 0);
    if (!file.IsOpen()) {
        if (!isLink && GetLastError() == ERROR_FILE_NOT_FOUND) target.kind = Target::NOTHING;
        return target;
    }
    BY_HANDLE_FILE_INFORMATION info{};
    if (GetFileType(file.Get()) != FILE_TYPE_DISK || !GetFileInformationByHandle(file.Get(), &info))
        return target;
    if (isLink) target.path = FinalPath(file.Get());
    // Whether the access list allows writing is asked by opening; that others do not share it is no answer.
    const bool denied = !OpenNative(native, FILE_WRITE_DATA, kShareAll, OPEN_EXISTING, 0).IsOpen() &&
                        GetLastError() == ERROR_ACCESS_DENIED;
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_READONLY) || denied) return target;
    target.kind = Target::WRITABLE_FILE;
    target.attributes = info.dwFileAttributes;
    target.numLinks = info.nNumberOfLinks;
    target.accessList = AccessList(file.Get());
    return target;
}

// A new temporary file that no other process can write, rename or delete while it is open; the file of a
// killed process is not open and is removed. Readers are let in, since the handle is still open when the file
// has its final name, but none whom the access list does not: it stands from the first moment.
Handle CreateTemporary(const std::wstring& native, DWORD attributes, std::vector<std::byte> accessList,
                       DWORD& error) {
    constexpr DWORD kAccess = GENERIC_WRITE | DELETE | READ_CONTROL | WRITE_DAC;
    SECURITY_ATTRIBUTES security{sizeof security, accessList.data(), FALSE};
    // Protected from what the folder would add to it.
    if (!accessList.empty())
        SetSecurityDescriptorControl(accessList.data(), SE_DACL_PROTECTED, SE_DACL_PROTECTED);
    for (const Patience patience;;) {
        Handle created = OpenNative(native, kAccess, FILE_SHARE_READ, CREATE_NEW, attributes,
                                    accessList.empty() ? nullptr : &security);
        if (created.IsOpen()) return created;
        error = GetLastError();
        if (error == ERROR_FILE_EXISTS) {
            if (DeleteFileW(native.c_str())) continue;
            error = GetLastError();
            if (error == ERROR_FILE_NOT_FOUND) continue; // its owner has just finished
        } else if (GetFileAttributesW(native.c_str()) == INVALID_FILE_ATTRIBUTES &&
                   GetLastError() == ERROR_FILE_NOT_FOUND) {
            return created; // it is the folder that does not take it
        }
        if (!IsInTheWay(error)) return created;
        if (!patience.Wait()) {
            error = ERROR_SHARING_VIOLATION;
            return created;
        }
    }
}

bool Rename(HANDLE file, const std::wstring& native) {
    const std::size_t nameSize = native.size() * sizeof(wchar_t);
    std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + nameSize);
    auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    info->FileNameLength = static_cast<DWORD>(nameSize);
    std::memcpy(info->FileName, native.data(), nameSize);

    const auto rename = [&](FILE_INFO_BY_HANDLE_CLASS how) {
        return SetFileInformationByHandle(file, how, info, static_cast<DWORD>(buffer.size()));
    };
    // Replaces a file that others have open too, if they let it be deleted. Systems before Windows 10 and
    // some network drives do not know it.
    constexpr auto kFileRenameInfoEx =
        static_cast<FILE_INFO_BY_HANDLE_CLASS>(22); // missing in mingw's headers
    info->Flags = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    if (rename(kFileRenameInfoEx)) return true;
    const DWORD error = GetLastError();
    if (error != ERROR_INVALID_PARAMETER && error != ERROR_INVALID_FUNCTION && error != ERROR_NOT_SUPPORTED &&
        error != ERROR_CALL_NOT_IMPLEMENTED && error != ERROR_INVALID_LEVEL)
        return false;
    info->Flags = 0;
    info->ReplaceIfExists = TRUE;
    return rename(FileRenameInfo);
}

void Discard(HANDLE file) {
    FILE_DISPOSITION_INFO info{TRUE};
    SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info);
}

// The steps and their order are those of posix/File.cpp, which tells why.
bool Replace(const std::wstring& path, const FILES::ContentComposer& compose, FILES::InPlace inPlace) {
    Target target = LookAt(NativePath(path));
    if (target.kind == Target::OTHER) return false;
    const bool exists = target.kind == Target::WRITABLE_FILE;
    const auto writeInPlace = [&] {
        return inPlace == FILES::InPlace::ALLOWED && WriteInPlace(target.path, compose);
    };
    if (exists && target.numLinks > 1) return writeInPlace();

    const std::size_t nameStart = target.path.rfind(L'\\') + 1;
    const std::wstring name = target.path.substr(nameStart);
    // A colon would make the name that of a stream inside another file.
    if (name.empty() || name.find(L':') != std::wstring::npos) return false;
    // A long name is cut so that the temporary name still fits; a clash only makes two writers take turns.
    constexpr std::size_t kLongestName = 255;
    const std::wstring temporaryPath =
        target.path.substr(0, nameStart) + L"." + name.substr(0, kLongestName - 8) + L".saving";

    constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                      FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ENCRYPTED;
    const DWORD attributes = exists ? target.attributes & kKeptAttributes : FILE_ATTRIBUTE_NORMAL;
    DWORD error = 0;
    const Handle temporary = CreateTemporary(temporaryPath, attributes, target.accessList, error);
    if (!temporary.IsOpen()) {
        const bool folderIsClosed = error == ERROR_ACCESS_DENIED || error == ERROR_WRITE_PROTECT;
        return exists && folderIsClosed && writeInPlace();
    }

    const auto giveUp = [&] {
        Discard(temporary.Get());
        return false;
    };
    if (!SetAccessList(temporary.Get(), target.accessList)) {
        giveUp();
        return writeInPlace();
    }
    try {
        if (!compose([&](std::string_view piece) { return WriteAll(temporary.Get(), piece); }))
            return giveUp();
    } catch (...) {
        giveUp();
        throw;
    }
    if (!FlushFileBuffers(temporary.Get())) return giveUp();
    for (const Patience patience; !Rename(temporary.Get(), target.path);)
        if (!IsInTheWay(GetLastError()) || !patience.Wait()) return giveUp();
    // The file is the new one from here on; this makes the new name as durable as the content. Where it
    // fails, it is only left open which of the two whole files a power loss would bring back.
    FlushFileBuffers(temporary.Get());
    return true;
}

} // namespace

namespace FILES {

Reader::Reader(const std::wstring& path) {
    Handle file = OpenRegular(path, GENERIC_READ, OPEN_EXISTING);
    if (!file.IsOpen() || !SizeOf(file.Get(), m_size)) {
        m_error = LastError();
        return;
    }
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

    Handle file =
        OpenRegular(path, (reads ? GENERIC_READ : 0u) | (writes ? GENERIC_WRITE : 0u),
                    letters[0] == L'r'                                                    ? OPEN_EXISTING
                    : letters[0] == L'w' && letters.find(L'x') != std::wstring_view::npos ? CREATE_NEW
                                                                                          : OPEN_ALWAYS);
    // Emptied here: CREATE_ALWAYS refuses a hidden file and changes the attributes of the others.
    if (!file.IsOpen() || (letters[0] == L'w' && !SetEndOfFile(file.Get()))) return nullptr;
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

std::error_code ReplaceContents(const std::wstring& path, std::string_view content) {
    return ReplaceContents(
        path, [&](const ContentSink& sink) { return sink(content); }, InPlace::ALLOWED);
}

std::error_code ReplaceContents(const std::wstring& path, const ContentComposer& compose, InPlace inPlace) {
    SetLastError(0);
    if (Replace(path, compose, inPlace)) return {};
    return GetLastError() ? LastError() : std::make_error_code(std::errc::operation_canceled);
}

std::error_code UpdateContents(const std::wstring& path, const ContentChange& change) {
    std::string content;
    bool exists = false;
    {
        Reader file(path);
        exists = file.IsOpen();
        if (!exists && file.Error() != std::errc::no_such_file_or_directory) return file.Error();
        content.resize(static_cast<std::size_t>(file.Size()));
        std::size_t done = 0;
        while (const std::size_t got = exists ? file.Read(content.data() + done, content.size() - done) : 0)
            done += got;
        content.resize(done);
    }
    if (!change(content, exists)) return {};
    return ReplaceContents(path, content);
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
