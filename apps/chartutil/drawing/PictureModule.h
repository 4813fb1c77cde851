#pragma once

#include "apps/chartutil/drawing/Surface.h"

#include <cstddef>
#include <functional>
#include <string>

// The border to the module that makes pictures with Qt (qt/). It is no part of the program and is loaded when
// a picture needs it, since loading Qt takes longer than most commands.

enum class PictureFormat { PNG, PDF };

/// Takes how many shapes of the page have been drawn, and may end the drawing by an exception. Called in a
/// thread of the module's.
using ShowDrawn = std::function<void(std::size_t done)>;

/// The module's only function: puts the page as a file of that format into `file`; false when it cannot be
/// made, and `file` is then as it was. Not for several threads at once.
using RenderPictureFunction = bool(const Surface& surface, PictureFormat format, const ShowDrawn& show,
                                   std::string& file);
inline constexpr char kRenderPictureName[] = "RenderPicture";

/// Loads the module at the first call. Null when that cannot be done; `whyNot` then says what "this program"
/// lacks and how to get it.
RenderPictureFunction* LoadPictureModule(std::string& whyNot);
