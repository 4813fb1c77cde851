// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/geometry/Geometry.h"

#include <cstddef>
#include <vector>

// The surface that soundings make. Depths are positive down.

/// The shoalest sounding of each square of a lattice, in the order of its squares. Squares are as large as
/// the cells of `shape`, or twice, four times ... as large where there would be more than `most` soundings
/// otherwise. Around the shape's box soundings count as far as half its size away, since triangles reach
/// into it from there; those further away are left out, and so are those that are no numbers.
std::vector<Sounding> ThinToShoalest(const std::vector<Sounding>& soundings, const Grid& shape,
                                     std::size_t most);

/// The surface through the soundings: linear within the triangles between them, as GDAL has them, and
/// elsewhere as deep as the nearest cell that is known. Empty where there is no sounding.
Grid SurfaceThrough(const std::vector<Sounding>& soundings, const Grid& shape,
                    const GeometryModule& geometry);

/// Each value becomes a mean of those about it, by weights that are nearly those of a normal distribution
/// with this standard deviation, in cells: three running means, one after the other, in time that does not
/// depend on how wide they are. Beyond its edges a grid goes on as at them.
void Blur(Grid& grid, double deviation);

/// The same for depths, so that the surface has no edges where triangles meet, but to the safe side: shoals
/// stay, and hollows are filled.
void SmoothShoalBiased(Grid& depths, double deviation);

/// How far it is, in the world's units, to the limit of what is known: above 0 within. What lies no further
/// than `reach` from a sounding is known, and what lies between soundings that are not more than about seven
/// times as far apart; the limit is smooth.
Grid Coverage(const std::vector<Sounding>& soundings, const Grid& shape, double reach);
