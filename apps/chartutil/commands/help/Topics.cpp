// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/help/Topics.h"

#include "apps/chartutil/sheet/project/ProjectKeys.h"

#include <algorithm>
#include <iterator>

namespace {

std::string ExitCodes() {
    return R"(Scripts can rely on them:

  0 :: Success.
  1 :: A check failed: all was read, and the answer is no. A section was edited, two files differ, a section, key or font that was asked for is not there, or a project has a fault. What is wrong is on standard error or part of the output.
  2 :: Wrong use: an unknown command or option, a value that is missing or makes no sense, or a file that would be written over one of another kind.
  3 :: Input or output error: a file cannot be read or written, the disk is full, there is no display for a dialog, or not enough memory.

Of several files that a command works on, the worst code counts; the others are worked on all the same.

Errors go to standard error and say what is wrong, where, and what to do. Ctrl-C stops a command in good order and says what was changed before; the shell sees the signal then, 130. A second Ctrl-C ends it at once, with no file half written either.

Example:
  chartutil settings check chart.ini || echo "edited, or worse: $?")";
}

std::string Files() {
    return R"(Wherever a command takes a file, "-" is standard input, or standard output where it writes. Each can be only one file of a command. While standard output gets a file, what would be printed goes to standard error. "./-" is a file of that name.

Kinds of files:

  settings file :: Sections of keys, usually .ini: 'chartutil help settings-files'.
  contour definition file :: Levels and their lines, .cdf: a settings file with a section for each level. 'chartutil contours' and 'chartutil edit' write it.
  colour table :: Depths and the colours from there on, .col. 'chartutil colors import' makes one of a .cpt palette of other programs.
  table :: Numbers in columns, .csv. It may be larger than memory.
  picture :: SVG, PNG, PDF or DXF. The name says it by its ending, or else --format; standard output gets SVG without that. On Windows pictures are SVG.
  project :: The folder of a chart sheet, with the file project.ini.

A file that is written is replaced whole or not at all: whatever happens, the old one or the new one is there. Only a file with several names (hard links), or in a folder that takes no new file, is written in place, and 'chartutil crc seal' adds to the end of a file.

No command writes over a file that is obviously of another kind, such as a picture over settings. It then says what the file is and ends with exit code 2; --force writes all the same. An empty file may become anything.

Examples:
  chartutil crc seal - < soundings.csv > sealed.csv
  chartutil colors table depths.col --picture - --format png > depths.png)";
}

std::string SettingsFiles() {
    return R"(A settings file has sections of keys:

  [Chart Sheet]
  Title      = Pensacola Bay, harbour approach
  Width      = 841                             ;mm
  ;A line of its own for a comment
  $CHECKSUM$ = 3230789390

"[name]" begins a section, "name = value ;comment" is a key. Names match whatever their letter case, and blanks at the ends of names and values do not count. A section's name may stand once in a file; of several keys with one name the first counts. What stands before the first section is not read.

A byte is a character, as in Latin-1. 'chartutil settings' takes files of other programs with --encoding utf-8.

Whole numbers are decimal digits, truth values 1 or 0. The decimal point is a point in every language. A key that is missing or empty leaves the program's default; text that is no number reads as 0.

A line cannot carry everything. What would not come back is refused:

  section's name :: "]", line breaks
  key's name :: "=", ";", line breaks, blanks at its ends
  value :: ";", line breaks, blanks at its ends
  comment :: line breaks, blanks at its end

The key $CHECKSUM$ is a section's seal, a CRC-32 of the names and values of its other keys. It shows whether somebody has edited them since; comments and spacing may change. It is no protection against somebody who wants to deceive, since everybody can compute it.

Examples:
  chartutil settings check chart.ini
  chartutil settings set chart.ini "Chart Sheet" Width 594 --seal)";
}

std::string ColorValues() {
    return R"(On the command line a colour is '#RRGGBB' in hexadecimal, or R,G,B with numbers from 0 to 255. Put the first in quotes: a shell takes what begins with # for a comment.

In files a colour is one of these:

  colour reference :: One number in settings and contour definition files: red + 256 * green + 65536 * blue, so that 255 is red.
  R,G,B :: In colour tables, behind the depth: Entry(0) = 0,134,217,247.
  DXF index :: 0 to 255, a colour of the palette that drawing programs share. 'chartutil colors palette' shows it.

'chartutil colors nearest' says all of them for one colour.

Example:
  chartutil colors nearest '#FF8000')";
}

std::string EnvironmentVariables() {
    return R"(These variables change what chartutil does:

  UTILITYDLL_LANGUAGE :: The language of the library's messages and dialogs, en or de. Without it that of LC_ALL, LC_MESSAGES or LANG counts, on Windows that of the system's texts. chartutil's own texts are English.
  UTILITYDLL_DATA :: The folder with the choices of keywords (the file Keywords), in which the editor of contours begins too. Without it that of the installation.
  NO_COLOR :: Set to any text: no colours, as with --no-color.
  TERM :: Set to dumb: neither colours nor a progress bar.
  DISPLAY, WAYLAND_DISPLAY :: The display on which 'chartutil edit' opens its dialog, on Linux.
  SOURCE_DATE_EPOCH :: The date on manual pages that 'chartutil help --install' writes, in seconds since 1970. Without it they have none.

Colours and the progress bar are for terminals; what goes into files and to other programs has neither. Help has lines of 80 characters whatever COLUMNS says. Numbers have a decimal point in every language.

Example:
  NO_COLOR=1 chartutil contours list pensacola-bay.cdf)";
}

std::string Project() {
    return R"(The chart of 'chartutil sheet' is drawn from a project: a folder with the settings file project.ini, which has a section for each aspect of the chart, and the files that it names. 'chartutil init' makes one with a remark at each key. 'chartutil check' tells what is wrong in one, with file, line and key.

)" + ProjectKeysText();
}

constexpr Topic kTopics[] = {
    {"project", "the sections and keys of a chart's project.ini", 5, Project},
    {"exit-codes", "what the program tells scripts", 7, ExitCodes},
    {"files", "standard streams, kinds of files, what is written over", 7, Files},
    {"settings-files", "the format of settings files, and their seals", 5, SettingsFiles},
    {"color-values", "how colours are written", 7, ColorValues},
    {"environment", "variables that change what the program does", 7, EnvironmentVariables},
};

} // namespace

std::span<const Topic> Topics() { return kTopics; }

const Topic* FindTopic(const std::string& name) {
    const Topic* const found = std::ranges::find(kTopics, name, &Topic::name);
    return found == std::end(kTopics) ? nullptr : found;
}
