#include "UtilityDLL/settings/CRCFile.h"

#include "UtilityDLL/res/StringTable.h"
#include "VelmBase/CRCChecksum.h"
#include "VelmBase/File.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace {

constexpr std::int64_t kTrailerSize = 4;

std::optional<std::uint32_t> ReadTrailer(std::FILE* file) {
    unsigned char bytes[kTrailerSize];
    if (std::fread(bytes, 1, sizeof bytes, file) != sizeof bytes) return std::nullopt;
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
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
    const unsigned char bytes[kTrailerSize] = {
        static_cast<unsigned char>(crc), static_cast<unsigned char>(crc >> 8),
        static_cast<unsigned char>(crc >> 16), static_cast<unsigned char>(crc >> 24)};
    std::fwrite(bytes, 1, sizeof bytes, file);
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

    // The C runtime wants a positioning call between reading and writing; without one, what comes is
    // undefined.
    std::FILE* For(Use use) {
        if (m_file && m_lastUse != use && m_lastUse != Use::NONE) FILES::SeekTo(m_file, 0, SEEK_CUR);
        m_lastUse = use;
        return m_file;
    }

    // After reading there is nothing to write out, and some C runtimes would drop what was read ahead and
    // with it the position.
    bool Flush() { return m_lastUse == Use::READ || std::fflush(m_file) == 0; }

    void Close() {
        if (!m_file) return;
        if (m_writing) AddChecksum(m_file);
        std::fclose(m_file);
        m_file = nullptr;
    }

private:
    std::FILE* m_file;
    bool m_writing;
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
    return IsOpen() ? std::fread(buffer, size, count, m_stream->For(Stream::Use::READ)) : 0;
}

std::size_t CRCFile::Write(const void* buffer, std::size_t size, std::size_t count) {
    return IsOpen() ? std::fwrite(buffer, size, count, m_stream->For(Stream::Use::WRITTEN)) : 0;
}

bool CRCFile::Seek(int offset, int origin) {
    return IsOpen() && FILES::SeekTo(m_stream->For(Stream::Use::NONE), offset, origin);
}

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
