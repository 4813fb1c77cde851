// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/commands/text/Style.h"
#include "apps/chartutil/commands/text/TextSheet.h"
#include "apps/chartutil/commands/text/Texts.h"
#include "apps/chartutil/drawing/PictureFile.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

#include <chrono>
#include <future>
#include <nlohmann/json.hpp>
#include <system_error>
#include <thread>
#include <utility>

namespace {

// Standard input without the line end that every text file has at its end.
std::wstring ReadInput() {
    constexpr std::size_t kMost = 16 << 20;
    const Progress progress("standard input");
    std::string bytes = ReadFile("-", kMost);
    if (bytes.ends_with('\n')) bytes.pop_back();
    if (bytes.ends_with('\r')) bytes.pop_back();
    return FromUtf8(bytes);
}

std::wstring TextOf(const MeasureText& options, const TextInfo& style) {
    std::wstring text = IsStandardStream(options.text) ? ReadInput() : options.text.Wide();
    if (text.find(L'\0') != std::wstring::npos)
        throw CommandError(ExitCode::WRONG_USE, "the text has a zero character, at which every text ends");
    if (!style.MultiLine() && text.find(L'\n') != std::wstring::npos)
        PrintNote("chartutil: note: line breaks count in multi-line text only; give --multi-line");
    return text;
}

TextInfo StyleOf(const MeasureText& options) {
    TextInfo style;
    Apply(options, style);
    if (!options.width.empty()) style.SetRectWidth(RequireLength(options.width, "width"));
    if (options.isMultiLine || !options.width.empty()) style.SetMultiLine(true);
    return style;
}

struct Measured {
    TextRectComp::Rectangle box;
    double textHeight;
    std::vector<std::wstring> lines;
};

Measured Measure(const TextInfo& style, const std::wstring& text) {
    TextRectComp measure;
    Measured measured{measure(style, text), measure.GetTextHeight(), {}};
    const int count = measure.GetNumberOfSubStrings();
    measured.lines.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) measured.lines.push_back(measure.GetSubString(i));
    return measured;
}

// The library measures a text in one go, which takes a minute where many letters are shaped. When the command
// is to end meanwhile, the thread that measures is left alone, and ends with the program. It uses the height
// factors of the process, which one thread at a time may: nothing measures beside it or after an
// interruption.
Measured MeasureUntilInterrupted(const TextInfo& style, const std::wstring& text) {
    constexpr std::size_t kShort = 10'000;
    constexpr auto kInterval = std::chrono::milliseconds(5);
    if (text.size() <= kShort) return Measure(style, text);
    std::packaged_task<Measured()> task([style, text] { return Measure(style, text); });
    std::future<Measured> measured = task.get_future();
    try {
        std::thread(std::move(task)).detach();
    } catch (const std::system_error&) {
        return Measure(style, text); // the system has no thread left: all goes on but the interruption
    }
    const Progress progress("the text");
    while (measured.wait_for(kInterval) != std::future_status::ready) progress.Show(0);
    return measured.get();
}

void RequireDrawable(const std::wstring& text, const std::string& picture) {
    constexpr std::size_t kLongest = 10'000;
    if (text.size() > kLongest)
        throw CommandError(ExitCode::WRONG_USE, picture + ": a picture holds a text of up to " +
                                                    std::to_string(kLongest) + " characters, and this has " +
                                                    std::to_string(text.size()));
}

Surface Picture(const TextInfo& style, const FontInUse& font, const TextRectComp::Rectangle& box,
                const std::vector<std::wstring>& lines) {
    constexpr double kWidth = 160;
    constexpr double kHeight = 100;
    TextSheet sheet;
    sheet.title = FamilyText(font, CaptionText(style.Font()));
    sheet.note = StyleText(style) + ", " + LengthText(box.Width()) + " by " + LengthText(box.Height());
    sheet.blocks.push_back({"", {{"", {{LayOut(style, font, box, lines)}}}}});
    return TextPicture(sheet, kWidth, kHeight);
}

} // namespace

void Run(const MeasureText& options) {
    const TextInfo style = StyleOf(options);
    if (options.picture.IsAsked()) RequirePicture(options.picture);
    const std::wstring text = TextOf(options, style);
    if (options.picture.IsAsked()) RequireDrawable(text, OutputName(options.picture.path));
    const FontInUse font = FindFont(style);
    const float factor = TextHeightFactComp::Get()(style);
    const auto [box, textHeight, lines] = MeasureUntilInterrupted(style, text);
    StopIfInterrupted();
    const bool isMeasured = !lines.empty() || text.empty() || style.Size() == 0;
    if (isMeasured && options.picture.IsAsked())
        SavePicture(Picture(style, font, box, lines), options.picture);

    if (options.json) {
        Json document = {
            {"text", ToUtf8(text)}, {"style", StyleJson(style)}, {"font", FontJson(font, factor)}};
        document.update(BoxJson(box));
        document["textHeight"] = textHeight;
        document["lines"] = Json::array();
        for (const std::wstring& line : lines) {
            StopIfInterrupted();
            document["lines"].push_back(ToUtf8(line));
        }
        PrintJson(document);
    } else {
        PrintFont(style, font, factor);
        PrintBox(box);
        PrintFact("text height", LengthText(textHeight));
        for (std::size_t i = 0; i < lines.size(); ++i) {
            StopIfInterrupted();
            PrintFact(lines.size() == 1 ? "text" : "line " + std::to_string(i + 1), ToUtf8(lines[i]));
        }
    }
    if (!TextRectComp::HeightsFit(style)) NoteOverflow();
    if (!isMeasured) ThrowNotMeasured(style);
}
