#include "apps/chartutil/commands/ForEachFile.h"
#include "apps/chartutil/commands/settings/Seals.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

namespace {

// The sections named by the user, or all.
std::vector<Section*> ChosenSections(IniFile& file, const UserText& path,
                                     const std::vector<UserText>& names) {
    std::vector<Section*> chosen;
    chosen.reserve(names.size());
    for (const UserText& name : names) chosen.push_back(&RequireSection(file, path, name));
    if (names.empty())
        for (int i = 0; i < file.NumSections(); ++i) chosen.push_back(&file[i]);
    if (chosen.empty())
        throw CommandError(ExitCode::CHECK_FAILED,
                           path.Utf8() + ": there is no section in it; is it a settings file?");
    return chosen;
}

// The names of the sections, padded to one width for the terminal.
std::vector<std::string> NameColumn(const std::vector<Section*>& sections) {
    std::vector<std::string> names;
    std::size_t width = 0;
    for (const Section* section : sections) {
        names.push_back(ToUtf8(section->GetName().String()));
        width = std::max(width, TextWidth(names.back()));
    }
    for (std::string& name : names) name = Printable(Padded(name, width));
    return names;
}

std::vector<Seal> SealsOf(const std::vector<Section*>& sections, const UserText& path) {
    const Progress progress(path.Utf8(), sections.size());
    std::vector<Seal> seals;
    seals.reserve(sections.size());
    for (const Section* section : sections) {
        seals.push_back(SealOf(*section));
        progress.Show(seals.size());
    }
    return seals;
}

// Seals the sections of which the seal does not fit or that have none, and tells how they were before.
std::vector<Seal> SealAll(const std::vector<Section*>& sections, const UserText& path) {
    std::vector<Seal> before = SealsOf(sections, path);
    const Progress progress(path.Utf8(), sections.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (before[i] != Seal::INTACT) AddSeal(*sections[i]);
        progress.Show(i + 1);
    }
    return before;
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

} // namespace

Seal SealOf(const Section& section) {
    if (!section.HasKey(Section::m_ChecksumName.String())) return Seal::NONE;
    return section.IsModified() ? Seal::BROKEN : Seal::INTACT;
}

const char* NameOf(Seal seal) {
    constexpr const char* kNames[] = {"intact", "edited", "unsealed"};
    return kNames[static_cast<int>(seal)];
}

void AddSeal(Section& section) {
    // A line cannot carry a value without a name. It goes now, or saving would drop it from under the seal.
    for (int i = 0; i < section.NumKeys(); ++i)
        if (!section[i].IsValid()) section[i] << L"";
    section.AddChecksum();
}

void RenewSeal(Section& section, bool anew) {
    if (anew)
        AddSeal(section);
    else if (SealOf(section) == Seal::BROKEN)
        PrintNote("chartutil: note: the seal of " + InBrackets(section.GetName()) +
                  " does not fit its keys; 'chartutil settings seal' renews it");
}

void Run(const CheckSettings& options) {
    Json files = Json::array();
    int numSections = 0;
    int numBad = 0;
    const ExitCode worst = ForEachFile(options.files, files, [&](const UserText& path, Json& report) {
        IniFile file = OpenSettings(path);
        const std::vector<Section*> sections = ChosenSections(file, path, options.sections);
        const std::vector<std::string> names = NameColumn(sections);
        const std::vector<Seal> seals = SealsOf(sections, path);
        const int numBadBefore = numBad;
        Json states = Json::array();
        if (!options.json) std::cout << Printable(path.Utf8()) << '\n';
        for (std::size_t i = 0; i < sections.size(); ++i) {
            const Seal seal = seals[i];
            ++numSections;
            if (seal == Seal::BROKEN || (seal == Seal::NONE && !options.ignoreUnsealed)) ++numBad;
            if (options.json)
                states.push_back(
                    {{"name", ToUtf8(sections[i]->GetName().String())}, {"state", NameOf(seal)}});
            else
                PrintState(names[i], seal);
        }
        report["sections"] = std::move(states);
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
        IniFile file = OpenSettings(path);
        const std::vector<Section*> sections = ChosenSections(file, path, options.sections);
        const std::vector<Seal> before = SealAll(sections, path);
        // A file in which all seals fit stays as it is, with its spacing.
        if (std::any_of(before.begin(), before.end(), [](Seal seal) { return seal != Seal::INTACT; }))
            SaveSettings(file, path);

        const std::vector<std::string> names = NameColumn(sections);
        Json seals = Json::array();
        if (!options.json) std::cout << Printable(path.Utf8()) << '\n';
        for (std::size_t i = 0; i < sections.size(); ++i) {
            unsigned long checksum = 0;
            std::as_const(*sections[i])[Section::m_ChecksumName.String()] >> checksum;
            if (options.json) {
                seals.push_back({{"name", ToUtf8(sections[i]->GetName().String())},
                                 {"before", NameOf(before[i])},
                                 {"checksum", checksum}});
                continue;
            }
            constexpr const char* kDone[] = {"was sealed", "sealed anew, it had been edited", "sealed"};
            std::cout << "  " << names[i] << "  " << checksum << "  " << kDone[static_cast<int>(before[i])]
                      << '\n';
        }
        report["sections"] = std::move(seals);
        return ExitCode::SUCCESS;
    });
    if (options.json) PrintJson({{"files", std::move(files)}});
    if (worst != ExitCode::SUCCESS) throw CommandExit{worst};
}
