// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/PictureFile.h"

#include "apps/chartutil/drawing/PictureModule.h"
#include "apps/chartutil/drawing/SvgFile.h"
#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

std::string Ending(const std::string& path) {
    const std::size_t point = path.find_last_of("./\\");
    if (point == std::string::npos || path[point] != '.') return {};
    std::string ending = path.substr(point + 1);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return ending;
}

// How pictures of an ending are made.
struct Format {
    const char* ending;
    const char* name;
    FileKind kind;
    bool isText;
    std::optional<PictureFormat> module; // none for SVG, which needs no module
};
constexpr Format kFormats[] = {
    {"svg", "SVG", FileKind::SVG, true, std::nullopt},
    {"png", "PNG", FileKind::PNG, false, PictureFormat::PNG},
    {"pdf", "PDF", FileKind::PDF, false, PictureFormat::PDF},
    {"dxf", "DXF", FileKind::DXF, true, PictureFormat::DXF},
};

std::string EndingOf(const PictureTarget& target) {
    if (!target.format.empty()) return target.format;
    return IsStandardStream(target.path) ? "svg" : Ending(target.path.Utf8());
}

const Format& RequireFormat(const PictureTarget& target) {
    const Format* const format = std::ranges::find(kFormats, EndingOf(target), &Format::ending);
    if (format == std::end(kFormats))
        throw CommandError(ExitCode::WRONG_USE,
                           target.path.Utf8() + ": a picture's name has to end in .svg, .png, .pdf or .dxf");
    return *format;
}

RenderPictureFunction& RequireRenderer(const Format& format, const PictureTarget& target) {
    std::string whyNot;
    RenderPictureFunction* const render = LoadPictureModule(*format.module, whyNot);
    if (!render)
        throw CommandError(ExitCode::WRONG_USE, OutputName(target.path) + ": this program " + whyNot +
                                                    " and makes no " + format.name +
                                                    "; name the picture .svg");
    return *render;
}

std::string FileContent(const Surface& surface, const PictureTarget& target) {
    const Format& format = RequireFormat(target);
    if (!format.module) return SvgFile(surface);
    RenderPictureFunction& render = RequireRenderer(format, target);
    std::string content;
    const Progress progress("the picture", surface.Shapes().size());
    if (!render(
            surface, *format.module, [&](std::size_t done) { progress.Show(done); }, content))
        throw CommandError(ExitCode::IO_ERROR, OutputName(target.path) + ": the picture cannot be drawn");
    return content;
}

} // namespace

void RequirePicture(const PictureTarget& target) {
    const Format& format = RequireFormat(target);
    if (format.module) (void)RequireRenderer(format, target);
    if (!format.isText && IsStandardStream(target.path) && OutputIsTerminal())
        throw CommandError(ExitCode::WRONG_USE,
                           std::string("standard output is a terminal, which shows no ") + format.name +
                               "; send it to a file or a program");
    RequireReplaceable(target.path, format.kind, target.isForced);
}

void SavePicture(const Surface& surface, const PictureTarget& target) {
    const std::string content = FileContent(surface, target);
    WriteFile(target.path, content);
}
