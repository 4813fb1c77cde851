#pragma once

#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/UserText.h"

#include <optional>
#include <vector>

// The commands on settings files, each with its options.

struct OneSettingsFile {
    UserText file;

    bool IsLong() const { return IsMuchWork(file); }
};

struct SettingsFiles {
    std::vector<UserText> files;

    bool IsLong() const { return AreMuchWork(files); }
};

struct ShowSettings : OneSettingsFile {
    UserText section; // empty for all
    bool json = false;
};
void Run(const ShowSettings& options);

struct GetSetting : OneSettingsFile {
    UserText section, key;
    bool wantsComment = false;
    bool json = false;
};
void Run(const GetSetting& options);

struct SetSetting : OneSettingsFile {
    UserText section, key, value;
    std::optional<UserText> comment;
    bool create = false;
    bool seal = false;
};
void Run(const SetSetting& options);

struct RemoveSetting : OneSettingsFile {
    UserText section;
    std::optional<UserText> key;
    bool seal = false;
};
void Run(const RemoveSetting& options);

struct RenameSetting : OneSettingsFile {
    UserText section, newName;
    std::optional<UserText> key;
    bool seal = false;
};
void Run(const RenameSetting& options);

struct CheckSettings : SettingsFiles {
    std::vector<UserText> sections; // none for all
    bool ignoreUnsealed = false;
    bool json = false;
};
void Run(const CheckSettings& options);

struct SealSettings : SettingsFiles {
    std::vector<UserText> sections; // none for all
    bool json = false;
};
void Run(const SealSettings& options);
