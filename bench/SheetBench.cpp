// SPDX-License-Identifier: MIT
// Charts from soundings to the picture, as whole processes: `chartutil sheet` to SVG beside GMT to
// PostScript, which makes a surface of as many cells, colours it, traces and labels contours, and writes
// depths, of each 300 m the median one. Its triangulation is for few soundings; of many it grids the medians
// of the cells by nearest neighbours, the fastest of its ways. A folder in memory holds all files, so that
// nobody waits for a disk.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const fs::path kBuild = fs::read_symlink("/proc/self/exe").parent_path().parent_path();
const fs::path kSample = kBuild / "../../data/pensacola";

class Folder {
public:
    Folder() : m_path("/dev/shm/utilitydll-sheet-" + std::to_string(getpid())) {
        fs::create_directory(m_path);
        fs::copy(kSample, m_path / "sample");
        for (const int count : {100000, 1000000}) WriteSurvey(count);
    }
    ~Folder() { fs::remove_all(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const fs::path& Path() const { return m_path; }

private:
    // The sample's project with soundings of a wavy bottom, with the noise of an echo sounder.
    void WriteSurvey(int count) const {
        const fs::path folder = m_path / std::to_string(count);
        fs::copy(kSample, folder);
        std::ofstream csv(folder / "soundings.csv");
        csv << "easting_m,northing_m,depth_m\n";
        std::mt19937 random(13);
        const auto share = [&] { return static_cast<double>(random()) / 4294967296.0; };
        for (int i = 0; i < count; ++i) {
            const double x = 40000 * share(), y = 28000 * share();
            const double noise = 0.1 * (share() + share() + share() + share() - 2);
            const double depth =
                12 + 6 * std::sin(x / 5200) * std::cos(y / 4100) + 2 * std::sin(x / 900 + y / 1300) + noise;
            char line[64];
            std::snprintf(line, sizeof line, "%.2f,%.2f,%.2f\n", 500000 + x, 3360000 + y, depth);
            csv << line;
        }
    }

    fs::path m_path;
};

const Folder folder;

void Run(benchmark::State& state, const std::string& command) {
    for (auto _ : state)
        if (std::system(("cd " + folder.Path().string() + " && " + command + " >/dev/null 2>&1").c_str()) !=
            0)
            state.SkipWithError("it ended with an error");
}

// Ours ends with 1 where the project leaves something to be said; the chart is drawn nevertheless.
std::string Ours(const std::string& project) {
    return "{ " + (kBuild / "bin/chartutil").string() + " sheet " + project +
           " -o ours.svg; test -s ours.svg; }";
}

// `surface` makes depths.nc of $FILE in $REGION.
std::string Gmt(const std::string& project, const std::string& region, const std::string& surface) {
    return "export FILE=" + project + "/soundings.csv REGION=-R" + region + " MAP=-JX80.3c/55.6c && " +
           surface +
           " && gmt makecpt -Cabyss -T0,2,5,10,15,20 -I >depths.cpt"
           " && gmt grdimage depths.nc $REGION $MAP -Cdepths.cpt -K >gmt.ps"
           " && gmt grdcontour depths.nc $REGION $MAP -C1 -A5 -S4 -Q20 -O -K >>gmt.ps"
           " && gmt blockmedian $FILE -h1 -i0:2 $REGION -I300+e -o0:2 >depths.txt"
           " && gmt pstext depths.txt $REGION $MAP -F+f5p+z%.1f -O >>gmt.ps && test -s gmt.ps";
}

const std::string kTriangles = "gmt triangulate $FILE -h1 -i0:2 $REGION -I48 -Gdepths.nc";
const std::string kNearest = "gmt blockmedian $FILE -h1 -i0:2 $REGION -I48 -o0:2 >medians.txt"
                             " && gmt nearneighbor medians.txt $REGION -I48 -S300 -N4 -Gdepths.nc";
const std::string kSampleRegion = "465888/514080/3350016/3383424", kRegion = "496000/544192/3357312/3390720";

void Register(const std::string& task, const std::string& who, const std::string& command) {
    benchmark::RegisterBenchmark((task + "/" + who).c_str(), Run, command)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
}

const bool isRegistered = [] {
    Register("chart of 2,500 soundings", "ours", Ours("sample"));
    Register("chart of 2,500 soundings", "GMT", Gmt("sample", kSampleRegion, kTriangles));
    for (const std::string count : {"100000", "1000000"}) {
        Register("of " + count, "ours", Ours(count));
        Register("of " + count, "GMT", Gmt(count, kRegion, kNearest));
    }
    return true;
}();

} // namespace
