// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/settings/Seals.h"
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/LineRules.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/work/LongWork.h"

#include <set>

namespace {

struct Counts {
    int set = 0; // keys that got another value
    int addedKeys = 0;
    int addedSections = 0;
    int same = 0; // keys that had the value already
};

// Whether the key is one to readers that know no "#" remarks, and no seal.
bool IsSetting(const SectionKey& key) {
    return key.IsValid() && key.GetName().String().front() != L'#' &&
           !icompareW(key.GetName().String(), Section::m_ChecksumName.String());
}

// The keys of a section that count: of several with one name the first.
std::vector<SectionKey> Settings(const Section& section) {
    std::vector<SectionKey> keys;
    std::set<std::wstring, decltype(&SmallerW)> names(&SmallerW);
    for (int i = 0; i < section.NumKeys(); ++i)
        if (IsSetting(section[i]) && names.insert(section[i].GetName()).second) keys.push_back(section[i]);
    return keys;
}

class Merger {
public:
    Merger(SettingsDocument& base, const MergeSettings& options) : m_base(base), m_options(options) {}

    void Merge(const Section& changes) {
        const std::wstring name = changes.GetName();
        if (!m_base.HasSection(name)) {
            RequireStored(m_base.Lines().AddSection(name));
            ++m_counts.addedSections;
        }
        const Section before = m_base.Lines().Read(name);
        bool isChanged = false;
        for (const SectionKey& key : Settings(changes)) {
            StopIfInterrupted();
            const SectionKey& old = before[key.GetName()];
            if (old.IsValid() && old.GetValue() == key.GetValue()) {
                ++m_counts.same;
                continue;
            }
            if (!isChanged) RequireNoEdits(m_base, name, m_options);
            isChanged = true;
            Set(name, key, !old.IsValid());
        }
        if (isChanged) RenewSeal(m_base, name, m_options);
    }

    const Counts& Result() const { return m_counts; }

private:
    void Set(const std::wstring& section, const SectionKey& key, bool isNew) {
        const std::wstring name = key.GetName();
        m_base.Consider(name + key.GetValue() + key.GetComments());
        RequireStored(m_base.Lines().Set(section, name, key.GetValue()));
        if (isNew) RequireStored(m_base.Lines().SetComment(section, name, key.GetComments()));
        ++(isNew ? m_counts.addedKeys : m_counts.set);
    }

    SettingsDocument& m_base;
    const MergeSettings& m_options;
    Counts m_counts;
};

} // namespace

void Run(const MergeSettings& options) {
    if (IsStandardStream(options.file) && IsStandardStream(options.changes))
        throw CommandError(ExitCode::WRONG_USE,
                           "BASE and CHANGES cannot both be standard input; name a file");
    const SettingsDocument changes({options.changes, options.encoding});
    Counts counts;
    const bool isDone = ChangeSettings(options, [&](SettingsDocument& base) {
        const std::vector<std::wstring> sections = changes.Sections();
        const Progress progress(base.Name(), sections.size());
        Merger merger(base, options);
        std::uint64_t numDone = 0;
        for (const std::wstring& section : sections) {
            merger.Merge(changes.Lines().Read(section));
            progress.Show(++numDone);
        }
        counts = merger.Result();
    });
    if (!isDone) return;
    const auto number = [](int count, const char* what) {
        return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
    };
    PrintDone(InputName(options.file) + ": " + number(counts.set, "key") + " set, " +
              number(counts.addedKeys, "key") + " and " + number(counts.addedSections, "section") +
              " added, " + number(counts.same, "key") + " as they were");
}
