// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/PanelContent.h"
#include "apps/chartutil/sheet/layers/TitleText.h"

#include <algorithm>

PanelContent TitleBlock(const Sheet& sheet, double width) {
    const Panel& panel = sheet.project.titleBlock;
    const std::wstring text = TitleText(sheet.project, sheet.frame, sheet.scene);
    std::vector<PlacedText> lines; // about the middle of the upper side
    double y = 0, widest = 0;
    const TextInfo* style = &panel.heading;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        const std::wstring line = text.substr(begin, end - begin);
        begin = end + 1;
        if (line.find_first_not_of(L" \t") == std::wstring::npos) {
            if (!lines.empty()) style = &panel.text;
            y += static_cast<double>(panel.text.Size()) * 0.9;
            continue;
        }
        PlacedText placed = PlaceCentred(*style, line, width, 0, y);
        y += HeightOf(placed) + static_cast<double>(style->Size()) * 0.15;
        widest = std::max(widest, WidthOf(placed));
        lines.push_back(std::move(placed));
        if (style == &panel.heading) style = &panel.subheading;
    }
    return {widest, y, [lines = std::move(lines), y](const Occupied::Box& box, Surface& surface) {
                const double x = (box.left + box.right) / 2, top = (box.top + box.bottom - y) / 2;
                for (PlacedText line : lines) {
                    line.place = {x, top + line.place.y};
                    line.Draw(surface);
                }
            }};
}
