// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/freetype/module/private/FaceFile.h"

#include <freetype/freetype.h>
#include <memory>
#include <string_view>

/// A face of FreeType's. Threads that use one take turns.
using FreeTypeFace = std::unique_ptr<FT_FaceRec, void (*)(FT_Face)>;

/// Opens a face of a font file; `bytes` has to outlive it. Null for what is no font or has no outlines. Any
/// thread may call.
FreeTypeFace OpenFreeTypeFace(std::string_view bytes, const FaceFile& file);
