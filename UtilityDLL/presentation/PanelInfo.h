// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <cstdint>
#include <string>

/// Place and size of a panel on a plot layout, in the plot's unit. The fields are the record's interface; all
/// are 0 at first.
class UTILITYDLL_API PanelInfo {
public:
    /// A value that is copied as a whole.
    /// @{
    PanelInfo() = default;
    PanelInfo(const PanelInfo& other) = default;
    PanelInfo& operator=(const PanelInfo& other) = default;
    /// @}

    virtual ~PanelInfo() = default;

    double posX = 0.0;              ///< the panel's place across the layout
    double posY = 0.0;              ///< the panel's place up the layout
    float width = 0.0f;             ///< of the panel
    float height = 0.0f;            ///< of the panel
    bool lockPosSize = false;       ///< whether place and size are to stay as they are
    std::int32_t justification = 0; ///< what the numbers mean is up to the plotting clients

    /// Tolerant in place and size (MATH::equal), exact in the rest.
    bool operator==(const PanelInfo& other) const;

    /// Keys: Width, Height, PosX, PosY, LockPosSize, Justification. With a prefix, as in "Legend.Width", the
    /// position is left out: it is neither written nor read. Always true. A missing PosX, PosY or
    /// Justification gives 0; the other fields keep their values where their key is missing.
    /// @{
    bool Read(const Section& section);
    bool Read(const std::wstring& prefix, const Section& section);
    bool Write(Section& section) const;
    bool Write(const std::wstring& prefix, Section& section) const;
    /// @}

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);
};
