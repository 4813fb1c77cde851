// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/TextInfo.h"
#include "UtilityDLL/settings/IniFile.h"
#include "apps/chartutil/files/SettingsLines.h"
#include "apps/chartutil/terminal/UserText.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Reads the settings of a project by the table of ProjectKeys.h. What is wrong in them goes to the
/// PlotErrorReporter, in the context of the section's name, with file, line and key; what was there before is
/// then left as it was, as it is without the key.
class ProjectFile {
public:
    /// Ends the command when there is no such file, or no settings file.
    explicit ProjectFile(const UserText& folder);

    /// Null when there is none.
    const Section* Find(const wchar_t* section);

    /// A record in a section of its own. Tells of values that the record did not take as they stand there.
    /// False without the section.
    template <typename Record> bool ReadRecord(const wchar_t* section, Record& record);

    /// The same behind a prefix, among other keys.
    template <typename Record>
    bool ReadPrefixed(const wchar_t* section, const wchar_t* prefix, Record& record);

    /// A record in its one-line form.
    template <typename Record> void ReadLine(const wchar_t* section, const wchar_t* key, Record& record);

    /// Tells of a face that is not there.
    void RequireFace(const wchar_t* section, const std::wstring& key, const TextInfo& style);

    /// Text in UTF-8, or one byte a character as files of the suite have it.
    void ReadText(const wchar_t* section, const wchar_t* key, std::wstring& value);
    void ReadText(const wchar_t* section, const wchar_t* key, std::string& value);

    /// A number in the key's range. False where there is none; `value` may be none before (NaN).
    bool ReadNumber(const wchar_t* section, const wchar_t* key, double& value);

    /// One of the key's choices in any letter case, as its index; `otherwise` where there is none.
    std::size_t ReadName(const wchar_t* section, const wchar_t* key, std::size_t otherwise);

    /// A section whose keys are the user's: keywords with their values.
    Section ReadTexts(const wchar_t* section);

    /// A key that is read by other means.
    void Expect(const wchar_t* section, const wchar_t* key) { (void)FindKey(section, key); }

    struct BelowNoCase {
        using is_transparent = void;
        bool operator()(std::wstring_view a, std::wstring_view b) const { return SmallerW(a, b); }
    };
    using Values = std::map<std::wstring, std::wstring, BelowNoCase>;
    using Sections = std::map<std::wstring, Values, BelowNoCase>;

    /// The sections and keys that were asked for, with the values that are taken, as they would be written.
    const Sections& Taken() const { return m_taken; }

    /// Tells of sections and keys that nobody asked for. Comes last.
    void ReportUnknown() const;

    void Report(std::wstring_view section, std::wstring_view key, const std::string& what) const;

    /// The path of a file that is named in the settings.
    UserText PathOf(const std::wstring& name) const;

    const UserText& Path() const { return m_path; }
    const SettingsLines& Lines() const { return m_lines; }

private:
    const SectionKey* FindKey(const wchar_t* section, const wchar_t* key);
    bool PutGiven(const wchar_t* section, Section& values);
    void CompareTaken(const wchar_t* section, const Section& given, const Section& taken);
    void CompareLine(const wchar_t* section, const wchar_t* key, const std::wstring& given,
                     const std::wstring& taken, const std::vector<std::wstring>& names) const;

    UserText m_folder;
    UserText m_path;
    IniFile m_file;
    SettingsLines m_lines;
    Sections m_taken;
};

// A record that reads a section takes something of its own for some keys that are missing, so it is given all
// of its keys: with its values as they are, and over them those of the file.
template <typename Record> bool ProjectFile::ReadRecord(const wchar_t* section, Record& record) {
    Section values(section), taken(section);
    (void)record.Write(values);
    const bool isThere = PutGiven(section, values);
    if (isThere) (void)record.Read(values);
    (void)record.Write(taken);
    CompareTaken(section, values, taken);
    return isThere;
}

template <typename Record>
bool ProjectFile::ReadPrefixed(const wchar_t* section, const wchar_t* prefix, Record& record) {
    Section values(section), taken(section);
    (void)record.Write(prefix, values);
    const bool isThere = PutGiven(section, values);
    if (isThere) (void)record.Read(prefix, values);
    (void)record.Write(prefix, taken);
    CompareTaken(section, values, taken);
    return isThere;
}

template <typename Record>
void ProjectFile::ReadLine(const wchar_t* section, const wchar_t* key, Record& record) {
    const SectionKey* const given = FindKey(section, key);
    const bool isGiven = given && !given->GetValue().empty();
    if (isGiven) record.FromString(given->GetValue());
    m_taken[section][key] = record.ToString();
    if (isGiven) CompareLine(section, key, given->GetValue(), record.ToString(), Record::OneLineItems());
}
