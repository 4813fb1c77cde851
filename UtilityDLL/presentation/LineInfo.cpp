// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/LineInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"
#include "UtilityDLL/presentation/private/OneLineForm.h"
#include "VelmBase/VelmString.h"

const wchar_t* const LineInfo::STYLEDESCRIPTIONS[] = {L"Solid Line", L"Dashed", L"Dot", L"Dash dot"};

namespace {

constexpr FORM::Name kStyleNames{LineInfo::STYLEDESCRIPTIONS, true};

} // namespace

template <typename Exchange, typename Record> bool LineInfo::Fields(Exchange field, Record& record) {
    field(L"LineColor"_key, record.m_color, FORM::IndexedColor());
    field(L"LineWidth"_key, record.m_width);
    field(L"LineStyle"_key, record.m_style, kStyleNames);
    field(L"LineTrueColor"_key, record.m_color);
    field(L"Enable"_key, record.m_enable);
    return true;
}

bool LineInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool LineInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }

std::wstring LineInfo::StyleStr() const { return kStyleNames.TextOf(m_style); }

void LineInfo::SetStyleStr(const std::wstring& text) {
    m_style = static_cast<LINESTYLE>(kStyleNames.NumberOf(text));
}

template <typename Items> void LineInfo::ListItems(Items& items) const {
    items.Add(L"LineWidth", m_width);
    items.Add(L"LineColor", DXFColor(m_color).Index());
    items.Add(L"LineStyle", StyleStr());
    items.Add(L"LineTrueColor", m_color);
    items.Add(L"Enable", m_enable);
}

std::wstring LineInfo::ToString() const {
    OneLineForm line;
    ListItems(line);
    return line.Text();
}

std::vector<std::wstring> LineInfo::OneLineItems() {
    OneLineItemNames items;
    LineInfo().ListItems(items);
    return items.Names();
}

void LineInfo::FromString(const std::wstring& line) {
    *this = LineInfo();
    const CVelmString items(line, L',', kMostItems);
    if (items.NumItems() < 3) return;
    items.GetItem(0, m_width);
    int color = 0;
    items.GetItem(1, color);
    SetStyleStr(items.GetItem(2));
    items.GetItem(3, color);
    m_color = static_cast<std::uint32_t>(color);
    items.GetItem(4, m_enable);
}
