// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/sheet/layers/Layers.h"

#include <string>
#include <vector>

/// A chart without soundings of a box of the world, for tests of what is round the map and on it besides
/// depths.
struct Chart {
    Project project;
    Scene scene;
    WorldBox world;

    Chart(const std::string& system, double left, double bottom, double right, double top) {
        PlotErrorReporter::Get().Clear();
        if (!system.empty()) scene.system = LoadGeometryModule().OpenSystem(system);
        world.Update(left, bottom);
        world.Update(right, top);
        project.paperWidth = 400;
        project.paperHeight = 300;
        for (TextInfo* const text : {&project.gridText, &project.graticuleText, &project.degreeText})
            text->SetFont(L"Liberation Sans");
        for (Panel* const panel :
             {&project.titleBlock, &project.legend, &project.scaleBar, &project.northArrow})
            for (TextInfo* const text : {&panel->text, &panel->heading, &panel->subheading})
                text->SetFont(L"Liberation Sans");
    }

    MapFrame Frame() const { return {project, world}; }

    /// What `draw` draws of the sheet.
    template <typename Draw> Surface Drawn(const Draw& draw) const {
        const MapFrame frame = Frame();
        Surface surface(std::max(project.paperWidth, 1.0), std::max(project.paperHeight, 1.0));
        draw(Sheet{project, frame, scene}, surface);
        return surface;
    }
};

/// All that was reported for a context.
inline std::vector<std::string> ReportsOf(const wchar_t* context) {
    std::vector<std::string> texts;
    for (const ErrorString& error : PlotErrorReporter::Get()[context]) texts.push_back(ToUtf8(error.Text()));
    return texts;
}

template <typename Shape> std::vector<Shape> ShapesOf(const Surface& surface) {
    std::vector<Shape> shapes;
    for (const Surface::Shape& shape : surface.Shapes())
        if (const Shape* const found = std::get_if<Shape>(&shape)) shapes.push_back(*found);
    return shapes;
}

inline std::vector<std::string> TextsOf(const Surface& surface) {
    std::vector<std::string> texts;
    for (const Surface::Label& label : ShapesOf<Surface::Label>(surface)) texts.push_back(label.text);
    return texts;
}
