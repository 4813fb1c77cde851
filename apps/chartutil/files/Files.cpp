// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/Files.h"

#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

namespace {

std::filesystem::file_status StatusOf(const UserText& path) {
    std::error_code ignored;
    return std::filesystem::status(NativePath(path), ignored);
}

} // namespace

std::filesystem::path NativePath(const UserText& path) {
    return std::u8string(path.Utf8().begin(), path.Utf8().end());
}

std::string FileNameOf(const UserText& path) {
    return path.Utf8().substr(path.Utf8().find_last_of("/\\") + 1);
}

bool PathExists(const UserText& path) {
    return StatusOf(path).type() != std::filesystem::file_type::not_found;
}

bool AreMuchWork(std::span<const UserText> paths) {
    constexpr std::size_t kMany = 100;
    constexpr std::uintmax_t kLarge = 1 << 20; // a few milliseconds of work
    if (paths.size() >= kMany) return true;
    std::uintmax_t total = 0;
    for (const UserText& path : paths) {
        std::error_code failed;
        const std::uintmax_t size = std::filesystem::file_size(NativePath(path), failed);
        if (IsStandardStream(path) || (!failed && (total += size) >= kLarge)) return true;
    }
    return false;
}

bool IsMuchWork(const UserText& path) { return AreMuchWork({&path, 1}); }

void WriteFile(const UserText& path, std::string_view bytes) {
    WriteFile(path, [bytes](const FILES::ContentSink& sink) { return sink(bytes); });
}

void WriteFile(const UserText& path, const FILES::ContentComposer& compose) {
    StopIfInterrupted();
    if (IsStandardStream(path)) {
        compose([](std::string_view piece) {
            StandardStreams::Write(piece);
            return true;
        });
        return;
    }
    if (const std::error_code error = FILES::ReplaceContents(path.Wide(), compose, FILES::InPlace::ALLOWED))
        ThrowNotWritten(path.Utf8(), error);
    NoteChanged(path.Utf8());
}

void ThrowNotReadable(const UserText& path, const std::error_code& reason) {
    struct Words {
        std::errc reason;
        const char* what;
    };
    constexpr Words kWords[] = {
        {std::errc::no_such_file_or_directory, "no such file; check the path"},
        {std::errc::not_a_directory, "no such file; check the path"},
        {std::errc::is_a_directory, "is a folder; name a file in it"},
        {std::errc::invalid_argument, "is no regular file"},
        {std::errc::permission_denied, "you may not read it; check its permissions and those of its folder"},
        {std::errc::device_or_resource_busy,
         "another program keeps it for itself; try again when that is done"},
        {std::errc::filename_too_long, "the name is too long; check the path"},
        {std::errc::too_many_symbolic_link_levels, "is a link that leads to itself; check the path"},
        {std::errc::io_error, "the disk does not give it back; check the disk"},
    };
    std::string what;
    for (const Words& words : kWords)
        if (reason == words.reason) what = words.what;
    if (path.Empty()) what = kWords[0].what;
    if (what.empty()) what = "cannot be read: " + reason.default_error_condition().message();
    throw CommandError(ExitCode::IO_ERROR, path.Utf8() + ": " + what);
}

bool Truncate(const UserText& path, std::uint64_t size) {
    std::error_code error;
    std::filesystem::resize_file(NativePath(path), size, error);
    return !error;
}
