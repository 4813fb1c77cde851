// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <string>
#include <string_view>

/// Numbers as wide text and back, exactly as the standard wide streams of the "C" locale do it, but without a
/// stream and whatever the locale of the host.
namespace NumberText {

/// Reads a number as `std::wistringstream(text) >> value` does, with the result that the stream would have:
///   - empty or blank text: false, `value` is left alone;
///   - text that does not begin with a number: false, `value` becomes 0;
///   - a number out of range: false, `value` becomes the nearest limit of its type;
///   - a number, whatever follows it: true. A bool takes 0 and 1; any other number gives true and fails.
///
/// An `unsigned long` is read as 32 bits wide on every platform, since it carries colour references and
/// checksums: a text above 4294967295 gives 4294967295, and "-1" gives 4294967295 as well.
/// @{
VELMBASE_API bool Extract(std::wstring_view text, short& value);
VELMBASE_API bool Extract(std::wstring_view text, unsigned short& value);
VELMBASE_API bool Extract(std::wstring_view text, int& value);
VELMBASE_API bool Extract(std::wstring_view text, unsigned int& value);
VELMBASE_API bool Extract(std::wstring_view text, long& value);
VELMBASE_API bool Extract(std::wstring_view text, unsigned long& value);
VELMBASE_API bool Extract(std::wstring_view text, bool& value);
VELMBASE_API bool Extract(std::wstring_view text, float& value);
VELMBASE_API bool Extract(std::wstring_view text, double& value);
/// @}

/// Whether `text` is one decimal integer, or one decimal number (digits, point, exponent), with nothing but
/// blanks (" \t\n\r") round it: for readers that tell a number from a text which only begins with one.
/// @{
VELMBASE_API bool IsInteger(std::wstring_view text);
VELMBASE_API bool IsDecimal(std::wstring_view text);
/// @}

/// Decimal digits, with a leading "-" when negative.
/// @{
VELMBASE_API std::wstring FromInteger(long long value);
VELMBASE_API std::wstring FromInteger(unsigned long long value);
/// @}

/// Exactly that many digits after the point (0 to 15), as a stream with `std::fixed` writes it; "inf" and
/// "nan" with their sign.
VELMBASE_API std::wstring FromFixed(double value, int decimals = 6);

/// General notation with `precision` significant digits (0 counts as 1), as a stream with default flags
/// writes it.
VELMBASE_API std::wstring FromGeneral(double value, int precision = 6);

/// The value of the longest decimal number (digits, point, exponent) that `text` begins with; 0 without one,
/// infinity above the range.
VELMBASE_API double LeadingDecimal(std::wstring_view text);

} // namespace NumberText
