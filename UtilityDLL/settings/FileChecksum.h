// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <string>

/// The fingerprint of a file, by which two moments or two files are compared: its modification time and its
/// content. Trailing bytes that make no whole 32-bit word do not count.
class UTILITYDLL_API FileChecksum {
public:
    /// No limit to the words that are read.
    static constexpr unsigned int ALL_WORDS = 0xFFFFFFFF;

    /// Fingerprints `path`, reading about `maxWords` words of 32 bits: up to one block (of `maxWords`, at
    /// most 4096 words) more than that. With 0 words the time alone counts. The value is 0 when the path is
    /// empty or the file cannot be read.
    FileChecksum(const std::wstring& path, unsigned int maxWords);

    /// The path as it was given.
    const std::wstring& Path() const { return m_path; }

    /// The fingerprint; 0 for a file that could not be read.
    unsigned int Value() const { return m_value; }

    /// Values only; the paths do not count.
    /// @{
    bool operator==(const FileChecksum& other) const { return m_value == other.m_value; }
    bool operator!=(const FileChecksum& other) const { return m_value != other.m_value; }
    /// @}

private:
    std::wstring m_path;
    unsigned int m_value = 0;
};
