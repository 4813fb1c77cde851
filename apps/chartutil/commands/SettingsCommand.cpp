// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/terminal/ValueNames.h"

namespace {

constexpr char kSaving[] =
    R"(Only the bytes that the change means are written anew; comments, blank lines, columns and line ends stay.
The file on disk is always the whole old or the whole new one, and no edit of another program is lost.
)";

constexpr char kExitCodes[] = R"(

Exit codes: 0 success, 1 a check failed (a section was edited; a section or key is not there, or a new name is taken;
the file is no settings file), 2 wrong use, 3 input or output error.)";

template <typename Options>
NewCommand<Options> Add(CLI::App& settings, const char* name, const char* what, void (*run)(const Options&),
                        const std::string& footer) {
    return AddCommand<Options>(settings, name, what, run, footer + kExitCodes);
}

void AddEncoding(CLI::App& command, TextEncoding& encoding) {
    command
        .add_option_function<std::string>(
            "--encoding",
            [&encoding](const std::string& name) {
                encoding = name == "utf-8" ? TextEncoding::UTF_8 : TextEncoding::ONE_BYTE;
            },
            "What the file's bytes are: latin-1, as the suite's own files, or utf-8")
        ->type_name("ENCODING")
        ->check(CLI::IsMember({"latin-1", "utf-8"}));
}

void AddFile(CLI::App& command, SettingsSource& source) {
    command.add_option("FILE", source.file, "The settings file; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    AddEncoding(command, source.encoding);
}

void AddFiles(CLI::App& command, SettingsFiles& options) {
    command.add_option("FILE", options.files, "The settings files; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    AddEncoding(command, options.encoding);
    command.add_option("-s,--section", options.sections, "Only this section; can be given again for others")
        ->type_name("NAME")
        ->allow_extra_args(false);
}

void AddSection(CLI::App& command, UserText& section) {
    command.add_option("SECTION", section, "The section's name")->required();
}

void AddKey(CLI::App& command, UserText& key) {
    command.add_option("KEY", key, "The key's name")->required();
}

CLI::Option* AddJson(CLI::App& command, bool& json) {
    return command.add_flag("--json", json, "Print a JSON document");
}

CLI::Option* AddDryRun(CLI::App& command, bool& isDryRun) {
    return command.add_flag("--dry-run", isDryRun, "Print how the file would change, and leave it as it is");
}

CLI::Option* AddAcceptEdits(CLI::App& command, bool& acceptEdits) {
    return command.add_flag("--accept-edits", acceptEdits,
                            "Seal also a section that was edited since it was sealed");
}

// The options of a command that changes one file.
void AddChange(CLI::App& command, OneSettingsChange& change) {
    CLI::Option* const seal = command.add_flag("--seal", change.seal, "Seal the changed section");
    AddAcceptEdits(command, change.acceptEdits)->needs(seal);
    AddDryRun(command, change.isDryRun);
    AddForce(command, change.isForced);
}

void AddShow(CLI::App& settings) {
    const auto [command, options] =
        Add<ShowSettings>(settings, "show", "Print a file, or one of its sections", Run, R"(Examples:
  chartutil settings show project.ini
  chartutil settings show project.ini "Chart Sheet" --json)");
    AddFile(command, options);
    command.add_option("SECTION", options.section, "Only this section");
    AddJson(command, options.json);
}

void AddGet(CLI::App& settings) {
    const auto [command, options] = Add<GetSetting>(settings, "get", "Print the value of a key", Run,
                                                    R"(Of several keys with that name the first one counts.

Examples:
  chartutil settings get project.ini "Chart Sheet" Scale
  chartutil settings get project.ini "Chart Sheet" Scale --comment
  chartutil settings get project.ini "Chart Sheet" Author --default none)");
    AddFile(command, options);
    AddSection(command, options.section);
    AddKey(command, options.key);
    command.add_flag("--comment", options.wantsComment, "Print the key's comment instead");
    command.add_flag("--all", options.wantsAll, "Print each key of that name, one a line");
    AddOptional(command, "--default", options.otherwise, "Print this text when there is no such key");
    AddJson(command, options.json);
}

void AddSet(CLI::App& settings) {
    const std::string footer =
        R"(A section that is missing is added at the end, a key behind the last one of its section; the comment stays
unless --comment is given. Refused is what a line cannot carry: ";" and line breaks in a value, blanks at its
ends, characters above U+00FF (but with --encoding utf-8), also "=" in a key's name and "]" in a section's.
)" + std::string(kSaving) +
        R"(
Examples:
  chartutil settings set project.ini "Chart Sheet" Scale 20000 --seal
  chartutil settings set project.ini "Chart Sheet" Scale 20000 --dry-run
  chartutil settings set project.ini Tides Offset -- -0.35)";
    const auto [command, options] = Add<SetSetting>(settings, "set", "Set the value of a key", Run, footer);
    AddFile(command, options);
    AddSection(command, options.section);
    AddKey(command, options.key);
    command.add_option("VALUE", options.value, "The new value; put -- before one that begins with \"-\"")
        ->required();
    AddOptional(command, "-c,--comment", options.comment, "The comment of the key's line");
    command.add_flag("--create", options.create, "Make the file if there is none");
    AddChange(command, options);
}

void AddRemove(CLI::App& settings) {
    const std::string footer = "Of several keys with that name the first one goes.\n" + std::string(kSaving) +
                               R"(
Examples:
  chartutil settings remove project.ini Tides
  chartutil settings remove project.ini Tides Offset --seal)";
    const auto [command, options] =
        Add<RemoveSetting>(settings, "remove", "Remove a section, or a key", Run, footer);
    AddFile(command, options);
    AddSection(command, options.section);
    AddOptional(command, "KEY", options.key, "Remove this key only");
    AddChange(command, options);
}

void AddRename(CLI::App& settings) {
    const std::string footer = std::string(kSaving) + R"(
Examples:
  chartutil settings rename project.ini Tides "Tide Gauges"
  chartutil settings rename project.ini Tides --key Offset Shift)";
    const auto [command, options] =
        Add<RenameSetting>(settings, "rename", "Rename a section, or a key", Run, footer);
    AddFile(command, options);
    AddSection(command, options.section);
    command.add_option("NEW_NAME", options.newName, "The new name; it must be free")->required();
    AddOptional(command, "-k,--key", options.key, "Rename this key of the section");
    AddChange(command, options);
}

void AddMerge(CLI::App& settings) {
    const std::string footer =
        R"(Each key of CHANGES gets its value in BASE; what BASE lacks is added, with the comment that it has in
CHANGES. Of several keys with one name the first counts. Seals and "#" lines of CHANGES are left out.
)" + std::string(kSaving) +
        R"(
Examples:
  chartutil settings merge project.ini my-changes.ini
  chartutil settings merge project.ini my-changes.ini --dry-run)";
    const auto [command, options] =
        Add<MergeSettings>(settings, "merge", "Set in one file every key that another one has", Run, footer);
    command.add_option("BASE", options.file, "The settings file to change; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_option("CHANGES", options.changes, "The settings file with the keys to set")
        ->type_name(kFileValue)
        ->required();
    AddEncoding(command, options.encoding);
    AddChange(command, options);
}

void AddDiff(CLI::App& settings) {
    const auto [command, options] = AddCommand<DiffSettings>(
        settings, "diff", "Tell which sections, keys and values two files have otherwise", Run,
        R"(Their order does not count, nor do spacing and letter case of names. Of several keys with one name, each is
held against the one at its place among them.

Examples:
  chartutil settings diff old.ini new.ini
  chartutil settings diff old.ini new.ini --json

Exit codes: 0 no difference, 1 a difference, 2 wrong use, 3 input or output error.)");
    command.add_option("BEFORE", options.before, "The one file; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_option("AFTER", options.after, "The other file; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    AddEncoding(command, options.encoding);
    command.add_flag("--comments", options.wantsComments, "Compare the comments as well");
    AddJson(command, options.json);
}

void AddCheck(CLI::App& settings) {
    const auto [command, options] = Add<CheckSettings>(
        settings, "check", "Tell for each section whether it was edited by hand", Run,
        R"(A seal covers the names and values of a section's keys; comments may change. A section without a seal
fails the check too, since it may have lost it.

Examples:
  chartutil settings check project.ini
  chartutil settings check --ignore-unsealed --json *.ini)");
    AddFiles(command, options);
    command.add_flag("--ignore-unsealed", options.ignoreUnsealed, "Pass sections without a seal");
    AddJson(command, options.json);
}

void AddSealing(CLI::App& settings) {
    const std::string footer =
        R"(A section that was edited since it was sealed is named, and nothing of its file is sealed: a new seal would
hide the edit. --accept-edits seals it.
)" + std::string(kSaving) +
        R"(
Examples:
  chartutil settings seal project.ini --accept-edits
  chartutil settings seal project.ini --section "Chart Sheet")";
    const auto [command, options] =
        Add<SealSettings>(settings, "seal", "Seal the sections, so that a later edit shows", Run, footer);
    AddFiles(command, options);
    CLI::Option* const json = AddJson(command, options.json);
    AddDryRun(command, options.isDryRun)->excludes(json);
    AddAcceptEdits(command, options.acceptEdits);
    AddForce(command, options.isForced);
}

} // namespace

void AddSettingsCommand(CLI::App& program) {
    CLI::App& settings =
        *program.add_subcommand("settings", "Show, change, compare, check and seal settings files");
    settings.require_subcommand(1);
    settings.footer(R"(Names of sections and keys match whatever their letter case.

Example:
  chartutil settings check project.ini)");
    AddShow(settings);
    AddGet(settings);
    AddSet(settings);
    AddRemove(settings);
    AddRename(settings);
    AddMerge(settings);
    AddDiff(settings);
    AddCheck(settings);
    AddSealing(settings);
}
