#include "UtilityDLL/settings/IniFile.h"

#include "UtilityDLL/res/StringTable.h"
#include "VelmBase/SettingsText.h"

#include <algorithm>
#include <array>

const Section IniFile::m_ErrorSection;

namespace {

// Names of keys that were read lately: sections of one kind repeat them, and they then share one text.
class RecentNames {
public:
    const HashedString<wchar_t>& Get(SETTINGS::Bytes name) {
        if (name.empty()) return m_empty;
        HashedString<wchar_t>& kept = m_names[Slot(name)];
        const std::wstring& text = kept.String();
        const bool same = std::equal(text.begin(), text.end(), name.begin(), name.end(),
                                     [](wchar_t a, char b) { return a == static_cast<unsigned char>(b); });
        if (!same) kept = SETTINGS::Widened(name);
        return kept;
    }

private:
    static constexpr std::size_t kSlots = 512;

    static std::size_t Slot(SETTINGS::Bytes name) {
        std::size_t hash = name.size();
        for (const char c : name) hash = hash * 31 + static_cast<unsigned char>(c);
        return hash % kSlots;
    }

    std::array<HashedString<wchar_t>, kSlots> m_names;
    HashedString<wchar_t> m_empty;
};

} // namespace

IniFile::IniFile(const std::wstring& path) { Open(path); }

ErrorString IniFile::Open(const std::wstring& path) {
    struct Builder : SETTINGS::Handler {
        explicit Builder(NamedSequence<Section>& target) : sections(target) {}
        bool OnSection(SETTINGS::Bytes name) override {
            const std::wstring text = SETTINGS::Widened(name);
            if (sections.Find(text) < sections.Size()) {
                duplicate = text;
                return false;
            }
            section = &sections.Append(text);
            return true;
        }
        void OnKey(SETTINGS::Bytes name, SETTINGS::Bytes value, SETTINGS::Bytes comment) override {
            section->AddKey(names.Get(name), SETTINGS::Widened(value), SETTINGS::Widened(comment));
        }
        NamedSequence<Section>& sections;
        Section* section = nullptr;
        std::wstring duplicate;
        RecentNames names;
    };

    Clear();
    if (path.empty()) return ErrorString(false);
    Builder builder(m_sections);
    const SETTINGS::ReadResult result = SETTINGS::Read(path, builder);
    switch (result.status) {
    case SETTINGS::ReadStatus::COMPLETE:
        break;
    case SETTINGS::ReadStatus::NOT_OPENED:
        return ErrorString(LoadText(TextId::INI_ERROR_OPENING)) << path << LoadText(TextId::INI_FOR_READING);
    case SETTINGS::ReadStatus::BAD_HEADER:
        return ErrorString(LoadText(TextId::INI_INVALID_SECTION)) << result.lineNumber;
    case SETTINGS::ReadStatus::STOPPED:
        return ErrorString(LoadText(TextId::INI_DUPLICATE_SECTION))
               << builder.duplicate << LoadText(TextId::INI_FOUND);
    }
    return {};
}

ErrorString IniFile::Save(const std::wstring& path) const {
    if (Empty()) return ErrorString(false);
    SETTINGS::Writer writer;
    for (const Section& section : m_sections) {
        int nameWidth = 0;
        int valueWidth = 0;
        section.GetWriteOffsets(nameWidth, valueWidth);
        writer.BeginSection(section.GetName().String(), section.GetComments());
        for (int i = 0; i < section.NumKeys(); ++i) {
            const SectionKey& key = section[i];
            writer.Key(key.GetName().String(), key.GetValue(), key.GetComments(),
                       static_cast<std::size_t>(nameWidth), static_cast<std::size_t>(valueWidth));
        }
        writer.EndSection();
    }
    return ErrorString(writer.Save(path));
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
            section.AddKey(key, value, {});
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
