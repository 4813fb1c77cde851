// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/Soundings.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/TableLines.h"
#include "apps/chartutil/sheet/geometry/GeometryWork.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <optional>

namespace {

std::string Lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

bool IsTable(const UserText& path) {
    const std::string ending = Lower(NativePath(path).extension().string());
    constexpr const char* kEndings[] = {"", ".csv", ".tsv", ".txt", ".xyz", ".dat", ".asc", ".pts"};
    return std::ranges::find(kEndings, ending) != std::end(kEndings);
}

// What is beyond is a mark for "nothing", or a fault.
bool IsOnEarth(const Sounding& sounding) {
    constexpr double kFarthest = 1e9, kDeepest = 1e6;
    return std::fabs(sounding.place.X()) <= kFarthest && std::fabs(sounding.place.Y()) <= kFarthest &&
           std::fabs(sounding.depth) <= kDeepest;
}

class Table {
public:
    Table(const SoundingSource& source, const TakeFault& fault)
        : m_source(source), m_fault(fault), m_lines(source.path, ',') {}

    FoundSoundings Read() {
        m_lines.ByteOrderMark();
        bool isFirst = true;
        for (std::string_view line = m_lines.Next(); !line.empty(); line = m_lines.Next()) {
            const std::size_t begin = line.find_first_not_of(" \t\r\n");
            if (begin == std::string_view::npos || line[begin] == '#') continue;
            if (isFirst) m_separator = SeparatorOf(line);
            if (isFirst) m_lines.SetSeparator(m_separator);
            m_separator == ' ' ? m_fields.CutAtBlanks(line) : m_fields.Cut(line, m_separator);
            if (std::exchange(isFirst, false) && FindColumns()) continue;
            Add();
            if (m_found.soundings.size() == kSample) Reserve();
        }
        m_found.isTable = true;
        return std::move(m_found);
    }

private:
    static constexpr std::size_t kSample = 1000;

    static char SeparatorOf(std::string_view line) {
        for (const char separator : {'\t', ';', ','})
            if (std::ranges::count(line, separator) >= 2) return separator;
        return ' ';
    }

    // Room for all, so that growing takes no more memory than the soundings do.
    void Reserve() {
        const double perSounding = static_cast<double>(m_lines.Position()) / kSample;
        m_found.soundings.reserve(
            static_cast<std::size_t>(static_cast<double>(m_lines.Size()) / perSounding * 1.05));
    }

    // Without quotes round it, and with a comma where there is no other way to read one.
    bool Number(std::size_t column, double& number) const {
        if (column >= m_fields.items.size()) return false;
        std::string_view text = m_fields.items[column];
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        if (ParseNumber(text, number)) return true;
        std::string plain = Unquoted(text.substr(0, 100));
        if (m_separator != ',') std::ranges::replace(plain, ',', '.');
        return ParseNumber(plain, number);
    }

    // Whether the line that was cut is a header.
    bool FindColumns() {
        double ignored = 0;
        std::size_t numbers = 0;
        for (std::size_t i = 0; i < m_fields.items.size(); ++i) numbers += Number(i, ignored) ? 1 : 0;
        const bool isHeader = numbers < std::min<std::size_t>(m_fields.items.size(), 3);
        std::vector<std::string> names;
        if (isHeader)
            for (const std::string_view field : m_fields.items) names.push_back(Unquoted(field));
        const std::initializer_list<const char*> x = {"easting", "east", "x",        "e",
                                                      "lon",     "long", "longitude"},
                                                 y = {"northing", "north", "y", "n", "lat", "latitude"},
                                                 depth = {"depth",     "sounding", "z",
                                                          "elevation", "height",   "value"};
        m_columns[0] = Find(m_source.xColumn, names, x, 0, "X", m_found.xColumn);
        m_columns[1] = Find(m_source.yColumn, names, y, 1, "Y", m_found.yColumn);
        m_columns[2] = Find(m_source.depthColumn, names, depth, 2, "Depth", m_found.depthColumn);
        return isHeader;
    }

    std::size_t Find(const std::string& asked, const std::vector<std::string>& names,
                     std::initializer_list<const char*> usual, std::size_t position, const char* key,
                     std::string& taken) const {
        const auto take = [&](std::size_t index) {
            if (index < names.size()) taken = names[index];
            return index;
        };
        if (!asked.empty()) {
            const auto found = std::ranges::find(names, asked);
            if (found != names.end()) return take(static_cast<std::size_t>(found - names.begin()));
            std::size_t number = 0;
            const auto [stop, error] = std::from_chars(asked.data(), asked.data() + asked.size(), number);
            if (error == std::errc() && stop == asked.data() + asked.size() && number > 0)
                return take(number - 1);
            Refuse("there is no column '" + asked + "'", names, key);
        }
        if (names.empty()) return position;
        for (const char* const name : usual)
            for (std::size_t i = 0; i < names.size(); ++i)
                if (WordOf(names[i]) == name) return take(i);
        // Of three columns depth is the one that is left, in whatever language.
        constexpr std::size_t kAll = 3;
        if (position == 2 && names.size() == kAll && m_columns[0] != m_columns[1])
            return take(kAll - m_columns[0] - m_columns[1]);
        Refuse("no column has a usual name for " + std::string(key), names, key);
    }

    // "depth" of "Depth (m)".
    static std::string WordOf(const std::string& name) {
        const std::string lower = Lower(name);
        const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
        return {lower.begin(), std::ranges::find_if_not(lower, isLetter)};
    }

    [[noreturn]] void Refuse(const std::string& what, const std::vector<std::string>& names,
                             const std::string& key) const {
        std::string all;
        for (const std::string& name : names) all += (all.empty() ? "" : ", ") + name;
        constexpr std::size_t kLongest = 200;
        throw CommandError(ExitCode::CHECK_FAILED,
                           m_source.path.Utf8() + ':' + std::to_string(m_lines.LineNumber()) + ": " + what +
                               "; write in [Soundings], or with --" + Lower(key) +
                               " of 'chartutil init', which one is " + key +
                               (all.empty() ? ", by its number" : ", one of " + all.substr(0, kLongest)));
    }

    void Add() {
        std::array<double, 3> values = {};
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (Number(m_columns[i], values[i])) continue;
            const std::size_t column = m_columns[i];
            constexpr std::size_t kLongest = 40;
            m_fault(m_lines.LineNumber(),
                    column < m_fields.items.size()
                        ? "'" + Unquoted(m_fields.items[column].substr(0, kLongest)) + "' is no number"
                        : "there is no column " + std::to_string(column + 1));
            return;
        }
        const Sounding sounding{{values[0], values[1]}, values[2]};
        if (IsOnEarth(sounding))
            m_found.soundings.push_back(sounding);
        else
            m_fault(m_lines.LineNumber(), "the place or the depth is far beyond any on earth");
    }

    const SoundingSource& m_source;
    const TakeFault& m_fault;
    TableLines m_lines;
    TableFields m_fields;
    char m_separator = ',';
    std::array<std::size_t, 3> m_columns = {0, 1, 2};
    FoundSoundings m_found;
};

FoundSoundings ReadLayer(const SoundingSource& source, const TakeFault& fault) {
    const std::error_code error = FILES::Reader(source.path.Wide()).Error();
    if (error && error != std::errc::is_a_directory) ThrowNotReadable(source.path, error);
    FoundSoundings found;
    const auto take = [&](const Sounding& sounding) {
        const bool isNumber = std::isfinite(sounding.place.X()) && std::isfinite(sounding.place.Y()) &&
                              std::isfinite(sounding.depth);
        if (isNumber && IsOnEarth(sounding))
            found.soundings.push_back(sounding);
        else
            fault(0, "the place or the depth of a point is far beyond any on earth");
    };
    const FoundLayer layer =
        DoGeometry("the soundings", [&](const GeometryModule& geometry, const ShowShare& show) {
            return geometry.ReadPoints({source.path.Utf8(), source.layer, source.depthColumn}, take, show);
        });
    for (std::uint64_t i = 0; i < layer.withoutDepth; ++i) fault(0, "a point has no depth");
    found.layer = layer.name;
    found.depthColumn = layer.depth;
    found.system = layer.system;
    return found;
}

WorldBox BoxOf(const std::vector<Sounding>& soundings) {
    WorldBox box;
    for (const Sounding& sounding : soundings) box.Update(sounding.place);
    return box;
}

bool LooksGeographic(const WorldBox& box) {
    return box.MinX() >= -180 && box.MaxX() <= 360 && box.MinY() >= -90 && box.MaxY() <= 90;
}

// How coordinates of the file have to be read, and the end of the command where the chart would be wrong.
class Systems {
public:
    Systems(const Project& project, const FoundSoundings& found)
        : m_project(project), m_file(!project.fileSystem.empty() ? project.fileSystem : found.system) {}

    void Bring(std::vector<Sounding>& soundings) const {
        const std::string& chart = m_project.coordinateSystem;
        const bool isGeographic = !m_file.empty() && Open(L"FileCoordinateSystem", m_file)->IsGeographic();
        if (chart.empty()) {
            if (isGeographic || (m_file.empty() && LooksGeographic(BoxOf(soundings))))
                Refuse(L"CoordinateSystem",
                       "the soundings have longitudes and latitudes, which no chart can be drawn in; write " +
                           Suitable(soundings) +
                           (m_file.empty() ? ", and FileCoordinateSystem = EPSG:4326" : ""));
            if (!m_file.empty())
                Refuse(L"CoordinateSystem", "there is none; write that of the soundings, " + m_file);
            return;
        }
        if (Open(L"CoordinateSystem", chart)->IsGeographic())
            Refuse(L"CoordinateSystem", "'" + chart +
                                            "' has longitudes and latitudes, which no chart can be "
                                            "drawn in; write " +
                                            Suitable(soundings) +
                                            (m_file.empty() ? ", and FileCoordinateSystem = " + chart : ""));
        if (m_file.empty() && LooksGeographic(BoxOf(soundings)) && soundings.size() > 1)
            Refuse(L"FileCoordinateSystem",
                   "the soundings look like longitudes and latitudes; write EPSG:4326 if they are");
        if (m_file.empty() || m_file == chart) return;
        DoGeometry("coordinates", [&](const GeometryModule& geometry, const ShowShare& show) {
            geometry.Transform(m_file, chart, soundings, show);
            return 0;
        });
    }

private:
    std::unique_ptr<CoordinateSystem> Open(const wchar_t* key, const std::string& definition) const {
        try {
            return LoadGeometryModule().OpenSystem(definition);
        } catch (const CommandError&) {
            throw;
        } catch (const std::runtime_error& fault) {
            Refuse(key, fault.what());
        }
    }

    [[noreturn]] void Refuse(const wchar_t* key, const std::string& what) const {
        throw CommandError(ExitCode::CHECK_FAILED, m_project.lines.Place(L"Soundings", key) + what);
    }

    std::string Suitable(const std::vector<Sounding>& soundings) const {
        const WorldBox box = BoxOf(soundings);
        std::vector<WorldPoint> corners = {{box.MinX(), box.MinY()}, {box.MaxX(), box.MaxY()}};
        return SuitableSystem(m_file.empty() ? "EPSG:4326" : m_file, corners);
    }

    const Project& m_project;
    std::string m_file;
};

// The first faults, and how many more there are.
class Faults {
public:
    explicit Faults(const UserText& path) : m_path(path.Utf8()) {}
    ~Faults() {
        if (m_count > kMost)
            Report(": " + std::to_string(m_count - kMost) + " more soundings are left out like these");
    }
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;

    void Add(std::uint64_t line, const std::string& what) {
        if (++m_count <= kMost)
            Report((line > 0 ? ':' + std::to_string(line) : "") + ": " + what + ", so there is no sounding");
    }

private:
    static constexpr std::uint64_t kMost = 20;

    void Report(const std::string& what) const {
        PlotErrorReporter::Get()[L"Soundings"].emplace_back(FromUtf8(m_path + what));
    }

    std::string m_path;
    std::uint64_t m_count = 0;
};

} // namespace

FoundSoundings ReadSoundings(const SoundingSource& source, const TakeFault& fault) {
    FoundSoundings found = IsTable(source.path) ? Table(source, fault).Read() : ReadLayer(source, fault);
    if (found.soundings.empty())
        throw CommandError(ExitCode::CHECK_FAILED,
                           source.path.Utf8() + ": there is no sounding in it; a table has a line for each, "
                                                "with easting, northing and depth");
    return found;
}

std::vector<Sounding> ReadSoundings(const Project& project) {
    if (project.soundings.Empty())
        throw CommandError(ExitCode::CHECK_FAILED, project.lines.Place(L"Soundings", L"File") +
                                                       "no file of soundings is named; write one");
    Faults faults(project.soundings);
    FoundSoundings found = ReadSoundings(
        {project.soundings, project.layer, project.xColumn, project.yColumn, project.depthColumn},
        [&](std::uint64_t line, const std::string& what) { faults.Add(line, what); });
    Systems(project, found).Bring(found.soundings);
    const double factor =
        UnitType::Convert(project.unit.GetType(), UnitType::M, 1) * (project.isDepthNegative ? -1 : 1);
    std::erase_if(found.soundings, [&](const Sounding& sounding) {
        if (std::isfinite(sounding.place.X())) return false;
        faults.Add(0, "a place has no coordinates in " + project.coordinateSystem);
        return true;
    });
    for (Sounding& sounding : found.soundings) sounding.depth *= factor;
    if (found.soundings.empty())
        throw CommandError(ExitCode::CHECK_FAILED,
                           project.soundings.Utf8() + ": no sounding has coordinates in " +
                               project.coordinateSystem +
                               "; write the file's own system, in [Soundings] FileCoordinateSystem or with "
                               "--system of 'chartutil init'");
    return std::move(found.soundings);
}

std::string SuitableSystem(const std::string& system, std::vector<WorldPoint>& points) {
    DoGeometry("coordinates", [&](const GeometryModule& geometry, const ShowShare&) {
        geometry.OpenSystem(system)->ToGeographic(points);
        return 0;
    });
    std::erase_if(points, [](const WorldPoint& point) { return !std::isfinite(point.X() + point.Y()); });
    WorldBox box;
    for (const WorldPoint& point : points) box.Update(point);
    if (!box.IsValid()) return "EPSG:3395";
    if (box.ExtentX() > 180) { // across the date line
        box = WorldBox();
        for (WorldPoint& point : points) {
            if (point.X() < 0) point = {point.X() + 360, point.Y()};
            box.Update(point);
        }
    }
    const double longitude = std::remainder(box.Center().X(), 360), latitude = box.Center().Y();
    if (box.MaxY() > 84) return "EPSG:32661";
    if (box.MinY() < -80) return "EPSG:32761";
    constexpr double kZone = 6;
    if (box.ExtentX() > 1.5 * kZone || box.ExtentY() > 20)
        return "+proj=merc +lat_ts=" + DecimalText(std::round(latitude)) +
               " +lon_0=" + DecimalText(std::round(longitude)) + " +datum=WGS84 +units=m";
    const int zone = std::clamp(static_cast<int>(std::floor((longitude + 180) / kZone)) + 1, 1, 60);
    constexpr struct {
        const char* system;
        int first, last, base;
    } kNorthern[] = {{"EPSG:4269", 1, 23, 26900}, {"EPSG:4258", 28, 38, 25800}};
    for (const auto& datum : kNorthern)
        if (system == datum.system && latitude >= 0 && zone >= datum.first && zone <= datum.last)
            return "EPSG:" + std::to_string(datum.base + zone);
    return "EPSG:" + std::to_string((latitude < 0 ? 32700 : 32600) + zone);
}
