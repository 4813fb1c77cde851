#pragma once

#include <string>
#include <type_traits>
#include <utility>

/// The result of an operation: success, or a failure with an optional message. True when it holds no error.
class ErrorString {
public:
    /// Success.
    ErrorString() = default;

    /// Success when `ok`, else a failure without a text.
    explicit ErrorString(bool ok) : m_ok(ok) {}

    /// A failure with this text; a null pointer gives a failure without a text.
    ErrorString(const wchar_t* text) : m_ok(false), m_text(text ? text : L"") {}
    ErrorString(std::wstring text) : m_ok(false), m_text(std::move(text)) {}

    explicit operator bool() const { return m_ok; }

    /// The message; empty for a success and for a failure that has nothing to say.
    const std::wstring& Text() const { return m_text; }

    /// Appends to the message; whether this is an error does not change.
    ErrorString& operator<<(const std::wstring& text) {
        m_text += text;
        return *this;
    }
    ErrorString& operator<<(const wchar_t* text) {
        if (text) m_text += text;
        return *this;
    }
    template <typename Integer>
    requires std::is_integral_v<Integer> ErrorString& operator<<(Integer number) {
        m_text += std::to_wstring(number);
        return *this;
    }

private:
    bool m_ok = true;
    std::wstring m_text;
};
