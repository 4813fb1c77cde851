// SPDX-License-Identifier: MIT
#include "VelmBase/File.h"

#include "VelmBase/private/Compose.h"
#include "VelmBase/win32/private/Handle.h"

#include <cstring>
#include <exception>
#include <vector>

// How a file is replaced
//
// The steps and their reasons are those of posix/Replace.cpp, but for these:
//
//   - The lock is the temporary file itself, which no other process can open for writing. It is there before
//     the file is read.
//   - A file always has a name here. So that it goes with its process all the same, it is marked for deletion
//     as long as it is not renamed; the system deletes such a file when it is closed, whoever closes it.
//   - A file that is only written in place is opened so that nobody else can write it meanwhile.

namespace FILES {

namespace {

// Somebody has made the file that there was none of, or written the one that was read.
constexpr auto kChangedMeanwhile = std::errc::resource_unavailable_try_again;

// Tries again for some time what others may be in the way of.
class Patience {
public:
    explicit Patience(ULONGLONG milliseconds) : m_end(GetTickCount64() + milliseconds) {}
    bool Wait() const {
        constexpr DWORD kPause = 2;
        if (GetTickCount64() >= m_end) return false;
        Sleep(kPause);
        return true;
    }

private:
    ULONGLONG m_end;
};
constexpr ULONGLONG kForOurTurn = 10'000;
constexpr ULONGLONG kForOtherPrograms = 1000; // a virus scanner, an indexer, a backup

bool IsInTheWay(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED ||
           error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE;
}

bool IsRefusal(const std::error_code& error) {
    return error == std::errc::permission_denied || error == std::errc::read_only_file_system;
}

std::error_code WriteAll(HANDLE file, std::string_view content) {
    while (!content.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, content.data(), BlockOf(content.size()), &written, nullptr)) return LastError();
        if (written == 0) return std::make_error_code(std::errc::io_error);
        content.remove_prefix(written);
    }
    return {};
}

std::error_code ReadAll(HANDLE file, std::string& content) {
    std::uint64_t size = 0;
    if (!SizeOf(file, size) || !SetFilePointerEx(file, {}, nullptr, FILE_BEGIN)) return LastError();
    try {
        content.resize(static_cast<std::size_t>(size));
    } catch (const std::exception&) {
        return std::make_error_code(std::errc::not_enough_memory);
    }
    std::size_t done = 0;
    while (done < content.size()) {
        DWORD got = 0;
        if (!ReadFile(file, content.data() + done, BlockOf(content.size() - done), &got, nullptr))
            return LastError();
        if (got == 0) break;
        done += got;
    }
    content.resize(done);
    return {};
}

// Overwrites an existing file where it is. What fails half way is put back.
std::error_code WriteInPlace(HANDLE file, const ContentComposer& compose) {
    const auto toNowhere = [](std::string_view) { return std::error_code(); };
    if (const std::error_code error = Compose(compose, toNowhere)) return error;
    std::string old;
    if (const std::error_code error = ReadAll(file, old)) return error;

    const auto put = [&](const ContentComposer& content) {
        if (!SetFilePointerEx(file, {}, nullptr, FILE_BEGIN)) return LastError();
        const auto write = [&](std::string_view piece) { return WriteAll(file, piece); };
        if (const std::error_code error = Compose(content, write)) return error;
        return SetEndOfFile(file) && FlushFileBuffers(file) ? std::error_code() : LastError();
    };
    const auto undo = [&] { put([&](const ContentSink& sink) { return sink(old); }); };
    try {
        const std::error_code error = put(compose);
        if (error) undo();
        return error;
    } catch (...) {
        undo();
        throw;
    }
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
bool SetAccessList(HANDLE file, std::vector<std::byte> list) {
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
    bool MeansTheSameAs(const Target& other) const {
        return exists == other.exists && path == other.path && attributes == other.attributes &&
               numLinks == other.numLinks && accessList == other.accessList;
    }
    bool HoldsTheSameAs(const Target& other) const {
        return number == other.number && size == other.size && written == other.written;
    }

    bool exists = false;
    std::wstring path; // behind links
    DWORD attributes = 0;
    DWORD numLinks = 0;
    std::vector<std::byte> accessList;
    std::uint64_t number = 0; // another one for another file
    std::uint64_t size = 0;
    std::uint64_t written = 0; // when
};

std::uint64_t Wide(DWORD high, DWORD low) { return static_cast<std::uint64_t>(high) << 32 | low; }

std::error_code LookAt(const std::wstring& native, Target& target) {
    target = Target();
    target.path = native;
    const DWORD attributes = GetFileAttributesW(native.c_str());
    const bool isLink = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
    // Only looking is allowed, however others have opened the file.
    const Handle file = OpenNative(native, FILE_READ_ATTRIBUTES | READ_CONTROL, kShareAll, OPEN_EXISTING, 0);
    if (!file.IsOpen()) {
        const DWORD error = GetLastError();
        const bool isNothing = !isLink && error == ERROR_FILE_NOT_FOUND;
        return isNothing ? std::error_code() : ReasonNotOpened(native, error);
    }
    if (GetFileType(file.Get()) != FILE_TYPE_DISK) return std::make_error_code(std::errc::invalid_argument);
    BY_HANDLE_FILE_INFORMATION info{};
    if (!GetFileInformationByHandle(file.Get(), &info)) return LastError();
    if (isLink) target.path = FinalPath(file.Get());
    // Whether the access list allows writing is asked by opening; that others do not share it is no answer.
    const bool denied = !OpenNative(native, FILE_WRITE_DATA, kShareAll, OPEN_EXISTING, 0).IsOpen() &&
                        GetLastError() == ERROR_ACCESS_DENIED;
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_READONLY) || denied)
        return std::make_error_code(std::errc::permission_denied);
    target.exists = true;
    target.attributes = info.dwFileAttributes;
    target.numLinks = info.nNumberOfLinks;
    target.accessList = AccessList(file.Get());
    target.number = Wide(info.nFileIndexHigh, info.nFileIndexLow);
    target.size = Wide(info.nFileSizeHigh, info.nFileSizeLow);
    target.written = Wide(info.ftLastWriteTime.dwHighDateTime, info.ftLastWriteTime.dwLowDateTime);
    return {};
}

// Whether the file is deleted when it is closed. Where the system cannot do that, a file that is left is
// removed by the next save.
void MarkForDeletion(HANDLE file, bool isMarked) {
    FILE_DISPOSITION_INFO info{isMarked};
    SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info);
}

bool TakesNewFiles(const std::wstring& folder) {
    return OpenNative(folder, FILE_ADD_FILE, kShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS).IsOpen() ||
           GetLastError() != ERROR_ACCESS_DENIED;
}

// What is to become the file `target`: no other process can write, rename or delete it while it is open.
// Readers are let in, since the handle is still open when the file has its final name, but none whom the
// access list does not: it stands from the first moment.
std::error_code CreateNewFile(const Target& target, Handle& created) {
    const std::size_t nameStart = target.path.rfind(L'\\') + 1;
    const std::wstring name = target.path.substr(nameStart);
    // A colon would make the name that of a stream inside another file.
    if (name.empty() || name.find(L':') != std::wstring::npos)
        return std::make_error_code(std::errc::invalid_argument);
    constexpr std::size_t kLongestName = 255;
    if (name.size() > kLongestName) return std::make_error_code(std::errc::filename_too_long);
    // A long name is cut so that the temporary name still fits; a clash only makes two writers take turns.
    const std::wstring folder = target.path.substr(0, nameStart);
    const std::wstring native = folder + L"." + name.substr(0, kLongestName - 8) + L".saving";

    constexpr DWORD kAccess = GENERIC_WRITE | DELETE | READ_CONTROL | WRITE_DAC;
    constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                      FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ENCRYPTED;
    const DWORD attributes = target.exists ? target.attributes & kKeptAttributes : FILE_ATTRIBUTE_NORMAL;
    std::vector<std::byte> list = target.accessList;
    SECURITY_ATTRIBUTES security{sizeof security, list.data(), FALSE};
    // Protected from what the folder would add to it.
    if (!list.empty()) SetSecurityDescriptorControl(list.data(), SE_DACL_PROTECTED, SE_DACL_PROTECTED);
    for (const Patience patience(kForOurTurn);;) {
        created = OpenNative(native, kAccess, FILE_SHARE_READ, CREATE_NEW, attributes,
                             list.empty() ? nullptr : &security);
        if (created.IsOpen()) return {};
        DWORD error = GetLastError();
        // One that is left of a killed process is not open, and can be deleted.
        if (error == ERROR_FILE_EXISTS &&
            (DeleteFileW(native.c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND))
            continue;
        if (error == ERROR_FILE_EXISTS) error = GetLastError();
        if (!IsInTheWay(error)) return ErrorOf(error);
        // A file that is marked for deletion is refused like one in a folder that takes none.
        if (error == ERROR_ACCESS_DENIED && !TakesNewFiles(folder)) return ErrorOf(error);
        if (!patience.Wait()) return std::make_error_code(std::errc::device_or_resource_busy);
    }
}

bool Rename(HANDLE file, const std::wstring& native, bool replace) {
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
    info->Flags = (replace ? FILE_RENAME_FLAG_REPLACE_IF_EXISTS : 0u) | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    if (rename(kFileRenameInfoEx)) return true;
    const DWORD error = GetLastError();
    if (error != ERROR_INVALID_PARAMETER && error != ERROR_INVALID_FUNCTION && error != ERROR_NOT_SUPPORTED &&
        error != ERROR_CALL_NOT_IMPLEMENTED && error != ERROR_INVALID_LEVEL)
        return false;
    info->Flags = 0;
    info->ReplaceIfExists = replace;
    return rename(FileRenameInfo);
}

// Why a file that may be written cannot be replaced.
std::error_code ReasonNotReplaced(const std::wstring& native) {
    const bool denied = !OpenNative(native, DELETE, kShareAll, OPEN_EXISTING, 0).IsOpen() &&
                        GetLastError() == ERROR_ACCESS_DENIED;
    return std::make_error_code(denied ? std::errc::permission_denied : std::errc::device_or_resource_busy);
}

// A file that it is this process's turn to write.
struct Place {
    Target target;
    Handle newFile; // what is to become the file
    Handle file;    // the file itself, where it can only be written in place
};

std::error_code OpenInPlace(Place& place) {
    constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_DELETE;
    for (const Patience patience(kForOurTurn);;) {
        place.file = OpenNative(place.target.path, GENERIC_READ | GENERIC_WRITE, kShare, OPEN_EXISTING, 0);
        if (place.file.IsOpen()) return {};
        const std::error_code error = LastError();
        if (error != std::errc::device_or_resource_busy || !patience.Wait()) return error;
    }
}

std::error_code TakeTurn(const std::wstring& path, InPlace inPlace, Place& place) {
    const std::wstring native = NativePath(path);
    if (native.empty()) return std::make_error_code(std::errc::invalid_argument);
    Target now;
    if (const std::error_code error = LookAt(native, now)) return error;
    constexpr int kMostChanges = 100; // that others make between our look and our lock
    for (int changes = 0; changes < kMostChanges; ++changes) {
        place = Place();
        place.target = now;
        const auto inPlaceOr = [&](const std::error_code& reason) {
            return now.exists && inPlace == InPlace::ALLOWED ? OpenInPlace(place) : reason;
        };
        if (now.numLinks > 1) return inPlaceOr(std::make_error_code(std::errc::too_many_links));
        const std::error_code error = CreateNewFile(now, place.newFile);
        if (IsRefusal(error)) return inPlaceOr(error);
        if (error && error != std::errc::device_or_resource_busy) return error;

        const bool keepsAccess = error || SetAccessList(place.newFile.Get(), place.target.accessList);
        const std::error_code lost = keepsAccess ? std::error_code() : LastError();
        if (!error) MarkForDeletion(place.newFile.Get(), true);
        if (lost) return inPlaceOr(lost);

        // As long as others finish the waiting goes on. What they have left may have another access list, or
        // not have been there.
        if (const std::error_code gone = LookAt(native, now)) return gone;
        if (error && now.number == place.target.number) return error;
        if (!error && now.MeansTheSameAs(place.target)) {
            place.target = now;
            return {};
        }
    }
    return std::make_error_code(std::errc::device_or_resource_busy);
}

std::error_code Read(const Place& place, std::string& content) {
    if (place.file.IsOpen()) return ReadAll(place.file.Get(), content);
    for (const Patience patience(kForOtherPrograms);;) {
        const Handle file = OpenNative(place.target.path, GENERIC_READ, kShareAll, OPEN_EXISTING, 0);
        if (file.IsOpen()) return ReadAll(file.Get(), content);
        const std::error_code error = LastError();
        if (error != std::errc::device_or_resource_busy || !patience.Wait()) return error;
    }
}

enum class IfChanged { REPLACE, TELL };

std::error_code BecomeTheFile(const Place& place, IfChanged ifChanged) {
    const bool tells = ifChanged == IfChanged::TELL;
    Target now;
    if (tells && (LookAt(place.target.path, now) || !now.HoldsTheSameAs(place.target)))
        return std::make_error_code(kChangedMeanwhile);
    const bool replaces = place.target.exists || !tells;
    const HANDLE file = place.newFile.Get();
    for (const Patience patience(kForOtherPrograms);;) {
        MarkForDeletion(file, false);
        if (Rename(file, place.target.path, replaces)) break;
        const DWORD error = GetLastError();
        MarkForDeletion(file, true);
        if (!replaces && (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS))
            return std::make_error_code(kChangedMeanwhile);
        if (!IsInTheWay(error)) return ErrorOf(error);
        if (!patience.Wait()) return ReasonNotReplaced(place.target.path);
    }
    // The file is the new one from here on; this makes the new name as durable as the content. Where it
    // fails, it is only left open which of the two whole files a power loss would bring back.
    FlushFileBuffers(file);
    return {};
}

std::error_code Write(const Place& place, const ContentComposer& compose, IfChanged ifChanged) {
    if (place.file.IsOpen()) return WriteInPlace(place.file.Get(), compose);
    const HANDLE file = place.newFile.Get();
    const auto write = [&](std::string_view piece) { return WriteAll(file, piece); };
    if (const std::error_code error = Compose(compose, write)) return error;
    return FlushFileBuffers(file) ? BecomeTheFile(place, ifChanged) : LastError();
}

} // namespace

std::error_code ReplaceContents(const std::wstring& path, std::string_view content) {
    return ReplaceContents(
        path, [&](const ContentSink& sink) { return sink(content); }, InPlace::ALLOWED);
}

std::error_code ReplaceContents(const std::wstring& path, const ContentComposer& compose, InPlace inPlace) {
    Place place;
    const std::error_code error = TakeTurn(path, inPlace, place);
    return error ? error : Write(place, compose, IfChanged::REPLACE);
}

std::error_code UpdateContents(const std::wstring& path, const ContentChange& change) {
    for (int beginning = 0; beginning < kMostBeginnings; ++beginning) {
        Place place;
        if (const std::error_code error = TakeTurn(path, InPlace::ALLOWED, place)) return error;
        std::string content;
        if (place.target.exists)
            if (const std::error_code error = Read(place, content)) return error;
        if (!change(content, place.target.exists)) return {};
        const auto compose = [&](const ContentSink& sink) { return sink(content); };
        const std::error_code error = Write(place, compose, IfChanged::TELL);
        if (error != kChangedMeanwhile) return error;
    }
    return std::make_error_code(std::errc::device_or_resource_busy);
}

} // namespace FILES
