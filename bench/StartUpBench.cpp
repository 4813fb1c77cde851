// SPDX-License-Identifier: MIT
// Whole processes, from the call that starts them until they have ended: a small command beside a peer's and
// beside a C++ program that does nothing, and the same on a file of 20 MB. Their output goes to /dev/null.

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

class File {
public:
    File(const std::string& name, const std::string& content)
        : m_path("/dev/shm/utilitydll-start-up-" + std::to_string(getpid()) + name) {
        std::ofstream(m_path) << content;
    }
    ~File() { fs::remove(m_path); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

// 20,000 sections of 40 keys, indented as git does.
std::string ManySections() {
    std::string content;
    for (int section = 0; section < 20'000; ++section) {
        content += "[section" + std::to_string(section) + "]\n";
        for (int key = 0; key < 40; ++key)
            content += "\tkey" + std::to_string(key) + " = a value of " + std::to_string(section) + "\n";
    }
    return content;
}

// In a form that both programs read.
const File file("", "[chart]\nscale = 25000\nname = Pensacola Bay\n");
const File largeFile("-large", ManySections());

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

using Commands = std::vector<std::vector<std::string>>;

// Runs them in turn, so that one can undo what another does.
void Start(benchmark::State& state, const Commands& commands) {
    using Clock = std::chrono::steady_clock;
    auto shortest = Clock::duration::max();
    std::size_t next = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        Run(commands[next++ % commands.size()]);
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
    const auto add = [](const char* name, const Commands& commands) {
        return benchmark::RegisterBenchmark(name, Start, commands)
            ->Unit(benchmark::kMicrosecond)
            ->UseRealTime();
    };
    add("GetOneSetting/ours", {{Beside("chartutil"), "settings", "get", file.Path(), "chart", "scale"}});
    add("GetOneSetting/git", {{"git", "config", "--file", file.Path(), "--get", "chart.scale"}});
    add("GetOneSetting/EmptyProgram", {{Beside("EmptyProgram")}});

    const std::string& large = largeFile.Path();
    add("GetFromALargeFile/ours", {{Beside("chartutil"), "settings", "get", large, "section15000", "key33"}});
    add("GetFromALargeFile/git", {{"git", "config", "--file", large, "--get", "section15000.key33"}});
    const auto set = [&](const char* value) {
        return std::vector<std::string>{Beside("chartutil"), "settings", "set", large,
                                        "section15000",      "key33",    value};
    };
    add("SetInALargeFile/ours", {set("one"), set("two")});
    const auto replace = [&](const char* value) { // in the line of that key
        return std::vector<std::string>{"sed", "-i", std::string("615035s/=.*/= ") + value + "/", large};
    };
    return add("SetInALargeFile/sed", {replace("one"), replace("two")});
}();

} // namespace
