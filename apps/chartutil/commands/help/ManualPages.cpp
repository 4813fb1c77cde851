// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/help/ManualPages.h"

#include "apps/chartutil/commands/help/Topics.h"
#include "apps/chartutil/help/ManualPage.h"
#include "apps/chartutil/help/OptionText.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

constexpr int kCommands = 1; // the section of the manual

std::string PageName(const std::string& part) { return "chartutil-" + part; }
std::string Reference(const CLI::App& command) { return PageName(command.get_name()) + "(1)"; }
std::string Reference(const Topic& topic) {
    return PageName(topic.name) + '(' + std::to_string(topic.manualSection) + ')';
}

NamedText File(const std::string& name, int section, const ManualPage& page) {
    const std::string number = std::to_string(section);
    return {"man/man" + number + '/' + name + '.' + number, page.Text()};
}

// What help begins with, as the one line that a list of pages has.
std::string Purpose(const CLI::App& command) { return ReadProse(command.get_description()).front().text; }

class Pages {
public:
    Pages(const CLI::App& program, std::string date)
        : m_program(program), m_version(program.version()), m_date(std::move(date)) {
        m_version.resize(std::min(m_version.find('\n'), m_version.size()));
    }

    NamedText OfProgram() const {
        ManualPage page = Page("chartutil", kCommands, Purpose(m_program));
        page.AddHeading("SYNOPSIS");
        AddUsage(page, m_program);
        page.AddHeading("DESCRIPTION");
        ProseParts about = WithoutExamples(ReadProse(m_program.get_description()));
        about.text.erase(about.text.begin()); // the name's line
        page.AddProse(about.text);
        page.AddProse(WithoutExamples(ReadProse(m_program.get_footer())).text);
        page.AddHeading("COMMANDS");
        std::string group;
        for (const CLI::App* const command : CommandsOf(m_program)) {
            if (command->get_group() != group) page.AddSubheading(group = command->get_group());
            page.AddProse({{Block::Kind::ITEM, Reference(*command), Purpose(*command)}});
        }
        page.AddHeading("OPTIONS");
        AddOptions(page, m_program);
        page.AddHeading("EXAMPLES");
        page.AddProse(about.examples);
        page.AddHeading("EXIT STATUS");
        page.AddProse(ItemsOf("exit-codes"));
        page.AddHeading("ENVIRONMENT");
        page.AddProse(ItemsOf("environment"));
        page.AddHeading("SEE ALSO");
        std::vector<std::string> others;
        for (const CLI::App* const command : CommandsOf(m_program)) others.push_back(Reference(*command));
        for (const Topic& topic : Topics()) others.push_back(Reference(topic));
        page.AddReferences(others);
        return File("chartutil", kCommands, page);
    }

    NamedText OfCommand(const CLI::App& command) const {
        const std::string name = PageName(command.get_name());
        ManualPage page = Page(name, kCommands, Purpose(command));
        const std::vector<const CLI::App*> parts = CommandsOf(command);
        page.AddHeading("SYNOPSIS");
        for (const CLI::App* const part : parts) AddUsage(page, *part);
        if (parts.empty()) AddUsage(page, command);
        ProseParts about = WithoutExamples(ReadProse(command.get_footer()));
        page.AddHeading("DESCRIPTION");
        page.AddProse({{Block::Kind::PARAGRAPH, {}, Purpose(command) + '.'}});
        page.AddProse(about.text);
        page.AddHeading(parts.empty() ? "OPTIONS" : "COMMANDS AND OPTIONS");
        AddOptions(page, command);
        for (const CLI::App* const part : parts) {
            const ProseParts aboutPart = WithoutExamples(ReadProse(part->get_footer()));
            page.AddSubheading(FullName(*part));
            page.AddProse({{Block::Kind::PARAGRAPH, {}, Purpose(*part) + '.'}});
            AddOptions(page, *part);
            page.AddProse(aboutPart.text);
            about.examples.insert(about.examples.end(), aboutPart.examples.begin(), aboutPart.examples.end());
        }
        page.AddHeading("EXAMPLES");
        page.AddProse(about.examples);
        page.AddHeading("EXIT STATUS");
        page.AddProse(ItemsOf("exit-codes"));
        page.AddHeading("ENVIRONMENT");
        page.AddProse(ReadProse("chartutil-environment(7) lists the variables that count."));
        page.AddHeading("SEE ALSO");
        std::vector<std::string> others = {"chartutil(1)"};
        for (const CLI::App* const other : CommandsOf(m_program))
            if (other != &command && other->get_group() == command.get_group())
                others.push_back(Reference(*other));
        for (const Topic& topic : Topics()) others.push_back(Reference(topic));
        page.AddReferences(others);
        return File(name, kCommands, page);
    }

    NamedText OfTopic(const Topic& topic) const {
        const std::string name = PageName(topic.name);
        ManualPage page = Page(name, topic.manualSection, topic.about);
        const ProseParts text = WithoutExamples(ReadProse(topic.text()));
        page.AddHeading("DESCRIPTION");
        page.AddProse(text.text);
        if (!text.examples.empty()) page.AddHeading("EXAMPLES");
        page.AddProse(text.examples);
        page.AddHeading("SEE ALSO");
        std::vector<std::string> others = {"chartutil(1)"};
        for (const Topic& other : Topics())
            if (&other != &topic) others.push_back(Reference(other));
        page.AddReferences(others);
        return File(name, topic.manualSection, page);
    }

private:
    ManualPage Page(const std::string& name, int section, const std::string& about) const {
        return {name, section, about, m_version, m_date};
    }

    static void AddUsage(ManualPage& page, const CLI::App& command) {
        const std::string name = FullName(command);
        page.AddUsage(name, Usage(command).substr(name.size() + 1));
    }

    static void AddOptions(ManualPage& page, const CLI::App& command) {
        for (const OptionText& argument : ArgumentsOf(command)) page.AddOption(argument);
        for (const OptionText& option : OptionsOf(command)) page.AddOption(option);
    }

    static Prose ItemsOf(const char* topic) {
        Prose prose = ReadProse(FindTopic(topic)->text());
        std::erase_if(prose, [](const Block& block) { return block.kind != Block::Kind::ITEM; });
        return prose;
    }

    const CLI::App& m_program;
    std::string m_version, m_date;
};

} // namespace

std::vector<NamedText> ManualPages(const CLI::App& program, const std::string& date) {
    const Pages pages(program, date);
    std::vector<NamedText> files = {pages.OfProgram()};
    for (const CLI::App* const command : CommandsOf(program)) files.push_back(pages.OfCommand(*command));
    for (const Topic& topic : Topics()) files.push_back(pages.OfTopic(topic));
    return files;
}
