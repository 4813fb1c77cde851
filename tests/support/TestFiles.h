// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/WideString.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

/// The path for the standard library's file functions: these take a wide path through the host's locale,
/// which a test must not depend on.
inline std::filesystem::path NativePath(std::wstring_view path) {
    const std::string bytes = ToUtf8(path);
    return std::u8string(bytes.begin(), bytes.end());
}

/// The wide path as the library takes it.
inline std::wstring WidePath(const std::filesystem::path& path) {
    const std::u8string bytes = path.u8string();
    return FromUtf8(std::string(bytes.begin(), bytes.end()));
}

/// A folder of its own for a test, gone with it. Its name has characters beyond ASCII, so that every test
/// that touches a file also proves wide paths.
class TemporaryFolder {
public:
    TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}

    /// In this folder instead of the system's own.
    explicit TemporaryFolder(const std::filesystem::path& parent) {
        static std::atomic<unsigned> count{0};
        std::random_device random;
        m_path = parent / NativePath(L"utilitydll-\u00FC\u03A9\u6D77-" + std::to_wstring(random()) + L"-" +
                                     std::to_wstring(++count));
        std::filesystem::create_directory(m_path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

    /// The full path of a file in the folder.
    std::wstring File(std::wstring_view name) const { return WidePath(m_path / NativePath(name)); }

    /// The number of files in the folder.
    std::size_t NumFiles() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_path),
                                                      std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path m_path;
};

inline void WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.good());
}

inline void WriteBytes(const std::wstring& path, std::string_view bytes) {
    WriteBytes(NativePath(path), bytes);
}

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
inline std::string ReadBytes(const std::wstring& path) { return ReadBytes(NativePath(path)); }
