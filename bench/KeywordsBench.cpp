// SPDX-License-Identifier: MIT
// Keyword sets over 10 MB of layout text with 1,000 different names, a wide character counted as one byte.
// The peer does the same job with GLib: strchr for the percent signs and a GHashTable for the counts.

#include "UtilityDLL/keywords/Keywords.h"
#include "tests/support/Random.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstring>
#include <glib.h>
#include <string>

namespace {

constexpr std::size_t kMegabyte = 1'000'000;
constexpr int kNames = 1000;

// Lines of a title block: some words, then a placeholder.
std::string LayoutText(std::size_t size) {
    Random random(1);
    std::string text;
    while (text.size() < size) {
        text.append(8 + random() % 40, static_cast<char>('a' + random() % 26));
        text += " %project item " + std::to_string(random() % kNames) + "%\r\n";
    }
    text.resize(size);
    return text;
}

template <std::size_t Size> void Ours(benchmark::State& state) {
    const std::string bytes = LayoutText(Size);
    const std::wstring text(bytes.begin(), bytes.end());
    int size = 0;
    for (auto _ : state) {
        CKeywords set;
        set.AddKeywordsInString(text);
        size = set.GetSize();
    }
    if (size != kNames) state.SkipWithError("wrong number of names");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Size));
}

template <std::size_t Size> void Glib(benchmark::State& state) {
    const std::string text = LayoutText(Size);
    guint size = 0;
    for (auto _ : state) {
        GHashTable* const counts = g_hash_table_new_full(g_str_hash, g_str_equal, g_free, nullptr);
        const char* at = text.c_str();
        while (const char* const open = std::strchr(at, '%')) {
            const char* const close = std::strpbrk(open + 1, "%\r\n");
            if (!close) break;
            at = close + 1;
            if (*close != '%' || close == open + 1) continue;
            char* const name = g_strndup(open + 1, static_cast<gsize>(close - open - 1));
            const gpointer count = g_hash_table_lookup(counts, name);
            g_hash_table_insert(counts, name, GINT_TO_POINTER(GPOINTER_TO_INT(count) + 1));
        }
        size = g_hash_table_size(counts);
        g_hash_table_destroy(counts);
    }
    if (size != kNames) state.SkipWithError("wrong number of names");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Size));
}

BENCHMARK(Ours<kMegabyte>)->Name("AddKeywordsInString 1 MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(Glib<kMegabyte>)->Name("AddKeywordsInString 1 MB/glib")->Unit(benchmark::kMillisecond);
BENCHMARK(Ours<10 * kMegabyte>)->Name("AddKeywordsInString 10 MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(Glib<10 * kMegabyte>)->Name("AddKeywordsInString 10 MB/glib")->Unit(benchmark::kMillisecond);

} // namespace
