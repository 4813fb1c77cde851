// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <string>

/// A file's path. "/" and "\" both separate folders.
class VELMBASE_API FileName {
public:
    FileName() = default; ///< an empty path

    /// The path as it is given.
    explicit FileName(const std::wstring& path) : m_path(path) {}

    /// The path.
    const std::wstring& Path() const { return m_path; }

    /// Replaces the extension, or adds one; with or without its dot. An empty one removes the extension.
    void SetExtension(const std::wstring& extension);

    /// The name without folder and extension.
    std::wstring Title() const;

private:
    std::wstring m_path;
};

/// The name of the file `path` without folder and extension.
VELMBASE_API std::wstring GetTitleFromPath(const std::wstring& path);
