// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"

#include <vector>

// How a library that extends a program makes itself known to the framework. The framework keeps the list; a
// library's code and resources are the system's to load. Any thread may call these, for a record of its own.

/// A library's record, which it keeps for as long as it is loaded.
struct AFX_EXTENSION_MODULE {
    bool bInitialized = false; ///< whether the record is filled
    void* hModule = nullptr;   ///< the library's handle (ModuleAt)
};

/// Fills the record of the library with that handle. False, and nothing is changed, when it is null. A record
/// that is filled stays as it is.
FRAMEWORK_API bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, void* module);

/// Takes the library out of the list and empties its record; nothing happens to one that is not filled.
FRAMEWORK_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state);

/// A library's entry in the list. It is made by new and belongs to the framework, which deletes it when the
/// library's record is emptied.
class FRAMEWORK_API CDynLinkLibrary {
public:
    /// Puts the library of that record at the front of the list: the latest is searched first.
    explicit CDynLinkLibrary(const AFX_EXTENSION_MODULE& state);
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    /// The handles of the libraries in the list.
    static std::vector<void*> Modules();

    /// Deletes the entries of that library.
    static void Remove(const void* module);

private:
    ~CDynLinkLibrary() = default;

    void* m_module;
    CDynLinkLibrary* m_next;
};
