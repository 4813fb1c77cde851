// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/PictureModule.h"

RenderPictureFunction* LoadPictureModule(PictureFormat format, std::string& whyNot) {
    whyNot = format == PictureFormat::DXF ? "was built without GDAL" : "was built without Qt";
    return nullptr;
}
