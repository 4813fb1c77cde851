#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

/// Random input that is the same in every run and on every platform.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    std::uint64_t Bits() { return m_engine(); }

    /// 0 to `limit` - 1.
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(m_engine() % limit); }

    /// True once in `count` times on average.
    bool OnceIn(unsigned count) { return Below(count) == 0; }

    /// Up to `longest` characters of `alphabet`.
    template <typename Char>
    std::basic_string<Char> Text(std::basic_string_view<Char> alphabet, std::size_t longest) {
        std::basic_string<Char> text(Below(longest + 1), Char());
        for (Char& c : text) c = alphabet[Below(alphabet.size())];
        return text;
    }
    /// The same from a literal, in which a NUL is a character as well.
    template <typename Char, std::size_t Size>
    std::basic_string<Char> Text(const Char (&alphabet)[Size], std::size_t longest) {
        return Text(std::basic_string_view<Char>(alphabet, Size - 1), longest);
    }

private:
    std::mt19937_64 m_engine;
};
