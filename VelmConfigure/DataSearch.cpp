// SPDX-License-Identifier: MIT
#include "VelmConfigure/DataSearch.h"

#include "VelmBase/Environment.h"
#include "VelmBase/File.h"
#include "VelmBase/Module.h"

#include <filesystem>

namespace {

bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

// From where this library lies, so that a package can be moved. It may be found by way of a link such as
// /lib.
std::wstring InstalledDataFolder() {
    static const char here = 0;
    const std::wstring library = ModulePath(ModuleAt(&here));
    try {
        const std::filesystem::path folder = std::filesystem::path(library).parent_path() / DATA_FROM_LIBRARY;
        std::error_code error;
        const std::filesystem::path real = weakly_canonical(folder, error);
        return (error ? folder : real).generic_wstring();
    } catch (const std::filesystem::filesystem_error&) { // a path whose bytes are no UTF-8
        return library.substr(0, library.rfind(L'/') + 1) + DATA_FROM_LIBRARY;
    }
}

} // namespace

DataSearch& DataSearch::GetDataSearch() {
    static DataSearch search;
    return search;
}

bool DataSearch::GetFullPath(int category, std::wstring& name) const {
    const std::wstring folder = GetFilePath(category);
    name = IsSeparator(folder.back()) ? folder + name : folder + L"/" + name;
    return FILES::Reader(name).IsOpen();
}

std::wstring DataSearch::GetFilePath(int category) const {
    const auto found = m_folders.find(category);
    std::wstring folder = found != m_folders.end() ? found->second : EnvironmentVariable(L"UTILITYDLL_DATA");
    if (folder.empty()) folder = InstalledDataFolder();
    const auto isRoot = [&] { return folder.size() == 1 || folder[folder.size() - 2] == L':'; };
    while (IsSeparator(folder.back()) && !isRoot()) folder.pop_back();
    return folder;
}

void DataSearch::SetFolder(int category, const std::wstring& folder) {
    if (folder.empty())
        m_folders.erase(category);
    else
        m_folders[category] = folder;
}
