// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/geometry/Geometry.h"

#include <algorithm>
#include <cmath>
#include <cpl_error.h>
#include <cpl_string.h>
#include <cpl_vsi.h>
#include <gdal.h>
#include <gdal_alg.h>
#include <limits>
#include <ogr_api.h>
#include <ogr_spatialref.h>
#include <stdexcept>

namespace {

[[noreturn]] void Fail(const std::string& what) {
    const std::string reason = CPLGetLastErrorMsg();
    throw std::runtime_error(what + (reason.empty() ? "" : ": " + reason));
}

// GDAL's functions are C: what ends the work must not leave through them.
class Steps {
public:
    explicit Steps(const ShowShare& show) : m_show(show) {}

    static int Show(double share, const char*, void* steps) {
        auto& self = *static_cast<Steps*>(steps);
        try {
            self.m_show(share);
            return TRUE;
        } catch (...) {
            self.m_stopped = std::current_exception();
            return FALSE;
        }
    }

    void ThrowIfStopped() const {
        if (m_stopped) std::rethrow_exception(m_stopped);
    }

private:
    const ShowShare& m_show;
    std::exception_ptr m_stopped;
};

struct CloseDataset {
    void operator()(void* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<void, CloseDataset>;

// A grid as a raster of GDAL, on the same memory.
Dataset RasterOf(const Grid& grid) {
    const auto columns = static_cast<std::size_t>(grid.columns);
    const std::string name =
        "MEM:::DATAPOINTER=" + std::to_string(reinterpret_cast<std::uintptr_t>(grid.values.data())) +
        ",PIXELS=" + std::to_string(grid.columns) + ",LINES=" + std::to_string(grid.rows) +
        ",DATATYPE=Float32,PIXELOFFSET=4,LINEOFFSET=" + std::to_string(columns * sizeof(float));
    Dataset raster(GDALOpen(name.c_str(), GA_Update));
    if (!raster) Fail("The surface cannot be held as a raster");
    double transform[6] = {grid.box.MinX(), grid.CellWidth(), 0, grid.box.MinY(), 0, grid.CellHeight()};
    GDALSetGeoTransform(raster.get(), transform);
    return raster;
}

// Not from a file or an address, which SetFromUserInput() would follow otherwise.
void Open(const std::string& definition, OGRSpatialReference& system) {
    CPLErrorReset();
    const auto* const limits = OGRSpatialReference::SET_FROM_USER_INPUT_LIMITATIONS_get();
    if (system.SetFromUserInput(definition.c_str(), limits) != OGRERR_NONE)
        Fail("'" + definition + "' is no coordinate system; write one as EPSG:26916");
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    if (!system.IsGeographic() && !system.IsProjected())
        Fail("'" + definition + "' has neither longitudes and latitudes nor eastings and northings");
    if (system.IsProjected() && std::fabs(system.GetLinearUnits() - 1) > 1e-9)
        Fail("'" + definition + "' does not count in metres; take one that does, such as EPSG:26916");
}

class ProjSystem final : public CoordinateSystem {
public:
    explicit ProjSystem(const std::string& definition) {
        Open(definition, m_system);
        m_geographic.CopyGeogCSFrom(&m_system);
        m_geographic.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
        m_to.reset(OGRCreateCoordinateTransformation(&m_system, &m_geographic));
        m_from.reset(OGRCreateCoordinateTransformation(&m_geographic, &m_system));
        if (!m_to || !m_from) Fail("'" + definition + "' has no longitudes and latitudes");
    }

    std::string Name() const override {
        const char* const name = m_system.GetName();
        return name ? name : "";
    }
    bool IsGeographic() const override { return m_system.IsGeographic() != 0; }
    void ToGeographic(std::vector<WorldPoint>& points) const override { Transform(*m_to, points); }
    void FromGeographic(std::vector<WorldPoint>& points) const override { Transform(*m_from, points); }

private:
    static void Transform(OGRCoordinateTransformation& transformation, std::vector<WorldPoint>& points) {
        std::vector<double> x, y;
        for (const WorldPoint& point : points) {
            x.push_back(point.X());
            y.push_back(point.Y());
        }
        std::vector<int> isDone(points.size());
        transformation.Transform(static_cast<int>(points.size()), x.data(), y.data(), nullptr, isDone.data());
        constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
        for (std::size_t i = 0; i < points.size(); ++i)
            points[i] = isDone[i] ? WorldPoint(x[i], y[i]) : WorldPoint(kNone, kNone);
    }

    OGRSpatialReference m_system, m_geographic;
    std::unique_ptr<OGRCoordinateTransformation> m_to, m_from;
};

// Contours of GDAL in a layer in memory.
class ContourLayer {
public:
    ContourLayer(const Grid& grid, const std::vector<double>& levels, bool areas, const ShowShare& show)
        : m_source(GDALCreate(GDALGetDriverByName("Memory"), "", 0, 0, 0, GDT_Unknown, nullptr)) {
        if (!m_source) Fail("Contours cannot be held in memory");
        m_layer = GDALDatasetCreateLayer(m_source.get(), "contours", nullptr,
                                         areas ? wkbMultiPolygon : wkbLineString, nullptr);
        for (const char* const name : {"low", "high"}) {
            OGRFieldDefnH field = OGR_Fld_Create(name, OFTReal);
            OGR_L_CreateField(m_layer, field, TRUE);
            OGR_Fld_Destroy(field);
        }
        std::string fixed;
        for (const double level : levels)
            fixed += (fixed.empty() ? "" : ",") + std::string(CPLSPrintf("%.17g", level));
        char** options = CSLSetNameValue(nullptr, "FIXED_LEVELS", fixed.c_str());
        options = CSLSetNameValue(options, areas ? "ELEV_FIELD_MIN" : "ELEV_FIELD", "0");
        if (areas) {
            options = CSLSetNameValue(options, "ELEV_FIELD_MAX", "1");
            options = CSLSetNameValue(options, "POLYGONIZE", "YES");
        }
        Steps steps(show);
        const Dataset raster = RasterOf(grid);
        const CPLErr done =
            GDALContourGenerateEx(GDALGetRasterBand(raster.get(), 1), m_layer, options, &Steps::Show, &steps);
        CSLDestroy(options);
        steps.ThrowIfStopped();
        if (done != CE_None) Fail("The contours cannot be traced");
    }

    // Calls with each contour's shape and fields.
    template <typename Call> void ForEach(const Call& call) const {
        OGR_L_ResetReading(m_layer);
        while (OGRFeatureH feature = OGR_L_GetNextFeature(m_layer)) {
            call(OGR_F_GetGeometryRef(feature), OGR_F_GetFieldAsDouble(feature, 0),
                 OGR_F_GetFieldAsDouble(feature, 1));
            OGR_F_Destroy(feature);
        }
    }

private:
    Dataset m_source;
    OGRLayerH m_layer = nullptr;
};

struct DestroyFeature {
    void operator()(void* feature) const { OGR_F_Destroy(feature); }
};

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// A layer of points, one of soundings before others.
OGRLayerH FindLayer(GDALDatasetH source, const PointLayer& wanted) {
    OGRLayerH found = nullptr;
    std::string names;
    for (int i = 0; i < GDALDatasetGetLayerCount(source); ++i) {
        OGRLayerH layer = GDALDatasetGetLayer(source, i);
        const std::string name = OGR_L_GetName(layer);
        const OGRwkbGeometryType type = wkbFlatten(OGR_L_GetGeomType(layer));
        const bool hasPoints = type == wkbPoint || type == wkbMultiPoint || type == wkbUnknown;
        if (wanted.name.empty() ? name == "SOUNDG" : name == wanted.name) return layer;
        if (wanted.name.empty() && hasPoints && !found) found = layer;
        names += (names.empty() ? "" : ", ") + name;
    }
    if (found) return found;
    CPLErrorReset();
    Fail(wanted.path + ": there is no layer " +
         (wanted.name.empty() ? "of points" : "'" + wanted.name + "'") + "; it has " +
         (names.empty() ? "none" : names));
}

// -1 for the points' own height.
int FindDepth(OGRLayerH layer, const PointLayer& wanted) {
    OGRFeatureDefnH fields = OGR_L_GetLayerDefn(layer);
    if (!wanted.depth.empty()) {
        const int found = OGR_FD_GetFieldIndex(fields, wanted.depth.c_str());
        if (found >= 0 || Lower(wanted.depth) == "z") return found;
        CPLErrorReset();
        Fail(wanted.path + ": the layer " + OGR_L_GetName(layer) + " has no attribute '" + wanted.depth +
             "'");
    }
    if (OGR_GT_HasZ(OGR_L_GetGeomType(layer)) != 0) return -1;
    for (const char* const usual : {"depth", "sounding", "valsou", "z", "elevation", "height", "value"})
        for (int i = 0; i < OGR_FD_GetFieldCount(fields); ++i)
            if (Lower(OGR_Fld_GetNameRef(OGR_FD_GetFieldDefn(fields, i))).starts_with(usual)) return i;
    return -1;
}

std::string SystemOf(OGRLayerH layer) {
    auto* const system = OGRSpatialReference::FromHandle(OGR_L_GetSpatialRef(layer));
    if (!system) return {};
    if (const char* const code = system->GetAuthorityCode(nullptr)) {
        const char* const authority = system->GetAuthorityName(nullptr);
        return std::string(authority ? authority : "EPSG") + ":" + code;
    }
    char* text = nullptr;
    system->exportToWkt(&text);
    std::string definition = text ? text : "";
    CPLFree(text);
    return definition;
}

std::vector<WorldPoint> PointsOf(OGRGeometryH line) {
    std::vector<WorldPoint> points;
    const int count = OGR_G_GetPointCount(line);
    points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) points.emplace_back(OGR_G_GetX(line, i), OGR_G_GetY(line, i));
    return points;
}

// Whether there is a triangle among the points. The triangulation would print pages about points without one.
bool SpanArea(const std::vector<WorldPoint>& points) {
    if (points.size() < 3) return false;
    const auto from = [&](const WorldPoint& point) { return point - points.front(); };
    const auto isNearer = [&](const WorldPoint& a, const WorldPoint& b) {
        return std::hypot(from(a).X(), from(a).Y()) < std::hypot(from(b).X(), from(b).Y());
    };
    const auto along = from(*std::ranges::max_element(points, isNearer));
    constexpr double kFlat = 1e-9;
    return std::ranges::any_of(points, [&](const WorldPoint& point) {
        const auto to = from(point);
        return std::fabs(along.X() * to.Y() - along.Y() * to.X()) >
               kFlat * (along.X() * along.X() + along.Y() * along.Y());
    });
}

class Gdal final : public GeometryModule {
public:
    Gdal() {
        CPLSetErrorHandler(CPLQuietErrorHandler);
        GDALAllRegister();
    }

    std::unique_ptr<CoordinateSystem> OpenSystem(const std::string& definition) const override {
        return std::make_unique<ProjSystem>(definition);
    }

    FoundLayer ReadPoints(const PointLayer& wanted, const std::function<void(const Sounding&)>& take,
                          const ShowShare& show) const override {
        CPLErrorReset();
        const Dataset source(
            GDALOpenEx(wanted.path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr));
        if (!source) Fail(wanted.path + ": is no table of soundings, and no layer that GDAL reads");
        OGRLayerH layer = FindLayer(source.get(), wanted);
        const int depth = FindDepth(layer, wanted);
        FoundLayer found{OGR_L_GetName(layer), {}, SystemOf(layer)};
        if (depth >= 0)
            found.depth = OGR_Fld_GetNameRef(OGR_FD_GetFieldDefn(OGR_L_GetLayerDefn(layer), depth));
        const auto total = static_cast<double>(OGR_L_GetFeatureCount(layer, FALSE)); // -1 for unknown
        double done = 0;
        OGR_L_ResetReading(layer);
        while (const std::unique_ptr<void, DestroyFeature> feature{OGR_L_GetNextFeature(layer)}) {
            show(total > 0 ? std::min(++done / total, 1.0) : 0);
            OGRGeometryH shape = OGR_F_GetGeometryRef(static_cast<OGRFeatureH>(feature.get()));
            if (!shape) continue;
            const bool isMany = wkbFlatten(OGR_G_GetGeometryType(shape)) == wkbMultiPoint;
            const int count = isMany ? OGR_G_GetGeometryCount(shape) : 1;
            for (int i = 0; i < count; ++i) {
                OGRGeometryH point = isMany ? OGR_G_GetGeometryRef(shape, i) : shape;
                if (wkbFlatten(OGR_G_GetGeometryType(point)) != wkbPoint) continue;
                auto* const handle = static_cast<OGRFeatureH>(feature.get());
                const bool hasDepth =
                    depth < 0 ? OGR_G_Is3D(point) != 0 : OGR_F_IsFieldSetAndNotNull(handle, depth) != 0;
                if (hasDepth)
                    take({{OGR_G_GetX(point, 0), OGR_G_GetY(point, 0)},
                          depth < 0 ? OGR_G_GetZ(point, 0) : OGR_F_GetFieldAsDouble(handle, depth)});
                else
                    ++found.withoutDepth;
            }
        }
        return found;
    }

    void Transform(const std::string& from, const std::string& to, std::vector<Sounding>& soundings,
                   const ShowShare& show) const override {
        OGRSpatialReference source, target;
        Open(from, source);
        Open(to, target);
        const std::unique_ptr<OGRCoordinateTransformation> transformation(
            OGRCreateCoordinateTransformation(&source, &target));
        if (!transformation) Fail("There is no way from '" + from + "' to '" + to + "'");
        constexpr std::size_t kBlock = 8192;
        std::vector<double> x(kBlock), y(kBlock);
        std::vector<int> isDone(kBlock);
        for (std::size_t begin = 0; begin < soundings.size(); begin += kBlock) {
            show(static_cast<double>(begin) / static_cast<double>(soundings.size()));
            const std::size_t count = std::min(kBlock, soundings.size() - begin);
            for (std::size_t i = 0; i < count; ++i) {
                x[i] = soundings[begin + i].place.X();
                y[i] = soundings[begin + i].place.Y();
            }
            transformation->Transform(static_cast<int>(count), x.data(), y.data(), nullptr, isDone.data());
            constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
            for (std::size_t i = 0; i < count; ++i)
                soundings[begin + i].place = isDone[i] && std::isfinite(x[i]) && std::isfinite(y[i])
                                                 ? WorldPoint(x[i], y[i])
                                                 : WorldPoint(kNone, kNone);
        }
    }

    std::vector<std::array<std::size_t, 3>>
    Triangulate(const std::vector<WorldPoint>& points) const override {
        if (!GDALHasTriangulation()) Fail("This GDAL was built without triangulation");
        std::vector<std::array<std::size_t, 3>> triangles;
        if (!SpanArea(points)) return triangles;
        std::vector<double> x, y;
        for (const WorldPoint& point : points) {
            x.push_back(point.X());
            y.push_back(point.Y());
        }
        const std::unique_ptr<GDALTriangulation, void (*)(GDALTriangulation*)> found(
            GDALTriangulationCreateDelaunay(static_cast<int>(points.size()), x.data(), y.data()),
            &GDALTriangulationFree);
        if (!found) return triangles;
        for (int i = 0; i < found->nFacets; ++i) {
            std::array<std::size_t, 3>& triangle = triangles.emplace_back();
            std::ranges::transform(found->pasFacets[i].anVertexIdx, triangle.begin(),
                                   [](int corner) { return static_cast<std::size_t>(corner); });
        }
        return triangles;
    }

    std::vector<ContourLine> Trace(const Grid& grid, const std::vector<double>& levels,
                                   const ShowShare& show) const override {
        std::vector<ContourLine> contours;
        ContourLayer(grid, levels, false, show).ForEach([&](OGRGeometryH shape, double level, double) {
            contours.push_back({level, PointsOf(shape)});
        });
        return contours;
    }

    std::vector<Area> AreasFrom(const Grid& grid, double level, const ShowShare& show) const override {
        std::vector<Area> areas;
        ContourLayer(grid, {level}, true, show).ForEach([&](OGRGeometryH shape, double low, double high) {
            if (low + high <= 2 * level) return;
            for (int i = 0; i < OGR_G_GetGeometryCount(shape); ++i) {
                OGRGeometryH polygon = OGR_G_GetGeometryRef(shape, i);
                Area& area = areas.emplace_back();
                for (int ring = 0; ring < OGR_G_GetGeometryCount(polygon); ++ring)
                    area.push_back(PointsOf(OGR_G_GetGeometryRef(polygon, ring)));
            }
        });
        return areas;
    }

    std::string Png(const Pixels& pixels) const override {
        const auto columns = static_cast<std::size_t>(pixels.columns);
        const std::string name =
            "MEM:::DATAPOINTER=" + std::to_string(reinterpret_cast<std::uintptr_t>(pixels.values.data())) +
            ",PIXELS=" + std::to_string(pixels.columns) + ",LINES=" + std::to_string(pixels.rows) +
            ",BANDS=4,DATATYPE=Byte,PIXELOFFSET=4,BANDOFFSET=1,LINEOFFSET=" + std::to_string(columns * 4);
        const Dataset source(GDALOpen(name.c_str(), GA_ReadOnly));
        if (!source) Fail("A picture cannot be held in memory");
        constexpr char kPath[] = "/vsimem/chartutil.png";
        const Dataset written(GDALCreateCopy(GDALGetDriverByName("PNG"), kPath, source.get(), FALSE, nullptr,
                                             nullptr, nullptr));
        if (!written) Fail("A picture cannot be made a PNG");
        GDALFlushCache(written.get());
        vsi_l_offset size = 0;
        GByte* const bytes = VSIGetMemFileBuffer(kPath, &size, FALSE);
        std::string png(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
        VSIUnlink(kPath);
        return png;
    }
};

} // namespace

extern "C" [[gnu::visibility("default")]] const GeometryModule* OpenGeometryModule();

const GeometryModule* OpenGeometryModule() {
    static const Gdal module;
    return &module;
}
