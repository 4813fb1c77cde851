// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/DepthLabelText.h"

#include "UtilityDLL/presentation/DepthLabelInfo.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>

namespace {

constexpr int kMostDecimals = 300;

std::wstring Widened(std::string_view text) { return {text.begin(), text.end()}; }

} // namespace

DepthLabelText FormatDepth(const DepthLabelInfo& info, double value) {
    if (std::isnan(value)) return {L"nan", {}};
    const int precision = std::clamp(info.Precision(), 0, kMostDecimals);
    constexpr int kMostWhole = std::numeric_limits<double>::max_exponent10 + 1;
    char buffer[kMostWhole + kMostDecimals + 2]; // and a sign and a point
    const auto print = [&](double printed) {
        const char* const end =
            std::to_chars(buffer, std::end(buffer), printed, std::chars_format::fixed, precision).ptr;
        return std::string_view(buffer, static_cast<std::size_t>(end - buffer));
    };
    std::string_view number = print(value);
    double shown = 0;
    std::from_chars(number.begin(), number.end(), shown);
    // The sum of a large value and the bias is rounded itself, maybe past the half: 64.01 would be 64.02.
    if (shown != value) {
        const double bias = 0.499999999999 / std::pow(10.0, precision);
        number = print(info.GetSignIsInverted() ? value - bias : value + bias);
    }
    if (number[0] == '-' && number.find_first_not_of("-0.") == std::string_view::npos)
        number.remove_prefix(1);

    const std::size_t point = std::min(number.find('.'), number.size());
    std::string_view decimals = number.substr(std::min(point + 1, number.size()));
    if (info.GetNoDecimalZeros() && decimals.find_first_not_of('0') == std::string_view::npos) decimals = {};
    return {Widened(number.substr(0, point)), Widened(decimals)};
}
