// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/DepthLabelInfo.h"

#include "UtilityDLL/presentation/private/OneLineForm.h"

namespace {

constexpr unsigned int kNumPresentations = 3;
constexpr unsigned int kNumPlacements = 3;

} // namespace

bool DepthLabelInfo::operator==(const DepthLabelInfo& other) const {
    return TextInfo::operator==(other) && m_precision == other.m_precision &&
           m_presentation == other.m_presentation && m_placement == other.m_placement &&
           m_useTextColor == other.m_useTextColor && m_autoTextRotation == other.m_autoTextRotation &&
           m_underlineDryingHeights == other.m_underlineDryingHeights &&
           m_noDecimalZeros == other.m_noDecimalZeros;
}

template <typename Items> void DepthLabelInfo::ListItems(Items& items) const {
    items.Add(L"Precision", m_precision);
    items.Add(L"Presentation", m_presentation);
    items.Add(L"Placement", m_placement);
    items.Add(L"UseTextColor", m_useTextColor);
    items.Add(L"AutoTextRotation", m_autoTextRotation);
    items.Add(L"UnderlineDryingHeights", m_underlineDryingHeights);
    items.Add(L"NoDecimalZeros", m_noDecimalZeros);
}

std::wstring DepthLabelInfo::ToString() const {
    OneLineForm line(TextInfo::ToString());
    ListItems(line);
    return line.Text();
}

std::vector<std::wstring> DepthLabelInfo::OneLineItems() {
    OneLineItemNames items;
    items.Names() = TextInfo::OneLineItems();
    DepthLabelInfo().ListItems(items);
    return items.Names();
}

void DepthLabelInfo::FromString(const std::wstring& line) {
    const FormatString items = SplitOneLineForm(line); // first, since the line may be this record's font
    *this = DepthLabelInfo();
    int next = TextInfo::FromString(items);
    const auto isThere = [&] { return next < items.NumItems(); };
    const auto number = [&] { return atoi(items.Item(next++)); };
    const auto readFlag = [&](bool& flag) {
        if (isThere()) flag = number() != 0;
    };
    if (isThere()) m_precision = number();
    ReadNumberBelow(kNumPresentations, items, next++, m_presentation);
    ReadNumberBelow(kNumPlacements, items, next++, m_placement);
    readFlag(m_useTextColor);
    readFlag(m_autoTextRotation);
    readFlag(m_underlineDryingHeights);
    readFlag(m_noDecimalZeros);
}
