// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "VelmBase/ErrorString.h"

#include <cstddef>
#include <memory>
#include <string>

/// A binary file guarded by a CRC-32 trailer: the last 4 bytes hold the checksum of all bytes before them,
/// low byte first. A file written through it gets its trailer when it is closed; a file opened for reading is
/// checked. The trailer is not hidden: a reader stops 4 bytes before the end.
///
/// After a copying assignment both objects share one open file; it is closed once, by whichever closes it
/// first, and both are then closed. Files may be larger than 4 GiB: sealing and checking cover them whole.
/// Seek() reaches such places in several steps, and Tell() gives 4294967295 for positions beyond 32 bits.
class UTILITYDLL_API CRCFile {
public:
    CRCFile() = default; ///< closed
    CRCFile(const CRCFile&) = delete;

    /// Both objects share the file that `other` has open; the one that this had open is closed when nobody
    /// shares it.
    CRCFile& operator=(const CRCFile& other) = default;

    /// The other object is closed afterwards.
    /// @{
    CRCFile(CRCFile&& other) noexcept = default;
    CRCFile& operator=(CRCFile&& other) noexcept = default;
    /// @}

    /// Closes the file as Close() does, also when another object shares it.
    ~CRCFile();

    /// Closes any open file and opens `path` with a mode of the C runtime. A mode with "w" or "W" is writing;
    /// any other ("r", "a", "r+") has the file checked and gets no trailer on closing. "wx" refuses a file
    /// that is there. Files are always binary, and can be read back whatever the mode. Errors, with the
    /// object closed:
    ///   - the file cannot be opened: `Error opening "<path>".`;
    ///   - the trailer is missing or wrong: the same, followed by ` The file has an invalid checksum`.
    ///
    /// After success the position is the start of the file.
    ErrorString Open(const std::wstring& path, const wchar_t* mode);

    /// Adds the trailer when writing, and closes. Nothing when closed. After a write that failed there is no
    /// trailer, so that the file fails its check; a disk that is full now leaves such a file as well.
    void Close();

    /// Whether the file is open: not before Open(), after Close(), and after an object that shares it closed
    /// it.
    bool IsOpen() const;

    /// Block read and write of the C runtime: the number of whole items; 0 when closed.
    /// @{
    std::size_t Read(void* buffer, std::size_t size, std::size_t count);
    std::size_t Write(const void* buffer, std::size_t size, std::size_t count);
    /// @}

    /// Moves the position by `offset` bytes from `origin` (SEEK_SET, SEEK_CUR, SEEK_END). False when closed,
    /// and when the C runtime cannot do it.
    bool Seek(int offset, int origin);

    /// The position; 0 when closed.
    unsigned int Tell();

    /// Moves the position to the start of the file. Nothing when closed.
    void Rewind();

    /// Writes out what the C runtime buffers. False when that cannot be done, ever after a write that failed,
    /// and when closed.
    bool Flush();

    /// The trailer stored in the file `path`, unchecked; 0 when it cannot be read.
    static unsigned int GetCRC(const std::wstring& path);

private:
    class Stream;
    std::shared_ptr<Stream> m_stream;
};
