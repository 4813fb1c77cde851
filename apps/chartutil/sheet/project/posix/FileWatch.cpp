// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/FileWatch.h"

#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Errors.h"

#include <cerrno>
#include <cstring>
#include <set>
#include <sys/inotify.h>
#include <sys/poll.h>
#include <unistd.h>

namespace fs = std::filesystem;

struct FileWatch::Folders {
    int events = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    std::set<std::pair<int, std::string>> files; ///< a folder's number, and a name in it

    ~Folders() {
        if (events != -1) close(events);
    }

    void Add(const fs::path& file) {
        const fs::path parent = file.has_parent_path() ? file.parent_path() : fs::path(".");
        const int folder = inotify_add_watch(events, parent.c_str(),
                                             IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE);
        if (folder != -1) files.emplace(folder, file.filename().string());
    }

    bool HasEvents(std::chrono::milliseconds longest) const {
        pollfd source = {events, POLLIN, 0};
        return poll(&source, 1, static_cast<int>(longest.count())) > 0;
    }

    // Takes what has happened; whether it is of one of the files.
    bool Take() const {
        constexpr std::size_t kRoom = 16 * 1024;
        alignas(inotify_event) char bytes[kRoom];
        bool isOurs = false;
        for (ssize_t got; (got = read(events, bytes, sizeof bytes)) > 0;) {
            for (ssize_t at = 0; at < got;) {
                inotify_event event = {};
                std::memcpy(&event, bytes + at, sizeof event);
                const char* const name = bytes + at + sizeof event;
                const bool wereTooMany = (event.mask & IN_Q_OVERFLOW) != 0;
                isOurs = isOurs || wereTooMany || (event.len > 0 && files.contains({event.wd, name}));
                at += static_cast<ssize_t>(sizeof event + event.len);
            }
        }
        return isOurs;
    }
};

FileWatch::FileWatch(const std::vector<UserText>& files) : m_folders(std::make_unique<Folders>()) {
    if (m_folders->events == -1)
        throw CommandError(ExitCode::IO_ERROR,
                           std::string("files cannot be watched: ") + std::strerror(errno));
    for (const UserText& file : files) {
        const fs::path path = NativePath(file);
        m_folders->Add(path);
        std::error_code none; // what a link points to lies elsewhere
        if (const fs::path real = fs::canonical(path, none); !none) m_folders->Add(real);
    }
}

FileWatch::~FileWatch() = default;

bool FileWatch::Wait(std::chrono::milliseconds longest) {
    if (!m_folders->HasEvents(longest) || !m_folders->Take()) return false;
    constexpr std::chrono::milliseconds kMoment(60);
    constexpr int kMost = 50; // of a file that is written without end
    for (int i = 0; i < kMost && m_folders->HasEvents(kMoment); ++i) m_folders->Take();
    return true;
}
