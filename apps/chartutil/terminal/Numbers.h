// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Reads a decimal number with a point, perhaps a sign and an exponent, and blanks around it, whatever the
/// locale. False for any other text, also for "nan" and for what no double holds.
bool ParseNumber(std::string_view text, double& value);

/// A number and the digits after the point with which it is written, at least 0.
struct DecimalNumber {
    double value = 0;
    int decimals = 0;
};

/// The same with the digits that the text has after its point; "1.25e-3" has 5 and "1.25e3" none.
bool ParseNumber(std::string_view text, DecimalNumber& number);

/// The digits that are written after the last one given, where those of the result never end.
inline constexpr int kEndlessDecimals = 2;

/// The nearest number of this many significant digits: what arithmetic leaves behind the 15th of a double is
/// noise. Numbers beyond the range of doubles stay as they are.
double RoundedToDigits(double value, int digits = 15);

/// The number with up to 15 significant digits, and without an exponent from 1e-7 up to 1e16. Zero has no
/// sign.
std::string DecimalText(double value);

/// The number with this many digits after the point. Zero has no sign.
std::string DecimalText(double value, int decimals);

/// The number with its digits after the point as far as they are among the first 15 of all. From 1e16 on, and
/// with more than 20 of them, as DecimalText(value).
std::string DecimalText(const DecimalNumber& number);

/// The number with this many significant digits, with an exponent where that is shorter.
std::string GeneralText(double value, int digits = 10);
