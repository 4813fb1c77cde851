// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Graticule.h"

#include "tests/support/Charts.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kMinute = 1.0 / 60;

// The longitude and latitude of a place on the paper.
WorldPoint DegreesAt(const Chart& chart, const MapFrame& frame, const Surface::Point& at) {
    std::vector<WorldPoint> points = {{frame.World().MinX() + (at.x - frame.Left()) * frame.UnitsPerMm(),
                                       frame.World().MaxY() - (at.y - frame.Top()) * frame.UnitsPerMm()}};
    chart.scene.system->ToGeographic(points);
    return points.front();
}

double FromMultiple(double degrees, double interval) { return std::fabs(std::remainder(degrees, interval)); }

// Maps in ordinary and in awkward places.
struct Place {
    const char* name;
    const char* system;
    double left, bottom, right, top;
    double interval; // degrees
};
const Place kPlaces[] = {
    {"a bay in UTM", "EPSG:26916", 463000, 3352000, 510000, 3386000, 5 * kMinute},
    {"a world map of Mercator", "EPSG:3857", -2e7, -1.5e7, 2e7, 1.5e7, 30},
    {"round the north pole", "EPSG:3413", -2e6, -2e6, 2e6, 2e6, 10},
    {"round the south pole", "EPSG:3031", -2e6, -2e6, 2e6, 2e6, 10},
    {"across the meridian of 180 degrees", "EPSG:3832", 2.9e6, -2e6, 4.2e6, -1e6, 2},
    {"degrees", "EPSG:4326", -88, 29, -86, 31, 0.5},
    {"degrees beyond 180", "EPSG:4326", 170, -20, 190, -10, 5},
};

} // namespace

TEST(Graticule, LinesRunWhereTheCoordinateSystemHasThem) {
    for (const Place& place : kPlaces) {
        SCOPED_TRACE(place.name);
        const Chart chart(place.system, place.left, place.bottom, place.right, place.top);
        const MapFrame frame = chart.Frame();
        const Graticule graticule(frame, *chart.scene.system);
        const double tolerance = place.interval * 1e-6;
        for (const bool isMeridian : {true, false}) {
            const auto lines =
                isMeridian ? graticule.Meridians(place.interval) : graticule.Parallels(place.interval);
            EXPECT_FALSE(lines.empty());
            for (const Graticule::Line& line : lines) {
                for (std::size_t i = 0; i < line.size(); ++i) {
                    ASSERT_GE(line[i].x, frame.Left() - 1e-6);
                    ASSERT_LE(line[i].x, frame.Right() + 1e-6);
                    ASSERT_GE(line[i].y, frame.Top() - 1e-6);
                    ASSERT_LE(line[i].y, frame.Bottom() + 1e-6);
                    if (i == 0 || i + 1 == line.size()) continue; // cut at the frame, between two places
                    ASSERT_LT(std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y), 40);
                    const WorldPoint degrees = DegreesAt(chart, frame, line[i]);
                    if (isMeridian && std::fabs(degrees.Y()) > 89.999) continue; // all meridians at once
                    ASSERT_LT(FromMultiple(isMeridian ? degrees.X() : degrees.Y(), place.interval),
                              tolerance);
                }
            }
        }
    }
}

TEST(Graticule, CrossesTheSidesWhereTheCoordinateSystemSaysSo) {
    for (const Place& place : kPlaces) {
        SCOPED_TRACE(place.name);
        const Chart chart(place.system, place.left, place.bottom, place.right, place.top);
        const MapFrame frame = chart.Frame();
        const Graticule graticule(frame, *chart.scene.system);
        for (const Graticule::Side side : Graticule::kSides) {
            double last = 0;
            for (const auto& [multiple, at] : graticule.Crossings(side, place.interval)) {
                EXPECT_GE(at, last - 1e-6);
                EXPECT_LE(at, graticule.Length(side) + 1e-6);
                last = at;
                const bool isAcross = Graticule::ReadsLongitudes(side);
                const Surface::Point point = {isAcross                  ? frame.Left() + at
                                              : side == Graticule::LEFT ? frame.Left()
                                                                        : frame.Right(),
                                              !isAcross                   ? frame.Bottom() - at
                                              : side == Graticule::BOTTOM ? frame.Bottom()
                                                                          : frame.Top()};
                const WorldPoint degrees = DegreesAt(chart, frame, point);
                // Within a thousandth of a millimetre.
                EXPECT_LT(std::fabs(std::remainder((isAcross ? degrees.X() : degrees.Y()) -
                                                       static_cast<double>(multiple) * place.interval,
                                                   360.0)),
                          graticule.DegreesPerMm(side) * 1e-3);
            }
        }
    }
}

// Computed by hand for the spherical Mercator projection: x = R λ, y = R ln tan(45° + φ/2), R = 6378137 m.
TEST(Graticule, HasKnownPlacesInMercator) {
    const double radius = 6378137;
    const double north = radius * std::log(std::tan(M_PI / 4 + 10 * M_PI / 360));
    Chart chart("EPSG:3857", 0, 0, radius * 20 * M_PI / 180, north * 2);
    const MapFrame frame = chart.Frame();
    const Graticule graticule(frame, *chart.scene.system);
    const double mm = 1 / frame.UnitsPerMm();
    const auto crossings = graticule.Crossings(Graticule::LEFT, 10);
    ASSERT_GE(crossings.size(), 2u);
    ASSERT_EQ(0, crossings[0].multiple); // the equator, and 10 degrees north
    EXPECT_NEAR(north * mm, crossings[1].place - crossings[0].place, 1e-3);
    const auto meridians = graticule.Crossings(Graticule::TOP, 10);
    ASSERT_GE(meridians.size(), 3u);
    EXPECT_NEAR(radius * 10 * M_PI / 180 * mm, meridians[1].place - meridians[0].place, 1e-3);
}

TEST(Graticule, ThePoleHasEachMeridianOnce) {
    const Chart chart("EPSG:3413", -2e6, -2e6, 2e6, 2e6);
    const MapFrame frame = chart.Frame();
    EXPECT_EQ(36u, Graticule(frame, *chart.scene.system).Meridians(10).size());
}

TEST(Graticule, HasNoLinesForIntervalsThatMakeNoSense) {
    const Chart chart("EPSG:26916", 463000, 3352000, 510000, 3386000);
    const MapFrame frame = chart.Frame();
    const Graticule graticule(frame, *chart.scene.system);
    for (const double interval : {0.0, -1.0, 1e-9, 1e-320, std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(graticule.Meridians(interval).empty()) << interval;
        EXPECT_TRUE(graticule.Parallels(interval).empty()) << interval;
        EXPECT_TRUE(graticule.Intersections(interval, interval).empty()) << interval;
        for (const Graticule::Side side : Graticule::kSides)
            EXPECT_TRUE(graticule.Crossings(side, interval).empty()) << interval;
    }
}

TEST(Graticule, HasNoLinesWhereThereAreNoLongitudesAndLatitudes) {
    const double far = std::numeric_limits<double>::max() / 1e10;
    for (const auto& [left, right] : {std::pair(1e30, 2e30), std::pair(-far, far)}) {
        const Chart chart("EPSG:26916", left, left, right, right);
        const MapFrame frame = chart.Frame();
        const Graticule graticule(frame, *chart.scene.system);
        for (const Graticule::Side side : Graticule::kSides) (void)graticule.Crossings(side, 1);
        EXPECT_LE(graticule.Meridians(1).size(), 5000u);
        EXPECT_LE(graticule.Parallels(1).size(), 5000u);
    }
}
