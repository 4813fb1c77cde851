#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <optional>
#include <vector>

// The commands on settings files, each with its options.

struct ShowSettings {
    UserText file;
    UserText section; // empty for all
    bool json = false;
};
void Run(const ShowSettings& options);

struct GetSetting {
    UserText file, section, key;
    bool wantsComment = false;
    bool json = false;
};
void Run(const GetSetting& options);

struct SetSetting {
    UserText file, section, key, value;
    std::optional<UserText> comment;
    bool create = false;
    bool seal = false;
};
void Run(const SetSetting& options);

struct RemoveSetting {
    UserText file, section;
    std::optional<UserText> key;
    bool seal = false;
};
void Run(const RemoveSetting& options);

struct RenameSetting {
    UserText file, section, newName;
    std::optional<UserText> key;
    bool seal = false;
};
void Run(const RenameSetting& options);

struct CheckSettings {
    std::vector<UserText> files;
    std::vector<UserText> sections; // none for all
    bool ignoreUnsealed = false;
    bool json = false;
};
void Run(const CheckSettings& options);

struct SealSettings {
    std::vector<UserText> files;
    std::vector<UserText> sections; // none for all
    bool json = false;
};
void Run(const SealSettings& options);
