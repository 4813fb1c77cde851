// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

/// The file services that the suite needs of the operating system. Paths are wide text on every platform; on
/// Linux they are UTF-8 on disk. Only regular files count: a folder, a pipe or a device cannot be opened.
namespace FILES {

/// A file opened for sequential reading of bytes; closed by the destructor. Others may write, rename or
/// delete the file meanwhile.
class VELMBASE_API Reader {
public:
    /// Opens the file; Error() says why it could not.
    explicit Reader(const std::wstring& path);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Whether the file could be opened.
    bool IsOpen() const { return m_handle != -1; }

    /// The size in bytes when the file was opened.
    std::uint64_t Size() const { return m_size; }

    /// Reads up to `count` bytes; 0 at the end and on an error (then Failed() is true).
    std::size_t Read(void* buffer, std::size_t count);

    /// Whether reading failed; false for a file that could not be opened.
    bool Failed() const { return m_handle != -1 && Error(); }

    /// Why the file could not be opened or read; errc::is_a_directory for a folder, errc::invalid_argument
    /// for anything else that is no regular file. No error as long as all is well.
    std::error_code Error() const { return m_error; }

private:
    std::intptr_t m_handle = -1;
    std::uint64_t m_size = 0;
    std::error_code m_error;
};

/// Opens a C stream in binary mode. `mode` begins with r, w or a; a "+" in it adds the other direction, and
/// an "x" keeps "w" from opening a file that is there already.
/// Null when the file cannot be opened or the mode is none of these.
VELMBASE_API std::FILE* OpenStream(const std::wstring& path, const wchar_t* mode);

/// Position and seek in a C stream with 64-bit offsets; -1 and false on an error.
/// @{
VELMBASE_API std::int64_t Position(std::FILE* stream);
VELMBASE_API bool SeekTo(std::FILE* stream, std::int64_t offset, int origin);
/// @}

/// Gives the file `path` this content, whole or not at all: whatever happens, the file is the old one or the
/// new one. Without an error it is the new one, safe on the disk (its name, in a folder that may not be
/// listed, as soon as the system writes it); with one it is the old one.
///
/// The errors are the system's own, to be compared with std::errc: no_such_file_or_directory (there is no
/// such folder), permission_denied, read_only_file_system, no_space_on_device and what else it may say.
/// Beside them:
///   - device_or_resource_busy: somebody else is saving the file, and has been for ten seconds;
///   - is_a_directory, and invalid_argument for anything else that is no regular file, and for no name;
///   - too_many_links: the file has several hard links and was not to be written in place;
///   - file_exists: the name ".<name>.saving" belongs to something that is no file;
///   - operation_canceled: the caller's function said so.
///
/// While the content is written it has no name where the system allows that, so that nothing of it is left
/// whatever ends the process. It then takes the file's place. See docs/platforms.md for where a killed
/// process may leave a file ".<name>.saving" in the same folder, which the next save takes away. Mode, access
/// list, owner and symbolic links stay as they are; the new content can at no moment be read or written by
/// anybody who may not do so with the file itself. Where that cannot be (the folder takes no new file, the
/// file has several hard links, its owner cannot be kept), the file is written in place: a failed write is
/// undone, but a crash in that moment can tear it. A read-only file is not replaced.
///
/// A file is locked before its content is asked for and until it is replaced: others who replace or update it
/// by these functions wait for their turn, threads of the same process too, as long as others finish theirs.
/// So the caller's function must not save the same file itself. The lock of a process that ended, whatever
/// ended it, is gone. File systems without locks have no turns.
///
/// On Windows:
///   - content and name are flushed to the disk as on Linux; NTFS, which logs its changes, then holds the old
///     or the new file after a power loss. FAT and exFAT log nothing and may lose both;
///   - attributes and the access list stay; the owner becomes who saves, as for any new file;
///   - a file that another program holds open without sharing it for deletion cannot be replaced, before
///     Windows 10 none that is open at all: that is tried for about a second, and is
///     device_or_resource_busy too;
///   - a symbolic link whose target does not exist, a device and an alternate stream ("name:stream") are
///   refused.
[[nodiscard]] VELMBASE_API std::error_code ReplaceContents(const std::wstring& path,
                                                           std::string_view content);

/// Takes one piece of a file's content after the other; false when it cannot be written.
using ContentSink = std::function<bool(std::string_view)>;

/// Hands a file's content over piece by piece. When it returns false or throws, the file stays as it was.
using ContentComposer = std::function<bool(const ContentSink&)>;

/// What becomes of a file that could only be written in place.
enum class InPlace : std::int32_t {
    REFUSED, ///< it is not written: `compose` is called once, and may read the file itself if it closes it
    ALLOWED, ///< `compose` is called again, first for nothing, so that a failure of its own comes before the
             ///< file is touched. It must give the same content each time and not need the file. What the
             ///< file held is kept in memory meanwhile, to undo a failed write
};

/// The same for content that does not fit into memory.
[[nodiscard]] VELMBASE_API std::error_code
ReplaceContents(const std::wstring& path, const ContentComposer& compose, InPlace inPlace = InPlace::REFUSED);

/// Changes what a file holds: gets all of it, and whether there is a file at all, and returns whether the
/// result is to be written.
using ContentChange = std::function<bool(std::string& content, bool exists)>;

/// Reads the file `path`, lets `change` change its content, and replaces the file by the result as
/// ReplaceContents() does, while no other process replaces or updates it: of any number of processes that
/// update a file at the same time none loses what another one has written. Where `change` returns false, the
/// file stays as it is, without an error; what it throws is passed on. A file that is not there is made. When
/// a program that does not know of the lock makes, writes, replaces or removes the file meanwhile, `change`
/// is called again with what that has left; only in the moment of the replacement itself this is not seen.
/// A file that is written again and again gives errc::device_or_resource_busy after twenty calls.
[[nodiscard]] VELMBASE_API std::error_code UpdateContents(const std::wstring& path,
                                                          const ContentChange& change);

/// The low 32 bits of the last modification in seconds since 1970. False when the file cannot be queried.
VELMBASE_API bool ModificationTime(const std::wstring& path, std::uint32_t& seconds);

} // namespace FILES
