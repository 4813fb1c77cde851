// SPDX-License-Identifier: MIT
#include "VelmBase/FormatString.h"
#include "apps/chartutil/commands/style/Names.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/commands/text/Style.h"
#include "apps/chartutil/commands/text/TextSheet.h"
#include "apps/chartutil/commands/text/Texts.h"
#include "apps/chartutil/drawing/PictureFile.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace {

struct Sample {
    TextInfo style;
    std::wstring text;
};

std::vector<Sample> SamplesOf(const DrawJustifications& options) {
    TextInfo style;
    Apply(options, style);
    style.SetMultiLine(false);
    if (options.samples.empty()) return {{style, L"Sounding"}};
    std::vector<Sample> samples;
    for (const UserText& given : options.samples) {
        const std::size_t end = given.Wide().find(L'=');
        if (end == std::wstring::npos || end == 0 || end + 1 == given.Wide().size())
            throw CommandError(ExitCode::WRONG_USE,
                               "'" + given.Utf8() + "' is no sample; write it as --sample 'FACE=TEXT'");
        style.SetFont(given.Wide().substr(0, end));
        samples.push_back({style, given.Wide().substr(end + 1)});
    }
    return samples;
}

std::vector<Angle> RotationsOf(const DrawJustifications& options) {
    const UserText list(options.rotations);
    const FormatString items(list.Wide(), L',');
    std::vector<Angle> rotations;
    rotations.reserve(static_cast<std::size_t>(items.NumItems()));
    for (int i = 0; i < items.NumItems(); ++i) rotations.push_back(RequireAngle(ToUtf8(items[i])));
    if (rotations.empty()) (void)RequireAngle("");
    return rotations;
}

TextSheet::Block BlockOf(const Sample& sample, const std::vector<Angle>& rotations) {
    const FontInUse font = FindFont(sample.style);
    TextSheet::Block block{FamilyText(font, CaptionText(sample.style.Font())), {}};
    for (const Angle& rotation : rotations) {
        StopIfInterrupted();
        TextSheet::Row row{LengthText(rotation.Get()) + "\u00B0", {}};
        TextInfo style = sample.style;
        style.SetRotation(rotation);
        for (std::size_t i = 0; i < std::size(kJustifications); ++i) {
            style.SetJustification(TextInfo::JUSTIFICATION(i));
            const TextRectComp::Rectangle box = TextRectComp()(style, sample.text);
            if (box.Height() == 0) ThrowNotMeasured(style);
            row.cells.push_back({LayOut(style, font, box, {sample.text})});
        }
        block.rows.push_back(std::move(row));
    }
    return block;
}

} // namespace

void Run(const DrawJustifications& options) {
    RequirePicture(options.picture);
    const std::vector<Sample> samples = SamplesOf(options);
    const std::vector<Angle> rotations = RotationsOf(options);
    TextSheet sheet;
    sheet.title = "Justifications";
    sheet.note = "rectangles, insertion points and rotations clockwise";
    sheet.columns.assign(std::begin(kJustifications), std::end(kJustifications));
    for (const Sample& sample : samples) sheet.blocks.push_back(BlockOf(sample, rotations));
    constexpr double kCell = 26;
    SavePicture(TextPicture(sheet, kCell, kCell), options.picture);
    const auto fits = [](const Sample& sample) {
        TextInfo style = sample.style;
        style.SetJustification(TextInfo::BASELINE_LEFT);
        return TextRectComp::HeightsFit(style);
    };
    if (!std::all_of(samples.begin(), samples.end(), fits)) NoteOverflow();
}
