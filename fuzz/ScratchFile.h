// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

/// A file of this process in a folder of its own, in memory where the system has such a place: readers take
/// paths, and a fuzzer opens some thousand files a second.
class ScratchFile {
public:
    ScratchFile() {
        const std::filesystem::path memory = "/dev/shm";
        m_folder = (std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
                   ("utilitydll-fuzz-" + std::to_string(std::random_device()()));
        std::filesystem::create_directory(m_folder);
    }
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    /// The folder, in which nothing else lies.
    const std::filesystem::path& Folder() const { return m_folder; }

    std::wstring Path() const { return (m_folder / "input").wstring(); }

    void Write(const void* bytes, std::size_t count) const {
        std::FILE* const file = std::fopen((m_folder / "input").c_str(), "wb");
        if (!file || std::fwrite(bytes, 1, count, file) != count) std::abort();
        std::fclose(file);
    }
    std::string Read() const {
        std::string bytes;
        std::FILE* const file = std::fopen((m_folder / "input").c_str(), "rb");
        if (!file) return bytes;
        char block[65536];
        for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;)
            bytes.append(block, count);
        std::fclose(file);
        return bytes;
    }

private:
    std::filesystem::path m_folder;
};
