// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/Sheet.h"

#include "tests/chartutil/gdal/SheetSamples.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace {

const UserText kFolder(PROJECT_DATA_FOLDER "/pensacola");

// The shapes of each layer.
std::map<std::string, std::vector<Surface::Shape>> LayersOf(const Surface& surface) {
    std::map<std::string, std::vector<Surface::Shape>> layers;
    std::string layer;
    for (const Surface::Shape& shape : surface.Shapes()) {
        if (const auto* const begun = std::get_if<Surface::Layer>(&shape))
            layer = begun->name;
        else
            layers[layer].push_back(shape);
    }
    return layers;
}

std::vector<Surface::Point> PointsOf(const Surface::Shape& shape) {
    std::vector<Surface::Point> points;
    if (const auto* const polygon = std::get_if<Surface::FilledPolygon>(&shape))
        for (const auto& ring : polygon->rings) points.insert(points.end(), ring.begin(), ring.end());
    if (const auto* const stroke = std::get_if<Surface::Stroke>(&shape)) points = stroke->points;
    if (const auto* const label = std::get_if<Surface::Label>(&shape)) {
        const double angle = label->rotation * M_PI / 180;
        points = {{label->x, label->y},
                  {label->x + label->width * std::cos(angle), label->y - label->width * std::sin(angle)}};
    }
    if (const auto* const box = std::get_if<Surface::FilledRectangle>(&shape))
        points = {{box->x, box->y}, {box->x + box->width, box->y + box->height}};
    return points;
}

} // namespace

TEST(SheetOfSample, NothingOfTheMapIsBeyondItsFrame) {
    const MapFrame frame(OpenProject(kFolder), {});
    const auto layers = LayersOf(DrawSheet(kFolder, SheetColors::TABLE));
    for (const char* const name :
         {"Depth areas", "Contours", "Contour labels", "Survey limit", "Soundings"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(layers.contains(name));
        for (const Surface::Shape& shape : layers.at(name))
            for (const Surface::Point& point : PointsOf(shape)) {
                ASSERT_GE(point.x, frame.Left() - 1e-6);
                ASSERT_LE(point.x, frame.Right() + 1e-6);
                ASSERT_GE(point.y, frame.Top() - 1e-6);
                ASSERT_LE(point.y, frame.Bottom() + 1e-6);
            }
    }
}

TEST(SheetOfSample, NoPanelHidesANumberOrAContour) {
    const auto layers = LayersOf(DrawSheet(kFolder, SheetColors::TABLE));
    int panels = 0;
    for (const Surface::Shape& panel : layers.at("Panels")) {
        const auto* const ground = std::get_if<Surface::FilledRectangle>(&panel);
        if (!ground || ground->fill != RGBColor(255, 255, 255) || ground->width < 30) continue;
        ++panels;
        for (const char* const name : {"Contours", "Contour labels", "Soundings"})
            for (const Surface::Shape& shape : layers.at(name))
                for (const Surface::Point& point : PointsOf(shape))
                    ASSERT_FALSE(point.x > ground->x && point.x < ground->x + ground->width &&
                                 point.y > ground->y && point.y < ground->y + ground->height)
                        << name << ' ' << point.x << ' ' << point.y;
    }
    EXPECT_EQ(4, panels); // title block, legend, scale bar and north arrow
}

TEST(SheetOfSample, DxfColorsAreThoseOfTheDxfTable) {
    Project project = OpenProject(kFolder);
    project.colors.MakeDXFTable();
    std::vector<unsigned long> wanted = {project.colors.DefaultColor()};
    for (int i = 0; i < project.colors.NumEntries(); ++i) wanted.push_back(project.colors.EntryColor(i));
    const auto areas = LayersOf(DrawSheet(kFolder, SheetColors::DXF)).at("Depth areas");
    const auto plain = LayersOf(DrawSheet(kFolder, SheetColors::TABLE)).at("Depth areas");
    const auto fillOf = [](const Surface::Shape& shape) {
        if (const auto* const polygon = std::get_if<Surface::FilledPolygon>(&shape))
            return static_cast<unsigned long>(polygon->fill);
        if (const auto* const box = std::get_if<Surface::FilledRectangle>(&shape))
            return static_cast<unsigned long>(box->fill);
        return 0xFFFFFFul;
    };
    bool isOther = false;
    ASSERT_EQ(plain.size(), areas.size());
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const unsigned long fill = fillOf(areas[i]);
        EXPECT_TRUE(fill == 0xFFFFFF || std::ranges::count(wanted, fill) > 0) << fill;
        isOther = isOther || fill != fillOf(plain[i]);
    }
    EXPECT_TRUE(isOther);
}

TEST(SheetOfSample, TwoDrawingsAreTheSame) {
    const auto points = [](const Surface& surface) {
        std::vector<std::pair<double, double>> all;
        for (const Surface::Shape& shape : surface.Shapes())
            for (const Surface::Point& point : PointsOf(shape)) all.emplace_back(point.x, point.y);
        return all;
    };
    EXPECT_EQ(points(DrawSheet(kFolder, SheetColors::TABLE)), points(DrawSheet(kFolder, SheetColors::TABLE)));
}
