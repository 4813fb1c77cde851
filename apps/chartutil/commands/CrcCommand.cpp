// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/detail/CRCTrailer.h"
#include "VelmBase/CRCChecksum.h"
#include "VelmBase/File.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/ForEachFile.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/ValueNames.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>

namespace {

constexpr std::size_t kTrailerSize = CRC_TRAILER::SIZE;

struct FileSums {
    std::uint64_t size = 0;
    std::optional<std::uint32_t> stored; // the last four bytes; none in a shorter file
    std::uint32_t computed = 0;          // over the bytes before them
    std::uint32_t whole = 0;             // over all bytes

    bool IsSealed() const { return stored == computed; }
};

// Gets all bytes of a file, one block after the other.
using BlockHandler = std::function<void(std::span<const unsigned char> block)>;

// One pass over the file: how long it is shows only at its end, so the last four bytes are always held back.
FileSums SumsOf(const UserText& path, const BlockHandler& takeBlock = {}) {
    InputFile file(path);
    const Progress progress(InputName(path), file.Size());
    constexpr std::size_t kBlock = 1024 * 1024;
    std::vector<unsigned char> buffer(kTrailerSize + kBlock);
    std::size_t held = 0;
    FileSums sums;
    CRCChecksum checksum;
    while (const std::size_t got = file.Read(buffer.data() + held, kBlock)) {
        if (takeBlock) takeBlock({buffer.data() + held, got});
        const std::size_t available = held + got;
        held = std::min(available, kTrailerSize);
        checksum.Update(buffer.data(), available - held);
        std::memmove(buffer.data(), buffer.data() + available - held, held);
        sums.size += got;
        progress.Show(sums.size);
    }
    if (held == kTrailerSize) {
        sums.computed = checksum.Value();
        sums.stored = CRC_TRAILER::Value(buffer.data());
    }
    checksum.Update(buffer.data(), held);
    sums.whole = checksum.Value();
    return sums;
}

// Appends the trailer where the file ends now. The bytes that are there stay as they are, so that nothing can
// be lost, whatever happens, and the file keeps its owner, its links and its permissions.
void AppendTrailer(const UserText& path, const FileSums& sums) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(FILES::OpenStream(path.Wide(), L"r+"),
                                                               &std::fclose);
    if (!file)
        throw CommandError(ExitCode::IO_ERROR, path.Utf8() + ": cannot be written; check its permissions");
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // the four bytes in one write
    const CRC_TRAILER::Bytes bytes = CRC_TRAILER::Of(sums.whole);
    const bool written = FILES::SeekTo(file.get(), static_cast<std::int64_t>(sums.size), SEEK_SET) &&
                         std::fwrite(bytes.data(), 1, kTrailerSize, file.get()) == kTrailerSize;
    if (!written) {
        const bool undone = Truncate(path, sums.size);
        throw CommandError(ExitCode::IO_ERROR,
                           path.Utf8() + ": its checksum cannot be written; " +
                               (undone ? "the file is as it was" : "its end may have part of a checksum") +
                               "; check the space on the disk");
    }
    NoteChanged(path.Utf8());
}

std::string Hex(std::uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%08X", static_cast<unsigned int>(value));
    return text;
}

// What is said of a file, as a line of text and as JSON, and whether all is well with it.
struct Report {
    bool good;
    std::string text;
    Json json;
};

Report Sealed(std::uint32_t checksum) {
    return {true, "sealed, " + Hex(checksum), {{"sealed", true}, {"checksum", Hex(checksum)}}};
}

Report SealedAlready(std::uint32_t checksum) {
    return {true, "sealed already, left alone", {{"sealed", false}, {"checksum", Hex(checksum)}}};
}

// Standard input goes to standard output, with the trailer behind it.
Report SealStream(const UserText& path) {
    if (OutputIsTerminal())
        throw CommandError(ExitCode::WRONG_USE, "standard output is a terminal, which shows no sealed file; "
                                                "send it to a file or a program");
    StandardStreams::TakeOutput();
    const auto write = [](std::span<const unsigned char> bytes) {
        StandardStreams::Write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    };
    const FileSums sums = SumsOf(path, write);
    if (sums.IsSealed()) return SealedAlready(sums.computed);
    write(CRC_TRAILER::Of(sums.whole));
    return Sealed(sums.whole);
}

Report SealFile(const UserText& path) {
    if (IsStandardStream(path)) return SealStream(path);
    const FileSums before = SumsOf(path);
    if (before.IsSealed()) return SealedAlready(before.computed);
    StopIfInterrupted();
    AppendTrailer(path, before);
    const FileSums after = SumsOf(path);
    if (!after.IsSealed() || after.size != before.size + kTrailerSize)
        throw CommandError(
            ExitCode::IO_ERROR,
            path.Utf8() + ": was changed by another program while it was sealed; its checksum is wrong, seal "
                          "it again from a good copy");
    return Sealed(after.computed);
}

Report CheckFile(const UserText& path) {
    const FileSums sums = SumsOf(path);
    const char* text = "intact";
    if (!sums.stored)
        text = "FAILED: too short to have a checksum";
    else if (!sums.IsSealed())
        text = "FAILED: its checksum does not fit, it was changed or never sealed";
    return {sums.IsSealed(), text, {{"intact", sums.IsSealed()}}};
}

Report PrintFile(const UserText& path) {
    const FileSums sums = SumsOf(path);
    const std::string stored = sums.stored ? Hex(*sums.stored) : "none";
    const std::string computed = sums.stored ? Hex(sums.computed) : "none";
    Json json = {{"size", sums.size}, {"stored", nullptr}, {"computed", nullptr}, {"whole", Hex(sums.whole)}};
    if (sums.stored) {
        json["stored"] = stored;
        json["computed"] = computed;
    }
    return {true,
            "stored " + stored + ", computed " + computed + ", over all " + std::to_string(sums.size) +
                " bytes " + Hex(sums.whole),
            std::move(json)};
}

struct Options {
    std::vector<UserText> files;
    bool json = false;
    Report (*doOne)(const UserText& path) = nullptr;

    bool IsLong() const { return AreMuchWork(files); }
};

void Run(const Options& options) {
    Json reports = Json::array();
    const ExitCode worst = ForEachFile(options.files, reports, [&](const UserText& path, Json& entry) {
        const Report report = options.doOne(path);
        if (!options.json)
            std::cout << Printable(InputName(path) + ": ")
                      << Colored(report.text, report.good ? TextColor::GREEN : TextColor::RED) << '\n';
        entry.update(report.json);
        return report.good ? ExitCode::SUCCESS : ExitCode::CHECK_FAILED;
    });
    if (options.json) PrintJson({{"files", std::move(reports)}});
    if (worst != ExitCode::SUCCESS) throw CommandExit{worst};
}

// --- the command line ---

constexpr char kExitCodes[] = R"(

Exit codes: 0 success, 1 a check failed, 2 wrong use, 3 input or output error.)";

void Add(CLI::App& crc, const char* name, const char* what, Report (*doOne)(const UserText&),
         const std::string& footer) {
    const auto [command, options] = AddCommand<Options>(crc, name, what, Run, footer + kExitCodes);
    command.add_option("FILE", options.files, "The files; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_flag("--json", options.json, "Print a JSON document");
    options.doOne = doOne;
}

} // namespace

void AddCrcCommand(CLI::App& program) {
    CLI::App& crc = *program.add_subcommand("crc", "Seal and check files with a CRC-32 at their end");
    crc.require_subcommand(1);
    crc.footer(R"(The last 4 bytes of a sealed file are the CRC-32 of all bytes before them, low byte first.

Example:
  chartutil crc check soundings.bin)");
    Add(crc, "seal", "Add the checksum to files", SealFile,
        R"(The checksum is added behind the file's bytes, which are not touched. A file that is sealed already is
left alone. Standard input goes to standard output with the checksum behind it.

Examples:
  chartutil crc seal soundings.bin tracks.bin
  chartutil crc seal - < soundings.bin > sealed.bin)");
    Add(crc, "check", "Tell whether files are as they were sealed", CheckFile, R"(Examples:
  chartutil crc check soundings.bin
  chartutil crc check --json *.bin)");
    Add(crc, "print", "Print stored and computed checksums", PrintFile,
        R"("computed" covers all bytes but the last four, "stored" is what these four say. In hexadecimal.

Example:
  chartutil crc print soundings.bin)");
}
