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
    const double bias = 0.499999999999 / std::pow(10.0, precision);
    const double biased = info.GetSignIsInverted() ? value - bias : value + bias;

    constexpr int kMostWhole = std::numeric_limits<double>::max_exponent10 + 1;
    char buffer[kMostWhole + kMostDecimals + 2]; // and a sign and a point
    const char* const end =
        std::to_chars(buffer, std::end(buffer), biased, std::chars_format::fixed, precision).ptr;
    std::string_view number(buffer, static_cast<std::size_t>(end - buffer));
    if (number[0] == '-' && number.find_first_not_of("-0.") == std::string_view::npos)
        number.remove_prefix(1);

    const std::size_t point = std::min(number.find('.'), number.size());
    std::string_view decimals = number.substr(std::min(point + 1, number.size()));
    if (info.GetNoDecimalZeros() && decimals.find_first_not_of('0') == std::string_view::npos) decimals = {};
    return {Widened(number.substr(0, point)), Widened(decimals)};
}
