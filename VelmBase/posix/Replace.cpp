// SPDX-License-Identifier: MIT
#include "VelmBase/File.h"

#include "VelmBase/WideString.h"
#include "VelmBase/posix/private/Descriptor.h"
#include "VelmBase/private/Compose.h"

#include <climits>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <new>
#include <sys/file.h>
#include <sys/xattr.h>

// How a file is replaced without a moment of danger
//
// Whoever opens the file finds the whole old or the whole new one, whatever ends this process; nobody sees
// what the file itself would not have shown him; and of several who change it nobody undoes what another has
// done. Each step has its place for that:
//
//   1. Links are followed to the file that they mean: renaming over a link would replace the link.
//   2. The file itself is locked, before anybody thinks about its new content, until the new file has its
//      name. The system takes the lock from a process that ends. Between opening a file and locking it the
//      name may have come to mean another one: so after each lock the name is looked at again.
//   3. The new content gets a file in the same folder, since only within one file system a name changes its
//      file in one step. That file has no name, so the system takes it away too when the process ends.
//   4. It begins with the owner's permissions at most, takes the owner, then the access list, then the mode:
//      at each of these steps it allows no more than the file that it replaces. Another order would let in
//      others for a moment, and a file that is open stays open.
//   5. The content is written and synchronised before the file has a name. A system may write a name to the
//      disk before the bytes that it names, and a power loss in between would leave an empty file.
//   6. Whoever changes what he has read looks once more whether a program that knows no lock, an editor, has
//      written the file since, and begins again with what that wrote.
//   7. A file that was not there before gets its name if that is still free; if not, somebody has made it
//      meanwhile. To replace a file the new one needs a name for a moment: it becomes ".<name>.saving" and is
//      renamed. Only a process that is killed between these two calls leaves something, of which the next one
//      knows by its missing lock that it is nobody's any more, and removes it.
//   8. The rename is the one moment in which the new file becomes the file. Before it every failure leaves
//      the old one; after it there is nothing left that could fail.
//   9. The folder is synchronised, so that the new name has reached the disk when the caller is told so.
//
// Where the system knows no files without a name, the new one is ".<name>.saving" from step 3 on, and a
// killed process may leave it at any of the later steps. It is made with O_EXCL, so that nothing that
// somebody laid there is written through. For a file that does not exist yet it also takes the lock's part:
// whoever has it looks again whether the file exists now.
//
// Where a new file must not or cannot take the old one's place, WriteInPlace() has no such moment. It does
// what can be done: it knows the content and keeps the old bytes before it changes the first one.

namespace FILES {

namespace {

constexpr mode_t kModeBits = 07777;
constexpr mode_t kSpecialBits = S_ISUID | S_ISGID | S_ISVTX;

// Somebody has made the file that there was none of, or written the one that was read.
constexpr auto kChangedMeanwhile = std::errc::resource_unavailable_try_again;

// How long somebody else may hold one and the same file without writing it: ten seconds.
constexpr timespec kPause{0, 2'000'000};
constexpr int kAttempts = 5000;

std::error_code WriteAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = Retry([&] { return write(fd, content.data(), content.size()); });
        if (written < 0) return LastError();
        if (written == 0) return std::make_error_code(std::errc::io_error);
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code ReadAll(int fd, std::size_t size, std::string& content) {
    try {
        content.resize(size);
    } catch (const std::exception&) {
        return std::make_error_code(std::errc::not_enough_memory);
    }
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t got = Retry([&] {
            return pread(fd, content.data() + done, content.size() - done, static_cast<off_t>(done));
        });
        if (got < 0) return LastError();
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    content.resize(done);
    return {};
}

// Makes of `path` the file that a chain of symbolic links ends at, existing or not.
std::error_code FollowLinks(std::string& path) {
    constexpr int kMaxLinks = 40;
    for (int links = 0; links < kMaxLinks; ++links) {
        char target[PATH_MAX];
        const ssize_t length = Retry([&] { return readlink(path.c_str(), target, sizeof target); });
        if (length < 0) // no link, or nothing there
            return errno == EINVAL || errno == ENOENT ? std::error_code() : LastError();
        const std::string_view link(target, static_cast<std::size_t>(length));
        const std::size_t slash = path.rfind('/');
        const bool relative = link.substr(0, 1) != "/";
        path =
            (relative && slash != std::string::npos ? path.substr(0, slash + 1) : std::string()).append(link);
    }
    return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

// A folder that may not be listed can take files all the same; only its own synchronisation is then left out.
Descriptor OpenFolder(const std::string& name) {
    Descriptor folder(Retry([&] { return open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (folder.IsOpen() || errno != EACCES) return folder;
    return Descriptor(Retry([&] { return open(name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
}

// What a path leads to.
struct Place {
    bool Exists() const { return file.IsOpen(); }

    std::string path; // behind all links
    std::string name; // in the folder
    std::string temporaryName;
    Descriptor folder;
    Descriptor file; // locked; not open when there is none
    bool isReadable = true;
    struct stat old {}; // of the file
};

std::error_code Look(const Place& place, struct stat& status) {
    return ErrorOf(
        [&] { return fstatat(place.folder.Get(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW); });
}

// Whether `fd` is the file that the name in that folder means now.
bool IsNamed(int folder, const std::string& name, int fd) {
    struct stat own {};
    struct stat named {};
    return !Status(fd, own) &&
           Retry([&] { return fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW); }) == 0 &&
           own.st_ino == named.st_ino && own.st_dev == named.st_dev;
}

// False when others have the lock. A file system without locks counts as free.
bool TakeLock(int fd) {
    return Retry([&] { return flock(fd, LOCK_EX | LOCK_NB); }) == 0 || errno != EWOULDBLOCK;
}

// Whether a file is what it was. Any write, and any change of its rights, gives it a new time.
bool AreSame(const struct stat& then, const struct stat& now) {
    return then.st_size == now.st_size && then.st_ctim.tv_sec == now.st_ctim.tv_sec &&
           then.st_ctim.tv_nsec == now.st_ctim.tv_nsec;
}

// Those who write the file in place one after the other are waited for as long as they do, but for no more
// than a minute: it may be one that never lets go.
std::error_code WaitForLock(int fd) {
    constexpr int kMostTurns = 6;
    struct stat then {};
    struct stat now {};
    int turn = 0;
    do {
        if (const std::error_code error = Status(fd, then)) return error;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            if (TakeLock(fd)) return {};
            nanosleep(&kPause, nullptr);
        }
        if (const std::error_code error = Status(fd, now)) return error;
    } while (!AreSame(then, now) && ++turn < kMostTurns);
    return std::make_error_code(std::errc::device_or_resource_busy);
}

std::error_code OpenFile(Place& place) {
    const std::error_code error = Look(place, place.old);
    if (error == std::errc::no_such_file_or_directory) return {};
    if (error) return error;
    // What opening would do to a device or a pipe is not tried.
    if (const std::error_code kind = KindError(place.old.st_mode)) return kind;
    const auto openFor = [&](int access) {
        return Descriptor(Retry(
            [&] { return openat(place.folder.Get(), place.name.c_str(), access | O_NOFOLLOW | O_CLOEXEC); }));
    };
    // For writing: some file systems lock no other.
    place.file = openFor(O_RDWR);
    place.isReadable = place.file.IsOpen() || errno != EACCES;
    if (!place.isReadable) place.file = openFor(O_WRONLY);
    return place.file.IsOpen() || errno == ENOENT ? std::error_code() : LastError();
}

std::error_code Open(const std::string& path, Place& place) {
    // One with a NUL character would name another file than its text says.
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::make_error_code(std::errc::invalid_argument);
    place.path = path;
    if (const std::error_code error = FollowLinks(place.path)) return error;
    const std::size_t nameStart = place.path.rfind('/') + 1;
    place.name = place.path.substr(nameStart);
    // A long name is cut so that the temporary name still fits; a clash only makes two writers take turns.
    place.temporaryName = "." + place.name.substr(0, NAME_MAX - 8) + ".saving";
    place.folder = OpenFolder(nameStart == 0 ? "." : place.path.substr(0, nameStart));
    if (!place.folder.IsOpen()) return LastError();
    if (place.name.empty()) return std::make_error_code(std::errc::is_a_directory);
    return OpenFile(place);
}

// Whether the file is still what it was when it was locked.
bool IsUnchanged(const Place& place) {
    struct stat now {};
    return !Status(place.file.Get(), now) && IsNamed(place.folder.Get(), place.name, place.file.Get()) &&
           AreSame(place.old, now);
}

// Finds the file and has it for itself. Each file that others have in between begins a new time of waiting.
std::error_code Lock(const std::string& path, Place& place) {
    for (;;) {
        place = Place();
        if (const std::error_code error = Open(path, place)) return error;
        if (!place.Exists()) return {};
        if (const std::error_code error = WaitForLock(place.file.Get())) return error;
        if (IsNamed(place.folder.Get(), place.name, place.file.Get()))
            return Status(place.file.Get(), place.old); // as the last one left it
    }
}

std::error_code Read(const Place& place, std::string& content) {
    if (!place.isReadable) return std::make_error_code(std::errc::permission_denied);
    return ReadAll(place.file.Get(), static_cast<std::size_t>(place.old.st_size), content);
}

// Overwrites an existing file where it is. What fails half way is put back.
std::error_code WriteInPlace(const Place& place, const ContentComposer& compose) {
    const auto toNowhere = [](std::string_view) { return std::error_code(); };
    if (const std::error_code error = Compose(compose, toNowhere)) return error;
    std::string old;
    if (const std::error_code error = Read(place, old)) return error;

    const int fd = place.file.Get();
    const auto put = [&](const ContentComposer& content) {
        std::uint64_t size = 0;
        const auto write = [&](std::string_view piece) {
            size += piece.size();
            return WriteAll(fd, piece);
        };
        std::error_code error;
        if (Retry([&] { return lseek(fd, 0, SEEK_SET); }) != 0) error = LastError();
        if (!error) error = Compose(content, write);
        if (!error) error = ErrorOf([&] { return ftruncate(fd, static_cast<off_t>(size)); });
        if (!error) error = ErrorOf([&] { return fsync(fd); });
        return error;
    };
    const auto undo = [&] { put([&](const ContentSink& sink) { return sink(old); }); };
    try {
        const std::error_code error = put(compose);
        if (error) undo();
        // Writing takes the set-id bits from a file; only its owner may give them back.
        else if (place.old.st_mode & kSpecialBits)
            fchmod(fd, place.old.st_mode & kModeBits);
        return error;
    } catch (...) {
        undo();
        throw;
    }
}

// Gives `fd` the access list of the file `from`, which the mode alone does not hold: its group bits are the
// list's mask. None where that file has none.
std::error_code CopyAccessList(int from, int fd) {
    constexpr const char* kList = "system.posix_acl_access";
    const ssize_t size = Retry([&] { return fgetxattr(from, kList, nullptr, 0); });
    if (size < 0 && errno == ENODATA) { // what the folder gave to a new file goes
        const std::error_code error = ErrorOf([&] { return fremovexattr(fd, kList); });
        const bool hadNone = error.value() == ENODATA || error.value() == ENOTSUP;
        return hadNone ? std::error_code() : error;
    }
    if (size < 0) return errno == ENOTSUP ? std::error_code() : LastError();
    std::string list(static_cast<std::size_t>(size), '\0');
    if (Retry([&] { return fgetxattr(from, kList, list.data(), list.size()); }) != size) return LastError();
    return ErrorOf([&] { return fsetxattr(fd, kList, list.data(), list.size(), 0); });
}

// Has `take` give the temporary name to a file. A file that has it already is waited for, or removed when its
// process is gone.
template <typename Take> std::error_code TakeTemporaryName(const Place& place, Take take) {
    const int folder = place.folder.Get();
    const char* const name = place.temporaryName.c_str();
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::error_code error = take();
        if (error != std::errc::file_exists) return error;

        const Descriptor other(
            Retry([&] { return openat(folder, name, O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK); }));
        if (!other.IsOpen()) {
            if (errno == ENOENT) continue; // its owner has just finished
            const bool isNoFile = errno == EISDIR || errno == ELOOP || errno == ENXIO;
            return isNoFile ? error : LastError();
        }
        if (!TakeLock(other.Get())) {
            nanosleep(&kPause, nullptr);
        } else if (IsNamed(folder, place.temporaryName, other.Get())) {
            const std::error_code kept = ErrorOf([&] { return unlinkat(folder, name, 0); });
            if (kept && kept != std::errc::no_such_file_or_directory) return kept;
        }
    }
    return std::make_error_code(std::errc::device_or_resource_busy);
}

// The file that is to be the new one, in the folder of `place`. Gone with this object unless it has become
// it.
class NewFile {
public:
    explicit NewFile(const Place& place) : m_place(place) {}
    ~NewFile() {
        if (m_hasTemporaryName) Retry([&] { return unlinkat(Folder(), TemporaryName(), 0); });
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    std::error_code Create() {
        const mode_t mode = m_place.Exists() ? m_place.old.st_mode & (S_IRUSR | S_IWUSR) : 0666;
        m_file =
            Descriptor(Retry([&] { return openat(Folder(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode); }));
        if (m_file.IsOpen()) {
            m_selfName = "/proc/self/fd/" + std::to_string(m_file.Get());
            if (faccessat(AT_FDCWD, m_selfName.c_str(), F_OK, 0) != 0) return CreateNamed(mode);
            TakeLock(m_file.Get()); // before it has a name that others could open
            return {};
        }
        const std::error_code error = LastError();
        const bool isUnknown = errno == EOPNOTSUPP || errno == EISDIR || errno == ENOENT || errno == EINVAL;
        return isUnknown ? CreateNamed(mode) : error;
    }

    // Takes the owner and the rights of the file that it is to replace; at no moment more than these.
    std::error_code TakeOver(const Place& place) {
        struct stat own {};
        if (const std::error_code error = Status(m_file.Get(), own)) return error;
        const bool sameOwner = own.st_uid == place.old.st_uid && own.st_gid == place.old.st_gid;
        if (!sameOwner)
            if (const std::error_code error =
                    ErrorOf([&] { return fchown(m_file.Get(), place.old.st_uid, place.old.st_gid); }))
                return error;
        return CopyAccessList(place.file.Get(), m_file.Get());
    }

    std::error_code SetMode(mode_t mode) {
        return ErrorOf([&] { return fchmod(m_file.Get(), mode); });
    }

    std::error_code Write(const ContentComposer& compose) {
        return Compose(compose, [&](std::string_view piece) { return WriteAll(m_file.Get(), piece); });
    }

    std::error_code Synchronise() {
        return ErrorOf([&] { return fsync(m_file.Get()); });
    }

    // Gets the name that there was no file of.
    std::error_code BecomeFirst() {
        const std::error_code error =
            m_hasTemporaryName ? Rename(RENAME_NOREPLACE) : Link(m_place.name.c_str());
        return error == std::errc::file_exists ? std::make_error_code(kChangedMeanwhile) : error;
    }

    std::error_code BecomeNext() {
        if (!m_hasTemporaryName) {
            const std::error_code error = TakeTemporaryName(m_place, [&] { return Link(TemporaryName()); });
            if (error) return error;
            m_hasTemporaryName = true;
        }
        return Rename(0);
    }

    void Close() { m_file = Descriptor(); }

private:
    int Folder() const { return m_place.folder.Get(); }
    const char* TemporaryName() const { return m_place.temporaryName.c_str(); }

    std::error_code CreateNamed(mode_t mode) {
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        const std::error_code error = TakeTemporaryName(m_place, [&]() -> std::error_code {
            m_file = Descriptor(Retry([&] { return openat(Folder(), TemporaryName(), kFlags, mode); }));
            if (!m_file.IsOpen()) return LastError();
            // Before it was locked another process may have taken it for left.
            if (TakeLock(m_file.Get()) && IsNamed(Folder(), m_place.temporaryName, m_file.Get())) return {};
            m_file = Descriptor();
            return std::make_error_code(std::errc::file_exists);
        });
        if (error) return error;
        m_hasTemporaryName = true;
        struct stat ignored {};
        const bool isMade = !m_place.Exists() && !Look(m_place, ignored);
        return isMade ? std::make_error_code(kChangedMeanwhile) : std::error_code();
    }

    std::error_code Link(const char* name) {
        return ErrorOf(
            [&] { return linkat(AT_FDCWD, m_selfName.c_str(), Folder(), name, AT_SYMLINK_FOLLOW); });
    }

    std::error_code Rename(unsigned flags) {
        const auto rename = [&](unsigned how) {
            return ErrorOf(
                [&] { return renameat2(Folder(), TemporaryName(), Folder(), m_place.name.c_str(), how); });
        };
        std::error_code error = rename(flags);
        // Not every file system can leave alone what is there.
        if (flags != 0 && error == std::errc::invalid_argument) error = rename(0);
        m_hasTemporaryName = static_cast<bool>(error);
        return error;
    }

    const Place& m_place;
    Descriptor m_file;
    std::string m_selfName;
    bool m_hasTemporaryName = false;
};

bool IsRefusal(const std::error_code& error) {
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

// Locks the file that was made in the place meanwhile, and takes its owner and rights.
std::error_code TakeOverFromMade(const Place& place, Place& made, NewFile& file) {
    if (const std::error_code error = Lock(place.path, made)) return error;
    if (made.path != place.path) return std::make_error_code(std::errc::device_or_resource_busy);
    if (!made.Exists()) return {};
    if (const std::error_code error = file.TakeOver(made)) return error;
    return file.SetMode(made.old.st_mode & kModeBits);
}

enum class IfChanged { REPLACE, TELL };

// Writes the file that is locked, or makes it where there was none.
std::error_code Write(Place& place, const ContentComposer& compose, InPlace inPlace, IfChanged ifChanged) {
    const bool exists = place.Exists();
    const auto isOutdated = [&] { return exists && ifChanged == IfChanged::TELL && !IsUnchanged(place); };
    const auto inPlaceOr = [&](const std::error_code& reason) {
        if (!exists || inPlace == InPlace::REFUSED) return reason;
        return isOutdated() ? std::make_error_code(kChangedMeanwhile) : WriteInPlace(place, compose);
    };
    if (exists && place.old.st_nlink > 1) return inPlaceOr(std::make_error_code(std::errc::too_many_links));

    NewFile file(place);
    if (const std::error_code error = file.Create()) return IsRefusal(error) ? inPlaceOr(error) : error;
    std::error_code error;
    if (exists) {
        if (const std::error_code kept = file.TakeOver(place)) return inPlaceOr(kept);
        error = file.SetMode(place.old.st_mode & kModeBits & ~kSpecialBits);
    }
    if (!error) error = file.Write(compose);
    // Last, since writing takes the set-id bits away.
    const bool isSpecial = exists && (place.old.st_mode & kSpecialBits) != 0;
    if (!error && isSpecial) error = file.SetMode(place.old.st_mode & kModeBits);
    if (!error) error = file.Synchronise();
    if (error) return error;
    if (isOutdated()) return std::make_error_code(kChangedMeanwhile);

    Place made;
    error = exists ? file.BecomeNext() : file.BecomeFirst();
    if (exists && IsRefusal(error)) return inPlaceOr(error);
    if (error == kChangedMeanwhile && ifChanged == IfChanged::REPLACE) {
        error = TakeOverFromMade(place, made, file);
        if (!error) error = file.BecomeNext();
    }
    if (error) return error;
    // The file is the new one from here on, and others need not wait for the disk. A folder that cannot be
    // synchronised only leaves open which of the two whole files a power loss would bring back.
    file.Close();
    made.file = Descriptor();
    place.file = Descriptor();
    Retry([&] { return fsync(place.folder.Get()); });
    return {};
}

} // namespace

std::error_code ReplaceContents(const std::wstring& path, std::string_view content) {
    return ReplaceContents(
        path, [&](const ContentSink& sink) { return sink(content); }, InPlace::ALLOWED);
}

std::error_code ReplaceContents(const std::wstring& path, const ContentComposer& compose, InPlace inPlace) {
    for (;;) {
        Place place;
        if (const std::error_code error = Lock(ToUtf8(path), place)) return error;
        const std::error_code error = Write(place, compose, inPlace, IfChanged::REPLACE);
        if (error != kChangedMeanwhile) return error; // otherwise nothing is composed yet
    }
}

std::error_code UpdateContents(const std::wstring& path, const ContentChange& change) {
    for (int beginning = 0; beginning < kMostBeginnings; ++beginning) {
        Place place;
        if (const std::error_code error = Lock(ToUtf8(path), place)) return error;
        std::string content;
        if (place.Exists())
            if (const std::error_code error = Read(place, content)) return error;
        if (!change(content, place.Exists())) return {};
        const auto compose = [&](const ContentSink& sink) { return sink(content); };
        const std::error_code error = Write(place, compose, InPlace::ALLOWED, IfChanged::TELL);
        if (error != kChangedMeanwhile) return error;
    }
    return std::make_error_code(std::errc::device_or_resource_busy);
}

} // namespace FILES
