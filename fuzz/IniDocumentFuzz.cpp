// SPDX-License-Identifier: MIT
// Edits of settings files: whatever the bytes and the edits, a refused edit changes nothing, and what is read
// of an edited text is what a model of its sections holds; the changes told are those that were made. The
// input is a number of edits, the edits (kind, section, key and text, each with its length), and the file.

#include "fuzz/Require.h"
#include "tests/support/SettingsEdits.h"

namespace {

class Script {
public:
    Script(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

    std::size_t Byte() {
        if (m_rest.empty()) return 0;
        const auto byte = static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(1);
        return byte;
    }
    std::wstring Text() {
        const std::string_view bytes = m_rest.substr(0, Byte() % 16);
        m_rest.remove_prefix(std::min(bytes.size(), m_rest.size()));
        std::wstring text;
        for (const char c : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(c));
        return text;
    }
    std::string_view Rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

std::vector<std::wstring> KeyNames(const Section& section) {
    std::vector<std::wstring> names;
    for (int i = 0; i < section.NumKeys(); ++i) names.push_back(section[i].GetName());
    return names;
}

struct Choice {
    std::size_t kind;
    std::size_t section, key;
    std::wstring otherName, text;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Script script(data, size);
    std::vector<Choice> choices(script.Byte() % 8);
    for (Choice& choice : choices) {
        choice.kind = script.Byte() % SettingsEdit::NUM_KINDS;
        choice.section = script.Byte();
        choice.key = script.Byte();
        choice.otherName = script.Text();
        choice.text = script.Text();
    }
    const std::string content(script.Rest());

    IniDocument document;
    IniFile model;
    IniFile::Fault fault;
    IniFile::Fault modelFault;
    const bool isParsed = document.Parse(content, fault);
    Require(isParsed == static_cast<bool>(model.ReadText(content, modelFault)), "both read the same files");
    Require(fault.kind == modelFault.kind && fault.line == modelFault.line, "both stop at the same line");
    if (!isParsed) return 0;
    Require(document.Text() == content, "a text is given back");

    bool remarksCount = true;
    const auto pick = [](const std::vector<std::wstring>& names, std::size_t choice,
                         const std::wstring& other) {
        return choice % 4 == 0 || names.empty() ? other : names[choice / 4 % names.size()];
    };
    for (const Choice& choice : choices) {
        SettingsEdit edit{static_cast<SettingsEdit::Kind>(choice.kind), {}, {}, choice.text};
        edit.section = pick(document.SectionNames(), choice.section, choice.otherName);
        edit.key = pick(KeyNames(document.Read(edit.section)), choice.key, choice.otherName);
        if (edit.IsOfRemark() && edit.kind >= SettingsEdit::REMOVE_KEY) continue;
        const std::string before = document.Text();
        const bool isDone = edit.Apply(document);
        const std::string after = document.Text();
        Require(isDone || before == after, "a refused edit changes nothing");
        if (!isDone) continue;
        Require(edit.Apply(model) || edit.IsOfRemark(), "what is edited is there");
        remarksCount = remarksCount && edit.kind != SettingsEdit::REMOVE_SECTION;
        IniFile read;
        Require(static_cast<bool>(read.ReadText(after, fault)), "an edited text can be read");
        Require(SaysTheSame(read, model, remarksCount), "it says what the model does");
        Require(ChangesExplain(document.Changes(), content, after), "the changes are those that were made");
    }
    return 0;
}
