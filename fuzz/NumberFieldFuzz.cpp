// SPDX-License-Identifier: MIT
// The texts of number fields: what is taken is what a stream of the "C" locale reads from the same text,
// within the range, and shown again it is the same number to the field's digits; what is not taken has a
// sentence. Steps of a width stay on tenths, not below 0. The first byte says how wide the characters of the
// rest are, the second how many steps are done.

#include "UtilityDLL/contours/private/NumberField.h"

#include "fuzz/Require.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <locale>
#include <sstream>

namespace {

std::wstring Text(const std::uint8_t* data, std::size_t size, bool isWide) {
    if (!isWide) return {data, data + size};
    std::wstring text;
    for (std::size_t i = 0; i + 1 < size; i += 2) text += static_cast<wchar_t>(data[i] | data[i + 1] << 8);
    return text;
}

void CheckReading(const std::wstring& text, const FieldRange& range) {
    const FieldNumber number = ReadNumber(text, range);
    if (number.fault) {
        Require(*LoadText(*number.fault) != 0, "a fault has a sentence");
        return;
    }
    Require(number.value >= range.lowest && number.value <= range.highest, "what is taken is in the range");
    std::wistringstream stream(text);
    stream.imbue(std::locale::classic());
    double expected = 0;
    stream >> expected;
    // A number too small for a double fails in a stream, with the value that it has here.
    Require(expected == number.value, "what is taken is what a stream reads");
    Require(text.find(L',') == std::wstring::npos, "a comma is never taken");
}

void CheckShowing(const std::wstring& text) {
    const FieldNumber number = ReadNumber(text);
    if (number.fault) return;
    const NumberField level = LevelField(number.value);
    Require(level.Read(level.shown).value == number.value, "a level that is left keeps its digits");
    const FieldNumber rounded = ReadNumber(level.shown);
    Require(rounded.fault || LevelField(rounded.value).shown == level.shown, "a shown level can be written");
    const auto width = static_cast<float>(number.value);
    if (!std::isfinite(width)) return;
    const NumberField field = WidthField(width);
    Require(static_cast<float>(field.Read(field.shown).value) == width,
            "a width that is left keeps its digits");
}

void CheckSteps(const std::wstring& text, int steps) {
    const FieldRange widths = WidthField(0).range;
    const std::wstring stepped = StepWidth(text, steps);
    if (ReadNumber(text, widths).fault) {
        Require(stepped == text, "what is no width stays");
        return;
    }
    const FieldNumber width = ReadNumber(stepped, widths);
    Require(!width.fault, "a stepped width is one");
    if (width.value < 1000) // beyond, six digits may not hold the tenths
        Require(std::abs(width.value * 10 - std::round(width.value * 10)) < 1e-9, "steps are tenths");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::wstring text = Text(data + 2, size - 2, data[0] % 4 == 0);
    for (const FieldRange& range : {FieldRange(), WidthField(0).range, FieldRange{-10, 10}})
        CheckReading(text, range);
    CheckShowing(text);
    CheckSteps(text, static_cast<std::int8_t>(data[1]));
    return 0;
}
