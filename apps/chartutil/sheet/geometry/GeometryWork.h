// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/geometry/Geometry.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

#include <cstdint>
#include <stdexcept>

/// Does work of the geometry module, with its faults as the program's and its progress on the program's bar.
template <typename Compute> auto DoGeometry(const char* what, const Compute& compute) {
    constexpr int kSteps = 1000;
    const Progress progress(what, kSteps);
    try {
        return compute(LoadGeometryModule(),
                       [&](double share) { progress.Show(static_cast<std::uint64_t>(share * kSteps)); });
    } catch (const CommandError&) {
        throw;
    } catch (const std::runtime_error& fault) {
        throw CommandError(ExitCode::CHECK_FAILED, fault.what());
    }
}
