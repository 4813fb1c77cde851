// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/layers/Layers.h"

#include <functional>

/// What stands in a panel: the room that it needs, in millimetres, and how it is drawn into a box with at
/// least that room. Lengths that no record has follow from the sizes of the panel's texts.
struct PanelContent {
    double width = 0;
    double height = 0;
    std::function<void(const Occupied::Box& box, Surface& surface)> draw = {};
};

/// The filled layout, centred: its first line as the heading, what follows before the first empty line as
/// subheadings, and the rest as text, wrapped to `width`.
PanelContent TitleBlock(const Sheet& sheet, double width);

/// The colours and contours that occur on the map, and how depths are written; in two columns where it is
/// higher than `height`.
PanelContent Legend(const Sheet& sheet, double height);

/// The scale as a number and as bars of nautical miles and metres, as long as `width` allows. Nothing where
/// the map's unit is no length.
PanelContent ScaleBar(const Sheet& sheet, double width);

/// An arrow to true north at `place` of the map's world, with the direction of grid north where it differs;
/// to grid north alone where nobody knows better.
PanelContent NorthArrow(const Sheet& sheet, const WorldPoint& place, double width);

/// How many degrees clockwise true north lies from the map's upward direction, at a place of the world. NaN
/// where the coordinate system has no longitudes and latitudes there.
double TrueNorth(const CoordinateSystem& system, const WorldPoint& place, double unitsPerMm);

/// The largest of 1, 2 and 5 times a power of ten that is not above `length`.
double RoundLength(double length);

/// A text whose upper side is centred at (x, y), or begins there, wrapped to `width`.
PlacedText PlaceCentred(const TextInfo& style, const std::wstring& text, double width, double x, double y);
PlacedText PlaceLeft(const TextInfo& style, const std::wstring& text, double width, double x, double y);

/// How high and wide it is; 0 where it could not be measured.
double HeightOf(const PlacedText& text);
double WidthOf(const PlacedText& text);
