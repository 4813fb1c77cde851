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

// How a file is replaced without a moment of danger
//
// Whoever opens the file finds the whole old or the whole new one, whatever ends this process, and nobody
// sees what the file itself would not have shown him. Each step of Replace() below has its place for that:
//
//   1. Links are followed to the file that they mean: renaming over a link would replace the link.
//   2. The temporary file is made in the file's own folder, since only within one file system a rename is one
//      step, and with O_EXCL, so that nothing that somebody laid there is written through. Its name is fixed,
//      so that killed processes leave one file and not hundreds. The lock on it tells a living owner from a
//      dead one and ends with the process, whatever ends that. Between opening a file and locking it the name
//      may have come to mean another file: so after each lock the name is looked at again, and only a file
//      that is locked and still bears the name is written to or removed.
//   3. It begins with the owner's permissions at most, takes the owner, then the access list, then the mode:
//      at each of these steps it allows no more than the file that it replaces. Another order would let in
//      others for a moment, and a file that is open stays open.
//   4. The content is written and synchronised before the name changes. A system may write a new name to the
//      disk before the bytes that it names, and a power loss in between would leave an empty file.
//   5. The rename is the one moment in which the new file becomes the file. Before it every failure leaves
//      the old one; after it there is nothing left that could fail.
//   6. The folder is synchronised, so that the new name has reached the disk when the caller is told so.
//
// Where a new file must not or cannot take the old one's place, WriteInPlace() has no such moment. It does
// what can be done: it knows the content and keeps the old bytes before it changes the first one.

namespace {

// Does a system call that a signal interrupted again.
template <typename Call> auto Retry(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

std::error_code LastError() { return {errno, std::system_category()}; }

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

constexpr mode_t kModeBits = 07777;
constexpr mode_t kSpecialBits = S_ISUID | S_ISGID | S_ISVTX;

int Status(int fd, struct stat& status) {
    return Retry([&] { return fstat(fd, &status); });
}

// A path with a NUL character would name another file than its text says.
bool IsNameable(const std::wstring& path) { return !path.empty() && path.find(L'\0') == std::wstring::npos; }

// O_NONBLOCK keeps a pipe without a partner from blocking; it means nothing for a regular file.
Descriptor OpenRegular(const std::wstring& path, int flags, struct stat& status) {
    if (!IsNameable(path)) return Descriptor(-1);
    const std::string name = ToUtf8(path);
    Descriptor fd(Retry([&] { return open(name.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666); }));
    if (fd.IsOpen() && (Status(fd.Get(), status) != 0 || !S_ISREG(status.st_mode))) return Descriptor(-1);
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
        const ssize_t length = Retry([&] { return readlink(path.c_str(), target, sizeof target); });
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
bool WriteInPlace(const std::string& path, const FILES::ContentComposer& compose) {
    if (!compose([](std::string_view) { return true; })) return false;
    const Descriptor fd(Retry([&] { return open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK); }));
    struct stat status {};
    if (!fd.IsOpen() || Status(fd.Get(), status) != 0) return false;
    std::string old(static_cast<std::size_t>(status.st_size), '\0');
    if (!ReadAll(fd.Get(), old)) return false;

    const auto put = [&](const FILES::ContentComposer& content) {
        std::uint64_t size = 0;
        const auto write = [&](std::string_view piece) {
            size += piece.size();
            return WriteAll(fd.Get(), piece);
        };
        return Retry([&] { return lseek(fd.Get(), 0, SEEK_SET); }) == 0 && content(write) &&
               Retry([&] { return ftruncate(fd.Get(), static_cast<off_t>(size)); }) == 0 &&
               Retry([&] { return fsync(fd.Get()); }) == 0;
    };
    const auto undo = [&] { return put([&](const FILES::ContentSink& sink) { return sink(old); }); };
    try {
        if (put(compose)) {
            // Writing takes the set-id bits from a file; only its owner may give them back.
            if (status.st_mode & kSpecialBits) fchmod(fd.Get(), status.st_mode & kModeBits);
            return true;
        }
    } catch (...) {
        undo();
        throw;
    }
    undo();
    return false;
}

// Whether `fd` is the file that `name` means now: it may have been renamed or removed before it was locked.
bool IsNamed(int folder, const std::string& name, int fd) {
    struct stat own {};
    struct stat named {};
    return Status(fd, own) == 0 &&
           Retry([&] { return fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW); }) == 0 &&
           own.st_ino == named.st_ino && own.st_dev == named.st_dev;
}

// Gives `fd` the access list of the file `from`, which the mode alone does not hold: its group bits are the
// list's mask. None where that file has none.
bool CopyAccessList(const std::string& from, int fd) {
    constexpr const char* kList = "system.posix_acl_access";
    const ssize_t size = Retry([&] { return getxattr(from.c_str(), kList, nullptr, 0); });
    if (size < 0 && errno == ENODATA) // what the folder gave to a new file goes
        return Retry([&] { return fremovexattr(fd, kList); }) == 0 || errno == ENODATA || errno == ENOTSUP;
    if (size < 0) return errno == ENOTSUP;
    std::string list(static_cast<std::size_t>(size), '\0');
    return Retry([&] { return getxattr(from.c_str(), kList, list.data(), list.size()); }) == size &&
           Retry([&] { return fsetxattr(fd, kList, list.data(), list.size(), 0); }) == 0;
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
    const bool locked = Retry([&] { return flock(fd, LOCK_EX | LOCK_NB); }) == 0;
    return !locked && errno == EWOULDBLOCK ? Lock::BUSY : Lock::TAKEN;
}

// A new temporary file of that mode, which this process has for itself. It is locked, so that another process
// that saves the same file waits, and so that the file of a killed process, whose lock is gone, is known and
// removed.
Descriptor CreateTemporary(int folder, const std::string& name, mode_t mode, int& error) {
    constexpr timespec kPause{0, 2'000'000};
    constexpr int kAttempts = 5000; // ten seconds
    const auto openTemporary = [&](int flags) {
        Descriptor fd(Retry([&] {
            return openat(folder, name.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | flags, mode);
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
            Retry([&] { return unlinkat(folder, name.c_str(), 0); });
    }
    error = EWOULDBLOCK;
    return Descriptor(-1);
}

// Gives a temporary file the owner and the rights of the file that it is to replace; at no moment more than
// these. False when that cannot be.
bool TakeOver(const std::string& target, const struct stat& old, int temporary) {
    struct stat own {};
    if (Status(temporary, own) != 0) return false;
    const bool sameOwner = (own.st_uid == old.st_uid && own.st_gid == old.st_gid) ||
                           Retry([&] { return fchown(temporary, old.st_uid, old.st_gid); }) == 0;
    return sameOwner && CopyAccessList(target, temporary);
}

bool SetMode(int fd, mode_t mode) {
    return Retry([&] { return fchmod(fd, mode); }) == 0;
}

bool Replace(const std::wstring& path, const FILES::ContentComposer& compose, FILES::InPlace inPlace) {
    if (!IsNameable(path)) return false;
    const std::string target = FollowLinks(ToUtf8(path));
    if (target.empty()) return false;

    struct stat old {};
    const bool exists = Retry([&] { return stat(target.c_str(), &old); }) == 0;
    if (!exists && errno != ENOENT) return false;
    const auto isWritable = [&] {
        return Retry([&] { return faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS); }) == 0;
    };
    if (exists && (!S_ISREG(old.st_mode) || !isWritable())) return false;
    const auto writeInPlace = [&] {
        return inPlace == FILES::InPlace::ALLOWED && WriteInPlace(target, compose);
    };
    if (exists && old.st_nlink > 1) return writeInPlace();

    const std::size_t slash = target.rfind('/');
    const std::string folderName = slash == std::string::npos ? "." : target.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? target : target.substr(slash + 1);
    if (name.empty()) return false;
    // A long name is cut so that the temporary name still fits; a clash only makes two writers take turns.
    const std::string temporaryName = "." + name.substr(0, NAME_MAX - 8) + ".saving";

    const Descriptor folder = OpenFolder(folderName);
    int error = errno;
    const mode_t firstMode = exists ? old.st_mode & (S_IRUSR | S_IWUSR) : 0666;
    const Descriptor temporary =
        folder.IsOpen() ? CreateTemporary(folder.Get(), temporaryName, firstMode, error) : Descriptor(-1);
    if (!temporary.IsOpen()) {
        const bool folderIsClosed = error == EACCES || error == EPERM || error == EROFS;
        return exists && folderIsClosed && writeInPlace();
    }

    const auto giveUp = [&] {
        Retry([&] { return unlinkat(folder.Get(), temporaryName.c_str(), 0); });
        return false;
    };
    if (exists && !TakeOver(target, old, temporary.Get())) {
        giveUp();
        return writeInPlace();
    }
    if (exists && !SetMode(temporary.Get(), old.st_mode & kModeBits & ~kSpecialBits)) return giveUp();
    try {
        if (!compose([&](std::string_view piece) { return WriteAll(temporary.Get(), piece); }))
            return giveUp();
    } catch (...) {
        giveUp();
        throw;
    }
    // Last, since writing takes the set-id bits away.
    const bool isSpecial = exists && (old.st_mode & kSpecialBits) != 0;
    if (isSpecial && !SetMode(temporary.Get(), old.st_mode & kModeBits)) return giveUp();
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
    if (!fd.IsOpen()) {
        m_error = LastError();
        return;
    }
    m_size = static_cast<std::uint64_t>(status.st_size);
    m_handle = fd.Release();
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

std::error_code ReplaceContents(const std::wstring& path, std::string_view content) {
    return ReplaceContents(
        path, [&](const ContentSink& sink) { return sink(content); }, InPlace::ALLOWED);
}

std::error_code ReplaceContents(const std::wstring& path, const ContentComposer& compose, InPlace inPlace) {
    errno = 0;
    if (Replace(path, compose, inPlace)) return {};
    return errno ? LastError() : std::make_error_code(std::errc::operation_canceled);
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
    struct stat status {};
    if (!IsNameable(path) || stat(ToUtf8(path).c_str(), &status) != 0) return false;
    seconds = static_cast<std::uint32_t>(status.st_mtime);
    return true;
}

} // namespace FILES
