// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/posix/ProgramModule.h"
#include "apps/chartutil/sheet/geometry/Geometry.h"
#include "apps/chartutil/terminal/Errors.h"

const GeometryModule& LoadGeometryModule() {
    std::string whyNot;
    void* const open = LoadProgramModule("chartutil_geometry.so", "OpenGeometryModule",
                                         {"chartutil-sheet", "libgdal32", "libgdal-dev"}, whyNot);
    if (!open) throw CommandError(ExitCode::IO_ERROR, "no sheet can be drawn: this program " + whyNot);
    return *reinterpret_cast<const GeometryModule* (*)()>(open)();
}
