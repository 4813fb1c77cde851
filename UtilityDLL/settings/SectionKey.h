// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Values.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/detail/NamedSequence.h"

#include <concepts>
#include <string>

/// One entry of a settings file: a name, a text value and a comment. Numbers are converted on the way in and
/// out, always in the form of the "C" locale.
///
/// Any text can be set, but a line of a settings file cannot carry every text. What does not come back as it
/// was when the file is read again:
///   - in a name: "=", ";", line breaks, blanks at its ends, a "[" at its start when a "]" follows on the
///   line;
///   - in a value: ";", line breaks, blanks at its ends;
///   - in a comment: line breaks, blanks at its end (a line feed is written as CR LF in all three);
///   - the value of a key without a name, and anything above character 255, which no file can hold.
class UTILITYDLL_API SectionKey {
public:
    /// A nameless key without a value: what the const look-ups of Section give for a name that is missing.
    SectionKey() = default;

    /// A key without value and comment. A null pointer gives the empty name.
    /// @{
    SectionKey(const wchar_t* name) : m_name(HashedString<wchar_t>(name)) {}
    SectionKey(const std::wstring& name) : m_name(HashedString<wchar_t>(name)) {}
    /// @}

    /// A key with all its parts.
    /// @{
    SectionKey(const HashedString<wchar_t>& name, std::wstring value, const std::wstring& comments)
        : m_name(name), m_value(std::move(value)) {
        SetComments(comments);
    }
    SectionKey(const HashedString<wchar_t>& name, std::wstring value,
               const SharedValue<std::wstring>& comments)
        : m_name(name), m_value(std::move(value)), m_comments(comments) {}
    /// @}

    /// The parts as they were given or read.
    /// @{
    const HashedString<wchar_t>& GetName() const { return m_name.Get(); }
    const std::wstring& GetValue() const { return m_value; }
    const std::wstring& GetComments() const { return m_comments.Get(); }
    /// @}

    /// A null pointer leaves the comment as it is.
    /// @{
    void SetComments(const std::wstring& comments) {
        m_comments = comments.empty() ? SharedValue<std::wstring>() : SharedValue<std::wstring>(comments);
    }
    void SetComments(const wchar_t* comments) {
        if (comments) SetComments(std::wstring(comments));
    }
    /// @}

    /// Whether the name is not empty. Comment-only lines of a file are kept as keys that are not valid.
    bool IsValid() const { return !GetName().String().empty(); }

    /// Each replaces the whole value. A null pointer leaves it as it is. Narrow text is that of the platform
    /// (see FromNarrow).
    /// @{
    SectionKey& operator<<(const char* value);
    SectionKey& operator<<(const wchar_t* value);
    SectionKey& operator<<(const std::wstring& value);
    SectionKey& operator<<(const CString& value) { return *this << value.String(); }
    /// @}

    /// Decimal digits; a bool is 1 or 0, and nothing else passes for one; a floating-point number has exactly
    /// six digits after the point. What an unsigned long holds above 4294967295 is written, but not read
    /// back.
    /// @{
    SectionKey& operator<<(short value) { return SetInteger(value); }
    SectionKey& operator<<(unsigned short value) { return SetInteger(value); }
    SectionKey& operator<<(int value) { return SetInteger(value); }
    SectionKey& operator<<(unsigned int value) { return SetInteger(value); }
    SectionKey& operator<<(long value) { return SetInteger(value); }
    SectionKey& operator<<(unsigned long value) { return SetUnsigned(value); }
    SectionKey& operator<<(float value) { return *this << static_cast<double>(value); }
    SectionKey& operator<<(double value);
    template <std::same_as<bool> Bool> SectionKey& operator<<(Bool value) { return SetInteger(value); }
    /// @}

    /// The text of the value takes the place of `value`; an empty one too.
    /// @{
    const SectionKey& operator>>(std::wstring& value) const;
    const SectionKey& operator>>(CString& value) const;
    /// @}

    /// The number at the start of the value, with the result of a standard wide-stream extraction (see
    /// NumberText::Extract): an empty value leaves the target alone, a text that is no number gives 0.
    /// An `unsigned long` is read as 32 bits wide, a `long` as wide as the platform's.
    /// @{
    const SectionKey& operator>>(short& value) const;
    const SectionKey& operator>>(unsigned short& value) const;
    const SectionKey& operator>>(int& value) const;
    const SectionKey& operator>>(unsigned int& value) const;
    const SectionKey& operator>>(long& value) const;
    const SectionKey& operator>>(unsigned long& value) const;
    const SectionKey& operator>>(bool& value) const;
    const SectionKey& operator>>(float& value) const;
    const SectionKey& operator>>(double& value) const;
    /// @}

    /// By name only, ignoring letter case: equality, and an order by hash that is not alphabetical.
    /// @{
    bool operator==(const SectionKey& other) const { return SameName(GetName(), other.GetName()); }
    bool operator<(const SectionKey& other) const { return NameIsSmaller(GetName(), other.GetName()); }
    bool operator>(const SectionKey& other) const { return NameIsSmaller(other.GetName(), GetName()); }
    /// @}

private:
    friend class NamedSequence<SectionKey>; // follows the name
    SectionKey& SetInteger(long long value);
    SectionKey& SetUnsigned(unsigned long long value);

    IndexedName m_name;
    std::wstring m_value;
    SharedValue<std::wstring> m_comments;
};
