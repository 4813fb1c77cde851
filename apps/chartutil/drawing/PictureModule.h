// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"

#include <cstddef>
#include <functional>
#include <string>

// The border to the modules that make pictures: with Qt (qt/) and, drawings, with GDAL (gdal/). They are no
// part of the program and are loaded when a picture needs them, since that takes longer than most commands.

enum class PictureFormat { PNG, PDF, DXF };

/// Takes how many shapes of the page have been drawn, and may end the drawing by an exception. Called in a
/// thread of the module's.
using ShowDrawn = std::function<void(std::size_t done)>;

/// A module's only function: puts the page as a file of one of its formats into `file`; false when it cannot
/// be made, and `file` is then as it was. Not for several threads at once.
using RenderPictureFunction = bool(const Surface& surface, PictureFormat format, const ShowDrawn& show,
                                   std::string& file);
inline constexpr char kRenderPictureName[] = "RenderPicture";

/// Loads the module for that format at the first call. Null when that cannot be done; `whyNot` then says what
/// "this program" lacks and how to get it.
RenderPictureFunction* LoadPictureModule(PictureFormat format, std::string& whyNot);
