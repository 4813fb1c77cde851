// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/ForEachFile.h"
#include "apps/chartutil/commands/settings/Seals.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

namespace {

using Names = std::vector<std::wstring>;

// The names of the sections, padded to one width for the terminal.
std::vector<std::string> NameColumn(const std::vector<std::string>& names) {
    std::vector<std::string> column = names;
    std::size_t width = 0;
    for (const std::string& name : names) width = std::max(width, TextWidth(name));
    for (std::string& name : column) name = Printable(Padded(name, width));
    return column;
}

// What is known of the sections of a file that are worked on.
struct SealReport {
    std::vector<std::string> names; // UTF-8
    std::vector<Seal> seals;        // as they were found
    std::vector<unsigned long> checksums;
};

SealReport ReportOn(const SettingsDocument& document, const Names& sections) {
    const Progress progress(document.Name(), sections.size());
    SealReport report;
    for (const std::wstring& section : sections) {
        report.names.push_back(document.Shown(section));
        report.seals.push_back(SealOf(document, section));
        progress.Show(report.seals.size());
    }
    return report;
}

// Seals the sections of which the seal does not fit or that have none.
SealReport SealAll(SettingsDocument& document, const SealSettings& options) {
    const Names sections = document.RequireSections(options.sections);
    if (!options.acceptEdits) RequireNoEdits(document, sections);
    SealReport report = ReportOn(document, sections);
    const Progress progress(document.Name(), sections.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (report.seals[i] != Seal::INTACT) document.Lines().Seal(sections[i]);
        unsigned long& checksum = report.checksums.emplace_back(0);
        document.Keys(sections[i], Section::m_ChecksumName).front() >> checksum;
        progress.Show(i + 1);
    }
    return report;
}

void PrintState(const std::string& name, Seal seal) {
    std::cout << "  " << name << "  ";
    switch (seal) {
    case Seal::INTACT:
        std::cout << Colored("intact", TextColor::GREEN) << '\n';
        break;
    case Seal::BROKEN:
        std::cout << Colored("EDITED BY HAND", TextColor::RED) << ": its seal does not fit its keys\n";
        break;
    case Seal::NONE:
        std::cout << Colored("no seal", TextColor::YELLOW) << ": an edit would not show\n";
        break;
    }
}

void PrintSealed(const UserText& path, const SealReport& report) {
    constexpr const char* kDone[] = {"was sealed", "sealed anew, it had been edited", "sealed"};
    const std::vector<std::string> names = NameColumn(report.names);
    PrintDone(InputName(path));
    for (std::size_t i = 0; i < names.size(); ++i)
        PrintDone("  " + names[i] + "  " + std::to_string(report.checksums[i]) + "  " +
                  kDone[static_cast<int>(report.seals[i])]);
}

Json ToJson(const SealReport& report) {
    Json sections = Json::array();
    for (std::size_t i = 0; i < report.names.size(); ++i)
        sections.push_back({{"name", report.names[i]},
                            {"before", NameOf(report.seals[i])},
                            {"checksum", report.checksums[i]}});
    return sections;
}

} // namespace

Seal SealOf(const Section& section) {
    if (!section.HasKey(Section::m_ChecksumName.String())) return Seal::NONE;
    return section.IsModified() ? Seal::BROKEN : Seal::INTACT;
}

Seal SealOf(const SettingsDocument& document, const std::wstring& section) {
    // Most sections have none, and then need not be read whole.
    if (document.Keys(section, Section::m_ChecksumName).empty()) return Seal::NONE;
    return SealOf(document.Lines().Read(section));
}

const char* NameOf(Seal seal) {
    constexpr const char* kNames[] = {"intact", "edited", "unsealed"};
    return kNames[static_cast<int>(seal)];
}

void RequireNoEdits(const SettingsDocument& document, const Names& sections) {
    std::string edited;
    for (const std::wstring& section : sections)
        if (SealOf(document, section) == Seal::BROKEN)
            edited += (edited.empty() ? "[" : ", [") + document.Shown(section) + "]";
    if (!edited.empty())
        throw CommandError(ExitCode::CHECK_FAILED,
                           document.Name() + ": edited since it was sealed: " + edited +
                               "; nothing is sealed or changed; look at it, then give --accept-edits");
}

void RequireNoEdits(const SettingsDocument& document, const std::wstring& section,
                    const OneSettingsChange& change) {
    if (change.seal && !change.acceptEdits) RequireNoEdits(document, Names{section});
}

void RenewSeal(SettingsDocument& document, const std::wstring& section, const OneSettingsChange& change) {
    if (change.seal)
        document.Lines().Seal(section);
    else if (SealOf(document, section) == Seal::BROKEN)
        PrintNote("chartutil: note: the seal of [" + document.Shown(section) +
                  "] does not fit its keys; 'chartutil settings seal --accept-edits' renews it");
}

void Run(const CheckSettings& options) {
    Json files = Json::array();
    int numSections = 0;
    int numBad = 0;
    const ExitCode worst = ForEachFile(options.files, files, [&](const UserText& path, Json& report) {
        const SettingsDocument document({path, options.encoding});
        const SealReport found = ReportOn(document, document.RequireSections(options.sections));
        const std::vector<std::string> names = NameColumn(found.names);
        const int numBadBefore = numBad;
        Json states = Json::array();
        if (!options.json) std::cout << Printable(document.Name()) << '\n';
        for (std::size_t i = 0; i < names.size(); ++i) {
            const Seal seal = found.seals[i];
            ++numSections;
            if (seal == Seal::BROKEN || (seal == Seal::NONE && !options.ignoreUnsealed)) ++numBad;
            if (options.json)
                states.push_back({{"name", found.names[i]}, {"state", NameOf(seal)}});
            else
                PrintState(names[i], seal);
        }
        report["sections"] = std::move(states);
        document.HintAtEncoding();
        return numBad > numBadBefore ? ExitCode::CHECK_FAILED : ExitCode::SUCCESS;
    });
    if (options.json)
        PrintJson({{"files", std::move(files)}, {"sections", numSections}, {"failed", numBad}});
    else if (numBad > 0)
        std::cout << numBad << " of " << numSections << " sections edited by hand or without a seal\n";
    else if (worst == ExitCode::SUCCESS)
        std::cout << "no section was edited by hand\n";
    if (worst != ExitCode::SUCCESS) throw CommandExit{worst};
}

void Run(const SealSettings& options) {
    Json files = Json::array();
    const ExitCode worst = ForEachFile(options.files, files, [&](const UserText& path, Json& report) {
        SealReport done;
        const SettingsChange change{{path, options.encoding}, false, options.isForced, options.isDryRun};
        if (!ChangeSettings(change, [&](SettingsDocument& document) { done = SealAll(document, options); }))
            return ExitCode::SUCCESS;
        if (!options.json) PrintSealed(path, done);
        report["sections"] = ToJson(done);
        return ExitCode::SUCCESS;
    });
    if (options.json) PrintJson({{"files", std::move(files)}});
    if (worst != ExitCode::SUCCESS) throw CommandExit{worst};
}
