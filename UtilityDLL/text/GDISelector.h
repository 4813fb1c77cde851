// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/DC.h"
#include "UtilityDLL/Export.h"

/// Selects an object into a device context for as long as this lives, and then the one that was there before.
/// The CDC must outlive it and is not null; without a context or an object, nothing is selected or restored.
class UTILITYDLL_API GDISelector {
public:
    /// Selects the object.
    GDISelector(CDC* dc, CGdiObject& object);

    /// A bare handle, of a font for example, that stays its owner's.
    GDISelector(CDC* dc, void* handle);

    /// An object that the system has ready (SYSTEM_FONT). This one stays selected afterwards.
    GDISelector(CDC* dc, int stockObject);

    ~GDISelector();
    GDISelector(const GDISelector&) = delete;
    GDISelector& operator=(const GDISelector&) = delete;

    /// True when there is an object to restore, which is the reverse of what the operator says elsewhere.
    bool operator!() const { return m_previous != nullptr; }

private:
    void Select(HGDIOBJ object);

    CDC* m_dc;
    HGDIOBJ m_previous = nullptr; // the object for it may be forgotten while this lives
};
