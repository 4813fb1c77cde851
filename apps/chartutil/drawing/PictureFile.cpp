#include "apps/chartutil/drawing/PictureFile.h"

#include "VelmBase/File.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/PictureModule.h"
#include "apps/chartutil/drawing/SvgFile.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>

namespace {

std::string Ending(const std::string& path) {
    const std::size_t point = path.find_last_of("./\\");
    if (point == std::string::npos || path[point] != '.') return {};
    std::string ending = path.substr(point + 1);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return ending;
}

// What makes a picture of that ending; null for SVG, which needs no module.
RenderPictureFunction* RequireRenderer(const std::string& path) {
    const std::string ending = Ending(path);
    if (ending == "svg") return nullptr;
    if (ending != "png" && ending != "pdf")
        throw CommandError(ExitCode::WRONG_USE, path + ": a picture's name has to end in .svg, .png or .pdf");
    std::string whyNot;
    RenderPictureFunction* const render = LoadPictureModule(whyNot);
    if (!render)
        throw CommandError(ExitCode::WRONG_USE, path + ": this program " + whyNot + " and makes no " +
                                                    (ending == "png" ? "PNG" : "PDF") +
                                                    "; name the picture .svg");
    return render;
}

std::string FileContent(const Surface& surface, const std::string& path) {
    RenderPictureFunction* const render = RequireRenderer(path);
    if (!render) return SvgFile(surface);
    const PictureFormat format = Ending(path) == "png" ? PictureFormat::PNG : PictureFormat::PDF;
    std::string content;
    const Progress progress("the picture", surface.Shapes().size());
    if (!render(
            surface, format, [&](std::size_t done) { progress.Show(done); }, content))
        throw CommandError(ExitCode::IO_ERROR, path + ": the picture cannot be drawn");
    return content;
}

} // namespace

void RequirePictureName(const std::string& path) { RequireRenderer(path); }

void SavePicture(const Surface& surface, const std::string& path) {
    const std::string content = FileContent(surface, path);
    StopIfInterrupted();
    if (!FILES::ReplaceContents(FromUtf8(path), content)) ThrowNotWritten(path);
    NoteChanged(path);
}
