// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/FileChecksum.h"

#include "VelmBase/CRCChecksum.h"
#include "VelmBase/File.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr unsigned int kBlockWords = 4096;
constexpr std::size_t kWordSize = 4;

// Reads until the buffer is full or the file ends: the number of whole words.
std::size_t ReadWords(FILES::Reader& file, std::vector<unsigned char>& buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const std::size_t got = file.Read(buffer.data() + filled, buffer.size() - filled);
        if (got == 0) break;
        filled += got;
    }
    return filled / kWordSize;
}

} // namespace

// Exported, for hosts that bind a reference to it.
constexpr unsigned int FileChecksum::ALL_WORDS; // NOLINT(readability-redundant-declaration)

FileChecksum::FileChecksum(const std::wstring& path, unsigned int maxWords) : m_path(path) {
    std::uint32_t modified = 0;
    if (path.empty() || !FILES::ModificationTime(path, modified)) return;
    FILES::Reader file(path);
    if (!file.IsOpen()) return;

    CRCChecksum checksum;
    checksum += modified;
    std::vector<unsigned char> block(std::min(maxWords, kBlockWords) * kWordSize);
    for (std::uint64_t remaining = maxWords; !block.empty();) {
        const std::size_t words = ReadWords(file, block);
        checksum.Update(block.data(), words * kWordSize);
        if (words * kWordSize < block.size()) break;
        if (maxWords == ALL_WORDS) continue;
        if (words > remaining) break;
        remaining -= words;
    }
    if (!file.Failed()) m_value = checksum.Value();
}
