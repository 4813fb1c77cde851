// SPDX-License-Identifier: MIT
// Bounding boxes, transformations and rectangles of planar and spatial points beside Eigen, glm and
// Boost.Geometry: over 10 million points, which stream from memory, and over 16,000, which stay in the cache.

#include "UtilityDLL/GTL/Extents2D.h"
#include "UtilityDLL/GTL/Extents3D.h"
#include "UtilityDLL/GTL/Rectangle.h"
#include "UtilityDLL/GTL/Transformation2D.h"
#include "tests/support/Random.h"

#include <Eigen/Geometry>
#include <benchmark/benchmark.h>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/strategies/transform/matrix_transformers.hpp>
#include <glm/glm.hpp>

#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

namespace bg = boost::geometry;
using BoostPoint2 = bg::model::d2::point_xy<double>;
using BoostPoint3 = bg::model::point<double, 3, bg::cs::cartesian>;
using OurPoint2 = GTL::Point2D<double>;
using OurPoint3 = GTL::Point3D<double>;
using OurTransformation = GTL::Transformation2D<OurPoint2>;

constexpr int kMany = 10000000;
constexpr int kCached = 16000;
constexpr double kDegrees = 30, kMoveX = 100, kMoveY = -50;

// The same soundings for everyone: metres around a bay.
template <typename Make> auto Points(int count, Make make) {
    Random random(42);
    std::vector<decltype(make(0.0, 0.0, 0.0))> points;
    points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double x = random.Real(480000, 520000), y = random.Real(3360000, 3390000);
        points.push_back(make(x, y, random.Real(-2, 40)));
    }
    return points;
}

// `grow` extends a box by all the points.
template <typename Make, typename Box, typename Grow>
void Bound(benchmark::State& state, int count, Make make, Box empty, Grow grow) {
    const auto points = Points(count, make);
    for (auto _ : state) {
        Box box = empty;
        grow(box, points);
        const Box result = box; // so that the box itself can be held in registers
        benchmark::DoNotOptimize(result);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

// The same point by point, with `extend` for each.
template <typename Make, typename Box, typename Extend>
void BoundEach(benchmark::State& state, int count, Make make, Box empty, Extend extend) {
    Bound(state, count, make, empty, [&](Box& box, const auto& points) {
        for (const auto& point : points) extend(box, point);
    });
}

template <typename Make, typename Apply>
void Transform(benchmark::State& state, int count, Make make, Apply apply) {
    auto points = Points(count, make);
    for (auto _ : state) {
        apply(points);
        benchmark::DoNotOptimize(points.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * count);
}

const auto kOur2 = [](double x, double y, double) { return OurPoint2(x, y); };
const auto kOur3 = [](double x, double y, double z) { return OurPoint3(x, y, z); };
const auto kEigen2 = [](double x, double y, double) { return Eigen::Vector2d(x, y); };
const auto kEigen3 = [](double x, double y, double z) { return Eigen::Vector3d(x, y, z); };
const auto kEigen4 = [](double x, double y, double z) { return Eigen::Vector4d(x, y, z, 0); };
const auto kGlm2 = [](double x, double y, double) { return glm::dvec2(x, y); };
const auto kGlm3 = [](double x, double y, double) { return glm::dvec3(x, y, 1); };
const auto kBoost2 = [](double x, double y, double) { return BoostPoint2(x, y); };
const auto kBoost3 = [](double x, double y, double z) { return BoostPoint3(x, y, z); };

void Bound2DOurs(benchmark::State& state, int count) {
    Bound(state, count, kOur2, GTL::Extents2D<double>(),
          [](auto& box, const auto& points) { box.Update(points); });
}
void Bound2DEachOurs(benchmark::State& state, int count) {
    BoundEach(state, count, kOur2, GTL::Extents2D<double>(),
              [](auto& box, const OurPoint2& p) { box.Update(p); });
}
void Bound2DEigen(benchmark::State& state, int count) {
    BoundEach(state, count, kEigen2, Eigen::AlignedBox2d(), [](auto& box, const auto& p) { box.extend(p); });
}
void Bound2DBoost(benchmark::State& state, int count) {
    using Box = bg::model::box<BoostPoint2>;
    BoundEach(state, count, kBoost2, bg::make_inverse<Box>(),
              [](Box& box, const auto& p) { bg::expand(box, p); });
}
void Bound3DOurs(benchmark::State& state, int count) {
    Bound(state, count, kOur3, GTL::Extents3D<double>(),
          [](auto& box, const auto& points) { box.Update(points); });
}
void Bound3DEachOurs(benchmark::State& state, int count) {
    BoundEach(state, count, kOur3, GTL::Extents3D<double>(),
              [](auto& box, const OurPoint3& p) { box.Update(p); });
}
void Bound3DEigen(benchmark::State& state, int count) {
    BoundEach(state, count, kEigen3, Eigen::AlignedBox3d(), [](auto& box, const auto& p) { box.extend(p); });
}
// Points with an attribute, as ours: the same bytes from memory.
void Bound3DEigenWithAttribute(benchmark::State& state, int count) {
    BoundEach(state, count, kEigen4, Eigen::AlignedBox3d(),
              [](auto& box, const auto& p) { box.extend(p.template head<3>()); });
}
void Bound3DBoost(benchmark::State& state, int count) {
    using Box = bg::model::box<BoostPoint3>;
    BoundEach(state, count, kBoost3, bg::make_inverse<Box>(),
              [](Box& box, const auto& p) { bg::expand(box, p); });
}

std::unique_ptr<GTL::Transformation<OurPoint2>> OurRotation() {
    auto transformation = std::make_unique<OurTransformation>();
    transformation->Rotate(kDegrees, {500000, 3375000});
    transformation->Translate(kMoveX, kMoveY);
    return transformation;
}

// The same matrix for the peers; glm's is told column by column.
double Element(int row, int column) {
    static const auto ours = OurRotation();
    return static_cast<const OurTransformation&>(*ours).M(row, column);
}
glm::dmat3 GlmMatrix() {
    glm::dmat3 matrix;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) matrix[column][row] = Element(row + 1, column + 1);
    }
    return matrix;
}

void TransformEachOurs(benchmark::State& state, int count) {
    const auto transformation = OurRotation();
    Transform(state, count, kOur2, [&](auto& points) {
        for (OurPoint2& point : points) point.Transform(*transformation);
    });
}
void TransformAllOurs(benchmark::State& state, int count) {
    const auto transformation = OurRotation();
    Transform(state, count, kOur2, [&](auto& points) { transformation->ApplyAll(points); });
}

// Planar points, as ours: each is made homogeneous for the product.
void TransformGlmPlanar(benchmark::State& state, int count) {
    const glm::dmat3 matrix = GlmMatrix();
    Transform(state, count, kGlm2, [&](auto& points) {
        for (glm::dvec2& point : points) point = glm::dvec2(matrix * glm::dvec3(point, 1.0));
    });
}

// Points kept homogeneous: the bare product.
void TransformGlm(benchmark::State& state, int count) {
    const glm::dmat3 matrix = GlmMatrix();
    Transform(state, count, kGlm3, [&](auto& points) {
        for (glm::dvec3& point : points) point = matrix * point;
    });
}
void TransformEigen(benchmark::State& state, int count) {
    Eigen::Affine2d matrix;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            matrix.matrix()(row, column) = Element(row + 1, column + 1);
    }
    Transform(state, count, kEigen2, [&](auto& points) {
        for (Eigen::Vector2d& point : points) point = matrix * point;
    });
}
void TransformBoost(benchmark::State& state, int count) {
    const bg::strategy::transform::matrix_transformer<double, 2, 2> matrix(
        Element(1, 1), Element(1, 2), Element(1, 3), Element(2, 1), Element(2, 2), Element(2, 3), 0, 0, 1);
    Transform(state, count, kBoost2, [&](auto& points) {
        for (BoostPoint2& point : points) {
            BoostPoint2 moved;
            bg::transform(point, moved, matrix);
            point = moved;
        }
    });
}

// Which of the soundings lie within a turned rectangle; the peer tests the polygon of its corners.
GTL::Rectangle<OurPoint2> TurnedRectangle() { return {{490000, 3375000}, 20000, 10000, kDegrees}; }

void ClassifyOurs(benchmark::State& state, int count) {
    const auto rectangle = TurnedRectangle();
    const auto points = Points(count, kOur2);
    for (auto _ : state) {
        int inside = 0;
        for (const OurPoint2& point : points) inside += rectangle.Classify(point) == GTL::CLS::INSIDE;
        benchmark::DoNotOptimize(inside);
    }
    state.SetItemsProcessed(state.iterations() * count);
}
void ClassifyBoost(benchmark::State& state, int count) {
    bg::model::ring<BoostPoint2> ring;
    for (const int corner : {0, 3, 2, 1, 0}) {
        const auto rectangle = TurnedRectangle();
        ring.emplace_back(rectangle.Corner(corner).X(), rectangle.Corner(corner).Y());
    }
    const auto points = Points(count, kBoost2);
    for (auto _ : state) {
        int inside = 0;
        for (const BoostPoint2& point : points) inside += bg::covered_by(point, ring);
        benchmark::DoNotOptimize(inside);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void Register(const std::string& task, const char* who, void (*function)(benchmark::State&, int)) {
    for (const auto& [size, count] : {std::pair("16k", kCached), std::pair("10M", kMany)}) {
        const std::string name = task + ' ' + size + '/' + who;
        benchmark::RegisterBenchmark(name.c_str(), function, count)->Unit(benchmark::kMicrosecond);
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const char* const each : {"", "OneByOne"}) {
        const bool isSpan = *each == '\0';
        const std::string plane = std::string("Bound2D") + each;
        Register(plane, "ours", isSpan ? Bound2DOurs : Bound2DEachOurs);
        Register(plane, "eigen", Bound2DEigen);
        Register(plane, "boost", Bound2DBoost);
        const std::string space = std::string("Bound3D") + each;
        Register(space, "ours", isSpan ? Bound3DOurs : Bound3DEachOurs);
        Register(space, "eigen", Bound3DEigen);
        Register(space, "eigen_with_attribute", Bound3DEigenWithAttribute);
        Register(space, "boost", Bound3DBoost);
    }
    for (const char* const task : {"TransformOneByOne", "TransformSpan"}) {
        const bool isSpan = std::string_view(task) == "TransformSpan";
        Register(task, "ours", isSpan ? TransformAllOurs : TransformEachOurs);
        Register(task, "glm_planar", TransformGlmPlanar);
        Register(task, "glm", TransformGlm);
        Register(task, "eigen", TransformEigen);
        Register(task, "boost", TransformBoost);
    }
    Register("ClassifyTurnedRectangle", "ours", ClassifyOurs);
    Register("ClassifyTurnedRectangle", "boost", ClassifyBoost);
    return true;
}();

} // namespace
