// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/UnitType.h"
#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/keywords/Keywords.h"
#include "UtilityDLL/presentation/ContourInfo.h"
#include "UtilityDLL/presentation/DXFInfo.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/GeoGridInfo.h"
#include "UtilityDLL/presentation/GridInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "UtilityDLL/presentation/PanelInfo.h"
#include "UtilityDLL/presentation/PaperGrid.h"
#include "UtilityDLL/presentation/SunIlluminationInfo.h"
#include "UtilityDLL/presentation/TextInfo.h"
#include "apps/chartutil/files/SettingsLines.h"
#include "apps/chartutil/terminal/UserText.h"

#include <array>
#include <string>
#include <vector>

class ProjectFile;

/// A part of the layout: where it stands on the paper, its texts, and the line round it.
struct Panel {
    /// In millimetres from the paper's lower left corner. Justification says which point of the panel stands
    /// there, by the numbers of TextInfo::JUSTIFICATION: 0 the lower left corner, on anticlockwise to 7, the
    /// middle of the left side, and 8 the centre.
    PanelInfo place;
    TextInfo text;
    TextInfo heading;    ///< as the text where nothing else is said
    TextInfo subheading; ///< as the text where nothing else is said
    LineInfo frame;
    double inset = 4.0; ///< from the panel's sides to what stands in it
    bool isShown = false;
};

/// The border round the map, from within: a line, a band with ticks, one with bars, an outer line and the
/// labels.
struct BorderStyle {
    double room = 14.0;     ///< from the margin to the map
    double tickWidth = 1.0; ///< of the band with ticks
    double barWidth = 0.8;
    double outerLineGap = 0.9; ///< from the bars to the middle of the outer line
    double outerLineWidth = 0.6;
    double labelGap = 0.8;      ///< from the outer line to the labels
    double tickSpacing = 2.0;   ///< ticks are no closer
    double barLength = 15.0;    ///< bars are no shorter
    double labelSpacing = 25.0; ///< labels are no closer
};

/// What a project folder says of its chart. Lengths are in millimetres of the paper where nothing else is
/// said. A field has its default where its section or key is missing.
struct Project {
    UserText folder;
    SettingsLines lines; ///< of project.ini

    std::wstring title;

    // [Soundings]: a table of values, or any layer of points.
    UserText soundings; ///< the file's path; empty for none
    std::string layer;
    std::string xColumn, yColumn, depthColumn; ///< empty for the usual names
    bool isDepthNegative = false;
    UnitType unit = UnitType::M;  ///< of the depths in the file
    std::string coordinateSystem; ///< of the chart
    std::string fileSystem;       ///< of the file; empty for the chart's, or what the file says itself

    // [Sheet]
    double paperWidth = 594.0, paperHeight = 841.0;
    double margin = 12.0;
    double scale = 0.0; ///< 1 to this, from 1 on; 0 for the largest round one at which all soundings fit
    bool hasCentre = false;
    double centreX = 0.0, centreY = 0.0; ///< in the world
    PaperGrid paperGrid;

    // [Surface]
    DXFColorTable colors;
    double cellSize = 0.8;
    double reach = 8.0;     ///< beyond which there is no surface about a sounding
    double smoothing = 1.3; ///< edges of triangles are seen no more, and shapes hardly change
    SunIlluminationInfo sun;
    double exaggeration = 40; ///< of heights, for the light

    LineInfo limit; ///< of what is known of the surface

    ContourDefinitionList levels;
    ContourInfo contours;
    TextInfo contourLabels;
    double contourLabelGap = 0.6; ///< from the line's end to the number

    DepthLabelInfo depthLabels;
    double depthLabelGap = 0.6;
    double contourGap = 0.2; ///< from a depth to a contour
    double shoalSquare = 5;  ///< sides of the squares of which the shoalest is shown, in sizes of the text

    LineInfo border; ///< round the map
    BorderStyle borderStyle;
    GridInfo grid;
    LineInfo gridLine;
    TextInfo gridText;
    double gridLabelGap = 0.7; ///< from a tick's end to its label
    bool hasGrid = false;
    GeoGridInfo graticule;
    LineInfo graticuleLine;
    double graticuleMark = 4.0; ///< length of a tick, width of a cross
    TextInfo graticuleText;
    TextInfo degreeText; ///< of whole degrees; as the other labels where nothing else is said
    bool hasGraticule = false;

    DXFInfo dxf; ///< how lines are exported

    Panel titleBlock, legend, scaleBar, northArrow;
    std::wstring titleText; ///< with placeholders
    std::string titleFile;  ///< where it is from, for reports; UTF-8
    CKeywords keywords;
};

/// The files that a chart is drawn from: the project's settings and those that they name, whether they are
/// there or not.
std::vector<UserText> FilesOf(const UserText& folder);

/// Reads the project of a folder. What is wrong in its files goes to the PlotErrorReporter, in the context of
/// the part that it is about, and the rest is read. Ends the command when there is no project.
Project OpenProject(const UserText& folder);

/// The same of its settings, without the folder's name.
Project ReadProject(ProjectFile& reader);

/// Tells the PlotErrorReporter, in the context of the section, what is wrong with a key of the project and
/// what to do.
void ReportKey(const Project& project, const wchar_t* section, const wchar_t* key, const std::string& what);
