// SPDX-License-Identifier: MIT
// CRC-32 in memory and of a file, beside zlib, libdeflate and the plain slicing-by-8 of textbooks.

#include "UtilityDLL/settings/CRCFile.h"
#include "VelmBase/CRCChecksum.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <libdeflate.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

const std::vector<unsigned char>& Data() {
    static const std::vector<unsigned char> data = [] {
        std::vector<unsigned char> bytes(64 << 20);
        std::uint32_t state = 1;
        for (unsigned char& byte : bytes)
            byte = static_cast<unsigned char>((state = state * 1664525 + 1013904223) >> 24);
        return bytes;
    }();
    return data;
}

std::uint32_t SlicingBy8(std::uint32_t crc, const unsigned char* bytes, std::size_t count) {
    static const auto tables = [] {
        std::vector<std::uint32_t> t(8 * 256);
        for (std::uint32_t b = 0; b < 256; ++b) {
            std::uint32_t value = b;
            for (int i = 0; i < 8; ++i) value = value >> 1 ^ (value & 1 ? 0xEDB88320u : 0);
            t[b] = value;
        }
        for (int s = 1; s < 8; ++s)
            for (int b = 0; b < 256; ++b)
                t[s * 256 + b] = t[(s - 1) * 256 + b] >> 8 ^ t[t[(s - 1) * 256 + b] & 255];
        return t;
    }();
    crc = ~crc;
    for (; count >= 8; bytes += 8, count -= 8) {
        std::uint32_t a;
        std::uint32_t b;
        std::memcpy(&a, bytes, 4);
        std::memcpy(&b, bytes + 4, 4);
        a ^= crc;
        crc = tables[7 * 256 + (a & 255)] ^ tables[6 * 256 + (a >> 8 & 255)] ^
              tables[5 * 256 + (a >> 16 & 255)] ^ tables[4 * 256 + (a >> 24)] ^ tables[3 * 256 + (b & 255)] ^
              tables[2 * 256 + (b >> 8 & 255)] ^ tables[256 + (b >> 16 & 255)] ^ tables[b >> 24];
    }
    for (; count > 0; ++bytes, --count) crc = crc >> 8 ^ tables[(crc ^ *bytes) & 255];
    return ~crc;
}

std::uint32_t Ours(std::uint32_t, const unsigned char* bytes, std::size_t count) {
    CRCChecksum checksum;
    checksum.Update(bytes, count);
    return checksum.Value();
}
std::uint32_t Zlib(std::uint32_t crc, const unsigned char* bytes, std::size_t count) {
    return static_cast<std::uint32_t>(crc32_z(crc, bytes, count));
}

template <typename Crc> void Measure(benchmark::State& state, Crc crc, std::size_t count) {
    if (crc(0, Data().data(), count) != libdeflate_crc32(0, Data().data(), count)) std::abort();
    for (auto _ : state) benchmark::DoNotOptimize(crc(0, Data().data(), count));
    state.SetBytesProcessed(static_cast<std::int64_t>(count) * state.iterations());
}

constexpr std::size_t kLarge = 64 << 20;
BENCHMARK_CAPTURE(Measure, a, Ours, kLarge)->Name("Memory64MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, b, Zlib, kLarge)->Name("Memory64MB/zlib")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, c, libdeflate_crc32, kLarge)
    ->Name("Memory64MB/libdeflate")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, d, Ours, 64)->Name("Memory64B/ours");
BENCHMARK_CAPTURE(Measure, e, SlicingBy8, 64)->Name("Memory64B/slicing-by-8");
BENCHMARK_CAPTURE(Measure, f, Zlib, 64)->Name("Memory64B/zlib");
BENCHMARK_CAPTURE(Measure, g, libdeflate_crc32, 64)->Name("Memory64B/libdeflate");

// A sealed file of 256 MB that stays in the page cache.
struct SealedFile {
    std::string path = "/dev/shm/utilitydll-bench-" + std::to_string(getpid()) + ".crc";
    SealedFile() {
        CRCFile file;
        if (!file.Open(Wide(), L"wb")) std::abort();
        for (int i = 0; i < 4; ++i) file.Write(Data().data(), 1, Data().size());
        file.Close();
    }
    ~SealedFile() { std::filesystem::remove(path); }
    std::wstring Wide() const { return {path.begin(), path.end()}; }
};

const SealedFile& Sealed() {
    static const SealedFile file;
    return file;
}

void CheckFileOurs(benchmark::State& state) {
    Sealed();
    for (auto _ : state) {
        CRCFile file;
        if (!file.Open(Sealed().Wide(), L"rb")) std::abort();
    }
}
void CheckFileLibdeflate(benchmark::State& state) {
    Sealed();
    std::vector<unsigned char> block(256 * 1024);
    for (auto _ : state) {
        const int fd = open(Sealed().path.c_str(), O_RDONLY);
        std::uint32_t crc = 0;
        for (ssize_t got; (got = read(fd, block.data(), block.size())) > 0;)
            crc = libdeflate_crc32(crc, block.data(), static_cast<std::size_t>(got));
        close(fd);
        benchmark::DoNotOptimize(crc);
    }
}
BENCHMARK(CheckFileOurs)->Name("CheckFile256MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(CheckFileLibdeflate)->Name("CheckFile256MB/read+libdeflate")->Unit(benchmark::kMillisecond);

} // namespace
