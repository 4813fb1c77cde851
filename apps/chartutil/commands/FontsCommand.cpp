// SPDX-License-Identifier: MIT
#include "Framework/device/DC.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/drawing/FontInUse.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

namespace {

struct Options {
    UserText pattern;
    std::optional<UserText> match;
    bool json = false;
};

struct Family {
    bool hasOutlines = false;
    bool isFixedPitch = false;
};

struct BelowNoCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const { return SmallerW(a, b); }
};
using Families = std::map<std::wstring, Family, BelowNoCase>;

bool Contains(const std::wstring& text, const std::wstring& part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(),
                       [](wchar_t a, wchar_t b) { return ToLowerW(a) == ToLowerW(b); }) != text.end() ||
           part.empty();
}

// The installed families. Some systems tell of a family once for each of its character sets, and once more,
// with an @, for writing downwards.
Families InstalledFamilies() {
    CDC device;
    device.CreateDCW(L"DISPLAY", nullptr, nullptr);
    Families families;
    LOGFONTW all = {};
    all.lfCharSet = DEFAULT_CHARSET;
    const FONTENUMPROCW add = [](const LOGFONTW* font, const TEXTMETRICW* metrics, DWORD type, LPARAM found) {
        if (font->lfFaceName[0] == L'@') return 1;
        auto* const into = reinterpret_cast<Families*>(found); // NOLINT(performance-no-int-to-ptr): it is one
        Family& family = (*into)[font->lfFaceName];
        family.hasOutlines = family.hasOutlines || (type & RASTER_FONTTYPE) == 0;
        family.isFixedPitch = (metrics->tmPitchAndFamily & TMPF_FIXED_PITCH) == 0;
        return 1;
    };
    EnumFontFamiliesExW(device.m_hDC, &all, add, reinterpret_cast<LPARAM>(&families), 0);
    return families;
}

void List(const Options& options) {
    Families families = InstalledFamilies();
    std::erase_if(families,
                  [&](const auto& family) { return !Contains(family.first, options.pattern.Wide()); });
    if (options.json) {
        Json list = Json::array();
        for (const auto& [name, family] : families)
            list.push_back({{"family", ToUtf8(name)},
                            {"hasOutlines", family.hasOutlines},
                            {"isFixedPitch", family.isFixedPitch}});
        PrintJson({{"fonts", std::move(list)}});
    } else if (!families.empty()) {
        std::size_t width = 6;
        for (const auto& [name, family] : families)
            width = std::max(width, TextWidth(InOneLine(ToUtf8(name))));
        std::cout << Colored(Padded("family", width) + "  kind      pitch", TextColor::BOLD) << '\n';
        for (const auto& [name, family] : families)
            std::cout << Padded(InOneLine(ToUtf8(name)), width) << "  "
                      << (family.hasOutlines ? "outlines" : "bitmap  ") << "  "
                      << (family.isFixedPitch ? "fixed" : "variable") << '\n';
    }
    if (!families.empty()) return;
    throw CommandError(ExitCode::CHECK_FAILED,
                       options.pattern.Empty()
                           ? "no font is installed"
                           : "no installed font has '" + InOneLine(options.pattern.Utf8()) +
                                 "' in its name; 'chartutil fonts' lists all of them");
}

void Match(const Options& options) {
    TextInfo style;
    style.SetFont(options.match->Wide());
    const FontInUse font = FindFont(style);
    if (options.json)
        PrintJson({{"asked", options.match->Utf8()},
                   {"family", font.family.empty() ? Json() : Json(ToUtf8(font.family))},
                   {"isInstalled", font.isInstalled}});
    else
        std::cout << InOneLine(FamilyText(font, options.match->Utf8())) << '\n';
    if (font.family.empty()) throw CommandExit{ExitCode::CHECK_FAILED};
}

void Run(const Options& options) { options.match ? Match(options) : List(options); }

} // namespace

void AddFontsCommand(CLI::App& program) {
    const auto [command, options] = AddCommand<Options>(
        program, "fonts", "The installed fonts, and what stands in for others", Run,
        R"(Texts are measured in fonts with outlines only. For a face that is not installed the system takes
another one, which --match names. The exit code is 1 when there is none.

Examples:
  chartutil fonts
  chartutil fonts liberation --json
  chartutil fonts --match Arial)");
    CLI::Option* const pattern =
        command.add_option("PATTERN", options.pattern, "A part of the family's name, in any letter case");
    AddOptional(command, "--match", options.match, "Tell which font is used for this face instead")
        ->type_name("FACE")
        ->excludes(pattern);
    command.add_flag("--json", options.json, "Print a JSON document");
}
