// SPDX-License-Identifier: MIT
#include "VelmBase/CRCChecksum.h"

#include "VelmBase/Utf16.h"

#include <array>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320u;
constexpr int kSlices = 16;

using Tables = std::array<std::array<std::uint32_t, 256>, kSlices>;

// tables[k][b] is the register after the byte b and k zero bytes.
constexpr Tables MakeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ (value & 1 ? kPolynomial : 0);
        tables[0][byte] = value;
    }
    for (std::size_t slice = 1; slice < kSlices; ++slice)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t previous = tables[slice - 1][byte];
            tables[slice][byte] = (previous >> 8) ^ tables[0][previous & 0xFF];
        }
    return tables;
}

constexpr Tables kTables = MakeTables();

std::uint32_t LoadLittleEndian(const unsigned char* bytes) {
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

// `word` looked up in the four tables that end at `lastSlice`.
std::uint32_t FoldWord(std::uint32_t word, std::size_t lastSlice) {
    return kTables[lastSlice][word & 0xFF] ^ kTables[lastSlice - 1][word >> 8 & 0xFF] ^
           kTables[lastSlice - 2][word >> 16 & 0xFF] ^ kTables[lastSlice - 3][word >> 24];
}

std::uint32_t UpdateBySlices(std::uint32_t crc, const unsigned char* bytes, std::size_t count) {
    for (; count >= 16; bytes += 16, count -= 16)
        crc = FoldWord(crc ^ LoadLittleEndian(bytes), 15) ^ FoldWord(LoadLittleEndian(bytes + 4), 11) ^
              FoldWord(LoadLittleEndian(bytes + 8), 7) ^ FoldWord(LoadLittleEndian(bytes + 12), 3);
    for (; count >= 4; bytes += 4, count -= 4) crc = FoldWord(crc ^ LoadLittleEndian(bytes), 3);
    for (; count > 0; ++bytes, --count) crc = (crc >> 8) ^ kTables[0][(crc ^ *bytes) & 0xFF];
    return crc;
}

#if defined(__x86_64__)

// The folding
//
// A CRC is the remainder of a polynomial whose coefficients are the bits of the message, divided by the
// polynomial P of the standard; adding is exclusive or. Dividing bit by bit, or byte by byte through a table,
// is a chain in which each step waits for the one before. Folding shortens the message instead, 16 bytes at a
// step, without changing its remainder, and leaves only the last 16 bytes to be divided.
//
// Let a block A stand n bits before a block B. A counts as A * x^n, and modulo P that is A * (x^n mod P),
// where x^n mod P is a constant of 32 bits. The product of a 64-bit half of A with that constant has 96 bits,
// which is less than a block: so A can be taken off the message if the two products are added to B.
//
//     message   ... A ........ B ...       B' = B + A.high * (x^(n+64) mod P) + A.low * (x^n mod P)
//                   '----n-----^
//
// The processor has an instruction for such products without carries. The next can begin before one
// is done: so four blocks (sixteen in the wide form) are folded side by side, each onto the one
// four places on, and nothing waits. At the end they are folded onto each other, and the tables above divide
// what is left with the bytes that made no block.
//
// Three details make it the CRC of the standard:
//   - the first bit of the message is the lowest bit of its first byte, so the polynomials stand mirrored in
//     the registers: the high half of the formula is the low half of a register, and a mirrored product of
//     two 64-bit numbers comes out one bit too low, which the constants make up for by standing one bit
//     higher;
//   - a mirrored 32-bit constant stands at the end of 64 bits that carry another 32 powers: so the exponents
//     are n+32 and n-32 where the formula has n+64 and n;
//   - the initial register is added to the first four bytes of the message. Behind the folding the register
//     begins at 0, since all that it would hold is in the last block.
//
// The constants are computed here, at compile time; two well-known ones are checked below.

// x^degree modulo the CRC polynomial, mirrored and one bit to the left.
constexpr long long FoldConstant(int degree) {
    std::uint32_t value = 0x80000000u; // x^0, reflected
    for (int i = 0; i < degree; ++i) value = (value >> 1) ^ (value & 1 ? kPolynomial : 0);
    return static_cast<long long>(value) << 1;
}
static_assert(FoldConstant(4 * 128 + 32) == 0x154442BD4 && FoldConstant(4 * 128 - 32) == 0x1C6E41596);

// The instructions that a function may use beyond the baseline; Update() asks whether the processor has them.
#define NARROW __attribute__((target("pclmul,sse4.1")))
#define WIDE __attribute__((target("vpclmulqdq,avx2,pclmul,sse4.1")))

NARROW inline __m128i Fold(__m128i block, __m128i constants, __m128i next) {
    const __m128i low = _mm_clmulepi64_si128(block, constants, 0x00);
    const __m128i high = _mm_clmulepi64_si128(block, constants, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, high), next);
}

NARROW inline __m128i Load(const unsigned char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

// The constants that fold over a distance of `bits`.
template <int bits> NARROW inline __m128i FoldBy() {
    constexpr long long high = FoldConstant(bits - 32);
    constexpr long long low = FoldConstant(bits + 32);
    return _mm_set_epi64x(high, low);
}

// Folds what is left behind four blocks, and reduces the last one by the tables.
NARROW inline std::uint32_t Finish(__m128i (&lanes)[4], const unsigned char* bytes, std::size_t count) {
    const __m128i by4 = FoldBy<4 * 128>();
    for (; count >= 64; bytes += 64, count -= 64)
        for (int i = 0; i < 4; ++i) lanes[i] = Fold(lanes[i], by4, Load(bytes + 16 * i));

    const __m128i by1 = FoldBy<128>();
    __m128i block = lanes[0];
    for (int i = 1; i < 4; ++i) block = Fold(block, by1, lanes[i]);
    for (; count >= 16; bytes += 16, count -= 16) block = Fold(block, by1, Load(bytes));

    unsigned char last[16];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(last), block);
    return UpdateBySlices(UpdateBySlices(0, last, sizeof last), bytes, count);
}

// At least 64 bytes.
NARROW std::uint32_t UpdateByMultiplication(std::uint32_t crc, const unsigned char* bytes,
                                            std::size_t count) {
    __m128i lanes[4];
    for (int i = 0; i < 4; ++i) lanes[i] = Load(bytes + 16 * i);
    lanes[0] = _mm_xor_si128(lanes[0], _mm_cvtsi32_si128(static_cast<int>(crc)));
    return Finish(lanes, bytes + 64, count - 64);
}

WIDE inline __m256i FoldWide(__m256i block, __m256i constants, __m256i next) {
    const __m256i low = _mm256_clmulepi64_epi128(block, constants, 0x00);
    const __m256i high = _mm256_clmulepi64_epi128(block, constants, 0x11);
    return _mm256_xor_si256(_mm256_xor_si256(low, high), next);
}

WIDE inline __m256i LoadWide(const unsigned char* bytes) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
}

constexpr std::size_t kWideMinimum = 512;

// At least kWideMinimum bytes, sixteen blocks at a time, two to a register.
WIDE std::uint32_t UpdateByWideMultiplication(std::uint32_t crc, const unsigned char* bytes,
                                              std::size_t count) {
    __m256i lanes[8];
    for (int i = 0; i < 8; ++i) lanes[i] = LoadWide(bytes + 32 * i);
    lanes[0] = _mm256_xor_si256(lanes[0], _mm256_castsi128_si256(_mm_cvtsi32_si128(static_cast<int>(crc))));
    bytes += 256;
    count -= 256;

    const __m256i by16 = _mm256_broadcastsi128_si256(FoldBy<16 * 128>());
    for (; count >= 256; bytes += 256, count -= 256)
        for (int i = 0; i < 8; ++i) lanes[i] = FoldWide(lanes[i], by16, LoadWide(bytes + 32 * i));

    const __m256i by4 = _mm256_broadcastsi128_si256(FoldBy<4 * 128>());
    for (int i = 2; i < 8; i += 2) {
        lanes[i] = FoldWide(lanes[i - 2], by4, lanes[i]);
        lanes[i + 1] = FoldWide(lanes[i - 1], by4, lanes[i + 1]);
    }
    __m128i last[4] = {_mm256_castsi256_si128(lanes[6]), _mm256_extracti128_si256(lanes[6], 1),
                       _mm256_castsi256_si128(lanes[7]), _mm256_extracti128_si256(lanes[7], 1)};
    return Finish(last, bytes, count);
}

std::uint32_t Update(std::uint32_t crc, const unsigned char* bytes, std::size_t count) {
    static const bool canMultiply = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
    static const bool canMultiplyWide =
        canMultiply && __builtin_cpu_supports("vpclmulqdq") && __builtin_cpu_supports("avx2");
    if (canMultiplyWide && count >= kWideMinimum) return UpdateByWideMultiplication(crc, bytes, count);
    return canMultiply && count >= 64 ? UpdateByMultiplication(crc, bytes, count)
                                      : UpdateBySlices(crc, bytes, count);
}

#else

std::uint32_t Update(std::uint32_t crc, const unsigned char* bytes, std::size_t count) {
    return UpdateBySlices(crc, bytes, count);
}

#endif

} // namespace

void CRCChecksum::Update(const void* bytes, std::size_t count) {
    m_register = ::Update(m_register, static_cast<const unsigned char*>(bytes), count);
}

CRCChecksum& CRCChecksum::operator+=(unsigned int value) {
    m_register = FoldWord(m_register ^ value, 3);
    return *this;
}

CRCChecksum& CRCChecksum::operator+=(const std::wstring& text) {
    unsigned char buffer[512];
    std::size_t filled = 0;
    ForEachUtf16Unit(text, [&](char16_t unit) {
        buffer[filled++] = static_cast<unsigned char>(unit & 0xFF);
        buffer[filled++] = static_cast<unsigned char>(unit >> 8);
        if (filled == sizeof buffer) {
            Update(buffer, filled);
            filled = 0;
        }
    });
    Update(buffer, filled);
    return *this;
}
