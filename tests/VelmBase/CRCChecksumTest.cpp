// SPDX-License-Identifier: MIT
#include "VelmBase/CRCChecksum.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

/// The checksum as it is defined: one bit at a time.
class BitByBit {
public:
    void Feed(unsigned char byte) {
        m_register ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            m_register = (m_register >> 1) ^ (m_register & 1 ? 0xEDB88320u : 0u);
    }
    std::uint32_t Value() const { return ~m_register; }
    std::uint32_t Register() const { return m_register; }

private:
    std::uint32_t m_register = 0xFFFFFFFFu;
};

unsigned int Crc(std::string_view bytes) {
    CRCChecksum checksum;
    checksum.Update(bytes.data(), bytes.size());
    return checksum.Value();
}

std::string RandomBytes(Random& random, std::size_t count) {
    std::string bytes(count, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random.Below(256));
    return bytes;
}

} // namespace

TEST(CRCChecksum, KnownValues) {
    struct Row {
        std::string bytes;
        unsigned int value;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"", 0u},
             {"123456789", 0xCBF43926u},
             {"a", 0xE8B7BE43u},
             {"The quick brown fox jumps over the lazy dog", 0x414FA339u},
             {std::string(4, '\0'), 0x2144DF1Cu},
             {std::string(32, '\0'), 0x190A55ADu},
             {std::string(32, '\xFF'), 0xFF6CAB0Bu},
         })
        EXPECT_EQ(row.value, Crc(row.bytes)) << row.bytes;
}

TEST(CRCChecksum, UntouchedItIsZero) {
    EXPECT_EQ(0u, CRCChecksum().Value());
    EXPECT_EQ(0xFFFFFFFFu, CRCChecksum().Register());
    CRCChecksum checksum;
    checksum.Update(nullptr, 0);
    checksum += std::wstring();
    EXPECT_EQ(0u, checksum.Value());
}

TEST(CRCChecksum, EveryLengthAtEveryAlignmentIsTheBitwiseOne) {
    Random random(30);
    const std::string data = RandomBytes(random, 1400);
    for (std::size_t start = 0; start < 20; ++start) {
        BitByBit plain;
        for (std::size_t length = 0; length <= 1300; ++length) {
            ASSERT_EQ(plain.Value(), Crc(std::string_view(data).substr(start, length)))
                << start << ' ' << length;
            plain.Feed(static_cast<unsigned char>(data[start + length]));
        }
    }
}

TEST(CRCChecksum, EverySplitGivesTheSame) {
    Random random(31);
    const std::string data = RandomBytes(random, 600);
    BitByBit plain;
    for (const char c : data) plain.Feed(static_cast<unsigned char>(c));
    for (std::size_t first = 0; first <= data.size(); ++first) {
        CRCChecksum checksum;
        checksum.Update(data.data(), first);
        checksum.Update(data.data() + first, data.size() - first);
        ASSERT_EQ(plain.Value(), checksum.Value()) << first;
        ASSERT_EQ(plain.Register(), checksum.Register()) << first;
    }
}

TEST(CRCChecksum, LongBuffersInRandomPiecesAreTheBitwiseOne) {
    Random random(32);
    for (int i = 0; i < 30; ++i) {
        const std::string data = RandomBytes(random, 1 + random.Below(200000));
        BitByBit plain;
        CRCChecksum checksum;
        std::size_t done = 0;
        while (done < data.size()) {
            const std::size_t count =
                std::min<std::size_t>(random.Below(random.OnceIn(2) ? 70 : 40000), data.size() - done);
            checksum.Update(data.data() + done, count);
            for (std::size_t k = 0; k < count; ++k) plain.Feed(static_cast<unsigned char>(data[done + k]));
            done += count;
            ASSERT_EQ(plain.Value(), checksum.Value());
        }
    }
}

TEST(CRCChecksum, NumbersAreFedLowByteFirst) {
    Random random(33);
    CRCChecksum numbers;
    BitByBit plain;
    for (int i = 0; i < 100000; ++i) {
        const auto value = static_cast<std::uint32_t>(random.Bits());
        if (random.OnceIn(2))
            numbers += value;
        else
            numbers += static_cast<int>(value);
        for (int shift = 0; shift < 32; shift += 8) plain.Feed(static_cast<unsigned char>(value >> shift));
        ASSERT_EQ(plain.Value(), numbers.Value());
    }
    CRCChecksum one;
    one += 0x34333231;
    EXPECT_EQ(Crc("1234"), one.Value());
    CRCChecksum negative;
    negative += -1;
    EXPECT_EQ(Crc("\xFF\xFF\xFF\xFF"), negative.Value());
}

TEST(CRCChecksum, TextsAreFedAsUtf16LowByteFirst) {
    const auto fed = [](const std::wstring& text) {
        CRCChecksum checksum;
        checksum += text;
        return checksum.Value();
    };
    EXPECT_EQ(Crc(std::string("a\0\xFC\0\xA9\x03", 6)), fed(L"a\u00FC\u03A9"));
    EXPECT_EQ(Crc(std::string("\0\0", 2)), fed(std::wstring(1, L'\0')));
    EXPECT_EQ(Crc("\x3D\xD8\xA2\xDE"), fed(L"\U0001F6A2"));
    EXPECT_EQ(Crc("\xFF\xDB\xFF\xDF"), fed(L"\U0010FFFF"));
    EXPECT_EQ(Crc(std::string("\0\xD8\0\xDC", 4)), fed(L"\U00010000"));
    EXPECT_EQ(Crc("\xFF\xFF"), fed(L"\uFFFF"));
    std::wstring lone(1, static_cast<wchar_t>(0xD83D));
    EXPECT_EQ(Crc("\x3D\xD8"), fed(lone));
}

TEST(CRCChecksum, LongTextsAreTheBitwiseOne) {
    Random random(34);
    for (std::size_t length = 0; length < 400; ++length) {
        std::wstring text;
        BitByBit plain;
        for (std::size_t i = 0; i < length; ++i) {
            const unsigned unit = random.OnceIn(2) ? random.Below(256) : random.Below(0xD800);
            text += static_cast<wchar_t>(unit);
            plain.Feed(static_cast<unsigned char>(unit));
            plain.Feed(static_cast<unsigned char>(unit >> 8));
        }
        CRCChecksum checksum;
        checksum += text;
        ASSERT_EQ(plain.Value(), checksum.Value()) << length;
    }
}

TEST(CRCChecksum, ValueMayBeReadInBetween) {
    CRCChecksum checksum;
    checksum.Update("12345", 5);
    EXPECT_EQ(Crc("12345"), checksum.Value());
    EXPECT_EQ(Crc("12345"), checksum.Value());
    checksum.Update("6789", 4);
    EXPECT_EQ(0xCBF43926u, checksum.Value());
    EXPECT_EQ(~0xCBF43926u, checksum.Register());
}
