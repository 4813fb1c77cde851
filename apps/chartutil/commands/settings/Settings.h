// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/SettingsDocument.h"

#include <optional>
#include <vector>

// The commands on settings files, each with its options.

struct OneSettingsFile : SettingsSource {
    bool IsLong() const { return IsMuchWork(file); }
};

/// A change of one file, which can break the seal of a section.
struct OneSettingsChange : SettingsChange {
    bool seal = false;        ///< seal what has changed
    bool acceptEdits = false; ///< also over changes that were made before

    bool IsLong() const { return IsMuchWork(file); }
};

/// Several files, with the options that each of them is worked on with.
struct SettingsFiles {
    std::vector<UserText> files;
    TextEncoding encoding = TextEncoding::ONE_BYTE;
    std::vector<UserText> sections; // none for all
    bool json = false;

    bool IsLong() const { return AreMuchWork(files); }
};

struct ShowSettings : OneSettingsFile {
    UserText section; // empty for all
    bool json = false;
};
void Run(const ShowSettings& options);

struct GetSetting : OneSettingsFile {
    UserText section, key;
    std::optional<UserText> otherwise; // what to print when there is no such key
    bool wantsAll = false;
    bool wantsComment = false;
    bool json = false;
};
void Run(const GetSetting& options);

struct SetSetting : OneSettingsChange {
    UserText section, key, value;
    std::optional<UserText> comment;
};
void Run(const SetSetting& options);

struct RemoveSetting : OneSettingsChange {
    UserText section;
    std::optional<UserText> key;
};
void Run(const RemoveSetting& options);

struct RenameSetting : OneSettingsChange {
    UserText section, newName;
    std::optional<UserText> key;
};
void Run(const RenameSetting& options);

struct MergeSettings : OneSettingsChange {
    UserText changes; // the file that holds them
    bool IsLong() const { return OneSettingsChange::IsLong() || IsMuchWork(changes); }
};
void Run(const MergeSettings& options);

struct DiffSettings {
    UserText before, after;
    TextEncoding encoding = TextEncoding::ONE_BYTE;
    bool wantsComments = false;
    bool json = false;

    bool IsLong() const { return IsMuchWork(before) || IsMuchWork(after); }
};
void Run(const DiffSettings& options);

struct CheckSettings : SettingsFiles {
    bool ignoreUnsealed = false;
};
void Run(const CheckSettings& options);

struct SealSettings : SettingsFiles {
    bool acceptEdits = false;
    bool isForced = false;
    bool isDryRun = false;
};
void Run(const SealSettings& options);
