#pragma once

#include <cstdint>
#include <limits>
#include <random>
#include <vector>

/// Repeatable random numbers for property tests.
class Numbers {
public:
    explicit Numbers(std::uint64_t seed) : m_engine(seed) {}

    double Real(double from, double to) { return std::uniform_real_distribution<double>(from, to)(m_engine); }
    int Integer(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_engine); }
    int AnyInteger() { return Integer(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()); }

    /// One of `values`.
    template <typename T> T OneOf(const std::vector<T>& values) {
        return values[std::uniform_int_distribution<std::size_t>(0, values.size() - 1)(m_engine)];
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
