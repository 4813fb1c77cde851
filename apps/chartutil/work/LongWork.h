// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class ProgressBar;
class Work;

/// Ends work that was asked to stop. The text says what was stopped and which files were changed before, in
/// UTF-8.
struct Interrupted {
    std::string text;
};

/// Does the work in a worker thread, while this thread shows on a terminal how far it is (see Progress), and
/// returns or throws what the work does. Ctrl-C asks the work to stop; it then ends where it looks, by
/// Interrupted, and what it had in hand is taken back on the way. Work does not begin other work.
void DoLongWork(const std::function<void()>& work);

/// The same with a bar of the caller's.
void DoLongWork(const std::function<void()>& work, ProgressBar& bar);

/// The same in this thread and without a bar, for work that is done before a thread is started.
void DoShortWork(const std::function<void()>& work);

// What the work says meanwhile. All of it does nothing where neither function above does the work.

/// Ends the work, by Interrupted, when it was asked to stop. Long work looks every few milliseconds, and not
/// between the steps of a change that belong together.
void StopIfInterrupted();

/// The work goes through several files and is at this one, counted from 1.
void ShowPlace(std::size_t number, std::size_t count);

/// The work has changed or made this file (UTF-8).
void NoteChanged(const std::string& path);

/// A part of the work that is worth a bar. One at a time; the work prints nothing while it exists.
class Progress {
public:
    /// Work on `what` (UTF-8) that has so many steps, 0 when nobody knows. Looks whether to stop.
    explicit Progress(std::string_view what, std::uint64_t total = 0);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// So many steps are done. Looks whether to stop. Also for another thread that does the part while the
    /// one that began it waits.
    void Show(std::uint64_t done) const;

private:
    Work* m_work; // null for none
    std::uint64_t m_total;
};
