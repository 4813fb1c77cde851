// SPDX-License-Identifier: MIT
#include "VelmBase/VelmString.h"

#include "VelmBase/NumberText.h"

#include <optional>

namespace {

// Whether extraction failed because there is no number (it leaves 0 or nothing) rather than one out of range.
template <typename Number> std::optional<Number> ReadNumber(const std::wstring& text) {
    Number value = 0;
    if (!NumberText::Extract(text, value) && value == Number(0)) return std::nullopt;
    return value;
}

template <typename Number> bool ReadInto(const std::wstring& text, Number& value) {
    const std::optional<Number> number = ReadNumber<Number>(text);
    if (number) value = *number;
    return number.has_value();
}

} // namespace

bool CVelmString::GetItem(int index, float& value) const { return ReadInto(m_items.Item(index), value); }
bool CVelmString::GetItem(int index, int& value) const { return ReadInto(m_items.Item(index), value); }
bool CVelmString::GetItem(int index, bool& value) const { return ReadInto(m_items.Item(index), value); }

void CVelmString::AddItem(float value) {
    m_items.AddItem(NumberText::FromGeneral(static_cast<double>(value)));
}
void CVelmString::AddItem(int value) {
    m_items.AddItem(NumberText::FromInteger(static_cast<long long>(value)));
}
void CVelmString::AddItem(unsigned long value) {
    m_items.AddItem(NumberText::FromInteger(static_cast<unsigned long long>(value)));
}
