// SPDX-License-Identifier: MIT
// Checked files. The first byte chooses: the rest as a file that is opened for reading, or as a script of
// writes and seeks whose result must be that of a plain buffer, sealed.

#include "UtilityDLL/settings/CRCFile.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFile.h"

#include <algorithm>

namespace {

unsigned int Crc(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFFu;
    for (const char c : bytes) {
        sum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ (sum & 1 ? 0xEDB88320u : 0u);
    }
    return ~sum;
}

std::string Sealed(std::string_view data) {
    std::string bytes(data);
    unsigned int crc = Crc(data);
    for (int i = 0; i < 4; ++i, crc >>= 8) bytes += static_cast<char>(crc);
    return bytes;
}

void CheckReading(const ScratchFile& scratch, std::string_view bytes) {
    scratch.Write(bytes.data(), bytes.size());
    CRCFile file;
    const bool opened = static_cast<bool>(file.Open(scratch.Path(), L"rb"));
    const bool whole = bytes.size() >= 4 && Sealed(bytes.substr(0, bytes.size() - 4)) == bytes;
    Require(opened == whole, "a file opens exactly when its trailer is right");
    Require(opened == file.IsOpen(), "the object is open exactly when that worked");
    Require(!opened || file.Tell() == 0, "the position is the start");
    if (bytes.size() >= 4) {
        unsigned int stored = 0;
        for (std::size_t i = 0; i < 4; ++i)
            stored |= static_cast<unsigned int>(static_cast<unsigned char>(bytes[bytes.size() - 4 + i]))
                      << 8 * i;
        Require(CRCFile::GetCRC(scratch.Path()) == stored, "the stored trailer is told unchecked");
    }
}

void CheckWriting(const ScratchFile& scratch, std::string_view script) {
    CRCFile file;
    Require(static_cast<bool>(file.Open(scratch.Path(), L"wb")), "a file can be written");
    std::string model;
    std::size_t position = 0;
    while (script.size() >= 3) {
        const std::size_t number = static_cast<unsigned char>(script[1]) |
                                   static_cast<std::size_t>(static_cast<unsigned char>(script[2])) << 8;
        const int action = script[0] & 3;
        script.remove_prefix(3);
        if (action == 0) {
            const std::string_view data = script.substr(0, number);
            script.remove_prefix(data.size());
            Require(file.Write(data.data(), 1, data.size()) == data.size(), "all is written");
            if (data.empty()) continue;
            if (model.size() < position + data.size()) model.resize(position + data.size());
            model.replace(position, data.size(), data);
            position += data.size();
        } else if (action == 1) {
            std::string buffer(number % 5000, '\0');
            const std::size_t count = file.Read(buffer.data(), 1, buffer.size());
            const std::string expected = position < model.size() ? model.substr(position, buffer.size()) : "";
            Require(buffer.substr(0, count) == expected, "what was written is read back");
            position += count;
        } else if (action == 2) {
            Require(file.Seek(static_cast<int>(number), SEEK_SET), "any place can be sought");
            position = number;
        } else {
            Require(file.Flush(), "the file can be flushed");
        }
        Require(file.Tell() == position, "the position is known");
    }
    file.Close();
    Require(scratch.Read() == Sealed(model), "the file is the data and its trailer");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile scratch;
    if (size == 0) return 0;
    const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 3) {
    case 0:
        CheckReading(scratch, rest);
        break;
    case 1:
        CheckReading(scratch, Sealed(rest));
        break;
    default:
        CheckWriting(scratch, rest);
    }
    return 0;
}
