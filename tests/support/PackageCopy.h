// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/module/UtilityDLL.h"
#include "VelmBase/Module.h"
#include "tests/support/Language.h"
#include "tests/support/Program.h"

/// The libraries of the suite once more, in a folder of their own, with programs that use these. There, a
/// test can put others in their place.
class PackageCopy {
public:
    PackageCopy() : m_searchPath(L"LD_LIBRARY_PATH", WidePath(m_folder.Path())) {
        const std::wstring library = ModulePath(ModuleAt(reinterpret_cast<const void*>(&UtilityDLLStartUp)));
        CopyLibraries(NativePath(library).parent_path());
    }

    /// Copies the libraries of `folder` over those of the same names.
    void CopyLibraries(const std::filesystem::path& folder) const {
        // Programs ask for a library by the name with the first number, on Windows beside themselves.
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (const auto kind = entry.path().extension(); kind == ".dll" || kind == ".5")
                Copy(entry.path());
    }

    /// The path of the library's language file, whose folder is made.
    std::filesystem::path LanguageFile(const char* language) const {
        const std::filesystem::path folder = m_folder.Path() / "utilitydll" / "languages";
        std::filesystem::create_directories(folder);
        return folder / ("UtilityDLL." + std::string(language) + ".po");
    }

    ProgramResult Run(const std::string& program, const std::vector<std::string>& arguments) const {
        return RunProgramAt(ToUtf8(WidePath(Copy(NativePath(FromUtf8(program))))), arguments);
    }

    const TemporaryFolder& Folder() const { return m_folder; }

private:
    std::filesystem::path Copy(const std::filesystem::path& file) const {
        const std::filesystem::path copy = m_folder.Path() / file.filename();
        std::filesystem::copy_file(file, copy, std::filesystem::copy_options::overwrite_existing);
        return copy;
    }

    TemporaryFolder m_folder;
    EnvironmentSetting m_searchPath;
};
