#pragma once

#include <string>
#include <string_view>

/// Reads a decimal number with a point, perhaps a sign and an exponent, and blanks around it, whatever the
/// locale. False for any other text, also for "nan" and for what no double holds.
bool ParseNumber(std::string_view text, double& value);

/// The number with this many digits after the point. For -1 with as many as read back as the same number, and
/// without an exponent from 1e-7 up to 1e16. Zero has no sign.
std::string DecimalText(double value, int decimals = -1);

/// The number with this many significant digits, with an exponent where that is shorter.
std::string GeneralText(double value, int digits = 10);
