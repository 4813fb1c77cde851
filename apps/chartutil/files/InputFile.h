#pragma once

#include "VelmBase/File.h"
#include "apps/chartutil/terminal/UserText.h"

#include <cstddef>
#include <cstdint>
#include <memory>

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
