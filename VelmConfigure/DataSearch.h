// SPDX-License-Identifier: MIT
#pragma once

#include "VelmConfigure/Export.h"

#include <cstdint>
#include <map>
#include <string>

/// Finds the suite's data folders and files by category number. The suite has more categories than are named
/// here.
///
/// A category's folder is the one that SetFolder gave it, else the folder that the environment variable
/// UTILITYDLL_DATA names, else the installed data folder. Process-wide, made on first use, not locked.
class VELMCONFIGURE_API DataSearch {
public:
    /// The categories by their numbers.
    enum CATEGORY : std::int32_t {
        CHOICE_LISTS = 23, ///< holds the file "Keywords"
    };

    /// The one of the process.
    static DataSearch& GetDataSearch();
    DataSearch(const DataSearch&) = delete;
    DataSearch& operator=(const DataSearch&) = delete;

    /// Replaces the file name `name` by its full path in the category's folder. True when that file can be
    /// read; `name` is replaced in any case.
    bool GetFullPath(int category, std::wstring& name) const;

    /// The folder of the category, without a separator at its end unless it is a root.
    std::wstring GetFilePath(int category) const;

    /// Sets the folder of a category; an empty one goes back to the default.
    void SetFolder(int category, const std::wstring& folder);

private:
    DataSearch() = default;

    std::map<int, std::wstring> m_folders;
};
