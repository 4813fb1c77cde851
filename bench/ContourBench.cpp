// SPDX-License-Identifier: MIT
// Contour definition files of 10,000 and 100,000 levels. The peer does the same with GLib's GKeyFile: the
// same sections, keys and values, read with its typed getters into the same records.

#include "UtilityDLL/contours/ContourDefinitionList.h"

#include "VelmBase/WideString.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <glib.h>
#include <string>
#include <vector>

namespace {

using ContourDefInfo = ContourDefinitionList::ContourDefInfo;

// A file that is gone at the end of a benchmark.
class ScratchFile {
public:
    explicit ScratchFile(const char* name) : m_path(std::filesystem::temp_directory_path() / name) {}
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string Narrow() const { return m_path.string(); }
    std::wstring Wide() const { return FromUtf8(m_path.string()); }

private:
    std::filesystem::path m_path;
};

ContourDefinitionList ManyContours(int count) {
    ContourDefinitionList list;
    list.Generate(0, count - 1, 1);
    for (int i = 0; i < count; ++i)
        list.Set(i, {.lineWidth = 0.25f,
                     .lineType = i % 3,
                     .level = static_cast<double>(i),
                     .trueColor = static_cast<std::uint32_t>(i * 16 & 0xFFFFFF),
                     .annotate = i % 5 == 0});
    return list;
}

constexpr const char* kLineStyles[] = {"CONTINUOUS", "DASHED", "DOTTED"};

template <int Count> void SaveOurs(benchmark::State& state) {
    const ContourDefinitionList list = ManyContours(Count);
    const ScratchFile file("contour-bench-ours.cdf");
    for (auto _ : state)
        if (!list.Save(file.Wide().c_str())) state.SkipWithError("not saved");
}

template <int Count> void SaveGlib(benchmark::State& state) {
    const ContourDefinitionList list = ManyContours(Count);
    const ScratchFile file("contour-bench-glib.cdf");
    for (auto _ : state) {
        GKeyFile* const keys = g_key_file_new();
        char group[32];
        for (int i = 0; i < Count; ++i) {
            std::snprintf(group, sizeof group, "Contour(%d)", i);
            g_key_file_set_double(keys, group, "Level", list[i].level);
            g_key_file_set_integer(keys, group, "Color", i % 256);
            g_key_file_set_uint64(keys, group, "TrueColor", list[i].trueColor);
            g_key_file_set_string(keys, group, "LineType", kLineStyles[list[i].lineType]);
            g_key_file_set_double(keys, group, "LineWidth", static_cast<double>(list[i].lineWidth));
            g_key_file_set_integer(keys, group, "Annotate", list[i].annotate);
        }
        if (!g_key_file_save_to_file(keys, file.Narrow().c_str(), nullptr)) state.SkipWithError("not saved");
        g_key_file_free(keys);
    }
}

template <int Count> void LoadOurs(benchmark::State& state) {
    const ScratchFile file("contour-bench-load-ours.cdf");
    ManyContours(Count).Save(file.Wide().c_str());
    for (auto _ : state) {
        ContourDefinitionList list;
        if (!list.Load(file.Wide().c_str()) || list.NumContours() != Count) state.SkipWithError("not loaded");
    }
}

template <int Count> void LoadGlib(benchmark::State& state) {
    const ScratchFile file("contour-bench-load-glib.cdf");
    ManyContours(Count).Save(file.Wide().c_str());
    for (auto _ : state) {
        std::vector<ContourDefInfo> list;
        GKeyFile* const keys = g_key_file_new();
        if (!g_key_file_load_from_file(keys, file.Narrow().c_str(), G_KEY_FILE_NONE, nullptr))
            state.SkipWithError("not loaded");
        char group[32];
        for (int i = 0;; ++i) {
            std::snprintf(group, sizeof group, "Contour(%d)", i);
            if (!g_key_file_has_group(keys, group)) break;
            ContourDefInfo& info = list.emplace_back();
            info.level = g_key_file_get_double(keys, group, "Level", nullptr);
            benchmark::DoNotOptimize(g_key_file_get_integer(keys, group, "Color", nullptr));
            info.trueColor =
                static_cast<std::uint32_t>(g_key_file_get_uint64(keys, group, "TrueColor", nullptr));
            char* const style = g_key_file_get_string(keys, group, "LineType", nullptr);
            for (int type = 0; type < 3; ++type)
                if (style && g_ascii_strcasecmp(style, kLineStyles[type]) == 0) info.lineType = type;
            g_free(style);
            info.lineWidth = static_cast<float>(g_key_file_get_double(keys, group, "LineWidth", nullptr));
            info.annotate = g_key_file_get_integer(keys, group, "Annotate", nullptr) != 0;
        }
        g_key_file_free(keys);
        if (list.size() != Count) state.SkipWithError("wrong number of levels");
    }
}

constexpr auto kUnit = benchmark::kMillisecond;
BENCHMARK(SaveOurs<10000>)->Name("Save 10,000 levels/ours")->Unit(kUnit);
BENCHMARK(SaveGlib<10000>)->Name("Save 10,000 levels/glib")->Unit(kUnit);
BENCHMARK(SaveOurs<100000>)->Name("Save 100,000 levels/ours")->Unit(kUnit);
BENCHMARK(SaveGlib<100000>)->Name("Save 100,000 levels/glib")->Unit(kUnit);
BENCHMARK(LoadOurs<10000>)->Name("Load 10,000 levels/ours")->Unit(kUnit);
BENCHMARK(LoadGlib<10000>)->Name("Load 10,000 levels/glib")->Unit(kUnit);
BENCHMARK(LoadOurs<100000>)->Name("Load 100,000 levels/ours")->Unit(kUnit);
BENCHMARK(LoadGlib<100000>)->Name("Load 100,000 levels/glib")->Unit(kUnit);

} // namespace
