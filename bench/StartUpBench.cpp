// Whole processes, from the call that starts them until they have ended: a small command beside a peer's and
// beside a C++ program that does nothing. Their output goes to /dev/null.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

// With the value that both programs look up, in a form that both read.
class SettingsFile {
public:
    SettingsFile() : m_path("/dev/shm/utilitydll-start-up-" + std::to_string(getpid())) {
        std::ofstream(m_path) << "[chart]\nscale = 25000\nname = Pensacola Bay\n";
    }
    ~SettingsFile() { fs::remove(m_path); }
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

const SettingsFile file;

void Run(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = -1;
    if (posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) == 0)
        waitpid(process, &status, 0);
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) std::abort();
}

void Start(benchmark::State& state, const std::vector<std::string>& words) {
    using Clock = std::chrono::steady_clock;
    auto shortest = Clock::duration::max();
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        Run(words);
        shortest = std::min(shortest, Clock::now() - start);
    }
    // What a machine with other work to do shows best.
    state.counters["shortest_us"] = std::chrono::duration<double, std::micro>(shortest).count();
}

std::string Beside(const char* program) {
    return (fs::read_symlink("/proc/self/exe").parent_path() / program).string();
}

// Processor time is the children's own; what counts is how long somebody waits.
[[maybe_unused]] const auto* const registered = [] {
    const auto add = [](const char* name, const std::vector<std::string>& words) {
        return benchmark::RegisterBenchmark(name, Start, words)->Unit(benchmark::kMicrosecond)->UseRealTime();
    };
    add("GetOneSetting/ours", {Beside("chartutil"), "settings", "get", file.Path(), "chart", "scale"});
    add("GetOneSetting/git", {"git", "config", "--file", file.Path(), "--get", "chart.scale"});
    return add("GetOneSetting/EmptyProgram", {Beside("EmptyProgram")});
}();

} // namespace
