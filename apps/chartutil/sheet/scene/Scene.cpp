// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Scene.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "apps/chartutil/sheet/geometry/Relief.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

// The module's faults as the program's, and its progress on the program's bar.
template <typename Compute> auto Do(const char* what, const Compute& compute) {
    constexpr int kSteps = 1000;
    const Progress progress(what, kSteps);
    try {
        return compute([&](double share) { progress.Show(static_cast<std::uint64_t>(share * kSteps)); });
    } catch (const CommandError&) {
        throw;
    } catch (const std::runtime_error& fault) {
        throw CommandError(ExitCode::CHECK_FAILED, fault.what());
    }
}

double Length(const std::vector<WorldPoint>& points) {
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].X() - points[i - 1].X(), points[i].Y() - points[i - 1].Y());
    return length;
}

// Each point becomes the mean of those about it, `window` to either side; ends stay.
void SmoothLine(std::vector<WorldPoint>& points, int window) {
    const auto count = static_cast<std::ptrdiff_t>(points.size());
    if (count < 3) return;
    const bool isClosed = points.front() == points.back();
    const std::vector<WorldPoint> before = points;
    const auto at = [&](std::ptrdiff_t i) {
        if (isClosed) i = ((i % (count - 1)) + count - 1) % (count - 1);
        return before[static_cast<std::size_t>(i)];
    };
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        // At the ends of an open line fewer, but as many to either side.
        const std::ptrdiff_t half = isClosed
                                        ? std::min<std::ptrdiff_t>(window, (count - 1) / 2)
                                        : std::min({static_cast<std::ptrdiff_t>(window), i, count - 1 - i});
        double x = 0, y = 0;
        for (std::ptrdiff_t j = i - half; j <= i + half; ++j) {
            x += at(j).X() - before.front().X();
            y += at(j).Y() - before.front().Y();
        }
        const double weight = static_cast<double>(2 * half + 1);
        points[static_cast<std::size_t>(i)] = {before.front().X() + x / weight,
                                               before.front().Y() + y / weight};
    }
}

// What the record of contours says of lines, for contours as for the outlines of areas, so that one lies on
// the other. Its numbers are unchecked: a window is meant to be 0 to 8.
class LineRules {
public:
    LineRules(const ContourInfo& info, const WorldBox& box)
        : m_window(std::clamp(info.GetSmoothingWindow(), 0, 8)),
          m_passes(std::clamp(info.GetSmoothingPasses(), 0, 20)), m_shortest(info.GetSuppressionLength()),
          m_box(box) {}

    bool IsSuppressed(const std::vector<WorldPoint>& points) const { return Length(points) < m_shortest; }

    void Smooth(std::vector<WorldPoint>& points) const {
        for (int pass = 0; pass < m_passes && m_window > 0; ++pass) SmoothLine(points, m_window);
    }

    // An outline goes along the edges of the map where its contour ends there: these parts stay.
    void SmoothOutline(std::vector<WorldPoint>& outline) const {
        const auto firstOnEdge =
            std::ranges::find_if(outline, [&](const WorldPoint& p) { return IsOnEdge(p); });
        if (firstOnEdge == outline.end()) return Smooth(outline);
        outline.pop_back();
        std::rotate(outline.begin(), firstOnEdge, outline.end());
        outline.push_back(outline.front());
        std::vector<WorldPoint> smooth, part;
        for (const WorldPoint& point : outline) {
            part.push_back(point);
            if (!IsOnEdge(point)) continue;
            Smooth(part);
            smooth.insert(smooth.end(), part.begin() + (smooth.empty() ? 0 : 1), part.end());
            part.assign(1, point);
        }
        outline = std::move(smooth);
    }

private:
    bool IsOnEdge(const WorldPoint& point) const {
        const double near = 1e-9 * std::max(m_box.ExtentX(), m_box.ExtentY());
        return std::min({point.X() - m_box.MinX(), m_box.MaxX() - point.X(), point.Y() - m_box.MinY(),
                         m_box.MaxY() - point.Y()}) <= near;
    }

    int m_window, m_passes;
    double m_shortest;
    WorldBox m_box;
};

// What of the line lies where soundings are near, up to the limit.
void AddKnown(const ContourLine& line, const Grid& coverage, std::vector<ContourLine>& lines) {
    ContourLine part{line.level, {}};
    const auto close = [&] {
        if (part.points.size() >= 2) lines.push_back(part);
        part.points.clear();
    };
    double before = 0;
    for (std::size_t i = 0; i < line.points.size(); ++i) {
        const WorldPoint& point = line.points[i];
        const double now = coverage.ValueAt(point);
        if (i > 0 && (before > 0) != (now > 0)) {
            const WorldPoint& last = line.points[i - 1];
            const double share = before / (before - now);
            part.points.emplace_back(last.X() + (point.X() - last.X()) * share,
                                     last.Y() + (point.Y() - last.Y()) * share);
        }
        if (now > 0)
            part.points.push_back(point);
        else
            close();
        before = now;
    }
    close();
}

// A closed line that is known in parts begins within one of them; the two ends of that are one line.
void JoinEnds(std::vector<ContourLine>& lines, std::size_t first) {
    if (lines.size() < first + 2) return;
    std::vector<WorldPoint>&head = lines[first].points, &tail = lines.back().points;
    if (!(head.front() == tail.back())) return;
    tail.insert(tail.end(), head.begin() + 1, head.end());
    head = std::move(tail);
    lines.pop_back();
}

std::vector<WorldPoint> Corners(const WorldBox& box) {
    return {{box.MinX(), box.MinY()},
            {box.MaxX(), box.MinY()},
            {box.MaxX(), box.MaxY()},
            {box.MinX(), box.MaxY()},
            {box.MinX(), box.MinY()}};
}

// In millimetres: the project's, or the finest with which the surface takes some 200 MB.
double CellSize(const Project& project, const MapFrame& frame) {
    constexpr double kMost = 5e6;
    const double finest = std::sqrt(frame.Width() * frame.Height() / kMost);
    if (project.cellSize >= finest) return project.cellSize;
    const double taken = std::ceil(finest * 100) / 100;
    ReportKey(project, L"Surface", L"CellSize",
              "on this paper that would be too many cells; " + DecimalText(taken) +
                  " is taken, the finest that it has room for");
    return taken;
}

// Of colours as of levels, within the depths that there are: many more than can be told apart. Each colour is
// traced by itself, so that time grows with them, and for levels memory.
constexpr std::size_t kMostTraced = 500;

void ReportTooMany(const Project& project, const wchar_t* section, const wchar_t* key, std::size_t count,
                   const char* what) {
    ReportKey(project, section, key,
              "of the " + std::to_string(count) + ' ' + what + " in these depths the shoalest " +
                  std::to_string(kMostTraced) + " are drawn; take fewer");
}

// The levels that there are contours of.
std::vector<double> TracedLevels(const Project& project, float least, float most) {
    std::vector<double> levels;
    if (!project.contours.GetEnableContouring()) return levels;
    for (int i = 0; i < project.levels.NumContours(); ++i) {
        const double level = project.levels[i].level;
        if (level >= static_cast<double>(least) && level <= static_cast<double>(most))
            levels.push_back(level);
    }
    if (levels.size() > kMostTraced) {
        ReportTooMany(project, L"Contours", L"Levels", levels.size(), "levels");
        levels.resize(kMostTraced);
    }
    return levels;
}

} // namespace

Scene MakeScene(const Project& project, const MapFrame& frame, std::vector<Sounding> soundings) {
    const GeometryModule& geometry = LoadGeometryModule();
    Scene scene;
    if (!project.coordinateSystem.empty())
        scene.system = Do("coordinates",
                          [&](const ShowShare&) { return geometry.OpenSystem(project.coordinateSystem); });
    const double cellSize = CellSize(project, frame);
    const auto cells = [&](double mm) { return std::max(2, static_cast<int>(std::ceil(mm / cellSize))); };
    const Grid shape{frame.World(), cells(frame.Width()), cells(frame.Height())};
    // More would not be seen, but take long: this is as fine as the cells of a sheet of A1, or twice as fine.
    constexpr std::size_t kMost = 200000;
    const std::vector<Sounding> thinned = ThinToShoalest(soundings, shape, kMost);
    scene.depths =
        Do("the surface", [&](const ShowShare&) { return SurfaceThrough(thinned, shape, geometry); });
    scene.soundings = std::move(soundings);
    if (scene.depths.values.empty()) {
        PlotErrorReporter::Get()[L"Soundings"].emplace_back(
            L"[Sheet] CentreX, CentreY: there are no soundings near the map; write a place among them, or "
            L"take both keys out");
        scene.depths = scene.coverage = Grid{shape.box, 1, 1, {0}};
        scene.areas.resize(static_cast<std::size_t>(project.colors.NumEntries()));
        scene.unknown = {{Corners(shape.box)}};
        return scene;
    }
    SmoothShoalBiased(scene.depths, project.smoothing / cellSize);
    scene.coverage = Coverage(thinned, shape, project.reach * frame.UnitsPerMm());
    const LineRules rules(project.contours, shape.box);
    const auto [least, most] = std::ranges::minmax_element(scene.depths.values);
    std::size_t traced = 0;
    for (int i = 0; i < project.colors.NumEntries(); ++i) {
        const double level = project.colors.EntryValue(i);
        std::vector<Area>& areas = scene.areas.emplace_back();
        if (level > static_cast<double>(*most)) continue;
        if (level <= static_cast<double>(*least)) {
            areas = {{Corners(shape.box)}};
            continue;
        }
        if (++traced > kMostTraced) continue;
        areas = Do("depth areas",
                   [&](const ShowShare& show) { return geometry.AreasFrom(scene.depths, level, show); });
        // A hollow goes with its contour; the tint of a shoal stays without it, since that is what ships
        // ground on.
        std::erase_if(areas,
                      [&](const Area& area) { return area.empty() || rules.IsSuppressed(area.front()); });
        for (Area& area : areas) {
            for (std::vector<WorldPoint>& outline : area) rules.SmoothOutline(outline);
        }
    }
    if (traced > kMostTraced) ReportTooMany(project, L"Surface", L"ColorTable", traced, "colours");
    scene.unknown = Do("depth areas", [&](const ShowShare& show) {
        Grid outside = scene.coverage;
        for (float& value : outside.values) value = -value;
        return geometry.AreasFrom(outside, 0, show);
    });
    for (ContourLine& line :
         Do("the limit", [&](const ShowShare& show) { return geometry.Trace(scene.coverage, {0}, show); }))
        scene.limit.push_back(std::move(line.points));
    const std::vector<double> levels = TracedLevels(project, *least, *most);
    if (!levels.empty()) {
        for (ContourLine& line : Do("contours", [&](const ShowShare& show) {
                 return geometry.Trace(scene.depths, levels, show);
             })) {
            if (rules.IsSuppressed(line.points)) continue;
            rules.Smooth(line.points);
            const bool isClosed = line.points.front() == line.points.back();
            const std::size_t first = scene.contours.size();
            AddKnown(line, scene.coverage, scene.contours);
            if (isClosed) JoinEnds(scene.contours, first);
        }
    }
    return scene;
}
