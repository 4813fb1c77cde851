// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Random input that is the same in every run and on every platform. The algorithms of the standard library
/// take it as their generator; its distributions differ from library to library, so those that tests need are
/// here.
class Random {
public:
    using result_type = std::uint32_t;

    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    std::uint64_t Bits() { return m_engine(); }

    std::uint32_t operator()() { return static_cast<std::uint32_t>(Bits() >> 32); }
    static constexpr std::uint32_t min() { return 0; }
    static constexpr std::uint32_t max() { return std::numeric_limits<std::uint32_t>::max(); }

    /// 0 to `limit` - 1.
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(Bits() % limit); }

    /// True once in `count` times on average.
    bool OnceIn(unsigned count) { return Below(count) == 0; }

    /// From `from` to `to`, both included.
    int Integer(int from, int to) {
        const auto count = static_cast<std::uint64_t>(std::int64_t{to} - from) + 1;
        return static_cast<int>(from + static_cast<std::int64_t>(Bits() % count));
    }
    int AnyInteger() { return Integer(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()); }

    /// From `from` up to `to`.
    double Real(double from, double to) {
        return from + (to - from) * (static_cast<double>(Bits() >> 11) * 0x1p-53);
    }

    /// One of `values`.
    template <typename T> T OneOf(const std::vector<T>& values) { return values[Below(values.size())]; }

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

/// How many random inputs a property is tried on.
inline constexpr int kPropertyRuns = 100000;

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// What the conversion of NaN, infinity and other numbers beyond int gives.
inline constexpr int kIntegerIndefinite = std::numeric_limits<int>::min();

/// Values at which arithmetic on floating-point numbers tends to go wrong.
inline const std::vector<double> kAwkwardNumbers = {0.0,   -0.0,   1.0,    -1.0,   1e-20,      -1e-20,
                                                    0.5,   -0.5,   360.0,  -360.0, 2147483647, -2147483648.0,
                                                    1e300, -1e300, 5e-324, kNaN,   kInfinity,  -kInfinity};
