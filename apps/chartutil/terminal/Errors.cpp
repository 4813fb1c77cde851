// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Errors.h"

#include <filesystem>

namespace {

struct Words {
    std::errc reason;
    const char* what;
    const char* toDo;
};

constexpr Words kNotWritten[] = {
    {std::errc::read_only_file_system, "its disk is read-only", "name a file on another one"},
    {std::errc::no_space_on_device, "the disk is full", "make room, or name a file on another one"},
    {std::errc::file_too_large, "it would become larger than files may be here",
     "name a file on another disk, or have the limit raised (ulimit -f)"},
    {std::errc::device_or_resource_busy, "another program is saving it or has it open",
     "try again when that is done"},
    {std::errc::is_a_directory, "is a folder", "name a file in it"},
    {std::errc::invalid_argument, "is no regular file", "name another one"},
    {std::errc::filename_too_long, "the name is too long", "choose a shorter one"},
    {std::errc::too_many_symbolic_link_levels, "is a link that leads to itself",
     "remove it, or name another file"},
    {std::errc::too_many_links, "has other names (hard links), which would keep the old content",
     "name another file"},
    {std::errc::illegal_byte_sequence,
     "a character has no place in such a file, which takes those up to U+00FF", "replace it"},
    {std::errc::not_enough_memory, "there is not enough memory for it", "close other programs"},
    {std::errc::io_error, "the disk does not take it", "check the disk, or name a file on another one"},
};

std::string NoFolder(const std::filesystem::path& folder) {
    std::error_code ignored;
    if (folder.empty() || std::filesystem::is_directory(folder, ignored))
        return "is a link to where there is no folder; make that, or remove the link";
    const std::u8string name = folder.u8string();
    return "there is no folder " + std::string(name.begin(), name.end()) + "; make it, or check the path";
}

std::string WhyNotWritten(const std::filesystem::path& file, bool exists, const std::error_code& reason) {
    if (!exists && (reason == std::errc::no_such_file_or_directory || reason == std::errc::not_a_directory))
        return NoFolder(file.parent_path());
    const std::string kept = exists ? ", and is as it was" : "";
    if (reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted)
        return exists ? "you may not write it" + kept + "; check its permissions and those of its folder"
                      : "its folder takes no new file of yours; check the permissions of the folder";
    const bool isFile = reason != std::errc::is_a_directory && reason != std::errc::invalid_argument;
    for (const Words& words : kNotWritten)
        if (reason == words.reason)
            return words.what + (isFile && exists ? "; the file is as it was; " : std::string("; ")) +
                   words.toDo;
    if (reason == std::errc::file_exists) {
        const std::u8string name = file.filename().u8string();
        return "." + std::string(name.begin(), name.end()) +
               ".saving beside it, which is no file, is in the way; remove it";
    }
    return "cannot be written" + kept + ": " + reason.default_error_condition().message();
}

} // namespace

void ThrowNotWritten(const std::string& path, const std::error_code& reason) {
    const std::filesystem::path file = std::u8string(path.begin(), path.end());
    std::error_code ignored;
    const bool exists = std::filesystem::exists(file, ignored);
    throw CommandError(ExitCode::IO_ERROR, path + ": " + WhyNotWritten(file, exists, reason));
}
