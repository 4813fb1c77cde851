#include "apps/chartutil/drawing/PictureFile.h"

#include "VelmBase/File.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/PictureModule.h"
#include "apps/chartutil/drawing/SvgFile.h"
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
struct Kind {
    const char* ending;
    const char* name;
    std::optional<PictureFormat> format; // none for SVG, which needs no module
};
constexpr Kind kKinds[] = {
    {"svg", "SVG", std::nullopt},
    {"png", "PNG", PictureFormat::PNG},
    {"pdf", "PDF", PictureFormat::PDF},
    {"dxf", "DXF", PictureFormat::DXF},
};

const Kind& RequireKind(const std::string& path) {
    const Kind* const kind = std::ranges::find(kKinds, Ending(path), &Kind::ending);
    if (kind == std::end(kKinds))
        throw CommandError(ExitCode::WRONG_USE,
                           path + ": a picture's name has to end in .svg, .png, .pdf or .dxf");
    return *kind;
}

RenderPictureFunction& RequireRenderer(const Kind& kind, const std::string& path) {
    std::string whyNot;
    RenderPictureFunction* const render = LoadPictureModule(*kind.format, whyNot);
    if (!render)
        throw CommandError(ExitCode::WRONG_USE, path + ": this program " + whyNot + " and makes no " +
                                                    kind.name + "; name the picture .svg");
    return *render;
}

std::string FileContent(const Surface& surface, const std::string& path) {
    const Kind& kind = RequireKind(path);
    if (!kind.format) return SvgFile(surface);
    RenderPictureFunction& render = RequireRenderer(kind, path);
    std::string content;
    const Progress progress("the picture", surface.Shapes().size());
    if (!render(
            surface, *kind.format, [&](std::size_t done) { progress.Show(done); }, content))
        throw CommandError(ExitCode::IO_ERROR, path + ": the picture cannot be drawn");
    return content;
}

} // namespace

void RequirePictureName(const std::string& path) {
    const Kind& kind = RequireKind(path);
    if (kind.format) (void)RequireRenderer(kind, path);
}

void SavePicture(const Surface& surface, const std::string& path) {
    const std::string content = FileContent(surface, path);
    StopIfInterrupted();
    if (const std::error_code error = FILES::ReplaceContents(FromUtf8(path), content))
        ThrowNotWritten(path, error);
    NoteChanged(path);
}
