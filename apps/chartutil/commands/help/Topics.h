// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

/// What more than one command has to do with, and 'chartutil help' explains.
struct Topic {
    const char* name;      ///< no command has the same
    const char* about;     ///< in a few words
    int manualSection;     ///< 5 for files, 7 for all else
    std::string (*text)(); ///< in the form of ReadProse()
};

std::span<const Topic> Topics();

/// Null where there is none of that name.
const Topic* FindTopic(const std::string& name);
