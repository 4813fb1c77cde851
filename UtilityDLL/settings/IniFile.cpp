// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/IniFile.h"

#include "UtilityDLL/res/private/StringTable.h"
#include "UtilityDLL/settings/private/RecentTexts.h"
#include "VelmBase/SettingsText.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

const Section IniFile::m_ErrorSection;

IniFile::IniFile(const std::wstring& path) { (void)Open(path); }

ErrorString IniFile::Open(const std::wstring& path) {
    Fault fault;
    return Open(path, fault);
}

struct IniFile::Builder : SETTINGS::Handler {
    Builder(NamedSequence<Section>& target, Fault& where) : sections(target), fault(where) {}
    bool OnSection(SETTINGS::Bytes name) override {
        std::wstring text = SETTINGS::Widened(name);
        if (const std::size_t position = sections.Find(text); position < sections.Size()) {
            fault.section = std::move(text);
            fault.firstLine = headerLines[position];
            return false;
        }
        headerLines.push_back(LineNumber());
        section = &sections.Append(std::move(text));
        return true;
    }
    void OnKey(SETTINGS::Bytes name, SETTINGS::Bytes value, SETTINGS::Bytes comment) override {
        section->m_keys.Append(names.Get(name), SETTINGS::Widened(value), comments.Get(comment));
    }

    // What reading ended with, which goes to the fault as well.
    ErrorString Finish(const SETTINGS::ReadResult& result, const std::wstring& path) {
        switch (result.status) {
        case SETTINGS::ReadStatus::COMPLETE:
            break;
        case SETTINGS::ReadStatus::NOT_OPENED:
            fault.kind = Fault::NOT_READABLE;
            fault.error = result.error;
            return ErrorString(LoadText(TextId::INI_ERROR_OPENING))
                   << path << LoadText(TextId::INI_FOR_READING);
        case SETTINGS::ReadStatus::BAD_HEADER:
            fault.kind = Fault::NAMELESS_SECTION;
            fault.line = result.lineNumber;
            return ErrorString(LoadText(TextId::INI_INVALID_SECTION)) << result.lineNumber;
        case SETTINGS::ReadStatus::STOPPED:
            fault.kind = Fault::DUPLICATE_SECTION;
            fault.line = result.lineNumber;
            return ErrorString(LoadText(TextId::INI_DUPLICATE_SECTION))
                   << fault.section << LoadText(TextId::INI_FOUND);
        }
        return {};
    }

    NamedSequence<Section>& sections;
    Fault& fault;
    Section* section = nullptr;
    std::vector<std::uint32_t> headerLines;
    RecentTexts<HashedString<wchar_t>> names;
    RecentTexts<SharedValue<std::wstring>> comments;
};

ErrorString IniFile::Open(const std::wstring& givenPath, Fault& fault) {
    // The value of a key goes with its section.
    const std::wstring path = givenPath; // NOLINT(performance-unnecessary-copy-initialization)
    Clear();
    fault = {};
    if (path.empty()) {
        fault.kind = Fault::NOT_READABLE;
        return false;
    }
    Builder builder(m_sections, fault);
    return builder.Finish(SETTINGS::Read(path, builder), path);
}

ErrorString IniFile::ReadText(std::string_view content, Fault& fault) {
    Clear();
    fault = {};
    Builder builder(m_sections, fault);
    return builder.Finish(SETTINGS::ReadText(content, builder), {});
}

ErrorString IniFile::Save(const std::wstring& path) const {
    std::error_code ignored;
    return Save(path, ignored);
}

ErrorString IniFile::Save(const std::wstring& path, std::error_code& error) const {
    error = std::make_error_code(std::errc::no_message);
    if (Empty()) return false;
    error = SETTINGS::Save(path, [this](SETTINGS::Writer& writer) {
        for (const Section& section : m_sections) {
            // GetWriteOffsets counts UTF-16 units; a text for which that makes a difference cannot be stored
            // anyway.
            std::size_t nameWidth = 0;
            std::size_t valueWidth = 0;
            for (const SectionKey& key : section.m_keys) {
                nameWidth = std::max(nameWidth, key.GetName().String().size());
                valueWidth = std::max(valueWidth, key.GetValue().size());
            }
            writer.BeginSection(section.GetName().String(), section.GetComments());
            for (const SectionKey& key : section.m_keys)
                writer.Key(key.GetName().String(), key.GetValue(), key.GetComments(), nameWidth, valueWidth);
            writer.EndSection();
        }
    });
    return !error;
}

ErrorString IniFile::CheckStorable() const {
    if (Empty()) return L"there is no section";
    std::set<std::wstring_view, decltype(&SmallerW)> names(&SmallerW);
    for (const Section& section : m_sections) {
        const std::wstring& name = section.GetName().String();
        const std::wstring place = L"[" + name + L"]: ";
        if (const ErrorString fault = SETTINGS::CheckSectionName(name); !fault) return place + fault.Text();
        if (!names.insert(name).second)
            return place + L"another section has this name already (letter case does not count)";
        if (const ErrorString fault = SETTINGS::CheckSectionComment(section.GetComments()); !fault)
            return place + fault.Text();
        for (const SectionKey& key : section.m_keys) {
            const std::wstring& keyName = key.GetName().String();
            if (const ErrorString fault = SETTINGS::CheckKeyLine(keyName, key.GetValue(), key.GetComments());
                !fault)
                return ErrorString(L"[") << name << L"] \"" << keyName << L"\": " << fault.Text();
        }
    }
    return {};
}

bool IniFile::Open(const FileObject& file) {
    std::wstring name;
    int position = 0;
    for (bool more = file.GetFirstSectionEntry(position, name); more;
         more = file.GetNextSectionEntry(position, name)) {
        const FobjSection& items = *file.GetSection(name);
        Section section(name);
        std::wstring key;
        std::wstring value;
        int item = 0;
        for (bool moreItems = items.GetFirstMapEntry(item, key, value); moreItems;
             moreItems = items.GetNextMapEntry(item, key, value))
            section.AddKey(SectionKey(key, value, std::wstring()));
        AddSection(section);
    }
    return true;
}

bool IniFile::Save(FileObject& file) const {
    for (const Section& section : m_sections)
        for (int i = 0; i < section.NumKeys(); ++i)
            file.SetItem(section.GetName(), section[i].GetName(), section[i].GetValue(), true);
    return true;
}

bool IniFile::HasSection(const std::wstring& name) const { return m_sections.Find(name) < m_sections.Size(); }

Section& IniFile::SectionOf(std::wstring_view name) {
    const std::size_t position = m_sections.Find(name);
    return position < m_sections.Size() ? m_sections[position] : m_sections.Append(std::wstring(name));
}

const Section& IniFile::SectionOf(std::wstring_view name) const {
    const std::size_t position = m_sections.Find(name);
    return position < m_sections.Size() ? m_sections[position] : m_ErrorSection;
}

bool IniFile::AddSection(const Section& section) {
    if (!section.IsValid()) return false;
    const std::size_t position = m_sections.Find(section.GetName().String());
    if (position < m_sections.Size())
        m_sections[position] = section;
    else
        m_sections.Append(section);
    return true;
}

bool IniFile::RemoveSection(const std::wstring& name) {
    const std::size_t position = m_sections.Find(name);
    if (position == m_sections.Size()) return false;
    m_sections.Remove(position);
    return true;
}

bool IniFile::RenameSection(const std::wstring& oldName, const std::wstring& newName) {
    const std::size_t position = m_sections.Find(oldName);
    if (position == m_sections.Size() || HasSection(newName)) return false;
    m_sections[position].SetName(newName);
    return true;
}

bool IniFile::RenameSection(const wchar_t* oldName, const wchar_t* newName) {
    return RenameSection(std::wstring(oldName ? oldName : L""), std::wstring(newName ? newName : L""));
}
