// SPDX-License-Identifier: MIT
// Number extraction: for every type the result and the target are those of the standard wide stream in the
// classic locale. The first byte says how wide the characters of the rest are.

#include "VelmBase/NumberText.h"
#include "fuzz/Require.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

namespace {

template <typename T>
using StreamType = std::conditional_t<std::is_same_v<T, unsigned long>, std::uint32_t, T>;

template <typename T> void Compare(const std::wstring& text, T start) {
    static std::wistringstream stream;
    stream.imbue(std::locale::classic());
    stream.clear();
    stream.str(text);
    auto expected = static_cast<StreamType<T>>(start);
    stream >> expected;
    T value = start;
    const bool good = NumberText::Extract(text, value);
    const auto wide = static_cast<T>(expected);
    Require(good == !stream.fail(), "the result is the stream's");
    Require(std::memcmp(&value, &wide, sizeof value) == 0, "the target is the stream's");
}

void CompareWritten(double value, int precision) {
    std::wostringstream fixed, general;
    fixed.imbue(std::locale::classic());
    general.imbue(std::locale::classic());
    fixed << std::fixed << value;
    general.precision(precision);
    general << value;
    Require(fixed.str() == NumberText::FromFixed(value), "fixed text is the stream's");
    Require(general.str() == NumberText::FromGeneral(value, precision), "general text is the stream's");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const bool wide = data[0] % 4 == 0;
    std::wstring text;
    if (wide)
        for (std::size_t i = 1; i + 1 < size; i += 2)
            text += static_cast<wchar_t>(data[i] | data[i + 1] << 8);
    else
        text.assign(data + 1, data + size);

    Compare<short>(text, 7);
    Compare<unsigned short>(text, 7);
    Compare<int>(text, 7);
    Compare<unsigned int>(text, 7);
    Compare<long>(text, 7);
    Compare<unsigned long>(text, 7);
    Compare<bool>(text, true);
    Compare<bool>(text, false);
    Compare<float>(text, 7.25f);
    Compare<double>(text, 7.25);

    double value = 0;
    NumberText::Extract(text, value);
    CompareWritten(value, data[0]);
    if (size >= sizeof value) {
        std::memcpy(&value, data, sizeof value);
        CompareWritten(value, 6);
    }
    const double leading = NumberText::LeadingDecimal(text);
    Require(!std::isnan(leading), "a leading number is a number");
    return 0;
}
