#include "apps/chartutil/drawing/PictureModule.h"

RenderPictureFunction* LoadPictureModule(std::string& whyNot) {
    whyNot = "was built without Qt";
    return nullptr;
}
