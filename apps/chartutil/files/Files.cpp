#include "apps/chartutil/files/Files.h"

#include "apps/chartutil/terminal/Errors.h"

namespace {

std::filesystem::file_status StatusOf(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::status(NativePath(path), ignored);
}

} // namespace

std::filesystem::path NativePath(const std::string& path) { return std::u8string(path.begin(), path.end()); }

bool PathExists(const std::string& path) {
    return StatusOf(path).type() != std::filesystem::file_type::not_found;
}

void ThrowNotReadable(const std::string& path) {
    const std::filesystem::file_status status = StatusOf(path);
    const char* reason = "cannot be read; check its permissions and the disk";
    if (status.type() == std::filesystem::file_type::not_found)
        reason = "no such file; check the path";
    else if (std::filesystem::is_directory(status))
        reason = "is a folder; name a file in it";
    else if (!std::filesystem::is_regular_file(status))
        reason = "is no regular file";
    throw CommandError(ExitCode::IO_ERROR, path + ": " + reason);
}

bool Truncate(const std::string& path, std::uint64_t size) {
    std::error_code error;
    std::filesystem::resize_file(NativePath(path), size, error);
    return !error;
}
