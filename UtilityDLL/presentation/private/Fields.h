// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/settings/Section.h"
#include "VelmBase/Math.h"
#include "VelmBase/NumberText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// How the presentation records go into a section and come back. A record lists its fields once, in the order
// of the file: the key, the field and, where it is not a plain value, its form.
//
//     template <typename Exchange, typename Record> bool DXFInfo::Fields(Exchange field, Record& record) {
//         field(L"DXFLineColor"_key, record.m_color, FORM::IndexedColor());
//         field(L"DXFLineTrueColor"_key, record.m_color);
//         field(L"DXFLineWidth"_key, record.m_width);
//         return true;
//     }
//
//     bool DXFInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
//     bool DXFInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }

/// The forms of a field in its key. Each says how it is written, how it is read, and what a missing key (one
/// that is nameless and empty) does to the field.
namespace FORM {

/// As the key's own operators have it: a missing key or an empty value leaves the field alone, a text that is
/// no number gives 0.
struct Plain {
    template <typename Field> static void Write(SectionKey& key, const Field& field) { key << field; }
    template <typename Field> static void Read(const SectionKey& key, Field& field) { key >> field; }
};

/// Plain, with a comment for whoever reads the file.
struct Commented : Plain {
    explicit Commented(const wchar_t* text) : comment(text) {}
    template <typename Field> void Write(SectionKey& key, const Field& field) const {
        (key << field).SetComments(comment);
    }
    const wchar_t* comment;
};

/// A number that is 0 when the key is missing.
struct OrZero : Plain {
    template <typename Field> static void Read(const SectionKey& key, Field& field) {
        field = 0;
        key >> field;
    }
};

/// A number whose sign is dropped when it is read.
struct Magnitude : Plain {
    static void Read(const SectionKey& key, double& field) {
        key >> field;
        field = std::fabs(field);
    }
};

/// A magnitude written with all the digits that it needs, and two more.
struct PreciseMagnitude : Magnitude {
    static void Write(SectionKey& key, double field) {
        key << NumberText::FromGeneral(field, GetDoublePrecision(field) + 2);
    }
};

/// A text; a missing key leaves the field alone.
struct Text : Plain {
    static void Read(const SectionKey& key, std::wstring& field) {
        if (key.IsValid()) field = key.GetValue();
    }
};

/// A text in double quotes, so that blanks at its ends survive a file. All quotes at both ends go when it is
/// read; a missing key gives an empty text.
struct Quoted {
    static void Write(SectionKey& key, const std::wstring& field) { key << L'"' + field + L'"'; }
    static void Read(const SectionKey& key, std::wstring& field) { field = trimW(key.GetValue(), L"\""); }
};

/// Degrees; a missing key leaves the angle alone.
struct Degrees {
    static void Write(SectionKey& key, const Angle& field) { key << field.Get(); }
    static void Read(const SectionKey& key, Angle& field) {
        double degrees = field.Get();
        key >> degrees;
        field = Angle(degrees);
    }
};

/// A colour as the nearest DXF index, read as the palette's colour of the index. A missing key, a text that
/// is no number and an index outside the palette count as 0.
struct IndexedColor {
    static void Write(SectionKey& key, unsigned long field) { key << DXFColor(field).Index(); }
    static void Read(const SectionKey& key, unsigned long& field) {
        int index = 0;
        key >> index;
        field = DXFColor(index);
    }
};

/// An enumeration as its number. A number that is not below `count` and a missing key leave the field alone.
struct Number {
    template <typename Field> static void Write(SectionKey& key, Field field) {
        key << static_cast<int>(field);
    }
    template <typename Field> void Read(const SectionKey& key, Field& field) const {
        int number = -1;
        key >> number;
        if (static_cast<unsigned int>(number) < count) field = static_cast<Field>(number);
    }
    unsigned int count;
};

/// An enumeration as a name, by its number from 0. A value without a name is written as an empty text; a text
/// that is no name, and so a missing key, is read as 0.
struct Name {
    template <typename Field> void Write(SectionKey& key, Field field) const { key << TextOf(field); }
    template <typename Field> void Read(const SectionKey& key, Field& field) const {
        field = static_cast<Field>(NumberOf(key.GetValue()));
    }

    const wchar_t* TextOf(std::int32_t number) const {
        const auto position = static_cast<std::size_t>(number);
        return position < names.size() ? names[position] : L"";
    }
    std::int32_t NumberOf(const std::wstring& text) const {
        const auto found = std::find_if(names.begin(), names.end(), [&](const wchar_t* name) {
            return ignoreCase ? icompareW(text, name) : text == name;
        });
        return found != names.end() ? static_cast<std::int32_t>(found - names.begin()) : 0;
    }

    std::span<const wchar_t* const> names;
    bool ignoreCase;
};

} // namespace FORM

/// A text that can stand in a template's argument.
template <std::size_t size> struct FixedText {
    constexpr FixedText(const wchar_t (&literal)[size]) { std::copy_n(literal, size, text); }
    wchar_t text[size];
};

/// The name of a key. It is made once, and every section that a record is written to shares it.
template <FixedText name> const HashedString<wchar_t>& operator""_key() {
    static const HashedString<wchar_t> key(name.text);
    return key;
}

/// The keys of a section for one record: under their own names, or behind a prefix and a point.
template <typename AnySection> class FieldKeys {
public:
    explicit FieldKeys(AnySection& section) : m_section(section) {}
    FieldKeys(AnySection& section, const std::wstring& prefix)
        : m_section(section), m_name(prefix + L'.'), m_prefixLength(m_name.size()) {}

    bool IsPrefixed() const { return m_prefixLength > 0; }

protected:
    auto& Key(const HashedString<wchar_t>& key) {
        if (!IsPrefixed()) return m_section[key];
        m_name.resize(m_prefixLength);
        return m_section[m_name += key.String()];
    }

private:
    AnySection& m_section;
    std::wstring m_name;
    std::size_t m_prefixLength = 0;
};

/// Takes fields from a section.
class FieldReader : public FieldKeys<const Section> {
public:
    using FieldKeys::FieldKeys;

    template <typename Field, typename Form = FORM::Plain>
    void operator()(const HashedString<wchar_t>& key, Field& field, const Form& form = {}) {
        form.Read(Key(key), field);
    }

    /// A field under a key that is not written any more, or one that is written for others alone.
    template <typename Field> void OnlyRead(const HashedString<wchar_t>& key, Field& field) {
        (*this)(key, field);
    }
    template <typename Field>
    void OnlyWritten(const HashedString<wchar_t>& /*key*/, const Field& /*field*/) {}
};

/// Puts fields into a section; a key that is missing is added at its end.
class FieldWriter : public FieldKeys<Section> {
public:
    using FieldKeys::FieldKeys;

    template <typename Field, typename Form = FORM::Plain>
    void operator()(const HashedString<wchar_t>& key, const Field& field, const Form& form = {}) {
        form.Write(Key(key), field);
    }

    template <typename Field> void OnlyRead(const HashedString<wchar_t>& /*key*/, const Field& /*field*/) {}
    template <typename Field> void OnlyWritten(const HashedString<wchar_t>& key, const Field& field) {
        (*this)(key, field);
    }
};
