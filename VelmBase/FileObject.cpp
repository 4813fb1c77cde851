// SPDX-License-Identifier: MIT
#include "VelmBase/FileObject.h"

#include "VelmBase/SettingsText.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <utility>

namespace {

std::wstring InCapitals(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), ToUpperW);
    return text;
}

// Appends an element and notes its position under its name; neither when memory runs out in between.
template <typename Elements>
void AppendNamed(Elements& elements, std::unordered_map<std::wstring, std::size_t>& positions,
                 std::wstring capitals, typename Elements::value_type element) {
    elements.push_back(std::move(element));
    try {
        positions.emplace(std::move(capitals), elements.size() - 1);
    } catch (...) {
        elements.pop_back();
        throw;
    }
}

bool IsComplete(const SETTINGS::ReadResult& result, std::uint32_t& badLine) {
    badLine = result.status == SETTINGS::ReadStatus::BAD_HEADER ? result.lineNumber : 0;
    return result.status == SETTINGS::ReadStatus::COMPLETE;
}

} // namespace

const std::wstring* FobjSection::GetItem(const std::wstring& key) const {
    const auto found = m_positions.find(InCapitals(key));
    return found != m_positions.end() ? &m_items[found->second].value : nullptr;
}

bool FobjSection::GetFirstMapEntry(int& position, std::wstring& key, std::wstring& value) const {
    position = -1;
    return GetNextMapEntry(position, key, value);
}

bool FobjSection::GetNextMapEntry(int& position, std::wstring& key, std::wstring& value) const {
    if (position < -1 || position >= NumItems() - 1) return false;
    const Item& item = m_items[static_cast<std::size_t>(++position)];
    key = item.key;
    value = item.value;
    return true;
}

bool FobjSection::SetItem(const std::wstring& key, const std::wstring& value, bool create) {
    std::wstring capitals = InCapitals(key);
    const auto found = m_positions.find(capitals);
    if (found != m_positions.end()) {
        m_items[found->second].value = value;
        return true;
    }
    if (!create) return false;
    AppendNamed(m_items, m_positions, std::move(capitals), Item{key, value});
    return true;
}

bool FileObject::Open(const std::wstring& path, int flags) {
    std::uint32_t badLine = 0;
    return Open(path, flags, badLine);
}

struct FileObject::Collector : SETTINGS::Handler {
    explicit Collector(FileObject& target) : file(target) {}
    bool OnSection(SETTINGS::Bytes name) override {
        section = &file.SectionOf(SETTINGS::Widened(name));
        return true;
    }
    void OnKey(SETTINGS::Bytes name, SETTINGS::Bytes value, SETTINGS::Bytes /*comment*/) override {
        if (!name.empty()) section->SetItem(SETTINGS::Widened(name), SETTINGS::Widened(value), true);
    }
    FileObject& file;
    FobjSection* section = nullptr;
};

bool FileObject::Open(const std::wstring& givenPath, int /*flags*/, std::uint32_t& badLine) {
    // An item goes with its section.
    const std::wstring path = givenPath; // NOLINT(performance-unnecessary-copy-initialization)
    Clear();
    Collector collector(*this);
    return IsComplete(SETTINGS::Read(path, collector), badLine);
}

bool FileObject::ReadText(std::string_view content, std::uint32_t& badLine) {
    Clear();
    Collector collector(*this);
    return IsComplete(SETTINGS::ReadText(content, collector), badLine);
}

void FileObject::Clear() {
    m_sections.clear();
    m_positions.clear();
}

bool FileObject::Save(const std::wstring& path, int flags) const {
    std::error_code ignored;
    return Save(path, flags, ignored);
}

bool FileObject::Save(const std::wstring& path, int /*flags*/, std::error_code& error) const {
    error = std::make_error_code(std::errc::no_message);
    if (m_sections.empty()) return false;
    error = SETTINGS::Save(path, [this](SETTINGS::Writer& writer) { Compose(writer); });
    return !error;
}

bool FileObject::Write(const FILES::ContentSink& sink) const {
    SETTINGS::Writer writer(sink);
    Compose(writer);
    return writer.Finish();
}

void FileObject::Compose(SETTINGS::Writer& writer) const {
    for (const FobjSection& section : m_sections) {
        writer.BeginSection(section.m_name, {});
        std::size_t nameWidth = 0;
        for (const FobjSection::Item& item : section.m_items)
            nameWidth = std::max(nameWidth, item.key.size());
        for (const FobjSection::Item& item : section.m_items)
            writer.Key(item.key, item.value, {}, nameWidth, 0);
        writer.EndSection();
    }
}

const FobjSection* FileObject::GetSection(const std::wstring& name) const {
    const auto found = m_positions.find(InCapitals(name));
    return found != m_positions.end() ? &m_sections[found->second] : nullptr;
}

bool FileObject::GetFirstSectionEntry(int& position, std::wstring& name) const {
    position = -1;
    return GetNextSectionEntry(position, name);
}

bool FileObject::GetNextSectionEntry(int& position, std::wstring& name) const {
    if (position < -1 || position >= NumSections() - 1) return false;
    name = m_sections[static_cast<std::size_t>(++position)].Name();
    return true;
}

bool FileObject::SetItem(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                         bool create) {
    if (!create && !GetSection(section)) return false;
    return SectionOf(section).SetItem(key, value, create);
}

const std::wstring* FileObject::GetItem(const std::wstring& section, const std::wstring& key) const {
    const FobjSection* const found = GetSection(section);
    return found ? found->GetItem(key) : nullptr;
}

FobjSection& FileObject::SectionOf(const std::wstring& name) {
    std::wstring capitals = InCapitals(name);
    const auto found = m_positions.find(capitals);
    if (found != m_positions.end()) return m_sections[found->second];
    AppendNamed(m_sections, m_positions, std::move(capitals), FobjSection(name));
    return m_sections.back();
}
