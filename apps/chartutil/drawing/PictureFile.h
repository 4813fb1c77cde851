#pragma once

#include "apps/chartutil/drawing/Surface.h"

#include <string>

/// Throws the CommandError that SavePicture() would throw for the name's ending: to ask before the work is
/// done.
void RequirePictureName(const std::string& path);

/// Writes the page to a file, whole or not at all. The name's ending says which kind: .svg; .pdf, in its true
/// size; .png, with four pixels to a millimetre; .dxf, a drawing in millimetres. Throws a CommandError for
/// another ending, when this program cannot make that kind, and when the file cannot be written. The same
/// page gives the same bytes.
void SavePicture(const Surface& surface, const std::string& path);
