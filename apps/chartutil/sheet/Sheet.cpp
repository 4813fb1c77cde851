// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/Sheet.h"

#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/sheet/layers/Layers.h"
#include "apps/chartutil/sheet/layers/Shading.h"
#include "apps/chartutil/sheet/layers/TitleText.h"
#include "apps/chartutil/sheet/project/Soundings.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

WorldBox BoxOf(const std::vector<Sounding>& soundings) {
    WorldBox box;
    for (const Sounding& sounding : soundings) box.Update(sounding.place);
    return box;
}

// A paper with room for a map.
void RequireRoom(const Project& project) {
    constexpr double kSmallest = 20;
    const double around = 2 * (project.margin + project.borderStyle.room);
    if (std::min(project.paperWidth, project.paperHeight) - around >= kSmallest) return;
    throw CommandError(ExitCode::CHECK_FAILED, project.lines.Place(L"Sheet", L"Margin") +
                                                   "the margin and the border take " + DecimalText(around) +
                                                   " mm of a paper of " + DecimalText(project.paperWidth) +
                                                   " x " + DecimalText(project.paperHeight) +
                                                   " mm, so there is no room for a map; take a larger paper");
}

// Tells of soundings beyond the map, and ends the command where all are.
void CheckFit(const Project& project, const MapFrame& frame, const WorldBox& data) {
    const GTL::CLS::CLASSIFICATION fit = frame.World().Classify(data);
    const bool isSeen = fit != GTL::CLS::OUTSIDE;
    const wchar_t* const key = project.hasCentre ? L"CentreX" : L"Scale";
    if (!isSeen)
        throw CommandError(ExitCode::CHECK_FAILED,
                           project.lines.Place(L"Sheet", key) + "no sounding is on the map; they are from " +
                               DecimalText(data.MinX(), 0) + ", " + DecimalText(data.MinY(), 0) + " to " +
                               DecimalText(data.MaxX(), 0) + ", " + DecimalText(data.MaxY(), 0));
    if (project.hasCentre || project.scale == 0) return; // as the user wanted it
    const double needed = std::max(data.ExtentX() / frame.Width(), data.ExtentY() / frame.Height()) * 1000;
    if (needed > frame.Scale() * (1 + 1e-9))
        ReportKey(project, L"Sheet", L"Scale",
                  "not all soundings are on the map; they are from 1 to " +
                      DecimalText(std::ceil(needed), 0) + " on, or with Scale = 0");
}

} // namespace

Surface DrawSheet(const UserText& folder, SheetColors colors) {
    Project project = OpenProject(folder);
    if (colors == SheetColors::DXF) project.colors.MakeDXFTable();
    RequireRoom(project);
    std::vector<Sounding> soundings = ReadSoundings(project);
    const WorldBox data = BoxOf(soundings);
    const MapFrame frame(project, data);
    CheckFit(project, frame, data);
    const Scene scene = MakeScene(project, frame, std::move(soundings));

    Surface surface(project.paperWidth, project.paperHeight);
    surface.SetDxf(project.dxf);
    const Sheet sheet{project, frame, scene};
    Occupied occupied;
    const std::vector<PlacedPanel> panels = PlacePanels(sheet, occupied);
    const MapGrid grid = PlaceGrid(sheet, occupied);
    surface.BeginLayer("Depth areas");
    DrawAreas(sheet, surface);
    surface.Picture(Shading(project, frame, scene));
    const DrawnContours contours(project.levels, frame, scene);
    const std::vector<PlacedText> depths = PlaceSoundings(sheet, contours, occupied);
    surface.BeginLayer("Contours");
    const std::vector<PlacedText> labels = DrawContours(sheet, contours, occupied, surface);
    surface.BeginLayer("Survey limit");
    DrawLimit(sheet, occupied, surface);
    surface.BeginLayer("Contour labels");
    for (const PlacedText& label : labels) label.Draw(surface);
    surface.BeginLayer("Graticule");
    DrawGraticule(sheet, occupied, surface);
    surface.BeginLayer("Map grid");
    DrawGrid(sheet, grid, occupied, surface);
    surface.BeginLayer("Soundings");
    for (const PlacedText& depth : depths) depth.Draw(surface);
    surface.BeginLayer("Panels");
    DrawPanels(panels, surface);
    surface.BeginLayer("Border");
    DrawBorder(sheet, surface);
    return surface;
}

void RequireOtherFile(const UserText& folder, const UserText& output) {
    std::error_code none;
    for (const UserText& file : FilesOf(folder))
        if (std::filesystem::equivalent(NativePath(file), NativePath(output), none))
            throw CommandError(ExitCode::WRONG_USE, output.Utf8() +
                                                        ": the chart is drawn from this file, which stays "
                                                        "as it is; name another one");
}

ProjectSummary CheckProject(const UserText& folder) {
    const Project project = OpenProject(folder);
    RequireRoom(project);
    ProjectSummary summary;
    summary.title = ToUtf8(project.title);
    summary.files = FilesOf(folder);
    Scene scene;
    scene.soundings = ReadSoundings(project);
    const WorldBox data = BoxOf(scene.soundings);
    const MapFrame frame(project, data);
    CheckFit(project, frame, data);
    summary.soundings = scene.soundings.size();
    const auto [shoalest, deepest] = std::ranges::minmax_element(scene.soundings, {}, &Sounding::depth);
    summary.shoalest = shoalest->depth;
    summary.deepest = deepest->depth;
    summary.west = data.MinX();
    summary.south = data.MinY();
    summary.east = data.MaxX();
    summary.north = data.MaxY();
    summary.systemDefinition = project.coordinateSystem;
    if (!project.coordinateSystem.empty()) {
        scene.system = LoadGeometryModule().OpenSystem(project.coordinateSystem);
        summary.systemName = scene.system->Name();
    }
    (void)TitleText(project, frame, scene);
    summary.paperWidth = project.paperWidth;
    summary.paperHeight = project.paperHeight;
    summary.scale = frame.Scale();
    for (int i = 0; i < project.levels.NumContours(); ++i) summary.levels.push_back(project.levels[i].level);
    for (int i = 0; i < project.colors.NumEntries(); ++i)
        summary.colors.push_back(project.colors.EntryValue(i));
    return summary;
}
