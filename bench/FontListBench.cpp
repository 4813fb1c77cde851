// SPDX-License-Identifier: MIT
// Filling a list with the installed faces beside Qt's own ways to it: its list of faces in a plain list, and
// its control for fonts. Each round makes the control anew, as a dialog does that opens.

#include "UtilityDLL/text/FontCombo.h"

#include <QApplication>
#include <QFontComboBox>
#include <QFontDatabase>
#include <benchmark/benchmark.h>
#include <stdexcept>

namespace {

void MakeApplication() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "FontListBench";
    static char* argv[] = {name, nullptr};
    static const QApplication application(argc, argv);
}

void FillOurs(benchmark::State& state) {
    MakeApplication();
    for (auto _ : state) {
        FontCombo combo;
        if (!combo.Create()) throw std::runtime_error("there is no list");
        combo.FillCombo();
        if (combo.GetCount() == 0) throw std::runtime_error("there are no faces");
    }
}

void FillQComboBox(benchmark::State& state) {
    MakeApplication();
    for (auto _ : state) {
        QComboBox combo;
        combo.addItems(QFontDatabase::families());
        if (combo.count() == 0) throw std::runtime_error("there are no faces");
    }
}

void FillQFontComboBox(benchmark::State& state) {
    MakeApplication();
    for (auto _ : state) {
        const QFontComboBox combo;
        if (combo.count() == 0) throw std::runtime_error("there are no faces");
    }
}

BENCHMARK(FillOurs)->Name("FillFontList/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(FillQComboBox)->Name("FillFontList/QComboBox")->Unit(benchmark::kMicrosecond);
BENCHMARK(FillQFontComboBox)->Name("FillFontList/QFontComboBox")->Unit(benchmark::kMicrosecond);

} // namespace
