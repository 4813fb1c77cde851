// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <chrono>
#include <memory>
#include <vector>

/// Tells when files were saved: written and closed, put in their place under another name before, or removed.
/// The files need not be there; their folders do. Watches from its making on.
class FileWatch {
public:
    /// Ends the command when the system watches no files.
    explicit FileWatch(const std::vector<UserText>& files);
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    /// Waits until one of them was saved and nothing more of it has happened for a moment, as editors save in
    /// several steps. False when none was in this time.
    bool Wait(std::chrono::milliseconds longest);

private:
    struct Folders;
    std::unique_ptr<Folders> m_folders;
};
