// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// A hash of context names, letter case included. It multiplies what it reads with secrets, so that nobody
/// can think up names that collide, and takes 32 bytes at a time: a name of 30 characters is hashed at each
/// notification.
class ContextHash {
public:
    /// With new secrets. Throws what std::random_device throws.
    ContextHash();

    std::uint64_t operator()(std::wstring_view name) const {
        const auto* bytes = reinterpret_cast<const unsigned char*>(name.data());
        const std::size_t size = name.size() * sizeof(wchar_t);
        std::uint64_t even = m_secret[0] + size;
        std::uint64_t odd = m_secret[1];
        std::size_t left = size;
        for (; left > 32; left -= 32, bytes += 32) {
            even = Folded(Word(bytes) ^ even, Word(bytes + 8) ^ m_secret[2]);
            odd = Folded(Word(bytes + 16) ^ odd, Word(bytes + 24) ^ m_secret[3]);
        }
        unsigned char rest[32] = {};
        if (left > 0) std::memcpy(rest, bytes, left);
        even = Folded(Word(rest) ^ even, Word(rest + 8) ^ m_secret[2]);
        odd = Folded(Word(rest + 16) ^ odd, Word(rest + 24) ^ m_secret[3]);
        return Folded(even ^ m_secret[1], odd ^ m_secret[0]);
    }

private:
    __extension__ using Product = unsigned __int128;

    static std::uint64_t Word(const unsigned char* bytes) {
        std::uint64_t word;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }
    static std::uint64_t Folded(std::uint64_t a, std::uint64_t b) {
        const Product product = Product{a} * b;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    }

    std::uint64_t m_secret[4];
};
