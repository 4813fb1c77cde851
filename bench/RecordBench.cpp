// SPDX-License-Identifier: MIT
// Records in sections and in one line, beside the same with a wide string stream for each value.

#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "UtilityDLL/presentation/MapInfo.h"
#include "UtilityDLL/presentation/SunIlluminationInfo.h"
#include "UtilityDLL/presentation/TextInfo.h"

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

// --- the peer's way: a stream for every number ---

template <typename Number> void Put(Section& section, const wchar_t* key, Number value) {
    std::wostringstream stream;
    stream << std::fixed << value;
    section[key] << stream.str();
}

template <typename Number> void Get(const Section& section, const wchar_t* key, Number& value) {
    std::wistringstream(section[key].GetValue()) >> value;
}

template <typename Value> void AddItem(std::wstring& line, const Value& value) {
    std::wostringstream stream;
    stream << value;
    if (!line.empty()) line += L',';
    line += stream.str();
}

std::vector<std::wstring> SplitByStream(const std::wstring& line) {
    std::vector<std::wstring> items;
    std::wistringstream stream(line);
    for (std::wstring item; std::getline(stream, item, L',');) items.push_back(item);
    return items;
}

template <typename Number> Number Item(const std::vector<std::wstring>& items, std::size_t index) {
    Number value{};
    if (index < items.size()) std::wistringstream(items[index]) >> value;
    return value;
}

// --- records in sections ---

SunIlluminationInfo Sun() {
    SunIlluminationInfo sun;
    sun.Enable(true);
    sun.Azimuth(311.25);
    sun.Elevation(27.5);
    sun.Contrast(1.75);
    return sun;
}

template <typename Record> void WriteOurs(benchmark::State& state, const Record& record) {
    for (auto _ : state) {
        Section section(L"Record");
        record.Write(section);
        benchmark::DoNotOptimize(section);
    }
}

template <typename Record> void ReadOurs(benchmark::State& state, const Record& record) {
    Section section(L"Record");
    record.Write(section);
    Record read;
    for (auto _ : state) {
        read.Read(section);
        benchmark::DoNotOptimize(read);
    }
}

void WriteSunOurs(benchmark::State& state) { WriteOurs(state, Sun()); }
void WriteSunStream(benchmark::State& state) {
    const SunIlluminationInfo sun = Sun();
    for (auto _ : state) {
        Section section(L"Record");
        Put(section, L"SunIllumunationEnable", sun.Enable());
        Put(section, L"SunIllumunationAzimuth", sun.Azimuth());
        Put(section, L"SunIllumunationElevation", sun.Elevation());
        Put(section, L"SunIllumunationContrast", sun.Contrast());
        benchmark::DoNotOptimize(section);
    }
}

void ReadSunOurs(benchmark::State& state) { ReadOurs(state, Sun()); }
void ReadSunStream(benchmark::State& state) {
    Section section(L"Record");
    Sun().Write(section);
    const Section& source = section;
    SunIlluminationInfo read;
    for (auto _ : state) {
        bool enable = false;
        double azimuth = 0, elevation = 0, contrast = 0;
        Get(source, L"SunIllumunationEnable", enable);
        Get(source, L"SunIllumunationAzimuth", azimuth);
        Get(source, L"SunIllumunationElevation", elevation);
        Get(source, L"SunIllumunationContrast", contrast);
        read.Enable(enable);
        read.Azimuth(azimuth);
        read.Elevation(elevation);
        read.Contrast(contrast);
        benchmark::DoNotOptimize(read);
    }
}

const wchar_t* const kMapKeys[] = {L"SymbolizationType", L"ScaleLevel",     L"DisplayType",
                                   L"ShowTextGeneric",   L"ShowTextOther",  L"ShowChartContour",
                                   L"ShowLightsInfo",    L"AntiCluttering", L"ShowBoundaries"};

void WriteMapOurs(benchmark::State& state) { WriteOurs(state, CMapInfo()); }
void WriteMapStream(benchmark::State& state) {
    const CMapInfo map;
    for (auto _ : state) {
        Section section(L"Record");
        Put(section, kMapKeys[0], map.SymbolizationType());
        Put(section, kMapKeys[1], map.ScaleLevel());
        Put(section, kMapKeys[2], map.DisplayType());
        Put(section, kMapKeys[3], map.TextGeneric());
        Put(section, kMapKeys[4], map.TextOther());
        Put(section, kMapKeys[5], map.ChartContour());
        Put(section, kMapKeys[6], map.LightsInfo());
        Put(section, kMapKeys[7], map.AntiCluttering());
        Put(section, kMapKeys[8], map.Boundaries());
        benchmark::DoNotOptimize(section);
    }
}

void ReadMapOurs(benchmark::State& state) { ReadOurs(state, CMapInfo()); }
void ReadMapStream(benchmark::State& state) {
    Section section(L"Record");
    CMapInfo().Write(section);
    const Section& source = section;
    for (auto _ : state) {
        int numbers[3] = {};
        bool flags[6] = {};
        for (std::size_t i = 0; i < 3; ++i) Get(source, kMapKeys[i], numbers[i]);
        for (std::size_t i = 0; i < 6; ++i) Get(source, kMapKeys[i + 3], flags[i]);
        benchmark::DoNotOptimize(numbers);
        benchmark::DoNotOptimize(flags);
    }
}

// --- one-line forms ---

DepthLabelInfo Label() {
    DepthLabelInfo label;
    label.SetFont(L"Courier New");
    label.SetSize(3.25f);
    label.SetStyle(TextInfo::BOLD);
    label.SetColor(0x336699);
    label.SetRotation(Angle(45.5));
    label.SetRectWidth(80.5f);
    return label;
}

void LineToTextOurs(benchmark::State& state) {
    const DepthLabelInfo label = Label();
    for (auto _ : state) benchmark::DoNotOptimize(label.ToString());
}
void LineToTextStream(benchmark::State& state) {
    const DepthLabelInfo label = Label();
    for (auto _ : state) {
        std::wstring line = label.Font();
        AddItem(line, label.Size());
        AddItem(line, static_cast<int>(label.Style()));
        AddItem(line, static_cast<int>(label.Justification()));
        AddItem(line, DXFColor(label.Color()).Index());
        AddItem(line, label.Rotation().Get());
        AddItem(line, label.RectWidth());
        AddItem(line, label.MultiLine());
        AddItem(line, static_cast<int>(label.Annotation()));
        AddItem(line, label.Color());
        AddItem(line, label.Precision());
        AddItem(line, static_cast<int>(label.Presentation()));
        AddItem(line, static_cast<int>(label.Placement()));
        AddItem(line, label.UseTextColor());
        AddItem(line, label.AutoTextRotation());
        AddItem(line, label.GetUnderlineDryingHeights());
        AddItem(line, label.GetNoDecimalZeros());
        benchmark::DoNotOptimize(line);
    }
}

void TextToLineOurs(benchmark::State& state) {
    const std::wstring line = Label().ToString();
    DepthLabelInfo label;
    for (auto _ : state) {
        label.FromString(line);
        benchmark::DoNotOptimize(label);
    }
}
void TextToLineStream(benchmark::State& state) {
    const std::wstring line = Label().ToString();
    DepthLabelInfo label;
    for (auto _ : state) {
        const std::vector<std::wstring> items = SplitByStream(line);
        label.SetFont(items[0]);
        label.SetSize(Item<float>(items, 1));
        label.SetStyle(static_cast<TextInfo::STYLE>(Item<int>(items, 2)));
        label.SetJustification(static_cast<TextInfo::JUSTIFICATION>(Item<int>(items, 3)));
        label.SetRotation(Angle(Item<double>(items, 5)));
        label.SetRectWidth(Item<float>(items, 6));
        label.SetMultiLine(Item<bool>(items, 7));
        label.SetAnnotation(static_cast<TextInfo::ANNOTATION>(Item<int>(items, 8)));
        label.SetColor(Item<unsigned long>(items, 9));
        label.SetPrecision(Item<int>(items, 10));
        label.SetPresentation(static_cast<DepthLabelInfo::PRESENTATION>(Item<int>(items, 11)));
        label.SetPlacement(static_cast<DepthLabelInfo::PLACEMENT>(Item<int>(items, 12)));
        label.UseTextColor(Item<bool>(items, 13));
        label.AutoTextRotation(Item<bool>(items, 14));
        label.SetUnderlineDryingHeights(Item<bool>(items, 15));
        label.SetNoDecimalZeros(Item<bool>(items, 16));
        benchmark::DoNotOptimize(label);
    }
}

LineInfo Line() {
    LineInfo line;
    line.SetWidth(0.35f);
    line.SetColor(0x336699);
    line.SetStyle(LineInfo::DASH_DOT);
    return line;
}

void StyleToTextOurs(benchmark::State& state) {
    const LineInfo line = Line();
    for (auto _ : state) benchmark::DoNotOptimize(line.ToString());
}
void StyleToTextStream(benchmark::State& state) {
    const LineInfo line = Line();
    for (auto _ : state) {
        std::wstring text;
        AddItem(text, line.Width());
        AddItem(text, DXFColor(line.Color()).Index());
        AddItem(text, line.StyleStr());
        AddItem(text, line.Color());
        AddItem(text, line.Enable());
        benchmark::DoNotOptimize(text);
    }
}

void TextToStyleOurs(benchmark::State& state) {
    const std::wstring text = Line().ToString();
    LineInfo line;
    for (auto _ : state) {
        line.FromString(text);
        benchmark::DoNotOptimize(line);
    }
}
void TextToStyleStream(benchmark::State& state) {
    const std::wstring text = Line().ToString();
    LineInfo line;
    for (auto _ : state) {
        const std::vector<std::wstring> items = SplitByStream(text);
        line.SetWidth(Item<float>(items, 0));
        line.SetStyleStr(items[2]);
        line.SetColor(Item<unsigned long>(items, 3));
        line.SetEnable(Item<bool>(items, 4));
        benchmark::DoNotOptimize(line);
    }
}

} // namespace

BENCHMARK(WriteSunOurs)->Name("Write a sun illumination/ours");
BENCHMARK(WriteSunStream)->Name("Write a sun illumination/streams");
BENCHMARK(ReadSunOurs)->Name("Read a sun illumination/ours");
BENCHMARK(ReadSunStream)->Name("Read a sun illumination/streams");
BENCHMARK(WriteMapOurs)->Name("Write a map display/ours");
BENCHMARK(WriteMapStream)->Name("Write a map display/streams");
BENCHMARK(ReadMapOurs)->Name("Read a map display/ours");
BENCHMARK(ReadMapStream)->Name("Read a map display/streams");
BENCHMARK(LineToTextOurs)->Name("Depth label to its line/ours");
BENCHMARK(LineToTextStream)->Name("Depth label to its line/streams");
BENCHMARK(TextToLineOurs)->Name("Depth label from its line/ours");
BENCHMARK(TextToLineStream)->Name("Depth label from its line/streams");
BENCHMARK(StyleToTextOurs)->Name("Line style to its line/ours");
BENCHMARK(StyleToTextStream)->Name("Line style to its line/streams");
BENCHMARK(TextToStyleOurs)->Name("Line style from its line/ours");
BENCHMARK(TextToStyleStream)->Name("Line style from its line/streams");
