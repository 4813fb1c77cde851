// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/DXFColor.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/PictureModule.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cpl_error.h>
#include <cpl_vsi.h>
#include <gdal.h>
#include <iterator>
#include <map>
#include <memory>
#include <ogr_api.h>
#include <stdexcept>
#include <utility>

// GDAL's driver writes the drawing. What its writer has no words for is set in the groups of codes and values
// that it made: see Finisher.

namespace {

/// What an entity has besides what the driver writes of it.
struct Entity {
    RGBColor color;
    std::string text = {};
};

constexpr GIntBig kFirstHandle = 0x100000; // the driver counts its own from 0x20000

// --- numbers and texts of the format

std::string Number(double value) {
    std::array<char, 32> text = {};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

std::string HexText(const RGBColor& color) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text = "#";
    for (const int part : {color.Red(), color.Green(), color.Blue()})
        text += {kDigits[part / 16], kDigits[part % 16]};
    return text;
}

/// The index that stands for the colour where a reader knows no other: never 0, which means the colour of a
/// block, nor 7 for white, since that is drawn black on white paper.
int IndexOf(const RGBColor& color) {
    if (color == RGBColor(255, 255, 255)) return 255;
    const int index = DXFColor(color);
    return index == 0 ? 7 : index;
}

/// Full black and white are a trace off, since programs swap these with what is behind them on a black screen
/// and in print.
int TrueColorOf(const RGBColor& color) {
    if (color == RGBColor(255, 255, 255)) return 0xFEFEFE;
    if (color == RGBColor(0, 0, 0)) return 0x010101;
    return color.Red() << 16 | color.Green() << 8 | color.Blue();
}

/// A line weight in hundredths of a millimetre: the nearest of those that the format has.
int LineWeight(double width) {
    constexpr int kWeights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
    const double wanted = std::isfinite(width) ? width * 100 : 0;
    return *std::ranges::min_element(kWeights, {}, [&](int weight) { return std::abs(weight - wanted); });
}

/// What typists write for a sign that the stroke fonts of CAD programs do not have; any other sign as it is.
unsigned long TypedSign(unsigned long code) {
    switch (code) {
    case 0x2013: // en dash
    case 0x2212: // minus
        return '-';
    case 0x2032: // prime
        return '\'';
    case 0x2033: // double prime
        return '"';
    default:
        return code;
    }
}

/// Text in the format's ASCII: other characters by their numbers, control characters as spaces.
template <typename Escape> std::string Ascii(const std::string& utf8, Escape escape) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const wchar_t c : FromUtf8(utf8)) {
        unsigned long code = TypedSign(static_cast<unsigned long>(c));
        if (code < 0x20 || (code >= 0x7F && code < 0xA0)) code = ' ';
        if (code < 0x7F) {
            escape(text, static_cast<char>(code));
            continue;
        }
        if (code > 0xFFFF || (code >= 0xD800 && code <= 0xDFFF)) code = 0xFFFD; // has no number here
        text += "\\U+";
        for (int shift = 12; shift >= 0; shift -= 4) text += kDigits[code >> shift & 15];
    }
    return text;
}

/// The content of a multi-line text that reads as these very characters.
std::string TextContent(const Surface::Label& label) {
    return Ascii(label.text, [](std::string& text, char c) {
        if (c == '\\' || c == '{' || c == '}') text += '\\';
        if (c == '%' && text.ends_with('%'))
            text += "{%}"; // two in a row would begin a special character
        else if (c == 'U' && text.ends_with('\\'))
            text += "{U}"; // as this would the number of one
        else
            text += c;
        if (c == '^') text += ' '; // before any other character it means a control character
    });
}

std::string LayerName(const std::string& name) {
    constexpr std::size_t kMost = 250;
    std::string text = Ascii(name, [](std::string& to, char c) {
        to += std::string_view("<>/\\\":;?*|,=`").find(c) == std::string_view::npos ? c : '-';
    });
    if (text.size() > kMost) text.resize(kMost);
    return text.empty() ? "0" : text;
}

/// What a style string of GDAL's may hold within quotes.
std::string Quoted(const std::string& name) {
    std::string text = "\"";
    for (const char c : name)
        if (c >= ' ' && c <= '~' && c != '"' && c != '\\') text += c;
    return text + '"';
}

// --- what the driver writes

// What GDAL has to say goes into exceptions.
class Silence {
public:
    Silence() { CPLPushErrorHandler(CPLQuietErrorHandler); }
    ~Silence() { CPLPopErrorHandler(); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
};

struct CloseDataset {
    void operator()(void* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<void, CloseDataset>;

struct DestroyFeature {
    void operator()(void* feature) const { OGR_F_Destroy(static_cast<OGRFeatureH>(feature)); }
};
using Feature = std::unique_ptr<void, DestroyFeature>;

/// A file in memory, for as long as this object lives.
class MemoryFile {
public:
    MemoryFile() = default;
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { VSIUnlink(Path()); }
    static const char* Path() { return "/vsimem/chartutil_dxf/sheet.dxf"; }
    std::string_view Content() const {
        vsi_l_offset size = 0;
        const GByte* const bytes = VSIGetMemFileBuffer(Path(), &size, FALSE);
        return bytes ? std::string_view(reinterpret_cast<const char*>(bytes), size) : std::string_view();
    }
};

/// Writes each kind of shape as features of GDAL, in millimetres with y upwards from the page's lower side.
class Writer {
public:
    Writer(const Surface& surface, OGRLayerH layer) : m_surface(surface), m_layer(layer) {}

    const std::vector<Entity>& Entities() const { return m_entities; }

    /// The page itself, so that a drawing shows on a black screen as it does on paper.
    void WritePaper() {
        m_name = "Paper";
        (*this)(Surface::FilledRectangle{0, 0, m_surface.Width(), m_surface.Height(), {255, 255, 255}});
        m_name = "0";
    }

    void operator()(const Surface::Layer& layer) { m_name = LayerName(layer.name); }
    void operator()(const Surface::Image&) const {} // these are lines
    void operator()(const Surface::FilledRectangle& shape) {
        const double right = shape.x + shape.width, bottom = shape.y + shape.height;
        (*this)(Surface::FilledPolygon{
            {{{shape.x, shape.y}, {right, shape.y}, {right, bottom}, {shape.x, bottom}}}, shape.fill});
    }
    void operator()(const Surface::FilledPolygon& shape) {
        OGRGeometryH polygon = OGR_G_CreateGeometry(wkbPolygon);
        for (const std::vector<Surface::Point>& ring : shape.rings)
            OGR_G_AddGeometryDirectly(polygon, LineOf(ring, wkbLinearRing));
        Add(polygon, "BRUSH(fc:" + HexText(shape.fill) + ')', {shape.fill});
    }
    void operator()(const Surface::Stroke& shape) {
        const DXFInfo& dxf = m_surface.Dxf();
        const RGBColor color = dxf.ColorMode() == 1 ? RGBColor(dxf.Color()) : shape.pen.color;
        const int weight = LineWeight(dxf.Width() > 0 ? static_cast<double>(dxf.Width()) : shape.pen.width);
        std::string style = "PEN(c:" + HexText(color) + ",w:" + Number(weight / 100.0) + 'g';
        std::string type;
        if (!shape.pen.dashes.empty()) {
            std::string pattern;
            for (const double dash : shape.pen.dashes) {
                pattern += Number(dash) + "g ";
                type += (type.empty() ? "Dashes " : "-") + Number(dash);
            }
            pattern.pop_back();
            style += ",p:\"" + pattern + '"';
        }
        Add(LineOf(shape.points, shape.isClosed ? wkbLinearRing : wkbLineString), style + ')', {color}, type);
    }
    void operator()(const Surface::Label& shape) {
        const double height = shape.font.CapHeight();
        if (shape.text.empty() || !(height > 0) || !std::isfinite(height)) return;
        // The point of the text that its justification names, from the left end of its baseline.
        const auto [horizontal, vertical] = shape.justification;
        const double along = shape.width * (horizontal / 2.0 - static_cast<int>(shape.anchor) / 2.0);
        const double above = vertical >= 2 ? height * (vertical - 1) / 2.0 : 0;
        const double angle = shape.rotation / 180 * M_PI;
        const double x = shape.x + along * std::cos(angle) - above * std::sin(angle);
        const double y = m_surface.Height() - shape.y + along * std::sin(angle) + above * std::cos(angle);
        OGRGeometryH point = OGR_G_CreateGeometry(wkbPoint);
        OGR_G_SetPoint_2D(point, 0, x, y);
        constexpr int kAnchors[] = {1, 10, 4, 7}; // of GDAL for the left side, by the vertical codes
        double turn = std::fmod(shape.rotation, 360);
        if (turn < 0) turn += 360;
        const std::string style =
            "LABEL(f:" + Quoted(shape.font.family.empty() ? "DejaVu Sans" : shape.font.family) +
            (shape.font.bold ? ",bo:1" : "") + (shape.font.italic ? ",it:1" : "") + ",s:" + Number(height) +
            "g,a:" + Number(turn) + ",p:" + std::to_string(kAnchors[vertical] + horizontal) +
            ",c:" + HexText(shape.color) + ",t:\"x\")"; // its content is set by the Finisher
        Add(point, style, {shape.color, TextContent(shape)});
        if (!shape.font.underline) return;
        // Not every program knows the format's own underline.
        const double below = shape.font.size / 8, left = -shape.width * static_cast<int>(shape.anchor) / 2;
        const auto end = [&](double u) {
            return Surface::Point{shape.x + u * std::cos(angle) + below * std::sin(angle),
                                  shape.y - u * std::sin(angle) + below * std::cos(angle)};
        };
        (*this)(Surface::Stroke{
            {end(left), end(left + shape.width)}, false, {shape.color, shape.font.size / 16}});
    }

private:
    OGRGeometryH LineOf(const std::vector<Surface::Point>& points, OGRwkbGeometryType type) const {
        OGRGeometryH line = OGR_G_CreateGeometry(type);
        OGR_G_SetPointCount(line, static_cast<int>(points.size()));
        int i = 0;
        for (const Surface::Point& point : points)
            OGR_G_SetPoint_2D(line, i++, point.x, m_surface.Height() - point.y);
        return line;
    }

    void Add(OGRGeometryH geometry, const std::string& style, Entity entity, const std::string& type = {}) {
        const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(m_layer)));
        const auto handle = static_cast<OGRFeatureH>(feature.get());
        OGR_F_SetGeometryDirectly(handle, geometry);
        OGR_F_SetFID(handle, kFirstHandle + static_cast<GIntBig>(m_entities.size()));
        OGR_F_SetFieldString(handle, OGR_F_GetFieldIndex(handle, "Layer"), m_name.c_str());
        if (!type.empty())
            OGR_F_SetFieldString(handle, OGR_F_GetFieldIndex(handle, "Linetype"), type.c_str());
        OGR_F_SetStyleString(handle, style.c_str());
        if (OGR_L_CreateFeature(m_layer, handle) != OGRERR_NONE)
            throw std::runtime_error(CPLGetLastErrorMsg());
        m_entities.push_back(std::move(entity));
    }

    const Surface& m_surface;
    OGRLayerH m_layer;
    std::string m_name;
    std::vector<Entity> m_entities;
};

// --- what the driver does not write

/// Copies a drawing of the driver's group by group. It sets the page's unit and size, the library's colours
/// and true colours, texts as they are to be read, and has line types run on over the corners of a line. What
/// is common to all entities it puts where the format has it, before the marks of their kinds.
class Finisher {
public:
    Finisher(const Surface& surface, const std::vector<Entity>& entities)
        : m_entities(entities), m_variables{{"$INSUNITS", {{70, "4"}}}, // millimetres
                                            {"$MEASUREMENT", {{70, "1"}}},
                                            {"$LWDISPLAY", {{290, "1"}}}},
          m_view{{12, Number(surface.Width() / 2)},
                 {22, Number(surface.Height() / 2)},
                 {40, Number(surface.Height())},
                 {41, Number(surface.Width() / surface.Height())}} {
        for (const char* const lower : {"$EXTMIN", "$LIMMIN", "$PLIMMIN"})
            m_variables[lower] = {{10, "0"}, {20, "0"}};
        for (const char* const upper : {"$EXTMAX", "$LIMMAX", "$PLIMMAX"})
            m_variables[upper] = {{10, Number(surface.Width())}, {20, Number(surface.Height())}};
    }

    std::string Finish(std::string_view drawing) {
        m_drawing.reserve(drawing.size() + m_entities.size() * 32);
        while (!drawing.empty()) {
            const std::string_view code = TakeLine(drawing);
            Group group{0, TakeLine(drawing)};
            const std::size_t digits = std::min(code.find_first_not_of(' '), code.size());
            std::from_chars(code.data() + digits, code.data() + code.size(), group.code);
            if (group.code == 0 || group.code == 9) PutObject();
            m_object.push_back(group);
        }
        PutObject();
        return std::move(m_drawing);
    }

private:
    struct Group {
        int code;
        std::string_view value;
    };
    using Values = std::map<int, std::string>;

    static std::string_view TakeLine(std::string_view& text) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
    }

    void Put(int code, std::string_view value) {
        m_drawing += std::to_string(code);
        m_drawing += '\n';
        m_drawing += value;
        m_drawing += '\n';
    }

    void PutWith(const Values& values) {
        for (const Group& group : m_object) {
            const auto found = values.find(group.code);
            Put(group.code, found == values.end() ? group.value : std::string_view(found->second));
        }
    }

    // An object, or a variable of the header.
    void PutObject() {
        if (m_object.empty()) return;
        const Group& first = m_object.front();
        if (const Entity* const entity = FindEntity()) {
            PutEntity(*entity);
        } else if (first.code == 9) {
            const auto found = m_variables.find(first.value);
            PutWith(found == m_variables.end() ? Values() : found->second);
        } else {
            PutWith(first.value == "VPORT" ? m_view : Values());
        }
        m_object.clear();
    }

    const Entity* FindEntity() const {
        for (const Group& group : m_object) {
            if (group.code != 5) continue;
            unsigned long long handle = 0;
            std::from_chars(group.value.data(), group.value.data() + group.value.size(), handle, 16);
            const auto first = static_cast<unsigned long long>(kFirstHandle);
            return handle >= first && handle - first < m_entities.size() ? &m_entities[handle - first]
                                                                         : nullptr;
        }
        return nullptr;
    }

    void PutEntity(const Entity& entity) {
        constexpr std::size_t kLongest = 250; // part of a text
        for (const Group& group : m_object) {
            switch (group.code) {
            case 6: // line type, colour, line weight
            case 62:
            case 370:
                break;
            case 8:
                Put(group.code, group.value);
                for (const Group& common : m_object)
                    if (common.code == 6) Put(common.code, common.value);
                Put(62, std::to_string(IndexOf(entity.color)));
                for (const Group& common : m_object)
                    if (common.code == 370) Put(common.code, common.value);
                Put(420, std::to_string(TrueColorOf(entity.color)));
                break;
            case 1: {
                std::string_view text = entity.text;
                for (; text.size() > kLongest; text.remove_prefix(kLongest)) Put(3, text.substr(0, kLongest));
                Put(1, text);
                break;
            }
            case 70:
                // A flag of closed lines; those of hatches stay as they are.
                if (m_object.front().value == "LWPOLYLINE") {
                    Put(70, group.value == "1" ? "129" : "128");
                    break;
                }
                [[fallthrough]];
            default:
                Put(group.code, group.value);
            }
        }
    }

    const std::vector<Entity>& m_entities;
    std::map<std::string_view, Values> m_variables;
    Values m_view;
    std::vector<Group> m_object;
    std::string m_drawing;
};

std::string Dxf(const Surface& surface, const ShowDrawn& show) {
    GDALAllRegister();
    const MemoryFile file;
    Dataset dataset(
        GDALCreate(GDALGetDriverByName("DXF"), MemoryFile::Path(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRLayerH layer =
        dataset ? GDALDatasetCreateLayer(dataset.get(), "entities", nullptr, wkbUnknown, nullptr) : nullptr;
    if (!layer) return {};
    Writer writer(surface, layer);
    writer.WritePaper();
    std::size_t done = 0;
    for (const Surface::Shape& shape : surface.Shapes()) {
        std::visit(writer, shape);
        show(++done);
    }
    dataset.reset(); // which composes the file
    return Finisher(surface, writer.Entities()).Finish(file.Content());
}

} // namespace

extern "C" [[gnu::visibility("default")]] RenderPictureFunction RenderPicture;

bool RenderPicture(const Surface& surface, PictureFormat, const ShowDrawn& show, std::string& file) {
    const Silence silence;
    std::string drawing = Dxf(surface, show);
    if (drawing.empty()) return false;
    file = std::move(drawing);
    return true;
}
