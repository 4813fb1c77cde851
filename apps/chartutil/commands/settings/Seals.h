// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/commands/settings/Settings.h"

/// What the seal of a section says about it.
enum class Seal { INTACT, BROKEN, NONE };

Seal SealOf(const Section& section);
Seal SealOf(const SettingsDocument& document, const std::wstring& section);

/// "intact", "edited", "unsealed"
const char* NameOf(Seal seal);

/// Before sections are sealed anew: ends the command (ExitCode::CHECK_FAILED) where one has an edit that
/// nobody has looked at, since the new seal would hide it.
void RequireNoEdits(const SettingsDocument& document, const std::vector<std::wstring>& sections);

/// The same for the one section that `change` changes, if it is to be sealed and its edits are not accepted.
void RequireNoEdits(const SettingsDocument& document, const std::wstring& section,
                    const OneSettingsChange& change);

/// After a change of a section: seals it anew if that is asked for, else notes when its seal does not fit any
/// longer.
void RenewSeal(SettingsDocument& document, const std::wstring& section, const OneSettingsChange& change);
