#pragma once

#include "UtilityDLL/Export.h"
#include "VelmBase/WideString.h"

#include <memory>
#include <string>
#include <string_view>

/// The 32-bit hash of a name: the CRCChecksum over its upper-cased characters, each fed as one integer. A
/// character above U+FFFF counts as its two UTF-16 units, so that the hash is the same on every platform.
UTILITYDLL_API unsigned int NameHash(std::wstring_view name);

/// An immutable text that copies share: a file repeats its key names in every section, and most comments are
/// empty, which costs nothing.
template <typename C> class SharedString {
public:
    SharedString() = default;
    SharedString(std::basic_string<C> text)
        : m_text(text.empty() ? nullptr : std::make_shared<const std::basic_string<C>>(std::move(text))) {}

    const std::basic_string<C>& String() const {
        static const std::basic_string<C> empty;
        return m_text ? *m_text : empty;
    }

private:
    std::shared_ptr<const std::basic_string<C>> m_text;
};

/// A name with a hash that ignores letter case; the two always match. Copies are cheap: they share the text.
template <typename C> class HashedString {
public:
    /// The empty name; its hash is that of an untouched CRCChecksum.
    HashedString() = default;

    /// A null pointer gives the empty name.
    HashedString(const C* name) : HashedString(std::basic_string<C>(name ? name : std::basic_string<C>())) {}
    HashedString(std::basic_string<C> name) : m_hash(NameHash(name)), m_name(std::move(name)) {}

    const std::basic_string<C>& String() const { return m_name.String(); }
    unsigned int Hash() const { return m_hash; }
    operator const std::basic_string<C>&() const { return String(); }

private:
    unsigned int m_hash = 0;
    SharedString<C> m_name;
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
