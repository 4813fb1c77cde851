// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/SettingsText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/FontInUse.h"
#include "apps/chartutil/files/ColorTableFile.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/sheet/Sheet.h"
#include "apps/chartutil/sheet/geometry/GeometryWork.h"
#include "apps/chartutil/sheet/project/ProjectKeys.h"
#include "apps/chartutil/sheet/project/Soundings.h"
#include "apps/chartutil/sheet/scene/MapFrame.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <set>

namespace fs = std::filesystem;

namespace {

// Of a column at the right side of the map, in which nothing but panels stands.
constexpr double kColumn = 104, kGap = 6;

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// The words of a column's name: "depth" and "ft" of "Depth_ft".
std::set<std::string> WordsOf(const std::string& name) {
    std::set<std::string> words;
    std::string word;
    for (const char c : Lower(name) + ' ') {
        if (c >= 'a' && c <= 'z')
            word += c;
        else
            words.insert(std::exchange(word, {}));
    }
    return words;
}

UnitType UnitOf(const std::string& column) {
    constexpr struct {
        const char* word;
        UnitType::U_TYPE unit;
    } kWords[] = {{"ft", UnitType::FEET}, {"feet", UnitType::FEET}, {"foot", UnitType::FEET},
                  {"cm", UnitType::CM},   {"mm", UnitType::MM},     {"inches", UnitType::INCHES}};
    const std::set<std::string> words = WordsOf(column);
    for (const auto& [word, unit] : kWords)
        if (words.contains(word)) return unit;
    return UnitType::M;
}

// Heights by the column's name, or as nearly everything lies below what would be dry.
bool AreHeights(const FoundSoundings& found) {
    const std::set<std::string> words = WordsOf(found.depthColumn);
    const auto below = std::ranges::count_if(found.soundings, [](const Sounding& s) { return s.depth < 0; });
    const double share = static_cast<double>(below) / static_cast<double>(found.soundings.size());
    const bool isNamedSo =
        words.contains("elevation") || words.contains("height") || words.contains("altitude");
    return isNamedSo || share > 0.75;
}

WorldBox BoxOf(const std::vector<Sounding>& soundings) {
    WorldBox box;
    for (const Sounding& sounding : soundings) box.Update(sounding.place);
    return box;
}

// What the user or the file says of its coordinates, or what they look like; empty where nobody knows.
std::string SystemOfFile(const FoundSoundings& found, const std::string& said) {
    if (!said.empty()) return said;
    if (!found.system.empty()) return found.system;
    const WorldBox box = BoxOf(found.soundings);
    const bool isInRange = box.MinX() >= -180 && box.MaxX() <= 360 && box.MinY() >= -90 && box.MaxY() <= 90;
    const bool isNamedOtherwise =
        !found.xColumn.empty() && !Lower(found.xColumn).starts_with("lon") && found.xColumn.size() > 1;
    if (!isInRange || isNamedOtherwise) return {};
    if (found.xColumn.empty())
        PrintNote("the soundings look like longitudes and latitudes (EPSG:4326); if they are not, name their "
                  "coordinate system with --system");
    return "EPSG:4326";
}

bool CanBeDrawnIn(const std::string& system) {
    try {
        return !LoadGeometryModule().OpenSystem(system)->IsGeographic();
    } catch (const CommandError&) {
        throw;
    } catch (const std::runtime_error&) {
        return false; // such as one in feet
    }
}

std::string ChartSystem(const std::string& ofFile, const std::vector<Sounding>& soundings) {
    if (ofFile.empty() || CanBeDrawnIn(ofFile)) return ofFile;
    constexpr std::size_t kMost = 1000;
    std::vector<WorldPoint> points;
    for (std::size_t i = 0; i < soundings.size(); i += soundings.size() / kMost + 1)
        points.push_back(soundings[i].place);
    return SuitableSystem(ofFile, points);
}

// The first of these, times a power of ten, that is not below the number.
double RoundUp(double number, std::initializer_list<double> steps = {1, 2, 5, 10}) {
    const double power = std::pow(10, std::floor(std::log10(number)));
    for (const double step : steps)
        if (step * power >= number * (1 - 1e-9)) return step * power;
    return 10 * power;
}

// Levels as charts have them, as far as the depths go; closer ones where these would be too few.
std::vector<double> LevelsFor(double shoalest, double deepest) {
    constexpr double kOfCharts[] = {0,   2,   5,    10,   15,   20,   30,   50,   100,
                                    200, 500, 1000, 2000, 3000, 4000, 5000, 6000, 8000};
    constexpr std::size_t kFewest = 4;
    std::vector<double> levels;
    for (const double level : kOfCharts) // those of the shore are a tangle where the sea is deep
        if (level > shoalest && level < deepest && (level == 0 || level >= deepest / 150))
            levels.push_back(level);
    if (!(deepest - shoalest > 1e-3)) return {0};
    if (levels.size() >= kFewest) return levels;
    levels.clear();
    const double step = RoundUp((deepest - shoalest) / 7);
    for (double multiple = std::floor(shoalest / step) + 1; multiple * step < deepest; ++multiple)
        levels.push_back(multiple * step == 0 ? 0 : multiple * step);
    return levels;
}

std::uint32_t ColorRef(const RGBColor& color) {
    return static_cast<std::uint32_t>(static_cast<unsigned long>(color));
}

ContourDefinitionList ContoursFor(const std::vector<double>& levels) {
    ContourDefinitionList contours;
    for (const double level : levels) {
        ContourDefinitionList::ContourDefInfo info;
        info.level = level;
        info.lineWidth = level == 0 ? 0.2F : 0.13F;
        info.trueColor = ColorRef(level == 0 ? RGBColor(110, 104, 58) : RGBColor(74, 112, 146));
        info.annotate = true;
        (void)contours.Add(info);
    }
    return contours;
}

// Blue tints, the darker the shallower, that part the soundings into about thirds, and a green for what
// dries.
ColorTable ColorsFor(const std::vector<double>& levels, std::vector<double> depths) {
    ColorTable table;
    table.SetDefaultColor(ColorRef(RGBColor(198, 200, 140)));
    const auto levelAt = [&](double share) {
        const auto at = static_cast<std::ptrdiff_t>(share * static_cast<double>(depths.size() - 1));
        std::nth_element(depths.begin(), depths.begin() + at, depths.end());
        const double depth = depths[static_cast<std::size_t>(at)];
        double found = 0;
        for (const double level : levels)
            if (level > 0 && (found == 0 || level <= depth)) found = level;
        return found;
    };
    const double first = levelAt(0.3);
    double second = levelAt(0.65);
    for (const double level : levels)
        if (second <= first && level > first) second = level;
    table.AddEntry(0, ColorRef(RGBColor(150, 194, 222)));
    if (first > 0) table.AddEntry(first, ColorRef(RGBColor(192, 219, 238)));
    if (second > first) table.AddEntry(second, ColorRef(RGBColor(228, 240, 249)));
    return table;
}

// How far from soundings there is a surface, in millimetres: half the side of the smallest squares that lie
// beside each other where soundings are. Those along the lines of a survey are far apart from line to line.
double ReachFor(const std::vector<Sounding>& soundings, const WorldBox& data, double unitsPerMm) {
    constexpr double kSmallest = 2, kLargest = 64;
    for (double side = kSmallest; side < kLargest; side *= std::sqrt(2)) {
        std::set<std::pair<int, int>> squares;
        for (const Sounding& sounding : soundings)
            squares.emplace((sounding.place.X() - data.MinX()) / unitsPerMm / side,
                            (sounding.place.Y() - data.MinY()) / unitsPerMm / side);
        std::size_t beside = 0;
        for (const auto& [x, y] : squares) beside += squares.count({x + 1, y}) + squares.count({x, y + 1});
        constexpr double kMost = 2, kEnough = 0.75; // beside each square to its right and above it
        if (static_cast<double>(beside) >= kMost * kEnough * static_cast<double>(squares.size()))
            return side / 2;
    }
    return kLargest / 2;
}

double DegreesFor(double least) {
    constexpr double kSeconds[] = {1,   2,    5,    10,   15,   20,    30,    60,    120,   300,   600,
                                   900, 1200, 1800, 3600, 7200, 18000, 36000, 54000, 72000, 108000};
    for (const double seconds : kSeconds)
        if (seconds / 3600 >= least) return seconds / 3600;
    return 45;
}

std::wstring FaceOf() {
    TextInfo style;
    for (const wchar_t* const face : {L"Liberation Sans", L"DejaVu Sans", L"Noto Sans", L"Arial"}) {
        style.SetFont(face);
        if (FindFont(style).isInstalled) return face;
    }
    const std::wstring family = FindFont(style).family;
    return family.empty() ? L"Liberation Sans" : family;
}

std::string Today() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    char text[sizeof "YYYY-MM-DD"];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d", std::localtime(&now))};
}

// A settings file that explains itself. Its text is UTF-8, one byte a character.
class Writer {
public:
    void Begin(const wchar_t* section) { m_section = &m_file[section]; }

    /// With what the table says of the key, or for a key of the user's with this comment.
    void Put(const wchar_t* key, const std::string& value, std::string comment = {}) {
        std::string line = value;
        std::ranges::replace_if(
            line, [](char c) { return c == ';' || c == '\n' || c == '\r'; }, ' ');
        SectionKey& written = (*m_section)[key];
        written << SETTINGS::Widened(line);
        if (comment.empty()) comment = RemarkOn(m_section->GetName().String(), key);
        if (!comment.empty()) written.SetComments(SETTINGS::Widened(comment));
    }
    void Put(const wchar_t* key, double value) { Put(key, DecimalText(value)); }
    void Text(const std::string& prefix, const std::wstring& face, double size, int style = 0) {
        const auto name = [&](const char* key) { return FromUtf8(prefix + key); };
        Put(name("Font").c_str(), ToUtf8(face));
        Put(name("Size").c_str(), size);
        if (style != 0) Put(name("Style").c_str(), style);
    }

    const IniFile& File() const { return m_file; }

private:
    IniFile m_file;
    Section* m_section = nullptr;
};

// All that the settings say of these soundings.
class Proposal {
public:
    Proposal(const NewProject& wanted, const UserText& file) : m_face(FaceOf()) {
        const UserText& folder = wanted.folder;
        std::string name = fs::absolute(NativePath(folder)).lexically_normal().filename().string();
        if (name.empty())
            name = fs::absolute(NativePath(folder)).lexically_normal().parent_path().filename().string();
        m_title = name;
        m_project.xColumn = wanted.x;
        m_project.yColumn = wanted.y;
        m_project.depthColumn = wanted.depth;
        m_project.fileSystem = wanted.system;
        if (file.Empty()) return;
        m_found = ReadSoundings({file, {}, wanted.x, wanted.y, wanted.depth},
                                [](std::uint64_t, const std::string&) {});
        m_project.soundings = file;
        m_project.layer = m_found.layer;
        if (wanted.x.empty()) m_project.xColumn = m_found.xColumn;
        if (wanted.y.empty()) m_project.yColumn = m_found.yColumn;
        if (wanted.depth.empty()) m_project.depthColumn = m_found.depthColumn;
        m_project.unit = UnitOf(m_found.depthColumn);
        m_project.isDepthNegative = AreHeights(m_found);
        m_project.fileSystem = SystemOfFile(m_found, wanted.system);
        m_project.coordinateSystem = ChartSystem(m_project.fileSystem, m_found.soundings);
        m_found.soundings = {};
        m_soundings = ReadSoundings(m_project);
        for (const Sounding& sounding : m_soundings) m_depths.push_back(sounding.depth);
        ChoosePaper();
    }

    std::vector<double> Levels() const {
        if (m_depths.empty()) return LevelsFor(-1, 60);
        const auto [shoalest, deepest] = std::ranges::minmax_element(m_depths);
        return LevelsFor(*shoalest, *deepest);
    }

    ColorTable Colors() const {
        const std::vector<double> none = {0, 5, 10, 20};
        return ColorsFor(Levels(), m_depths.empty() ? none : m_depths);
    }

    std::string TitleText() const {
        return "%project name%\n%survey%\n\nScale %scale%\n" +
               std::string(m_project.coordinateSystem.empty() ? "" : "Coordinates %coordinate system%\n") +
               "Datum %vertical datum%\n"
               "Depths in metres, %sounding count% soundings\n"
               "Plotted %plot date%\n";
    }

    IniFile Settings(const std::string& soundings) const {
        Writer ini;
        WriteSheet(ini);
        WriteSoundings(ini, soundings);
        WriteSurface(ini);
        WriteContours(ini);
        WriteBorder(ini);
        WritePanels(ini);
        ini.Begin(L"Keywords");
        ini.Put(L"project name", m_title);
        ini.Put(L"survey", "Hydrographic survey", "what the title block says below the name");
        if (m_project.coordinateSystem.starts_with('+')) // which has no name
            ini.Put(L"coordinate system", "Mercator, WGS 84");
        ini.Put(L"vertical datum", "chart datum", "write which one");
        ini.Put(L"plot date", Today());
        return ini.File();
    }

private:
    // A2, upright or not: as the soundings get larger.
    void ChoosePaper() {
        WorldBox data = BoxOf(m_soundings);
        constexpr double kSmallest = 20; // metres, of which a chart can be made
        const WorldPoint middle = data.Center();
        data.Update(middle.X() - kSmallest / 2, middle.Y() - kSmallest / 2);
        data.Update(middle.X() + kSmallest / 2, middle.Y() + kSmallest / 2);
        double best = 0;
        for (const bool isLandscape : {true, false}) {
            Project tried = m_project;
            tried.margin = kMargin;
            tried.paperWidth = (isLandscape ? 594 : 420) - kColumn;
            tried.paperHeight = isLandscape ? 420 : 594;
            const MapFrame frame(tried, data);
            if (best > 0 && frame.Scale() >= best) continue;
            best = frame.Scale();
            m_isLandscape = isLandscape;
            tried.paperWidth += kColumn;
            tried.hasCentre = true;
            tried.centreX = middle.X() + kColumn / 2 * frame.UnitsPerMm();
            tried.centreY = middle.Y();
            tried.scale = best;
            m_project = tried;
        }
    }

    // Where charts leave out decimals.
    bool IsDeep() const {
        constexpr double kDecimalsUpTo = 31;
        const auto deep = std::ranges::count_if(m_depths, [](double depth) { return depth > kDecimalsUpTo; });
        return static_cast<std::size_t>(deep) * 2 > m_depths.size();
    }

    double UnitsPerMm() const { return m_project.scale > 0 ? m_project.scale / 1000 : 10; }

    void WriteSheet(Writer& ini) const {
        ini.Begin(L"Sheet");
        ini.Put(L"Title", m_title);
        ini.Put(L"Paper", m_isLandscape ? "A2 landscape" : "A2 portrait");
        ini.Put(L"Margin", kMargin);
        ini.Put(L"Scale", m_project.scale);
        if (!m_project.hasCentre) return;
        ini.Put(L"CentreX", std::round(m_project.centreX));
        ini.Put(L"CentreY", std::round(m_project.centreY));
    }

    void WriteSoundings(Writer& ini, const std::string& file) const {
        ini.Begin(L"Soundings");
        ini.Put(L"File", file);
        if (!m_project.layer.empty()) ini.Put(L"Layer", m_project.layer);
        if (m_found.isTable || m_soundings.empty()) {
            ini.Put(L"X", m_project.xColumn.empty() ? "1" : m_project.xColumn);
            ini.Put(L"Y", m_project.yColumn.empty() ? "2" : m_project.yColumn);
        }
        if (m_found.isTable || m_soundings.empty() || !m_project.depthColumn.empty())
            ini.Put(L"Depth", m_project.depthColumn.empty() ? "3" : m_project.depthColumn);
        ini.Put(L"Positive", m_project.isDepthNegative ? "Up" : "Down");
        ini.Put(L"Unit", ToUtf8(m_project.unit.AsString()));
        ini.Put(L"CoordinateSystem", m_project.coordinateSystem);
        const bool isOther = m_project.fileSystem != m_project.coordinateSystem;
        ini.Put(L"FileCoordinateSystem", isOther ? m_project.fileSystem : "");
        ini.Put(L"Label",
                ToUtf8(m_face) + ",1.8,0,8,250,0,0,0,0,4210752," + (IsDeep() ? "0" : "1") + ",2,1,1,0,1,0");
        ini.Put(L"Gap", 0.8);
    }

    void WriteSurface(Writer& ini) const {
        ini.Begin(L"Surface");
        ini.Put(L"ColorTable", "depths.col");
        ini.Put(L"CellSize", 0.8);
        const double reach =
            m_soundings.empty() ? 8 : ReachFor(m_soundings, BoxOf(m_soundings), UnitsPerMm());
        ini.Put(L"Reach", std::round(reach * 10) / 10);
        ini.Begin(L"Sun Illumination");
        ini.Put(L"SunIllumunationEnable", m_depths.size() >= 1000 ? "1" : "0");
        ini.Put(L"SunIllumunationAzimuth", 315);
        ini.Put(L"SunIllumunationElevation", 45);
        ini.Put(L"SunIllumunationContrast", 0.3);
        double exaggeration = 10;
        if (!m_depths.empty()) {
            const auto [shoalest, deepest] = std::ranges::minmax_element(m_depths);
            const WorldBox box = BoxOf(m_soundings);
            const double across = std::hypot(box.ExtentX(), box.ExtentY());
            exaggeration = 0.03 * across / std::max(*deepest - *shoalest, 1e-3);
        }
        ini.Put(L"Exaggeration", std::clamp(RoundUp(exaggeration), 1.0, 1000.0));
    }

    void WriteContours(Writer& ini) const {
        ini.Begin(L"Survey Limit");
        ini.Put(L"LineWidth", 0.1);
        ini.Put(L"LineStyle", "Dashed");
        ini.Put(L"LineTrueColor", ColorRef(RGBColor(128, 128, 128)));
        ini.Put(L"Enable", "0");
        ini.Begin(L"Contours");
        ini.Put(L"Levels", "levels.cdf");
        ini.Put(L"EnableContouring", "1");
        ini.Put(L"SmoothingWindow", 3);
        ini.Put(L"SmoothingPasses", 2);
        ini.Put(L"ContourLabelSpacing", RoundUp(70 * UnitsPerMm()));
        ini.Put(L"SuppressionLength", RoundUp(8 * UnitsPerMm()));
        ini.Put(L"LabelOrientation", "HighToLow");
        ini.Begin(L"Contour Labels");
        ini.Text("", m_face, 1.8, 2);
        ini.Put(L"TrueColor", ColorRef(RGBColor(54, 90, 122)));
    }

    void WriteBorder(Writer& ini) const {
        ini.Begin(L"Border");
        ini.Put(L"LineWidth", 0.15);
        ini.Put(L"LineTrueColor", "0");
        if (!m_project.coordinateSystem.empty()) WriteGraticule(ini);
        const double interval = RoundUp(50 * UnitsPerMm());
        ini.Begin(L"Map Grid");
        ini.Put(L"XInterval", interval);
        ini.Put(L"YInterval", interval);
        ini.Put(L"XMinorTicks", 5);
        ini.Put(L"YMinorTicks", 5);
        ini.Put(L"GridStyle", "POINTS,X_TICKS,Y_TICKS");
        ini.Put(L"TickSize", 2);
        ini.Put(L"MinorTickSize", 1);
        ini.Begin(L"Map Grid Line");
        ini.Put(L"LineWidth", 0.08);
        ini.Put(L"LineTrueColor", ColorRef(RGBColor(128, 128, 128)));
        ini.Put(L"Enable", "1");
        ini.Begin(L"Map Grid Labels");
        ini.Text("", m_face, 1.6);
    }

    void WriteGraticule(Writer& ini) const {
        constexpr double kDistance = 80; // mm from line to line, at least
        const double step = kDistance * UnitsPerMm();
        const WorldPoint centre(m_project.centreX, m_project.centreY);
        std::vector<WorldPoint> points = {
            centre, {centre.X() + step, centre.Y()}, {centre.X(), centre.Y() + step}};
        DoGeometry("coordinates", [&](const GeometryModule& geometry, const ShowShare&) {
            geometry.OpenSystem(m_project.coordinateSystem)->ToGeographic(points);
            return 0;
        });
        const double longitudes = std::fabs(std::remainder(points[1].X() - points[0].X(), 360));
        const double latitudes = std::fabs(points[2].Y() - points[0].Y());
        const double longitude = DegreesFor(std::isfinite(longitudes) ? longitudes : 10);
        const double latitude = DegreesFor(std::isfinite(latitudes) ? latitudes : 10);
        ini.Begin(L"Graticule");
        ini.Put(L"LonInterval", longitude);
        ini.Put(L"LatInterval", latitude);
        ini.Put(L"LatLonStyle", std::min(longitude, latitude) < 1.0 / 60 ? "1" : "0");
        ini.Put(L"DegMinSecSymbols", "1");
        ini.Put(L"TrailingHemisphereIndicator", "1");
        ini.Put(L"GridStyle", "1");
        ini.Put(L"GridTrueColor", ColorRef(RGBColor(120, 120, 120)));
        ini.Begin(L"Graticule Line");
        ini.Put(L"LineWidth", 0.08);
        ini.Put(L"LineTrueColor", ColorRef(RGBColor(120, 120, 120)));
        ini.Put(L"Enable", "1");
        ini.Begin(L"Graticule Labels");
        ini.Text("", m_face, 2);
    }

    // From the upper end of the column downwards.
    void WritePanels(Writer& ini) const {
        WorldBox any; // the map is where it is whatever is on it
        any.Update(0, 0);
        const MapFrame frame(m_project, any);
        const double width = kColumn - 2 * kGap, left = frame.Right() - kColumn + kGap;
        double top = m_project.paperHeight - frame.Top() - kGap;
        const auto place = [&](const wchar_t* name, double x, double panelWidth, double height) {
            ini.Begin(name);
            ini.Put(L"PosX", std::round(x));
            ini.Put(L"PosY", std::round(top - height));
            ini.Put(L"Width", std::round(panelWidth));
            ini.Put(L"Height", std::round(height));
        };
        const char* const line = "0.15,0,Solid Line,0,1";
        constexpr double kTitle = 60, kScale = 36, kNorth = 44;
        place(L"Title Block", left, width, kTitle);
        ini.Put(L"Layout", "title-block.txt");
        ini.Text("Text.", m_face, 2.2);
        ini.Text("Heading.", m_face, 5, 1);
        ini.Text("Subheading.", m_face, 3);
        ini.Put(L"Frame", line);
        top -= kTitle + kGap;
        place(L"Scale Bar", left, width, kScale);
        ini.Text("Text.", m_face, 2);
        ini.Text("Heading.", m_face, 3);
        ini.Put(L"Frame", line);
        top -= kScale + kGap;
        const double rows = static_cast<double>(Levels().size()) + Colors().NumEntries() + 1;
        const double legend = std::max(kNorth, 18 + rows * 4.2);
        place(L"Legend", left, width, legend);
        ini.Text("Text.", m_face, 2.2);
        ini.Text("Heading.", m_face, 2.6, 1);
        ini.Put(L"Frame", line);
        if (m_project.coordinateSystem.empty()) return; // nobody knows where north is
        top -= legend + kGap;
        place(L"North Arrow", left + width / 2 - 12, 24, kNorth);
        ini.Text("Text.", m_face, 2.2);
        ini.Text("Heading.", m_face, 3.5, 1);
    }

    static constexpr double kMargin = 10;

    std::wstring m_face;
    std::string m_title;
    FoundSoundings m_found; ///< what was found of the file, without its soundings
    Project m_project;
    bool m_isLandscape = true;
    std::vector<Sounding> m_soundings; ///< as on the chart
    std::vector<double> m_depths;
};

// Files that go again when not all of them could be made.
class NewFiles {
public:
    explicit NewFiles(const UserText& folder) : m_folder(NativePath(folder)) {
        m_isFolderNew = fs::create_directories(m_folder, m_error);
        if (m_error)
            throw CommandError(ExitCode::IO_ERROR, folder.Utf8() + ": the folder cannot be made: " +
                                                       m_error.message() + "; name another one");
    }
    ~NewFiles() {
        if (m_isComplete) return;
        for (const UserText& file : m_files) fs::remove(NativePath(file), m_error);
        if (m_isFolderNew) fs::remove(m_folder, m_error);
    }
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;

    const UserText& Add(const std::string& name) { return m_files.emplace_back((m_folder / name).string()); }
    std::vector<UserText> Complete() {
        m_isComplete = true;
        return m_files;
    }

private:
    fs::path m_folder;
    std::vector<UserText> m_files;
    std::error_code m_error;
    bool m_isFolderNew = false;
    bool m_isComplete = false;
};

// A layer of several files stays where it is.
bool IsOneFile(const UserText& path) {
    const std::string ending = Lower(NativePath(path).extension().string());
    constexpr const char* kMany[] = {".shp", ".tab", ".mif", ".gdb"};
    return !fs::is_directory(NativePath(path)) && std::ranges::find(kMany, ending) == std::end(kMany);
}

} // namespace

std::vector<UserText> MakeProject(const NewProject& project) {
    const UserText &folder = project.folder, &soundings = project.soundings;
    const bool isInput = IsStandardStream(soundings);
    const std::string name = soundings.Empty() || isInput ? "soundings.csv" : FileNameOf(soundings);
    const fs::path target = NativePath(folder);
    std::error_code none;
    const bool isThere = !soundings.Empty() && fs::equivalent(NativePath(soundings), target / name, none);
    const bool isCopied = !soundings.Empty() && !isThere && !isInput && IsOneFile(soundings);
    std::vector<std::string> names = {"project.ini", "depths.col", "levels.cdf", "title-block.txt"};
    if (isCopied || isInput) names.push_back(name);
    for (const std::string& made : names)
        if (const UserText path((target / made).string()); PathExists(path))
            throw CommandError(ExitCode::CHECK_FAILED,
                               path.Utf8() + " is there already and stays as it is; name another folder");

    NewFiles files(folder);
    if (isInput) WriteFile(files.Add(name), ReadFile(soundings));
    const Proposal proposal(project, isInput ? UserText((target / name).string()) : soundings);
    if (isCopied) fs::copy_file(NativePath(soundings), NativePath(files.Add(name)));
    SaveColorTable(proposal.Colors(), files.Add("depths.col"));
    const UserText& levels = files.Add("levels.cdf");
    if (!ContoursFor(proposal.Levels()).Save(levels.Wide().c_str())) WriteFile(levels, "");
    WriteFile(files.Add("title-block.txt"), proposal.TitleText());
    const bool isByName = soundings.Empty() || isCopied || isThere || isInput;
    SaveSettings(proposal.Settings(isByName ? name : fs::absolute(NativePath(soundings)).string()),
                 files.Add("project.ini"));
    return files.Complete();
}
