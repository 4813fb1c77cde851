// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/DXFInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"
#include "UtilityDLL/presentation/private/OneLineForm.h"
#include "VelmBase/VelmString.h"

template <typename Exchange, typename Record> bool DXFInfo::Fields(Exchange field, Record& record) {
    field(L"DXFLineColor"_key, record.m_color, FORM::IndexedColor());
    field(L"DXFLineTrueColor"_key, record.m_color);
    field(L"DXFLineWidth"_key, record.m_width);
    field(L"DXFColorMode"_key, record.m_colorMode);
    return true;
}

bool DXFInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool DXFInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }

template <typename Items> void DXFInfo::ListItems(Items& items) const {
    items.Add(L"DXFLineWidth", m_width);
    items.Add(L"DXFLineColor", DXFColor(m_color).Index());
    items.Add(L"DXFColorMode", m_colorMode);
    items.Add(L"DXFLineTrueColor", m_color);
}

std::wstring DXFInfo::ToString() const {
    OneLineForm line;
    ListItems(line);
    return line.Text();
}

std::vector<std::wstring> DXFInfo::OneLineItems() {
    OneLineItemNames items;
    DXFInfo().ListItems(items);
    return items.Names();
}

void DXFInfo::FromString(const std::wstring& line) {
    *this = DXFInfo();
    const CVelmString items(line, L',', kMostItems);
    if (items.NumItems() < 3) return;
    items.GetItem(0, m_width);
    int index = 0;
    items.GetItem(1, index);
    m_color = DXFColor(index);
    items.GetItem(2, m_colorMode);
    int color = 0;
    if (items.GetItem(3, color)) m_color = static_cast<std::uint32_t>(color);
}
