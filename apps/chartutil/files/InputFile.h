// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/File.h"
#include "apps/chartutil/terminal/UserText.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>

/// A file, or "-" for standard input, that is read block by block from its beginning to its end. Ends the
/// command when it cannot be read.
class InputFile {
public:
    explicit InputFile(const UserText& path);

    /// Reads up to `count` bytes; 0 at the end. Looks whether to stop.
    std::size_t Read(void* buffer, std::size_t count);

    /// The file's bytes; 0 for standard input, of which nobody knows.
    std::uint64_t Size() const { return m_file ? m_file->Size() : 0; }

private:
    UserText m_path;
    std::unique_ptr<FILES::Reader> m_file; // null for standard input
};

/// The bytes of a file, or of standard input. Ends the command when it cannot be read, and when there are
/// more than `most`.
std::string ReadFile(const UserText& path, std::size_t most = std::numeric_limits<std::size_t>::max());
