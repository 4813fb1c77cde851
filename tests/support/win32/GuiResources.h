// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// What this process has of the system for its windows just now.
struct GuiResources {
    std::size_t gdi;  // fonts, brushes, pens, bitmaps, regions, device contexts
    std::size_t user; // windows, menus, cursors, icons and the like; under Wine windows alone
    bool operator==(const GuiResources&) const = default;
};
GuiResources GuiResourcesInUse();
