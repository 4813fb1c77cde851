// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/help/Prose.h"

#include <string>
#include <string_view>

struct OptionText;

/// A page for man(1) in the making, in the language of roff. Every text may hold any character.
class ManualPage {
public:
    /// `source` is the program with its version, without "%", which titles take for a page's number; `date`
    /// is a day ("2026-01-31"), or empty for none.
    ManualPage(std::string_view name, int section, std::string_view about, std::string_view source,
               std::string_view date);

    void AddHeading(std::string_view heading);    ///< of a section, such as "EXAMPLES"
    void AddSubheading(std::string_view heading); ///< of a part of one
    void AddProse(const Prose& prose);
    void AddOption(const OptionText& option);

    /// A line of the synopsis: what is typed, and what stands for something else.
    void AddUsage(std::string_view command, std::string_view rest);

    /// "see(1), also(7)".
    void AddReferences(const std::vector<std::string>& pages);

    const std::string& Text() const { return m_text; }

private:
    void AddItem(std::string_view formattedTerm, std::string_view text);
    void AddLines(std::string_view lines);

    std::string m_text;
    bool m_isUnderHeading = false; // where a paragraph begins without being told to
};
