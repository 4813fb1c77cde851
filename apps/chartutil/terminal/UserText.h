// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/WideString.h"

#include <ostream>
#include <string>
#include <utility>

/// A text that the user gave, in both forms in which it is needed: UTF-8 as it came, for messages, and wide
/// as the library takes it.
class UserText {
public:
    UserText() = default;
    UserText(std::string utf8) : m_utf8(std::move(utf8)), m_wide(FromUtf8(m_utf8)) {}
    UserText(const char* utf8) : UserText(std::string(utf8)) {}

    const std::string& Utf8() const { return m_utf8; }
    const std::wstring& Wide() const { return m_wide; }
    bool Empty() const { return m_utf8.empty(); }

    friend std::ostream& operator<<(std::ostream& stream, const UserText& text) {
        return stream << text.m_utf8;
    }

private:
    std::string m_utf8;
    std::wstring m_wide;
};
