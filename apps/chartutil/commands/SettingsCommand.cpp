#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/settings/Settings.h"

namespace {

constexpr char kSaving[] =
    R"(Saving writes the whole file anew: columns are aligned, lines before the first section and comments
behind a section's header are not kept. The file on disk is always the whole old or the whole new one.
)";

constexpr char kExitCodes[] = R"(

Exit codes: 0 success, 1 a check failed (a section was edited; a section or key is not there, or a new name is taken),
2 wrong use, 3 input or output error.)";

template <typename Options>
NewCommand<Options> Add(CLI::App& settings, const char* name, const char* what, void (*run)(const Options&),
                        const std::string& footer) {
    return AddCommand<Options>(settings, name, what, run, footer + kExitCodes);
}

void AddFile(CLI::App& command, UserText& file) {
    command.add_option("FILE", file, "The settings file")->required();
}

void AddFiles(CLI::App& command, std::vector<UserText>& files, std::vector<UserText>& sections) {
    command.add_option("FILE", files, "The settings files")->required();
    command.add_option("-s,--section", sections, "Only this section (may be given again)")
        ->allow_extra_args(false);
}

void AddSection(CLI::App& command, UserText& section) {
    command.add_option("SECTION", section, "The section's name")->required();
}

void AddKey(CLI::App& command, UserText& key) {
    command.add_option("KEY", key, "The key's name")->required();
}

void AddSeal(CLI::App& command, bool& seal) { command.add_flag("--seal", seal, "Seal the changed section"); }

void AddJson(CLI::App& command, bool& json) { command.add_flag("--json", json, "Print JSON, for programs"); }

void AddShow(CLI::App& settings) {
    const auto [command, options] =
        Add<ShowSettings>(settings, "show", "Print a file, or one of its sections", Run, R"(Examples:
  chartutil settings show sample-project.ini
  chartutil settings show sample-project.ini "Chart Sheet" --json)");
    AddFile(command, options.file);
    command.add_option("SECTION", options.section, "Only this section");
    AddJson(command, options.json);
}

void AddGet(CLI::App& settings) {
    const auto [command, options] = Add<GetSetting>(settings, "get", "Print the value of a key", Run,
                                                    R"(Of several keys with that name the first one counts.

Examples:
  chartutil settings get sample-project.ini "Chart Sheet" Scale
  chartutil settings get sample-project.ini "Chart Sheet" Scale --comment)");
    AddFile(command, options.file);
    AddSection(command, options.section);
    AddKey(command, options.key);
    command.add_flag("--comment", options.wantsComment, "Print the key's comment instead");
    AddJson(command, options.json);
}

void AddSet(CLI::App& settings) {
    const std::string footer =
        R"(A section or key that is missing is added at the end; the comment stays unless --comment is given.
Refused is what a line cannot carry: ";" and line breaks in a value, blanks at its ends, characters
above U+00FF, also "=" in a key's name and "]" in a section's.
)" + std::string(kSaving) +
        R"(
Examples:
  chartutil settings set sample-project.ini "Chart Sheet" Scale 20000 --seal
  chartutil settings set sample-project.ini Tides Offset -- -0.35)";
    const auto [command, options] = Add<SetSetting>(settings, "set", "Set the value of a key", Run, footer);
    AddFile(command, options.file);
    AddSection(command, options.section);
    AddKey(command, options.key);
    command.add_option("VALUE", options.value, "The new value; put -- before one that begins with \"-\"")
        ->required();
    AddOptional(command, "-c,--comment", options.comment, "The comment of the key's line");
    command.add_flag("--create", options.create, "Make the file if there is none");
    AddSeal(command, options.seal);
}

void AddRemove(CLI::App& settings) {
    const std::string footer = "Of several keys with that name the first one goes.\n" + std::string(kSaving) +
                               R"(
Examples:
  chartutil settings remove sample-project.ini Tides
  chartutil settings remove sample-project.ini Tides Offset --seal)";
    const auto [command, options] =
        Add<RemoveSetting>(settings, "remove", "Remove a section, or a key", Run, footer);
    AddFile(command, options.file);
    AddSection(command, options.section);
    AddOptional(command, "KEY", options.key, "Remove this key only");
    AddSeal(command, options.seal);
}

void AddRename(CLI::App& settings) {
    const std::string footer = std::string(kSaving) + R"(
Examples:
  chartutil settings rename sample-project.ini Tides "Tide Gauges"
  chartutil settings rename sample-project.ini Tides --key Offset Shift)";
    const auto [command, options] =
        Add<RenameSetting>(settings, "rename", "Rename a section, or a key", Run, footer);
    AddFile(command, options.file);
    AddSection(command, options.section);
    command.add_option("NEW_NAME", options.newName, "The new name; it must be free")->required();
    AddOptional(command, "-k,--key", options.key, "Rename this key of the section");
    AddSeal(command, options.seal);
}

void AddCheck(CLI::App& settings) {
    const auto [command, options] = Add<CheckSettings>(
        settings, "check", "Tell for each section whether it was edited by hand", Run,
        R"(A seal covers the names and values of a section's keys; comments may change. A section without a seal
fails the check too, since it may have lost it.

Examples:
  chartutil settings check sample-project.ini
  chartutil settings check --ignore-unsealed --json *.ini)");
    AddFiles(command, options.files, options.sections);
    command.add_flag("--ignore-unsealed", options.ignoreUnsealed, "Pass sections without a seal");
    AddJson(command, options.json);
}

void AddSealing(CLI::App& settings) {
    const std::string footer = "A file in which every seal fits is left alone.\n" + std::string(kSaving) + R"(
Examples:
  chartutil settings seal sample-project.ini
  chartutil settings seal sample-project.ini --section Tides)";
    const auto [command, options] =
        Add<SealSettings>(settings, "seal", "Seal the sections, so that a later edit shows", Run, footer);
    AddFiles(command, options.files, options.sections);
    AddJson(command, options.json);
}

} // namespace

void AddSettingsCommand(CLI::App& program) {
    CLI::App& settings = *program.add_subcommand("settings", "Show, change, check and seal settings files");
    settings.require_subcommand(1);
    settings.footer(R"(Names of sections and keys match whatever their letter case.

Example:
  chartutil settings check sample-project.ini)");
    AddShow(settings);
    AddGet(settings);
    AddSet(settings);
    AddRemove(settings);
    AddRename(settings);
    AddCheck(settings);
    AddSealing(settings);
}
