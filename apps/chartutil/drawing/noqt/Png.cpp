#include "apps/chartutil/drawing/Png.h"

bool CanRenderPng() { return false; }

std::string RenderPng(const std::string& /*svg*/, int /*width*/, int /*height*/) { return {}; }
