// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/layers/Layers.h"

#include <cmath>
#include <functional>
#include <random>
#include <variant>
#include <vector>

// Projects that are made in memory, and what is drawn of them.

/// Paper with a map of 200 by 150 mm at 1:1000, so that a unit of the world is a millimetre; its lower left
/// corner is at 0, 0. Depths are 2 mm high with lowered decimals, and there is no panel.
inline Project PlainProject() {
    Project project;
    project.margin = 1;
    const double border = MapFrame(project, {}).Left();
    project.paperWidth = 200 + 2 * border;
    project.paperHeight = 150 + 2 * border;
    project.scale = 1000;
    project.hasCentre = true;
    project.centreX = 100;
    project.centreY = 75;
    project.reach = 10;
    project.depthLabels.FromString(L"Liberation Sans,2,0,8,250,0,0,0,0,0,1,2,1,1,0,1,0");
    project.contourLabels.SetFont(L"Liberation Sans");
    project.contourLabels.SetSize(2);
    return project;
}

/// Adds contours as they come, continuous lines of a fifth of a millimetre.
inline void AddLevels(Project& project, const std::vector<double>& levels, bool annotate = false) {
    for (const double level : levels) {
        ContourDefinitionList::ContourDefInfo info;
        info.level = level;
        info.lineWidth = 0.2F;
        info.annotate = annotate;
        project.levels.Add(info);
    }
}

/// Soundings of a surface at places by chance, all over the map and beyond.
inline std::vector<Sounding> Survey(int count, const std::function<double(double x, double y)>& depth,
                                    unsigned seed = 1) {
    std::mt19937 random(seed);
    const auto share = [&] { return static_cast<double>(random()) / 4294967296.0; };
    std::vector<Sounding> soundings;
    for (int i = 0; i < count; ++i) {
        const double x = share() * 220 - 10, y = share() * 170 - 10;
        soundings.push_back({{x, y}, depth(x, y)});
    }
    return soundings;
}

/// Hills and hollows.
inline double Waves(double x, double y) { return 10 + 6 * std::sin(x / 17) * std::cos(y / 23); }

/// All that a map is drawn from.
struct Chart {
    Chart(Project drawn, std::vector<Sounding> soundings)
        : project(std::move(drawn)), frame(project, {}),
          scene(MakeScene(project, frame, std::move(soundings))),
          contours(project.levels, frame, scene), sheet{project, frame, scene} {}

    Project project;
    MapFrame frame;
    Scene scene;
    DrawnContours contours;
    Sheet sheet;
};

template <typename Shape> std::vector<Shape> ShapesOf(const Surface& surface) {
    std::vector<Shape> shapes;
    for (const Surface::Shape& shape : surface.Shapes())
        if (const auto* const found = std::get_if<Shape>(&shape)) shapes.push_back(*found);
    return shapes;
}

inline bool Overlap(const Occupied::Box& a, const Occupied::Box& b) {
    return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}
