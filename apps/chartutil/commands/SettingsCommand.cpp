#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/LineRules.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

constexpr const char* kChecksumReserved =
    "\"$CHECKSUM$\" holds the seal of its section; use 'chartutil settings seal'";

constexpr const char* kSavingNote =
    "Saving writes the whole file anew: columns are aligned, lines before the first section and comments\n"
    "behind a section's header are not kept. The file on disk is always the whole old or the whole new "
    "one.\n";

struct Options {
    std::string file;
    std::vector<std::string> files;
    std::string section;
    std::vector<std::string> sections;
    std::string key;
    std::string value;
    std::string newName;
    std::string comment;
    CLI::Option* commentGiven = nullptr;
    std::vector<CLI::Option*> keyOptions; // of the commands that can do without a key
    bool create = false;
    bool seal = false;
    bool ignoreUnsealed = false;
    bool wantsComment = false;
    bool json = false;

    // Whether a key was named; an empty name, as an unset variable of a script gives it, was one too.
    bool HasKey() const {
        return std::any_of(keyOptions.begin(), keyOptions.end(),
                           [](const CLI::Option* option) { return option->count() > 0; });
    }
};
using OptionsPtr = std::shared_ptr<Options>;

bool IsChecksumKey(const std::string& name) {
    return icompareW(FromUtf8(name), Section::m_ChecksumName.String());
}

enum class Seal { INTACT, BROKEN, NONE };

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

// After a change of a section: seals it anew if the user asked for that, else tells when its seal does not
// fit any longer.
void RenewSeal(Section& section, const Options& options) {
    if (options.seal)
        AddSeal(section);
    else if (SealOf(section) == Seal::BROKEN)
        PrintNote("chartutil: note: the seal of " + InBrackets(section.GetName()) +
                  " does not fit its keys; 'chartutil settings seal' renews it");
}

std::string Padded(const std::wstring& text, int width) {
    return ToUtf8(text) +
           std::string(static_cast<std::size_t>(width) - std::min<std::size_t>(text.size(), width), ' ');
}

void PrintSection(const Section& section) {
    int nameWidth = 0;
    int valueWidth = 0;
    section.GetWriteOffsets(nameWidth, valueWidth);
    std::cout << Colored(Printable(InBrackets(section.GetName())), TextColor::BOLD) << '\n';
    for (int i = 0; i < section.NumKeys(); ++i) {
        const SectionKey& key = section[i];
        const bool hasComment = !key.GetComments().empty();
        if (key.IsValid())
            std::cout << Printable(Padded(key.GetName(), nameWidth)) << " = "
                      << Printable(hasComment ? Padded(key.GetValue(), valueWidth + 1)
                                              : ToUtf8(key.GetValue()));
        if (hasComment) std::cout << Colored(Printable(";" + ToUtf8(key.GetComments())), TextColor::DIM);
        std::cout << '\n';
    }
}

Json ToJson(const SectionKey& key) {
    return {{"name", ToUtf8(key.GetName().String())},
            {"value", ToUtf8(key.GetValue())},
            {"comment", ToUtf8(key.GetComments())}};
}

Json ToJson(const Section& section) {
    Json keys = Json::array();
    for (int i = 0; i < section.NumKeys(); ++i) keys.push_back(ToJson(section[i]));
    return {{"name", ToUtf8(section.GetName().String())},
            {"seal", NameOf(SealOf(section))},
            {"keys", std::move(keys)}};
}

void Show(const Options& options) {
    IniFile file = OpenSettings(options.file);
    std::vector<const Section*> shown;
    if (!options.section.empty())
        shown.push_back(&RequireSection(file, options.file, options.section));
    else
        for (int i = 0; i < file.NumSections(); ++i) shown.push_back(&file[i]);

    if (options.json) {
        Json sections = Json::array();
        for (const Section* section : shown) sections.push_back(ToJson(*section));
        PrintJson({{"file", options.file}, {"sections", std::move(sections)}});
        return;
    }
    for (const Section* section : shown) {
        if (section != shown.front()) std::cout << '\n';
        PrintSection(*section);
    }
}

void Get(const Options& options) {
    IniFile file = OpenSettings(options.file);
    Section& section = RequireSection(file, options.file, options.section);
    const SectionKey& key = RequireKey(section, options.file, options.key);
    if (options.json) {
        Json document = {{"file", options.file}, {"section", ToUtf8(section.GetName().String())}};
        document.update(ToJson(key));
        PrintJson(document);
    } else {
        std::cout << Printable(ToUtf8(options.wantsComment ? key.GetComments() : key.GetValue())) << '\n';
    }
}

void Set(const Options& options) {
    const std::wstring sectionName = FromUtf8(options.section);
    const std::wstring keyName = FromUtf8(options.key);
    const std::wstring value = FromUtf8(options.value);
    if (IsChecksumKey(options.key)) throw CommandError(ExitCode::WRONG_USE, kChecksumReserved);

    IniFile file;
    if (!options.create || PathExists(options.file)) file = OpenSettings(options.file);
    const bool isNewSection = !file.HasSection(sectionName);
    if (isNewSection) RequireSectionName(sectionName);
    const SectionKey old = std::as_const(file)[sectionName][keyName];
    const std::wstring comment =
        options.commentGiven->count() > 0 ? FromUtf8(options.comment) : old.GetComments();
    RequireKeyLine(old.IsValid() ? old.GetName().String() : keyName, value, comment);

    Section& section = file[sectionName];
    SectionKey& key = section[keyName];
    key << value;
    key.SetComments(comment);
    RenewSeal(section, options);
    SaveSettings(file, options.file);

    std::cout << Printable(options.file + ": " + InBrackets(section.GetName()) + " " +
                           ToUtf8(key.GetName().String()) + " = " + options.value);
    if (old.IsValid())
        std::cout << Printable(" (was \"" + ToUtf8(old.GetValue()) + "\")");
    else
        std::cout << (isNewSection ? " (new section)" : " (new key)");
    std::cout << '\n';
}

void Remove(const Options& options) {
    IniFile file = OpenSettings(options.file);
    Section& section = RequireSection(file, options.file, options.section);
    std::string removed = InBrackets(section.GetName());
    if (options.HasKey()) {
        const std::wstring key = RequireKey(section, options.file, options.key).GetName();
        removed += " " + ToUtf8(key);
        section.RemoveKey(key);
        RenewSeal(section, options);
    } else {
        if (file.NumSections() == 1)
            throw CommandError(ExitCode::WRONG_USE,
                               options.file + ": " + removed +
                                   " is the only section, and a settings file has one at "
                                   "least; delete the file instead");
        file.RemoveSection(FromUtf8(options.section));
    }
    SaveSettings(file, options.file);
    std::cout << Printable(options.file + ": removed " + removed) << '\n';
}

[[noreturn]] void ThrowNameTaken(const std::string& path, const std::string& name) {
    throw CommandError(ExitCode::CHECK_FAILED,
                       path + ": the name \"" + name +
                           "\" is taken (letter case does not count); nothing is changed");
}

void RenameSection(IniFile& file, const Options& options) {
    RequireSection(file, options.file, options.section);
    RequireSectionName(FromUtf8(options.newName));
    if (!file.RenameSection(FromUtf8(options.section), FromUtf8(options.newName)))
        ThrowNameTaken(options.file, options.newName);
    if (options.seal) AddSeal(file[FromUtf8(options.newName)]);
}

void RenameKey(IniFile& file, const Options& options) {
    Section& section = RequireSection(file, options.file, options.section);
    SectionKey& key = RequireKey(section, options.file, options.key);
    if (IsChecksumKey(options.key) || IsChecksumKey(options.newName))
        throw CommandError(ExitCode::WRONG_USE, kChecksumReserved);
    const std::wstring newName = FromUtf8(options.newName);
    RequireKeyLine(newName, key.GetValue(), key.GetComments());
    if (section.HasKey(newName)) ThrowNameTaken(options.file, options.newName);
    key = SectionKey(newName, key.GetValue(), key.GetComments());
    RenewSeal(section, options);
}

void Rename(const Options& options) {
    IniFile file = OpenSettings(options.file);
    const bool ofKey = options.HasKey();
    ofKey ? RenameKey(file, options) : RenameSection(file, options);
    SaveSettings(file, options.file);
    std::cout << Printable(options.file + ": [" + options.section + "]" + (ofKey ? " " + options.key : "") +
                           " is now " + (ofKey ? options.newName : "[" + options.newName + "]"))
              << '\n';
}

// Works through the files, of which none keeps the others from being done, and gives the worst exit code.
ExitCode ForEachFile(const std::vector<std::string>& paths, Json& reports,
                     const std::function<void(const std::string&)>& doOne) {
    ExitCode worst = ExitCode::SUCCESS;
    for (const std::string& path : paths) {
        try {
            doOne(path);
        } catch (const CommandError& error) {
            worst = std::max(worst, error.Code());
            PrintError(error);
            reports.push_back({{"file", path}, {"error", error.what()}});
        }
    }
    return worst;
}

// The sections named by the user, or all.
std::vector<Section*> ChosenSections(IniFile& file, const std::string& path, const Options& options) {
    std::vector<Section*> chosen;
    for (const std::string& name : options.sections) chosen.push_back(&RequireSection(file, path, name));
    if (options.sections.empty())
        for (int i = 0; i < file.NumSections(); ++i) chosen.push_back(&file[i]);
    if (chosen.empty())
        throw CommandError(ExitCode::CHECK_FAILED,
                           path + ": there is no section in it; is it a settings file?");
    return chosen;
}

int LongestName(const std::vector<Section*>& sections) {
    std::size_t width = 0;
    for (const Section* section : sections) width = std::max(width, section->GetName().String().size());
    return static_cast<int>(width);
}

void Check(const Options& options) {
    Json files = Json::array();
    int numSections = 0;
    int numBad = 0;
    ExitCode worst = ForEachFile(options.files, files, [&](const std::string& path) {
        IniFile file = OpenSettings(path);
        const std::vector<Section*> sections = ChosenSections(file, path, options);
        const int width = LongestName(sections);
        Json report = Json::array();
        if (!options.json) std::cout << Printable(path) << '\n';
        for (const Section* section : sections) {
            const Seal seal = SealOf(*section);
            ++numSections;
            if (seal == Seal::BROKEN || (seal == Seal::NONE && !options.ignoreUnsealed)) ++numBad;
            if (options.json) {
                report.push_back({{"name", ToUtf8(section->GetName().String())}, {"state", NameOf(seal)}});
                continue;
            }
            std::cout << "  " << Printable(Padded(section->GetName(), width)) << "  ";
            switch (seal) {
            case Seal::INTACT:
                std::cout << Colored("intact", TextColor::GREEN) << '\n';
                break;
            case Seal::BROKEN:
                std::cout << Colored("EDITED BY HAND", TextColor::RED)
                          << ": its seal does not fit its keys\n";
                break;
            case Seal::NONE:
                std::cout << Colored("no seal", TextColor::YELLOW) << ": an edit cannot be told\n";
                break;
            }
        }
        files.push_back({{"file", path}, {"sections", std::move(report)}});
    });
    if (options.json)
        PrintJson({{"files", std::move(files)}, {"sections", numSections}, {"failed", numBad}});
    else if (numBad > 0)
        std::cout << numBad << " of " << numSections << " sections edited by hand or without a seal\n";
    else if (worst == ExitCode::SUCCESS)
        std::cout << "no section was edited by hand\n";
    if (numBad > 0) worst = std::max(worst, ExitCode::CHECK_FAILED);
    if (worst != ExitCode::SUCCESS) throw CommandExit{worst};
}

void SealSections(const Options& options) {
    Json files = Json::array();
    const ExitCode worst = ForEachFile(options.files, files, [&](const std::string& path) {
        IniFile file = OpenSettings(path);
        const std::vector<Section*> sections = ChosenSections(file, path, options);
        std::vector<Seal> before;
        for (Section* section : sections) {
            before.push_back(SealOf(*section));
            if (before.back() != Seal::INTACT) AddSeal(*section);
        }
        // A file in which all seals fit stays as it is, with its spacing.
        if (std::any_of(before.begin(), before.end(), [](Seal seal) { return seal != Seal::INTACT; }))
            SaveSettings(file, path);

        const int width = LongestName(sections);
        Json report = Json::array();
        if (!options.json) std::cout << Printable(path) << '\n';
        for (std::size_t i = 0; i < sections.size(); ++i) {
            unsigned long checksum = 0;
            std::as_const(*sections[i])[Section::m_ChecksumName.String()] >> checksum;
            if (options.json) {
                report.push_back({{"name", ToUtf8(sections[i]->GetName().String())},
                                  {"before", NameOf(before[i])},
                                  {"checksum", checksum}});
                continue;
            }
            constexpr const char* kDone[] = {"was sealed", "sealed anew, it had been edited", "sealed"};
            std::cout << "  " << Printable(Padded(sections[i]->GetName(), width)) << "  " << checksum << "  "
                      << kDone[static_cast<int>(before[i])] << '\n';
        }
        files.push_back({{"file", path}, {"sections", std::move(report)}});
    });
    if (options.json) PrintJson({{"files", std::move(files)}});
    if (worst != ExitCode::SUCCESS) throw CommandExit{worst};
}

CLI::App* Add(CLI::App& settings, const OptionsPtr& options, const char* name, const char* what,
              void (*run)(const Options&), const std::string& footer) {
    CLI::App* const command = settings.add_subcommand(name, what);
    command->footer(footer +
                    "\n\nExit codes: 0 success, 1 a check failed (a section was edited; a section or key is "
                    "not there, or a new name is taken),\n2 wrong use, 3 input or output error.");
    command->callback([options, run] { run(*options); });
    return command;
}

} // namespace

void AddSettingsCommand(CLI::App& program) {
    CLI::App& settings = *program.add_subcommand("settings", "Show, change, check and seal settings files");
    settings.require_subcommand(1);
    settings.footer("Names of sections and keys match whatever their letter case.\n\n"
                    "Example:\n"
                    "  chartutil settings check sample-project.ini");
    const auto options = std::make_shared<Options>();

    const auto addFile = [&](CLI::App* command) {
        command->add_option("FILE", options->file, "The settings file")->required();
    };
    const auto addSection = [&](CLI::App* command) {
        command->add_option("SECTION", options->section, "The section's name")->required();
    };
    const auto addFiles = [&](CLI::App* command) {
        command->add_option("FILE", options->files, "The settings files")->required();
        command->add_option("-s,--section", options->sections, "Only this section (may be given again)")
            ->allow_extra_args(false);
    };
    const auto addJson = [&](CLI::App* command) {
        command->add_flag("--json", options->json, "Print JSON, for programs");
    };
    const auto addSeal = [&](CLI::App* command) {
        command->add_flag("--seal", options->seal, "Seal the changed section");
    };
    const std::string saving = kSavingNote;

    CLI::App* const show = Add(settings, options, "show", "Print a file, or one of its sections", Show,
                               "Examples:\n"
                               "  chartutil settings show sample-project.ini\n"
                               "  chartutil settings show sample-project.ini \"Chart Sheet\" --json");
    addFile(show);
    show->add_option("SECTION", options->section, "Only this section");
    addJson(show);

    CLI::App* const get = Add(settings, options, "get", "Print the value of a key", Get,
                              "Of several keys with that name the first one counts.\n\n"
                              "Examples:\n"
                              "  chartutil settings get sample-project.ini \"Chart Sheet\" Scale\n"
                              "  chartutil settings get sample-project.ini \"Chart Sheet\" Scale --comment");
    addFile(get);
    addSection(get);
    get->add_option("KEY", options->key, "The key's name")->required();
    get->add_flag("--comment", options->wantsComment, "Print the key's comment instead");
    addJson(get);

    CLI::App* const set = Add(
        settings, options, "set", "Set the value of a key", Set,
        "A section or key that is missing is added at the end; the comment stays unless --comment is given.\n"
        "Refused is what a line cannot carry: \";\" and line breaks in a value, blanks at its ends, "
        "characters\n"
        "above U+00FF, also \"=\" in a key's name and \"]\" in a section's.\n" +
            saving +
            "\nExamples:\n"
            "  chartutil settings set sample-project.ini \"Chart Sheet\" Scale 20000 --seal\n"
            "  chartutil settings set sample-project.ini Tides Offset -- -0.35");
    addFile(set);
    addSection(set);
    set->add_option("KEY", options->key, "The key's name")->required();
    set->add_option("VALUE", options->value, "The new value; put -- before one that begins with \"-\"")
        ->required();
    options->commentGiven =
        set->add_option("-c,--comment", options->comment, "The comment of the key's line");
    set->add_flag("--create", options->create, "Make the file if there is none");
    addSeal(set);

    CLI::App* const remove = Add(settings, options, "remove", "Remove a section, or a key", Remove,
                                 "Of several keys with that name the first one goes.\n" + saving +
                                     "\nExamples:\n"
                                     "  chartutil settings remove sample-project.ini Tides\n"
                                     "  chartutil settings remove sample-project.ini Tides Offset --seal");
    addFile(remove);
    addSection(remove);
    options->keyOptions.push_back(remove->add_option("KEY", options->key, "Remove this key only"));
    addSeal(remove);

    CLI::App* const rename =
        Add(settings, options, "rename", "Rename a section, or a key", Rename,
            saving + "\nExamples:\n"
                     "  chartutil settings rename sample-project.ini Tides \"Tide Gauges\"\n"
                     "  chartutil settings rename sample-project.ini Tides --key Offset Shift");
    addFile(rename);
    addSection(rename);
    rename->add_option("NEW_NAME", options->newName, "The new name; it must be free")->required();
    options->keyOptions.push_back(
        rename->add_option("-k,--key", options->key, "Rename this key of the section"));
    addSeal(rename);

    CLI::App* const check =
        Add(settings, options, "check", "Tell for each section whether it was edited by hand", Check,
            "A seal covers the names and values of a section's keys; comments may change. A section without "
            "a seal\n"
            "fails the check too, since it may have lost it.\n\n"
            "Examples:\n"
            "  chartutil settings check sample-project.ini\n"
            "  chartutil settings check --ignore-unsealed --json *.ini");
    addFiles(check);
    check->add_flag("--ignore-unsealed", options->ignoreUnsealed, "Pass sections without a seal");
    addJson(check);

    CLI::App* const seal =
        Add(settings, options, "seal", "Seal the sections, so that a later edit shows", SealSections,
            "A file in which every seal fits is left alone.\n" + saving +
                "\nExamples:\n"
                "  chartutil settings seal sample-project.ini\n"
                "  chartutil settings seal sample-project.ini --section Tides");
    addFiles(seal);
    addJson(seal);
}
