// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/terminal/UserText.h"

#include <string>

/// Where a picture goes, and what it is to be.
struct PictureTarget {
    UserText path;         ///< "-" for standard output; empty for no picture
    std::string format;    ///< svg, png, pdf or dxf; empty for what the path ends in, svg for "-"
    bool isForced = false; ///< whether it may replace a file of another kind

    bool IsAsked() const { return !path.Empty(); }
};

/// Throws the CommandError that SavePicture() would throw for the format, and where there is a file of
/// another kind (see RequireReplaceable): to ask before the work is done.
void RequirePicture(const PictureTarget& target);

/// Writes the page to a file, whole or not at all, or to standard output: .svg; .pdf, in its true size; .png,
/// with four pixels to a millimetre; .dxf, a drawing in millimetres. Throws a CommandError for another
/// ending, when this program cannot make that kind, and when the file cannot be written. The same page gives
/// the same bytes.
void SavePicture(const Surface& surface, const PictureTarget& target);
