// SPDX-License-Identifier: MIT
#include "VelmBase/LibraryVersion.h"

#include "VelmBase/UntilUnloaded.h"

#include <mutex>

namespace {

// There before any library's code runs, whatever the order in which the libraries are made ready.
constinit LibraryVersion* g_first = nullptr;

// Libraries are unloaded until the process has ended.
std::mutex& Guard() {
    static UntilUnloaded<std::mutex> guard;
    return *guard;
}

} // namespace

LibraryVersion::LibraryVersion(const char* name, std::uint32_t version) : m_name(name), m_version(version) {
    const std::lock_guard lock(Guard());
    LibraryVersion** end = &g_first;
    while (*end) end = &(*end)->m_next;
    *end = this;
}

LibraryVersion::~LibraryVersion() {
    const std::lock_guard lock(Guard());
    LibraryVersion** place = &g_first;
    while (*place != this) place = &(*place)->m_next;
    *place = m_next;
}

std::vector<LibraryVersion::Loaded> LibraryVersion::List() {
    const std::lock_guard lock(Guard());
    std::vector<Loaded> libraries;
    for (const LibraryVersion* library = g_first; library; library = library->m_next)
        libraries.push_back({library->m_name, library->m_version});
    return libraries;
}

std::string VersionText(std::uint32_t version) {
    std::string text = std::to_string(version >> 24);
    for (const int shift : {16, 8, 0}) text += "." + std::to_string(version >> shift & 0xFF);
    return text;
}
