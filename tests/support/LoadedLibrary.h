#pragma once

#include <string>

/// A library that is loaded at run time, for as long as this object lives.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const std::string& path);
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    bool IsLoaded() const { return m_handle != nullptr; }

    /// The exported function of that (mangled) name; null when it has none.
    void* Function(const char* name) const;

private:
    void* m_handle;
};
