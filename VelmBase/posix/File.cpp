#include "VelmBase/File.h"

#include "VelmBase/WideString.h"

#include <cerrno>
#include <climits>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

namespace {

template <typename Call> auto Retry(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() {
        if (m_fd != -1) close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}

    int Get() const { return m_fd; }
    int Release() { return std::exchange(m_fd, -1); }
    bool IsOpen() const { return m_fd != -1; }

private:
    int m_fd;
};

// A path with a NUL character would name another file than its text says.
bool IsNameable(const std::wstring& path) { return !path.empty() && path.find(L'\0') == std::wstring::npos; }

// O_NONBLOCK keeps a pipe without a partner from blocking; it means nothing for a regular file.
Descriptor OpenRegular(const std::wstring& path, int flags, struct stat& status) {
    if (!IsNameable(path)) return Descriptor(-1);
    const std::string name = ToUtf8(path);
    Descriptor fd(Retry([&] { return open(name.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666); }));
    if (fd.IsOpen() && (fstat(fd.Get(), &status) != 0 || !S_ISREG(status.st_mode))) return Descriptor(-1);
    return fd;
}

bool WriteAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = Retry([&] { return write(fd, content.data(), content.size()); });
        if (written <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool ReadAll(int fd, std::string& content) {
    for (std::size_t done = 0; done < content.size();) {
        const ssize_t got = Retry([&] { return read(fd, content.data() + done, content.size() - done); });
        if (got <= 0) return false;
        done += static_cast<std::size_t>(got);
    }
    return true;
}

// The file that a chain of symbolic links ends at, existing or not; empty when the chain has no end.
std::string FollowLinks(std::string path) {
    constexpr int kMaxLinks = 40;
    for (int links = 0; links < kMaxLinks; ++links) {
        char target[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length < 0) return path;
        const std::string_view link(target, static_cast<std::size_t>(length));
        const std::size_t slash = path.rfind('/');
        const bool relative = link.substr(0, 1) != "/";
        path =
            (relative && slash != std::string::npos ? path.substr(0, slash + 1) : std::string()).append(link);
    }
    return {};
}

// Overwrites an existing file where it is. What fails half way is put back.
bool WriteInPlace(const std::string& path, std::string_view content) {
    const Descriptor fd(Retry([&] { return open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK); }));
    struct stat status {};
    if (!fd.IsOpen() || fstat(fd.Get(), &status) != 0) return false;
    std::string old(static_cast<std::size_t>(status.st_size), '\0');
    if (!ReadAll(fd.Get(), old)) return false;

    const auto put = [&](std::string_view bytes) {
        return lseek(fd.Get(), 0, SEEK_SET) == 0 && WriteAll(fd.Get(), bytes) &&
               Retry([&] { return ftruncate(fd.Get(), static_cast<off_t>(bytes.size())); }) == 0 &&
               Retry([&] { return fsync(fd.Get()); }) == 0;
    };
    if (put(content)) return true;
    put(old);
    return false;
}

// Whether `fd` is the file that `name` means now: it may have been renamed or removed before it was locked.
bool IsNamed(int folder, const std::string& name, int fd) {
    struct stat own {};
    struct stat named {};
    return fstat(fd, &own) == 0 && fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           own.st_ino == named.st_ino && own.st_dev == named.st_dev;
}

// Gives `fd` the access list of the file `from`, which the mode alone does not hold: its group bits are the
// list's mask. None where that file has none.
bool CopyAccessList(const std::string& from, int fd) {
    constexpr const char* kList = "system.posix_acl_access";
    const ssize_t size = getxattr(from.c_str(), kList, nullptr, 0);
    if (size < 0 && errno == ENODATA) // what the folder gave to a new file goes
        return fremovexattr(fd, kList) == 0 || errno == ENODATA || errno == ENOTSUP;
    if (size < 0) return errno == ENOTSUP;
    std::string list(static_cast<std::size_t>(size), '\0');
    return getxattr(from.c_str(), kList, list.data(), list.size()) == size &&
           fsetxattr(fd, kList, list.data(), list.size(), 0) == 0;
}

// A folder that may not be listed can take files all the same; only its own synchronisation is then left out.
Descriptor OpenFolder(const std::string& name) {
    Descriptor folder(Retry([&] { return open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (folder.IsOpen() || errno != EACCES) return folder;
    return Descriptor(Retry([&] { return open(name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
}

enum class Lock { TAKEN, BUSY };

// A file system without locks counts as free.
Lock TryLock(int fd) {
    return flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK ? Lock::BUSY : Lock::TAKEN;
}

// A new temporary file that this process has for itself. It is locked, so that another process that saves the
// same file waits, and so that the file of a killed process, whose lock is gone, is known and removed.
Descriptor CreateTemporary(int folder, const std::string& name, int& error) {
    constexpr timespec kPause{0, 2'000'000};
    constexpr int kAttempts = 5000; // ten seconds
    const auto openTemporary = [&](int flags) {
        Descriptor fd(Retry([&] {
            return openat(folder, name.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | flags, 0666);
        }));
        error = errno;
        return fd;
    };
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        Descriptor created = openTemporary(O_CREAT | O_EXCL);
        if (created.IsOpen()) {
            if (TryLock(created.Get()) == Lock::TAKEN && IsNamed(folder, name, created.Get())) return created;
            continue;
        }
        if (error != EEXIST) return created;

        const Descriptor existing = openTemporary(0);
        if (!existing.IsOpen()) {
            if (error == ENOENT) continue; // its owner has just finished
            return Descriptor(-1);
        }
        if (TryLock(existing.Get()) == Lock::BUSY)
            nanosleep(&kPause, nullptr);
        else if (IsNamed(folder, name, existing.Get()))
            unlinkat(folder, name.c_str(), 0);
    }
    error = EWOULDBLOCK;
    return Descriptor(-1);
}

// `writeInPlace` is for a target that exists and that no new file can take the place of.
bool Replace(const std::wstring& path, const std::function<bool(const FILES::ContentSink&)>& compose,
             const std::function<bool(const std::string&)>& writeInPlace) {
    if (!IsNameable(path)) return false;
    const std::string target = FollowLinks(ToUtf8(path));
    if (target.empty()) return false;

    struct stat old {};
    const bool exists = stat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) return false;
    if (exists && (!S_ISREG(old.st_mode) || faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0))
        return false;
    if (exists && old.st_nlink > 1) return writeInPlace(target);

    const std::size_t slash = target.rfind('/');
    const std::string folderName = slash == std::string::npos ? "." : target.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? target : target.substr(slash + 1);
    if (name.empty()) return false;
    // A long name is cut so that the temporary name still fits; a clash only makes two writers take turns.
    const std::string temporaryName = "." + name.substr(0, NAME_MAX - 8) + ".saving";

    const Descriptor folder = OpenFolder(folderName);
    int error = errno;
    Descriptor temporary =
        folder.IsOpen() ? CreateTemporary(folder.Get(), temporaryName, error) : Descriptor(-1);
    if (!temporary.IsOpen()) {
        const bool folderIsClosed = error == EACCES || error == EPERM || error == EROFS;
        return exists && folderIsClosed && writeInPlace(target);
    }

    const auto giveUp = [&] {
        unlinkat(folder.Get(), temporaryName.c_str(), 0);
        return false;
    };
    if (exists) {
        struct stat own {};
        if (fstat(temporary.Get(), &own) != 0) return giveUp();
        const bool sameOwner = (own.st_uid == old.st_uid && own.st_gid == old.st_gid) ||
                               fchown(temporary.Get(), old.st_uid, old.st_gid) == 0;
        const bool sameAccess = sameOwner && CopyAccessList(target, temporary.Get());
        if (!sameAccess) {
            giveUp();
            return writeInPlace(target);
        }
        if (Retry([&] { return fchmod(temporary.Get(), old.st_mode & 07777); }) != 0) return giveUp();
    }
    try {
        if (!compose([&](std::string_view piece) { return WriteAll(temporary.Get(), piece); }))
            return giveUp();
    } catch (...) {
        giveUp();
        throw;
    }
    if (Retry([&] { return fsync(temporary.Get()); }) != 0) return giveUp();
    if (Retry([&] { return renameat(folder.Get(), temporaryName.c_str(), folder.Get(), name.c_str()); }) != 0)
        return giveUp();
    // The file is the new one from here on. A folder that cannot be synchronised only leaves open which of
    // the two whole files a power loss would bring back.
    Retry([&] { return fsync(folder.Get()); });
    return true;
}

} // namespace

namespace FILES {

Reader::Reader(const std::wstring& path) {
    struct stat status {};
    Descriptor fd = OpenRegular(path, O_RDONLY, status);
    if (!fd.IsOpen()) return;
    m_size = static_cast<std::uint64_t>(status.st_size);
    m_handle = fd.Release();
}

Reader::~Reader() {
    if (IsOpen()) close(static_cast<int>(m_handle));
}

std::size_t Reader::Read(void* buffer, std::size_t count) {
    const ssize_t got = Retry([&] { return read(static_cast<int>(m_handle), buffer, count); });
    m_failed = m_failed || got < 0;
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
    Descriptor fd = OpenRegular(path, flags, status);
    if (!fd.IsOpen()) return nullptr;
    std::FILE* stream = fdopen(fd.Get(), streamMode.c_str());
    if (stream) fd.Release();
    return stream;
}

std::int64_t Position(std::FILE* stream) { return ftello(stream); }

bool SeekTo(std::FILE* stream, std::int64_t offset, int origin) {
    return fseeko(stream, offset, origin) == 0;
}

bool ReplaceContents(const std::wstring& path, std::string_view content) {
    return Replace(
        path, [&](const ContentSink& sink) { return sink(content); },
        [&](const std::string& target) { return WriteInPlace(target, content); });
}

bool ReplaceContents(const std::wstring& path, const std::function<bool(const ContentSink&)>& compose) {
    return Replace(path, compose, [](const std::string&) { return false; });
}

bool ModificationTime(const std::wstring& path, std::uint32_t& seconds) {
    struct stat status {};
    if (!IsNameable(path) || stat(ToUtf8(path).c_str(), &status) != 0) return false;
    seconds = static_cast<std::uint32_t>(status.st_mtime);
    return true;
}

} // namespace FILES
