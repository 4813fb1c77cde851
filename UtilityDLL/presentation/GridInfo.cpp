// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/GridInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"
#include "VelmBase/FormatString.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <string_view>

namespace {

// By the flags' bits; files carry these.
constexpr const wchar_t* kTokens[] = {L"POINTS",  L"X_LINES",      L"Y_LINES",      L"X_TICKS",
                                      L"Y_TICKS", L"X_MINORTICKS", L"Y_MINORTICKS", L"LONG_NORTHTICK"};

} // namespace

// The form of the flags in their key; it works on the whole record.
struct GridInfo::StyleText {
    static void Write(SectionKey& key, const GridInfo& record) { key << record.FormatGridStyle(); }
    static void Read(const SectionKey& key, GridInfo& record) { record.UnFormatGridStyle(key.GetValue()); }
};

template <typename Exchange, typename Record> bool GridInfo::Fields(Exchange field, Record& record) {
    field(L"XInterval"_key, record.m_xInterval);
    field(L"YInterval"_key, record.m_yInterval);
    field(L"XMinorTicks"_key, record.m_xMinorTicks);
    field(L"YMinorTicks"_key, record.m_yMinorTicks);
    field(L"GridStyle"_key, record, StyleText());
    field(L"TickSize"_key, record.m_tickSize);
    field(L"MinorTickSize"_key, record.m_minorTickSize);
    field(L"EastingMark"_key, record.m_eastingMark, FORM::Quoted());
    field(L"NorthingMark"_key, record.m_northingMark, FORM::Quoted());
    return true;
}

bool GridInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool GridInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }

bool GridInfo::operator==(const GridInfo& other) const {
    return m_minorTickSize == other.m_minorTickSize && m_tickSize == other.m_tickSize &&
           m_gridStyle == other.m_gridStyle && MATH::equal(m_xInterval, other.m_xInterval) &&
           MATH::equal(m_yInterval, other.m_yInterval) && m_eastingMark == other.m_eastingMark &&
           m_northingMark == other.m_northingMark && m_xMinorTicks == other.m_xMinorTicks &&
           m_yMinorTicks == other.m_yMinorTicks;
}

std::wstring GridInfo::FormatGridStyle() const {
    FormatString tokens(L',');
    for (std::size_t bit = 0; bit < std::size(kTokens); ++bit)
        if (m_gridStyle >> bit & 1) tokens.AddItem(kTokens[bit]);
    return tokens.Text();
}

void GridInfo::UnFormatGridStyle(const std::wstring& text) {
    m_gridStyle = 0;
    for (std::wstring_view rest = text; !rest.empty();) {
        const std::wstring_view token = rest.substr(0, rest.find(L','));
        const std::wstring_view name = TrimmedW(token);
        for (std::size_t bit = 0; bit < std::size(kTokens); ++bit)
            if (name == kTokens[bit]) m_gridStyle |= 1u << bit;
        rest.remove_prefix(std::min(token.size() + 1, rest.size()));
    }
}
