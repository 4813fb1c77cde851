// SPDX-License-Identifier: MIT
#include "VelmBase/ResourceModule.h"

#include "VelmBase/Module.h"
#include "VelmBase/UntilUnloaded.h"
#include "VelmBase/private/LanguageChoice.h"
#include "VelmBase/private/LanguageFile.h"

#include <list>
#include <map>
#include <mutex>
#include <new>
#include <string>
#include <vector>

namespace {

// The files that may hold a library's texts in the chosen language, the first that can be read being the one.
using Files = std::vector<std::wstring>;

Files LanguageFiles(const std::wstring& library) {
    constexpr wchar_t kFolder[] = L"utilitydll/languages/"; // beside the library
    Files files;
    if (library.empty()) return files;
    const std::size_t name = library.find_last_of(L"/\\") + 1;
    // What follows the first dot is the kind of file and the version.
    const std::wstring title = library.substr(name, library.find(L'.', name) - name);
    const std::vector<std::wstring> languages = LANGUAGES::FileNames(LANGUAGES::ChosenLanguage());
    files.reserve(languages.size());
    for (const std::wstring& language : languages)
        files.emplace_back(library, 0, name)
            .append(kFolder)
            .append(title)
            .append(L".")
            .append(language)
            .append(L".po");
    return files;
}

// A library's texts in one language.
class Texts {
public:
    Texts(const void* module, Files files) : m_module(module), m_files(std::move(files)) {}

    bool Are(const void* module, const Files& files) const { return m_module == module && m_files == files; }
    bool AreOf(const void* module) const { return m_module == module; }

    const wchar_t* Find(std::uint32_t number) {
        if (!m_isRead) Read();
        const auto found = m_texts.find(number);
        return found != m_texts.end() ? found->second.c_str() : nullptr;
    }

private:
    void Read() {
        std::map<std::uint32_t, std::wstring> texts;
        const auto add = [&](std::uint32_t number, const std::wstring&, const std::wstring& translation) {
            if (!translation.empty()) texts.try_emplace(number, translation);
        };
        for (const std::wstring& file : m_files)
            if (LANGUAGES::ReadEntriesOf(file, add)) break;
        m_texts = std::move(texts);
        m_isRead = true;
    }

    const void* m_module;
    Files m_files;
    bool m_isRead = false;
    std::map<std::uint32_t, std::wstring> m_texts;
};

struct Languages {
    std::mutex guard;
    std::list<Texts> chosen; // the latest choice first; the others are kept for the texts handed out
};

// A worker may still ask for a text while the process ends.
Languages& AllLanguages() {
    static UntilUnloaded<Languages> languages;
    return *languages;
}

} // namespace

void VELMSUITE::LoadDLLResourceDLL(void* /*instance*/, void* module) {
    Files files = LanguageFiles(ModulePath(module));
    Languages& languages = AllLanguages();
    const std::lock_guard lock(languages.guard);
    std::list<Texts>& chosen = languages.chosen;
    for (auto texts = chosen.begin(); texts != chosen.end(); ++texts)
        if (texts->Are(module, files)) return chosen.splice(chosen.begin(), chosen, texts);
    chosen.emplace_front(module, std::move(files));
}

const wchar_t* VELMSUITE::LanguageText(const void* module, std::uint32_t number) try {
    Languages& languages = AllLanguages();
    const std::lock_guard lock(languages.guard);
    for (Texts& texts : languages.chosen)
        if (texts.AreOf(module)) return texts.Find(number);
    return nullptr;
} catch (const std::bad_alloc&) {
    return nullptr; // the next call tries again
}
