// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <cstdint>
#include <string>

/// The bias mode of a chart view. What its numbers mean is up to the clients.
class UTILITYDLL_API BiasInfo {
public:
    /// A value, with mode 0 at first.
    /// @{
    BiasInfo() = default;
    BiasInfo(const BiasInfo& other) = default;
    BiasInfo& operator=(const BiasInfo& other) = default;
    /// @}

    virtual ~BiasInfo() = default;

    /// The mode, stored as given.
    /// @{
    std::int32_t Mode() const { return m_mode; }
    void Mode(std::int32_t mode) { m_mode = mode; }
    /// @}

    /// Exact.
    bool operator==(const BiasInfo& other) const { return m_mode == other.m_mode; }

    /// Key: BiasMode; with a prefix as in "P1.BiasMode". Always true. The mode keeps its value where the key
    /// is missing.
    /// @{
    bool Read(const Section& section);
    bool Read(const std::wstring& prefix, const Section& section);
    bool Write(Section& section) const;
    bool Write(const std::wstring& prefix, Section& section) const;
    /// @}

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);

    std::int32_t m_mode = 0;
};
