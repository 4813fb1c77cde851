// SPDX-License-Identifier: MIT
// What a line of text takes, beside QFontMetricsF, Pango and HarfBuzz alone, in the same font of about the
// same size. The texts are numbered, so that nobody can keep the result of one; the time is that of one text.

#define QT_NO_KEYWORDS // GLib has a "signals" of its own

#include "Framework/device/DC.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"
#include "VelmBase/WideString.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fontconfig/fontconfig.h>
#include <hb.h>
#include <malloc.h>
#include <memory>
#include <pango/pangoft2.h>
#include <string>
#include <unistd.h>
#include <vector>
#if __has_include(<QFontMetricsF>)
#include <QFontMetricsF>
#include <QGuiApplication>
#define HAVE_QT
#endif

namespace {

constexpr wchar_t kFace[] = L"Liberation Sans";
constexpr float kSize = 2.5f;       // millimetres: of what stands above the descent
constexpr double kPixelSize = 12.0; // of the em, which gives about that on a display of 96 pixels an inch
constexpr double kPointSize = 9.0;

constexpr std::size_t kTexts = 1 << 12;

std::wstring Sounding(std::size_t i) {
    return L"Sounding " + std::to_wstring(100 + i / 10) + L"." + std::to_wstring(i % 10);
}

const std::vector<std::wstring>& Texts() {
    static const std::vector<std::wstring> texts = [] {
        std::vector<std::wstring> all;
        for (std::size_t i = 0; i < kTexts; ++i) all.push_back(Sounding(i));
        return all;
    }();
    return texts;
}

const std::vector<std::string>& Utf8Texts() {
    static const std::vector<std::string> texts = [] {
        std::vector<std::string> all;
        for (const std::wstring& text : Texts()) all.push_back(ToUtf8(text));
        return all;
    }();
    return texts;
}

template <typename Inputs, typename Task>
void ForEach(benchmark::State& state, const Inputs& inputs, Task task) {
    task(inputs[0]);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(task(inputs[i]));
        i = (i + 1) % kTexts;
    }
}

TextInfo Style(float size) {
    TextInfo style;
    style.SetFont(kFace);
    style.SetSize(size);
    return style;
}

// --- one line at a style that was measured before ---

void LineOurs(benchmark::State& state) {
    TextHeightFactComp::Get() = TextHeightFactComp(); // without the styles of other benchmarks
    TextRectComp measure;
    const TextInfo style = Style(kSize);
    ForEach(state, Texts(), [&](const std::wstring& text) { return measure(style, text).Width(); });
}

// The same where the program has measured tens of thousands of other sizes of the face before.
void LineAmongOurs(benchmark::State& state) {
    TextHeightFactComp::Get() = TextHeightFactComp();
    TextRectComp measure;
    for (int i = 0; i < 30'000; ++i) measure(Style(1.0F + 0.001F * float(i)), L"Sounding");
    const TextInfo style = Style(kSize);
    ForEach(state, Texts(), [&](const std::wstring& text) { return measure(style, text).Width(); });
}

// What of it is the device's: context and font are made once.
void LineDevice(benchmark::State& state) {
    CDC device;
    device.CreateDCW(L"DISPLAY", nullptr, nullptr);
    device.SetMapMode(MM_HIMETRIC);
    CFont font;
    font.CreateFontW(4000, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY,
                     0, kFace);
    CGdiObject* const previous = CDC::SelectGdiObject(device.m_hDC, font.m_hObject);
    ForEach(state, Texts(), [&](const std::wstring& text) { return device.GetTextExtent(text).cx; });
    CDC::SelectGdiObject(device.m_hDC, previous->m_hObject);
}

class Pango {
public:
    Pango()
        : m_fonts(pango_ft2_font_map_new()), m_context(pango_font_map_create_context(m_fonts)),
          m_font(pango_font_description_new()) {
        pango_ft2_font_map_set_resolution(PANGO_FT2_FONT_MAP(m_fonts), 96.0, 96.0);
        pango_font_description_set_family(m_font, ToUtf8(kFace).c_str());
        pango_font_description_set_absolute_size(m_font, kPixelSize * PANGO_SCALE);
    }
    ~Pango() {
        pango_font_description_free(m_font);
        g_object_unref(m_context);
        g_object_unref(m_fonts);
    }
    Pango(const Pango&) = delete;
    Pango& operator=(const Pango&) = delete;

    PangoLayout* NewLayout() const {
        PangoLayout* const layout = pango_layout_new(m_context);
        pango_layout_set_font_description(layout, m_font);
        return layout;
    }

    static int Width(PangoLayout* layout, const std::string& text) {
        pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
        int width = 0;
        int height = 0;
        pango_layout_get_size(layout, &width, &height);
        return width;
    }

private:
    PangoFontMap* m_fonts;
    PangoContext* m_context;
    PangoFontDescription* m_font;
};

void LinePango(benchmark::State& state) {
    const Pango pango;
    ForEach(state, Utf8Texts(), [&](const std::string& text) {
        PangoLayout* const layout = pango.NewLayout();
        const int width = Pango::Width(layout, text);
        g_object_unref(layout);
        return width;
    });
}

void LinePangoReused(benchmark::State& state) {
    const Pango pango;
    PangoLayout* const layout = pango.NewLayout();
    ForEach(state, Utf8Texts(), [&](const std::string& text) { return Pango::Width(layout, text); });
    g_object_unref(layout);
}

std::string FileOf(const std::string& family) {
    FcPattern* const wanted = FcNameParse(reinterpret_cast<const FcChar8*>(family.c_str()));
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result;
    FcPattern* const found = FcFontMatch(nullptr, wanted, &result);
    FcPatternDestroy(wanted);
    FcChar8* file = nullptr;
    std::string path;
    if (found && FcPatternGetString(found, FC_FILE, 0, &file) == FcResultMatch)
        path = reinterpret_cast<const char*>(file);
    if (found) FcPatternDestroy(found);
    return path;
}

// Its best case: a buffer that is used again, the script and direction known, and no kerning either.
void LineHarfBuzz(benchmark::State& state) {
    hb_blob_t* const blob = hb_blob_create_from_file(FileOf(ToUtf8(kFace)).c_str());
    hb_face_t* const face = hb_face_create(blob, 0);
    hb_font_t* const font = hb_font_create(face);
    hb_buffer_t* const buffer = hb_buffer_create();
    hb_feature_t noKerning = {HB_TAG('k', 'e', 'r', 'n'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
    ForEach(state, Utf8Texts(), [&](const std::string& text) {
        hb_buffer_clear_contents(buffer);
        hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), 0, -1);
        hb_buffer_set_direction(buffer, HB_DIRECTION_LTR);
        hb_buffer_set_script(buffer, HB_SCRIPT_LATIN);
        hb_shape(font, buffer, &noKerning, 1);
        unsigned count = 0;
        const hb_glyph_position_t* const glyphs = hb_buffer_get_glyph_positions(buffer, &count);
        hb_position_t sum = 0;
        for (unsigned i = 0; i < count; ++i) sum += glyphs[i].x_advance;
        return sum;
    });
    hb_buffer_destroy(buffer);
    hb_font_destroy(font);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
}

#ifdef HAVE_QT
const std::vector<QString>& QTexts() {
    static const std::vector<QString> texts = [] {
        std::vector<QString> all;
        for (const std::wstring& text : Texts()) all.push_back(QString::fromStdWString(text));
        return all;
    }();
    return texts;
}

QFont QtFont(double pointSize) {
    QFont font(QString::fromWCharArray(kFace));
    font.setPointSizeF(pointSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void LineQt(benchmark::State& state) {
    const QFontMetricsF metrics(QtFont(kPointSize));
    ForEach(state, QTexts(), [&](const QString& text) { return metrics.horizontalAdvance(text); });
}
#endif

// --- the first at a size ---

// One that no benchmark had before, nor an earlier run of this one. Qt tells hundredths of a pixel apart, and
// a step of 0.01 points is more.
constexpr int kNewSizes = 2000; // a run
double NextSize() {
    static int sizes = 0;
    return 4.0 + ++sizes * 0.01;
}

void NewSizeOurs(benchmark::State& state) {
    TextHeightFactComp::Get() = TextHeightFactComp();
    TextRectComp measure;
    TextInfo style = Style(kSize);
    measure(style, L"Sounding");
    std::size_t i = 0;
    for (auto _ : state) {
        style.SetSize(static_cast<float>(NextSize()));
        benchmark::DoNotOptimize(measure(style, Texts()[i]).Width());
        i = (i + 1) % kTexts;
    }
}

void NewSizeFactor(benchmark::State& state) {
    TextInfo style = Style(kSize);
    TextHeightFactComp::Get()(style);
    for (auto _ : state) {
        style.SetSize(static_cast<float>(NextSize()));
        benchmark::DoNotOptimize(TextHeightFactComp::Get()(style));
    }
}

#ifdef HAVE_QT
void NewSizeQt(benchmark::State& state) {
    QFontMetricsF(QtFont(kPointSize)).horizontalAdvance(QTexts()[0]);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(QFontMetricsF(QtFont(NextSize())).horizontalAdvance(QTexts()[i]));
        i = (i + 1) % kTexts;
    }
}
#endif

double HeapBytes() { return static_cast<double>(mallinfo2().uordblks); }

// A host with very many sizes: the time of a new one where there are as many as the argument.
void NewSizeAmong(benchmark::State& state) {
    TextHeightFactComp factors;
    TextInfo style = Style(kSize);
    static int sizes = 0; // not those of the others, which would come to sizes that nobody writes
    const auto add = [&] {
        style.SetSize(static_cast<float>(5000.0 + ++sizes * 0.01));
        return factors(style);
    };
    const double before = HeapBytes();
    for (int i = 0; i < state.range(0); ++i) add();
    state.counters["bytes_per_style"] = (HeapBytes() - before) / static_cast<double>(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(add());
}

// --- what it keeps ---

double ResidentBytes() {
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    long size = 0;
    long resident = 0;
    if (file) {
        if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
        std::fclose(file);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// Since before the first run, when nothing was measured yet; to be run alone, for the peers grow too.
void ManyTexts(benchmark::State& state) {
    static const double residentBefore = ResidentBytes();
    static const double heapBefore = HeapBytes();
    constexpr std::size_t kMany = 1000000;
    TextRectComp measure;
    std::array<TextInfo, 100> styles;
    for (std::size_t i = 0; i < styles.size(); ++i)
        styles[i] = Style(static_cast<float>(1.0 + 0.25 * double(i)));
    for (auto _ : state)
        for (std::size_t i = 0; i < kMany; ++i)
            benchmark::DoNotOptimize(measure(styles[i % styles.size()], Sounding(i)).Width());
    state.counters["more_resident_bytes"] = ResidentBytes() - residentBefore;
    state.counters["more_heap_bytes"] = HeapBytes() - heapBefore;
}

} // namespace

BENCHMARK(LineOurs)->Name("rectangle of a line at a cached style/ours");
BENCHMARK(LineAmongOurs)->Name("rectangle of a line at a cached style/ours, among 30,000 other sizes");
BENCHMARK(LineDevice)->Name("rectangle of a line at a cached style/extent on a device context alone");
BENCHMARK(LinePango)->Name("rectangle of a line at a cached style/Pango, new layout");
BENCHMARK(LinePangoReused)->Name("rectangle of a line at a cached style/Pango, layout reused");
BENCHMARK(LineHarfBuzz)->Name("rectangle of a line at a cached style/HarfBuzz");
#ifdef HAVE_QT
BENCHMARK(LineQt)->Name("rectangle of a line at a cached style/QFontMetricsF");
#endif
BENCHMARK(NewSizeOurs)->Name("first line at a new size/ours")->Iterations(kNewSizes);
BENCHMARK(NewSizeFactor)->Name("first line at a new size/height factor alone")->Iterations(kNewSizes);
#ifdef HAVE_QT
BENCHMARK(NewSizeQt)->Name("first line at a new size/QFontMetricsF")->Iterations(kNewSizes);
#endif
BENCHMARK(NewSizeAmong)->Arg(100)->Arg(100000)->Name("height factor of a new size among");
BENCHMARK(ManyTexts)->Name("1,000,000 texts at 100 styles")->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
#ifdef HAVE_QT
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
