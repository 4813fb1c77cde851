// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/OutputOptions.h"

#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <CLI/CLI.hpp>

#include <string>

CLI::Option* AddPicture(CLI::App& command, const char* name, PictureTarget& picture, const char* what) {
    command
        .add_option(
            "--format", picture.format,
            "The picture's format: svg, png, pdf or dxf. Without this its name says it by its ending; "
            "standard output gets svg")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"svg", "png", "pdf", "dxf"}));
    AddForce(command, picture.isForced);
    return command
        .add_option(name, picture.path,
                    std::string(what) + ", .svg, .png, .pdf or .dxf; '-' is standard output")
        ->type_name(kFileValue);
}
