// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/Layers.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

namespace {

// Squares of the map in which a sounding has been, of those that come from shoal to deep.
class Seen {
public:
    Seen(const MapFrame& frame, double side)
        : m_left(frame.Left()), m_top(frame.Top()), m_side(std::max(side, 0.5)),
          m_columns(static_cast<std::size_t>(frame.Width() / m_side) + 3),
          m_isSeen(m_columns * (static_cast<std::size_t>(frame.Height() / m_side) + 3)) {}

    // Whether none has been in the place's square nor in those about it.
    bool IsShoalest(const Surface::Point& place) const {
        const std::size_t square = SquareOf(place);
        for (const std::size_t row : {square - m_columns, square, square + m_columns})
            if (m_isSeen[row - 1] || m_isSeen[row] || m_isSeen[row + 1]) return false;
        return true;
    }
    void Add(const Surface::Point& place) { m_isSeen[SquareOf(place)] = true; }

private:
    // There is a square more on each side.
    std::size_t SquareOf(const Surface::Point& place) const {
        return (static_cast<std::size_t>((place.y - m_top) / m_side) + 1) * m_columns +
               static_cast<std::size_t>((place.x - m_left) / m_side) + 1;
    }

    double m_left, m_top, m_side;
    std::size_t m_columns;
    std::vector<bool> m_isSeen;
};

} // namespace

std::vector<PlacedText> PlaceSoundings(const Sheet& sheet, const DrawnContours& contours,
                                       Occupied& occupied) {
    const Project& project = sheet.project;
    const MapFrame& frame = sheet.frame;
    const Scene& scene = sheet.scene;
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < scene.soundings.size(); ++i)
        if (frame.World().Classify(scene.soundings[i].place) == GTL::CLS::INSIDE) order.push_back(i);
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return scene.soundings[i].depth; });
    Seen seen(frame, project.shoalSquare * static_cast<double>(project.depthLabels.Size()));
    Occupied spaced = occupied; // with the gap round each depth
    std::vector<PlacedText> placed;
    PlacedText label; // of the depth before: many are equal, to the decimals that they were measured to
    double measured = std::numeric_limits<double>::quiet_NaN();
    const Progress progress("the depths", order.size());
    std::size_t done = 0;
    for (const std::size_t i : order) {
        progress.Show(++done);
        const Sounding& sounding = scene.soundings[i];
        const Surface::Point place = frame(sounding.place);
        const bool isShoalest = seen.IsShoalest(place);
        seen.Add(place);
        // A label covers its place: most soundings of a dense survey need not be measured to be left out.
        if (!spaced.IsFree({place.x, place.y, place.x, place.y})) continue;
        if (sounding.depth != measured) label = PlaceDepth(project.depthLabels, sounding.depth, place);
        measured = sounding.depth;
        label.place = place;
        if (label.parts.empty()) continue;
        const Occupied::Box box = label.Box(project.depthLabelGap / 2);
        if (!frame.IsWithin(box) || !spaced.IsFree(box)) continue;
        const Occupied::Box covered = label.Box(project.contourGap);
        if (!isShoalest && contours.Cross(covered)) continue;
        spaced.Take(box);
        occupied.Take(covered);
        placed.push_back(label);
    }
    return placed;
}
