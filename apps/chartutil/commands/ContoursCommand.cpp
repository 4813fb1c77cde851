#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/drawing/Picture.h"
#include "apps/chartutil/files/ColorTableFile.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>
#include <set>

namespace {

using Json = nlohmann::ordered_json;
using Info = ContourDefinitionList::ContourDefInfo;

constexpr RGBColor kBlack(0, 0, 0);
constexpr RGBColor kGrey(96, 96, 96);

const std::vector<std::string> kLineTypes = {"continuous", "dashed", "dotted"};

const std::string& LineTypeName(int type) {
    return kLineTypes[type >= 0 && type < 3 ? static_cast<std::size_t>(type) : 0];
}

std::string NumberOf(double value, int digits = 10) { return ToUtf8(NumberText::FromGeneral(value, digits)); }

std::string SectionName(int position) { return "Contour(" + std::to_string(position) + ")"; }

// --- the table, the document and the legend ---

struct Output {
    std::string picture;
    bool json = false;
};

// A line for each contour, as it looks on the chart. Widths are drawn six pixels to a unit.
Picture Legend(const ContourDefinitionList& list, const std::string& title) {
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
        const Info& info = list[i];
        const RGBColor color(info.trueColor);
        const double y = kTop + kRow * i + kRow / 2 + 0.5; // thin lines fill whole pixels
        const double width = std::isfinite(info.lineWidth)
                                 ? std::clamp(static_cast<double>(info.lineWidth) * 6, 1.0, 14.0)
                                 : 1.0;
        const std::string dashes[] = {"", NumberOf(6 + 2 * width) + " " + NumberOf(3 + 1.5 * width),
                                      NumberOf(width) + " " + NumberOf(2 + 1.5 * width)};
        const std::string& dash = dashes[info.lineType >= 0 && info.lineType < 3 ? info.lineType : 0];
        const std::string level = NumberOf(info.level, 6);
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
                     LineTypeName(info.lineType) + ", " + NumberOf(static_cast<double>(info.lineWidth), 3),
                     11, kGrey);
    }
    if (isCut)
        picture.Text(kLeft, kTop + kRow * rows + kRow / 2 + 4,
                     "and " + std::to_string(list.NumContours() - rows) + " more", 12, kGrey);
    return picture;
}

void Show(const ContourDefinitionList& list, const std::string& path, const Output& output) {
    if (!output.picture.empty()) Legend(list, path.substr(path.find_last_of("/\\") + 1)).Save(output.picture);
    Json levels = Json::array();
    std::size_t width = 5;
    for (int i = 0; i < list.NumContours(); ++i) width = std::max(width, NumberOf(list[i].level).size());
    if (!output.json)
        std::cout << Colored(std::string(width - 5, ' ') + "level  colour   DXF  line          width  label",
                             "1")
                  << '\n';
    for (int i = 0; i < list.NumContours(); ++i) {
        const Info& info = list[i];
        const RGBColor color(info.trueColor);
        const int index = DXFColor(color).Index();
        if (output.json) {
            levels.push_back({{"level", info.level},
                              {"color", HexText(color)},
                              {"trueColor", info.trueColor},
                              {"dxf", index},
                              {"lineType", LineTypeName(info.lineType)},
                              {"lineWidth", std::stod(NumberOf(static_cast<double>(info.lineWidth), 7))},
                              {"annotate", info.annotate}});
            continue;
        }
        const std::string level = NumberOf(info.level);
        const std::string dxf = std::to_string(index);
        const std::string lineWidth = NumberOf(static_cast<double>(info.lineWidth), 6);
        const std::string& type = LineTypeName(info.lineType);
        std::cout << std::string(width - level.size(), ' ') << level << "  " << OnColor(HexText(color), color)
                  << "  " << std::string(3 - dxf.size(), ' ') << dxf << "  " << type
                  << std::string(12 - type.size(), ' ')
                  << std::string(lineWidth.size() < 7 ? 7 - lineWidth.size() : 0, ' ') << lineWidth
                  << (info.annotate ? "  yes" : "") << '\n';
    }
    if (output.json) PrintJson({{"file", path}, {"contours", levels}});
}

// --- reading and writing ---

// The store's own reading of a file, for what the list does not tell.
IniFile OpenSettings(const std::string& path) {
    IniFile file;
    if (const ErrorString result = file.Open(FromUtf8(path)); !result)
        throw CommandError(ExitCode::IO_ERROR, path + ": " + ToUtf8(result.Text()));
    return file;
}

void List(const std::string& path, const Output& output) {
    ContourDefinitionList list;
    if (!list.Load(FromUtf8(path).c_str())) {
        OpenSettings(path);
        throw CommandError(ExitCode::CHECK_FAILED,
                           path + ": there is no section [Contour(0)] with keys, so no contour; "
                                  "'chartutil contours range' makes a file with some");
    }
    Show(list, path, output);
}

void SaveAndShow(const ContourDefinitionList& list, const std::string& path, const Output& output) {
    if (!list.Save(FromUtf8(path).c_str()))
        throw CommandError(ExitCode::IO_ERROR,
                           path + ": cannot be written, a file there is as it was; check that the "
                                  "folder exists and takes new files");
    Show(list, path, output);
}

struct Style {
    std::string color = "#000000";
    std::string lineType = "continuous";
    float width = 0;
    int labelEvery = 0;
};

void Range(const std::string& path, double from, double to, double step, const Style& style,
           const Output& output) {
    const RGBColor color = RequireColor(style.color);
    const auto type = std::find(kLineTypes.begin(), kLineTypes.end(), style.lineType) - kLineTypes.begin();
    ContourDefinitionList list;
    if (!(style.width <= 1e6f)) throw CommandError(ExitCode::WRONG_USE, "--width has to be 0 to 1000000");
    if (!(from < to)) throw CommandError(ExitCode::WRONG_USE, "--from has to be below --to");
    if (!(step > 0)) throw CommandError(ExitCode::WRONG_USE, "--step has to be above 0");
    if (!list.Generate(from, to, step))
        throw CommandError(ExitCode::WRONG_USE,
                           "that range has more than " +
                               std::to_string(+ContourDefinitionList::MAX_GENERATED) +
                               " levels, or levels that the step does not change; take a larger --step");
    for (int i = 1; i < list.NumContours(); ++i)
        if (NumberText::FromFixed(list[i - 1].level) == NumberText::FromFixed(list[i].level))
            throw CommandError(ExitCode::WRONG_USE,
                               "a file keeps six digits after the point, by which not all "
                               "of these levels differ; take a larger --step");
    if (list.NumContours() == 0)
        throw CommandError(ExitCode::WRONG_USE, "there is no multiple of --step between --from and --to");
    for (int i = 0; i < list.NumContours(); ++i) {
        Info info = list[i];
        info.lineWidth = style.width;
        info.lineType = static_cast<int>(type);
        info.trueColor = static_cast<std::uint32_t>(static_cast<unsigned long>(color));
        info.annotate =
            style.labelEvery > 0 && std::fmod(std::round(info.level / step), style.labelEvery) == 0;
        list.Set(i, info);
    }
    SaveAndShow(list, path, output);
}

void FromTable(const std::string& path, const std::string& tablePath, bool invert, const Output& output) {
    bool complete = true;
    const DXFColorTable table = OpenColorTable(tablePath, complete);
    if (!complete)
        throw CommandError(ExitCode::CHECK_FAILED,
                           tablePath + ": not all of the table could be read; mend what is named above");
    ContourDefinitionList list;
    if (!list.Generate(table, invert))
        throw CommandError(ExitCode::CHECK_FAILED,
                           tablePath + ": the table has no entries, so there are no levels");
    SaveAndShow(list, path, output);
}

// --- check ---

// What is odd in a file, each with the section that it is in.
class Checker {
public:
    explicit Checker(const IniFile& file) : m_file(file) { Check(); }
    const std::vector<std::string>& Findings() const { return m_findings; }
    int NumContours() const { return m_count; }

private:
    void Check() {
        while (m_file[FromUtf8(SectionName(m_count))].NumKeys() > 0)
            CheckContour(m_file[FromUtf8(SectionName(m_count++))]);
        const std::string next = SectionName(m_count);
        for (int i = 0; i < m_file.NumSections(); ++i) {
            const std::string name = ToUtf8(m_file[i].GetName().String());
            if (m_numbered.count(&m_file[i])) continue;
            if (!icompareW(m_file[i].GetName().String().substr(0, 8), L"Contour("))
                Add(name, "is no contour and not read");
            else if (icompareW(m_file[i].GetName().String(), FromUtf8(next)))
                Add(name, "has no keys, so reading ends here");
            else
                Add(name,
                    "is not read: there is no [" + next + "] with keys, and reading ends at the first gap");
        }
        if (m_count == 0) Add(next, "is missing or has no keys: the file has no contour");
    }

    void CheckContour(const Section& section) {
        m_numbered.insert(&section);
        const std::string name = ToUtf8(section.GetName().String());
        CheckKeys(section, name);
        double level = 0;
        if (CheckNumber(section, name, L"Level", level) || section.HasKey(L"Level")) {
            if (m_count > 1 && level == m_lastLevel)
                Add(name, "has the level of the contour before, " + NumberOf(level));
            else if (m_count > 1 && level < m_lastLevel)
                Add(name,
                    "has the level " + NumberOf(level) + " below the one before, " + NumberOf(m_lastLevel));
            m_lastLevel = level;
        } else {
            Add(name, "has no \"Level\", which is read as 0");
        }
        float width = 0;
        if (CheckNumber(section, name, L"LineWidth", width) && width < 0)
            Add(name, "has a \"LineWidth\" below 0");
        bool annotate = false;
        CheckNumber(section, name, L"Annotate", annotate);
        CheckColors(section, name);
        const std::wstring& type = section[L"LineType"].GetValue();
        if (section.HasKey(L"LineType") &&
            !std::any_of(kLineTypes.begin(), kLineTypes.end(),
                         [&](const std::string& known) { return icompareW(FromUtf8(known), type); }))
            Add(name, "has the line type \"" + ToUtf8(type) +
                          "\", which is read as continuous; known are CONTINUOUS, "
                          "DASHED and DOTTED");
    }

    void CheckKeys(const Section& section, const std::string& name) {
        constexpr std::wstring_view kKnown[] = {L"Level",    L"Color",     L"TrueColor",
                                                L"LineType", L"LineWidth", L"Annotate"};
        for (int i = 0; i < section.NumKeys(); ++i) {
            const SectionKey& key = section[i];
            if (!key.IsValid()) continue; // a comment
            const std::string text = "the key \"" + ToUtf8(key.GetName().String()) + "\"";
            if (std::none_of(std::begin(kKnown), std::end(kKnown), [&](std::wstring_view known) {
                    return icompareW(known, key.GetName().String());
                }))
                Add(name, "has " + text + ", which is not read");
            else if (&section[key.GetName().String()] != &key)
                Add(name, "has " + text + " again; the first one counts");
        }
    }

    void CheckColors(const Section& section, const std::string& name) {
        int index = 0;
        const bool hasIndex = CheckNumber(section, name, L"Color", index);
        if (hasIndex && (index < 0 || index > 255))
            Add(name, "has a \"Color\" outside 0 to 255, which is read as 0");
        unsigned long color = 0;
        const bool hasColor = CheckNumber(section, name, L"TrueColor", color);
        if (hasIndex && hasColor && DXFColor(RGBColor(color)).Index() != index)
            Add(name, "has the \"Color\" " + std::to_string(index) +
                          ", but nearest to its \"TrueColor\" is " +
                          std::to_string(DXFColor(RGBColor(color)).Index()));
        if (!section.HasKey(L"Color") && !section.HasKey(L"TrueColor"))
            Add(name, "has no colour, so it is black");
    }

    // Whether the key is there and reads as a number; what else stands there is a finding.
    template <typename Number>
    bool CheckNumber(const Section& section, const std::string& name, const wchar_t* key, Number& value) {
        if (!section.HasKey(key)) return false;
        const std::wstring& text = section[key].GetValue();
        const bool isNumber = NumberText::Extract(text, value);
        const bool isWhole =
            std::is_floating_point_v<Number> ? NumberText::IsDecimal(text) : NumberText::IsInteger(text);
        if (!isNumber || !isWhole)
            Add(name, "has \"" + ToUtf8(text) + "\" for \"" + ToUtf8(key) + "\", which is read as " +
                          NumberOf(static_cast<double>(value)));
        return isNumber;
    }

    void Add(const std::string& section, const std::string& what) {
        m_findings.push_back("[" + section + "] " + what);
    }

    const IniFile& m_file;
    int m_count = 0;
    double m_lastLevel = 0;
    std::set<const Section*> m_numbered;
    std::vector<std::string> m_findings;
};

void Check(const std::string& path, const Output& output) {
    const IniFile file = OpenSettings(path);
    const Checker checker(file);
    if (!output.picture.empty()) {
        ContourDefinitionList list;
        list.Load(FromUtf8(path).c_str());
        Legend(list, path.substr(path.find_last_of("/\\") + 1)).Save(output.picture);
    }
    if (output.json) {
        PrintJson({{"file", path}, {"contours", checker.NumContours()}, {"findings", checker.Findings()}});
    } else {
        for (const std::string& finding : checker.Findings())
            std::cout << Printable(path) << ": " << Printable(finding) << '\n';
        if (checker.Findings().empty())
            std::cout << Printable(path) << ": " << checker.NumContours() << " contours, nothing odd\n";
    }
    if (!checker.Findings().empty()) throw CommandExit{ExitCode::CHECK_FAILED};
}

} // namespace

void AddContoursCommand(CLI::App& program) {
    CLI::App* contours =
        program.add_subcommand("contours", "Contour definition files: levels and their lines");
    contours->require_subcommand(1);
    struct Options {
        std::string file, table;
        double from = 0, to = 0, step = 0;
        Style style;
        Output output;
        bool invert = false;
    };
    const auto options = std::make_shared<Options>();
    const auto add = [&](const char* name, const char* what, const char* fileText, auto action) {
        CLI::App* command = contours->add_subcommand(name, what);
        command->add_option("FILE", options->file, fileText)->required();
        command->add_option("--picture", options->output.picture,
                            "Also draw a legend into this .svg or .png file");
        command->add_flag("--json", options->output.json, "Print a JSON document");
        command->callback([=] {
            if (!options->output.picture.empty()) Picture::CheckEnding(options->output.picture);
            action(*options);
        });
        return command;
    };

    add("list", "The contours of a file", "The contour definition file (.cdf)",
        [](const Options& o) { List(o.file, o.output); })
        ->footer("Examples:\n  chartutil contours list pensacola-bay.cdf\n"
                 "  chartutil contours list pensacola-bay.cdf --picture legend.png");

    CLI::App* range =
        add("range", "Make a file with the multiples of a step", "The contour definition file to write",
            [](const Options& o) { Range(o.file, o.from, o.to, o.step, o.style, o.output); });
    range->add_option("--from", options->from, "The lowest level")->required();
    range->add_option("--to", options->to, "The highest level")->required();
    range->add_option("--step", options->step, "The interval; levels are its multiples")->required();
    range->add_option("--color", options->style.color, "The lines' colour, '#RRGGBB' or R,G,B")
        ->capture_default_str();
    range->add_option("--line-type", options->style.lineType, "continuous, dashed or dotted")
        ->check(CLI::IsMember(kLineTypes))
        ->capture_default_str();
    range->add_option("--width", options->style.width, "The lines' width")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    range
        ->add_option("--label-every", options->style.labelEvery,
                     "Label the levels that are multiples of so many steps")
        ->check(CLI::NonNegativeNumber);
    range->footer(
        "Each level is the one before plus the step, so rounding decides whether the highest is reached:\n"
        "0 to 0.3 by 0.1 ends at 0.2.\n\nExamples:\n"
        "  chartutil contours range depths.cdf --from 0 --to 20 --step 2 --label-every 5\n"
        "  chartutil contours range depths.cdf --from -5 --to 5 --step 0.5 --color '#1B75B0' --width 0.25");

    CLI::App* fromTable = add("from-table", "Make a file with a contour for each entry of a colour table",
                              "The contour definition file to write",
                              [](const Options& o) { FromTable(o.file, o.table, o.invert, o.output); });
    fromTable->add_option("TABLE", options->table, "The colour table (.col)")->required();
    fromTable->add_flag("--invert", options->invert,
                        "255 minus the colour reference; only pure reds become their complement");
    fromTable->footer("Examples:\n  chartutil contours from-table depths.cdf depths.col\n"
                      "  chartutil contours from-table depths.cdf depths.col --picture legend.svg");

    add("check", "Whether a file says what its reader will understand", "The contour definition file (.cdf)",
        [](const Options& o) { Check(o.file, o.output); })
        ->footer("Told are gaps in the numbers, levels out of order or equal, keys and line types that are "
                 "not known,\n"
                 "numbers that are none and colours that do not fit each other. The exit code is 1 when "
                 "there is any.\n\n"
                 "Examples:\n  chartutil contours check pensacola-bay.cdf\n  chartutil contours check "
                 "pensacola-bay.cdf --json");
}
