// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/GDIMapper.h"

#include "tests/support/Random.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

void PrintTo(const CPoint& point, std::ostream* out) { *out << '(' << point.x << ", " << point.y << ')'; }

namespace {

using Point = GTL::Point2D<double>;
using Box = GTL::Extents2D<double>;

Box BoxOf(double minX, double minY, double maxX, double maxY) {
    Box box;
    box.Update(minX, minY);
    box.Update(maxX, maxY);
    return box;
}

GDIMapper Mapper(const Box& world, const CRect& device) {
    GDIMapper mapper;
    mapper.Create(world, device);
    return mapper;
}

GDIMapper Example() { return Mapper(BoxOf(0, 0, 100, 50), {0, 0, 200, 200}); }

TEST(GDIMapper, FitsTheWiderSide) {
    const GDIMapper mapper = Example();
    EXPECT_EQ(mapper.GetScale(), 0.5); // 50 on 200 would fit at 0.25
    EXPECT_EQ(Mapper(BoxOf(0, 0, 50, 100), {0, 0, 200, 200}).GetScale(), 0.5);
    EXPECT_EQ(Mapper(BoxOf(0, 0, 100, 100), {0, 0, 200, 200}).GetScale(), 0.5);
    EXPECT_EQ(Mapper(BoxOf(-3, 7, 97, 8), {-10, -20, 40, 30}).GetScale(), 2.0);
}

TEST(GDIMapper, ShowsPointsOfTheWorld) {
    struct Row {
        Point point;
        CPoint pixel;
    };
    const GDIMapper mapper = Example();
    for (const Row& row : {
             Row{{50, 25}, {100, 100}},     // the centres
             Row{{0, 0}, {0, 150}},         // y is up in the world and down here
             Row{{100, 50}, {200, 50}},     // just outside of the rectangle, as its right side is
             Row{{0.49, 0.49}, {0, 150}},   // truncated: 50.98 from below
             Row{{-0.49, -0.49}, {0, 151}}, // -0.98 is 0 too, 49.02 is 49
             Row{{-0.5, -25.5}, {-1, 201}}, // -1 on both axes
             Row{{-1, -26}, {-2, 202}}, Row{{-0.9, -25.4}, {-1, 200}}, // -1.8 and -0.8
         })
        EXPECT_EQ(mapper << row.point, row.pixel) << row.point.X() << ' ' << row.point.Y();
}

TEST(GDIMapper, FindsTheMiddleOfAPixel) {
    struct Row {
        CPoint pixel;
        Point point;
    };
    const GDIMapper mapper = Example();
    for (const Row& row :
         {Row{{100, 100}, {50.25, 24.75}}, Row{{0, 0}, {0.25, 74.75}}, Row{{-1, 200}, {-0.25, -25.25}}}) {
        EXPECT_EQ((mapper << row.pixel).X(), row.point.X());
        EXPECT_EQ((mapper << row.pixel).Y(), row.point.Y());
    }
}

TEST(GDIMapper, FlipsAboutTheHeightAndNotAboutTheTop) {
    const GDIMapper mapper = Mapper(BoxOf(0, 0, 100, 100), {30, 1000, 130, 1100});
    EXPECT_EQ(mapper << Point(50, 50), (CPoint{80, 100 - 1050}));
    EXPECT_EQ(mapper << Point(0, 0), (CPoint{30, 100 - 1000}));
}

TEST(GDIMapper, PutsTheCentreWhereTheSumTruncates) {
    const auto centre = [](const CRect& device) {
        const GDIMapper mapper = Mapper(BoxOf(-1, -1, 1, 1), device);
        const CPoint shown = mapper << Point(0, 0);
        return CPoint{shown.x, device.bottom - device.top - shown.y};
    };
    EXPECT_EQ(centre({0, 0, 5, 7}), (CPoint{2, 3}));
    EXPECT_EQ(centre({-5, -7, 0, 0}), (CPoint{-2, -3}));
    EXPECT_EQ(centre({-4, -4, 3, 1}), (CPoint{0, -1}));
}

TEST(GDIMapper, ConvertsDistances) {
    const GDIMapper mapper = Example();
    struct Row {
        double distance;
        int pixels;
    };
    for (const Row& row :
         {Row{0.74, 1}, Row{-0.74, 0}, Row{0.0, 0}, Row{0.24, 0}, Row{0.25, 1}, Row{-0.75, -1}, Row{-1.0, -1},
          Row{50.0, 100}, Row{-50.0, -99}, // the half is added to these as well
          Row{1e9, 2000000000}, Row{1.1e9, INT_MIN}, Row{-1.1e9, INT_MIN}, Row{kNaN, INT_MIN},
          Row{kInfinity, INT_MIN}, Row{-kInfinity, INT_MIN}})
        EXPECT_EQ(mapper.PixelDist(row.distance), row.pixels) << row.distance;
    EXPECT_EQ(mapper.WorldDist(3), 1.5);
    EXPECT_EQ(mapper.WorldDist(-3), -1.5);
    EXPECT_EQ(mapper.WorldDist(0), 0.0);
    EXPECT_EQ(mapper.WorldDist(INT_MAX), 1073741823.5);
    EXPECT_EQ(mapper.WorldDist(INT_MIN), -1073741824.0);
}

TEST(GDIMapper, IsAllZeroAtFirst) {
    const GDIMapper mapper;
    EXPECT_EQ(mapper.GetScale(), 0.0);
    EXPECT_EQ(mapper.WorldDist(7), 0.0);
    const Point shown = mapper << CPoint{3, 4};
    EXPECT_EQ(shown.X(), 0.0);
    EXPECT_EQ(shown.Y(), 0.0);
    EXPECT_EQ(mapper.PixelDist(1.0), INT_MIN); // everything is infinitely far
    EXPECT_EQ(mapper.PixelDist(0.0), INT_MIN); // or nowhere
    // The height, 0, less the lowest number is that again.
    EXPECT_EQ(mapper << Point(1, 1), (CPoint{INT_MIN, INT_MIN}));
    EXPECT_EQ(mapper << Point(0, 0), (CPoint{INT_MIN, INT_MIN}));
}

TEST(GDIMapper, TakesTheScaleOfTheOtherSideWhereOneIsNothing) {
    EXPECT_EQ(Mapper(BoxOf(3, 4, 3, 24), {0, 0, 10, 10}).GetScale(), 2.0);
    EXPECT_EQ(Mapper(BoxOf(3, 4, 23, 4), {0, 0, 10, 10}).GetScale(), 2.0);
    EXPECT_EQ(Mapper(BoxOf(3, 4, 3, 4), {0, 0, 10, 10}).GetScale(), 0.0);
    EXPECT_EQ(Mapper(Box(), {0, 0, 10, 10}).GetScale(), 0.0);
}

TEST(GDIMapper, HasAScaleThatIsNoNumberInARectangleOfNothing) {
    EXPECT_EQ(Mapper(BoxOf(0, 0, 1, 1), {5, 5, 5, 15}).GetScale(), kInfinity);
    EXPECT_EQ(Mapper(BoxOf(0, 0, 1, 1), {5, 5, 15, 5}).GetScale(), kInfinity);
    EXPECT_TRUE(std::isnan(Mapper(BoxOf(0, 0, 0, 1), {5, 5, 5, 15}).GetScale())); // 0 / 0 is the width's
    EXPECT_EQ(Mapper(BoxOf(0, 0, 1, 0), {5, 5, 15, 5}).GetScale(), 0.1);          // here the height's
    EXPECT_TRUE(std::isnan(Mapper(Box(), {}).GetScale()));
    EXPECT_EQ(Mapper(BoxOf(0, 0, 1, 1), {5, 5, 5, 15}) << Point(3, 4),
              (CPoint{5, 0})); // all is at the centre
    EXPECT_EQ(Mapper(Box(), {}) << Point(3, 4), (CPoint{INT_MIN, INT_MIN}));
}

TEST(GDIMapper, HasANegativeScaleInARectangleThatIsTurnedOver) {
    const GDIMapper mapper = Mapper(BoxOf(0, 0, 10, 10), {10, 10, 0, 0});
    EXPECT_EQ(mapper.GetScale(), -1.0);
    EXPECT_EQ(mapper << Point(0, 0), (CPoint{10, -20}));
}

// Each sum and difference of device coordinates keeps its lowest 32 bits.
TEST(GDIMapper, WrapsAtTheLimitsOfDeviceCoordinates) {
    const Box world = BoxOf(0, 0, 8, 8);
    const GDIMapper whole = Mapper(world, {INT_MIN, INT_MIN, INT_MAX, INT_MAX});
    EXPECT_EQ(whole.GetScale(), -8.0); // a width of 2^32 - 1 is -1
    EXPECT_EQ(whole << Point(4, 4), (CPoint{0, -1}));

    const GDIMapper high = Mapper(world, {INT_MAX - 8, INT_MAX - 8, INT_MAX, INT_MAX});
    EXPECT_EQ(high.GetScale(), 1.0);
    EXPECT_EQ(high << Point(4, 4), (CPoint{-5, 13})); // the sum of both sides is -10
    EXPECT_EQ((high << CPoint{INT_MAX, INT_MIN}).X(), -2147483644.0 + 0.5 + 4);
    EXPECT_EQ((high << CPoint{INT_MIN, INT_MIN}).X(), -2147483643.0 + 0.5 + 4);
    EXPECT_EQ((high << CPoint{0, INT_MIN}).Y(), -2147483635.0 - 0.5 + 4);

    const GDIMapper low = Mapper(world, {INT_MIN, INT_MIN, INT_MIN + 8, INT_MIN + 8});
    EXPECT_EQ(low << Point(4, 4), (CPoint{4, 4}));
    EXPECT_EQ(low << Point(1e10, -1e10), (CPoint{INT_MIN, INT_MIN + 8}));
}

TEST(GDIMapper, TakesAwkwardNumbersWithoutHarm) {
    const std::vector<int> corners = {0, 1, -1, INT_MAX, INT_MIN, INT_MAX - 1, 1 << 30};
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto number = [&] { return random.OneOf(kAwkwardNumbers); };
        const auto corner = [&] { return random.OneOf(corners); };
        const GDIMapper mapper =
            Mapper(BoxOf(number(), number(), number(), number()), {corner(), corner(), corner(), corner()});
        const Point point(number(), number());
        const CPoint pixel = mapper << point;
        if (std::isnan(point.X())) {
            ASSERT_EQ(pixel.x, INT_MIN);
        }
        mapper << CPoint{corner(), corner()};
        if (std::isnan(mapper.GetScale())) {
            ASSERT_EQ(mapper.PixelDist(1.0), INT_MIN);
        }
        mapper.PixelDist(number());
        mapper.WorldDist(corner());
    }
}

// The plain model, with numbers that are wide enough for every input here.
struct PlainMapper {
    PlainMapper(const Box& world, const CRect& device)
        : height(std::int64_t{device.bottom} - device.top),
          scale(std::max<long double>((static_cast<long double>(world.MaxX()) - world.MinX()) /
                                          (std::int64_t{device.right} - device.left),
                                      (static_cast<long double>(world.MaxY()) - world.MinY()) / height)),
          worldX((static_cast<long double>(world.MinX()) + world.MaxX()) / 2),
          worldY((static_cast<long double>(world.MinY()) + world.MaxY()) / 2),
          deviceX((std::int64_t{device.left} + device.right) / 2),
          deviceY((std::int64_t{device.top} + device.bottom) / 2) {}

    long double U(const Point& p) const { return (p.X() - worldX) / scale + deviceX; }
    long double V(const Point& p) const { return (p.Y() - worldY) / scale + deviceY; }

    std::int64_t height;
    long double scale, worldX, worldY;
    std::int64_t deviceX, deviceY;
};

bool IsNearInteger(long double value) { return std::fabs(value - std::round(value)) < 1e-6L; }

struct RandomCase {
    Box world;
    CRect device;
};
RandomCase Any(Random& random) {
    const double size = std::pow(10.0, random.Real(-3, 7));
    const double x = random.Real(-1e6, 1e6);
    const double y = random.Real(-1e6, 1e6);
    const int left = random.Integer(-5000, 5000);
    const int top = random.Integer(-5000, 5000);
    return {BoxOf(x, y, x + size * random.Real(0.01, 1), y + size * random.Real(0.01, 1)),
            {left, top, left + random.Integer(1, 4000), top + random.Integer(1, 4000)}};
}

TEST(GDIMapper, AgreesWithThePlainModel) {
    Random random(2);
    int compared = 0;
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto [world, device] = Any(random);
        const GDIMapper mapper = Mapper(world, device);
        const PlainMapper plain(world, device);
        ASSERT_NEAR(mapper.GetScale(), static_cast<double>(plain.scale), 1e-6 * mapper.GetScale());
        const Point point(random.Real(world.MinX() - 5, world.MaxX() + 5),
                          random.Real(world.MinY() - 5, world.MaxY() + 5));
        const long double u = plain.U(point);
        const long double v = plain.V(point);
        // Next to a whole number the rounding of doubles decides.
        if (IsNearInteger(u) || IsNearInteger(v) || std::fabs(u) > 1e7L || std::fabs(v) > 1e7L) continue;
        ++compared;
        const CPoint pixel = mapper << point;
        ASSERT_EQ(pixel.x, static_cast<std::int64_t>(u));
        ASSERT_EQ(pixel.y, plain.height - static_cast<std::int64_t>(v));
    }
    EXPECT_GT(compared, kPropertyRuns / 2);
}

TEST(GDIMapper, FitsTheWholeBoxIntoTheRectangle) {
    Random random(3);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto [world, device] = Any(random);
        const GDIMapper mapper = Mapper(world, device);
        // Nothing sticks out by more than the halves that truncation takes off the centre, and rounding.
        ASSERT_LE(world.ExtentX() / mapper.GetScale(), device.Width() * (1 + 1e-12));
        ASSERT_LE(world.ExtentY() / mapper.GetScale(), device.Height() * (1 + 1e-12));
        for (const Point& corner : {world.MinPnt(), world.MaxPnt()}) {
            const CPoint pixel = mapper << corner;
            ASSERT_GE(pixel.x, device.left - 1);
            ASSERT_LE(pixel.x, device.right + 1);
            ASSERT_GE(device.Height() - pixel.y, device.top - 1);
            ASSERT_LE(device.Height() - pixel.y, device.bottom + 1);
        }
    }
}

// A row lies one above the row that shows its middle: that middle is where a line between two rows is.
TEST(GDIMapper, ShowsTheMiddleOfAPixelInTheRowBelow) {
    Random random(4);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const int exponent = random.Integer(-10, 10); // so that all numbers are exact
        const double scale = std::ldexp(1.0, exponent);
        const int size = 2 * random.Integer(1, 1000);
        const Point centre(random.Integer(-1000, 1000) * scale, random.Integer(-1000, 1000) * scale);
        const GDIMapper mapper = Mapper(BoxOf(centre.X() - size / 2 * scale, centre.Y() - size / 2 * scale,
                                              centre.X() + size / 2 * scale, centre.Y() + size / 2 * scale),
                                        {0, 0, size, size});
        ASSERT_EQ(mapper.GetScale(), scale);
        const CPoint pixel{random.Integer(0, size - 1), random.Integer(0, size - 1)};
        ASSERT_EQ(mapper << (mapper << pixel), (CPoint{pixel.x, pixel.y + 1}));
    }
}

TEST(GDIMapper, ComesBackToWithinAPixel) {
    Random random(5);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto [world, device] = Any(random);
        const GDIMapper mapper = Mapper(world, device);
        const Point point(random.Real(world.MinX(), world.MaxX()), random.Real(world.MinY(), world.MaxY()));
        const Point back = mapper << (mapper << point);
        // Half a pixel of the middle, and one that truncation toward zero and the row below make.
        ASSERT_NEAR(back.X(), point.X(), 1.5 * mapper.GetScale() * (1 + 1e-6));
        ASSERT_NEAR(back.Y(), point.Y(), 1.5 * mapper.GetScale() * (1 + 1e-6));
    }
}

TEST(GDIMapper, ComesBackFromPixelsAsADistance) {
    Random random(6);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto [world, device] = Any(random);
        const GDIMapper mapper = Mapper(world, device);
        const int pixels = random.Integer(0, 100000);
        ASSERT_EQ(mapper.PixelDist(mapper.WorldDist(pixels)), pixels);
        // The half is added to the negative ones too, so that they lose it.
        if (pixels > 0) {
            ASSERT_EQ(mapper.PixelDist(mapper.WorldDist(-pixels)), 1 - pixels);
        }
    }
}

TEST(GDIMapper, IsAValue) {
    const GDIMapper mapper = Example();
    GDIMapper copy;
    copy = mapper;
    EXPECT_EQ(copy.GetScale(), 0.5);
    EXPECT_EQ(copy << Point(0, 0), (CPoint{0, 150}));
    copy = *&copy;
    GDIMapper moved;
    moved = std::move(copy);
    EXPECT_EQ(moved << Point(50, 25), (CPoint{100, 100}));
    const GDIMapper constructed(moved);
    EXPECT_EQ(constructed << Point(0, 0), (CPoint{0, 150}));
}

TEST(GDIMapper, ForgetsTheFormerRectangle) {
    GDIMapper mapper = Mapper(BoxOf(7, 7, 9, 9), {3, 3, 999, 77});
    mapper.Create(BoxOf(0, 0, 100, 50), {0, 0, 200, 200});
    EXPECT_EQ(mapper << Point(0, 0), (CPoint{0, 150}));
    EXPECT_EQ(mapper.GetScale(), 0.5);
}

} // namespace
