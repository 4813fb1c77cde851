// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <cstdint>
#include <string>
#include <vector>

// Which libraries of the suite this process has loaded, and of which version. A version is one number, a byte
// for each of its four parts: 5.0.0.20 is 0x05000014.

/// A library of the suite for as long as this object lives. The build gives each library one, so that it
/// stands in the list from being loaded until it is unloaded. Any thread may make and destroy one.
class VELMBASE_API LibraryVersion {
public:
    /// `name` must stay valid.
    LibraryVersion(const char* name, std::uint32_t version);
    ~LibraryVersion();
    LibraryVersion(const LibraryVersion&) = delete;
    LibraryVersion& operator=(const LibraryVersion&) = delete;

    /// A library and its version.
    struct Loaded {
        std::string name;      ///< as the library's file, without its ending
        std::uint32_t version; ///< a byte for each of four parts: 5.0.0.20 is 0x05000014
    };

    /// The libraries that are loaded now, in the order of loading: each after those that it stands on.
    static std::vector<Loaded> List();

private:
    const char* m_name;
    std::uint32_t m_version;
    LibraryVersion* m_next = nullptr;
};

/// The version as people write it: "5.0.0.20".
VELMBASE_API std::string VersionText(std::uint32_t version);
