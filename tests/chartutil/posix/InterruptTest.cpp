// SPDX-License-Identifier: MIT
// Whole processes that are asked to end in the middle of their work: nothing is half written, no temporary
// file stays, and whoever started the program sees that it was interrupted. The moment is made certain by
// what the program waits for, never by time.

#include "tests/chartutil/posix/TypedCtrlC.h"
#include "tests/support/Program.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::AnyOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

void CloseOnce(int& descriptor) {
    if (descriptor != -1) close(descriptor);
    descriptor = -1;
}

// chartutil behind pipes of one page each, so that it soon waits for whoever reads them.
class Running {
public:
    explicit Running(const std::vector<std::string>& arguments, bool ignoresInterrupt = false) {
        const std::string program = ChartutilPath();
        int input[2];
        int output[2];
        int error[2];
        for (int* const ends : {input, output, error}) {
            EXPECT_EQ(0, pipe2(ends, O_CLOEXEC));
            fcntl(ends[1], F_SETPIPE_SZ, 4096);
        }
        m_child = fork();
        if (m_child == 0) {
            dup2(input[0], STDIN_FILENO);
            dup2(output[1], STDOUT_FILENO);
            dup2(error[1], STDERR_FILENO);
            BecomeChartutil(arguments, program, ignoresInterrupt);
        }
        close(input[0]);
        m_input = input[1];
        m_output = {output[0], output[1], {}};
        m_error = {error[0], error[1], {}};
    }
    ~Running() {
        if (m_child > 0) kill(m_child, SIGKILL);
        if (m_child > 0) waitpid(m_child, nullptr, 0);
        for (int* const end :
             {&m_input, &m_output.reading, &m_output.writing, &m_error.reading, &m_error.writing})
            CloseOnce(*end);
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    void Signal(int number) const { EXPECT_EQ(0, kill(m_child, number)); }

    void Feed(std::string_view text) const {
        EXPECT_EQ(static_cast<ssize_t>(text.size()), write(m_input, text.data(), text.size()));
    }
    void EndInput() { CloseOnce(m_input); }

    // Until it has filled the pipe of its output, or of its errors, and waits for room.
    void WaitUntilOutputIsFull() const { WaitUntilFull(m_output.writing); }
    void WaitUntilErrorIsFull() const { WaitUntilFull(m_error.writing); }

    // Until it has begun the file that is to become `path`, which may have no name yet.
    void WaitUntilItWrites(const fs::path& path) const {
        while (!Writes(path)) sched_yield();
    }

    // Until its handler has run for the first signal: a second one that comes before would be lost.
    void WaitUntilNoted() const {
        while (CatchesCtrlC()) sched_yield();
    }

    // Reads all that it still writes, and waits for its end. The signal that ended it; 0 when it was none.
    int End() {
        CloseOnce(m_output.writing);
        CloseOnce(m_error.writing);
        for (bool isOpen = true; isOpen;) {
            pollfd sources[] = {{m_output.reading, POLLIN, 0}, {m_error.reading, POLLIN, 0}};
            poll(sources, 2, -1);
            isOpen = false;
            if (m_output.reading != -1) isOpen |= sources[0].revents == 0 || m_output.Drain();
            if (m_error.reading != -1) isOpen |= sources[1].revents == 0 || m_error.Drain();
        }
        m_status = 0;
        waitpid(m_child, &m_status, 0);
        m_child = -1;
        return WIFSIGNALED(m_status) ? WTERMSIG(m_status) : 0;
    }
    int ExitCode() const { return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1; }
    const std::string& Output() const { return m_output.text; }
    const std::string& Error() const { return m_error.text; }

private:
    struct Pipe {
        int reading = -1;
        int writing = -1; // kept to see when it is full
        std::string text;

        bool Drain() {
            char bytes[4096];
            const ssize_t got = read(reading, bytes, sizeof bytes);
            if (got > 0) text.append(bytes, static_cast<std::size_t>(got));
            if (got == 0) CloseOnce(reading);
            return got > 0;
        }
    };

    static void WaitUntilFull(int pipe) {
        pollfd room{pipe, POLLOUT, 0};
        while (poll(&room, 1, 0) != 0) sched_yield();
    }

    bool Writes(const fs::path& path) const {
        std::error_code gone; // closed while it is looked at
        for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(m_child) + "/fd", gone)) {
            const fs::path file = fs::read_symlink(entry, gone);
            if (!gone && file.parent_path() == path.parent_path() && file != path) return true;
        }
        return false;
    }

    bool CatchesCtrlC() const {
        const std::string status = ReadBytes(fs::path("/proc/" + std::to_string(m_child) + "/status"));
        const std::size_t place = status.find("SigCgt:");
        EXPECT_NE(std::string::npos, place);
        if (place == std::string::npos) return false;
        return std::stoull(status.substr(place + 7), nullptr, 16) >> (SIGINT - 1) & 1;
    }

    pid_t m_child = -1;
    int m_input = -1;
    Pipe m_output, m_error;
    int m_status = 0;
};

// Sparse, and minutes of work.
std::string HugeFile(const TemporaryFolder& folder, const char* name) {
    WriteBytes(folder.Path() / name, "x");
    fs::resize_file(folder.Path() / name, std::uintmax_t{256} << 30);
    return (folder.Path() / name).string();
}

// A settings file whose report is longer than the pipe's page; `keys` make it small work or large.
std::string Settings(int keys) {
    std::string text;
    for (int i = 0; i < 400; ++i) {
        text += "[a section with a longer name " + std::to_string(i) + "]\r\n";
        for (int key = 0; key < keys; ++key) text += "key" + std::to_string(key) + " = some value\r\n";
        text += "\r\n";
    }
    return text;
}
constexpr int kSmall = 1;
constexpr int kLarge = 150; // more than a megabyte: the work of another thread

} // namespace

TEST(Interrupt, CtrlCOnATerminalTakesTheBarAwayAndEndsTheProgramByTheSignal) {
    const TemporaryFolder folder;
    const std::string huge = HugeFile(folder, "huge");
    for (const char* command : {"check", "print", "seal"}) {
        const TypedCtrlC run({"crc", command, huge}, "%");
        EXPECT_EQ(SIGINT, run.signal) << command;
        EXPECT_THAT(run.shown,
                    EndsWith("\r\x1b[Kchartutil: interrupted at " + huge + "; nothing was changed\r\n"))
            << command;
        EXPECT_EQ(std::uintmax_t{256} << 30, fs::file_size(huge));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}

TEST(Interrupt, FilesThatWereDoneBeforeStayDone) {
    const TemporaryFolder folder;
    const std::string small = (folder.Path() / "small").string();
    WriteBytes(folder.Path() / "small", "123456789");
    const std::string huge = HugeFile(folder, "huge");
    const TypedCtrlC run({"crc", "seal", small, huge, small}, "(2 of 3)");
    EXPECT_EQ(SIGINT, run.signal);
    EXPECT_THAT(run.shown, EndsWith("chartutil: interrupted at (2 of 3) " + huge +
                                    "; changed already: " + small + "\r\n"));
    EXPECT_EQ("123456789\x26\x39\xF4\xCB", ReadBytes(folder.Path() / "small"));
    EXPECT_EQ(std::uintmax_t{256} << 30, fs::file_size(huge));
}

TEST(Interrupt, AFileThatIsReadAgainAfterItsSealIsWhole) {
    const TemporaryFolder folder;
    const std::string file = (folder.Path() / "data").string();
    WriteBytes(folder.Path() / "data", "x");
    constexpr std::uintmax_t kSize = std::uintmax_t{256} << 20;
    fs::resize_file(folder.Path() / "data", kSize);
    Running run({"crc", "seal", file});
    while (fs::file_size(folder.Path() / "data") == kSize) sched_yield();
    run.Signal(SIGINT);
    EXPECT_EQ(SIGINT, run.End());
    // On a machine with other work to do it may be through.
    EXPECT_THAT(run.Error(),
                AnyOf("", "chartutil: interrupted at " + file + "; changed already: " + file + "\n"));
    EXPECT_EQ(kSize + 4, fs::file_size(folder.Path() / "data"));
    EXPECT_EQ(0, RunChartutil({"crc", "check", file}).exitCode);
}

TEST(Interrupt, SealingManyFilesEndsBetweenTwo) {
    for (const int keys : {kSmall, kLarge}) {
        const TemporaryFolder folder;
        const std::string old = Settings(keys);
        std::vector<std::string> arguments = {"settings", "seal"};
        for (const char* name : {"a.ini", "b.ini", "c.ini"}) {
            WriteBytes(folder.Path() / name, old);
            arguments.push_back((folder.Path() / name).string());
        }
        Running run(arguments);
        run.WaitUntilOutputIsFull(); // with what it has to say of the first file
        run.Signal(SIGINT);
        run.WaitUntilNoted();
        EXPECT_EQ(SIGINT, run.End());
        EXPECT_EQ("chartutil: interrupted; changed already: " + arguments[2] + "\n", run.Error());
        EXPECT_THAT(run.Output(), HasSubstr(" 399  "));
        EXPECT_THAT(run.Output(), Not(HasSubstr("b.ini")));
        EXPECT_EQ(0, RunChartutil({"settings", "check", arguments[2]}).exitCode);
        EXPECT_EQ(old, ReadBytes(folder.Path() / "b.ini"));
        EXPECT_EQ(old, ReadBytes(folder.Path() / "c.ini"));
        EXPECT_EQ(3u, folder.NumFiles());
    }
}

TEST(Interrupt, ATableInTheMakingGoesAndTheOldOneStays) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const TemporaryFolder folder;
        const fs::path output = folder.Path() / "out.csv";
        WriteBytes(output, "x,y\n0,0\n");
        Running run({"transform", "-", "--translate", "1,1", "-o", output.string()});
        run.Feed("x,y\n1,2\n3,4\n");
        run.WaitUntilItWrites(output);
        run.Signal(number); // while it waits for more, or is about to
        EXPECT_EQ(number, run.End());
        EXPECT_EQ("chartutil: interrupted; nothing was changed\n", run.Error());
        EXPECT_EQ("x,y\n0,0\n", ReadBytes(output));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}

TEST(Interrupt, APictureIsNotBegun) {
    const TemporaryFolder folder;
    std::string table = "[ColorTable]\r\nEntry(0)=1,1,2,3\r\n";
    for (int i = 1; i < 200; ++i)
        table += "Entry(" + std::to_string(i) + ")=x" + std::string(100, 'y') + "\r\n";
    WriteBytes(folder.Path() / "table.col", table);
    WriteBytes(folder.Path() / "table.svg", "<svg>old</svg>");
    Running run({"colors", "table", (folder.Path() / "table.col").string(), "--picture",
                 (folder.Path() / "table.svg").string()});
    run.WaitUntilErrorIsFull(); // with what is odd in the table
    run.Signal(SIGINT);
    run.WaitUntilNoted();
    EXPECT_EQ(SIGINT, run.End());
    EXPECT_THAT(run.Error(), EndsWith("\nchartutil: interrupted; nothing was changed\n"));
    EXPECT_EQ("", run.Output());
    EXPECT_EQ("<svg>old</svg>", ReadBytes(folder.Path() / "table.svg"));
    EXPECT_EQ(2u, folder.NumFiles());
}

TEST(Interrupt, WorkThatIsDoneIsShownAndTheProgramEndsByTheSignalAllTheSame) {
    for (const int keys : {kSmall, kLarge}) {
        const TemporaryFolder folder;
        WriteBytes(folder.Path() / "a.ini", Settings(keys));
        Running run({"settings", "check", (folder.Path() / "a.ini").string()});
        run.WaitUntilOutputIsFull();
        // As timeout(1) does: the second one is no second request.
        run.Signal(SIGTERM);
        run.WaitUntilNoted();
        run.Signal(SIGTERM);
        EXPECT_EQ(SIGTERM, run.End());
        EXPECT_THAT(run.Output(), EndsWith("400 of 400 sections edited by hand or without a seal\n"));
        EXPECT_EQ("", run.Error());
    }
}

TEST(Interrupt, ASecondCtrlCEndsTheProgramAtOnce) {
    for (const int first : {SIGINT, SIGTERM}) {
        const TemporaryFolder folder;
        WriteBytes(folder.Path() / "a.ini", Settings(kLarge));
        Running run({"settings", "check", (folder.Path() / "a.ini").string()});
        run.WaitUntilOutputIsFull(); // it looks no more, and waits for room
        run.Signal(first);
        run.WaitUntilNoted();
        run.Signal(SIGINT);
        EXPECT_EQ(SIGINT, run.End());
        EXPECT_THAT(run.Output(), Not(HasSubstr("400 of 400")));
        EXPECT_EQ("", run.Error());
    }
}

TEST(Interrupt, ASignalThatTheProgramWasStartedToIgnoreStaysIgnored) {
    const TemporaryFolder folder;
    const fs::path output = folder.Path() / "out.csv";
    Running run({"transform", "-", "--translate", "1,1", "-o", output.string()}, true);
    run.Feed("x,y\n1,2\n");
    run.WaitUntilItWrites(output);
    run.Signal(SIGINT);
    run.Feed("3,4\n");
    run.EndInput();
    EXPECT_EQ(0, run.End());
    EXPECT_EQ(0, run.ExitCode());
    EXPECT_EQ("x,y\n2,3\n4,5\n", ReadBytes(output));
}
