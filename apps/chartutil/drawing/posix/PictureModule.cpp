// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/PictureModule.h"

#include "apps/chartutil/drawing/posix/ProgramModule.h"

RenderPictureFunction* LoadPictureModule(PictureFormat format, std::string& whyNot) {
    void* const render = format == PictureFormat::DXF
                             ? LoadProgramModule("chartutil_dxf.so", kRenderPictureName,
                                                 {"chartutil-sheet", "libgdal32", "libgdal-dev"}, whyNot)
                             : LoadProgramModule("chartutil_pictures.so", kRenderPictureName,
                                                 {"utilitydll-gui", "libqt6gui6", "qt6-base-dev"}, whyNot);
    return reinterpret_cast<RenderPictureFunction*>(render);
}
