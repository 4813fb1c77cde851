#include "apps/chartutil/commands/contours/ContourLegend.h"

#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/contours/LineTypes.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr RGBColor kBlack(0, 0, 0);
constexpr RGBColor kGrey(96, 96, 96);

} // namespace

Picture ContourLegend(const ContourDefinitionList& list, const std::string& title) {
    constexpr int kMostRows = 600;
    constexpr double kTop = 66;
    constexpr double kRow = 26;
    constexpr double kLeft = 24;
    constexpr double kLineLength = 190;
    constexpr double kLevelX = kLeft + kLineLength + 70; // right aligned
    constexpr double kNoteX = kLevelX + 26;
    const int rows = std::min(list.NumContours(), kMostRows);
    const bool isCut = rows < list.NumContours();
    Picture picture(std::max(480, 60 + static_cast<int>(FromUtf8(title).size()) * 9),
                    static_cast<int>(kTop + kRow * (rows + isCut)) + 16);
    picture.Text(kLeft, 28, title, 15, kBlack, Picture::Anchor::START, true);
    picture.Text(kLeft, kTop - 14, "line", 11, kGrey);
    picture.Text(kLevelX, kTop - 14, "level", 11, kGrey, Picture::Anchor::END);
    picture.Text(kNoteX, kTop - 14, "style", 11, kGrey);
    picture.Line(kLeft, kTop - 6, picture.Width() - kLeft, kTop - 6, RGBColor(200, 200, 200));
    for (int i = 0; i < rows; ++i) {
        const ContourDefinitionList::ContourDefInfo& info = list[i];
        const RGBColor color(info.trueColor);
        const double y = kTop + kRow * i + kRow / 2 + 0.5; // thin lines fill whole pixels
        const double width = std::isfinite(info.lineWidth)
                                 ? std::clamp(static_cast<double>(info.lineWidth) * 6, 1.0, 14.0)
                                 : 1.0;
        const std::string dashes[] = {"", GeneralText(6 + 2 * width) + " " + GeneralText(3 + 1.5 * width),
                                      GeneralText(width) + " " + GeneralText(2 + 1.5 * width)};
        const std::string& dash = dashes[info.lineType >= 0 && info.lineType < 3 ? info.lineType : 0];
        const std::string level = GeneralText(info.level, 6);
        if (info.annotate) { // the line is broken for its number, as on the chart
            const double middle = kLeft + kLineLength / 2;
            const double gap = static_cast<double>(level.size()) * 8 + 10;
            picture.Line(kLeft, y, middle - gap / 2, y, color, width, dash);
            picture.Line(middle + gap / 2, y, kLeft + kLineLength, y, color, width, dash);
            picture.Text(middle, y + 4.5, level, 13, color, Picture::Anchor::MIDDLE);
        } else {
            picture.Line(kLeft, y, kLeft + kLineLength, y, color, width, dash);
        }
        picture.Text(kLevelX, y + 4.5, level, 13, kBlack, Picture::Anchor::END);
        picture.Text(kNoteX, y + 4.5,
                     LineTypeName(info.lineType) + ", " + GeneralText(static_cast<double>(info.lineWidth), 3),
                     11, kGrey);
    }
    if (isCut)
        picture.Text(kLeft, kTop + kRow * rows + kRow / 2 + 4,
                     "and " + std::to_string(list.NumContours() - rows) + " more", 12, kGrey);
    return picture;
}
