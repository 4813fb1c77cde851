// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"
#include "tests/support/Program.h"

#include <cmath>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

using Arguments = std::vector<std::string>;

ProgramResult Text(Arguments arguments, std::string_view input = {}) {
    arguments.insert(arguments.begin(), "text");
    return RunChartutil(arguments, input);
}

json TextJson(Arguments arguments, std::string_view input = {}) {
    arguments.push_back("--json");
    const ProgramResult result = Text(std::move(arguments), input);
    EXPECT_EQ(0, result.exitCode) << result.error.substr(0, 200);
    return json::parse(result.output, nullptr, false);
}

void ExpectBox(const TextRectComp::Rectangle& expected, const json& box) {
    EXPECT_NEAR(expected.Width(), box["width"], 1e-9);
    EXPECT_NEAR(expected.Height(), box["height"], 1e-9);
    ASSERT_EQ(4u, box["corners"].size());
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(expected.Corner(i).X(), box["corners"][std::size_t(i)][0], 1e-9);
        EXPECT_NEAR(expected.Corner(i).Y(), box["corners"][std::size_t(i)][1], 1e-9);
    }
}

// A family that is installed wherever this runs.
std::string InstalledFamily() {
    const json fonts = json::parse(RunChartutil({"fonts", "--json"}).output)["fonts"];
    EXPECT_FALSE(fonts.empty()) << "no font is installed";
    for (const json& font : fonts)
        if (font["hasOutlines"] && font["family"].get<std::string>().size() < 32) return font["family"];
    return {};
}

std::size_t Count(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
    return count;
}

std::string PictureOf(const Arguments& arguments) {
    const TemporaryFolder folder;
    Arguments all = arguments;
    all.insert(all.end(), {"--picture", ToUtf8(folder.File(L"t.svg"))});
    const ProgramResult result = Text(all);
    EXPECT_EQ(0, result.exitCode) << result.error.substr(0, 200);
    EXPECT_EQ("", result.error);
    return ReadBytes(folder.File(L"t.svg"));
}

} // namespace

TEST(TextMeasure, TellsWhatTheLibraryMeasures) {
    struct Row {
        Arguments options;
        const char* line; // of the same style
        TextInfo::JUSTIFICATION justification;
    };
    for (const Row& row :
         {Row{{}, "Arial,2.5", TextInfo::BOTTOM_LEFT},
          Row{{"--size", "10", "--bold", "--rotation", "30", "--justification", "middle-centre"},
              "Arial,10,1,0,0,30",
              TextInfo::MIDDLE_CENTER},
          Row{{"--italic", "--underline", "--rotation", "-90", "--justification", "TOP_RIGHT"},
              "Arial,2.5,6,0,0,270",
              TextInfo::TOP_RIGHT},
          Row{{"--font", "Liberation Serif", "--justification", "baseline center"},
              "Liberation Serif,2.5",
              TextInfo::BASELINE_CENTER},
          Row{{"--style", "Liberation Sans,4,1,8,0,45", "--size", "5", "--justification", "11"},
              "Liberation Sans,5,1,0,0,45",
              TextInfo::BASELINE_RIGHT},
          Row{{"--size", "0"}, "Arial,0", TextInfo::BOTTOM_LEFT}}) {
        SCOPED_TRACE(::testing::PrintToString(row.options));
        TextInfo style;
        style.FromString(FromUtf8(row.line));
        style.SetJustification(row.justification);
        TextRectComp measure;
        const TextRectComp::Rectangle box = measure(style, L"Sounding 123.4");
        Arguments arguments = {"measure", "Sounding 123.4"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const json document = TextJson(arguments);
        ExpectBox(box, document);
        EXPECT_EQ("Sounding 123.4", document["text"]);
        EXPECT_NEAR(measure.GetTextHeight(), document["textHeight"], 1e-9);
        EXPECT_NEAR(TextHeightFactComp::Get()(style), document["font"]["heightFactor"], 1e-6);
        EXPECT_EQ(std::size_t(measure.GetNumberOfSubStrings()), document["lines"].size());
    }
}

TEST(TextMeasure, WrapsIntoAWidthAndBreaksAtLineBreaks) {
    TextInfo style;
    style.SetMultiLine(true);
    const auto expectAsMeasured = [&](const json& document, const std::wstring& text) {
        TextRectComp measure;
        ExpectBox(measure(style, text), document);
        EXPECT_EQ(style.RectWidth(), document["style"]["width"]);
        EXPECT_EQ(true, document["style"]["multiLine"]);
        json lines = json::array();
        for (int i = 0; i < measure.GetNumberOfSubStrings(); ++i)
            lines.push_back(ToUtf8(measure.GetSubString(i)));
        EXPECT_EQ(lines, document["lines"]);
    };
    const std::wstring text = L"No anchoring\nwithin two cables of the wreck";
    expectAsMeasured(TextJson({"measure", ToUtf8(text), "--multi-line"}), text);
    style.SetRectWidth(30);
    expectAsMeasured(TextJson({"measure", ToUtf8(text), "--width", "30"}), text);
}

TEST(TextMeasure, ReadsStandardInputWithoutItsLastLineEnd) {
    for (const char* const input : {"Pensacola Bay", "Pensacola Bay\n", "Pensacola Bay\r\n"})
        EXPECT_EQ("Pensacola Bay", TextJson({"measure", "-"}, input)["text"]);
    EXPECT_EQ("a\n", TextJson({"measure", "-", "--multi-line"}, "a\n\n")["text"]);
    const ProgramResult broken = Text({"measure", "-"}, "a\nb\n");
    EXPECT_EQ(0, broken.exitCode);
    EXPECT_EQ("chartutil: note: line breaks count in multi-line text only; give --multi-line\n",
              broken.error);
    const ProgramResult zero = Text({"measure", "-"}, std::string_view("a\0b", 3));
    EXPECT_EQ(2, zero.exitCode);
    EXPECT_EQ("chartutil: the text has a zero character, at which every text ends\n", zero.error);
}

TEST(TextMeasure, TextOfAMegabyte) {
    std::string text;
    while (text.size() < 1'000'000) text += "soundings in metres ";
    const json document = TextJson({"measure", "-", "--width", "100"}, text);
    EXPECT_LE(document["width"], 100.0);
    EXPECT_GT(document["height"], 1000.0);
}

TEST(TextMeasure, InputThatIsTooLargeForATextIsNotReadToItsEnd) {
    constexpr std::size_t kMost = 16 << 20;
    const ProgramResult large = Text({"measure", "-"}, std::string(kMost + 1, 'x'));
    EXPECT_EQ(2, large.exitCode);
    EXPECT_EQ("", large.output);
    EXPECT_EQ("chartutil: standard input: is too large; give one of up to 16 MB\n", large.error);
    EXPECT_EQ(0, Text({"measure", "-"}, std::string(kMost, 'x')).exitCode);
}

TEST(TextMeasure, PictureHasALineForEachLine) {
    const std::string svg = PictureOf({"measure", "one\ntwo\nthree", "--multi-line"});
    for (const char* const line : {">one<", ">two<", ">three<"}) EXPECT_EQ(1u, Count(svg, line)) << line;
}

// As docs/text-measurement.md says where the lines of a text stand in its rectangle.
TEST(TextMeasure, LinesStandLineHeightsAboveTheLowerSideOfTheRectangle) {
    struct Row {
        const char* justification;
        bool isOnBaseline;
    };
    for (const Row& row : {Row{"bottom-left", false}, {"top-right", false}, {"baseline-centre", true}}) {
        SCOPED_TRACE(row.justification);
        const Arguments style = {"--justification", row.justification, "--size", "5"};
        Arguments single = {"measure", "x"}, several = {"measure", "one\ntwo\nthree", "--multi-line"};
        single.insert(single.end(), style.begin(), style.end());
        several.insert(several.end(), style.begin(), style.end());
        const json line = TextJson(single), text = TextJson(several);
        const double spacing = text["textHeight"], lineHeight = line["height"];
        EXPECT_NEAR(2 * spacing + lineHeight, text["height"],
                    1e-9); // so the first one ends at the upper side

        const std::string svg = PictureOf(several);
        const auto numberAfter = [&svg](std::string_view mark, std::size_t from) {
            const std::size_t at = svg.find(mark, from);
            EXPECT_NE(std::string::npos, at) << mark;
            return at == std::string::npos ? 0.0 : std::stod(svg.substr(at + mark.size(), 20));
        };
        const double scale = numberAfter("drawn ", 0);
        std::vector<double> baselines;
        for (const char* const words : {">one<", ">two<", ">three<"})
            baselines.push_back(numberAfter(" y=\"", svg.rfind("<text", svg.find(words))));
        for (const std::size_t i : {0u, 1u})
            EXPECT_NEAR(double(2 - i) * spacing * scale, baselines[2] - baselines[i], 0.02);
        const double lowerSide = numberAfter(",", svg.find("<polygon points="));
        if (row.isOnBaseline) {
            EXPECT_NEAR(lowerSide, baselines[2], 0.002);
        } else {
            EXPECT_LT(baselines[2], lowerSide - 0.1 * lineHeight * scale); // room for descenders
        }
    }
}

TEST(TextMeasure, BytesThatAreNoTextAreMeasuredAllTheSame) {
    for (const char* const input : {"a\xFFz", "\xED\xA0\x80", "\xC3"}) // also half of a surrogate pair
        EXPECT_EQ(1u, TextJson({"measure", "-"}, input)["lines"].size());
}

TEST(TextMeasure, TellsWhichFaceStandsIn) {
    const std::string installed = InstalledFamily();
    const json known = TextJson({"measure", "x", "--font", installed})["font"];
    EXPECT_EQ(installed, known["family"]);
    EXPECT_EQ(true, known["isInstalled"]);
    EXPECT_THAT(Text({"measure", "x", "--font", installed}).output,
                StartsWith("face            " + installed + "\n"));
    for (const std::string& asked : {std::string("No Such Face 4711"), std::string(10'000, 'f')}) {
        const json missing = TextJson({"measure", "x", "--font", asked})["font"];
        EXPECT_EQ(false, missing["isInstalled"]);
        const std::string family = missing["family"];
        EXPECT_NE("", family);
        EXPECT_THAT(Text({"measure", "x", "--font", asked}).output,
                    StartsWith("face            " + family + ", since " + asked + " is not installed\n"));
    }
    EXPECT_THAT(Text({"measure", "x", "--style", ",3"}).output, HasSubstr(", since no face is named\n"));
}

TEST(TextMeasure, LineBreaksOfArgumentsMakeNoLinesOfTheOutput) {
    const std::string forged = "x\nheight factor   99\r\ncorners\rface\x1b[2K\t\xC2\x85";
    for (const Arguments& arguments : {Arguments{"measure", forged},
                                       {"measure", "x", "--font", forged},
                                       {"measure", "x", "--style", forged + ",2.5"},
                                       {"sounding", "1.2", "--font", forged}}) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        Arguments plain = arguments;
        for (std::string& argument : plain)
            if (const std::size_t at = argument.find(forged); at != std::string::npos)
                argument.replace(at, forged.size(), "x");
        const ProgramResult result = Text(arguments), expected = Text(plain);
        EXPECT_EQ(0, result.exitCode);
        EXPECT_EQ(Count(expected.output, "\n"), Count(result.output, "\n"));
        EXPECT_THAT(result.output,
                    HasSubstr("x\\x0Aheight factor   99\\x0D\\x0Acorners\\x0Dface\\x1B[2K\t\\x85"));
        EXPECT_THAT(result.output, Not(HasSubstr("\r")));
    }
    EXPECT_EQ(forged.substr(0, 3), TextJson({"measure", forged})["text"].get<std::string>().substr(0, 3));
    // Where a text is of several lines, its other controls are spelt out.
    EXPECT_THAT(Text({"measure", "a\x0B\nb", "--multi-line"}).output,
                AllOf(HasSubstr("line 1          a\\x0B\n"), HasSubstr("line 2          b\n")));
}

TEST(TextMeasure, EmptyTextCoversNothing) {
    const json document = TextJson({"measure", ""});
    EXPECT_EQ(0.0, document["width"]);
    EXPECT_EQ(0.0, document["height"]);
    EXPECT_EQ(json::array(), document["lines"]);
}

TEST(TextMeasure, RefusesWhatIsNone) {
    struct Row {
        Arguments options;
        const char* words;
    };
    for (const Row& row :
         {Row{{"--size", "nan"}, "'nan' is no text height; give a number from 0 to 1000000, such as 2.5"},
          Row{{"--size", "1e9"}, "'1e9' is no text height"}, Row{{"--size", "-1"}, "'-1' is no text height"},
          Row{{"--size", "2,5"}, "'2,5' is no text height"}, Row{{"--width", "inf"}, "'inf' is no width"},
          Row{{"--rotation", "north"}, "'north' is no angle; give a number of degrees clockwise"},
          Row{{"--justification", "middle"}, "'middle' is no justification; give bottom-left, "},
          Row{{"--justification", "12"},
              "top-left, middle-left, middle-centre, baseline-left, "
              "baseline-centre or baseline-right"},
          Row{{"--picture", "t.jpg"}, "t.jpg: a picture's name has to end in .svg, .png, .pdf or .dxf"}}) {
        SCOPED_TRACE(::testing::PrintToString(row.options));
        Arguments arguments = {"measure", "x"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const ProgramResult result = Text(arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_THAT(result.error, AllOf(StartsWith("chartutil: "), HasSubstr(row.words)));
    }
    EXPECT_EQ(2, Text({"measure"}).exitCode);
    EXPECT_EQ(2, Text({}).exitCode);
}

// As a script hands it over whose variable is not set.
TEST(TextMeasure, OptionsWithoutATextAreRefused) {
    const std::vector<std::pair<const char*, Arguments>> commands = {
        {"measure", {"--style", "--size", "--rotation", "--justification", "--width", "--picture"}},
        {"sounding",
         {"--style", "--size", "--rotation", "--justification", "--presentation", "--placement", "--picture",
          "--precision"}},
        {"justifications", {"--style", "--size"}}};
    for (const auto& [command, options] : commands)
        for (const std::string& option : options) {
            SCOPED_TRACE(command + (" " + option));
            Arguments arguments = {command, option, ""};
            if (command == std::string("justifications"))
                arguments.insert(arguments.end(), {"--picture", "t.svg"});
            else
                arguments.emplace_back("1");
            const ProgramResult result = Text(arguments);
            EXPECT_EQ(2, result.exitCode);
            EXPECT_EQ("", result.output);
            EXPECT_THAT(result.error, HasSubstr(option));
        }
    EXPECT_THAT(Text({"measure", "x", "--size", ""}).error,
                StartsWith("--size: is empty; give it a value or leave it out\n"));
    EXPECT_EQ(0, Text({"measure", "x", "--font", ""}).exitCode); // a style may name no face
}

TEST(TextMeasure, StyleInOneLineHasFiniteNumbers) {
    for (const char* const line :
         {"Arial,nan", "Arial,-inf", "Arial,1e99", "Arial,2.5,0,0,0,nan", "Arial,2.5,0,0,0,inf",
          "Arial,2.5,0,0,0,0,nan,1", "Arial,2.5,0,0,0,0,inf", "Arial,1e300", "Arial,1000001"}) {
        for (const char* const command : {"measure", "sounding"}) {
            SCOPED_TRACE(std::string(command) + ' ' + line);
            const ProgramResult result = Text({command, "1", "--style", line});
            EXPECT_EQ(2, result.exitCode);
            EXPECT_EQ("", result.output);
            EXPECT_THAT(result.error, StartsWith("chartutil: '" + std::string(line) + "' is no style: its "));
        }
    }
    EXPECT_EQ(0, Text({"measure", "x", "--style", "Arial,-2.5"}).exitCode); // as some layout files have it
}

TEST(TextMeasure, JsonHasTheSizeAsItWasGiven) {
    for (const char* const size : {"0.1", "2.7", "0.001", "3.5", "1e-07", "123456.7", "100000.0"}) {
        const std::string output = Text({"measure", "x", "--size", size, "--width", size, "--json"}).output;
        EXPECT_THAT(output, AllOf(HasSubstr("\"size\": " + std::string(size) + ",\n"),
                                  HasSubstr("\"width\": " + std::string(size) + ",\n")));
    }
    const json document = TextJson({"measure", "x", "--size", "2.3"});
    const float factor = document["font"]["heightFactor"].get<float>();
    TextInfo style;
    style.SetSize(2.3f);
    EXPECT_EQ(TextHeightFactComp::Get()(style), factor); // no digit is lost
    EXPECT_LE(document["font"]["heightFactor"].dump().size(), 10u);
}

TEST(TextMeasure, LargestSizesGiveNumbers) {
    for (const char* const size : {"1e-30", "0.001", "100", "2000", "1000000"}) {
        const ProgramResult result = Text({"measure", "Wg", "--size", size, "--json"});
        EXPECT_THAT(result.exitCode, ::testing::AnyOf(0, 1)) << size; // 1 where it cannot be measured
        EXPECT_TRUE(json::parse(result.output)["width"].is_number()) << size;
    }
}

TEST(TextMeasure, SizeAtWhichNothingIsSeenIsNeitherMeasuredNorDrawn) {
    for (const char* const command : {"measure", "sounding", "justifications"}) {
        const TemporaryFolder folder;
        Arguments arguments = {command, "--size", "1e-6", "--picture", ToUtf8(folder.File(L"t.svg"))};
        if (command != std::string("justifications")) arguments.emplace_back("1");
        const ProgramResult result = Text(arguments);
        EXPECT_EQ(1, result.exitCode) << command;
        EXPECT_EQ("chartutil: the text cannot be measured: at a size of 1e-06 it is less than a thousandth "
                  "high; measure at a larger size and multiply\n",
                  result.error);
        EXPECT_EQ(0u, folder.NumFiles()) << command;
    }
}

// The height of a line in parts of its size is the same at all sizes, until the arithmetic wraps.
TEST(TextMeasure, NotesEachSizeAtWhichHeightsDoNotFit) {
    const auto isNoted = [](const Arguments& arguments) {
        return Text(arguments).error.find("measure at a smaller size and multiply") != std::string::npos;
    };
    for (const auto justification : {TextInfo::BOTTOM_LEFT, TextInfo::BASELINE_LEFT}) {
        for (const char* const face : {"Liberation Sans", "Droid Sans Fallback", "DejaVu Sans"}) {
            TextInfo style;
            style.SetFont(FromUtf8(face));
            style.SetJustification(justification);
            const auto height = [&](float size) {
                style.SetSize(size);
                return TextRectComp()(style, L"x").Height() / double(size);
            };
            const double known = height(10);
            for (const float size : {50.0f, 54.0f, 56.0f, 63.0f, 66.0f, 70.0f, 72.0f, 80.0f, 90.0f}) {
                const bool isWrapped = std::abs(height(size) / known - 1) > 0.01;
                EXPECT_EQ(isWrapped, isNoted({"measure", "x", "--font", face, "--size", std::to_string(size),
                                              "--justification", std::to_string(justification)}))
                    << face << size << justification;
            }
        }
    }
    EXPECT_TRUE(isNoted({"measure", "x", "--size", "1000"}));
}

TEST(TextMeasure, PictureHasTheTextAsWideAsItWasMeasured) {
    const std::string installed = InstalledFamily();
    const std::string svg = PictureOf({"measure", "Tide & <wind>", "--font", installed, "--size", "5",
                                       "--rotation", "30", "--bold", "--italic", "--underline"});
    EXPECT_EQ(1u, Count(svg, ">Tide &amp; &lt;wind&gt;</text>"));
    EXPECT_THAT(svg, AllOf(HasSubstr("font-family=\"'" + installed + "', DejaVu Sans"),
                           HasSubstr("font-weight=\"bold\""), HasSubstr("font-style=\"italic\""),
                           HasSubstr("text-decoration=\"underline\""), HasSubstr("transform=\"rotate(30 "),
                           HasSubstr("bold italic underline, bottom left, size 5, turned by 30 degrees")));
    EXPECT_EQ(1u, Count(svg, "textLength="));
}

TEST(TextMeasure, PicturesOfOddTexts) {
    EXPECT_EQ(0u, Count(PictureOf({"measure", ""}), "textLength"));
    EXPECT_EQ(0u, Count(PictureOf({"measure", "x", "--size", "0"}), "textLength"));
    EXPECT_EQ(1u, Count(PictureOf({"measure", std::string(10'000, 'x')}), "textLength"));
    const std::string svg = PictureOf({"measure", "tab\there", "--font", std::string(10'000, 'f')});
    EXPECT_THAT(svg,
                AllOf(HasSubstr(">tab here<"), HasSubstr(std::string(60, 'f') + "... is not installed")));
    const ProgramResult tooLong = Text({"measure", "-", "--picture", "t.svg"}, std::string(10'001, 'x'));
    EXPECT_EQ(2, tooLong.exitCode);
    EXPECT_EQ("chartutil: t.svg: a picture holds a text of up to 10000 characters, and this has 10001\n",
              tooLong.error);
}

TEST(TextSounding, TellsWhatTheLibraryLaysOut) {
    DepthLabelInfo style;
    style.SetFont(L"Liberation Sans");
    style.SetPrecision(1);
    style.SetPresentation(DepthLabelInfo::LOWERED_DECIMALS);
    style.SetPlacement(DepthLabelInfo::WHOLE_PART);
    style.SetNoDecimalZeros(true);
    style.SetSignIsInverted(true);
    style.SetRotation(30.0);
    const json document = TextJson({"sounding", "12.34", "-7", "1e300", "--font", "Liberation Sans",
                                    "--precision", "1", "--presentation", "lowered-decimals", "--placement",
                                    "Whole Part", "--no-decimal-zeros", "--invert-sign", "--rotation", "30"});
    const double values[] = {12.34, -7, 1e300};
    ASSERT_EQ(std::size(values), document["soundings"].size());
    for (std::size_t i = 0; i < std::size(values); ++i) {
        const json& sounding = document["soundings"][i];
        const auto [whole, decimals] = TextRectComp()(style, values[i]);
        EXPECT_EQ(values[i], sounding["value"]);
        EXPECT_EQ("lowered decimals", sounding["presentation"]);
        EXPECT_EQ("whole part", sounding["placement"]);
        EXPECT_EQ(ToUtf8(whole.second), sounding["whole"]["text"]);
        EXPECT_EQ(ToUtf8(decimals.second), sounding["decimals"]["text"]);
        ExpectBox(whole.first, sounding["whole"]);
        ExpectBox(decimals.first, sounding["decimals"]);
    }
}

TEST(TextSounding, StyleInOneLine) {
    DepthLabelInfo style;
    const char* const line = "Arial,4,0,8,0,0,0,0,0,0,1,2,1,1,1,1,1";
    style.FromString(FromUtf8(line));
    const json sounding = TextJson({"sounding", "12.34", "--style", line})["soundings"][0];
    ExpectBox(TextRectComp()(style, 12.34).first.first, sounding["whole"]);
    EXPECT_EQ("lowered decimals", sounding["presentation"]);
    EXPECT_EQ("whole part", sounding["placement"]);
}

TEST(TextSounding, DryingHeightsAreUnderlinedOnRequest) {
    const auto isUnderlined = [](Arguments arguments) {
        arguments.insert(arguments.begin(), "sounding");
        return TextJson(arguments)["soundings"][0]["isUnderlined"].get<bool>();
    };
    EXPECT_TRUE(isUnderlined({"-1.25", "--underline-drying"}));
    EXPECT_FALSE(isUnderlined({"-1.25"}));
    EXPECT_FALSE(isUnderlined({"1.25", "--underline-drying"}));
    EXPECT_EQ(1u, Count(PictureOf({"sounding", "-1.25", "--underline-drying"}), "\"underline\""));
    EXPECT_EQ(0u, Count(PictureOf({"sounding", "1.25", "--underline-drying"}), "\"underline\""));
}

TEST(TextSounding, EachPresentationWithEachPlacement) {
    const json soundings = TextJson({"sounding", "12.34", "-1", "--each"})["soundings"];
    ASSERT_EQ(18u, soundings.size());
    EXPECT_EQ("in line", soundings[0]["presentation"]);
    EXPECT_EQ("decimal point", soundings[0]["placement"]);
    EXPECT_EQ("lowered decimals", soundings[8]["presentation"]);
    EXPECT_EQ("whole label", soundings[8]["placement"]);
    EXPECT_EQ(-1.0, soundings[9]["value"]);
    const std::string svg = PictureOf({"sounding", "12.34", "-1", "--each"});
    for (const char* const name : {">in line<", ">small decimals<", ">lowered decimals<", ">decimal point<",
                                   ">whole part<", ">whole label<"})
        EXPECT_EQ(2u, Count(svg, name)) << name;
}

TEST(TextSounding, DepthsMayBeginWithMinusAndPoint) {
    for (const auto& [arguments, values] :
         {std::pair(Arguments{"sounding", "-.5"}, std::vector<double>{-0.5}),
          {{"sounding", "-5", "-.25", "1", "-.125", ".5"}, {-5, -0.25, 1, -0.125, 0.5}},
          {{"sounding", "--precision", "1", "-.5e1", "--size", "3", "-1"}, {-5, -1}},
          {{"sounding", "--", "-.5", "1"}, {-0.5, 1}}}) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        Arguments withJson = arguments;
        withJson.insert(withJson.begin() + 1, "--json");
        const ProgramResult result = Text(withJson);
        ASSERT_EQ(0, result.exitCode) << result.error;
        const json document = json::parse(result.output);
        std::vector<double> read;
        for (const json& sounding : document["soundings"]) read.push_back(sounding["value"]);
        EXPECT_EQ(values, read);
    }
    EXPECT_THAT(Text({"sounding", "-.x"}).error, HasSubstr("'-.x' is no depth"));
    EXPECT_THAT(Text({"sounding", "--help"}).output, Not(HasSubstr("-.")));
}

TEST(TextSounding, RefusesWhatIsNone) {
    for (const Arguments& arguments : {Arguments{"sounding"},
                                       {"sounding", "-."},
                                       {"sounding", "-"},
                                       {"sounding", "deep"},
                                       {"sounding", "nan"},
                                       {"sounding", "1e999"},
                                       {"sounding", "1", "--precision", "-1"},
                                       {"sounding", "1", "--precision", "400"},
                                       {"sounding", "1", "--placement", "left"},
                                       {"sounding", "1", "--presentation", "3"},
                                       {"sounding", "1", "--each", "--placement", "0"},
                                       {"sounding", "1", "--picture", "t.gif"}}) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const ProgramResult result = Text(arguments);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("", result.output);
        EXPECT_NE("", result.error);
    }
}

TEST(TextJustifications, EverySampleAtEachJustificationAndRotation) {
    const std::string svg = PictureOf({"justifications", "--sample", "Liberation Sans=Gate", "--sample",
                                       "No Such Face 4711=Pegel", "--rotations", "0,90,-20"});
    for (const char* const text : {">Gate<", ">Pegel<"}) EXPECT_EQ(3u * 12, Count(svg, text)) << text;
    for (const char* const name :
         {">bottom left<", ">baseline right<", ">0\u00B0<", ">90\u00B0<", ">340\u00B0<"})
        EXPECT_EQ(2u, Count(svg, name)) << name;
    EXPECT_EQ(1u, Count(svg, ", since No Such Face 4711 is not installed<"));
    EXPECT_EQ(4u * 12, Count(PictureOf({"justifications"}), ">Sounding<"));
}

TEST(TextJustifications, SheetNotesASizeAtWhichHeightsOnTheBaselineDoNotFit) {
    for (const auto& [size, isNoted] : {std::pair("50", false), {"75", true}}) {
        const TemporaryFolder folder;
        const ProgramResult result = Text({"justifications", "--picture", ToUtf8(folder.File(L"t.svg")),
                                           "--sample", "Liberation Sans=Gate", "--size", size});
        EXPECT_EQ(0, result.exitCode);
        EXPECT_EQ(isNoted ? 1u : 0u, Count(result.error, "measure at a smaller size and multiply")) << size;
    }
}

TEST(TextJustifications, SheetOfNothingIsNotDrawn) {
    const TemporaryFolder folder;
    for (const Arguments& size : {Arguments{"--size", "0"}, {"--style", "Arial,0"}}) {
        Arguments arguments = {"justifications", "--picture", ToUtf8(folder.File(L"t.svg"))};
        arguments.insert(arguments.end(), size.begin(), size.end());
        const ProgramResult result = Text(arguments);
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.error, HasSubstr("at a size of 0 it is less than a thousandth high"));
        EXPECT_EQ(0u, folder.NumFiles());
    }
}

TEST(TextJustifications, RefusesWhatIsNone) {
    const auto refused = [](Arguments arguments) {
        arguments.insert(arguments.begin(), "justifications");
        const ProgramResult result = Text(arguments);
        EXPECT_EQ(2, result.exitCode);
        return result.error;
    };
    EXPECT_THAT(refused({}), HasSubstr("--picture"));
    EXPECT_THAT(refused({"--picture", "t.tif"}), HasSubstr("has to end in .svg"));
    for (const char* const sample : {"Arial", "=text", "Arial=", ""})
        EXPECT_THAT(refused({"--picture", "t.svg", "--sample", sample}),
                    HasSubstr("is no sample; write it as --sample 'FACE=TEXT'"));
    for (const char* const rotations : {"", "0,", "0,x"})
        EXPECT_THAT(refused({"--picture", "t.svg", "--rotations", rotations}), HasSubstr("is no angle"));
    std::string many = "0";
    for (int i = 0; i < 1000; ++i) many += ",90";
    EXPECT_THAT(refused({"--picture", "t.svg", "--rotations", many}), HasSubstr("too much for one picture"));
}
