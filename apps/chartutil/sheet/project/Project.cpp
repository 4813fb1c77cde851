// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/Project.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/File.h"
#include "VelmBase/FileObject.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/LayoutFile.h"
#include "apps/chartutil/sheet/project/ProjectFile.h"
#include "apps/chartutil/sheet/project/ProjectKeys.h"
#include "apps/chartutil/terminal/Errors.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// A file that is named in the settings; empty without the key.
UserText ReadPath(ProjectFile& reader, const wchar_t* section, const wchar_t* key) {
    std::wstring name;
    reader.ReadText(section, key, name);
    return name.empty() ? UserText() : reader.PathOf(name);
}

void ReadPanel(ProjectFile& reader, const wchar_t* name, Panel& panel) {
    panel.isShown = reader.ReadRecord(name, panel.place);
    reader.ReadPrefixed(name, L"Text", panel.text);
    panel.heading = panel.text;
    reader.ReadPrefixed(name, L"Heading", panel.heading);
    panel.subheading = panel.text;
    reader.ReadPrefixed(name, L"Subheading", panel.subheading);
    reader.ReadNumber(name, L"Inset", panel.inset);
    reader.ReadLine(name, L"Frame", panel.frame);
    if (!panel.isShown) return;
    reader.RequireFace(name, L"Text.Font", panel.text);
    if (panel.heading.Font() != panel.text.Font()) reader.RequireFace(name, L"Heading.Font", panel.heading);
    if (panel.subheading.Font() != panel.text.Font())
        reader.RequireFace(name, L"Subheading.Font", panel.subheading);
    if (panel.place.width <= 0 || panel.place.height <= 0)
        reader.Report(name, L"", "the panel has no size; write its Width and Height in millimetres");
}

// "A1", "A3 landscape": the sides of a sheet of ISO 216.
void ReadPaper(ProjectFile& reader, Project& project) {
    std::wstring paper;
    reader.ReadText(L"Sheet", L"Paper", paper);
    const bool hasWidth = reader.ReadNumber(L"Sheet", L"PaperWidth", project.paperWidth);
    const bool hasHeight = reader.ReadNumber(L"Sheet", L"PaperHeight", project.paperHeight);
    if (paper.empty()) return;
    constexpr struct {
        const wchar_t* name;
        double shorter, longer;
    } kSizes[] = {{L"A0", 841, 1189}, {L"A1", 594, 841}, {L"A2", 420, 594},
                  {L"A3", 297, 420},  {L"A4", 210, 297}, {L"A5", 148, 210}};
    const std::size_t end = std::min(paper.find_first_of(L" ,\t"), paper.size());
    const std::wstring size = paper.substr(0, end), turn = trimW(paper.substr(end), L" ,\t");
    const auto* const found =
        std::ranges::find_if(kSizes, [&](const auto& known) { return icompareW(known.name, size); });
    const bool isLandscape = icompareW(turn, L"landscape");
    if (found == std::end(kSizes) || (!isLandscape && !turn.empty() && !icompareW(turn, L"portrait"))) {
        reader.Report(L"Sheet", L"Paper",
                      "'" + ToUtf8(paper.substr(0, 60)) +
                          "' is no paper; write A0 to A5, with landscape or portrait behind it");
        return;
    }
    if (hasWidth || hasHeight)
        reader.Report(L"Sheet", hasWidth ? L"PaperWidth" : L"PaperHeight",
                      "it does not count beside Paper; remove one of the two");
    project.paperWidth = isLandscape ? found->longer : found->shorter;
    project.paperHeight = isLandscape ? found->shorter : found->longer;
}

// What a reader found in a file that is named in the settings, with the lines of that file.
void ReportRemarks(const wchar_t* context, const UserText& path, const std::vector<std::wstring>& remarks) {
    const SettingsLines lines(path);
    for (const std::wstring& remark : remarks) {
        const std::uint32_t line = lines.LineOfNamedIn(remark);
        PlotErrorReporter::Get()[context].emplace_back(FromUtf8(
            path.Utf8() + ':' + (line > 0 ? std::to_string(line) + ':' : "") + ' ' + ToUtf8(remark)));
    }
}

// Whether the file is there to be read; tells where it is not.
bool IsReadable(const ProjectFile& reader, const wchar_t* section, const wchar_t* key, const UserText& path) {
    try {
        if (const std::error_code error = FILES::Reader(path.Wide()).Error()) ThrowNotReadable(path, error);
        return true;
    } catch (const CommandError& error) {
        reader.Report(section, key, error.what());
        return false;
    }
}

void ReadColors(ProjectFile& reader, DXFColorTable& colors) {
    const UserText path = ReadPath(reader, L"Surface", L"ColorTable");
    if (path.Empty() || !IsReadable(reader, L"Surface", L"ColorTable", path)) return;
    FileObject file;
    std::uint32_t line = 0;
    std::vector<std::wstring> remarks;
    if (!file.Open(path.Wide(), 0, line))
        remarks.push_back(L"a section has no name; write one between \"[\" and \"]\"");
    else
        (void)colors.FileOpen(file, &remarks);
    ReportRemarks(L"Surface", path, remarks);
    if (colors.NumEntries() == 0)
        reader.Report(L"Surface", L"ColorTable", path.Utf8() + " has no colours, so depths have none");
}

void ReadLevels(ProjectFile& reader, ContourDefinitionList& levels) {
    const UserText path = ReadPath(reader, L"Contours", L"Levels");
    if (path.Empty() || !IsReadable(reader, L"Contours", L"Levels", path)) return;
    std::vector<std::wstring> remarks;
    const bool isLoaded = levels.Load(path.Wide().c_str(), &remarks);
    ReportRemarks(L"Contours", path, remarks);
    if (!isLoaded)
        reader.Report(L"Contours", L"Levels",
                      path.Utf8() + " has no contours, so there are none; 'chartutil contours' makes them");
    ContourDefinitionList usable;
    for (int i = 0; i < levels.NumContours(); ++i)
        if (std::isfinite(levels[i].level)) (void)usable.Add(levels[i]); // ascending, and each once
    levels = usable;
}

// Each counts with the other one.
void ReadCentre(ProjectFile& reader, Project& project) {
    double x = std::numeric_limits<double>::quiet_NaN(), y = x;
    const bool hasX = reader.ReadNumber(L"Sheet", L"CentreX", x);
    const bool hasY = reader.ReadNumber(L"Sheet", L"CentreY", y);
    if (hasX != hasY)
        reader.Report(L"Sheet", hasX ? L"CentreX" : L"CentreY",
                      "it counts only with the other one of CentreX and CentreY; write both");
    project.hasCentre = hasX && hasY;
    if (!project.hasCentre) return;
    project.centreX = x;
    project.centreY = y;
}

} // namespace

Project OpenProject(const UserText& folder) {
    ProjectFile reader(folder);
    Project project = ReadProject(reader);
    project.folder = folder;
    return project;
}

Project ReadProject(ProjectFile& reader) {
    Project project;
    project.lines = reader.Lines();
    reader.ReadText(L"Sheet", L"Title", project.title);

    project.soundings = ReadPath(reader, L"Soundings", L"File");
    reader.ReadText(L"Soundings", L"Layer", project.layer);
    reader.ReadText(L"Soundings", L"X", project.xColumn);
    reader.ReadText(L"Soundings", L"Y", project.yColumn);
    reader.ReadText(L"Soundings", L"Depth", project.depthColumn);
    project.isDepthNegative = reader.ReadName(L"Soundings", L"Positive", 0) == 1;
    project.unit = static_cast<UnitType::U_TYPE>(reader.ReadName(L"Soundings", L"Unit", UnitType::M));
    reader.ReadText(L"Soundings", L"CoordinateSystem", project.coordinateSystem);
    reader.ReadText(L"Soundings", L"FileCoordinateSystem", project.fileSystem);
    reader.ReadNumber(L"Soundings", L"Gap", project.depthLabelGap);
    reader.ReadNumber(L"Soundings", L"ContourGap", project.contourGap);
    reader.ReadNumber(L"Soundings", L"ShoalSquare", project.shoalSquare);
    reader.ReadLine(L"Soundings", L"Label", project.depthLabels);
    reader.RequireFace(L"Soundings", L"Label", project.depthLabels);

    ReadPaper(reader, project);
    reader.ReadNumber(L"Sheet", L"Margin", project.margin);
    if (reader.ReadNumber(L"Sheet", L"Scale", project.scale) && project.scale > 0 && project.scale < 1) {
        reader.Report(L"Sheet", L"Scale",
                      "no chart is larger than nature; write 1 or more, or 0 for what fits");
        project.scale = 0;
    }
    ReadCentre(reader, project);
    reader.ReadRecord(L"Paper Grid", project.paperGrid);

    reader.ReadNumber(L"Surface", L"CellSize", project.cellSize);
    reader.ReadNumber(L"Surface", L"Reach", project.reach);
    reader.ReadNumber(L"Surface", L"Smoothing", project.smoothing);
    ReadColors(reader, project.colors);
    reader.ReadRecord(L"Sun Illumination", project.sun);
    reader.ReadNumber(L"Sun Illumination", L"Exaggeration", project.exaggeration);

    project.limit.SetEnable(reader.ReadRecord(L"Survey Limit", project.limit) && project.limit.Enable());

    reader.ReadRecord(L"Contours", project.contours);
    reader.Expect(L"Contours", L"LabelSpacing"); // as older files have it
    ReadLevels(reader, project.levels);
    if (reader.ReadRecord(L"Contour Labels", project.contourLabels))
        reader.RequireFace(L"Contour Labels", L"Font", project.contourLabels);
    reader.ReadNumber(L"Contour Labels", L"LabelGap", project.contourLabelGap);

    reader.ReadRecord(L"Border", project.border);
    BorderStyle& border = project.borderStyle;
    reader.ReadNumber(L"Border", L"Room", border.room);
    reader.ReadNumber(L"Border", L"TickWidth", border.tickWidth);
    reader.ReadNumber(L"Border", L"BarWidth", border.barWidth);
    reader.ReadNumber(L"Border", L"OuterLineGap", border.outerLineGap);
    reader.ReadNumber(L"Border", L"OuterLineWidth", border.outerLineWidth);
    reader.ReadNumber(L"Border", L"LabelGap", border.labelGap);
    reader.ReadNumber(L"Border", L"TickSpacing", border.tickSpacing);
    reader.ReadNumber(L"Border", L"BarLength", border.barLength);
    reader.ReadNumber(L"Border", L"LabelSpacing", border.labelSpacing);
    project.hasGrid = reader.ReadRecord(L"Map Grid", project.grid);
    reader.ReadRecord(L"Map Grid Line", project.gridLine);
    if (reader.ReadRecord(L"Map Grid Labels", project.gridText))
        reader.RequireFace(L"Map Grid Labels", L"Font", project.gridText);
    project.hasGraticule = reader.ReadRecord(L"Graticule", project.graticule);
    reader.ReadRecord(L"Graticule Line", project.graticuleLine);
    reader.ReadNumber(L"Map Grid", L"LabelGap", project.gridLabelGap);
    reader.ReadNumber(L"Graticule", L"MarkSize", project.graticuleMark);
    reader.ReadRecord(L"DXF", project.dxf);
    if (reader.ReadRecord(L"Graticule Labels", project.graticuleText))
        reader.RequireFace(L"Graticule Labels", L"Font", project.graticuleText);
    project.degreeText = project.graticuleText;
    reader.ReadPrefixed(L"Graticule Labels", L"Degrees", project.degreeText);
    if (project.degreeText.Font() != project.graticuleText.Font())
        reader.RequireFace(L"Graticule Labels", L"Degrees.Font", project.degreeText);

    ReadPanel(reader, L"Title Block", project.titleBlock);
    ReadPanel(reader, L"Legend", project.legend);
    ReadPanel(reader, L"Scale Bar", project.scaleBar);
    ReadPanel(reader, L"North Arrow", project.northArrow);
    const UserText layout = ReadPath(reader, L"Title Block", L"Layout");
    project.titleFile = layout.Utf8();
    if (!layout.Empty() && IsReadable(reader, L"Title Block", L"Layout", layout)) try {
            project.titleText = ReadLayout(layout, false).text;
        } catch (const CommandError& error) {
            reader.Report(L"Title Block", L"Layout", error.what());
        }
    (void)project.keywords.Read(reader.ReadTexts(L"Keywords"));
    reader.ReportUnknown();
    return project;
}

std::vector<UserText> FilesOf(const UserText& folder) {
    ProjectFile reader(folder);
    std::vector<UserText> files = {reader.Path()};
    for (const ProjectSection& section : ProjectSections())
        for (const auto& [key, row] : KeysOf(section.name))
            if (row->kind == ProjectKey::Kind::PATH)
                if (const UserText path = ReadPath(reader, section.name, key.c_str()); !path.Empty())
                    files.push_back(path);
    return files;
}

void ReportKey(const Project& project, const wchar_t* section, const wchar_t* key, const std::string& what) {
    PlotErrorReporter::Get()[section].emplace_back(FromUtf8(project.lines.Place(section, key) + what));
}
