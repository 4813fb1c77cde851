// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <iosfwd>
#include <string>
#include <type_traits>
#include <utility>

/// The result of an operation: success, or a failure with an optional message. True when it holds no error.
/// It comes from a bool and becomes one wherever one is wanted; two results are compared as such.
class [[nodiscard]] ErrorString {
public:
    /// Success.
    ErrorString() = default;

    /// Success when `ok`, else a failure without a text. A bool alone: a pointer would be a success too.
    template <std::same_as<bool> Bool> ErrorString(Bool ok) : m_ok(ok) {}

    /// A failure with this text; a null pointer gives a failure without a text.
    /// @{
    ErrorString(const wchar_t* text) : m_ok(false), m_text(text ? text : L"") {}
    ErrorString(std::wstring text) : m_ok(false), m_text(std::move(text)) {}
    /// @}

    /// True for a success.
    operator bool() const { return m_ok; }

    /// The message; empty for a success and for a failure that has nothing to say.
    const std::wstring& Text() const { return m_text; }

    /// Each appends to the message: texts and characters as they are, integers as decimal digits. Whether
    /// this is an error does not change.
    /// @{
    ErrorString& operator<<(const std::wstring& text) {
        m_text += text;
        return *this;
    }
    ErrorString& operator<<(const wchar_t* text) {
        if (text) m_text += text;
        return *this;
    }
    template <std::integral Integer> ErrorString& operator<<(Integer number) {
        if constexpr (std::is_same_v<Integer, wchar_t> || std::is_same_v<Integer, char>)
            m_text += static_cast<wchar_t>(static_cast<std::make_unsigned_t<Integer>>(number));
        else
            m_text += std::to_wstring(number);
        return *this;
    }
    /// @}

    // What would be taken for arithmetic with the bool: a shift, or the number 1 on a stream.
    template <typename Other>
    requires std::is_enum_v<Other> || std::floating_point<Other> ErrorString& operator<<(Other) = delete;
    template <typename Char, typename Traits>
    friend std::basic_ostream<Char, Traits>& operator<<(std::basic_ostream<Char, Traits>&,
                                                        const ErrorString&) = delete;

private:
    bool m_ok = true;
    std::wstring m_text;
};
