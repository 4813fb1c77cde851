// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/CRCFile.h"

#include "UtilityDLL/res/private/StringTable.h"
#include "UtilityDLL/settings/detail/CRCTrailer.h"
#include "VelmBase/CRCChecksum.h"
#include "VelmBase/File.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace {

constexpr auto kTrailerSize = static_cast<std::int64_t>(CRC_TRAILER::SIZE);

std::optional<std::uint32_t> ReadTrailer(std::FILE* file) {
    CRC_TRAILER::Bytes bytes;
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) return std::nullopt;
    return CRC_TRAILER::Value(bytes.data());
}

// The checksum of the first `length` bytes; 0 for none. When the file ends before, the last inversion is left
// out, so that a file cut short cannot match by accident.
std::uint32_t ComputeCRC(std::FILE* file, std::int64_t length) {
    if (length <= 0 || !FILES::SeekTo(file, 0, SEEK_SET)) return 0;
    constexpr std::int64_t kBlock = 64 * 1024;
    unsigned char block[kBlock]; // no allocation: a destructor seals, and must not throw
    CRCChecksum checksum;
    while (length > 0) {
        const auto wanted = static_cast<std::size_t>(std::min(length, kBlock));
        const std::size_t got = std::fread(block, 1, wanted, file);
        checksum.Update(block, got);
        if (got < wanted) return checksum.Register();
        length -= static_cast<std::int64_t>(got);
    }
    return checksum.Value();
}

bool CheckCRC(std::FILE* file) {
    if (!FILES::SeekTo(file, -kTrailerSize, SEEK_END)) return false;
    const std::int64_t length = FILES::Position(file);
    if (length < 0) return false;
    const std::optional<std::uint32_t> stored = ReadTrailer(file);
    return stored && *stored == ComputeCRC(file, length);
}

void AddChecksum(std::FILE* file) {
    if (!FILES::SeekTo(file, 0, SEEK_END)) return;
    const std::uint32_t crc = ComputeCRC(file, FILES::Position(file));
    if (!FILES::SeekTo(file, 0, SEEK_END)) return;
    const CRC_TRAILER::Bytes bytes = CRC_TRAILER::Of(crc);
    std::fwrite(bytes.data(), 1, bytes.size(), file);
}

} // namespace

// The open file that CRCFile objects share.
class CRCFile::Stream {
public:
    enum class Use { NONE, READ, WRITTEN };

    Stream(std::FILE* file, bool writing) : m_file(file), m_writing(writing) {}
    ~Stream() { Close(); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    std::FILE* Get() const { return m_file; }

    std::size_t Read(void* buffer, std::size_t size, std::size_t count) {
        return std::fread(buffer, size, count, For(Use::READ));
    }

    std::size_t Write(const void* buffer, std::size_t size, std::size_t count) {
        const std::size_t written = std::fwrite(buffer, size, count, For(Use::WRITTEN));
        if (size > 0 && written < count) m_hasFailed = true;
        return written;
    }

    bool Seek(std::int64_t offset, int origin) {
        Flush(); // or the runtime would do so, and its failure would pass unnoticed
        m_lastUse = Use::NONE;
        return FILES::SeekTo(m_file, offset, origin);
    }

    // False for ever once something could not be written. After reading there is nothing to write out, and
    // some C runtimes would drop what was read ahead and with it the position.
    bool Flush() {
        if (m_lastUse == Use::WRITTEN && std::fflush(m_file) != 0) m_hasFailed = true;
        return !m_hasFailed;
    }

    // A file that lacks what should have been written gets no trailer: it would seal the loss.
    void Close() {
        if (!m_file) return;
        if (m_writing && Flush()) AddChecksum(m_file);
        std::fclose(m_file);
        m_file = nullptr;
    }

private:
    // The C runtime wants a positioning call between reading and writing; without one, what comes is
    // undefined.
    std::FILE* For(Use use) {
        if (m_lastUse != use && m_lastUse != Use::NONE) Seek(0, SEEK_CUR);
        m_lastUse = use;
        return m_file;
    }

    std::FILE* m_file;
    bool m_writing;
    bool m_hasFailed = false; // a write
    Use m_lastUse = Use::NONE;
};

CRCFile::~CRCFile() { Close(); }

ErrorString CRCFile::Open(const std::wstring& path, const wchar_t* mode) {
    Close();
    const std::wstring_view letters = mode ? mode : L"";
    const bool writing = letters.find_first_of(L"wW") != std::wstring_view::npos;
    // Both "w" and "a" are opened for reading too: the checksum is computed from what the file holds.
    const bool isPlainRead = letters.substr(0, 1) == L"r" && letters.find(L'+') == std::wstring_view::npos;
    std::wstring streamMode(letters.substr(0, 1));
    if (!isPlainRead) streamMode += L'+';
    if (letters.find(L'x') != std::wstring_view::npos) streamMode += L'x'; // a file that is there stays
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(FILES::OpenStream(path, streamMode.c_str()),
                                                         &std::fclose);
    if (!file) return ErrorString(LoadText(TextId::CRC_ERROR_OPENING)) << path << L"\".";
    m_stream = std::make_shared<Stream>(file.get(), writing);
    std::FILE* const opened = file.release();
    if (!writing && !CheckCRC(opened)) {
        Close();
        return ErrorString(LoadText(TextId::CRC_ERROR_OPENING))
               << path << L"\"." << LoadText(TextId::CRC_INVALID_CHECKSUM);
    }
    Rewind();
    return {};
}

void CRCFile::Close() {
    if (m_stream) m_stream->Close();
    m_stream.reset();
}

bool CRCFile::IsOpen() const { return m_stream && m_stream->Get(); }

std::size_t CRCFile::Read(void* buffer, std::size_t size, std::size_t count) {
    return IsOpen() ? m_stream->Read(buffer, size, count) : 0;
}

std::size_t CRCFile::Write(const void* buffer, std::size_t size, std::size_t count) {
    return IsOpen() ? m_stream->Write(buffer, size, count) : 0;
}

bool CRCFile::Seek(int offset, int origin) { return IsOpen() && m_stream->Seek(offset, origin); }

unsigned int CRCFile::Tell() {
    if (!IsOpen()) return 0;
    constexpr std::int64_t kLargest = std::numeric_limits<unsigned int>::max();
    return static_cast<unsigned int>(std::clamp<std::int64_t>(FILES::Position(m_stream->Get()), 0, kLargest));
}

void CRCFile::Rewind() { Seek(0, SEEK_SET); }

bool CRCFile::Flush() { return IsOpen() && m_stream->Flush(); }

unsigned int CRCFile::GetCRC(const std::wstring& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(FILES::OpenStream(path, L"r"), &std::fclose);
    if (!file || !FILES::SeekTo(file.get(), -kTrailerSize, SEEK_END)) return 0;
    return ReadTrailer(file.get()).value_or(0);
}
