// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "apps/chartutil/commands/style/Names.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/commands/text/Style.h"
#include "apps/chartutil/commands/text/TextSheet.h"
#include "apps/chartutil/commands/text/Texts.h"
#include "apps/chartutil/drawing/PictureFile.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/work/LongWork.h"

#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace {

// A depth and how it is written.
struct Sounding {
    double value;
    DepthLabelInfo style;
    std::pair<TextRectComp::Rectangle, std::wstring> whole, decimals;
};

Sounding Measured(double value, const DepthLabelInfo& style) {
    TextRectComp measure;
    const auto [whole, decimals] = measure(style, value);
    return {value, style, whole, decimals};
}

std::string PresentationText(const DepthLabelInfo& style) { return kPresentations[style.Presentation()]; }
std::string PlacementText(const DepthLabelInfo& style) { return kPlacements[style.Placement()]; }

bool IsUnderlined(const Sounding& sounding) {
    return sounding.style.GetUnderlineDryingHeights() &&
           TextRectComp::IsDryingHeight(sounding.style, sounding.value);
}

std::vector<double> ValuesOf(const MeasureSounding& options) {
    std::vector<double> values;
    for (const std::string& text : options.values)
        if (!ParseNumber(text, values.emplace_back()))
            throw CommandError(ExitCode::WRONG_USE,
                               "'" + text +
                                   "' is no depth; give a number with a decimal point, such as 12.3");
    return values;
}

DepthLabelInfo StyleOf(const MeasureSounding& options) {
    DepthLabelInfo style;
    Apply(options, style);
    if (options.precision) style.SetPrecision(*options.precision);
    if (!options.presentation.empty())
        style.SetPresentation(
            DepthLabelInfo::PRESENTATION(RequireName(options.presentation, kPresentations, "presentation")));
    if (!options.placement.empty())
        style.SetPlacement(
            DepthLabelInfo::PLACEMENT(RequireName(options.placement, kPlacements, "placement")));
    if (options.hasNoDecimalZeros) style.SetNoDecimalZeros(true);
    if (options.isSignInverted) style.SetSignIsInverted(true);
    if (options.isDryingUnderlined) style.SetUnderlineDryingHeights(true);
    return style;
}

// The styles in which the values are written: one, or each presentation with each placement.
std::vector<DepthLabelInfo> StylesOf(const MeasureSounding& options) {
    const DepthLabelInfo style = StyleOf(options);
    if (!options.isEach) return {style};
    std::vector<DepthLabelInfo> styles;
    for (int presentation = 0; presentation < 3; ++presentation)
        for (int placement = 0; placement < 3; ++placement) {
            styles.push_back(style);
            styles.back().SetPresentation(DepthLabelInfo::PRESENTATION(presentation));
            styles.back().SetPlacement(DepthLabelInfo::PLACEMENT(placement));
        }
    return styles;
}

// --- output ---

Json PartJson(const std::pair<TextRectComp::Rectangle, std::wstring>& part) {
    Json json = {{"text", ToUtf8(part.second)}};
    json.update(BoxJson(part.first));
    return json;
}

Json ToJson(const Sounding& sounding) {
    return {{"value", sounding.value},
            {"presentation", PresentationText(sounding.style)},
            {"placement", PlacementText(sounding.style)},
            {"isUnderlined", IsUnderlined(sounding)},
            {"whole", PartJson(sounding.whole)},
            {"decimals", PartJson(sounding.decimals)}};
}

void Print(const Sounding& sounding) {
    std::cout << Colored(DecimalText(sounding.value), TextColor::BOLD) << "  "
              << PresentationText(sounding.style) << ", " << PlacementText(sounding.style)
              << " on the position" << (IsUnderlined(sounding) ? ", underlined\n" : "\n");
    const auto print = [](const char* name, const std::pair<TextRectComp::Rectangle, std::wstring>& part) {
        if (part.second.empty()) return;
        PrintFact(name, ToUtf8(part.second));
        PrintBox(part.first);
    };
    print("whole part", sounding.whole);
    print("decimals", sounding.decimals);
}

// --- picture ---

TextSheet::Cell CellOf(const Sounding& sounding, const FontInUse& font) {
    TextSheet::Cell cell;
    TextInfo style = sounding.style;
    if (!sounding.decimals.second.empty())
        cell.push_back(LayOut(style, font, sounding.decimals.first, {sounding.decimals.second}));
    if (IsUnderlined(sounding)) style.SetStyle(style.Style() | TextInfo::UNDERLINE);
    cell.push_back(LayOut(style, font, sounding.whole.first, {sounding.whole.second}));
    return cell;
}

// One sounding below the other, or for each a table of presentations and placements.
Surface Picture(const std::vector<Sounding>& soundings, const FontInUse& font, bool isEach) {
    const DepthLabelInfo& style = soundings.front().style;
    TextSheet sheet;
    sheet.title = FamilyText(font, CaptionText(style.Font()));
    sheet.note = StyleText(style);
    const std::size_t numColumns = isEach ? std::size(kPlacements) : 1;
    if (isEach) sheet.columns.assign(std::begin(kPlacements), std::end(kPlacements));
    for (std::size_t i = 0; i < soundings.size(); ++i) {
        StopIfInterrupted();
        const std::size_t place = i % (isEach ? numColumns * std::size(kPresentations) : 1);
        if (place == 0) sheet.blocks.push_back({DecimalText(soundings[i].value), {}});
        std::vector<TextSheet::Row>& rows = sheet.blocks.back().rows;
        if (place % numColumns == 0) rows.push_back({PresentationText(soundings[i].style), {}});
        rows.back().cells.push_back(CellOf(soundings[i], font));
    }
    constexpr double kWidth = 120;
    constexpr double kHeight = 80;
    return TextPicture(sheet, kWidth / static_cast<double>(numColumns), kHeight);
}

} // namespace

void Run(const MeasureSounding& options) {
    if (options.picture.IsAsked()) RequirePicture(options.picture);
    std::vector<Sounding> soundings;
    const std::vector<DepthLabelInfo> styles = StylesOf(options);
    for (const double value : ValuesOf(options))
        for (const DepthLabelInfo& style : styles) {
            StopIfInterrupted();
            soundings.push_back(Measured(value, style));
        }
    const DepthLabelInfo& style = styles.front();
    const FontInUse font = FindFont(style);
    const float factor = TextHeightFactComp::Get()(style);
    const bool isMeasured = soundings.front().whole.first.Height() != 0 || style.Size() == 0;
    if (isMeasured && options.picture.IsAsked())
        SavePicture(Picture(soundings, font, options.isEach), options.picture);

    if (options.json) {
        Json document = {{"style", StyleJson(style)}, {"font", FontJson(font, factor)}};
        document["soundings"] = Json::array();
        for (const Sounding& sounding : soundings) document["soundings"].push_back(ToJson(sounding));
        PrintJson(document);
    } else {
        PrintFont(style, font, factor);
        for (const Sounding& sounding : soundings) Print(sounding);
    }
    if (!TextRectComp::HeightsFit(style)) NoteOverflow();
    if (!isMeasured) ThrowNotMeasured(style);
}
