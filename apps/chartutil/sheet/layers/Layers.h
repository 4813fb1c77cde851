// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/sheet/layers/DrawnContours.h"
#include "apps/chartutil/sheet/layers/Texts.h"
#include "apps/chartutil/sheet/project/Project.h"
#include "apps/chartutil/sheet/scene/MapFrame.h"
#include "apps/chartutil/sheet/scene/Occupied.h"
#include "apps/chartutil/sheet/scene/Scene.h"

#include <functional>
#include <vector>

/// What all layers draw from.
struct Sheet {
    const Project& project;
    const MapFrame& frame;
    const Scene& scene;
};

/// Depth areas in the colours of the table, and nothing where no sounding is near.
void DrawAreas(const Sheet& sheet, Surface& surface);

/// The depths that there is room for, the shoalest first, each with its place taken. One is left out where it
/// would come nearer than the project's gap to a panel, the frame or a shoaler one that is shown, and where a
/// contour runs through it, unless it is the shoalest about: of all in its square of the map, with sides of
/// the project's shoal square times the text's size, and in the eight about that.
std::vector<PlacedText> PlaceSoundings(const Sheet& sheet, const DrawnContours& contours, Occupied& occupied);

/// Contours, broken where depths stand; returns their labels, for which they are broken as well. A label is
/// no further than the record's spacing from the next, as far as there are places for them: where the line is
/// straight and crosses no text and no other contour. None stands on its head. Where the record wants its top
/// towards lower or higher values, places where it is so while the label is upright go before others.
std::vector<PlacedText> DrawContours(const Sheet& sheet, const DrawnContours& contours, Occupied& occupied,
                                     Surface& surface);

/// The limit of what is known, broken where texts and panels are.
void DrawLimit(const Sheet& sheet, const Occupied& occupied, Surface& surface);

/// Meridians and parallels, broken where something is written.
void DrawGraticule(const Sheet& sheet, const Occupied& occupied, Surface& surface);

/// The grid of eastings and northings.
struct MapGrid {
    struct Cross {
        Surface::Point place;
        Occupied::Box arms;
    };

    std::vector<std::vector<Surface::Point>> lines; ///< and ticks
    std::vector<Cross> crosses;                     ///< where lines would meet
    std::vector<PlacedText> labels;
};

/// Where its lines, ticks, crosses and labels go. Ticks and labels take their places; lines may be broken,
/// and a cross is drawn only where nothing is written.
MapGrid PlaceGrid(const Sheet& sheet, Occupied& occupied);
void DrawGrid(const Sheet& sheet, const MapGrid& grid, const Occupied& occupied, Surface& surface);

/// The frame; where there is a graticule with ticks, bars and labels of longitudes and latitudes.
void DrawBorder(const Sheet& sheet, Surface& surface);

/// A panel with what stands in it.
struct PlacedPanel {
    const Panel* panel;
    Occupied::Box box;
    std::function<void(const Occupied::Box& box, Surface& surface)> draw; ///< what it has, without its ground
};

/// Title block, legend, scale bar and north arrow, as far as they are shown, each with its place taken. One
/// that is too small is made as large as it needs to be, about the point that it is justified by. What is
/// wrong with them is reported in their contexts.
std::vector<PlacedPanel> PlacePanels(const Sheet& sheet, Occupied& occupied);
void DrawPanels(const std::vector<PlacedPanel>& panels, Surface& surface);
