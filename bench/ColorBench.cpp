// SPDX-License-Identifier: MIT
// The nearest DXF index beside a search of the palette, HSV beside QColor, and the look-up of a band beside
// std::upper_bound. Every benchmark goes through the same random inputs; the time is that of one of them.

#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/colors/HSVColor.h"
#include "tests/support/Random.h"

#include <benchmark/benchmark.h>

#if __has_include(<QColor>)
#include <QColor>
#define HAVE_QCOLOR
#endif

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace {

constexpr std::size_t kInputs = 1 << 16;

const std::vector<RGBColor>& Colors() {
    static const std::vector<RGBColor> colors = [] {
        Random random(1);
        std::vector<RGBColor> all;
        for (std::size_t i = 0; i < kInputs; ++i) all.emplace_back(random());
        return all;
    }();
    return colors;
}

template <typename Inputs, typename Task>
void ForEach(benchmark::State& state, const Inputs& inputs, Task task) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(task(inputs[i]));
        i = (i + 1) % kInputs;
    }
}

struct Entry {
    int red, green, blue;
};

const std::array<Entry, 256>& Palette() {
    static const std::array<Entry, 256> palette = [] {
        std::array<Entry, 256> entries{};
        for (int i = 0; i < 256; ++i) {
            const RGBColor color{DXFColor(i)};
            entries[static_cast<std::size_t>(i)] = {color.Red(), color.Green(), color.Blue()};
        }
        return entries;
    }();
    return palette;
}

int NearestBySearch(const RGBColor& color) {
    const std::array<Entry, 256>& palette = Palette();
    int best = 0;
    int bestDistance = 1 << 30;
    for (int i = 0; i < 256; ++i) {
        const Entry& entry = palette[static_cast<std::size_t>(i)];
        const int dr = color.Red() - entry.red;
        const int dg = color.Green() - entry.green;
        const int db = color.Blue() - entry.blue;
        const int distance = dr * dr + dg * dg + db * db;
        if (distance >= bestDistance) continue;
        bestDistance = distance;
        best = i;
    }
    return best;
}

void NearestIndexOurs(benchmark::State& state) {
    ForEach(state, Colors(), [](const RGBColor& color) { return DXFColor(color).Index(); });
}
void NearestIndexSearch(benchmark::State& state) { ForEach(state, Colors(), NearestBySearch); }

void RgbToHsvOurs(benchmark::State& state) {
    ForEach(state, Colors(), [](const RGBColor& color) { return HSVColor(color); });
}

const std::vector<HSVColor>& HsvColors() {
    static const std::vector<HSVColor> colors(Colors().begin(), Colors().end());
    return colors;
}

void HsvToRgbOurs(benchmark::State& state) {
    ForEach(state, HsvColors(), [](const HSVColor& color) { return RGBColor(color); });
}

#ifdef HAVE_QCOLOR
const std::vector<QColor>& QColors() {
    static const std::vector<QColor> colors = [] {
        std::vector<QColor> all;
        for (const RGBColor& color : Colors()) all.emplace_back(color.Red(), color.Green(), color.Blue());
        return all;
    }();
    return colors;
}

const std::vector<QColor>& QHsvColors() {
    static const std::vector<QColor> colors = [] {
        std::vector<QColor> all;
        for (const QColor& color : QColors()) all.push_back(color.toHsv());
        return all;
    }();
    return colors;
}

void RgbToHsvQColor(benchmark::State& state) {
    ForEach(state, QColors(), [](const QColor& color) { return color.toHsv(); });
}
void HsvToRgbQColor(benchmark::State& state) {
    ForEach(state, QHsvColors(), [](const QColor& color) { return color.toRgb(); });
}
#endif

const std::vector<double>& Values() {
    static const std::vector<double> values = [] {
        Random random(2);
        std::vector<double> all;
        for (std::size_t i = 0; i < kInputs; ++i) all.push_back(random.Real(0.0, 256.0));
        return all;
    }();
    return values;
}

void BandOurs(benchmark::State& state) {
    DXFColorTable table;
    for (int i = 0; i < 256; ++i) table.AddEntry(i, static_cast<unsigned long>(i));
    table.Unique();
    ForEach(state, Values(), [&](double value) { return table[value].Index(); });
}

void BandUpperBound(benchmark::State& state) {
    std::vector<double> values;
    std::vector<DXFColor> colors;
    for (int i = 0; i < 256; ++i) {
        values.push_back(i);
        colors.emplace_back(static_cast<unsigned long>(i));
    }
    ForEach(state, Values(), [&](double value) {
        const auto above = std::upper_bound(values.begin(), values.end(), value);
        return above == values.begin() ? 0
                                       : colors[static_cast<std::size_t>(above - values.begin()) - 1].Index();
    });
}

} // namespace

BENCHMARK(NearestIndexOurs)->Name("RGB to DXF index/ours");
BENCHMARK(NearestIndexSearch)->Name("RGB to DXF index/search of 256");
BENCHMARK(RgbToHsvOurs)->Name("RGB to HSV/ours");
BENCHMARK(HsvToRgbOurs)->Name("HSV to RGB/ours");
#ifdef HAVE_QCOLOR
BENCHMARK(RgbToHsvQColor)->Name("RGB to HSV/QColor");
BENCHMARK(HsvToRgbQColor)->Name("HSV to RGB/QColor");
#endif
BENCHMARK(BandOurs)->Name("DXF colour of a value in 256 bands/ours");
BENCHMARK(BandUpperBound)->Name("DXF colour of a value in 256 bands/std::upper_bound");
