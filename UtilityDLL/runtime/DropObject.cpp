// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/DropObject.h"

#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

namespace {

DropObject Parsed(const std::wstring& text) {
    const int type = atoi(text);
    const std::size_t comma = text.find(L',');
    if (type < DropObject::KIND_1 || type > DropObject::KIND_3) return {};
    if (comma == std::wstring::npos || comma + 1 == text.size()) return {};
    return {static_cast<DropObject::TYPE>(type), text.substr(comma + 1)};
}

} // namespace

CString DropObject::ToString() const {
    return NumberText::FromInteger(static_cast<long long>(m_type)) + L"," + m_data.String();
}

void DropObject::FromString(const CString& text) { *this = Parsed(text.String()); }
