#include "VelmConfigure/DataSearch.h"

#include "VelmBase/File.h"
#include "VelmBase/WideString.h"

#include <cstdlib>

DataSearch& DataSearch::GetDataSearch() {
    static DataSearch search;
    return search;
}

bool DataSearch::GetFullPath(int category, std::wstring& name) const {
    name = GetFilePath(category) + L"/" + name;
    return FILES::Reader(name).IsOpen();
}

std::wstring DataSearch::GetFilePath(int category) const {
    const auto found = m_folders.find(category);
    std::wstring folder;
    if (found != m_folders.end()) {
        folder = found->second;
    } else if (const char* const environment = std::getenv("UTILITYDLL_DATA"); environment && *environment) {
        folder = FromNarrow(environment);
    } else {
        folder = INSTALLED_DATA_FOLDER;
    }
    while (folder.size() > 1 && (folder.back() == L'/' || folder.back() == L'\\')) folder.pop_back();
    return folder;
}

void DataSearch::SetFolder(int category, const std::wstring& folder) {
    if (folder.empty())
        m_folders.erase(category);
    else
        m_folders[category] = folder;
}
