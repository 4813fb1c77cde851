// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/NumberText.h"
#include "tests/support/Random.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

// The conversions of NumberText beside those of the standard wide streams in the classic locale.

/// What the standard streams read: `unsigned long` stands for a 32-bit value on every platform.
template <typename T>
using StreamType = std::conditional_t<std::is_same_v<T, unsigned long>, std::uint32_t, T>;

template <typename T> bool SameBits(T a, T b) { return std::memcmp(&a, &b, sizeof a) == 0; }

/// Compares the library's extraction of `text` with the standard stream's: the result and what the target
/// holds afterwards.
class ExtractionTwin {
public:
    ExtractionTwin() { m_stream.imbue(std::locale(std::locale::classic(), new AsciiBlanks)); }

    template <typename T>::testing::AssertionResult Agrees(const std::wstring& text, T start) {
        auto expected = static_cast<StreamType<T>>(start);
        m_stream.clear();
        m_stream.str(text);
        m_stream >> expected;
        const bool good = !m_stream.fail();
        T value = start;
        const bool result = NumberText::Extract(text, value);
        if (result == good && SameBits(value, static_cast<T>(expected))) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << ::testing::PrintToString(text) << ": the stream gives " << good << ' ' << expected
               << ", the library " << result << ' ' << value;
    }

    /// The same for every type.
    ::testing::AssertionResult AgreesForAllTypes(const std::wstring& text) {
        for (const auto& agrees :
             {Agrees<short>(text, 7), Agrees<unsigned short>(text, 7), Agrees<int>(text, 7),
              Agrees<unsigned int>(text, 7), Agrees<long>(text, 7), Agrees<unsigned long>(text, 7),
              Agrees<bool>(text, true), Agrees<bool>(text, false), Agrees<float>(text, 7.25f),
              Agrees<double>(text, 7.25)})
            if (!agrees) return agrees;
        return ::testing::AssertionSuccess();
    }

private:
    // The blanks of the classic locale, to which the C runtime of Windows adds those of all scripts.
    class AsciiBlanks : public std::ctype<wchar_t> {
        bool do_is(mask classes, wchar_t c) const override {
            return static_cast<std::make_unsigned_t<wchar_t>>(c) < 0x80 &&
                   std::ctype<wchar_t>::do_is(classes, c);
        }
    };

    std::wistringstream m_stream;
};

/// A text that is a number, nearly one, or none.
inline std::wstring NumberLikeText(Random& random) {
    const auto digits = [&](unsigned longest) { return random.Text(L"0123456789", longest); };
    std::wstring text;
    switch (random.Below(8)) {
    case 0: // anything at all
        return random.Text(L"0123456789+-.eE,' \t\n\v\f\rxXabcdfinNAF;=\0\u00A0\u2003\u0660\uFF11", 12);
    case 1: // an integer
        text = random.Text(L" \t", 2) + random.Text(L"+-", 1) + random.Text(L"0", 3) + digits(24);
        break;
    case 2: { // around the limits of the types
        const int bits = std::initializer_list<int>{15, 16, 31, 32, 63, 64}.begin()[random.Below(6)];
        const std::uint64_t limit = bits == 64 ? 0 : std::uint64_t{1} << bits;
        text = (random.OnceIn(2) ? L"-" : L"") + std::to_wstring(limit + random.Below(7) - 3);
        if (random.OnceIn(8)) text += digits(2);
        break;
    }
    case 3: // a decimal number
        text = random.Text(L"+-", 1) + digits(20) + L"." + digits(20);
        break;
    case 4: // with an exponent, which may be cut off or enormous
        text = random.Text(L"+-", 1) + digits(6) + random.Text(L".", 1) + digits(6) + random.Text(L"eE", 1) +
               random.Text(L"+-", 1) + digits(random.OnceIn(20) ? 20 : 3);
        break;
    case 5: { // the shortest text of any double, or more digits than it has
        double value;
        const std::uint64_t pattern = random.Bits();
        std::memcpy(&value, &pattern, sizeof value);
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%.*g", static_cast<int>(random.Below(25) + 1), value);
        text.assign(buffer, buffer + std::strlen(buffer));
        break;
    }
    case 6: { // half way between two floats, or a hair beside it
        std::uint32_t pattern = static_cast<std::uint32_t>(random.Bits());
        float low;
        std::memcpy(&low, &pattern, sizeof low);
        const double half = (static_cast<double>(low) + std::nextafter(low, 2 * low)) / 2;
        char buffer[512];
        std::snprintf(buffer, sizeof buffer, random.OnceIn(2) ? "%.180g" : "%.60f", half);
        text.assign(buffer, buffer + std::strlen(buffer));
        if (random.OnceIn(2) && text.find(L'e') == std::wstring::npos) text += L"1";
        break;
    }
    default: // long runs
        text = random.Text(L"-", 1) + std::wstring(random.Below(400), random.OnceIn(2) ? L'0' : L'9') +
               random.Text(L".", 1) + std::wstring(random.Below(400), L'0') + digits(20) +
               (random.OnceIn(2) ? L"e-" + digits(3) : L"");
    }
    if (random.OnceIn(3)) text += random.Text(L" ,;.xe-5", 3);
    return text;
}

/// Extraction of `count` texts agrees with the standard stream.
inline void ExpectExtractionAgrees(std::uint64_t seed, int count) {
    Random random(seed);
    ExtractionTwin twin;
    for (int i = 0; i < count; ++i) ASSERT_TRUE(twin.AgreesForAllTypes(NumberLikeText(random)));
}

/// Writing of `count` numbers of each kind agrees with the standard stream.
inline void ExpectWritingAgrees(std::uint64_t seed, int count) {
    Random random(seed);
    std::wostringstream fixed, general;
    for (std::wostringstream* stream : {&fixed, &general}) stream->imbue(std::locale::classic());
    fixed << std::fixed;
    const auto written = [](std::wostringstream& stream, auto value) {
        if constexpr (std::is_floating_point_v<decltype(value)>) // the C runtime of Windows drops this sign
            if (std::isnan(value)) return std::wstring(std::signbit(value) ? L"-nan" : L"nan");
        stream.str(L"");
        stream << value;
        return stream.str();
    };
    for (int i = 0; i < count; ++i) {
        const std::uint64_t bits = random.Bits();
        double any;
        std::memcpy(&any, &bits, sizeof any);
        const double everyday = static_cast<double>(static_cast<std::int64_t>(bits)) /
                                std::pow(10.0, static_cast<double>(random.Below(25)));
        const double halves = static_cast<double>(random.Below(100000)) / 64e6; // often near a half
        const int precision = static_cast<int>(random.Below(20));
        for (const double value : {any, everyday, halves, -halves, std::round(everyday)}) {
            ASSERT_EQ(written(fixed, value), NumberText::FromFixed(value));
            general.precision(precision);
            ASSERT_EQ(written(general, value), NumberText::FromGeneral(value, precision)) << precision;
            general.precision(6);
            ASSERT_EQ(written(general, value), NumberText::FromGeneral(value));
        }
        const std::uint64_t shorter = bits >> random.Below(64);
        ASSERT_EQ(written(fixed, static_cast<long long>(shorter)),
                  NumberText::FromInteger(static_cast<long long>(shorter)));
        ASSERT_EQ(written(fixed, -static_cast<long long>(shorter >> 1)),
                  NumberText::FromInteger(-static_cast<long long>(shorter >> 1)));
        ASSERT_EQ(written(fixed, static_cast<unsigned long long>(shorter)),
                  NumberText::FromInteger(static_cast<unsigned long long>(shorter)));
    }
}
