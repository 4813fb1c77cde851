// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/detail/SharedValue.h"
#include "VelmBase/WideString.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The 32-bit hash of a name: the CRCChecksum over its upper-cased characters, each fed as one integer. A
/// character above U+FFFF counts as its two UTF-16 units, so that the hash is the same on every platform.
UTILITYDLL_API unsigned int NameHash(std::wstring_view name);

/// What a scan over names compares first: the length and three characters of a name, whatever their letter
/// case. Names that are the same but for letter case have the same outline.
inline std::uint32_t NameOutline(std::wstring_view name) {
    if (name.empty()) return 0;
    const auto upper = [&](std::size_t i) { return static_cast<std::uint32_t>(ToUpperW(name[i])); };
    const std::size_t last = name.size() - 1;
    return static_cast<std::uint32_t>(name.size()) << 24 ^ upper(last) << 16 ^ upper(last / 2) << 8 ^
           upper(0);
}

/// A name with a hash that ignores letter case; the two always match. Copies are cheap: they share the text.
template <typename C> class HashedString {
public:
    /// The empty name; its hash is that of an untouched CRCChecksum.
    HashedString() = default;

    /// A null pointer gives the empty name.
    /// @{
    HashedString(const C* name) : HashedString(std::basic_string<C>(name ? name : std::basic_string<C>())) {}
    HashedString(std::basic_string<C> name) {
        if (!name.empty()) m_name = SharedValue<Name>({NameHash(name), NameOutline(name), std::move(name)});
    }
    /// @}

    /// The name as it was given.
    const std::basic_string<C>& String() const { return m_name.Get().text; }

    /// The hash: for wide text NameHash of the name.
    unsigned int Hash() const { return m_name.Get().hash; }

    /// The name where a text is wanted.
    operator const std::basic_string<C>&() const { return String(); }

    /// Whether both are copies of one name; then they are equal.
    bool SharesTextWith(const HashedString& other) const { return m_name.SharesWith(other.m_name); }

    /// See NameOutline.
    std::uint32_t Outline() const { return m_name.Get().outline; }

private:
    struct Name {
        unsigned int hash = 0;
        std::uint32_t outline = 0;
        std::basic_string<C> text;
    };
    SharedValue<Name> m_name;
};

/// Whether two names are the same but for letter case.
inline bool SameName(const HashedString<wchar_t>& a, const HashedString<wchar_t>& b) {
    return a.Hash() == b.Hash() && icompareW(a.String(), b.String());
}

/// The order of keys and sections: by hash, and by name (ignoring case) where hashes are equal. This is not
/// alphabetical.
inline bool NameIsSmaller(const HashedString<wchar_t>& a, const HashedString<wchar_t>& b) {
    return a.Hash() != b.Hash() ? a.Hash() < b.Hash() : SmallerW(a.String(), b.String());
}
