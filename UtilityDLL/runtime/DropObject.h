// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Values.h"
#include "UtilityDLL/Export.h"

#include <cstdint>

/// What is dragged from one window of the suite and dropped on another. Its one-line form is the number of
/// the type, a comma and the data: "2,abc".
class UTILITYDLL_API DropObject {
public:
    /// The kinds of objects; what they stand for is agreed between the windows.
    enum TYPE : std::int32_t { KIND_1 = 1, KIND_2 = 2, KIND_3 = 3, NO_OBJECT = 4 };

    /// No object.
    DropObject() = default;

    /// An object of that kind with its data; nothing is checked.
    DropObject(TYPE type, const CString& data) : m_type(type), m_data(data) {}

    /// What is dragged.
    /// @{
    TYPE Type() const noexcept { return m_type; }
    const CString& Data() const noexcept { return m_data; }
    /// @}

    /// The one-line form.
    CString ToString() const;

    /// Reads the one-line form: the leading integer, which must be 1, 2 or 3, and everything behind the first
    /// comma, which must not be empty. Any other text leaves no object and empty data.
    void FromString(const CString& text);

private:
    TYPE m_type = NO_OBJECT;
    CString m_data;
};
