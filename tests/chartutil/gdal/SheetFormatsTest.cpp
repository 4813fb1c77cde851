// SPDX-License-Identifier: MIT
// The tiny chart in each format. SVG is read element by element; what it has, DXF has in the same order, PDF
// at the same place, and PNG in the same pixels.

#include "tests/chartutil/gdal/DxfReader.h"
#include "tests/support/EventLoop.h" // for Qt's reader of pictures
#include "tests/support/Program.h"

#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <optional>

namespace fs = std::filesystem;

using ::testing::HasSubstr;

namespace {

constexpr double kPaperWidth = 210, kPaperHeight = 148; // of the chart's project, in millimetres
constexpr double kPointsPerMm = 72 / 25.4;

// SVG has thousandths of a millimetre. A number is half of one off, and what is the sum of two, as a
// rectangle's right side or a text's middle, at most a whole one.
constexpr double kTolerance = 0.0011;

// PDF's numbers are rounded too; this is finer than what any printer shows.
constexpr double kPdfTolerance = 0.02;

struct Place {
    double x = 0, y = 0;
};

struct SvgElement {
    enum Kind { AREA, LINE, TEXT } kind = AREA;
    std::string layer, color, text;
    std::vector<Place> points; // of all rings; of a text its start
    std::size_t rings = 1;
    bool isClosed = false, isDashed = false, isUnderlined = false;
    double width = 0, fontSize = 0, length = 0, rotation = 0;
};

std::string Attribute(const std::string& line, const std::string& name) {
    const std::size_t at = line.find(' ' + name + "=\"");
    if (at == std::string::npos) return {};
    const std::size_t begin = at + name.size() + 3;
    return line.substr(begin, line.find('"', begin) - begin);
}

double NumberOf(const std::string& line, const std::string& name) {
    const std::string text = Attribute(line, name);
    return text.empty() ? 0 : std::stod(text);
}

std::vector<Place> PlacesIn(std::string text) {
    for (char& c : text)
        if (c == ',' || c == 'M' || c == 'z') c = ' ';
    std::istringstream numbers(text);
    std::vector<Place> places;
    for (Place place; numbers >> place.x >> place.y;) places.push_back(place);
    return places;
}

SvgElement ShapeOf(const std::string& line) {
    SvgElement shape;
    if (line.starts_with("<rect")) {
        const double x = NumberOf(line, "x"), y = NumberOf(line, "y");
        const double right = x + NumberOf(line, "width"), bottom = y + NumberOf(line, "height");
        shape.points = {{x, y}, {right, y}, {right, bottom}, {x, bottom}};
    } else if (line.starts_with("<path")) {
        const std::string path = Attribute(line, "d");
        shape.points = PlacesIn(path);
        shape.rings = static_cast<std::size_t>(std::ranges::count(path, 'M'));
    } else {
        shape.points = PlacesIn(Attribute(line, "points"));
    }
    shape.color = Attribute(line, "fill");
    if (shape.color == "none") {
        shape.kind = SvgElement::LINE;
        shape.color = Attribute(line, "stroke");
        shape.width = NumberOf(line, "stroke-width");
        shape.isClosed = line.starts_with("<polygon");
        shape.isDashed = !Attribute(line, "stroke-dasharray").empty();
    }
    return shape;
}

SvgElement TextOf(const std::string& line) {
    SvgElement text;
    text.kind = SvgElement::TEXT;
    text.color = Attribute(line, "fill");
    text.points = {{NumberOf(line, "x"), NumberOf(line, "y")}};
    text.fontSize = NumberOf(line, "font-size");
    text.length = NumberOf(line, "textLength");
    text.isUnderlined = !Attribute(line, "text-decoration").empty();
    const std::string turn = Attribute(line, "transform");
    if (!turn.empty()) text.rotation = -std::stod(turn.substr(turn.find('(') + 1));
    const std::size_t begin = line.find('>') + 1;
    text.text = line.substr(begin, line.rfind("</text>") - begin);
    EXPECT_EQ(std::string::npos, text.text.find('&')) << "characters that SVG escapes are not read here";
    EXPECT_EQ("", Attribute(line, "text-anchor"));
    return text;
}

// In the order in which they are drawn, the page first.
std::vector<SvgElement> SvgElementsOf(const std::string& svg) {
    std::vector<SvgElement> elements;
    std::istringstream lines(svg);
    std::string layer;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("<g ")) layer = Attribute(line, "id");
        const bool isText = line.starts_with("<text ");
        if (!isText && !line.starts_with("<rect ") && !line.starts_with("<poly") &&
            !line.starts_with("<path "))
            continue;
        elements.push_back(isText ? TextOf(line) : ShapeOf(line));
        elements.back().layer = layer;
    }
    return elements;
}

// The point of the page that a DXF text stands at, from the start and length that SVG has of it.
Place JustifiedPlace(const SvgElement& text, int attachment, double height) {
    const double along = text.length * ((attachment - 1) % 3) / 2.0;
    const double above = height * ((9 - attachment) / 3) / 2.0;
    const double angle = text.rotation * M_PI / 180;
    return {text.points[0].x + along * std::cos(angle) - above * std::sin(angle),
            kPaperHeight - text.points[0].y + along * std::sin(angle) + above * std::cos(angle)};
}

std::vector<Place> VerticesOf(const DxfEntity& entity) {
    const std::vector<std::string> xs = entity.All(10), ys = entity.All(20);
    std::vector<Place> places;
    for (std::size_t i = 0; i < std::min(xs.size(), ys.size()); ++i)
        places.push_back({std::stod(xs[i]), std::stod(ys[i])});
    // A hatch begins with the height of its plane.
    if (entity.kind == "HATCH" && !places.empty()) places.erase(places.begin());
    return places;
}

struct Word {
    std::string text;
    double left, top, right, bottom; // in millimetres
};

std::vector<Word> WordsIn(const std::string& boxes) {
    std::vector<Word> words;
    std::istringstream lines(boxes);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t begin = line.find("<word ");
        if (begin == std::string::npos) continue;
        const std::size_t text = line.find('>') + 1;
        words.push_back({line.substr(text, line.find("</word>") - text),
                         NumberOf(line, "xMin") / kPointsPerMm, NumberOf(line, "yMin") / kPointsPerMm,
                         NumberOf(line, "xMax") / kPointsPerMm, NumberOf(line, "yMax") / kPointsPerMm});
    }
    return words;
}

std::array<int, 3> ColorOf(const std::string& hex) {
    const auto part = [&](std::size_t at) { return std::stoi(hex.substr(at, 2), nullptr, 16); };
    return {part(1), part(3), part(5)};
}

int Distance(const std::array<int, 3>& a, const std::array<int, 3>& b) {
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
}

std::array<int, 3> PixelAt(const QImage& image, int x, int y) {
    const QRgb pixel = image.pixel(std::clamp(x, 0, image.width() - 1), std::clamp(y, 0, image.height() - 1));
    return {qRed(pixel), qGreen(pixel), qBlue(pixel)};
}

// The mean difference of a colour's part, of 255, with the second picture moved by whole pixels.
double Difference(const QImage& a, const QImage& b, int dx, int dy) {
    double sum = 0;
    constexpr int kRim = 2; // so that every picture compares the same pixels
    for (int y = kRim; y < a.height() - kRim; ++y)
        for (int x = kRim; x < a.width() - kRim; ++x)
            sum += Distance(PixelAt(a, x, y), PixelAt(b, x + dx, y + dy)) / 3.0;
    return sum / ((a.width() - 2 * kRim) * (a.height() - 2 * kRim));
}

class SheetFormats : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        s_folder.emplace();
        for (const char* const format : {"svg", "dxf", "pdf", "png"}) {
            const ProgramResult result = RunChartutil(
                {"sheet", TEST_DATA_FOLDER "/chartutil/data/tiny-chart", "-o", File(format).string()});
            EXPECT_EQ(0, result.exitCode) << result.error;
        }
        s_elements = SvgElementsOf(ReadBytes(File("svg")));
    }
    static void TearDownTestSuite() { s_folder.reset(); }

    static fs::path File(const std::string& ending) { return s_folder->Path() / ("sheet." + ending); }
    static const std::vector<SvgElement>& Elements() { return s_elements; }
    static QImage Picture(const fs::path& file) {
        return QImage(QString::fromStdString(file.string())).convertToFormat(QImage::Format_RGB32);
    }

private:
    static inline std::optional<TemporaryFolder> s_folder;
    static inline std::vector<SvgElement> s_elements;
};

} // namespace

TEST_F(SheetFormats, PageIsThePaperInMillimetres) {
    EXPECT_THAT(ReadBytes(File("svg")),
                HasSubstr(" width=\"210mm\" height=\"148mm\" viewBox=\"0 0 210 148\""));

    const std::string dxf = ReadBytes(File("dxf"));
    EXPECT_THAT(dxf, HasSubstr("\n$INSUNITS\n70\n4\n")); // millimetres
    for (const std::string lower : {"$EXTMIN", "$LIMMIN"})
        EXPECT_THAT(dxf, HasSubstr('\n' + lower + "\n10\n0\n20\n0\n"));
    for (const std::string upper : {"$EXTMAX", "$LIMMAX"})
        EXPECT_THAT(dxf, HasSubstr('\n' + upper + "\n10\n210\n20\n148\n"));

    const std::string pdf = ReadBytes(File("pdf"));
    const std::size_t box = pdf.find("/MediaBox [");
    ASSERT_NE(std::string::npos, box);
    std::istringstream numbers(pdf.substr(box + 11, 80));
    double left = -1, bottom = -1, width = 0, height = 0;
    numbers >> left >> bottom >> width >> height;
    EXPECT_EQ(0, left);
    EXPECT_EQ(0, bottom);
    EXPECT_NEAR(kPaperWidth, width / kPointsPerMm, 0.001);
    EXPECT_NEAR(kPaperHeight, height / kPointsPerMm, 0.001);

    const QImage png = Picture(File("png"));
    ASSERT_GT(png.dotsPerMeterX(), 0);
    ASSERT_EQ(png.dotsPerMeterX(), png.dotsPerMeterY());
    const double pixel = 1000.0 / png.dotsPerMeterX();
    EXPECT_NEAR(kPaperWidth, png.width() * pixel, pixel / 2);
    EXPECT_NEAR(kPaperHeight, png.height() * pixel, pixel / 2);
}

TEST_F(SheetFormats, DrawingHasEachElementAtItsPlace) {
    const std::vector<DxfEntity> entities = DxfObjectsOf(ReadBytes(File("dxf")), "ENTITIES");
    std::size_t next = 0, texts = 0, lines = 0, areas = 0;
    for (const SvgElement& element : Elements()) {
        ASSERT_LT(next, entities.size());
        const DxfEntity& entity = entities[next++];
        SCOPED_TRACE(element.layer + ", entity " + entity.Text(5) + ' ' + element.text);
        std::string layer = entity.Text(8);
        std::ranges::replace(layer, ' ', '-'); // as identifiers have it
        EXPECT_EQ(element.layer.empty() ? "Paper" : element.layer, layer);
        // Full black and white are a trace off in drawings, which swap them otherwise.
        const auto number = std::stoul(entity.Text(420));
        EXPECT_LE(Distance(ColorOf(element.color),
                           {static_cast<int>(number >> 16), static_cast<int>(number >> 8 & 255),
                            static_cast<int>(number & 255)}),
                  3);
        if (element.kind == SvgElement::TEXT) {
            ++texts;
            ASSERT_EQ("MTEXT", entity.kind);
            const double height = entity.Number(40);
            EXPECT_NEAR(element.fontSize * 1409 / 2048, height,
                        0.0005); // capitals of Liberation Sans, in its em
            const Place place = JustifiedPlace(element, static_cast<int>(entity.Number(71)), height);
            EXPECT_NEAR(place.x, entity.Number(10), kTolerance);
            EXPECT_NEAR(place.y, entity.Number(20), kTolerance);
            EXPECT_NEAR(0, std::remainder(element.rotation - entity.Number(50), 360), 0.001);
            if (element.isUnderlined) {
                ASSERT_LT(next, entities.size());
                EXPECT_EQ("LWPOLYLINE", entities[next++].kind);
            }
            continue;
        }
        const std::vector<Place> vertices = VerticesOf(entity);
        ASSERT_EQ(element.points.size(), vertices.size());
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            EXPECT_NEAR(element.points[i].x, vertices[i].x, kTolerance);
            EXPECT_NEAR(element.points[i].y, kPaperHeight - vertices[i].y, kTolerance);
        }
        if (element.kind == SvgElement::AREA) {
            ++areas;
            EXPECT_EQ("HATCH", entity.kind);
            EXPECT_EQ(std::to_string(element.rings), entity.Text(91));
        } else {
            ++lines;
            EXPECT_EQ("LWPOLYLINE", entity.kind);
            EXPECT_EQ(element.isClosed, (std::stoi(entity.Text(70)) & 1) != 0);
            EXPECT_EQ(element.isDashed, entity.Text(6) != "none") << entity.Text(6);
            // The format's weights below a millimetre are at most a tenth apart.
            EXPECT_NEAR(element.width, entity.Number(370) / 100, 0.05);
        }
    }
    EXPECT_EQ(entities.size(), next);
    EXPECT_LT(100u, texts);
    EXPECT_LT(100u, lines);
    EXPECT_LT(20u, areas);
}

TEST_F(SheetFormats, PdfHasEachTextAtItsPlace) {
    const char* const kProgram = "/usr/bin/pdftotext";
    if (!fs::exists(kProgram)) GTEST_SKIP() << "pdftotext is not installed (package poppler-utils)";
    const ProgramResult result = RunProgramAt(kProgram, {"-bbox", File("pdf").string(), "-"});
    ASSERT_EQ(0, result.exitCode) << result.error;
    const std::vector<Word> words = WordsIn(result.output);
    std::size_t count = 0;
    for (const SvgElement& element : Elements()) {
        if (element.kind != SvgElement::TEXT) continue;
        std::istringstream parts(element.text);
        std::string first;
        for (std::string part; parts >> part; ++count)
            if (first.empty()) first = part;
        const auto [x, y] = element.points[0];
        SCOPED_TRACE(element.layer + ": " + element.text);
        const bool isFound = std::ranges::any_of(words, [&](const Word& word) {
            if (word.text != first) return false;
            if (element.rotation != 0) // the box is of the turned word
                return x > word.left - 0.1 && x < word.right + 0.1 && y > word.top - 0.1 &&
                       y < word.bottom + 0.1;
            // A box goes from the ascent to the descent of Liberation Sans.
            const double baseline = word.top + (word.bottom - word.top) * 1854 / (1854 + 434);
            return std::abs(x - word.left) < kPdfTolerance && std::abs(y - baseline) < kPdfTolerance;
        });
        EXPECT_TRUE(isFound) << "not at " << x << ' ' << y;
    }
    EXPECT_EQ(count, words.size());
    EXPECT_LT(100u, count);
}

TEST_F(SheetFormats, PixelsHaveTheColoursOfWhatIsThere) {
    const QImage png = Picture(File("png"));
    const double perMm = png.dotsPerMeterX() / 1000.0;
    const auto at = [&](double x, double y) {
        return PixelAt(png, static_cast<int>(std::floor(x * perMm)), static_cast<int>(std::floor(y * perMm)));
    };
    EXPECT_EQ(ColorOf("#FFFFFF"), at(1, 1));

    // Corners of lines that are two pixels wide, and areas of which a pixel and its neighbours are within.
    std::size_t corners = 0, areas = 0;
    for (const SvgElement& element : Elements()) {
        if (element.layer != "Border" && element.layer != "Panels") continue;
        SCOPED_TRACE(element.layer + ' ' + element.color);
        if (element.kind == SvgElement::LINE && element.isClosed && element.width * perMm >= 2) {
            for (const auto& [x, y] : element.points) {
                ++corners;
                EXPECT_LT(Distance(ColorOf(element.color), at(x, y)), 96);
            }
        }
        if (element.kind != SvgElement::AREA || element.points.size() != 4) continue;
        const double width = element.points[2].x - element.points[0].x;
        const double height = element.points[2].y - element.points[0].y;
        if (std::min(width, height) * perMm < 3 || element.color == "#FFFFFF") continue;
        ++areas;
        EXPECT_EQ(ColorOf(element.color),
                  at(element.points[0].x + width / 2, element.points[0].y + height / 2))
            << element.points[0].x << ' ' << element.points[0].y;
    }
    EXPECT_EQ(4u, corners);
    EXPECT_LT(10u, areas);

    // A contour is thinner than a pixel, and lies in up to four. Somewhere next to each vertex is a pixel
    // that is nearer to its colour by a quarter than another is; three millimetres away there hardly ever is.
    const auto share = [&](double shift) {
        int found = 0, all = 0;
        for (const SvgElement& element : Elements()) {
            if (element.layer != "Contours" || element.isDashed) continue;
            for (const auto& [x, y] : element.points) {
                int nearest = 765, farthest = 0;
                for (const int row : {-1, 0, 1}) {
                    for (const int column : {-1, 0, 1}) {
                        const int distance = Distance(
                            ColorOf(element.color), at(x + shift + column / perMm, y + shift + row / perMm));
                        nearest = std::min(nearest, distance);
                        farthest = std::max(farthest, distance);
                    }
                }
                found += nearest * 4 <= farthest * 3 ? 1 : 0;
                ++all;
            }
        }
        return static_cast<double>(found) / all;
    };
    EXPECT_LT(0.95, share(0));
    EXPECT_GT(0.25, share(3));
}

TEST_F(SheetFormats, PdfAndPngAreTheSamePicture) {
    const char* const kProgram = "/usr/bin/pdftoppm";
    if (!fs::exists(kProgram)) GTEST_SKIP() << "pdftoppm is not installed (package poppler-utils)";
    const QImage png = Picture(File("png"));
    // Drawn finer than it is compared, since the program draws no line thinner than its pixel.
    constexpr int kFiner = 4;
    const ProgramResult result = RunProgramAt(
        kProgram, {"-singlefile", "-scale-to-x", std::to_string(png.width() * kFiner), "-scale-to-y",
                   std::to_string(png.height() * kFiner), File("pdf").string(), File("page").string()});
    ASSERT_EQ(0, result.exitCode) << result.error;
    const QImage pdf =
        Picture(File("page.ppm")).scaled(png.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // What is left is how the two smooth edges. Moved by one pixel, a quarter of a millimetre, they differ
    // more.
    const double difference = Difference(png, pdf, 0, 0);
    EXPECT_LT(difference, 4);
    for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
        EXPECT_LT(difference * 2, Difference(png, pdf, dx, dy)) << dx << ' ' << dy;
}
