#pragma once

#include "VelmBase/Export.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

/// The file services that the suite needs of the operating system. Paths are wide text on every platform; on
/// Linux they are UTF-8 on disk. Only regular files count: a folder, a pipe or a device cannot be opened.
namespace FILES {

/// A file opened for sequential reading of bytes; closed by the destructor. Others may write, rename or
/// delete the file meanwhile.
class VELMBASE_API Reader {
public:
    explicit Reader(const std::wstring& path);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    bool IsOpen() const { return m_handle != -1; }

    /// The size in bytes when the file was opened.
    std::uint64_t Size() const { return m_size; }

    /// Reads up to `count` bytes; 0 at the end and on an error (then Failed() is true).
    std::size_t Read(void* buffer, std::size_t count);
    bool Failed() const { return m_failed; }

private:
    std::intptr_t m_handle = -1;
    std::uint64_t m_size = 0;
    bool m_failed = false;
};

/// Opens a C stream in binary mode. `mode` begins with r, w or a; a "+" in it adds the other direction, and
/// an "x" keeps "w" from opening a file that is there already.
/// Null when the file cannot be opened or the mode is none of these.
VELMBASE_API std::FILE* OpenStream(const std::wstring& path, const wchar_t* mode);

/// Position and seek in a C stream with 64-bit offsets; -1 and false on an error.
VELMBASE_API std::int64_t Position(std::FILE* stream);
VELMBASE_API bool SeekTo(std::FILE* stream, std::int64_t offset, int origin);

/// Gives the file `path` this content, whole or not at all: whatever happens, the file is the old one or the
/// new one. Returns true when it is the new one, safe on the disk (its name, in a folder that may not be
/// listed, as soon as the system writes it); false when it is the old one.
///
/// The content goes to a temporary file ".<name>.saving" in the same folder, which then takes the file's
/// place; a temporary file that a killed process left is used again, and one of a living process is waited
/// for, up to ten seconds. Mode, access list, owner and symbolic links stay as they are; the temporary file
/// never lets anybody read or write it who may not do so with the file itself. Where that cannot be
/// (the folder takes no new file, the file has several hard links, its owner cannot be kept), the file is
/// written in place: a failed write is undone, but a crash in that moment can tear it. A read-only file is
/// not replaced.
///
/// On Windows:
///   - content and name are flushed to the disk as on Linux; NTFS, which logs its changes, then holds the old
///     or the new file after a power loss. FAT and exFAT log nothing and may lose both;
///   - attributes and the access list stay; the owner becomes who saves, as for any new file;
///   - a file that another program holds open without sharing it for deletion cannot be replaced, before
///     Windows 10 none that is open at all: that is tried for about a second, and so is a save of the same
///     file by another process, before the result is false;
///   - a symbolic link whose target does not exist, a device and an alternate stream ("name:stream") are
///   refused.
[[nodiscard]] VELMBASE_API bool ReplaceContents(const std::wstring& path, std::string_view content);

/// Takes one piece of a file's content after the other; false when it cannot be written.
using ContentSink = std::function<bool(std::string_view)>;

/// Hands a file's content over piece by piece. When it returns false or throws, the file stays as it was.
using ContentComposer = std::function<bool(const ContentSink&)>;

/// What becomes of a file that could only be written in place.
enum class InPlace : std::int32_t {
    REFUSED, ///< it is not written: `compose` is called once, and may read the file itself if it closes it
    ALLOWED, ///< `compose` is called twice, first for nothing, so that a failure of its own comes before the
             ///< file is touched. It must give the same content each time and not need the file. What the
             ///< file held is kept in memory meanwhile, to undo a failed write
};

/// The same for content that does not fit into memory.
[[nodiscard]] VELMBASE_API bool ReplaceContents(const std::wstring& path, const ContentComposer& compose,
                                                InPlace inPlace = InPlace::REFUSED);

/// The low 32 bits of the last modification in seconds since 1970. False when the file cannot be queried.
VELMBASE_API bool ModificationTime(const std::wstring& path, std::uint32_t& seconds);

} // namespace FILES
