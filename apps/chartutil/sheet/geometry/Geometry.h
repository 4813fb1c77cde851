// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Extents2D.h"
#include "UtilityDLL/GTL/Point2D.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// Values of the world, and the border to the module that computes with them by GDAL and PROJ (gdal/). It is
// no part of the program and is loaded when a sheet is drawn, since loading GDAL takes longer than most
// commands.

using WorldPoint = GTL::Point2D<double>;
using WorldBox = GTL::Extents2D<double>;

/// A measured depth, positive down, in the units of the project's coordinate system.
struct Sounding {
    WorldPoint place;
    double depth;
};

/// Values at the centres of cells that cover a box: row by row from the lowest y, each from the lowest x.
struct Grid {
    WorldBox box;
    int columns = 0;
    int rows = 0;
    std::vector<float> values = {};

    double CellWidth() const { return box.ExtentX() / columns; }
    double CellHeight() const { return box.ExtentY() / rows; }
    float At(int column, int row) const {
        return values[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                      static_cast<std::size_t>(column)];
    }

    /// Between the centres of cells; that of the nearest cells outside of them.
    double ValueAt(const WorldPoint& place) const;
};

/// Pixels row by row from the top, each red, green, blue and opacity.
struct Pixels {
    int columns = 0;
    int rows = 0;
    std::vector<std::uint8_t> values = {};
};

/// A contour, from end to end; the last point of a closed one is its first.
struct ContourLine {
    double level;
    std::vector<WorldPoint> points;
};

/// Outlines of an area and of what is left out of it, each closed.
using Area = std::vector<std::vector<WorldPoint>>;

/// A coordinate system: its coordinates as longitudes and latitudes in degrees, and back. Points that have
/// none become NaN.
class CoordinateSystem {
public:
    virtual ~CoordinateSystem() = default;
    virtual std::string Name() const = 0; ///< UTF-8
    virtual bool IsGeographic() const = 0;
    virtual void ToGeographic(std::vector<WorldPoint>& points) const = 0;
    virtual void FromGeographic(std::vector<WorldPoint>& points) const = 0;
};

/// Points with depths in a file of any kind that GDAL reads.
struct PointLayer {
    std::string path;  ///< UTF-8
    std::string name;  ///< of the layer; empty for the first one with points
    std::string depth; ///< the attribute with the depth; empty for the points' own height or a usual name
};

/// What was found of it.
struct FoundLayer {
    std::string name;
    std::string depth;              ///< the attribute that was taken, empty for the points' height
    std::string system;             ///< the coordinate system, for OpenSystem(); empty when the file has none
    std::uint64_t withoutDepth = 0; ///< points that were passed over
};

/// Takes the share of a work that is done, from 0 to 1, and may end the work by an exception.
using ShowShare = std::function<void(double share)>;

/// What the module does. Each function throws a std::runtime_error of what cannot be done.
class GeometryModule {
public:
    virtual ~GeometryModule() = default;

    /// "EPSG:26916", or what else names a coordinate system in PROJ. It is one of longitudes and latitudes,
    /// or of eastings and northings in metres.
    virtual std::unique_ptr<CoordinateSystem> OpenSystem(const std::string& definition) const = 0;

    /// Hands over the points of a layer, also those of multipoints, with z as it is in the file.
    virtual FoundLayer ReadPoints(const PointLayer& layer, const std::function<void(const Sounding&)>& take,
                                  const ShowShare& show) const = 0;

    /// Turns places of one coordinate system into those of another; what has none there becomes NaN.
    virtual void Transform(const std::string& from, const std::string& to, std::vector<Sounding>& soundings,
                           const ShowShare& show) const = 0;

    /// The triangles of Delaunay between the points, each as three of their places in the list. None where
    /// the points span no area.
    virtual std::vector<std::array<std::size_t, 3>>
    Triangulate(const std::vector<WorldPoint>& points) const = 0;

    /// The contours of these levels, in the order of the levels.
    virtual std::vector<ContourLine> Trace(const Grid& grid, const std::vector<double>& levels,
                                           const ShowShare& show) const = 0;

    /// Where the grid is at or above the level.
    virtual std::vector<Area> AreasFrom(const Grid& grid, double level, const ShowShare& show) const = 0;

    /// The bytes of a PNG file.
    virtual std::string Png(const Pixels& pixels) const = 0;
};

/// Loads the module at the first call. Ends the command when that cannot be done, with the reason.
const GeometryModule& LoadGeometryModule();
