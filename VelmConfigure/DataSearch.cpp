// SPDX-License-Identifier: MIT
#include "VelmConfigure/DataSearch.h"

#include "VelmBase/Environment.h"
#include "VelmBase/File.h"

namespace {

bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

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
    if (folder.empty()) folder = INSTALLED_DATA_FOLDER;
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
