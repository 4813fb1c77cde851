// SPDX-License-Identifier: MIT
// Settings files beside their peers: opening and saving a 20 MB file of 20,000 sections with 20 keys,
// look-ups in a small and in a large section, removing keys and renaming sections one by one, editing the
// lines of a file, what the opened file holds in memory, and how the work grows.

#include "UtilityDLL/settings/IniDocument.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/SettingsText.h"

#define SI_NO_CONVERSION // the char interface alone is measured
#include <INIReader.h>
#include <SimpleIni.h>
#include <benchmark/benchmark.h>
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <glib.h>

#include <algorithm>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace {

// Memory-backed, so that saving does not wait for a disk.
const std::string kFolder = "/dev/shm/utilitydll-bench-" + std::to_string(getpid());

struct Input {
    std::string path;
    double size = 0;
};

std::string KeyName(int i) {
    static const char* const stems[] = {"LineColor", "LineWidth", "LineStyle", "GridInterval",
                                        "LabelSpacing"};
    return std::string(stems[i % 5]) + std::to_string(i);
}

std::string KeyValue(int section, int i) {
    switch (i % 4) {
    case 0:
        return std::to_string(section * 20 + i);
    case 1:
        return std::to_string(section * 0.25 + i);
    case 2:
        return "Continuous line of survey block " + std::to_string(section);
    default:
        return "charts/harbour/panel_" + std::to_string(section) + "_" + std::to_string(i) + ".plt";
    }
}

// Plain "name = value" lines, which every peer reads as we do; comments on lines of their own for those that
// know no others.
Input WriteFile(const char* name, int sections, int keys) {
    std::filesystem::create_directories(kFolder);
    Input input{kFolder + "/" + name, 0};
    std::ofstream file(input.path, std::ios::binary);
    for (int s = 0; s < sections; ++s) {
        file << "[Section " << s << "]\n";
        for (int k = 0; k < keys; ++k) {
            if (k % 10 == 3) file << "; set by the planning office, see the survey report\n";
            std::string name = KeyName(k);
            name.resize(17, ' ');
            file << name << "= " << KeyValue(s, k) << "\n";
        }
        file << "\n";
    }
    file.close();
    input.size = static_cast<double>(std::filesystem::file_size(input.path));
    return input;
}

const Input& ManySections() {
    static const Input input = WriteFile("many.ini", 20000, 20);
    return input;
}

struct Cleaner {
    ~Cleaner() { std::filesystem::remove_all(kFolder); }
} cleaner;

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

double HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

// Opens once more beside what is there, to tell what one opened file holds.
template <typename Open> void Report(benchmark::State& state, const Input& input, Open open) {
    malloc_trim(0);
    const double before = HeapInUse();
    const auto opened = open();
    state.counters["bytes_per_file_byte"] = (HeapInUse() - before) / input.size;
    state.SetBytesProcessed(static_cast<std::int64_t>(input.size) * state.iterations());
    benchmark::DoNotOptimize(opened);
}

template <typename Open> void MeasureOpen(benchmark::State& state, Open open) {
    ManySections();
    for (auto _ : state) {
        auto opened = open();
        benchmark::DoNotOptimize(opened);
        state.PauseTiming(); // giving the memory back is not opening
        opened.reset();
        state.ResumeTiming();
    }
    Report(state, ManySections(), open);
}

auto OpenOurs() {
    auto file = std::make_unique<IniFile>();
    if (!file->Open(Wide(ManySections().path))) std::abort();
    return file;
}
auto OpenSimpleIni() {
    auto file = std::make_unique<CSimpleIniA>(false, true);
    file->LoadFile(ManySections().path.c_str());
    return file;
}
auto OpenInih() { return std::make_unique<INIReader>(ManySections().path); }
auto OpenGKeyFile() {
    std::unique_ptr<GKeyFile, void (*)(GKeyFile*)> file(g_key_file_new(), g_key_file_free);
    // GKeyFile knows "#" comments only; its copy of the file has those.
    static const std::string path = [] {
        std::ifstream in(ManySections().path);
        std::string copy = kFolder + "/many.gkey";
        std::ofstream out(copy);
        for (std::string line; std::getline(in, line);) {
            if (!line.empty() && line[0] == ';') line[0] = '#';
            out << line << '\n';
        }
        return copy;
    }();
    if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr)) std::abort();
    return file;
}
auto OpenPropertyTree() {
    auto tree = std::make_unique<boost::property_tree::ptree>();
    boost::property_tree::read_ini(ManySections().path, *tree);
    return tree;
}

BENCHMARK_CAPTURE(MeasureOpen, ours, OpenOurs)->Name("Open20MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MeasureOpen, gkeyfile, OpenGKeyFile)
    ->Name("Open20MB/GKeyFile")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MeasureOpen, simpleini, OpenSimpleIni)
    ->Name("Open20MB/SimpleIni")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MeasureOpen, inih, OpenInih)->Name("Open20MB/INIReader")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MeasureOpen, ptree, OpenPropertyTree)
    ->Name("Open20MB/PropertyTree")
    ->Unit(benchmark::kMillisecond);

void SaveOurs(benchmark::State& state) {
    const auto file = OpenOurs();
    const std::wstring path = Wide(kFolder + "/saved.ini");
    for (auto _ : state)
        if (!file->Save(path)) std::abort();
}
void SaveGKeyFile(benchmark::State& state) {
    const auto file = OpenGKeyFile();
    for (auto _ : state)
        if (!g_key_file_save_to_file(file.get(), (kFolder + "/saved.gkey").c_str(), nullptr)) std::abort();
}
void SaveSimpleIni(benchmark::State& state) {
    const auto file = OpenSimpleIni();
    for (auto _ : state) file->SaveFile((kFolder + "/saved.simple").c_str(), false);
}
void SavePropertyTree(benchmark::State& state) {
    const auto tree = OpenPropertyTree();
    for (auto _ : state) boost::property_tree::write_ini(kFolder + "/saved.ptree", *tree);
}
BENCHMARK(SaveOurs)->Name("Save20MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(SavePropertyTree)->Name("Save20MB/PropertyTree")->Unit(benchmark::kMillisecond);
BENCHMARK(SaveGKeyFile)->Name("Save20MB/GKeyFile")->Unit(benchmark::kMillisecond);
BENCHMARK(SaveSimpleIni)->Name("Save20MB/SimpleIni")->Unit(benchmark::kMillisecond);

// Each look-up takes another name of the section, in an order that no cache foresees.
constexpr std::size_t Next(std::size_t i, std::size_t count) { return (i * 2654435761u + 12345) % count; }

template <std::size_t kKeys> const std::vector<std::string>& Names() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < kKeys; ++i) all.push_back(KeyName(static_cast<int>(i)));
        return all;
    }();
    return names;
}

template <std::size_t kKeys> void LookUpOurs(benchmark::State& state) {
    Section section(L"Section");
    std::vector<std::wstring> names;
    for (const std::string& name : Names<kKeys>()) {
        names.push_back(Wide(name));
        section[names.back()] << names.size();
    }
    const Section& constant = section;
    std::size_t i = 0;
    for (auto _ : state) {
        i = Next(i, kKeys);
        benchmark::DoNotOptimize(constant[names[i]].GetValue().data());
    }
}
template <std::size_t kKeys> void LookUpPropertyTree(benchmark::State& state) {
    boost::property_tree::ptree tree;
    for (const std::string& name : Names<kKeys>()) tree.push_back({name, boost::property_tree::ptree("1")});
    std::size_t i = 0;
    for (auto _ : state) {
        i = Next(i, kKeys);
        benchmark::DoNotOptimize(tree.find(Names<kKeys>()[i])->second.data().data());
    }
}
template <std::size_t kKeys> void LookUpGKeyFile(benchmark::State& state) {
    std::unique_ptr<GKeyFile, void (*)(GKeyFile*)> file(g_key_file_new(), g_key_file_free);
    for (const std::string& name : Names<kKeys>())
        g_key_file_set_value(file.get(), "Section", name.c_str(), "1");
    std::size_t i = 0;
    for (auto _ : state) {
        i = Next(i, kKeys);
        gchar* const value = g_key_file_get_value(file.get(), "Section", Names<kKeys>()[i].c_str(), nullptr);
        benchmark::DoNotOptimize(value);
        g_free(value);
    }
}
BENCHMARK(LookUpOurs<10>)->Name("LookUpIn10/ours");
BENCHMARK(LookUpPropertyTree<10>)->Name("LookUpIn10/PropertyTree");
BENCHMARK(LookUpGKeyFile<10>)->Name("LookUpIn10/GKeyFile");
BENCHMARK(LookUpOurs<100000>)->Name("LookUpIn100000/ours");
BENCHMARK(LookUpPropertyTree<100000>)->Name("LookUpIn100000/PropertyTree");
BENCHMARK(LookUpGKeyFile<100000>)->Name("LookUpIn100000/GKeyFile");

// Removing all keys and renaming all sections, by name and one by one, beside a std::deque that is scanned
// for each.
enum class Order { FRONT_TO_BACK, BACK_TO_FRONT, SHUFFLED };

template <std::size_t kNames> std::vector<std::wstring> WideNames(Order order) {
    std::vector<std::wstring> names;
    for (const std::string& name : Names<kNames>()) names.push_back(Wide(name));
    if (order == Order::BACK_TO_FRONT) std::reverse(names.begin(), names.end());
    if (order == Order::SHUFFLED)
        for (std::size_t i = kNames; i > 1; --i) std::swap(names[i - 1], names[Next(i, i)]);
    return names;
}

template <typename Element>
std::ptrdiff_t FindPlainly(const std::deque<Element>& elements, const std::wstring& name) {
    const HashedString<wchar_t> hashed(name);
    return std::find_if(elements.begin(), elements.end(),
                        [&](const Element& element) { return SameName(element.GetName(), hashed); }) -
           elements.begin();
}

template <std::size_t kKeys, Order order> void RemoveOurs(benchmark::State& state) {
    Section full(L"Section");
    for (const std::wstring& name : WideNames<kKeys>(Order::FRONT_TO_BACK)) full[name] << 1;
    const std::vector<std::wstring> names = WideNames<kKeys>(order);
    for (auto _ : state) {
        state.PauseTiming();
        Section section(full);
        state.ResumeTiming();
        for (const std::wstring& name : names) section.RemoveKey(name);
        if (section.NumKeys() > 0) std::abort();
    }
}
template <std::size_t kKeys, Order order> void RemoveByPlainScan(benchmark::State& state) {
    std::deque<SectionKey> full;
    for (const std::wstring& name : WideNames<kKeys>(Order::FRONT_TO_BACK)) full.emplace_back(name) << 1;
    const std::vector<std::wstring> names = WideNames<kKeys>(order);
    for (auto _ : state) {
        state.PauseTiming();
        std::deque<SectionKey> keys(full);
        state.ResumeTiming();
        for (const std::wstring& name : names) keys.erase(keys.begin() + FindPlainly(keys, name));
        if (!keys.empty()) std::abort();
    }
}

template <std::size_t kSections, Order order> void RenameOurs(benchmark::State& state) {
    IniFile full;
    for (const std::wstring& name : WideNames<kSections>(Order::FRONT_TO_BACK)) full[name];
    const std::vector<std::wstring> names = WideNames<kSections>(order);
    for (auto _ : state) {
        state.PauseTiming();
        IniFile file(full);
        state.ResumeTiming();
        for (const std::wstring& name : names)
            if (!file.RenameSection(name, L"New" + name)) std::abort();
    }
}
template <std::size_t kSections, Order order> void RenameByPlainScan(benchmark::State& state) {
    std::deque<Section> full;
    for (const std::wstring& name : WideNames<kSections>(Order::FRONT_TO_BACK)) full.emplace_back(name);
    const std::vector<std::wstring> names = WideNames<kSections>(order);
    for (auto _ : state) {
        state.PauseTiming();
        std::deque<Section> sections(full);
        state.ResumeTiming();
        for (const std::wstring& name : names) {
            const std::wstring newName = L"New" + name;
            const std::ptrdiff_t position = FindPlainly(sections, name);
            if (FindPlainly(sections, newName) < std::ssize(sections)) std::abort();
            sections[static_cast<std::size_t>(position)].SetName(newName);
        }
    }
}

#define REMOVE_AND_RENAME(count, order, text)                                                                \
    BENCHMARK(RemoveOurs<count, order>)->Name("Remove" #count text "/ours")->Unit(benchmark::kMicrosecond);  \
    BENCHMARK(RemoveByPlainScan<count, order>)                                                               \
        ->Name("Remove" #count text "/PlainScan")                                                            \
        ->Unit(benchmark::kMicrosecond);                                                                     \
    BENCHMARK(RenameOurs<count, order>)->Name("Rename" #count text "/ours")->Unit(benchmark::kMicrosecond);  \
    BENCHMARK(RenameByPlainScan<count, order>)                                                               \
        ->Name("Rename" #count text "/PlainScan")                                                            \
        ->Unit(benchmark::kMicrosecond)
REMOVE_AND_RENAME(20, Order::FRONT_TO_BACK, "FrontToBack");
REMOVE_AND_RENAME(20, Order::SHUFFLED, "Shuffled");
REMOVE_AND_RENAME(100, Order::FRONT_TO_BACK, "FrontToBack");
REMOVE_AND_RENAME(100, Order::BACK_TO_FRONT, "BackToFront");
REMOVE_AND_RENAME(100, Order::SHUFFLED, "Shuffled");
REMOVE_AND_RENAME(16000, Order::FRONT_TO_BACK, "FrontToBack");
REMOVE_AND_RENAME(16000, Order::BACK_TO_FRONT, "BackToFront");
REMOVE_AND_RENAME(16000, Order::SHUFFLED, "Shuffled");

// Growth: one section of 10,000 and of 100,000 keys. "peer / ours" of the larger one is the inverse growth.
void WriteKeysByName(benchmark::State& state) {
    std::vector<std::wstring> names;
    for (int i = 0; i < state.range(0); ++i) names.push_back(Wide(KeyName(i)));
    for (auto _ : state) {
        Section section(L"Section");
        for (const std::wstring& name : names) section[name] << 1;
        benchmark::DoNotOptimize(section.NumKeys());
    }
}
void OpenOneSection(benchmark::State& state) {
    const Input input = WriteFile("one.ini", 1, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        IniFile file(Wide(input.path));
        benchmark::DoNotOptimize(file.NumSections());
    }
}
void SaveOneSection(benchmark::State& state) {
    const Input input = WriteFile("one.ini", 1, static_cast<int>(state.range(0)));
    IniFile file(Wide(input.path));
    for (auto _ : state)
        if (!file.Save(Wide(kFolder + "/one-saved.ini"))) std::abort();
}
BENCHMARK(WriteKeysByName)
    ->Name("Growth/WriteByName")
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenOneSection)->Name("Growth/Open")->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(SaveOneSection)->Name("Growth/Save")->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

// Editing the text of a file: from the bytes to the bytes with other values in `count` of its keys, which
// stand all over it.
const std::string& TextOf(const Input& input) {
    static std::map<std::string, std::string> texts;
    std::string& text = texts[input.path];
    if (text.empty()) {
        std::ifstream file(input.path, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(file), {});
    }
    return text;
}

void ParseDocument(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        std::string text = TextOf(ManySections());
        auto document = std::make_unique<IniDocument>();
        IniFile::Fault fault;
        state.ResumeTiming();
        if (!document->Parse(std::move(text), fault)) std::abort();
        benchmark::DoNotOptimize(document->Read(L"Section 19999", L"LineColor0"));
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
}
void EditDocument(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        std::string text = TextOf(ManySections());
        state.ResumeTiming();
        IniDocument document;
        IniFile::Fault fault;
        if (!document.Parse(std::move(text), fault)) std::abort();
        for (std::int64_t i = 0; i < state.range(0); ++i)
            if (!document.Set(L"Section " + std::to_wstring(19999 - i * 19), L"LineColor0", L"7"))
                std::abort();
        benchmark::DoNotOptimize(document.Text());
    }
}
void EditGKeyFile(benchmark::State& state) {
    static const Input input = [] {
        OpenGKeyFile(); // writes its copy of the file
        return Input{kFolder + "/many.gkey", 0};
    }();
    const std::string& text = TextOf(input);
    for (auto _ : state) {
        const std::unique_ptr<GKeyFile, void (*)(GKeyFile*)> file(g_key_file_new(), g_key_file_free);
        if (!g_key_file_load_from_data(file.get(), text.data(), text.size(), G_KEY_FILE_KEEP_COMMENTS,
                                       nullptr))
            std::abort();
        for (std::int64_t i = 0; i < state.range(0); ++i)
            g_key_file_set_value(file.get(), ("Section " + std::to_string(19999 - i * 19)).c_str(),
                                 "LineColor0", "7");
        const std::unique_ptr<char, void (*)(void*)> edited(g_key_file_to_data(file.get(), nullptr, nullptr),
                                                            g_free);
        benchmark::DoNotOptimize(edited.get());
    }
}
BENCHMARK(ParseDocument)->Name("FindKeyIn20MB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(EditDocument)->Name("Edit20MB/ours")->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(EditGKeyFile)->Name("Edit20MB/GKeyFile")->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond);

// Growth of edits in one section of so many keys: another value for each, as many new keys, no keys.
void EditOneSection(benchmark::State& state) {
    const Input input = WriteFile("one.ini", 1, static_cast<int>(state.range(0)));
    std::ifstream file(input.path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    for (auto _ : state) {
        IniDocument document;
        IniFile::Fault fault;
        if (!document.Parse(text, fault)) std::abort();
        const std::wstring section = L"Section 0";
        for (int i = 0; i < state.range(0); ++i) {
            const std::wstring key = Wide(KeyName(i));
            if (!document.Set(section, key, L"7") || !document.Set(section, L"New" + key, L"8")) std::abort();
        }
        for (int i = 0; i < state.range(0); ++i)
            if (!document.Remove(section, Wide(KeyName(i)))) std::abort();
        benchmark::DoNotOptimize(document.Changes());
        benchmark::DoNotOptimize(document.Text());
    }
}
BENCHMARK(EditOneSection)->Name("Growth/Edit")->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

} // namespace
