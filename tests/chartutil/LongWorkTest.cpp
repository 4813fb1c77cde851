// SPDX-License-Identifier: MIT
#include "apps/chartutil/work/LongWork.h"

#include "VelmBase/File.h"
#include "apps/chartutil/drawing/SvgFile.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/ProgressBar.h"
#include "apps/chartutil/work/Interrupt.h"
#include "tests/support/TestFiles.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <gmock/gmock.h>
#include <mutex>
#include <new>
#include <ostream>
#include <streambuf>
#include <thread>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

using Doing = void (*)(const std::function<void()>&);
constexpr Doing kBoth[] = {&DoLongWork, &DoShortWork};

// What ended the work, as text.
std::string EndOf(Doing doWork, const std::function<void()>& work) {
    try {
        doWork(work);
        return "done";
    } catch (const Interrupted& interrupted) {
        return interrupted.text;
    } catch (const CommandError& error) {
        return "error " + std::to_string(static_cast<int>(error.Code())) + ": " + error.what();
    } catch (const CommandExit& exit) {
        return "exit " + std::to_string(static_cast<int>(exit.code));
    } catch (const std::bad_alloc&) {
        return "no memory";
    } catch (int number) {
        return std::to_string(number);
    }
}

// A terminal on which one thread writes and another waits for what it shows.
class Terminal : private std::streambuf, public std::ostream {
public:
    Terminal() : std::ostream(static_cast<std::streambuf*>(this)) {}

    void WaitFor(std::string_view text) {
        std::unique_lock lock(m_guard);
        m_grown.wait(lock, [&] { return m_shown.find(text) != std::string::npos; });
    }
    std::string Shown() {
        const std::lock_guard lock(m_guard);
        return m_shown;
    }

private:
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        const std::lock_guard lock(m_guard);
        m_shown.append(text, static_cast<std::size_t>(count));
        m_grown.notify_all();
        return count;
    }
    int overflow(int c) override {
        const char character = static_cast<char>(c);
        xsputn(&character, 1);
        return c;
    }

    std::mutex m_guard;
    std::condition_variable m_grown;
    std::string m_shown;
};

// A second goes by from call to call.
ProgressBar::Clock FastClock() {
    return
        [now = std::chrono::steady_clock::time_point()]() mutable { return now += std::chrono::seconds(1); };
}

} // namespace

TEST(LongWork, IsDoneInAnotherThreadBeforeTheCallReturns) {
    std::thread::id worker;
    DoLongWork([&] { worker = std::this_thread::get_id(); });
    EXPECT_NE(std::thread::id(), worker);
    EXPECT_NE(std::this_thread::get_id(), worker);
    DoShortWork([&] { worker = std::this_thread::get_id(); });
    EXPECT_EQ(std::this_thread::get_id(), worker);
}

TEST(LongWork, EndsTheCallerTheWayItEndedItself) {
    for (const Doing doWork : kBoth) {
        EXPECT_EQ("done", EndOf(doWork, [] {}));
        EXPECT_EQ("error 3: a: gone",
                  EndOf(doWork, [] { throw CommandError(ExitCode::IO_ERROR, "a: gone"); }));
        EXPECT_EQ("exit 1", EndOf(doWork, [] { throw CommandExit{ExitCode::CHECK_FAILED}; }));
        EXPECT_EQ("no memory", EndOf(doWork, [] { throw std::bad_alloc(); }));
        EXPECT_EQ("7", EndOf(doWork, [] { throw 7; }));
    }
}

TEST(LongWork, IsStoppedFromAnotherThread) {
    for (const Doing doWork : kBoth) {
        std::thread other;
        EXPECT_EQ("interrupted; nothing was changed", EndOf(doWork, [&] {
                      other = std::thread([] { Interrupt::Request(); });
                      while (true) StopIfInterrupted();
                  }));
        other.join();
    }
}

TEST(LongWork, WhereItLooksItSaysWhatWasStoppedAndWhatWasChanged) {
    for (const Doing doWork : kBoth) {
        // Before a part is begun, within it, and between parts.
        EXPECT_EQ("interrupted at a.bin; nothing was changed", EndOf(doWork, [] {
                      Interrupt::Request();
                      const Progress progress("a.bin", 2);
                      ADD_FAILURE() << "the part was begun";
                  }));
        EXPECT_EQ("interrupted at (2 of 3) \u00FC.bin; changed already: a.bin", EndOf(doWork, [] {
                      NoteChanged("a.bin");
                      ShowPlace(2, 3);
                      const Progress progress("\u00FC.bin", 2);
                      progress.Show(1);
                      Interrupt::Request();
                      progress.Show(2);
                      ADD_FAILURE() << "the part went on";
                  }));
        EXPECT_EQ("interrupted; changed already: 3 files, the last c.bin", EndOf(doWork, [] {
                      for (const char* path : {"a.bin", "b.bin", "c.bin"}) {
                          const Progress progress(path);
                          NoteChanged(path);
                      }
                      Interrupt::Request();
                      StopIfInterrupted();
                  }));
        EXPECT_EQ("interrupted at b.bin; nothing was changed", EndOf(doWork, [] {
                      ShowPlace(1, 1); // one file needs no number
                      const Progress progress("b.bin");
                      Interrupt::Request();
                      StopIfInterrupted();
                  }));
    }
}

TEST(LongWork, ThatIsDoneAlreadyStaysDoneAndTheNextIsNotStopped) {
    for (const Doing doWork : kBoth) {
        EXPECT_EQ("done", EndOf(doWork, [] { Interrupt::Request(); }));
        EXPECT_TRUE(Interrupt::IsRequested());
        EXPECT_EQ("done", EndOf(doWork, [] { StopIfInterrupted(); }));
        EXPECT_FALSE(Interrupt::IsRequested());
    }
}

TEST(LongWork, AFileThatItWasReplacingStaysAsItWas) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a.csv"), "old");
    for (const Doing doWork : kBoth) {
        EXPECT_THAT(EndOf(doWork,
                          [&] {
                              (void)FILES::ReplaceContents(folder.File(L"a.csv"), [](const auto& sink) {
                                  EXPECT_TRUE(sink("new"));
                                  Interrupt::Request();
                                  StopIfInterrupted();
                                  return true;
                              });
                          }),
                    HasSubstr("nothing was changed"));
        EXPECT_EQ("old", ReadBytes(folder.File(L"a.csv")));
        EXPECT_EQ(1u, folder.NumFiles());
    }
}

TEST(LongWork, APictureIsStoppedWhileItIsDrawn) {
    Surface surface(100, 100);
    for (int i = 0; i < 1000; ++i) surface.Rectangle(0, 0, 1, 1, RGBColor(i % 256, 0, 0));
    EXPECT_EQ("interrupted at the picture; nothing was changed", EndOf(&DoLongWork, [&] {
                  Interrupt::Request();
                  SvgFile(surface);
              }));
}

TEST(LongWork, ShowsABarThatIsGoneWhenAPartIsDone) {
    Terminal terminal;
    ProgressBar bar(&terminal, FastClock());
    DoLongWork(
        [&] {
            ShowPlace(2, 3);
            {
                const Progress progress("a.bin", 4);
                terminal.WaitFor("(2 of 3) a.bin [....");
                progress.Show(1);
                terminal.WaitFor(" 25%");
                progress.Show(3);
                terminal.WaitFor(" 75%");
            }
            EXPECT_THAT(terminal.Shown(), EndsWith("%\r\x1b[K")); // so the work may print
            const Progress progress("b.bin");
            terminal.WaitFor("(2 of 3) b.bin ...");
        },
        bar);
    EXPECT_THAT(terminal.Shown(), EndsWith("...\r\x1b[K"));
}

TEST(LongWork, TheBarIsGoneToo_WhenItIsStopped) {
    Terminal terminal;
    ProgressBar bar(&terminal, FastClock());
    EXPECT_THROW(DoLongWork(
                     [&] {
                         const Progress progress("a.bin", 4);
                         terminal.WaitFor("a.bin [");
                         Interrupt::Request();
                         StopIfInterrupted();
                     },
                     bar),
                 Interrupted);
    EXPECT_THAT(terminal.Shown(), EndsWith("%\r\x1b[K"));
}

TEST(LongWork, WhatIsNobodysLongWorkGoesOn) {
    DoShortWork([] { Interrupt::Request(); });
    ShowPlace(1, 2);
    NoteChanged("a.bin");
    const Progress progress("a.bin", 2);
    progress.Show(1);
    StopIfInterrupted();
    EXPECT_TRUE(Interrupt::IsRequested());
}

TEST(LongWork, StandardInputIsNotWaitedForAfterARequest) {
    DoLongWork([] {
        Interrupt::Request();
        char bytes[8];
        std::size_t got = 1;
        EXPECT_TRUE(ReadStandardInput(bytes, sizeof bytes, got));
        EXPECT_EQ(0u, got);
    });
}

TEST(LongWork, ManyTimes) {
    int done = 0;
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(i % 2 ? "7" : "done", EndOf(&DoLongWork, [&] {
                      const Progress progress("a.bin", 1);
                      ++done;
                      if (i % 2) throw 7;
                  }));
    EXPECT_EQ(1000, done);
}
