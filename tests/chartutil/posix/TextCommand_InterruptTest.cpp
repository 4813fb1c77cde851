// Ctrl-C while a text is measured that takes many seconds.

#include "tests/chartutil/posix/KeepOutputAtCtrlC.h"
#include "tests/support/Program.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using ::testing::EndsWith;

namespace {

// What chartutil shows on a terminal where Ctrl-C is typed when it has shown `until`; its input is a file.
struct TypedCtrlC {
    std::string shown;
    int signal = 0;

    TypedCtrlC(const std::vector<std::string>& arguments, const std::string& input, std::string_view until) {
        const std::string program = ChartutilPath();
        std::vector<char*> words = {const_cast<char*>(program.c_str())};
        for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            KeepOutputAtCtrlC();
            std::signal(SIGINT, SIG_DFL);
            dup2(open(input.c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
            execv(program.c_str(), words.data());
            _exit(127);
        }
        char bytes[4096];
        bool wasTyped = false;
        for (ssize_t got; (got = read(terminal, bytes, sizeof bytes)) > 0;) {
            shown.append(bytes, static_cast<std::size_t>(got));
            if (wasTyped || shown.find(until) == std::string::npos) continue;
            wasTyped = true;
            EXPECT_EQ(1, write(terminal, "\x03", 1));
        }
        close(terminal);
        int status = 0;
        waitpid(child, &status, 0);
        signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
};

} // namespace

TEST(TextCommandInterrupt, CtrlCEndsTheMeasuringOfALongText) {
    std::string text; // with marks, the letters are shaped before they are measured
    while (text.size() < 6'000'000) text += "e\u0301";
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"long.txt"), text);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"text", "measure", "-", "--width", "100"},
          {"text", "measure", "-", "--width", "50", "--json"}}) {
        const TypedCtrlC run(arguments, ToUtf8(folder.File(L"long.txt")), "the text");
        EXPECT_EQ(SIGINT, run.signal);
        EXPECT_THAT(run.shown, EndsWith("chartutil: interrupted at the text; nothing was changed\r\n"));
    }
}
