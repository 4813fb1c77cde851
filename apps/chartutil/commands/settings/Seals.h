#pragma once

#include "UtilityDLL/settings/Section.h"

/// What the seal of a section says about it.
enum class Seal { INTACT, BROKEN, NONE };

Seal SealOf(const Section& section);

/// "intact", "edited", "unsealed"
const char* NameOf(Seal seal);

/// Seals the section as a file will keep it.
void AddSeal(Section& section);

/// After a change of a section: seals it anew if `anew`, else notes when its seal does not fit any longer.
void RenewSeal(Section& section, bool anew);
